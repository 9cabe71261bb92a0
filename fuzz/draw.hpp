// Values out of a fuzzer's bytes: mostly what a total station sees, sometimes what it never should.
#pragma once

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>

#include "fake_host.hpp"
#include "sights.hpp"

namespace kavo_fuzz {

using namespace kavo_test;

/// Numbers that formulas stumble over: the boundaries of doubles and of the library's own rules.
inline constexpr double kOddMetres[] = {
    0.0,          -0.0,      std::numeric_limits<double>::quiet_NaN(),
    HUGE_VAL,     -HUGE_VAL, DBL_MAX,
    DBL_TRUE_MIN, 1e-162,    5e-7,
    1e9,          1e154,     1e20 /* stands for absent */,
    VALUE_INVALID};
inline constexpr IntAngle kOddAngles[] = {INT32_MIN,
                                          INT32_MAX,
                                          -1,
                                          -ANGLE_HALF_CIRCLE,
                                          -ANGLE_FULL_CIRCLE,
                                          -ANGLE_FULL_CIRCLE - 1,
                                          ANGLE_FULL_CIRCLE,
                                          ANGLE_FULL_CIRCLE + 1,
                                          ANGLE_450_DEGREES,
                                          ANGLE_INVALID,
                                          2000000000};

/// Takes values from the front of the bytes; zeros when they are used up. Three cases in four are
/// calm: whole or millimetre coordinates within a kilometre, angles within a circle, points with
/// position and elevation. Laws of geometry hold for these; the rest may be anything.
class Draw {
 public:
  Draw(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {
    const std::uint8_t kind = Byte();
    isCalm_ = kind % 4 != 3;
    if (kind >= 0xE0) {
      SetHost();
    } else {
      Host() = FakeHost{};
    }
  }

  [[nodiscard]] bool IsCalm() const { return isCalm_; }
  /// True when the library is set as shipped: no correction, azimuths from north.
  [[nodiscard]] bool IsCalmAndShipped() const { return isCalm_ && !hasHost_; }
  [[nodiscard]] bool AreUsedUp() const { return size_ == 0; }

  std::uint8_t Byte() { return Raw<std::uint8_t>(); }
  int Below(int n) { return Byte() % n; }

  template <class T>
  T Raw() {
    T value{};
    const std::size_t taken = std::min(size_, sizeof value);
    std::memcpy(&value, data_, taken);
    data_ += taken;
    size_ -= taken;
    return value;
  }

  double Between(double low, double high) {
    return low + (high - low) * (Raw<std::uint32_t>() * 0x1p-32);
  }

  double Metres() {
    const std::uint8_t kind = Byte();
    if (kind < 0x50) {
      return last_ = Raw<std::int8_t>();  // on a grid, where figures meet, touch and coincide
    }
    if (isCalm_ || kind < 0xA0) {
      return last_ = (Raw<std::int32_t>() % 1000000) / 1000.0;
    }
    if (kind < 0xC0) {
      return last_ = Raw<std::int32_t>() / 250.0;  // national grids
    }
    if (kind < 0xD0) {
      return last_;
    }
    return kind < 0xF0 ? kOddMetres[Byte() % std::size(kOddMetres)] : Raw<double>();
  }

  IntAngle Angle() {
    const std::uint8_t kind = Byte();
    if (kind < 0x40) {
      return Below(24) * 15 * kDegree;
    }
    if (kind < 0x80) {
      return InCircle(Below(4) * ANGLE_QUARTER_CIRCLE + Raw<std::int8_t>());
    }
    if (isCalm_ || kind < 0xC0) {
      return static_cast<IntAngle>(Raw<std::uint32_t>() % ANGLE_FULL_CIRCLE);
    }
    return kind < 0xF0 ? kOddAngles[Byte() % std::size(kOddAngles)] : Raw<IntAngle>();
  }

  std::uint16_t Word(std::string_view name) {
    if (name == "mode") {
      return isCalm_ ? static_cast<std::uint16_t>(1 + Below(2)) : Byte() % 4;
    }
    return isCalm_ ? kFull : static_cast<std::uint16_t>(Below(8) < 5 ? kFull : Byte());
  }

  /// A record, field by field; what is reserved holds something that nothing may read.
  template <Record T>
  T Rec() {
    auto record = Untouched<T>();
    VisitFields(record, [this](std::string_view name, auto value) {
      using Field = decltype(value);
      if (name == kReserved) {
        return value;
      }
      if constexpr (std::is_same_v<Field, std::uint16_t>) {
        return Word(name);
      } else {
        return Any<Field>();
      }
    });
    return record;
  }
  CoordPt Point() { return Rec<CoordPt>(); }

  /// An argument of any kind; only single records and numbers are drawn.
  template <class T>
  T Any() {
    if constexpr (Record<T>) {
      return Rec<T>();
    } else if constexpr (std::is_same_v<T, double>) {
      return Metres();
    } else if constexpr (std::is_same_v<T, IntAngle>) {
      return Angle();
    } else {
      return T{};
    }
  }

 private:
  void SetHost() {
    hasHost_ = true;
    FakeHost& host = Host();
    host.azimuthReference = static_cast<std::int16_t>(Below(3));
    host.curvRefr = static_cast<std::int16_t>(Below(2));
    host.seaLevel = static_cast<std::int16_t>(Below(2));
    host.refrCoef = Raw<std::int8_t>();
    host.face = Below(3);
    host.replyCode = -Below(2);
    host.scaleFactor = Metres();
    host.meanElev = Metres();
    host.reply = {Angle(), Angle(), Metres(), {}, Metres(), Metres(), Metres()};
  }

  const std::uint8_t* data_;
  std::size_t size_;
  bool isCalm_ = true;
  bool hasHost_ = false;
  double last_ = 0.0;
};

/// What a harness can do with its family, one after another in the order that the bytes choose.
template <std::size_t Count>
void Run(Draw& draw, void (*const (&cases)[Count])(Draw& draw)) {
  constexpr int kMostSteps = 12;
  for (int step = 0; step < kMostSteps && !draw.AreUsedUp(); ++step) {
    cases[draw.Byte() % Count](draw);
  }
}

}  // namespace kavo_fuzz
