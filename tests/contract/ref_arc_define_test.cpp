#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "at_load.hpp"
#include "points.hpp"

namespace {

using namespace kavo_test;

constexpr IntAngle kQuarter = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kHalf = ANGLE_HALF_CIRCLE;
const double kPi = std::acos(-1.0);
const double kNaN = std::nan("");
constexpr CoordPt kOrigin = {0, 0, 0, kPlan, {}};

std::int32_t ByCoord(const CoordPt& end, IntAngle startTangent, IntAngle endTangent) {
  return KavoREFSetArcByCoord(&kOrigin, &end, startTangent, endTangent);
}

std::int32_t ByAngle(IntAngle startTangent, double radius, IntAngle endTangent) {
  return KavoREFSetArcByRadiusHAngle(&kOrigin, startTangent, radius, endTangent);
}

std::int32_t ByLength(IntAngle startTangent, double radius, double arcLength) {
  return KavoREFSetArcByRadiusArcLen(&kOrigin, startTangent, radius, arcLength);
}

// The parameters, read into the head of a longer buffer of which nothing else may change.
RefArcParams Params() {
  alignas(8) std::array<unsigned char, 40> buffer{};
  buffer.fill(0xA5);
  EXPECT_EQ(STATUS_OK, KavoREFGetArcParams(reinterpret_cast<RefArcParams*>(buffer.data())));
  EXPECT_TRUE(std::all_of(buffer.begin() + 28, buffer.end(), [](auto b) { return b == 0xA5; }));
  RefArcParams params;
  std::memcpy(&params, buffer.data(), sizeof params);
  return params;
}

// Every arc leaves the origin; its parameters are those of circles that anyone can draw.
TEST(RefArc, ReadsItsParametersBack) {
  const struct {
    const char* name;
    std::int32_t (*define)();
    RefArcParams params;
  } rows[] = {
      {"a quarter to the right, by angle",
       [] { return ByAngle(0, 100, kQuarter); },
       {0, kQuarter, 100, 50 * kPi, kQuarter}},
      {"a quarter to the left, by angle",
       [] { return ByAngle(0, -100, 3 * kQuarter); },
       {0, 3 * kQuarter, -100, 50 * kPi, -kQuarter}},
      {"the long way to the right",
       [] { return ByAngle(kQuarter, 100, 0); },
       {kQuarter, 0, 100, 150 * kPi, 3 * kQuarter}},
      {"tangents are brought into one circle",
       [] { return ByAngle(-kHalf, 10, 5 * kQuarter); },
       {kHalf, kQuarter, 10, 15 * kPi, 3 * kQuarter}},
      {"by length, past north: the end is not brought back",
       [] { return ByLength(3 * kQuarter, 100, 100 * kPi); },
       {3 * kQuarter, 5 * kQuarter, 100, 100 * kPi, kHalf}},
      {"by length, to the left of north",
       [] { return ByLength(0, -100, 50 * kPi); },
       {0, -kQuarter, -100, 50 * kPi, -kQuarter}},
      {"no longer than the full circle",
       [] { return ByLength(kQuarter, -1, INFINITY); },
       {kQuarter, -3 * kQuarter, -1, 2 * kPi, -ANGLE_FULL_CIRCLE}},
      {"a quarter to the right, by its ends",
       [] { return ByCoord(Pt(100, 100), 0, kQuarter); },
       {0, kQuarter, 100, 50 * kPi, kQuarter}},
      {"a quarter to the left, by its ends",
       [] { return ByCoord(Pt(50, -50), 0, 3 * kQuarter); },
       {0, 3 * kQuarter, -50, 25 * kPi, -kQuarter}},
      {"60 degrees to the right, by its ends",
       [] { return ByCoord(Pt(20 * std::sqrt(0.75), 10), 0, 60 * kDegree); },
       {0, 60 * kDegree, 20, 20 * kPi / 3, 60 * kDegree}},
      {"an end further on along its tangent leaves the arc as it is",
       [] { return ByCoord(Pt(100, 170), 0, kQuarter); },
       {0, kQuarter, 100, 50 * kPi, kQuarter}},
      {"half a circle to the right",
       [] { return ByCoord(Pt(0, 200), 0, kHalf); },
       {0, kHalf, 100, 100 * kPi, kHalf}},
      {"half a circle to the left, the end not opposite",
       [] { return ByCoord(Pt(70, -200), 0, kHalf); },
       {0, kHalf, -100, 100 * kPi, -kHalf}},
      {"an end straight ahead, to the last bit, is on neither side",
       [] { return ByCoord(Pt(1, -std::cos(kPi / 2)), 0, kHalf); },
       {0, kHalf, kNaN, kNaN, kHalf}},
      {"a radius that is not a number",
       [] { return ByAngle(0, kNaN, kQuarter); },
       {0, kQuarter, kNaN, kNaN, ANGLE_INVALID}},
      {"a length that is not a number",
       [] { return ByLength(kQuarter, 100, kNaN); },
       {kQuarter, ANGLE_INVALID, 100, kNaN, ANGLE_INVALID}},
  };
  // The central angle is truncated: it may be one unit short.
  const auto expectNear = [](double expected, double actual) {
    EXPECT_TRUE(std::isnan(expected) ? std::isnan(actual) : std::fabs(expected - actual) < 1e-11)
        << Text(expected) << " is not " << Text(actual);
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_EQ(STATUS_OK, row.define());
    const RefArcParams params = Params();
    EXPECT_EQ(Text(row.params.startDir), Text(params.startDir));
    EXPECT_NEAR(row.params.endDir, params.endDir, 1);
    expectNear(row.params.radius, params.radius);
    expectNear(row.params.arcLength, params.arcLength);
    EXPECT_NEAR(row.params.centralAngle, params.centralAngle, 1);
  }
}

// The half of an odd angle is truncated towards zero, so that left is the mirror image of right; at
// 10 degrees the half unit is worth 0.2 mm of this radius.
TEST(RefArc, TurnsLeftAsItTurnsRight) {
  const IntAngle turn = 10 * kDegree + 1;
  ASSERT_EQ(STATUS_OK, ByCoord(Pt(100, 20), 0, turn));
  const RefArcParams right = Params();
  ASSERT_EQ(STATUS_OK, ByCoord(Pt(100, -20), 0, -turn));
  const RefArcParams left = Params();
  EXPECT_NEAR(right.radius, -left.radius, 1e-8);
  EXPECT_NEAR(right.arcLength, left.arcLength, 1e-8);
  EXPECT_NEAR(right.centralAngle, -left.centralAngle, 1);
}

TEST(RefArc, KeepsItsNumbersThroughARefusal) {
  const struct {
    const char* name;
    std::int32_t (*define)();
    std::int32_t status;
  } rows[] = {
      {"by angle: no start",
       [] {
         const CoordPt start = Pt(0, 0, 0, COORD_HAS_ELEV);
         return KavoREFSetArcByRadiusHAngle(&start, 0, 0.0, 0);
       },
       ERR_POINT_INVALID},
      {"by angle: equal tangents, before the radius is looked at",
       [] { return ByAngle(7, 0.0, 7); }, ERR_INDETERMINATE},
      {"by angle: tangents a circle apart", [] { return ByAngle(-7, 1, ANGLE_FULL_CIRCLE - 7); },
       ERR_INDETERMINATE},
      {"by angle: no radius", [] { return ByAngle(0, -0.0, 1); }, ERR_REFUSED},
      {"by length: no start",
       [] {
         const CoordPt start = Pt(0, 0, 0, COORD_HAS_ELEV);
         return KavoREFSetArcByRadiusArcLen(&start, 0, 0.0, 1);
       },
       ERR_POINT_INVALID},
      {"by length: no radius", [] { return ByLength(0, 0.0, 1); }, ERR_REFUSED},
      {"by length: no length", [] { return ByLength(0, 1, 0.0); }, ERR_REFUSED},
      {"by length: a negative length", [] { return ByLength(0, -1, -1); }, ERR_REFUSED},
      {"by ends: no start",
       [] {
         const CoordPt start = Pt(0, 0, 0, 0);
         return KavoREFSetArcByCoord(&start, &kOrigin, 0, kQuarter);
       },
       ERR_POINT_INVALID},
      {"by ends: no end", [] { return ByCoord(Pt(0, 0, 0, COORD_HAS_ELEV), 0, kQuarter); },
       ERR_POINT_INVALID},
      {"by ends: one place, before the tangents are looked at",
       [] { return ByCoord(Pt(0, 0, 9, kFull), 7, 7); }, ERR_NO_DIRECTION},
      {"by ends: equal tangents", [] { return ByCoord(Pt(1, 1), 7, 7); }, ERR_INDETERMINATE},
  };
  ASSERT_EQ(STATUS_OK, ByAngle(kQuarter, 100, kHalf));
  const RefArcParams before = Params();
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.status, row.define());
    EXPECT_EQ(Text(before), Text(Params()));
    // Meant so: the measurement does not ask whether an arc is set.
    const CoordPt inside = Pt(-3, 0);
    RefLineResult out;
    EXPECT_EQ(STATUS_OK, KavoREFCalcArc(&inside, &out));
    EXPECT_EQ(Text(3.0), Text(out.offset));
  }
}

TEST(RefArc, IsAllZerosAtLoad) {
  ExpectAtLoad([] {
    const CoordPt east = Pt(0, 5);
    RefLineResult out;
    EXPECT_EQ(Text(RefArcParams{}), Text(Params()));
    EXPECT_EQ(ERR_NO_DIRECTION, KavoREFCalcArc(&kOrigin, &out));
    EXPECT_EQ(STATUS_OK, KavoREFCalcArc(&east, &out));
    EXPECT_EQ(Text(5.0), Text(out.along));
    EXPECT_NEAR(0.0, out.offset, 1e-15);
    return !testing::Test::HasFailure();
  });
}

}  // namespace
