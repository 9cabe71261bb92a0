#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "points.hpp"
#include "scenes.hpp"

namespace {

using namespace kavo_test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kRadPerUnit = 3.14159265358979323846 / ANGLE_HALF_CIRCLE;

// What the in-place normalisation makes of a sum of no more than a full circle.
constexpr IntAngle kNormalized0 = 2138423296;

CoordPt High(double north, double east, double elev) { return Pt(north, east, elev, kFull); }

TEST(PtLine, GivesTheFoot) {
  const struct {
    const char* name;
    LineDef line;
    CoordPt point;
    std::int32_t status;
    CoordPt foot;
  } rows[] = {
      {"slope 1; no flag of the point is looked at", TwoPoints(Pt(0, 0), Pt(10, 10)),
       Pt(0, 10, 7, 0), STATUS_OK, Written(5, 5)},
      {"slope -1/2", TwoPoints(Pt(0, 5), Pt(10, 0)), Pt(0, 0), STATUS_OK, Written(2, 4)},
      {"constant east", TwoPoints(Pt(0, 0), Pt(10, 0)), High(5, 5, 7), STATUS_OK, Written(5, 0)},
      {"constant north", TwoPoints(Pt(3, 0), Pt(3, 9)), Pt(7, 5), STATUS_OK, Written(3, 5)},
      {"bearing due east", Bearing(Pt(3, 0), ANGLE_QUARTER_CIRCLE), Pt(7, 5), STATUS_OK,
       Written(3, 5)},
      {"bearing with a second point that does not count",
       {Pt(3, 0), High(8, 9, 7), ANGLE_QUARTER_CIRCLE, LINE_MODE_DIRECTION, 0},
       Pt(7, 5),
       STATUS_OK,
       Written(3, 5)},
      {"bearing due south, level at its point", Bearing(High(3, 1, 7), -ANGLE_HALF_CIRCLE),
       Pt(9, 5), STATUS_OK, Written(9, 1, 7, kFull)},
      {"elevation between both", TwoPoints(High(0, 0, 100), High(10, 0, 110)), Pt(5, 5), STATUS_OK,
       Written(5, 0, 105, kFull)},
      {"elevation beyond both", TwoPoints(High(0, 0, 100), High(10, 10, 110)), Pt(-20, -20),
       STATUS_OK, Written(-20, -20, 80, kFull)},
      {"elevation of the first alone", TwoPoints(High(0, 0, 100), Pt(10, 0, 110)), Pt(5, 5),
       STATUS_OK, Written(5, 0, 100, kFull)},
      {"elevation of the second alone", TwoPoints(Pt(0, 0, 100), High(10, 0, 110)), Pt(5, 5),
       STATUS_OK, Written(5, 0, 110, kFull)},
      {"no north difference, no elevation", TwoPoints(High(3, 0, 100), High(3, 9, 110)), Pt(7, 5),
       STATUS_OK, Written(3, 5, kNaN, kFull)},
      {"held back to constant north, level at the first",
       TwoPoints(High(0, 0, 100), High(0x1p-30, 1, 110)), Pt(7, 5), STATUS_OK,
       Written(0, 5, 100, kFull)},
      {"the line a point", TwoPoints(High(1, 5, 2), High(1, 5, 3)), Pt(0, 0), ERR_NO_DIRECTION,
       NotFound()},
      {"no first point", TwoPoints(Pt(0, 0, 5, COORD_HAS_ELEV), High(1, 1, 5)), Pt(0, 0),
       ERR_POINT_INVALID, NotFound()},
      {"no second point", TwoPoints(High(0, 0, 5), Pt(1, 1, 5, COORD_HAS_ELEV)), Pt(0, 0),
       ERR_POINT_INVALID, NotFound()},
      {"bearing without its point", Bearing(Pt(0, 0, 0, 0), 0), Pt(0, 0), ERR_POINT_INVALID,
       NotFound()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto foot = Untouched<CoordPt>();
    EXPECT_EQ(row.status, KavoCogoCalcPtLine(&row.line, &row.point, &foot));
    EXPECT_EQ(Text(row.foot), Text(foot));
  }
}

TEST(OffsetToCoord, GivesThePoint) {
  const struct {
    const char* name;
    CoordPt a;
    CoordPt b;
    double along;
    double offset;
    std::int32_t status;
    CoordPt out;
  } rows[] = {
      {"due north: right is east", Pt(0, 0), Pt(10, 0), 3, 2, STATUS_OK, Written(3, 2)},
      {"due north: left is west", Pt(0, 0), Pt(10, 0), 3, -2, STATUS_OK, Written(3, -2)},
      {"due east: right is south", Pt(1, 2), Pt(1, 10), 3, 2, STATUS_OK, Written(-1, 5)},
      {"behind the start", Pt(1, 2), Pt(1, 10), -3, 0, STATUS_OK, Written(1, -1)},
      {"the grade, whatever the offset", High(0, 0, 100), High(8, 0, 104), 3, 9, STATUS_OK,
       Written(3, 9, 101.5, kFull)},
      {"the grade beyond the end", High(0, 0, 100), High(8, 0, 104), 16, 0, STATUS_OK,
       Written(16, 0, 108, kFull)},
      {"level at the start", High(0, 0, 100), Pt(8, 0, 104), 3, 0, STATUS_OK,
       Written(3, 0, 100, kFull)},
      {"level at the end", Pt(0, 0, 100), High(8, 0, 104), 3, 0, STATUS_OK,
       Written(3, 0, 104, kFull)},
      {"no elevation", Pt(0, 0, 100), Pt(8, 0, 104), 3, 0, STATUS_OK, Written(3, 0)},
      {"one place", High(1, 5, 2), High(1, 5, 3), 3, 2, ERR_NO_DIRECTION, Untouched<CoordPt>()},
      {"no start", Pt(1, 5, 0, COORD_HAS_ELEV), Pt(1, 5), 3, 2, ERR_POINT_INVALID,
       Untouched<CoordPt>()},
      {"no end", Pt(1, 5), Pt(1, 5, 0, COORD_HAS_ELEV), 3, 2, ERR_POINT_INVALID,
       Untouched<CoordPt>()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto out = Untouched<CoordPt>();
    EXPECT_EQ(row.status, KavoCogoOffsetToCoord(&row.a, &row.b, row.along, row.offset, &out));
    EXPECT_EQ(Text(row.out), Text(out));
  }
}

// A line as the library writes it over a record that was Untouched.
LineDef WrittenLine(const CoordPt& p1, const CoordPt& p2, IntAngle direction, std::uint16_t mode) {
  auto line = Untouched<LineDef>();
  line.p1 = Written(p1.north, p1.east, p1.elev, p1.flags);
  line.p2 = Written(p2.north, p2.east, p2.elev, p2.flags);
  line.direction = direction;
  line.mode = mode;
  return line;
}

TEST(TransLine, GivesTheLine) {
  constexpr std::uint16_t kOddFlags = 0x8001;
  const CoordPt none = Pt(0, 0, 0, 0);
  const auto withDirection = [](LineDef line, IntAngle direction, std::uint16_t mode) {
    line.direction = direction;
    line.mode = mode;
    return line;
  };
  const struct {
    const char* name;
    LineDef line;
    IntAngle rotation;
    double offset;
    std::int32_t status;
    LineDef out;
  } rows[] = {
      {"a direction of 0 is normalised in place", Bearing(High(1, 2, 3), 0), 0, 0, STATUS_OK,
       WrittenLine(High(1, 2, 3), none, kNormalized0, 1)},
      {"so is a full circle", Bearing(Pt(1, 2), ANGLE_FULL_CIRCLE - 5), 5, 0, STATUS_OK,
       WrittenLine(Pt(1, 2), none, kNormalized0, 1)},
      {"a negative sum", Bearing(Pt(1, 2), 4), -5, 0, STATUS_OK,
       WrittenLine(Pt(1, 2), none, kNormalized0 - 1, 1)},
      {"more than a full circle passes", Bearing(Pt(1, 2), ANGLE_FULL_CIRCLE), 1, 0, STATUS_OK,
       WrittenLine(Pt(1, 2), none, ANGLE_FULL_CIRCLE + 1, 1)},
      {"a sum that wraps at 32 bits", Bearing(Pt(1, 2), INT32_MAX), 1, 0, STATUS_OK,
       WrittenLine(Pt(1, 2), none, 2126747648, 1)},
      {"no direction stays none", Bearing(Pt(1, 2), ANGLE_INVALID), 5, 0, STATUS_OK,
       WrittenLine(Pt(1, 2), none, ANGLE_INVALID, 1)},
      {"any other mode is a bearing, its second point a copy whatever it holds",
       withDirection(TwoPoints(Pt(1, 2, 7, kOddFlags), Pt(1, 2, kNaN, 0x7FFC)), 0, 7), 0, 0,
       STATUS_OK, WrittenLine(Pt(1, 2, 7, kOddFlags), Pt(1, 2, kNaN, 0x7FFC), kNormalized0, 7)},
      {"two points: the direction is theirs, all else a copy",
       withDirection(TwoPoints(Pt(0, 0, 7, kOddFlags), High(0, 8, 9)), 5, 2), 0, 0, STATUS_OK,
       WrittenLine(Pt(0, 0, 7, kOddFlags), High(0, 8, 9), kNormalized0 + ANGLE_QUARTER_CIRCLE, 2)},
      {"shifted to the right, not turned", TwoPoints(Pt(0, 0, 7), Pt(8, 0)), 0, 1, STATUS_OK,
       WrittenLine(Pt(0, 1), Pt(8, 1), kNormalized0, 2)},
      {"shifted to the left, keeping the grade", TwoPoints(High(0, 0, 7), High(8, 0, 9)), 0, -1,
       STATUS_OK, WrittenLine(High(0, -1, 7), High(8, -1, 9), kNormalized0, 2)},
      {"a shift gives both the one elevation", TwoPoints(High(0, 0, 7), Pt(8, 0, 9)), 0, 1,
       STATUS_OK, WrittenLine(High(0, 1, 7), High(8, 1, 7), kNormalized0, 2)},
      {"a coordinate that is not a number leaves the direction",
       withDirection(TwoPoints(Pt(0, 0), Pt(kNaN, 0)), 42, 2), 0, 0, STATUS_OK,
       WrittenLine(Pt(0, 0), Pt(kNaN, 0), 42, 2)},
      {"one place", TwoPoints(High(1, 5, 2), High(1, 5, 3)), 5, 1, ERR_NO_DIRECTION,
       Untouched<LineDef>()},
      {"no first point", TwoPoints(none, Pt(1, 5)), 5, 1, ERR_POINT_INVALID, Untouched<LineDef>()},
      {"no second point", TwoPoints(Pt(0, 0), none), 5, 1, ERR_POINT_INVALID, Untouched<LineDef>()},
      {"bearing without its point", Bearing(none, 0), 5, 1, ERR_POINT_INVALID,
       Untouched<LineDef>()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto out = Untouched<LineDef>();
    EXPECT_EQ(row.status, KavoCogoCalcTransLine(&row.line, row.rotation, row.offset, &out));
    EXPECT_EQ(Text(row.out), Text(out));
  }
}

constexpr int kScenes = 5000;

TEST(PtLine, FootHasNoOffsetAndMovesWithTheScene) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const LineDef line = scenes.Line();
    const CoordPt point = scenes.Point();
    const Motion motion = scenes.AnyMotion();
    const LineDef movedLine = motion(line);
    const CoordPt movedPoint = motion(point);
    CoordPt foot;
    CoordPt movedFoot;
    ASSERT_EQ(STATUS_OK, KavoCogoCalcPtLine(&line, &point, &foot));
    ASSERT_EQ(STATUS_OK, KavoCogoCalcPtLine(&movedLine, &movedPoint, &movedFoot));
    ASSERT_NEAR(0, Offset(line.p1, line.p2, foot), 1e-8);
    ASSERT_NEAR(Along(line.p1, line.p2, point), Along(line.p1, line.p2, foot), 1e-8);
    ASSERT_TRUE(Near(motion(foot), movedFoot, 1e-8));
  }
}

TEST(OffsetToCoord, UndoesFootAndDistance) {
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
    ASSERT_TRUE(Near(foot, onLine, 1e-8));
    ASSERT_TRUE(Near(point, back, 1e-8));
    ASSERT_NEAR(std::fabs(offset), Distance(foot, point), 1e-8);
    // Both take the elevation from the line: by north difference the one, by distance the other.
    if (std::fabs(line.p2.north - line.p1.north) > 1) {
      ASSERT_NEAR(onLine.elev, foot.elev, 1e-5);
    }
  }
}

TEST(TransLine, TurnsClockwiseAndBack) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const LineDef line = scenes.Line();
    const IntAngle rotation = scenes.Angle(-ANGLE_FULL_CIRCLE, ANGLE_FULL_CIRCLE);
    const double length = Distance(line.p1, line.p2);
    LineDef turned;
    LineDef back;
    ASSERT_EQ(STATUS_OK, KavoCogoCalcTransLine(&line, rotation, 0, &turned));
    ASSERT_EQ(STATUS_OK, KavoCogoCalcTransLine(&turned, -rotation, 0, &back));
    ASSERT_EQ(Text(line.p1.north) + Text(line.p1.east),
              Text(turned.p1.north) + Text(turned.p1.east));
    ASSERT_NEAR(length * std::cos(rotation * kRadPerUnit), Along(line.p1, line.p2, turned.p2),
                1e-9);
    ASSERT_NEAR(length * std::sin(rotation * kRadPerUnit), Offset(line.p1, line.p2, turned.p2),
                1e-9);
    ASSERT_TRUE(Near(line.p2, back.p2, 1e-9));
    ASSERT_EQ(line.p2.elev, back.p2.elev);
  }
}

