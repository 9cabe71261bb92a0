#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "points.hpp"

namespace {

using namespace kavo_test;

constexpr IntAngle kQuarter = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kHalf = ANGLE_HALF_CIRCLE;
const double kPi = std::acos(-1.0);
const double kNaN = std::nan("");

// Arcs of radius 100 about (-100, 0): clockwise they leave the origin eastward and anticlockwise
// westward, and directions along the axes are exact.
void DefineFromOrigin(double radius, IntAngle turn) {
  const CoordPt start = Pt(0, 0, 50, kFull);
  const IntAngle startTangent = radius > 0 ? kQuarter : 3 * kQuarter;
  const IntAngle endTangent = radius > 0 ? startTangent + turn : startTangent - turn;
  ASSERT_EQ(STATUS_OK, KavoREFSetArcByRadiusHAngle(&start, startTangent, radius, endTangent));
}

RefLineResult Measure(const CoordPt& point) {
  auto out = Untouched<RefLineResult>();
  EXPECT_EQ(STATUS_OK, KavoREFCalcArc(&point, &out));
  EXPECT_EQ(Text(Written(0, 0, 0, 0)), Text(out.foot));
  return out;
}

// Two units of direction at the distance from the centre, and the last digits.
double Reach(double dist) { return 6.1e-7 * dist + 1e-9; }

TEST(RefArcMeasure, TellsBeforeOnAndPastTheArc) {
  const struct {
    const char* name;
    double north;
    double east;
    double along;
    double offset;
    bool mirrored;  // of the anticlockwise arc the mirror image holds
  } rows[] = {
      {"the start", 0, 0, 0, 0, true},
      {"inside the start", -3, 0, 0, 3, true},
      {"inside, halfway", -100 + 97 * std::sqrt(0.5), 97 * std::sqrt(0.5), 25 * kPi, 3, true},
      {"outside, halfway", -100 + 103 * std::sqrt(0.5), 103 * std::sqrt(0.5), 25 * kPi, -3, true},
      {"the end", -100, 100, 50 * kPi, 0, true},
      {"past the end, inside", -110, 97, 50 * kPi + 10, 3, true},
      {"before the start, inside", -3, -10, -10, 3, true},
      {"a quarter back is on the arc", -100, -80, -50 * kPi, 20, true},
      {"one unit less is not", -100 + 80 * 3.030086e-7, -80, -80, 100, true},
      {"opposite the start", -180, 0, 50 * kPi + 80, 100, false},
      {"far past the end", -180, -60, 50 * kPi + 80, 160, false},
  };
  for (const double sense : {1.0, -1.0}) {
    DefineFromOrigin(sense * 100, kQuarter);
    for (const auto& row : rows) {
      SCOPED_TRACE(row.name);
      if (sense > 0 || row.mirrored) {
        const RefLineResult out = Measure(Pt(row.north, sense * row.east, 53));
        EXPECT_NEAR(row.along, out.along, Reach(200));
        EXPECT_NEAR(sense * row.offset, out.offset, Reach(200));
        EXPECT_EQ(3.0, out.dElev);  // the point's elevation flag is not looked at
      }
    }
  }
}

TEST(RefArcMeasure, KeepsItsOddCorners) {
  const struct {
    const char* name;
    double radius;
    IntAngle turn;
    double north;
    double east;
    double along;
    double offset;
  } rows[] = {
      {"anticlockwise, opposite the start: backwards", -100, kQuarter, -180, 0, -100 * kPi, -20},
      {"the end of an anticlockwise half circle too", -100, kHalf, -200, 0, -100 * kPi, 0},
      {"but not of a clockwise one", 100, kHalf, -200, 0, 100 * kPi, 0},
      // 306.87 degrees past the end instead of 126.87.
      {"anticlockwise, far past the end: off", -100, kQuarter, -180, 60, 50 * kPi - 80, -40},
      {"unless it is a half circle", -100, kHalf, -180, 60, 100 * kPi + 60, -20},
      // On the arc, 53.13 degrees before its end, and measured as if as much past it.
      {"clockwise beyond a half circle: off", 100, 3 * kQuarter, -180, -60, 150 * kPi + 80, 40},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    DefineFromOrigin(row.radius, row.turn);
    const RefLineResult out = Measure(Pt(row.north, row.east));
    EXPECT_NEAR(row.along, out.along, Reach(200));
    EXPECT_NEAR(row.offset, out.offset, Reach(200));
  }
  // Opposite once more, where the two directions differ by minus half a circle.
  const CoordPt start = Pt(0, 0);
  ASSERT_EQ(STATUS_OK, KavoREFSetArcByRadiusHAngle(&start, kQuarter, -100, 0));
  EXPECT_NEAR(-100 * kPi, Measure(Pt(180, 0)).along, Reach(200));
}

TEST(RefArcMeasure, RefusesWithoutADirection) {
  DefineFromOrigin(100, kQuarter);
  const auto untouched = Text(Untouched<RefLineResult>());
  const CoordPt centre = Pt(-100, 0);
  const CoordPt noPlace = Pt(0, 0, 0, COORD_HAS_ELEV);
  auto out = Untouched<RefLineResult>();
  EXPECT_EQ(ERR_NO_DIRECTION, KavoREFCalcArc(&centre, &out));
  EXPECT_EQ(untouched, Text(out));
  EXPECT_EQ(ERR_POINT_INVALID, KavoREFCalcArc(&noPlace, &out));
  EXPECT_EQ(untouched, Text(out));
}

// An integer direction can hide that a number is not one: the answer must show it.
TEST(RefArcMeasure, ShowsWhatIsNotANumber) {
  const CoordPt start = Pt(0, 0);
  const CoordPt ahead = Pt(1, -std::cos(kPi / 2));
  const auto expectNoNumber = [](const CoordPt& point) {
    const RefLineResult out = Measure(point);
    EXPECT_TRUE(std::isnan(out.along));
    EXPECT_TRUE(std::isnan(out.offset));
  };
  for (const double radius : {100.0, -100.0}) {
    SCOPED_TRACE(radius);
    DefineFromOrigin(radius, kQuarter);
    expectNoNumber(Pt(kNaN, 1));
    expectNoNumber(Pt(1, kNaN));
    ASSERT_EQ(STATUS_OK, KavoREFSetArcByRadiusArcLen(&start, 0, radius, kNaN));
    expectNoNumber(Pt(1, 1));
  }
  ASSERT_EQ(STATUS_OK, KavoREFSetArcByRadiusHAngle(&start, 0, kNaN, kQuarter));
  expectNoNumber(Pt(1, 1));
  ASSERT_EQ(STATUS_OK, KavoREFSetArcByCoord(&start, &ahead, 0, kHalf));
  expectNoNumber(Pt(1, -1));
}

TEST(RefArcMeasure, GradesHeightsToAnEndThatIsTheArcs) {
  const struct {
    const char* name;
    CoordPt start;
    CoordPt end;
    IntAngle endTangent;
    double dElev;  // of a point halfway, elevation 56
  } rows[] = {
      {"the end", Pt(0, 0, 50, kFull), Pt(-100, 100, 60, kFull), kHalf, 1},
      {"4 cm off", Pt(0, 0, 50, kFull), Pt(-100.04, 100, 60, kFull), kHalf, 1},
      {"6 cm off", Pt(0, 0, 50, kFull), Pt(-100.06, 100, 60, kFull), kHalf, 6},
      {"its elevation flag is not looked at", Pt(0, 0, 50, kFull), Pt(-100, 100, 60), kHalf, 1},
      {"no elevation at the start", Pt(0, 0, 50), Pt(-100, 100, 60, kFull), kHalf, 0},
      {"half a circle", Pt(0, 0, 50, kFull), Pt(-200, 0, 70, kFull), 3 * kQuarter, 1},
      {"half a circle, the end not opposite", Pt(0, 0, 50, kFull), Pt(-200, 1, 70, kFull),
       3 * kQuarter, 6},
  };
  const CoordPt halfway = Pt(-100 + 100 * std::sqrt(0.5), 100 * std::sqrt(0.5), 56);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_EQ(STATUS_OK, KavoREFSetArcByCoord(&row.start, &row.end, kQuarter, row.endTangent));
    const RefLineResult out = Measure(halfway);
    EXPECT_NEAR(25 * kPi, out.along, Reach(100));
    EXPECT_NEAR(0.0, out.offset, 1e-6);
    EXPECT_NEAR(row.dElev, out.dElev, 1e-5);
    // An arc by radius has no end to grade to, whatever the arc before it had.
    ASSERT_EQ(STATUS_OK, KavoREFSetArcByRadiusHAngle(&row.start, kQuarter, 100, kHalf));
    EXPECT_EQ(row.start.flags == kFull ? 6.0 : 0.0, Measure(halfway).dElev);
  }
}

