// Simulated sights: points laid out from a station along directions of whole units, so that the
// readings of the station are exact and nothing but the rounding of the coordinates is left.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "points.hpp"

namespace kavo_test {

/// Radians of an angle, in extended precision and from no formula of the library.
inline long double Radians(IntAngle angle) {
  return static_cast<long double>(angle) * std::numbers::pi_v<long double> / ANGLE_HALF_CIRCLE;
}

/// An angle brought into one circle.
constexpr IntAngle InCircle(IntAngle angle) {
  return (angle % ANGLE_FULL_CIRCLE + ANGLE_FULL_CIRCLE) % ANGLE_FULL_CIRCLE;
}

/// The point that a station sees along an azimuth, at a horizontal distance.
inline CoordPt PointAt(const CoordPt& station, IntAngle azimuth, double horizDist) {
  const long double radians = Radians(azimuth);
  return Pt(static_cast<double>(station.north + horizDist * std::cos(radians)),
            static_cast<double>(station.east + horizDist * std::sin(radians)));
}

/// Uniform random numbers of a test; the seed is the test's own.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}
  double Metres(double least, double most) {
    return std::uniform_real_distribution<double>(least, most)(engine_);
  }
  IntAngle Angle(IntAngle least, IntAngle most) {
    return std::uniform_int_distribution<IntAngle>(least, most)(engine_);
  }
  double Normal(double sigma) { return std::normal_distribution<double>(0.0, sigma)(engine_); }
  template <class Items>
  void Shuffle(Items& items) {
    std::shuffle(items.begin(), items.end(), engine_);
  }
  IntAngle Direction() { return Angle(0, ANGLE_FULL_CIRCLE - 1); }

 private:
  std::mt19937_64 engine_;
};

/// True when two readings are at least `least` away from one another and from being opposite.
inline bool CrossWell(IntAngle a, IntAngle b, IntAngle least) {
  const IntAngle between = InCircle(a - b) % ANGLE_HALF_CIRCLE;
  return between >= least && between <= ANGLE_HALF_CIRCLE - least;
}

/// Expects a plane position within a tolerance in metres.
inline void ExpectPlace(const CoordPt& expected, const CoordPt& point, double tolerance) {
  EXPECT_NEAR(expected.north, point.north, tolerance);
  EXPECT_NEAR(expected.east, point.east, tolerance);
}

/// Expects a position with elevation within a tolerance in metres.
inline void ExpectStation(const CoordPt& expected, const CoordPt& station, double tolerance) {
  ExpectPlace(expected, station, tolerance);
  EXPECT_NEAR(expected.elev, station.elev, tolerance);
  EXPECT_EQ(kFull, station.flags);
}

}  // namespace kavo_test
