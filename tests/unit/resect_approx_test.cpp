#include "station/resect_approx.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <limits>

#include "fake_heap.hpp"
#include "networks.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kHalfPi = kPi / 2.0;
constexpr double kNone = kValueAbsent;

struct Approx {
  std::int32_t code;
  Index unknowns;
  Index limit;
  std::array<double, 4> values;
};

Approx ApproxOf(std::int32_t mode, const std::vector<MultiResectObs>& sights) {
  const HeapGuard guard;
  Approx approx{};
  Vector x0;
  approx.code = LsqApproxValues(mode, static_cast<Index>(sights.size()), sights.data(),
                                approx.unknowns, approx.limit, x0);
  EXPECT_EQ(approx.code == kEngineOk, static_cast<bool>(x0));
  if (x0) {
    for (Index i = 1; i <= approx.unknowns; ++i) {
      approx.values[static_cast<std::size_t>(i) - 1] = x0[i];
    }
    VecFree(x0, 1, approx.unknowns);
  }
  return approx;
}

void ExpectOrigin(const Approx& approx) {
  EXPECT_NEAR(0.0, std::hypot(approx.values[0], approx.values[1]), 1e-9);
  EXPECT_NEAR(0.0, approx.values[2], 1e-9);
}

TEST(WithinHalfCircle, TakesAwayAnyNumberOfCircles) {
  for (const double angle : {-3.1, -1.0, 0.0, 1.0, 3.1}) {
    for (const double circles : {-200.0, -103.0, -1.0, 0.0, 1.0, 103.0, 200.0}) {
      EXPECT_NEAR(angle, WithinHalfCircle(angle + circles * 2.0 * kPi), 1e-12);
    }
  }
  EXPECT_EQ(1.0, WithinHalfCircle(1.0));
  EXPECT_TRUE(std::isnan(WithinHalfCircle(kInf)));
}

// A sight to a point, with a reading in radians and a distance or none.
MultiResectObs Sight(double north, double east, double hz, double horizDist = kNone) {
  return {
      north, east, kNone, 0.0, hz, kHalfPi, horizDist, horizDist, horizDist == kNone ? kNone : 0.0,
      0.0,   0.0,  0.0};
}

// Stations at the origin, the circle zeroed to the north, unless the name says otherwise.
TEST(ApproxValues, TakesWhatDeterminesAStationAndRefusesTheRest) {
  const auto north = Sight(100, 0, 0);
  const auto east = Sight(0, 50, kHalfPi);
  const auto south = Sight(-80, 0, kPi);
  const auto northFar = Sight(150, 0, 0);
  const auto with = [](MultiResectObs sight, double horizDist) {
    return Sight(sight.north, sight.east, sight.hz, horizDist);
  };
  const struct {
    const char* name;
    std::vector<MultiResectObs> sights;
    std::int32_t code;
  } rows[] = {
      {"three directions", {north, east, south}, kEngineOk},
      {"two points, both distances", {with(north, 100), with(east, 50)}, kEngineOk},
      {"two points, the distance to one not longer than the base",
       {north, with(east, 50)},
       kEngineOk},
      {"in line, with all distances",
       {with(north, 100), with(south, 80), with(northFar, 150)},
       kEngineOk},
      {"in line, with one distance", {with(north, 100), south, northFar}, kEngineOk},
      {"between two points in line, with one distance", {with(north, 100), south}, kEngineOk},
      {"on the circle through the points, with one distance",
       {Sight(50, 50, kPi / 4, std::hypot(50, 50)), Sight(100, 0, 0), Sight(50, -50, -kPi / 4)},
       kEngineOk},
      {"two points, one sighted twice with a distance",
       {north, with(east, 50), with(east, 50)},
       kEngineOk},
      {"a sight without anything is passed over, whatever its point",
       {north, east, south, Sight(kNaN, kNaN, kNone)},
       kEngineOk},
      {"no sight", {}, kEngineSingular},
      {"one point", {with(north, 100)}, kEngineSingular},
      {"one point three times", {with(north, 100), with(north, 100), north}, kEngineSingular},
      {"two points without a distance", {north, east, east}, kEngineSingular},
      {"two points, the one distance longer than the base",
       {with(north, 120), east},
       kEngineSingular},
      {"the same, the other point sighted twice", {with(north, 120), east, east}, kEngineSingular},
      {"the same, measured twice", {with(north, 120), with(north, 120), east}, kEngineSingular},
      {"directions alone, everything in line", {north, south, northFar}, kEngineSingular},
      {"directions alone, on the circle through the points",
       {Sight(50, 50, kPi / 4), Sight(100, 0, 0), Sight(50, -50, -kPi / 4)},
       kEngineSingular},
      {"directions alone, parallel though the points are not in line",
       {Sight(100, 0, 0), Sight(200, 30, 0), Sight(300, -20, 0)},
       kEngineSingular},
      {"the station on a point",
       {with(north, 100), Sight(200, 0, 0), Sight(0, 0, 0)},
       kEngineSingular},
      {"a north that is not a number", {Sight(kNaN, 0, 0), east, south}, kEngineSingular},
      {"an infinite east", {Sight(100, kInf, 0), east, south}, kEngineSingular},
      {"a reading that is not a number", {Sight(100, 0, kNaN), east, south}, kEngineSingular},
      {"an infinite reading", {Sight(100, 0, kInf), east, south}, kEngineSingular},
      {"a distance that is not a number", {with(north, kNaN), east, south}, kEngineSingular},
      {"an infinite distance", {with(north, kInf), east, south}, kEngineSingular},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Approx approx = ApproxOf(kLsqMode2D, row.sights);
    EXPECT_EQ(row.code, approx.code);
    EXPECT_EQ(3, approx.unknowns);
    EXPECT_EQ(10, approx.limit);
    // All zero where nothing was written.
    ExpectOrigin(approx);
  }
}

