#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "multi_sights.hpp"

namespace {

using namespace kavo_test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr IntAngle kQuarter = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kHalf = ANGLE_HALF_CIRCLE;
constexpr IntAngle kEighth = kQuarter / 2;

// Points about a station at the origin, whose circle reads azimuths, and the sights to them.
CoordPt North() { return Pt(100, 0); }
CoordPt East() { return Pt(0, 50); }
CoordPt South() { return Pt(-80, 0); }
const MultiResectInput kNorth = Sight(North(), 0);
const MultiResectInput kEast = Sight(East(), kQuarter);
const MultiResectInput kSouth = Sight(South(), kHalf);

TEST(MultiResection, RefusesWhatDeterminesNoStation) {
  const struct {
    const char* name;
    MultiSights sights;
    std::int32_t status = ERR_REFUSED;
  } rows[] = {
      {"no sight", {}},
      {"one sight", {Sight(North(), 0, 100)}},
      {"two points, no distance", {kNorth, kEast, kEast}},
      {"a distance longer than the points are apart", {Sight(North(), 0, 112), kEast}},
      {"a north that is not a number", {Sight(Pt(kNaN, 0), 0), kEast, kSouth}},
      {"an infinite distance", {Sight(North(), 0, kInf), kEast, kSouth}},
      {"a negative distance", {Sight(North(), 0, -100), kEast}},
      // The readings of the first two points are exchanged: no place sees all three that way.
      {"two points mistaken for each other",
       {Sight(North(), kQuarter), Sight(East(), 0), kSouth},
       ERR_INDETERMINATE},
      {"distances that do not span half of what lies between the points",
       {Sight(Pt(60, -40), 143 * kDegree, 30), Sight(Pt(-10, 50), 86 * kDegree, 20),
        Sight(Pt(-90, -80), 229 * kDegree)},
       ERR_INDETERMINATE}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const MultiAnswer answer = Resect(row.sights);
    EXPECT_EQ(row.status, answer.status);
    EXPECT_TRUE(answer.IsUntouched());
  }
}

TEST(MultiResection, HasNoMemoryForANegativeCount) {
  for (const std::int16_t count : {std::int16_t{-1}, std::int16_t{-32768}}) {
    auto result = Untouched<MultiResectResult>();
    EXPECT_EQ(ERR_NO_MEMORY, KavoSTNMultiResect(count, nullptr, &result, nullptr));
    EXPECT_EQ(Text(Untouched<MultiResectResult>()), Text(result));
  }
}

// Every row is without errors, at the origin: the position and the reserved bytes are the same.
TEST(MultiResection, WritesEveryFieldButTheReservedOnes) {
  const struct {
    const char* name;
    MultiSights sights;
    IntAngle orient;
  } rows[] = {
      {"three directions", {kNorth, kEast, kSouth}, 0},
      {"two points and the distance to one",
       {Sight(North(), 7), Sight(East(), kQuarter + 7, 50)},
       ANGLE_FULL_CIRCLE - 7},
      {"in line, with a distance", {Sight(North(), -7), Sight(South(), kHalf - 7, 80)}, 7},
      {"whole circles in the readings do not matter",
       {Sight(North(), 3 * ANGLE_FULL_CIRCLE, 100), Sight(East(), kQuarter - ANGLE_FULL_CIRCLE, 50),
        kSouth},
       0},
      {"positions count without COORD_HAS_NE", {Sight(Pt(100, 0, 0, 0), 0), kEast, kSouth}, 0},
      // Meant so: the reading of face 2 goes 2615296 units too far, here for every sight alike.
      {"face 2 alone gives a wrong orientation",
       {WithZenith(Sight(North(), kHalf, 100), 3 * kQuarter),
        WithZenith(Sight(East(), 3 * kQuarter, 50), kHalf), WithZenith(Sight(South(), 0, 80), -1)},
       ANGLE_FULL_CIRCLE - 2615296},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const auto [status, result, residuals] = Resect(row.sights);
    ASSERT_EQ(STATUS_OK, status);
    EXPECT_LT(std::hypot(result.station.north, result.station.east), 1e-9);
    const double turn = std::remainder(result.orient - row.orient, ANGLE_FULL_CIRCLE);
    EXPECT_LE(std::fabs(turn), 1.0) << result.orient;
    EXPECT_TRUE(result.orient >= 0 && result.orient < ANGLE_FULL_CIRCLE);
    EXPECT_LT(result.sdNorth + result.sdEast, 1e-9);
    EXPECT_EQ(Text(Written(result.station.north, result.station.east)), Text(result.station));
    EXPECT_EQ(0.0, result.elevSpread);
    EXPECT_EQ(Untouched<MultiResectResult>().reserved, result.reserved);
    for (const auto& residual : residuals) {
      EXPECT_EQ(Text(MultiResectResidual{0, Untouched<MultiResectResidual>().reserved, 0.0, 0.0}),
                Text(residual));
    }
  }
}

TEST(MultiResection, TakesTheElevationFromTheRightSights) {
  const auto up = [](CoordPt point, double elev, IntAngle ha, double dist = 0, double dh = 0,
                     double term = 0) {
    return Sight(Pt(point.north, point.east, elev, kFull), ha, dist, dh, term);
  };
  const auto north = up(North(), 50, 0, 100, 3.0, 0.5);
  const auto steepNorth = WithZenith(up(North(), 150, 0, 0, 1000, 0.5), kEighth);
  const auto steepSouth = WithZenith(up(South(), -28, kHalf, 0, 1000, 1.5), 3 * kEighth);
  const auto tall = up(North(), 0x1p53, 0, 100, 0x1p53, 1.0);
  const auto unknown = up(North(), 50, 0, 100, kNaN);
  const MultiSights averaged = {north, up(East(), 40, kQuarter, 50, -4.0, -0.25),
                                up(South(), 999, kHalf)};
  // Without an elevation, to complete the figure.
  const auto east = Sight(East(), kQuarter, 50, 1000.0, 1000.0);
  struct Case {
    const char* name;
    MultiSights sights;
    double elev, spread, elevResids[3];
  };
  const Case rows[] = {
      {"one distance to an elevation", {north, east, kSouth}, 47.5, 0, {}},
      {"two of them, and a zenith reading that does not count",
       averaged,
       45.625,
       3.75,
       {1.875, -1.875}},
      {"the height term is added first", {tall, east, kSouth}, 0, 0, {}},
      {"zenith readings without such a distance", {steepNorth, steepSouth, east}, 52, 3, {}},
      {"not a number travels", {unknown, east, kSouth}, kNaN, -2e20, {kNaN}}};
  const auto expectNear = [](double expected, double value) {
    EXPECT_TRUE(std::isnan(expected) ? std::isnan(value) : std::fabs(expected - value) < 1e-9)
        << "expected " << expected << ", got " << value;
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const auto [status, result, residuals] = Resect(row.sights);
    ASSERT_EQ(STATUS_OK, status);
    EXPECT_LT(std::hypot(result.station.north, result.station.east), 1e-9);
    EXPECT_EQ(kFull, result.station.flags);
    expectNear(row.elev, result.station.elev);
    expectNear(row.spread, result.elevSpread);
    for (std::size_t i = 0; i < residuals.size(); ++i) {
      expectNear(row.elevResids[i], residuals[i].elevResid);
    }
  }
}

// Four points on the axes, at 100 m.
CoordPt Axis(int quarter, double elev = 0.0, std::uint16_t flags = kPlan) {
  const double along[] = {100.0, 0.0, -100.0, 0.0};
  return Pt(along[quarter], along[(quarter + 3) % 4], elev, flags);
}

// A reading that is 30 units too great goes into the orientation with a quarter of itself, and the
// figure leaves a quarter to every residual. Truncated, not rounded.
TEST(MultiResection, GivesResidualsOfDirections) {
  MultiSights sights;
  for (int i = 0; i < 4; ++i) {
    sights.push_back(Sight(Axis(i), i * kQuarter + (i == 0 ? 30 : 0)));
  }
  const MultiAnswer answer = Resect(sights);
  ASSERT_EQ(STATUS_OK, answer.status);
  EXPECT_EQ(ANGLE_FULL_CIRCLE - 8, answer.result.orient);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(i % 2 == 0 ? -7 : 7, answer.residuals[i].hzResid) << i;
  }
}

