#include "core/direction.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "fake_host.hpp"
#include "points.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

const double kNaN = std::nan("");

TEST(AzimuthBetween, CountsFromNorthTowardsEast) {
  const struct {
    const char* name;
    CoordPt from;
    CoordPt to;
    IntAngle azimuth;
    IntAngle fromSouth;  // with azimuth reference 1
  } rows[] = {
      {"north", Pt(1, 1), Pt(2, 1), 0, ANGLE_HALF_CIRCLE},
      {"east", Pt(1, 1), Pt(1, 2), ANGLE_QUARTER_CIRCLE, 3 * ANGLE_QUARTER_CIRCLE},
      {"south", Pt(1, 1), Pt(0, 1), ANGLE_HALF_CIRCLE, 0},
      {"south west", Pt(1, 1), Pt(0, 0), 225 * kDegree, 45 * kDegree},
      {"one place", Pt(1, 1), Pt(1, 1), ANGLE_INVALID, ANGLE_INVALID},
      {"not a number", Pt(1, 1), Pt(1, kNaN), ANGLE_INVALID, ANGLE_INVALID},
      {"from no place", Pt(1, 1, 0, COORD_HAS_ELEV), Pt(2, 1), ANGLE_INVALID, ANGLE_INVALID},
      {"to no place", Pt(1, 1), Pt(2, 1, 0, 0), ANGLE_INVALID, ANGLE_INVALID},
  };
  const HostGuard guard;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Host().azimuthReference = 0;
    EXPECT_EQ(row.azimuth, AzimuthBetween(row.from, row.to));
    Host().azimuthReference = 2;  // only 1 turns
    EXPECT_EQ(row.azimuth, AzimuthBetween(row.from, row.to));
    Host().azimuthReference = 1;
    EXPECT_EQ(row.fromSouth, AzimuthBetween(row.from, row.to));
  }
}

TEST(ZenithBetween, CountsFromStraightUp) {
  const struct {
    const char* name;
    CoordPt to;
    IntAngle zenith;
  } rows[] = {
      {"straight up", Pt(0, 0, 1), 0},
      {"up one in one", Pt(0, -1, 1), 45 * kDegree},
      {"level", Pt(3, 4, 0), ANGLE_QUARTER_CIRCLE},
      {"down one in one", Pt(1, 0, -1), 135 * kDegree},
      {"straight down", Pt(0, 0, -1), ANGLE_HALF_CIRCLE},
      {"here", Pt(0, 0, 0), ANGLE_INVALID},
      {"not a number", Pt(1, 0, kNaN), ANGLE_INVALID},
      {"flags are not looked at", Pt(3, 4, 0, 0), ANGLE_QUARTER_CIRCLE},
  };
  const HostGuard guard;
  Host().azimuthReference = 1;  // never turns a zenith angle
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.zenith, ZenithBetween(Pt(0, 0), row.to));
  }
}

TEST(RelativeDirection, FoldsIntoHalfACircleEitherSide) {
  const CoordPt origin = Pt(0, 0);
  const CoordPt east = Pt(0, 1);
  EXPECT_EQ(0, RelativeDirection(origin, east, ANGLE_QUARTER_CIRCLE));
  EXPECT_EQ(-ANGLE_HALF_CIRCLE, RelativeDirection(origin, east, -ANGLE_QUARTER_CIRCLE));
  EXPECT_EQ(ANGLE_HALF_CIRCLE - 1, RelativeDirection(origin, east, 1 - ANGLE_QUARTER_CIRCLE));
  // Meant so: a direction that does not exist is folded like any other number.
  EXPECT_EQ(ANGLE_INVALID % ANGLE_FULL_CIRCLE, RelativeDirection(origin, origin, 0));
}

TEST(AzimuthReference, TurnsEveryDirectionOfTheExports) {
  const HostGuard guard;
  Host().azimuthReference = 1;
  const CoordPt origin = Pt(0, 0);
  const CoordPt east = Pt(0, 2);

  AngDistRec polar{};
  ASSERT_EQ(STATUS_OK, KavoCogoCoordToAngDist(&origin, &east, &polar));
  EXPECT_EQ(3 * ANGLE_QUARTER_CIRCLE, polar.azimuth);

  CoordPt back{};
  ASSERT_EQ(STATUS_OK, KavoCogoAngDistToCoord(&origin, &polar, &back));
  EXPECT_NEAR(2.0, back.east, 1e-15);

  // Turned when it is read and again when it is written: the direction of a line by direction comes
  // back as it was, here with a rotation of one degree and above a full circle.
  const LineDef line = Bearing(origin, ANGLE_FULL_CIRCLE + ANGLE_QUARTER_CIRCLE);
  LineDef turned{};
  ASSERT_EQ(STATUS_OK, KavoCogoCalcTransLine(&line, 2 * ANGLE_FULL_CIRCLE, 1.0, &turned));
  EXPECT_EQ(ANGLE_QUARTER_CIRCLE, turned.direction);
  EXPECT_NEAR(1.0, turned.p1.north, 1e-15);
}

}  // namespace
