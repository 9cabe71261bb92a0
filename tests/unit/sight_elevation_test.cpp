#include "station/sight_elevation.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "fake_host.hpp"
#include "points.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr IntAngle kMinute = 960;
constexpr IntAngle kMin = std::numeric_limits<IntAngle>::min();
constexpr IntAngle kMax = std::numeric_limits<IntAngle>::max();

TEST(FaceOneReading, TurnsFaceTwoAndKeepsFaceOneAsItIs) {
  const struct {
    const char* name;
    IntAngle ha;
    IntAngle va;
    IntAngle reading;
  } rows[] = {
      {"face 1", 5, 10367999, 5},
      {"face 2 from exactly half a circle", 5, ANGLE_HALF_CIRCLE, ANGLE_HALF_CIRCLE + 5},
      {"face 2, beyond the circle", ANGLE_HALF_CIRCLE + 5, 19000000, 5},
      {"face 1 is not wrapped", ANGLE_FULL_CIRCLE + 5, 5184000, ANGLE_FULL_CIRCLE + 5},
      {"face 1 is not wrapped below zero either", -5, 5184000, -5},
      {"the zenith reading is wrapped: just below zero is face 2", 0, -1, ANGLE_HALF_CIRCLE},
      {"one circle up is face 1", -5, ANGLE_FULL_CIRCLE + 1, -5},
      {"wrapped once only: far below zero is face 1", -5, -ANGLE_FULL_CIRCLE - 1, -5},
      // -2^31 + 10368000 and its truncating remainder.
      {"the least reading, turned", kMin, ANGLE_HALF_CIRCLE, -1307648},
      // 2^31 - 1 + 20736000 wraps to a negative number.
      {"the greatest zenith reading is face 1", -5, kMax, -5},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.reading, FaceOneReading(row.ha, row.va));
  }
}

double Elev(const CoordPt& point, IntAngle va, double heightTerm) {
  return StnElevFromSight(1000.0, 2000.0, point, va, heightTerm);
}

// A point 500 m away, at elevation 50.
CoordPt Target() { return Pt(1300, 2400, 50, kFull); }

TEST(StnElevFromSight, ReducesTheZenithReadingByItsOwnFaceRule) {
  // 500 m times the cotangent.
  const double oneMinute = 500.0 / std::tan(std::acos(-1.0) / 10800.0);
  const struct {
    const char* name;
    IntAngle va;
    double vertDiff;
  } rows[] = {
      {"45 degrees up", 45 * kDegree, 500.0},
      {"45 degrees down", 135 * kDegree, -500.0},
      {"level", 90 * kDegree, 0.0},
      {"60 degrees from the zenith", 60 * kDegree, 500.0 / std::sqrt(3.0)},
      {"45 degrees up on face 2", 315 * kDegree, 500.0},
      {"face 2 at 19000000 is face 1 at 1736000", 19000000,
       500.0 / std::tan(1736000 / 648000.0 * std::acos(-1.0) / 16.0)},
      {"straight up is one minute off", 0, oneMinute},
      {"so is all that is closer", kMinute - 1, oneMinute},
      {"one minute is not held back", kMinute, oneMinute},
      {"straight down", ANGLE_HALF_CIRCLE, -oneMinute},
      {"closer to straight down", ANGLE_HALF_CIRCLE - kMinute + 1, -oneMinute},
      {"a negative reading is taken for straight up", -45 * kDegree, oneMinute},
      {"a full circle too", ANGLE_FULL_CIRCLE, oneMinute},
      {"and the extremes", kMin, oneMinute},
      {"of 32 bits", kMax, oneMinute},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const double tolerance = 1e-9 + std::fabs(row.vertDiff) * 1e-12;
    EXPECT_NEAR(50.0 + 1.5 - row.vertDiff, Elev(Target(), row.va, 1.5), tolerance);
  }
  // Two minutes are no longer held back: half the height, nearly.
  EXPECT_NEAR(51.5 - oneMinute / 2.0, Elev(Target(), 2 * kMinute, 1.5), 0.1);
}

