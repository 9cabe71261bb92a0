#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "points.hpp"
#include "scenes.hpp"

namespace {

using namespace kavo_test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr IntAngle kEast = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kSouth = -ANGLE_HALF_CIRCLE;  // the one bearing whose tangent is exactly 0

// Steeper than the bound: the one is held back to a line of constant north, the other is not.
const LineDef kSteepRight = TwoPoints(Pt(0, 0), Pt(0x1p-30, 1));
const LineDef kSteepLeft = TwoPoints(Pt(0, 0), Pt(0x1p-30, -1));

const LineDef kDiagonal = TwoPoints(Pt(0, 0), Pt(1, 1));
const LineDef kOnePlace = TwoPoints(Pt(1, 5, 2, kFull), Pt(1, 5, 3, kFull));
const LineDef kNoFirst = TwoPoints(Pt(0, 0, 0, COORD_HAS_ELEV), Pt(1, 1));
const LineDef kNoSecond = TwoPoints(Pt(0, 0), Pt(1, 1, 0, COORD_HAS_ELEV));

LineDef ConstantEast(double east) { return TwoPoints(Pt(-1, east), Pt(1, east)); }
LineDef ConstantNorth(double north) { return TwoPoints(Pt(north, -9), Pt(north, 9)); }

TEST(CrossLine, GivesThePoint) {
  const struct {
    const char* name;
    LineDef line1;
    LineDef line2;
    std::int32_t status;
    CoordPt out;
  } rows[] = {
      {"slopes 1 and -1, with elevations that do not count",
       TwoPoints(Pt(0, 0, 7, kFull), Pt(2, 2, 8, kFull)), TwoPoints(Pt(0, 4), Pt(4, 0)), STATUS_OK,
       Written(2, 2)},
      {"first of constant north", ConstantNorth(3), kDiagonal, STATUS_OK, Written(3, 3)},
      {"second of constant north", kDiagonal, ConstantNorth(3), STATUS_OK, Written(3, 3)},
      {"constant east and north", ConstantEast(4), ConstantNorth(3), STATUS_OK, Written(3, 4)},
      {"bearings due south and due east", Bearing(Pt(1, 2), kSouth), Bearing(Pt(7, 8), kEast),
       STATUS_OK, Written(7, 2)},
      {"steep to the right counts as constant north", kSteepRight, ConstantEast(5), STATUS_OK,
       Written(0, 5)},
      {"steep to the left does not", kSteepLeft, ConstantEast(5), STATUS_OK,
       Written(-5 * 0x1p-30, 5)},
      {"steep to the left crosses constant north", kSteepLeft, ConstantNorth(0x1p-30), STATUS_OK,
       Written(0x1p-30, -1)},
      {"steep to the right is parallel to constant north", kSteepRight, ConstantNorth(3),
       ERR_PARALLEL, NotFound()},
      {"both of constant north", ConstantNorth(3), ConstantNorth(4), ERR_PARALLEL, NotFound()},
      {"a line with itself", kDiagonal, kDiagonal, ERR_PARALLEL, NotFound()},
      {"opposite bearings", Bearing(Pt(0, 0), 0), Bearing(Pt(0, 9), ANGLE_HALF_CIRCLE),
       ERR_PARALLEL, NotFound()},
      {"slopes 2^-16 apart cross", TwoPoints(Pt(0, 0), Pt(0x1p16, 1)), ConstantEast(1), STATUS_OK,
       Written(0x1p16, 1)},
      {"slopes exactly 1e-5 apart cross", TwoPoints(Pt(0, 0), Pt(1, 1e-5)), ConstantEast(0),
       STATUS_OK, Written(0, 0)},
      {"slopes just less than 1e-5 apart", TwoPoints(Pt(0, 0), Pt(1, std::nextafter(1e-5, 0))),
       ConstantEast(0), ERR_PARALLEL, NotFound()},
      {"the same the other way round", ConstantEast(0),
       TwoPoints(Pt(0, 0), Pt(1, std::nextafter(1e-5, 0))), ERR_PARALLEL, NotFound()},
      {"first line a point, before the second is looked at", kOnePlace, kNoFirst, ERR_NO_DIRECTION,
       NotFound()},
      {"second line a point", kDiagonal, kOnePlace, ERR_NO_DIRECTION, NotFound()},
      {"first line without its first point", kNoFirst, kOnePlace, ERR_POINT_INVALID, NotFound()},
      {"first line without its second point", kNoSecond, kDiagonal, ERR_POINT_INVALID, NotFound()},
      {"second line without its first point", kDiagonal, kNoFirst, ERR_POINT_INVALID, NotFound()},
      {"bearing without its point", Bearing(Pt(0, 0, 0, COORD_HAS_ELEV), 0), kDiagonal,
       ERR_POINT_INVALID, NotFound()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto out = Untouched<CoordPt>();
    EXPECT_EQ(row.status, KavoCogoCalcCrossLine(&row.line1, &row.line2, &out));
    EXPECT_EQ(Text(row.out), Text(out));
  }
}

using Points = std::array<CoordPt, 2>;

Points Both(double north1, double east1, double north2, double east2) {
  return {Written(north1, east1), Written(north2, east2)};
}

Points Twice(const CoordPt& point) { return {point, point}; }

const Points kUntouched = Twice(Untouched<CoordPt>());
const Points kNotFound = Twice(NotFound());

TEST(CrossLineCircle, GivesThePoints) {
  const struct {
    const char* name;
    LineDef line;
    CoordPt centre;
    double radius;
    std::int32_t status;
    Points out;
  } rows[] = {
      {"slope 1: -4 and 3 solve n n + (n + 1)(n + 1) = 25", TwoPoints(Pt(0, 1), Pt(1, 2)), Pt(0, 0),
       5, 2, Both(-4, -3, 3, 4)},
      {"constant east; no flag of the centre is looked at", ConstantEast(3), Pt(0, 0, 0, 0), 5, 2,
       Both(-4, 3, 4, 3)},
      {"constant north", ConstantNorth(4), Pt(0, 1), 5, 2, Both(4, -2, 4, 4)},
      {"bearing due east", Bearing(Pt(4, 99), kEast), Pt(0, 1), 5, 2, Both(4, -2, 4, 4)},
      {"steep to the right counts as constant north", kSteepRight, Pt(0, 0), 5, 2,
       Both(0, -5, 0, 5)},
      {"steep to the left does not", kSteepLeft, Pt(0, 0), 5, 2,
       Both(-5 * 0x1p-30, 5, 5 * 0x1p-30, -5)},
      {"constant east touches", ConstantEast(5), Pt(2, 0), 5, 1, Both(2, 5, 2, 5)},
      {"constant north touches", ConstantNorth(5), Pt(0, 2), 5, 1, Both(5, 2, 5, 2)},
      {"no radius, on the line", kDiagonal, Pt(2, 2), 0, 1, Both(2, 2, 2, 2)},
      {"no radius, off the line", kDiagonal, Pt(2, 3), -0.0, 0, kNotFound},
      {"constant east misses", ConstantEast(6), Pt(0, 0), 5, 0, kNotFound},
      {"constant north misses and is told all the same", ConstantNorth(6), Pt(0, 0), 5, 0,
       Both(6, VALUE_INVALID, 6, VALUE_INVALID)},
      {"negative radius, before the line is looked at", kNoFirst, Pt(0, 0), -5, ERR_REFUSED,
       kUntouched},
      {"the line a point", kOnePlace, Pt(1, 5), 5, ERR_NO_DIRECTION, kNotFound},
      {"no first point", kNoFirst, Pt(0, 0), 5, ERR_POINT_INVALID, kNotFound},
      {"no second point", kNoSecond, Pt(0, 0), 5, ERR_POINT_INVALID, kNotFound},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Points out = kUntouched;
    EXPECT_EQ(row.status,
              KavoCogoCalcCrossLineCircle(&row.line, &row.centre, row.radius, out.data()));
    EXPECT_EQ(Text(row.out[0]), Text(out[0]));
    EXPECT_EQ(Text(row.out[1]), Text(out[1]));
  }
}

TEST(CrossCircle, GivesThePoints) {
  const struct {
    const char* name;
    CoordPt centre1;
    double radius1;
    CoordPt centre2;
    double radius2;
    std::int32_t status;
    Points out;
  } rows[] = {
      {"second centre due east: right is south; no flag is looked at", Pt(0, 0, 0, 0), 5,
       Pt(0, 8, 0, 0), 5, 2, Both(-3, 4, 3, 4)},
      {"second centre due north: right is east", Pt(1, 2), 5, Pt(9, 2), 5, 2, Both(5, 5, 5, -1)},
      {"touching from outside", Pt(0, 0), 4, Pt(8, 0), 4, 1, Both(4, 0, 4, 0)},
      {"touching from inside", Pt(0, 0), 6, Pt(4, 0), 2, 1, Both(6, 0, 6, 0)},
      {"apart", Pt(0, 0), 3, Pt(8, 0), 4, 0, kNotFound},
      {"one inside the other", Pt(0, 0), 9, Pt(4, 0), 2, 0, kNotFound},
      {"concentric", Pt(1, 2), 3, Pt(1, 2), 4, 0, kUntouched},
      {"one circle twice", Pt(1, 2), 3, Pt(1, 2), 3, ERR_REFUSED, kUntouched},
      {"no first radius", Pt(1, 2), 0, Pt(1, 2), 3, ERR_REFUSED, kUntouched},
      {"negative second radius", Pt(0, 0), 5, Pt(8, 0), -5, ERR_REFUSED, kUntouched},
      {"a radius that is not a number", Pt(0, 0), 5, Pt(8, 0), kNaN, ERR_REFUSED, kUntouched},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Points out = kUntouched;
    EXPECT_EQ(row.status, KavoCogoCalcCrossCircle(&row.centre1, row.radius1, &row.centre2,
                                                  row.radius2, out.data()));
    EXPECT_EQ(Text(row.out[0]), Text(out[0]));
    EXPECT_EQ(Text(row.out[1]), Text(out[1]));
  }
}

constexpr int kScenes = 5000;

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

TEST(CrossLine, TakesAnyOtherModeForABearing) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const LineDef line = scenes.Line();
    LineDef bearing = Bearing(scenes.Point(), scenes.Angle(-ANGLE_FULL_CIRCLE, ANGLE_FULL_CIRCLE));
    bearing.mode = static_cast<std::uint16_t>(3 * (i % 3));
    const double radians = bearing.direction * (std::acos(-1.0) / ANGLE_HALF_CIRCLE);
    const LineDef twoPoints = TwoPoints(bearing.p1, Pt(bearing.p1.north + 1000 * std::cos(radians),
                                                       bearing.p1.east + 1000 * std::sin(radians)));
    if (!MeetWell(line, twoPoints)) {
      continue;
    }
    CoordPt want;
    CoordPt got;
    ASSERT_EQ(STATUS_OK, KavoCogoCalcCrossLine(&line, &twoPoints, &want));
    ASSERT_EQ(STATUS_OK, KavoCogoCalcCrossLine(&line, &bearing, &got));
    ASSERT_TRUE(Near(want, got, 1e-7)) << Text(bearing.direction);
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
