#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "points.hpp"

namespace {

using namespace kavo_test;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Every expectation below is worked by hand from right angles and Pythagorean triples.
TEST(Inverse, GivesDirectionAndDistances) {
  const struct {
    const char* name;
    CoordPt station;
    CoordPt point;
    std::int32_t status;
    AngDistRec out;
  } rows[] = {
      {"3-4-12 box",
       Pt(10, 20, 5, kFull),
       Pt(13, 24, 17, kFull),
       STATUS_OK,
       {3060294, 1302904, 13.0, 5.0, 12.0}},
      {"due east, level",
       Pt(0, 0, 7, kFull),
       Pt(0, 2, 7, kFull),
       STATUS_OK,
       {ANGLE_QUARTER_CIRCLE, ANGLE_QUARTER_CIRCLE, 2.0, 2.0, 0.0}},
      {"due south, down one in one",
       Pt(0, 0, 0, kFull),
       Pt(-1, 0, -1, kFull),
       STATUS_OK,
       {ANGLE_HALF_CIRCLE, 135 * kDegree, std::sqrt(2.0), 1.0, -1.0}},
      {"the point's elevation flag is not looked at",
       Pt(0, 0, 0, kFull),
       Pt(4, 0, 3),
       STATUS_OK,
       {0, 3060294, 5.0, 4.0, 3.0}},
      {"a station without elevation: flat distances, but the zenith of the fields",
       Pt(0, 0, 0),
       Pt(4, 0, 3, kFull),
       STATUS_OK,
       {0, 3060294, 4.0, 4.0, 0.0}},
      {"one place, one height",
       Pt(1, 2, 3, kFull),
       Pt(1, 2, 3, kFull),
       ERR_NO_DIRECTION,
       {ANGLE_INVALID, ANGLE_INVALID, 0.0, 0.0, 0.0}},
      {"straight up",
       Pt(1, 2, 3, kFull),
       Pt(1, 2, 8, kFull),
       ERR_NO_DIRECTION,
       {ANGLE_INVALID, 0, 5.0, 0.0, 5.0}},
      {"straight down",
       Pt(1, 2, 8, kFull),
       Pt(1, 2, 3, kFull),
       ERR_NO_DIRECTION,
       {ANGLE_INVALID, ANGLE_HALF_CIRCLE, 5.0, 0.0, -5.0}},
      {"a coordinate that is not a number",
       Pt(0, 0, 0, kFull),
       Pt(kNaN, 1, 0, kFull),
       ERR_NO_DIRECTION,
       {ANGLE_INVALID, ANGLE_INVALID, kNaN, kNaN, 0.0}},
      {"an elevation that is not a number",
       Pt(0, 0, 0, kFull),
       Pt(1, 0, kNaN, kFull),
       ERR_NO_DIRECTION,
       {0, ANGLE_INVALID, kNaN, 1.0, kNaN}},
      {"a point infinitely far",
       Pt(0, 0, 0, kFull),
       Pt(0, -kInf, 0, kFull),
       STATUS_OK,
       {3 * ANGLE_QUARTER_CIRCLE, ANGLE_QUARTER_CIRCLE, kInf, kInf, 0.0}},
      {"no station", Pt(0, 0, 0, COORD_HAS_ELEV), Pt(1, 1), ERR_POINT_INVALID,
       Untouched<AngDistRec>()},
      {"no point", Pt(0, 0), Pt(1, 1, 0, 0), ERR_POINT_INVALID, Untouched<AngDistRec>()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto out = Untouched<AngDistRec>();
    EXPECT_EQ(row.status, KavoCogoCoordToAngDist(&row.station, &row.point, &out));
    EXPECT_EQ(Text(row.out), Text(out));
  }
}

TEST(Forward, GivesThePoint) {
  const struct {
    const char* name;
    CoordPt station;
    AngDistRec polar;
    std::int32_t status;
    CoordPt out;
  } rows[] = {
      {"due north",
       Pt(1, 2, 3, kFull),
       {0, -1, -1.0, 5.0, 0.5},
       STATUS_OK,
       Written(6, 2, 3.5, kFull)},
      {"a negative distance goes the opposite way",
       Pt(0, 7),
       {0, 0, 0.0, -5.0, 0.0},
       STATUS_OK,
       Written(-5, 7 + 5 * std::sin(std::acos(-1.0)))},
      {"no elevation at the station, none at the point",
       Pt(0, 0, 9),
       {0, 0, 0.0, 1.0, 4.0},
       STATUS_OK,
       Written(1, 0)},
      {"no station",
       Pt(0, 0, 0, COORD_HAS_ELEV),
       {0, 0, 0.0, 1.0, 0.0},
       ERR_POINT_INVALID,
       Untouched<CoordPt>()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto out = Untouched<CoordPt>();
    EXPECT_EQ(row.status, KavoCogoAngDistToCoord(&row.station, &row.polar, &out));
    EXPECT_EQ(Text(row.out), Text(out));
  }
}

TEST(Forward, UndoesTheInverse) {
  std::mt19937_64 random(20261121);
  std::uniform_real_distribution<double> metres(-1000.0, 1000.0);
  for (int i = 0; i < 10000; ++i) {
    const CoordPt station = Pt(metres(random), metres(random), metres(random), kFull);
    const CoordPt point = Pt(metres(random), metres(random), metres(random), kFull);
    AngDistRec polar;
    CoordPt back;
    ASSERT_EQ(STATUS_OK, KavoCogoCoordToAngDist(&station, &point, &polar));
    ASSERT_EQ(STATUS_OK, KavoCogoAngDistToCoord(&station, &polar, &back));
    // Half a unit of azimuth (1.5e-7 rad) at the distance, and the last digits.
    const double reach = 1.6e-7 * polar.horizDist + 1e-10;
    EXPECT_NEAR(point.north, back.north, reach);
    EXPECT_NEAR(point.east, back.east, reach);
    EXPECT_NEAR(point.elev, back.elev, 1e-9);
  }
}

TEST(Grade, IsPerCentAndRatio) {
  const struct {
    const char* name;
    double horizDist;
    double dElev;
    SlopeRec out;
  } rows[] = {
      {"one in eight up", 16.0, 2.0, {12.5, 8.0}},
      {"one in eight down", 16.0, -2.0, {-12.5, -8.0}},
      {"vertical", 0.0, 2.0, {SLOPE_VERTICAL, 0.0}},
      {"level", 16.0, 0.0, {0.0, SLOPE_VERTICAL}},
      {"nothing", -0.0, -0.0, {SLOPE_VERTICAL, SLOPE_VERTICAL}},
      {"divided before it is multiplied", 3.0, 0.1, {(0.1 / 3.0) * 100.0, 3.0 / 0.1}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto out = Untouched<SlopeRec>();
    KavoCogoCalcSlopeByDist(row.horizDist, row.dElev, &out);
    EXPECT_EQ(Text(row.out), Text(out));
  }
}

}  // namespace
