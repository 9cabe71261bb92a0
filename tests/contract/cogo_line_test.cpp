#include <gtest/gtest.h>

#include <cmath>

#include "scenes.hpp"

namespace {

using namespace kavo_test;

TEST(PtLine, FindsThePointThatOffsetToCoordFinds) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const LineDef line = scenes.Line();
    const CoordPt point = scenes.Point();
    const double along = Along(line.p1, line.p2, point);
    const double offset = Offset(line.p1, line.p2, point);
    CoordPt foot;
    CoordPt onLine;
    CoordPt back;
    ASSERT_EQ(STATUS_OK, KavoCogoCalcPtLine(&line, &point, &foot));
    ASSERT_EQ(STATUS_OK, KavoCogoOffsetToCoord(&line.p1, &line.p2, along, 0, &onLine));
    ASSERT_EQ(STATUS_OK, KavoCogoOffsetToCoord(&line.p1, &line.p2, along, offset, &back));
    ASSERT_NEAR(0, Offset(line.p1, line.p2, foot), 1e-8);
    ASSERT_TRUE(Near(onLine, foot, 1e-8));
    ASSERT_TRUE(Near(point, back, 1e-8));
    ASSERT_EQ(onLine.elev, back.elev);
    // Both take the elevation from the line: by north difference the one, by distance the other.
    if (std::fabs(line.p2.north - line.p1.north) > 1) {
      ASSERT_NEAR(onLine.elev, foot.elev, 1e-5);
    }
  }
}

TEST(TransLine, TurnsClockwiseAndThenShiftsToTheRight) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const LineDef line = scenes.Line();
    const IntAngle rotation = scenes.Angle(-ANGLE_FULL_CIRCLE, ANGLE_FULL_CIRCLE);
    const double offset = scenes.Between(-50, 50);
    const double length = Distance(line.p1, line.p2);
    const double radians = rotation * kRadPerUnit;
    LineDef turned;
    LineDef shifted;
    ASSERT_EQ(STATUS_OK, KavoCogoCalcTransLine(&line, rotation, 0, &turned));
    ASSERT_EQ(STATUS_OK, KavoCogoCalcTransLine(&line, rotation, offset, &shifted));
    ASSERT_TRUE(Near(line.p1, turned.p1, 0));
    ASSERT_NEAR(length * std::cos(radians), Along(line.p1, line.p2, turned.p2), 1e-9);
    ASSERT_NEAR(length * std::sin(radians), Offset(line.p1, line.p2, turned.p2), 1e-9);
    ASSERT_EQ(line.p2.elev, turned.p2.elev);
    ASSERT_NEAR(0, Along(turned.p1, turned.p2, shifted.p1), 1e-9);
    ASSERT_NEAR(offset, Offset(turned.p1, turned.p2, shifted.p1), 1e-9);
    ASSERT_NEAR(length, Along(turned.p1, turned.p2, shifted.p2), 1e-9);
    ASSERT_NEAR(offset, Offset(turned.p1, turned.p2, shifted.p2), 1e-9);
    ASSERT_EQ(turned.direction, shifted.direction);
  }
}

}  // namespace
