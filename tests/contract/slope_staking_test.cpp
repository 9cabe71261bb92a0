#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <utility>

#include "points.hpp"

namespace {

using namespace kavo_test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::pair<std::int32_t, SlopeStakeResult> Stake(const CoordPt& reference, const CoordPt& point) {
  auto out = Untouched<SlopeStakeResult>();
  const auto status = KavoBRCalc(&reference, &point, &out);
  return {status, out};
}

// Taken before main, when no slope can have been set.
const auto kAtLoad = Stake(Pt(0, 0), Pt(0, 10, 5, kFull));

TEST(SlopeStaking, HasNoSlopeAtLoad) {
  EXPECT_EQ(ERR_NO_BASE, kAtLoad.first);
  EXPECT_EQ(Text(Untouched<SlopeStakeResult>()), Text(kAtLoad.second));
}

TEST(SlopeStaking, AcceptsOrRefusesASlope) {
  const struct {
    const char* name;
    double elev1;
    double offset1;
    double elev2;
    double offset2;
    std::int32_t status;
  } rows[] = {
      {"right", 10, 5, 0, 15, STATUS_OK},
      {"left", 10, -5, 0, -15, STATUS_OK},
      {"from the reference to the right", 10, 0, 0, 15, STATUS_OK},
      {"from the reference to the left", 10, -15, 0, -0.0, STATUS_OK},
      {"vertical", 10, 5, 0, 5, WARN_SLOPE_VERTICAL},
      {"level", 10, 5, 10, 15, WARN_SLOPE_LEVEL},
      {"one point twice", 10, 5, 10, 5, ERR_REFUSED},
      {"from left to right", 10, -5, 0, 5, ERR_REFUSED},
      {"from right to left", 10, 5, 0, -5, ERR_REFUSED},
      {"level, from left to right", 10, -5, 10, 5, ERR_REFUSED},
      {"an elevation that is not a number", kNaN, 5, kNaN, 5, WARN_SLOPE_VERTICAL},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_EQ(STATUS_OK, KavoBRSetSlope(1, 1, 2, 2));
    EXPECT_EQ(row.status, KavoBRSetSlope(row.elev1, row.offset1, row.elev2, row.offset2));
    // A refusal leaves no slope; whatever else came back comes back from the measurement too.
    const auto [status, out] = Stake(Pt(0, 0), Pt(0, 10, 5, kFull));
    EXPECT_EQ(row.status == ERR_REFUSED ? ERR_NO_BASE : row.status, status);
    EXPECT_EQ(row.status == ERR_REFUSED, Text(Untouched<SlopeStakeResult>()) == Text(out));
  }
}

struct Slope {
  double elev1;
  double offset1;
  double elev2;
  double offset2;
};

TEST(SlopeStaking, ComparesAPointWithTheSlope) {
  const Slope fillRight{10, 5, 0, 15};
  const Slope fillLeft{10, -5, 0, -15};
  const Slope fromCentreLeft{10, 0, 0, -10};
  const Slope wall{10, 5, 0, 5};
  const Slope wallLeft{10, -5, 0, -5};
  const Slope bench{10, 5, 10, 15};
  const CoordPt centre = Pt(100, 200);
  const auto untouched = Untouched<SlopeStakeResult>();
  const struct {
    const char* name;
    Slope slope;
    CoordPt point;
    std::int32_t status;
    SlopeStakeResult out;  // horizDiff, vertDiff, horizDist
  } rows[] = {
      {"on the slope", fillRight, Pt(100, 210, 5, kFull), STATUS_OK, {-0.0, 0, 10}},
      {"above it is outside it", fillRight, Pt(100, 210, 6, kFull), STATUS_OK, {1, 1, 10}},
      {"below it is inside it", fillRight, Pt(110, 200, 3, kFull), STATUS_OK, {-2, -2, 10}},
      {"beyond its end", fillRight, Pt(100, 220, 0, kFull), STATUS_OK, {5, 5, 20}},
      {"the left is a mirror", fillLeft, Pt(100, 190, 6, kFull), STATUS_OK, {1, 1, 10}},
      {"left and below", fillLeft, Pt(100, 190, 3, kFull), STATUS_OK, {-2, -2, 10}},
      {"the side of the point is not looked at",
       fillLeft,
       Pt(100, 210, 6, kFull),
       STATUS_OK,
       {1, 1, 10}},
      {"left from the reference on", fromCentreLeft, Pt(100, 195, 7, kFull), STATUS_OK, {2, 2, 5}},
      {"3-4-5 across", fillRight, Pt(103, 204, 12, kFull), STATUS_OK, {2, 2, 5}},
      {"outside a wall", wall, Pt(100, 208, 3, kFull), WARN_SLOPE_VERTICAL, {3, VALUE_INVALID, 8}},
      {"inside a wall",
       wallLeft,
       Pt(100, 196, 3, kFull),
       WARN_SLOPE_VERTICAL,
       {-1, VALUE_INVALID, 4}},
      {"above a bench", bench, Pt(100, 208, 12, kFull), WARN_SLOPE_LEVEL, {VALUE_INVALID, 2, 8}},
      {"at the reference", fillRight, Pt(100, 200, 5, kFull), ERR_NO_DIRECTION, untouched},
      {"a point without elevation", fillRight, Pt(100, 210, 5), ERR_POINT_INVALID, untouched},
      {"a point without position", fillRight, Pt(100, 210, 5, COORD_HAS_ELEV), ERR_POINT_INVALID,
       untouched},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const auto& s = row.slope;
    KavoBRSetSlope(s.elev1, s.offset1, s.elev2, s.offset2);
    const auto [status, out] = Stake(centre, row.point);
    EXPECT_EQ(row.status, status);
    EXPECT_EQ(Text(row.out), Text(out));
  }
  const auto [status, out] = Stake(Pt(100, 200, 0, COORD_HAS_ELEV), Pt(100, 210, 5, kFull));
  EXPECT_EQ(ERR_POINT_INVALID, status);
  EXPECT_EQ(Text(untouched), Text(out));
}

// A point built on the slope lies on it, and one moved off it is off by that much: on either side,
// with the cross-section turned and shifted, and the slope's two points exchanged.
TEST(SlopeStaking, RecoversASimulatedPoint) {
  std::mt19937_64 random(20270202);
  std::uniform_real_distribution<double> metres(-20.0, 20.0);
  std::uniform_real_distribution<double> offset(1.0, 50.0);
  for (int i = 0; i < 2000; ++i) {
    const double side = i % 2 == 0 ? 1.0 : -1.0;
    const double foot = offset(random);
    const double top = foot + offset(random);
    const double grade = metres(random) / 20.0;
    const double level = metres(random);
    const auto elevAt = [&](double out) { return level + grade * (out - foot); };
    const double out = offset(random);
    const double above = metres(random);
    const double azimuth = metres(random);
    const CoordPt reference = Pt(metres(random), metres(random));
    const CoordPt point = Pt(reference.north + out * std::cos(azimuth),
                             reference.east + out * std::sin(azimuth), elevAt(out) + above, kFull);
    ASSERT_EQ(STATUS_OK, KavoBRSetSlope(elevAt(foot), side * foot, elevAt(top), side * top));
    const auto [status, staked] = Stake(reference, point);
    ASSERT_EQ(STATUS_OK, status);
    EXPECT_NEAR(out, staked.horizDist, 1e-11);
    EXPECT_NEAR(above, staked.vertDiff, 1e-9);
    // Up by `above` is, at the point's elevation, outside by -above / grade.
    EXPECT_NEAR(-above, staked.horizDiff * grade, 1e-9);
    ASSERT_EQ(STATUS_OK, KavoBRSetSlope(elevAt(top), side * top, elevAt(foot), side * foot));
    EXPECT_NEAR(above, Stake(reference, point).second.vertDiff, 1e-9);
  }
}

}  // namespace
