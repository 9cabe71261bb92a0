#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "scenes.hpp"

namespace {

using namespace kavo_test;

// Scenes whose answer hangs on the last digits are left out: lines that cross at less than six
// degrees, lines within half a degree of constant north, figures within a centimetre of touching.
constexpr double kLeastSine = 0.1;
constexpr double kGreatestSlope = 100;
constexpr double kNearTouching = 0.01;

bool IsSteep(const LineDef& line) {
  return std::fabs(line.p2.east - line.p1.east) >
         kGreatestSlope * std::fabs(line.p2.north - line.p1.north);
}

bool MeetWell(const LineDef& line1, const LineDef& line2) {
  const double offset = Offset(line1.p1, line1.p2, line2.p2) - Offset(line1.p1, line1.p2, line2.p1);
  return std::fabs(offset) > kLeastSine * Distance(line2.p1, line2.p2);
}

TEST(CrossLine, LiesOnBothLinesAndMovesWithThem) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const LineDef line1 = scenes.Line();
    const LineDef line2 = scenes.Line();
    const Motion motion = scenes.AnyMotion();
    if (!MeetWell(line1, line2)) {
      continue;
    }
    CoordPt out;
    CoordPt swapped;
    CoordPt moved;
    const LineDef moved1 = motion(line1);
    const LineDef moved2 = motion(line2);
    ASSERT_EQ(STATUS_OK, KavoCogoCalcCrossLine(&line1, &line2, &out));
    ASSERT_EQ(STATUS_OK, KavoCogoCalcCrossLine(&line2, &line1, &swapped));
    ASSERT_EQ(STATUS_OK, KavoCogoCalcCrossLine(&moved1, &moved2, &moved));
    ASSERT_NEAR(0, Offset(line1.p1, line1.p2, out), 1e-7);
    ASSERT_NEAR(0, Offset(line2.p1, line2.p2, out), 1e-7);
    ASSERT_TRUE(Near(out, swapped, 1e-7));
    ASSERT_TRUE(Near(motion(out), moved, 1e-7));
  }
}

TEST(CrossLineCircle, LieOnBothAndMoveWithThem) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const LineDef line = scenes.Line();
    const CoordPt centre = scenes.Point();
    const double radius = scenes.Between(1, 500);
    const Motion motion = scenes.AnyMotion();
    const LineDef movedLine = motion(line);
    const CoordPt movedCentre = motion(centre);
    const double room = radius - std::fabs(Offset(line.p1, line.p2, centre));
    if (std::fabs(room) < kNearTouching || IsSteep(line) || IsSteep(movedLine)) {
      continue;
    }
    CoordPt out[2];
    CoordPt moved[2];
    const std::int32_t count = room > 0 ? 2 : 0;
    ASSERT_EQ(count, KavoCogoCalcCrossLineCircle(&line, &centre, radius, out));
    ASSERT_EQ(count, KavoCogoCalcCrossLineCircle(&movedLine, &movedCentre, radius, moved));
    if (count == 0) {
      continue;
    }
    for (const CoordPt& p : out) {
      ASSERT_NEAR(0, Offset(line.p1, line.p2, p), 1e-6);
      ASSERT_NEAR(radius, Distance(centre, p), 1e-6);
    }
    ASSERT_LT(out[0].north, out[1].north);
    if (motion(out[0]).north > motion(out[1]).north) {
      std::swap(out[0], out[1]);
    }
    ASSERT_TRUE(Near(motion(out[0]), moved[0], 1e-6));
    ASSERT_TRUE(Near(motion(out[1]), moved[1], 1e-6));
  }
}

TEST(CrossCircle, LieOnBothRightThenLeftAndMoveWithThem) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const CoordPt centre1 = scenes.Point();
    const CoordPt centre2 = scenes.Point();
    const double radius1 = scenes.Between(1, 500);
    const double radius2 = scenes.Between(1, 500);
    const Motion motion = scenes.AnyMotion();
    const CoordPt moved1 = motion(centre1);
    const CoordPt moved2 = motion(centre2);
    const double apart = Distance(centre1, centre2);
    const double room = std::fmin(radius1 + radius2 - apart, apart - std::fabs(radius1 - radius2));
    if (std::fabs(room) < kNearTouching || apart < 1) {
      continue;
    }
    CoordPt out[2];
    CoordPt moved[2];
    const std::int32_t count = room > 0 ? 2 : 0;
    ASSERT_EQ(count, KavoCogoCalcCrossCircle(&centre1, radius1, &centre2, radius2, out));
    ASSERT_EQ(count, KavoCogoCalcCrossCircle(&moved1, radius1, &moved2, radius2, moved));
    if (count == 0) {
      continue;
    }
    for (const CoordPt& p : out) {
      ASSERT_NEAR(radius1, Distance(centre1, p), 1e-8);
      ASSERT_NEAR(radius2, Distance(centre2, p), 1e-8);
    }
    ASSERT_GT(Offset(centre1, centre2, out[0]), 0);
    ASSERT_LT(Offset(centre1, centre2, out[1]), 0);
    if (motion.side < 0) {
      std::swap(out[0], out[1]);
    }
    ASSERT_TRUE(Near(motion(out[0]), moved[0], 1e-8));
    ASSERT_TRUE(Near(motion(out[1]), moved[1], 1e-8));
  }
}

}  // namespace
