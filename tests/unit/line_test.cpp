#include "core/line.hpp"

#include <gtest/gtest.h>

#include "points.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

TEST(LineSlopeIntercept, WritesBothOfALineOfConstantEast) {
  double slope = 1.0;
  double intercept = 1.0;
  const LineDef line{Pt(3, 7), Pt(5, 7), 0, LINE_MODE_TWO_POINTS, {}};
  EXPECT_EQ(STATUS_OK, LineSlopeIntercept(line, slope, intercept));
  EXPECT_EQ(0.0, slope);
  EXPECT_EQ(7.0, intercept);
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
