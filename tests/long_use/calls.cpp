#include "calls.hpp"

#include <dlfcn.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <numbers>

#include "call.hpp"

namespace kavo_test {
namespace {

constexpr double kHuge = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kSpecials[] = {0.0,           -0.0,      1e-300,     1e20,       kHuge,
                                VALUE_INVALID, kInfinity, -kInfinity, kNotANumber};

// What is drawn, the type of the second argument says.

// Mostly a site of two kilometres; now and then a whole number, so that points meet and lines are
// parallel, and seldom what no site has.
double Draw(Draws& draws, double /*kind*/) {
  switch (draws.Below(100)) {
    case 0:
      return kSpecials[draws.Below(std::size(kSpecials))];
    case 1:
    case 2:
    case 3:
      return static_cast<double>(draws.Below(5)) - 2.0;
    default:
      return draws.Between(-1000.0, 1000.0);
  }
}

IntAngle Draw(Draws& draws, IntAngle /*kind*/) {
  switch (draws.Below(32)) {
    case 0:
      return static_cast<IntAngle>(static_cast<std::uint32_t>(draws.Next()));
    case 1:
      return static_cast<IntAngle>(draws.Below(10)) * ANGLE_QUARTER_CIRCLE - ANGLE_FULL_CIRCLE;
    default:
      return static_cast<IntAngle>(draws.Below(ANGLE_FULL_CIRCLE));
  }
}

// The flags of a point are mostly both; a line is as often by two points as by a direction.
std::uint16_t DrawWord(Draws& draws, std::string_view name) {
  if (name == "mode") {
    return static_cast<std::uint16_t>(LINE_MODE_DIRECTION + draws.Below(2));
  }
  return static_cast<std::uint16_t>(draws.Below(16) == 0 ? draws.Below(4) : 3);
}

template <Record T>
T Draw(Draws& draws, T record) {
  VisitFields(record, [&]<class Field>(std::string_view name, Field value) {
    if (name == kReserved) {
      return value;
    }
    if constexpr (std::is_same_v<Field, std::uint16_t>) {
      return DrawWord(draws, name);
    } else {
      return Draw(draws, value);
    }
  });
  return record;
}

template <class T>
void Append(Answer& answer, const T& value) {
  const auto bytes = std::as_bytes(std::span(&value, 1));
  answer.insert(answer.end(), bytes.begin(), bytes.end());
}

template <class Function, std::size_t Count = 1>
void RandomCall(void* function, Draws& draws, Answer& answer) {
  CallOf<Function*, Count> call;
  call.VisitArguments([&](std::size_t, auto& argument) {
    if constexpr (requires { argument.value; }) {
      argument.value = Draw(draws, argument.value);
    }
  });
  Append(answer, call.Make(reinterpret_cast<Function*>(function)));
  call.VisitArguments([&](std::size_t, auto& argument) {
    if constexpr (requires { argument.items; }) {
      Append(answer, argument.items);
      Append(answer, argument.beyond);
    }
  });
}

void RandomArea(void* function, Draws& draws, Answer& answer) {
  std::array<CoordPt, 8> points{};
  for (CoordPt& point : points) {
    point = Draw(draws, point);
  }
  const auto count = static_cast<std::int16_t>(draws.Below(points.size() + 1));
  Append(answer, reinterpret_cast<decltype(KavoCogoCalcArea)*>(function)(points.data(), count));
}

// A sight that a station at the origin could have taken: sights drawn without regard to each other
// have no station, and an adjustment that leaves the numbers loses a block of memory (meant so).
MultiResectInput DrawSight(Draws& draws) {
  auto sight = Draw(draws, Untouched<MultiResectInput>());
  sight.point.north = draws.Between(-1000.0, 1000.0);
  sight.point.east = draws.Between(-1000.0, 1000.0);
  const double radians = std::atan2(sight.point.east, sight.point.north);
  sight.ha = static_cast<IntAngle>(radians * (ANGLE_HALF_CIRCLE / std::numbers::pi));
  sight.va = ANGLE_QUARTER_CIRCLE;
  sight.horizDist = std::hypot(sight.point.north, sight.point.east);
  sight.slopeDist = draws.Below(2) == 0 ? 0.0 : sight.horizDist;
  return sight;
}

void RandomMultiResect(void* function, Draws& draws, Answer& answer) {
  std::array<MultiResectInput, 8> sights{};
  for (MultiResectInput& sight : sights) {
    sight = DrawSight(draws);
  }
  const auto count = static_cast<std::int16_t>(draws.Below(sights.size() + 2)) - 1;
  auto result = Untouched<MultiResectResult>();
  auto residuals = Untouched<std::array<MultiResectResidual, 8>>();
  Append(answer, reinterpret_cast<decltype(KavoSTNMultiResect)*>(function)(
                     static_cast<std::int16_t>(count), sights.data(), &result, residuals.data()));
  Append(answer, result);
  Append(answer, residuals);
}

void RandomKnownLine(void* function, Draws& draws, Answer& answer) {
  const MultiResectInput sight1 = DrawSight(draws);
  const MultiResectInput sight2 = DrawSight(draws);
  const IntAngle azimuth = draws.Below(2) == 0 ? AZIMUTH_FROM_POINTS : Draw(draws, IntAngle{});
  auto result = Untouched<MultiResectResult>();
  auto accuracy = Untouched<std::array<MultiResectResidual, 2>>();
  Append(answer, reinterpret_cast<decltype(KavoSTNKnownLine)*>(function)(&sight1, &sight2, azimuth,
                                                                         &result, accuracy.data()));
  Append(answer, result);
  Append(answer, accuracy);
}

constexpr Export kExports[] = {
    {"KavoCogoCoordToAngDist", RandomCall<decltype(KavoCogoCoordToAngDist)>},
    {"KavoCogoAngDistToCoord", RandomCall<decltype(KavoCogoAngDistToCoord)>},
    {"KavoCogoCalcSlopeByDist", RandomCall<decltype(KavoCogoCalcSlopeByDist)>},
    {"KavoCogoCalcCrossLine", RandomCall<decltype(KavoCogoCalcCrossLine)>},
    {"KavoCogoCalcCrossLineCircle", RandomCall<decltype(KavoCogoCalcCrossLineCircle), 2>},
    {"KavoCogoCalcCrossCircle", RandomCall<decltype(KavoCogoCalcCrossCircle), 2>},
    {"KavoCogoCalcPtLine", RandomCall<decltype(KavoCogoCalcPtLine)>},
    {"KavoCogoOffsetToCoord", RandomCall<decltype(KavoCogoOffsetToCoord)>},
    {"KavoCogoCalcTransLine", RandomCall<decltype(KavoCogoCalcTransLine)>},
    {"KavoCogoCalcArea", RandomArea},
    {"KavoREMSetBase", RandomCall<decltype(KavoREMSetBase)>, Family::kElevation},
    {"KavoREMCalc", RandomCall<decltype(KavoREMCalc)>, Family::kElevation},
    {"KavoRDMCalcByCoord", RandomCall<decltype(KavoRDMCalcByCoord)>},
    {"KavoBRSetSlope", RandomCall<decltype(KavoBRSetSlope)>, Family::kSlope},
    {"KavoBRCalc", RandomCall<decltype(KavoBRCalc)>, Family::kSlope},
    {"KavoCalc2PtTarget", RandomCall<decltype(KavoCalc2PtTarget)>},
    {"KavoCalcOfsCorner3Pt", RandomCall<decltype(KavoCalcOfsCorner3Pt)>},
    {"KavoCalcOfsCorner4Pt", RandomCall<decltype(KavoCalcOfsCorner4Pt)>},
    {"KavoCalcOfsLineHA", RandomCall<decltype(KavoCalcOfsLineHA)>, Family::kPlane2Pt},
    {"KavoCalcOfsCircle", RandomCall<decltype(KavoCalcOfsCircle)>},
    {"KavoREFSetBaseLine", RandomCall<decltype(KavoREFSetBaseLine)>, Family::kLine},
    {"KavoREFCalc", RandomCall<decltype(KavoREFCalc)>, Family::kLine},
    {"KavoREFSetArcByCoord", RandomCall<decltype(KavoREFSetArcByCoord)>, Family::kArc},
    {"KavoREFSetArcByRadiusHAngle", RandomCall<decltype(KavoREFSetArcByRadiusHAngle)>,
     Family::kArc},
    {"KavoREFSetArcByRadiusArcLen", RandomCall<decltype(KavoREFSetArcByRadiusArcLen)>,
     Family::kArc},
    {"KavoREFGetArcParams", RandomCall<decltype(KavoREFGetArcParams)>, Family::kArc},
    {"KavoREFCalcArc", RandomCall<decltype(KavoREFCalcArc)>, Family::kArc},
    {"KavoREFSet2PtBasePlane", RandomCall<decltype(KavoREFSet2PtBasePlane)>, Family::kPlane2Pt},
    {"KavoREFCalc2PtPlane", RandomCall<decltype(KavoREFCalc2PtPlane)>, Family::kPlane2Pt},
    {"KavoREFSet3PtBasePlane", RandomCall<decltype(KavoREFSet3PtBasePlane)>, Family::kPlane3Pt},
    {"KavoREFCalc3PtPlane", RandomCall<decltype(KavoREFCalc3PtPlane)>, Family::kPlane3Pt},
    {"KavoSTNSeaLevelCalcByBM", RandomCall<decltype(KavoSTNSeaLevelCalcByBM)>},
    {"KavoSTN3PtResect", RandomCall<decltype(KavoSTN3PtResect)>},
    {"KavoSTN2PtResect", RandomCall<decltype(KavoSTN2PtResect)>},
    {"KavoSTNMultiResect", RandomMultiResect},
    {"KavoSTNKnownLine", RandomKnownLine},
};

std::size_t NumberDrawn(std::uint64_t seed) {
  return static_cast<std::size_t>(Draws(seed).Below(std::size(kExports)));
}

// Ends the program: without the library there is nothing to check.
[[noreturn]] void FailToLoad() {
  std::fprintf(stderr, "%s\n", dlerror());
  std::exit(2);
}

}  // namespace

std::uint64_t Draws::Next() {
  state_ += 0x9E3779B97F4A7C15U;
  std::uint64_t bits = state_;
  bits = (bits ^ (bits >> 30U)) * 0xBF58476D1CE4E5B9U;
  bits = (bits ^ (bits >> 27U)) * 0x94D049BB133111EBU;
  return bits ^ (bits >> 31U);
}

double Draws::Between(double low, double high) {
  return low + (high - low) * (static_cast<double>(Next() >> 11U) * 0x1p-53);
}

std::span<const Export> Exports() { return kExports; }

const Export& Drawn(std::uint64_t seed) { return kExports[NumberDrawn(seed)]; }

Library::Library(const char* path) : handle_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) {
    FailToLoad();
  }
  for (const Export& each : kExports) {
    functions_.push_back(dlsym(handle_, each.name.data()));
    if (functions_.back() == nullptr) {
      FailToLoad();
    }
  }
}

Library::~Library() { dlclose(handle_); }

Answer Library::Call(std::uint64_t seed) const {
  const std::size_t number = NumberDrawn(seed);
  Answer answer;
  answer.reserve(512);
  Draws draws(~seed);  // other numbers than the one that chose the export
  kExports[number].call(functions_[number], draws, answer);
  return answer;
}

const char* Copy(const char* library) {
  static const std::string copy =
      std::filesystem::read_symlink("/proc/self/exe").string() + ".library.so";
  std::filesystem::copy_file(library, copy, std::filesystem::copy_options::overwrite_existing);
  return copy.c_str();
}

bool Succeeded(const Answer& answer) {
  std::int32_t status = ERR_REFUSED;
  if (answer.size() >= sizeof status) {
    std::memcpy(&status, answer.data(), sizeof status);
  }
  return status == STATUS_OK;
}

}  // namespace kavo_test
