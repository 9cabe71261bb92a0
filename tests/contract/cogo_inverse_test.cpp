#include <gtest/gtest.h>

#include "scenes.hpp"

namespace {

using namespace kavo_test;

TEST(Forward, UndoesTheInverse) {
  Scenes scenes;
  for (int i = 0; i < 10000; ++i) {
    const CoordPt station = scenes.Point();
    const CoordPt point = scenes.Point();
    AngDistRec polar;
    CoordPt back;
    ASSERT_EQ(STATUS_OK, KavoCogoCoordToAngDist(&station, &point, &polar));
    ASSERT_EQ(STATUS_OK, KavoCogoAngDistToCoord(&station, &polar, &back));
    // Half a unit of azimuth (1.5e-7 rad) at the distance, and the last digits.
    ASSERT_TRUE(Near(point, back, 1.6e-7 * polar.horizDist + 1e-10));
    ASSERT_NEAR(point.elev, back.elev, 1e-9);
  }
}

}  // namespace
