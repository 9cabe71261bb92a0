#include "station/resect_approx.hpp"

#include <gtest/gtest.h>

#include "fake_heap.hpp"
#include "lsq_objects.hpp"
#include "networks.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr double kHalfPi = kPi / 2.0;
constexpr double kNone = kValueAbsent;

struct Approx {
  std::int32_t code;
  Index unknowns;
  Index limit;
  Numbers values{0.0, 0.0, 0.0};  // where nothing was written
};

Approx ApproxOf(std::int32_t mode, const std::vector<MultiResectObs>& sights) {
  const HeapGuard guard;
  Approx approx{};
  Vector x0;
  approx.code =
      LsqApproxValues(mode, CountOf(sights), sights.data(), approx.unknowns, approx.limit, x0);
  EXPECT_EQ(approx.code == kEngineOk, static_cast<bool>(x0));
  const Owner owner{x0};
  if (x0) {
    approx.values = NumbersOf(x0, approx.unknowns);
  }
  return approx;
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
MultiResectObs Sight(double north, double east, double hz, double dist = kNone) {
  const double heightDiff = dist == kNone ? kNone : 0.0;
  return {north, east, kNone, 0.0, hz, kHalfPi, dist, dist, heightDiff, 0.0, 0.0, 0.0};
}

// Points about a station at the origin, the circle zeroed to the north.
MultiResectObs North(double dist = kNone) { return Sight(100, 0, 0, dist); }
MultiResectObs East(double dist = kNone) { return Sight(0, 50, kHalfPi, dist); }
MultiResectObs South(double dist = kNone) { return Sight(-80, 0, kPi, dist); }
MultiResectObs FarNorth(double dist = kNone) { return Sight(150, 0, 0, dist); }

// Points on one circle through the station.
std::vector<MultiResectObs> OnCircle(double dist = kNone) {
  return {Sight(50, 50, kPi / 4, dist), North(), Sight(50, -50, -kPi / 4)};
}

// Corners around the station, read as in a mirror.
std::vector<MultiResectObs> MirroredPentagon() {
  std::vector<MultiResectObs> sights;
  for (int corner = 0; corner < 5; ++corner) {
    const double azimuth = corner * 2.0 * kPi / 5.0;
    sights.push_back(Sight(100 * std::cos(azimuth), 100 * std::sin(azimuth), -azimuth));
  }
  return sights;
}

struct Case {
  const char* name;
  std::vector<MultiResectObs> sights;
};

void ExpectCode(std::int32_t code, const std::vector<Case>& cases) {
  for (const auto& [name, sights] : cases) {
    const Approx approx = ApproxOf(kLsqMode2D, sights);
    EXPECT_EQ(code, approx.code) << name;
    EXPECT_EQ(3, approx.unknowns) << name;
    EXPECT_EQ(10, approx.limit) << name;
    EXPECT_LT(Distance({0, 0, 0}, approx.values), 1e-9) << name;
  }
}

TEST(ApproxValues, TakesWhatDeterminesAStation) {
  ExpectCode(kEngineOk,
             {{"three directions", {North(), East(), South()}},
              {"two points, both distances", {North(100), East(50)}},
              {"two points, the distance not longer than the base", {North(), East(50)}},
              {"in line, with all distances", {North(100), South(80), FarNorth(150)}},
              {"in line, with one distance", {North(100), South(), FarNorth()}},
              {"between two points in line, with one distance", {North(100), South()}},
              {"points on one circle, with one distance", OnCircle(std::hypot(50, 50))},
              {"two points, one sighted twice with a distance", {North(), East(50), East(50)}},
              {"a sight without anything is passed over, whatever its point",
               {North(), East(), South(), Sight(kNaN, kNaN, kNone)}}});
}

TEST(ApproxValues, RefusesWhatDeterminesNoStation) {
  ExpectCode(kEngineSingular,
             {{"no sight", {}},
              {"one point", {North(100)}},
              {"one point three times", {North(100), North(100), North()}},
              {"two points without a distance", {North(), East(), East()}},
              {"two points, the one distance longer than the base", {North(120), East()}},
              {"the same, the other point sighted twice", {North(120), East(), East()}},
              {"the same, measured twice", {North(120), North(120), East()}},
              {"directions alone, everything in line", {North(), South(), FarNorth()}},
              {"directions alone, on the circle through the points", OnCircle()},
              {"directions alone, parallel though the points are not in line",
               {North(), Sight(200, 30, 0), Sight(300, -20, 0)}},
              {"the same, along a diagonal",
               {Sight(100, 100, kPi / 4), Sight(200, 230, kPi / 4), Sight(300, 280, kPi / 4)}},
              {"readings that turn the other way: no orientation is the best", MirroredPentagon()},
              {"the station on a point", {North(100), Sight(200, 0, 0), Sight(0, 0, 0)}},
              {"a north that is not a number", {Sight(kNaN, 0, 0), East(), South()}},
              {"an infinite east", {Sight(100, kInf, 0), East(), South()}},
              {"a reading that is not a number", {Sight(100, 0, kNaN), East(), South()}},
              {"an infinite reading", {Sight(100, 0, kInf), East(), South()}},
              {"a distance that is not a number", {North(kNaN), East(), South()}},
              {"an infinite distance", {North(kInf), East(), South()}}});
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
    auto& sight = one[measured];
    sight = Sight(sight.north, sight.east, sight.hz, std::hypot(sight.north, sight.east));
    const Approx approx = ApproxOf(kLsqMode2D, one);
    EXPECT_EQ(kEngineOk, approx.code);
    EXPECT_NEAR(0.0, std::hypot(approx.values[0], approx.values[1]), 1e-9);
  }
}