TEST(TransLine, ShiftsTheTurnedLineToItsRight) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const LineDef line = scenes.Line();
    const IntAngle rotation = scenes.Angle(-ANGLE_FULL_CIRCLE, ANGLE_FULL_CIRCLE);
    const double offset = scenes.Between(-50, 50);
    LineDef turned;
    LineDef shifted;
    ASSERT_EQ(STATUS_OK, KavoCogoCalcTransLine(&line, rotation, 0, &turned));
    ASSERT_EQ(STATUS_OK, KavoCogoCalcTransLine(&line, rotation, offset, &shifted));
    const CoordPt& p1 = turned.p1;
    const CoordPt& p2 = turned.p2;
    ASSERT_NEAR(0, Along(p1, p2, shifted.p1), 1e-9);
    ASSERT_NEAR(offset, Offset(p1, p2, shifted.p1), 1e-9);
    ASSERT_NEAR(Distance(p1, p2), Along(p1, p2, shifted.p2), 1e-9);
    ASSERT_NEAR(offset, Offset(p1, p2, shifted.p2), 1e-9);
    ASSERT_EQ(turned.direction, shifted.direction);
  }
}

// A line by direction is shifted across the direction that the normalisation left, whatever it is.
TEST(TransLine, ShiftsABearingAcrossTheNormalisedDirection) {
  const struct {
    const char* name;
    IntAngle direction;
    IntAngle rotation;
    IntAngle across;
  } rows[] = {
      {"a full circle up it is sound: right of east is south",
       ANGLE_FULL_CIRCLE + ANGLE_QUARTER_CIRCLE, 0, ANGLE_HALF_CIRCLE},
      {"turned from north to south: right is west", ANGLE_FULL_CIRCLE, ANGLE_HALF_CIRCLE,
       3 * ANGLE_QUARTER_CIRCLE},
      {"a direction of 0 has 2615296 units too many", 0, 0, ANGLE_QUARTER_CIRCLE + 2615296},
      {"no direction is 134217728 units", ANGLE_INVALID, 9, 134217728 + ANGLE_QUARTER_CIRCLE},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const LineDef line = Bearing(High(100, 200, 7), row.direction);
    LineDef out;
    ASSERT_EQ(STATUS_OK, KavoCogoCalcTransLine(&line, row.rotation, 4, &out));
    EXPECT_NEAR(100 + 4 * std::cos(row.across * kRadPerUnit), out.p1.north, 1e-12);
    EXPECT_NEAR(200 + 4 * std::sin(row.across * kRadPerUnit), out.p1.east, 1e-12);
    EXPECT_EQ(7, out.p1.elev);
    EXPECT_EQ(kFull, out.p1.flags);
  }
}

}  // namespace
