#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "at_load.hpp"
#include "points.hpp"

namespace {

using namespace kavo_test;

const double kNaN = std::nan("");

// A measurement without a base line is refused and writes nothing.
void ExpectNoBase() {
  const CoordPt point = Pt(1, 1);
  auto out = Untouched<RefLineResult>();
  EXPECT_EQ(ERR_NO_BASE, KavoREFCalc(&point, &out));
  EXPECT_EQ(Text(Untouched<RefLineResult>()), Text(out));
}

// Each row sets a line anew and so also shows that the later line replaces the earlier one whole.
TEST(RefLine, GivesAlongOffsetFootAndHeight) {
  const struct {
    const char* name;
    CoordPt start;
    CoordPt end;
    CoordPt point;
    std::int32_t status;
    RefLineResult out;
  } rows[] = {
      {"right of a line due north",
       Pt(0, 0),
       Pt(10, 0),
       Pt(4, 3),
       STATUS_OK,
       {Written(4, 0), 4, 3, 0}},
      {"behind and left", Pt(0, 0), Pt(10, 0), Pt(-2, -1), STATUS_OK, {Written(-2, 0), -2, -1, 0}},
      {"right of a line due west",
       Pt(7, 1),
       Pt(7, -1),
       Pt(9, -2),
       STATUS_OK,
       {Written(7, -2), 3, 2, 0}},
      {"the unit vector is made by the reciprocal",
       Pt(0, 0),
       Pt(3, 4),
       Pt(3, 0),
       STATUS_OK,
       {Written((0.2 * 3 * 3) * (0.2 * 3), (0.2 * 3 * 3) * 0.8), 0.2 * 3 * 3, -0.8 * 3, 0}},
      {"on a grade",
       Pt(0, 0, 100, kFull),
       Pt(10, 0, 110, kFull),
       Pt(5, 2, 107, kFull),
       STATUS_OK,
       {Written(5, 0, 105, kFull), 5, 2, 2}},
      {"the grade goes on",
       Pt(0, 0, 100, kFull),
       Pt(10, 0, 110, kFull),
       Pt(-20, 2, 85, kFull),
       STATUS_OK,
       {Written(-20, 0, 80, kFull), -20, 2, 5}},
      {"level at the end's height",
       Pt(0, 0, 55),
       Pt(10, 0, 110, kFull),
       Pt(4, 3, 107, kFull),
       STATUS_OK,
       {Written(4, 0, 110, kFull), 4, 3, -3}},
      {"level at the start's height",
       Pt(0, 0, 100, kFull),
       Pt(10, 0, 55),
       Pt(4, 3, 107, kFull),
       STATUS_OK,
       {Written(4, 0, 100, kFull), 4, 3, 7}},
      {"a line without height",
       Pt(0, 0, 55),
       Pt(10, 0, 66),
       Pt(4, 3, 107, kFull),
       STATUS_OK,
       {Written(4, 0), 4, 3, 0}},
      {"a point without height",
       Pt(0, 0, 100, kFull),
       Pt(10, 0, 110, kFull),
       Pt(4, 3, 107),
       STATUS_OK,
       {Written(4, 0), 4, 3, 0}},
      {"not a number",
       Pt(0, 0),
       Pt(10, 0),
       Pt(kNaN, 3),
       STATUS_OK,
       {Written(kNaN, kNaN), kNaN, kNaN, 0}},
      {"no point", Pt(0, 0), Pt(10, 0), Pt(4, 3, 5, COORD_HAS_ELEV), ERR_POINT_INVALID,
       Untouched<RefLineResult>()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_EQ(STATUS_OK, KavoREFSetBaseLine(&row.start, &row.end));
    auto out = Untouched<RefLineResult>();
    EXPECT_EQ(row.status, KavoREFCalc(&row.point, &out));
    EXPECT_EQ(Text(row.out), Text(out));
  }
}

TEST(RefLine, IsGoneAfterARefusal) {
  const struct {
    const char* name;
    CoordPt start;
    CoordPt end;
    std::int32_t status;
  } rows[] = {
      {"no start", Pt(0, 0, 0, COORD_HAS_ELEV), Pt(10, 0), ERR_POINT_INVALID},
      {"no end", Pt(0, 0), Pt(10, 0, 0, 0), ERR_POINT_INVALID},
      {"no end, in the place of the start", Pt(0, 0), Pt(0, 0, 0, 0), ERR_POINT_INVALID},
      {"one place, two heights", Pt(1, 2, 3, kFull), Pt(1, 2, 4, kFull), ERR_NO_DIRECTION},
  };
  const CoordPt start = Pt(0, 0);
  const CoordPt end = Pt(10, 0);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_EQ(STATUS_OK, KavoREFSetBaseLine(&start, &end));
    EXPECT_EQ(row.status, KavoREFSetBaseLine(&row.start, &row.end));
    ExpectNoBase();
  }
}

TEST(RefLine, IsNotThereAtLoad) {
  ExpectAtLoad([] {
    ExpectNoBase();
    return !testing::Test::HasFailure();
  });
}

// Whatever way the line runs: the point that was put at a distance along it and an offset across it
// is found there, and from the other end everything is seen the other way round.
TEST(RefLine, FindsThePointThatWasPutThere) {
  std::mt19937_64 random(20261122);
  std::uniform_real_distribution<double> metres(-1000.0, 1000.0);
  for (int i = 0; i < 2000; ++i) {
    const CoordPt start = Pt(metres(random), metres(random), metres(random), kFull);
    const CoordPt end = Pt(metres(random), metres(random), metres(random), kFull);
    const double along = metres(random);
    const double offset = metres(random);
    const double above = metres(random);
    CoordPt point = Pt(0, 0);
    ASSERT_EQ(STATUS_OK, KavoCogoOffsetToCoord(&start, &end, along, offset, &point));
    point.elev += above;
    RefLineResult out;
    ASSERT_EQ(STATUS_OK, KavoREFSetBaseLine(&start, &end));
    ASSERT_EQ(STATUS_OK, KavoREFCalc(&point, &out));
    EXPECT_NEAR(along, out.along, 1e-9);
    EXPECT_NEAR(offset, out.offset, 1e-9);
    EXPECT_NEAR(above, out.dElev, 1e-6);  // steep where the base points are close
    EXPECT_NEAR(std::fabs(offset),
                std::hypot(point.north - out.foot.north, point.east - out.foot.east), 1e-9);
    ASSERT_EQ(STATUS_OK, KavoREFSetBaseLine(&end, &start));
    ASSERT_EQ(STATUS_OK, KavoREFCalc(&point, &out));
    EXPECT_NEAR(std::hypot(end.north - start.north, end.east - start.east) - along, out.along,
                1e-9);
    EXPECT_NEAR(-offset, out.offset, 1e-9);
    EXPECT_NEAR(above, out.dElev, 1e-6);
  }
}

}  // namespace