// Distances that are all one part in a hundred too long: five directions outweigh them.
TEST(ApproxValues, StartsFromWhatSuitsTheSightsBest) {
  const Approx approx =
      ApproxOf(kLsqMode2D, {North(101), East(50.5), South(), Sight(0, 20, kHalfPi), FarNorth()});
  EXPECT_EQ(kEngineOk, approx.code);
  EXPECT_LT(Distance({0, 0, 0}, approx.values), 1e-9);
}

// Powers of two take no part in rounding: what is decided, and every digit, is the same.
TEST(ApproxValues, DoNotDependOnTheScale) {
  const std::vector<MultiResectObs> networks[] = {{North(), East(), South()},
                                                  {North(100), East(50)},
                                                  {North(100), East(), South()},
                                                  OnCircle(std::hypot(50, 50))};
  for (const auto& network : networks) {
    const Approx approx = ApproxOf(kLsqMode2D, network);
    for (const double scale : {0x1p-20, 0x1p20}) {
      auto scaled = network;
      for (auto& sight : scaled) {
        sight.north *= scale;
        sight.east *= scale;
        sight.horizDist *= sight.horizDist == kNone ? 1.0 : scale;
      }
      const auto [code, unknowns, limit, values] = ApproxOf(kLsqMode2D, scaled);
      EXPECT_EQ(approx.code, code);
      EXPECT_EQ((Numbers{approx.values[0] * scale, approx.values[1] * scale, approx.values[2]}),
                values);
    }
  }
}

TEST(ApproxValues, AddsTheElevationInSpace) {
  std::vector<MultiResectObs> sights = {North(100), East(50), South(80), FarNorth()};
  // A distance to a point without elevation is no observation, and does not help.
  EXPECT_EQ(kEngineOk, ApproxOf(kLsqMode2D, {North(100), East(50)}).code);
  EXPECT_EQ(kEngineSingular, ApproxOf(kLsqMode3D, {North(100), East(50)}).code);
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
  EXPECT_LE(Distance({0, 0, (17.5 + 16.0) / 2.0, 0}, approx.values), 1e-12);
  sights[0].heightDiff = kNaN;
  EXPECT_EQ(kEngineSingular, ApproxOf(kLsqMode3D, sights).code);
}

TEST(ApproxValues, AsksForOneBlockOnly) {
  const std::vector<MultiResectObs> sights = {North(), East(), South()};
  const HeapGuard guard;
  EXPECT_EQ(".", RefuseEachRequest([&] {
              Index unknowns = 0;
              Index limit = 0;
              Vector x0;
              const auto code = LsqApproxValues(kLsqMode2D, 3, sights.data(), unknowns, limit, x0);
              const Owner owner{x0};
              return code;
            }));
}

TEST(ApproxValues, GivesTheOrientationWithinHalfACircle) {
  for (const double orient : {-kPi + 1e-9, -1.0, 0.0, 3.0, kPi}) {
    std::vector<MultiResectObs> sights = {North(), East(), South()};
    for (auto& sight : sights) {
      sight.hz -= orient;
    }
    const double turn = ApproxOf(kLsqMode2D, sights).values[2];
    EXPECT_LE(std::fabs(turn), kPi);
    EXPECT_NEAR(0.0, WithinHalfCircle(orient - turn), 1e-12);
  }
}

// Exact sights give the exact station, in every geometry and whatever was measured. Directions
// alone may be refused where chance puts a network close to what they cannot determine.
void ExpectExactness(Random& random, const Geometry& geometry, Distances distances, int mayRefuse) {
  SCOPED_TRACE(geometry.name);
  int refused = 0;
  double worst = 0.0;      // distance from the true station, metres
  double worstTurn = 0.0;  // off the true orientation, radians
  for (int i = 0; i < 2000; ++i) {
    const Network net = DrawNetwork(random, geometry, distances);
    const auto [code, unknowns, limit, x] = ApproxOf(kLsqMode2D, net.sights);
    if (code != kEngineOk) {
      refused += 1;
      continue;
    }
    worst = std::max(worst, std::hypot(x[0] - net.north, x[1] - net.east));
    worstTurn = std::max(worstTurn, std::fabs(WithinHalfCircle(x[2] - net.orient)));
  }
  EXPECT_LE(refused, mayRefuse);
  EXPECT_LT(worst, 1e-6);
  EXPECT_LT(worstTurn, 1e-8);
}

TEST(ApproxValues, AreExactForExactSights) {
  Random random(20261121);
  for (const auto& geometry : kGeometries) {
    ExpectExactness(random, geometry, Distances::kNone, 4);
    ExpectExactness(random, geometry, Distances::kOne, 0);
    ExpectExactness(random, geometry, Distances::kAll, 0);
  }
}

}  // namespace