// All distances 4 mm too long: the figure has no place that suits them better, and the residuals
// are given out where there is an elevation. Normal equations by hand: two directions across and
// two distances along each axis; eight observations for three unknowns.
TEST(MultiResection, GivesResidualsOfDistancesAndTheirStandardDeviations) {
  MultiSights sights;
  for (int i = 0; i < 4; ++i) {
    sights.push_back(Sight(Axis(i, 5.0, i == 2 ? kPlan : kFull), i * kQuarter, 100.004));
  }
  const auto [status, result, residuals] = Resect(sights);
  ASSERT_EQ(STATUS_OK, status);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(0, residuals[i].hzResid);
    EXPECT_NEAR(i == 2 ? 0.0 : -0.004, residuals[i].distResid, 1e-9) << i;
  }
  const double sigmaAngle = 2.0 / 3600.0 * std::acos(-1.0) / 180.0;
  const double weight = std::pow(sigmaAngle / std::hypot(0.002, 2e-6 * 100.004), 2);
  const double variance = 4.0 * weight * 0.004 * 0.004 / (8.0 - 3.0);
  const double expected = std::sqrt(variance / (2.0 / (100.0 * 100.0) + 2.0 * weight));
  EXPECT_NEAR(1.0, result.sdNorth / expected, 1e-6);
  EXPECT_NEAR(1.0, result.sdEast / expected, 1e-6);
}

// One sight of two on face 2: its direction is taken 2615296 units too far, and there is always a
// place that suits two directions and one distance.
TEST(MultiResection, TurnsFaceTwoTooFar) {
  const auto faceTwo = WithZenith(Sight(East(), 3 * kQuarter), 3 * kQuarter);
  const auto [status, result, residuals] = Resect({Sight(North(), 0, 100), faceTwo});
  const auto asTaken = Resect({Sight(North(), 0, 100), Sight(East(), kQuarter + 2615296)});
  ASSERT_EQ(STATUS_OK, status);
  EXPECT_NEAR(asTaken.result.station.north, result.station.north, 1e-9);
  EXPECT_NEAR(asTaken.result.station.east, result.station.east, 1e-9);
  EXPECT_GT(std::hypot(result.station.north, result.station.east), 10.0);
}

}  // namespace