TEST(StnElevFromSight, NeedsAnElevation) {
  EXPECT_EQ(Text(0.0), Text(Elev(Pt(1300, 2400, 50), 45 * kDegree, 1.5)));
  // The plane flag is not looked at.
  EXPECT_NEAR(-450.0, Elev(Pt(1300, 2400, 50, COORD_HAS_ELEV), 45 * kDegree, 0.0), 1e-9);
}

TEST(StnElevFromSight, ScalesAndRaisesTheDistance) {
  const struct {
    const char* name;
    double scaleFactor;
    std::int16_t seaLevel;
    double meanElev;
    double horizDist;
  } rows[] = {
      {"neither", 1.0, 0, 6370.0, 500.0},
      {"grid scale 0.8", 0.8, 0, 0.0, 625.0},
      {"a scale of nothing is none", 0.0, 0, 0.0, 500.0},
      {"a thousandth of the earth's radius up", 1.0, 1, 6370.0, 500.5},
      {"only 1 switches it on", 1.0, 2, 6370.0, 500.0},
      {"both", 0.8, 1, -6370.0, 624.375},
  };
  const HostGuard guard;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Host().scaleFactor = row.scaleFactor;
    Host().seaLevel = row.seaLevel;
    Host().meanElev = row.meanElev;
    EXPECT_NEAR(50.0 - row.horizDist, Elev(Target(), 45 * kDegree, 0.0), 1e-9);
  }
}

// Along a ray of zenith angle z the corrected distance is D = d + (1 - k/2) d^2 cot z / R, and the
// height difference D cot z + (1 - k) D^2 / 2R.
TEST(StnElevFromSight, CorrectsForCurvatureAndRefraction) {
  constexpr double kEarthRadius = 6370000.0;
  const struct {
    const char* name;
    std::int16_t index;
    double coefficient;
  } rows[] = {
      {"index 0", 0, 0.132},
      {"index 1", 1, 0.133},
      {"index 2", 2, 0.2},
      {"beyond the table", 3, 0.132},
      {"below the table", -1, 0.132},
      {"far below the table", -32768, 0.132},
  };
  const CoordPt far = Pt(1000.0 - 6000.0, 2000.0 + 8000.0, 50, kFull);
  const HostGuard guard;
  Host().curvRefr = 1;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Host().refrCoef = row.index;
    for (const int degrees : {30, 60, 89, 120}) {
      const double cotangent = 1.0 / std::tan(degrees * std::acos(-1.0) / 180.0);
      const double k = row.coefficient;
      const double d = 10000.0 + (1.0 - k / 2.0) * 1e8 * cotangent / kEarthRadius;
      const double vertDiff = d * cotangent + (1.0 - k) * d * d / (2.0 * kEarthRadius);
      EXPECT_NEAR(50.0 - vertDiff, Elev(far, degrees * kDegree, 0.0), 1e-8);
    }
  }
  Host().curvRefr = 2;  // only 1 switches it on
  EXPECT_NEAR(50.0, Elev(far, 90 * kDegree, 0.0), 1e-8);
}

// The azimuth reference turns the orientation of a set-up and nothing else.
TEST(AzimuthReference, TurnsTheOrientationOfAResection) {
  const StnAngleObs sights[] = {{Pt(100, 0), 0, 90 * kDegree, 0.0},
                                {Pt(0, 100), 90 * kDegree, 90 * kDegree, 0.0},
                                {Pt(-100, 0), 180 * kDegree, 90 * kDegree, 0.0}};
  const HostGuard guard;
  Host().azimuthReference = 1;
  StnSetupResult result{};
  ASSERT_EQ(STATUS_OK, KavoSTN3PtResect(&sights[0], &sights[1], &sights[2], &result));
  EXPECT_EQ(0.0, result.station.north);
  EXPECT_EQ(0.0, result.station.east);
  EXPECT_EQ(-ANGLE_HALF_CIRCLE, result.orient);
}

}  // namespace