// Half a micrometre off the circle through the points the directions say nothing, but the distance
// has two places for the station, and the directions know which.
TEST(ApproxValues, ChoosesBetweenTheTwoSolutionsOfATriangle) {
  std::vector<MultiResectObs> sights;
  for (const double at : {30.0, 60.0, 100.0}) {
    const double north = 50.0 + (50.0 + 5e-7) * std::cos(at * kPi / 180.0);
    const double east = (50.0 + 5e-7) * std::sin(at * kPi / 180.0);
    sights.push_back(Sight(north, east, std::atan2(east, north)));
  }
  EXPECT_EQ(kEngineSingular, ApproxOf(kLsqMode2D, sights).code);
  // From the first point the station is farther than any other point, and beyond the last one.
  for (const std::size_t measured : {0U, 2U}) {
    auto one = sights;
    one[measured] = Sight(one[measured].north, one[measured].east, one[measured].hz,
                          std::hypot(one[measured].north, one[measured].east));
    const Approx approx = ApproxOf(kLsqMode2D, one);
    EXPECT_EQ(kEngineOk, approx.code);
    EXPECT_NEAR(0.0, std::hypot(approx.values[0], approx.values[1]), 1e-9);
  }
}

TEST(ApproxValues, AddsTheElevationInSpace) {
  std::vector<MultiResectObs> sights = {Sight(100, 0, 0, 100), Sight(0, 50, kHalfPi, 50),
                                        Sight(-80, 0, kPi, 80), Sight(0, -70, -kHalfPi)};
  sights[0].elev = 20.0;
  sights[0].heightDiff = 3.0;
  sights[0].heightTerm = 0.5;
  sights[1].elev = 10.0;
  sights[1].heightDiff = -6.0;
  sights[3].elev = 999.0;  // without a distance it says nothing
  const Approx approx = ApproxOf(kLsqMode3D, sights);
  EXPECT_EQ(kEngineOk, approx.code);
  EXPECT_EQ(4, approx.unknowns);
  EXPECT_EQ(10, approx.limit);
  EXPECT_NEAR(0.0, std::hypot(approx.values[0], approx.values[1]), 1e-12);
  EXPECT_EQ((17.5 + 16.0) / 2.0, approx.values[2]);
  EXPECT_NEAR(0.0, approx.values[3], 1e-12);
  sights[0].heightDiff = kNaN;
  EXPECT_EQ(kEngineSingular, ApproxOf(kLsqMode3D, sights).code);
}

