#include "core/direction.hpp"

#include <gtest/gtest.h>

#include "points.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

TEST(AzimuthBetween, NeedsTwoPlaces) {
  EXPECT_EQ(225 * kDegree, AzimuthBetween(Pt(1, 1), Pt(0, 0)));
  EXPECT_EQ(ANGLE_INVALID, AzimuthBetween(Pt(1, 1), Pt(1, 1)));
  EXPECT_EQ(ANGLE_INVALID, AzimuthBetween(Pt(1, 1, 0, COORD_HAS_ELEV), Pt(0, 0)));
  EXPECT_EQ(ANGLE_INVALID, AzimuthBetween(Pt(1, 1), Pt(0, 0, 0, COORD_HAS_ELEV)));
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

}  // namespace
