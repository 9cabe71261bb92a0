#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <utility>

#include "points.hpp"

namespace {

using namespace kavo_test;

constexpr IntAngle kLevel = ANGLE_QUARTER_CIRCLE;

std::pair<std::int32_t, CoordPt> Measure(IntAngle ha, IntAngle zenith) {
  auto out = Untouched<CoordPt>();
  const auto status = KavoREMCalc(ha, zenith, &out);
  return {status, out};
}

std::int32_t SetBase(IntAngle ha, IntAngle zenith, double slopeDist) {
  const AngDistRec sight{ha, zenith, slopeDist, -1.0, -1.0};
  return KavoREMSetBase(&sight);
}

// Taken before main, when no base can have been set.
const auto kAtLoad = Measure(0, kLevel);

CoordPt NoBase() { return Written(VALUE_INVALID, 0.0, VALUE_INVALID, kFull); }

TEST(RemoteElevation, HasNoBaseAtLoad) {
  EXPECT_EQ(ERR_NO_BASE, kAtLoad.first);
  EXPECT_EQ(Text(NoBase()), Text(kAtLoad.second));
}

// A level base of 10 m, so that heights and offsets are 10 times a tangent.
TEST(RemoteElevation, GivesHeightAndOffset) {
  const double perSecond = 1.0 / 206264.80624709636;
  const struct {
    const char* name;
    IntAngle baseHa;
    IntAngle baseZenith;
    IntAngle ha;
    IntAngle zenith;
    std::int32_t status;
    double north;
    double elev;
  } rows[] = {
      {"up one in one", 0, kLevel, 0, 45 * kDegree, STATUS_OK, 0, 10},
      {"down one in one", 0, kLevel, 0, 135 * kDegree, STATUS_OK, 0, -10},
      {"to the right", 0, kLevel, 45 * kDegree, kLevel, STATUS_OK, 10, 0},
      {"to the left", 0, kLevel, 315 * kDegree, kLevel, STATUS_OK, -10, 0},
      {"to the right past north", 350 * kDegree, kLevel, 35 * kDegree, kLevel, STATUS_OK, 10, 0},
      {"to the left past north", 35 * kDegree, kLevel, 350 * kDegree, kLevel, STATUS_OK, -10, 0},
      {"base on face 2", 190 * kDegree, 3 * kLevel, 55 * kDegree, 45 * kDegree, STATUS_OK, 10, 10},
      {"remote on face 2", 10 * kDegree, kLevel, 235 * kDegree, 315 * kDegree, STATUS_OK, 10, 10},
      {"one second short of a quarter circle", 0, kLevel, kLevel - 16, kLevel, STATUS_OK,
       10 / std::tan(perSecond), 0},
      {"the same to the left", 0, kLevel, 16 - kLevel, kLevel, STATUS_OK, -10 / std::tan(perSecond),
       0},
      {"one unit nearer to a quarter circle", 0, kLevel, kLevel - 15, 45 * kDegree,
       ERR_SIGHT_OFF_BASE, VALUE_INVALID, 10},
      {"the same to the left", 0, kLevel, 15 - kLevel, 45 * kDegree, ERR_SIGHT_OFF_BASE,
       VALUE_INVALID, 10},
      {"opposite", 0, kLevel, 180 * kDegree, 135 * kDegree, ERR_SIGHT_OFF_BASE, VALUE_INVALID, -10},
      {"readings that wrap at 32 bits", std::numeric_limits<IntAngle>::max(), kLevel,
       std::numeric_limits<IntAngle>::min(), kLevel, STATUS_OK, 10 * perSecond / 16, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_EQ(STATUS_OK, SetBase(row.baseHa, row.baseZenith, 10.0));
    const auto [status, out] = Measure(row.ha, row.zenith);
    EXPECT_EQ(row.status, status);
    EXPECT_NEAR(row.north, out.north, 1e-12 + 1e-9 * std::fabs(row.north));
    EXPECT_NEAR(row.elev, out.elev, 1e-12);
    EXPECT_EQ(Text(Written(out.north, 0.0, out.elev, kFull)), Text(out));
  }
}

TEST(RemoteElevation, RefusesVerticalSightsByTwoSeconds) {
  const struct {
    const char* name;
    IntAngle ha;
    IntAngle zenith;
    std::int32_t status;
  } rows[] = {
      {"straight up", 0, 0, ERR_SIGHT_VERTICAL},
      {"1 second beside straight up", 0, 16, ERR_SIGHT_VERTICAL},
      {"17 units beside straight up", 0, 17, STATUS_OK},
      {"straight up, one circle down", 0, 16 - ANGLE_FULL_CIRCLE, ERR_SIGHT_VERTICAL},
      {"straight up on face 2", ANGLE_HALF_CIRCLE, ANGLE_FULL_CIRCLE - 16, ERR_SIGHT_VERTICAL},
      {"17 units beside it on face 2", ANGLE_HALF_CIRCLE, -17, STATUS_OK},
      {"16 units beside straight down", 0, ANGLE_HALF_CIRCLE - 16, STATUS_OK},
      {"15 units beside straight down", 0, ANGLE_HALF_CIRCLE - 15, ERR_SIGHT_VERTICAL},
      {"straight down", 0, ANGLE_HALF_CIRCLE, ERR_SIGHT_VERTICAL},
      {"15 units beside straight down on face 2", ANGLE_HALF_CIRCLE, ANGLE_HALF_CIRCLE + 15,
       ERR_SIGHT_VERTICAL},
      {"16 units beside straight down on face 2", ANGLE_HALF_CIRCLE, ANGLE_HALF_CIRCLE + 16,
       STATUS_OK},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_EQ(STATUS_OK, SetBase(0, kLevel, 10.0));
    const auto [status, out] = Measure(row.ha, row.zenith);
    EXPECT_EQ(row.status, status);
    if (row.status != STATUS_OK) {
      auto refused = Untouched<CoordPt>();
      refused.east = 0.0;
      refused.elev = VALUE_INVALID;
      refused.flags = kFull;
      EXPECT_EQ(Text(refused), Text(out));
    }
    // The same sight as a base; refused, it takes the earlier base away.
    EXPECT_EQ(row.status, SetBase(row.ha, row.zenith, 10.0));
    const auto [after, height] = Measure(0, kLevel);
    EXPECT_EQ(row.status == STATUS_OK ? STATUS_OK : ERR_NO_BASE, after);
    if (row.status != STATUS_OK) {
      EXPECT_EQ(Text(NoBase()), Text(height));
    }
  }
}

// Sights simulated from coordinates: the height and the offset are those that were built in,
// whichever way the instrument is oriented and on either face of each sight.
TEST(RemoteElevation, RecoversASimulatedScene) {
  std::mt19937_64 random(20270101);
  std::uniform_real_distribution<double> metres(-50.0, 50.0);
  std::uniform_real_distribution<double> away(20.0, 200.0);
  std::uniform_real_distribution<double> circle(0.0, 2 * std::acos(-1.0));
  std::uniform_int_distribution<IntAngle> reading(0, ANGLE_FULL_CIRCLE - 1);
  const CoordPt station = Pt(0, 0, 0, kFull);
  for (int i = 0; i < 2000; ++i) {
    const double azimuth = circle(random);
    const double north = away(random) * std::cos(azimuth);
    const double east = away(random) * std::sin(azimuth);
    const double dist = std::hypot(north, east);
    const double side = metres(random);
    const double height = metres(random);
    const CoordPt reflector = Pt(north, east, metres(random), kFull);
    const CoordPt above = Pt(north, east, reflector.elev + height, kFull);
    const CoordPt beside = Pt(north - side * east / dist, east + side * north / dist, 0, kFull);
    AngDistRec base;
    AngDistRec up;
    AngDistRec across;
    ASSERT_EQ(STATUS_OK, KavoCogoCoordToAngDist(&station, &reflector, &base));
    ASSERT_EQ(STATUS_OK, KavoCogoCoordToAngDist(&station, &above, &up));
    ASSERT_EQ(STATUS_OK, KavoCogoCoordToAngDist(&station, &beside, &across));
    const IntAngle turn = reading(random);
    const auto circleReading = [turn](IntAngle a) { return (a + turn) % ANGLE_FULL_CIRCLE; };
    const auto otherFace = [](IntAngle a) { return (a + ANGLE_HALF_CIRCLE) % ANGLE_FULL_CIRCLE; };
    if (i % 2 == 0) {
      ASSERT_EQ(STATUS_OK, SetBase(circleReading(base.azimuth), base.zenith, base.slopeDist));
    } else {
      ASSERT_EQ(STATUS_OK, SetBase(otherFace(circleReading(base.azimuth)),
                                   ANGLE_FULL_CIRCLE - base.zenith, base.slopeDist));
    }
    const auto [upStatus, face1] = Measure(circleReading(up.azimuth), up.zenith);
    const auto [upStatus2, face2] =
        Measure(otherFace(circleReading(up.azimuth)), ANGLE_FULL_CIRCLE - up.zenith);
    EXPECT_EQ(Text(face1), Text(face2));
    EXPECT_EQ(upStatus, upStatus2);
    // A unit of zenith (1.5e-7 rad half up, half down) at a steep sight of either base or remote.
    const double steep = 1.0 + std::max(above.elev * above.elev, 2500.0) / (dist * dist);
    EXPECT_NEAR(height, face1.elev, 4e-7 * dist * steep);
    const auto [acrossStatus, offset] = Measure(circleReading(across.azimuth), kLevel);
    ASSERT_EQ(STATUS_OK, acrossStatus);
    EXPECT_NEAR(side, offset.north, 4e-7 * dist * (1.0 + side * side / (dist * dist)));
  }
}

}  // namespace