// In space a distance to a point without elevation is no observation, and does not help.
TEST(ApproxValues, LeavesOutInSpaceWhatTheAdjustmentLeavesOut) {
  const std::vector<MultiResectObs> sights = {Sight(100, 0, 0, 100), Sight(0, 50, kHalfPi, 50)};
  EXPECT_EQ(kEngineOk, ApproxOf(kLsqMode2D, sights).code);
  EXPECT_EQ(kEngineSingular, ApproxOf(kLsqMode3D, sights).code);
}

TEST(ApproxValues, AsksForOneBlockOnly) {
  const std::vector<MultiResectObs> sights = {Sight(100, 0, 0), Sight(0, 50, kHalfPi),
                                              Sight(-80, 0, kPi)};
  const HeapGuard guard;
  EXPECT_EQ(".", RefuseEachRequest([&] {
              Index unknowns = 0;
              Index limit = 0;
              Vector x0;
              const auto code = LsqApproxValues(kLsqMode2D, 3, sights.data(), unknowns, limit, x0);
              if (x0) {
                VecFree(x0, 1, 3);
              }
              return code;
            }));
}

TEST(ApproxValues, GivesTheOrientationWithinHalfACircle) {
  for (const double orient : {-kPi + 1e-9, -1.0, 0.0, 3.0, kPi}) {
    const std::vector<MultiResectObs> sights = {
        Sight(100, 0, -orient), Sight(0, 50, kHalfPi - orient), Sight(-80, 0, kPi - orient)};
    const Approx approx = ApproxOf(kLsqMode2D, sights);
    EXPECT_LE(std::fabs(approx.values[2]), kPi);
    EXPECT_NEAR(0.0, WithinHalfCircle(orient - approx.values[2]), 1e-12);
  }
}

struct Tally {
  double refused;    // share of the networks
  double worst;      // distance from the true station, metres
  double worstTurn;  // off the true orientation, radians
};

Tally TallyOf(Random& random, const Geometry& geometry, Distances distances) {
  constexpr int kNetworks = 2000;
  Tally tally{};
  for (int i = 0; i < kNetworks; ++i) {
    const Network net = DrawNetwork(random, geometry, distances);
    const auto [code, unknowns, limit, x] = ApproxOf(kLsqMode2D, net.sights);
    if (code != kEngineOk) {
      tally.refused += 1.0 / kNetworks;
      continue;
    }
    tally.worst = std::max(tally.worst, std::hypot(x[0] - net.north, x[1] - net.east));
    tally.worstTurn = std::max(tally.worstTurn, std::fabs(WithinHalfCircle(x[2] - net.orient)));
  }
  return tally;
}

void ExpectExactness(Random& random, const Geometry& geometry, Distances distances,
                     double mayRefuse) {
  const Tally tally = TallyOf(random, geometry, distances);
  std::printf("  %-20s refused %5.2f %%, worst %.1e m\n", geometry.name, 100.0 * tally.refused,
              tally.worst);
  EXPECT_LE(tally.refused, mayRefuse) << geometry.name;
  EXPECT_LT(tally.worst, 1e-6) << geometry.name;
  EXPECT_LT(tally.worstTurn, 1e-8) << geometry.name;
}

// Exact sights give the exact station, in every geometry and whatever was measured. Directions
// alone may be refused where chance puts a network close to what they cannot determine.
TEST(ApproxValues, AreExactForExactSights) {
  const struct {
    const char* name;
    Distances distances;
    double mayRefuse;
  } kinds[] = {{"no distance", Distances::kNone, 0.002},
               {"one distance", Distances::kOne, 0.0},
               {"all distances", Distances::kAll, 0.0}};
  Random random(20261121);
  for (const auto& kind : kinds) {
    SCOPED_TRACE(kind.name);
    std::printf("%s\n", kind.name);
    for (const auto& geometry : kGeometries) {
      ExpectExactness(random, geometry, kind.distances, kind.mayRefuse);
    }
  }
}

}  // namespace