// A curve by its own equation: the azimuth grows by 1 / R per metre, and the place is its integral.
struct Curve {
  CoordPt start;
  double azimuth;
  double radius;

  // A point at a distance along the curve, or on its tangent there, and an offset to the right.
  [[nodiscard]] CoordPt At(double along, double onTangent, double offset) const {
    const double there = azimuth + along / radius;
    return Pt(start.north + radius * (std::sin(there) - std::sin(azimuth)) +
                  onTangent * std::cos(there) - offset * std::sin(there),
              start.east + radius * (std::cos(azimuth) - std::cos(there)) +
                  onTangent * std::sin(there) + offset * std::cos(there));
  }
};

// Anywhere, in either sense, and however it is defined.
TEST(RefArcMeasure, FindsThePointThatWasPutThere) {
  std::mt19937_64 random(20261123);
  std::uniform_real_distribution<double> metres(-1000.0, 1000.0);
  std::uniform_real_distribution<double> part(0.0, 1.0);
  std::uniform_int_distribution<IntAngle> tangents(0, ANGLE_FULL_CIRCLE - 1);
  std::uniform_int_distribution<IntAngle> halfTurns(5 * kDegree, 85 * kDegree);
  const double unit = kPi / ANGLE_HALF_CIRCLE;
  for (int i = 0; i < 6000; ++i) {
    const IntAngle startTangent = tangents(random);
    const IntAngle turn = i % 7 == 0 ? kHalf : 2 * halfTurns(random);
    const double sense = i % 2 == 0 ? 1.0 : -1.0;
    const double size = 20.0 + 200.0 * part(random);
    const double length = size * turn * unit;
    const IntAngle endTangent = startTangent + (sense > 0 ? turn : -turn);
    const Curve curve = {Pt(metres(random), metres(random)), startTangent * unit, sense * size};
    // The given end need only lie on the end tangent.
    const CoordPt end = curve.At(length, 10.0 * part(random), 0);
    switch (i % 3) {
      case 0:
        KavoREFSetArcByCoord(&curve.start, &end, startTangent, endTangent);
        break;
      case 1:
        KavoREFSetArcByRadiusHAngle(&curve.start, startTangent, curve.radius, endTangent);
        break;
      default:
        KavoREFSetArcByRadiusArcLen(&curve.start, startTangent, curve.radius, length);
    }
    const double offset = size * (1.6 * part(random) - 0.8);
    const double reach = Reach(2 * size);
    const double along = length * (0.01 + 0.98 * part(random));
    const RefLineResult on = Measure(curve.At(along, 0, offset));
    EXPECT_NEAR(along, on.along, reach);
    EXPECT_NEAR(offset, on.offset, reach);
    // On the end tangent no further than half a circle on from the start.
    const double onTangent = 0.15 * size * (0.01 + part(random));
    const RefLineResult before = Measure(curve.At(0, -onTangent, offset));
    EXPECT_NEAR(-onTangent, before.along, reach);
    EXPECT_NEAR(offset, before.offset, reach);
    if (sense > 0 || turn == kHalf || turn < 130 * kDegree) {
      const RefLineResult past = Measure(curve.At(length, onTangent, offset));
      EXPECT_NEAR(length + onTangent, past.along, reach);
      EXPECT_NEAR(offset, past.offset, reach);
    }
  }
}

}  // namespace
