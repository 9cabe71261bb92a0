#include "core/line.hpp"

#include <gtest/gtest.h>

#include "points.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr double kAsItWas = 42.0;

TEST(LineSlopeIntercept, GivesEastAgainstNorth) {
  const struct {
    const char* name;
    LineDef line;
    std::int32_t status;
    double slope;
    double intercept;
  } rows[] = {
      {"slope 2 through (1, 5)", TwoPoints(Pt(1, 5), Pt(3, 9)), STATUS_OK, 2.0, 3.0},
      {"constant east", TwoPoints(Pt(1, 5), Pt(3, 5)), STATUS_OK, 0.0, 5.0},
      {"constant north", TwoPoints(Pt(1, 5), Pt(1, 9)), STATUS_OK, SLOPE_VERTICAL, VALUE_INVALID},
      {"too steep upwards is held back, its intercept is not", TwoPoints(Pt(0, 0), Pt(1e-9, 1)),
       STATUS_OK, SLOPE_VERTICAL, 0.0},
      {"too steep downwards is let through", TwoPoints(Pt(0, 0), Pt(0x1p-30, -1)), STATUS_OK,
       -0x1p30, 0.0},
      {"one place twice", TwoPoints(Pt(1, 5), Pt(1, 5)), ERR_NO_DIRECTION, kAsItWas, kAsItWas},
      {"no first point", TwoPoints(Pt(1, 5, 0, 0), Pt(3, 9)), ERR_POINT_INVALID, kAsItWas,
       kAsItWas},
      {"no second point", TwoPoints(Pt(1, 5), Pt(3, 9, 0, COORD_HAS_ELEV)), ERR_POINT_INVALID,
       kAsItWas, kAsItWas},
      {"no point of a bearing", Bearing(Pt(1, 5, 0, 0), 0), ERR_POINT_INVALID, kAsItWas, kAsItWas},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    double slope = kAsItWas;
    double intercept = kAsItWas;
    EXPECT_EQ(row.status, LineSlopeIntercept(row.line, slope, intercept));
    EXPECT_EQ(Text(row.slope), Text(slope));
    EXPECT_EQ(Text(row.intercept), Text(intercept));
  }
}

TEST(LineSlopeIntercept, TakesABearingForATangent) {
  double slope = 0;
  double intercept = 0;
  ASSERT_EQ(STATUS_OK, LineSlopeIntercept(Bearing(Pt(1, 5), 45 * kDegree), slope, intercept));
  EXPECT_NEAR(1.0, slope, 2e-15);
  EXPECT_NEAR(4.0, intercept, 1e-14);
  // Due east in either sense: beyond the bound on the positive side, let through on the other.
  ASSERT_EQ(STATUS_OK,
            LineSlopeIntercept(Bearing(Pt(1, 5), -ANGLE_QUARTER_CIRCLE), slope, intercept));
  EXPECT_EQ(SLOPE_VERTICAL, slope);
}

TEST(IntersectLines2Pt, HasNoTolerance) {
  const struct {
    const char* name;
    PlanLine line1;
    PlanLine line2;
    std::int32_t status;
    CoordPt out;
  } rows[] = {
      {"crossing", {0, 0, 2, 2}, {0, 4, 4, 0}, STATUS_OK, Written(2, 2)},
      {"first of constant north", {3, 0, 3, 9}, {0, 1, 1, 3}, STATUS_OK, Written(3, 7)},
      {"second of constant north", {0, 1, 1, 3}, {3, 0, 3, 9}, STATUS_OK, Written(3, 7)},
      {"both of constant north", {3, 0, 3, 9}, {4, 0, 4, 9}, ERR_PARALLEL, NotFound()},
      {"equal slopes", {0, 0, 1, 1}, {0, 1, 2, 3}, ERR_PARALLEL, NotFound()},
      {"slopes 2^-20 apart still cross",
       {0, 0, 0x1p20, 1},
       {0, 1, 1, 1},
       STATUS_OK,
       Written(0x1p20, 1)},
      {"first line a point", {1, 1, 1, 1}, {0, 0, 1, 1}, ERR_NO_DIRECTION, NotFound()},
      {"second line a point", {0, 0, 1, 1}, {1, 1, 1, 1}, ERR_NO_DIRECTION, NotFound()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto out = Untouched<CoordPt>();
    EXPECT_EQ(row.status, IntersectLines2Pt(row.line1, row.line2, out));
    EXPECT_EQ(Text(row.out), Text(out));
  }
}

}  // namespace
