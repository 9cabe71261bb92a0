#include "station/resect_driver.hpp"

#include <gtest/gtest.h>

#include <array>
#include <numbers>

#include "fake_heap.hpp"
#include "lsq_objects.hpp"
#include "networks.hpp"
#include "station/resect_approx.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr double kSigmaAngle = 2.0;
constexpr double kSigmaConst = 0.002;
constexpr double kSigmaProp = 2e-6;
constexpr double kArcSecond = kPi / 648000.0;
constexpr double kAsItWas = 42.0;

ResectSolution AsItWas() {
  return {kAsItWas, kAsItWas, kAsItWas, kAsItWas, kAsItWas, kAsItWas, kAsItWas, kAsItWas, kAsItWas};
}

std::int32_t Resect(std::int32_t mode, std::vector<MultiResectObs>& sights, ResectSolution& out) {
  return LsqResect(mode, static_cast<Index>(sights.size()), sights.data(), kSigmaAngle, kSigmaConst,
                   kSigmaProp, out);
}

// Observed less computed, and its derivatives, about the unknowns x.
struct Linearised {
  Rows a;
  Numbers l;
};

Linearised LineariseAt(std::int32_t mode, const std::vector<MultiResectObs>& sights,
                       const Numbers& x) {
  Vector obs;
  Band weights;
  Index m = 0;
  Index nDist = 0;
  const Index n = CountOf(x);
  EXPECT_EQ(kEngineOk, LsqBuildWeights(mode, CountOf(sights), sights.data(), kSigmaAngle,
                                       kSigmaConst, kSigmaProp, obs, weights, m, nDist));
  const Owner ownObs{obs};
  const Owner ownWeights{weights};
  const Owner x0{VectorOf(x)};
  const Owner a{MatAlloc(1, m, 1, n)};
  const Owner l{VecAlloc(1, m)};
  LsqDesignMatrix(mode, CountOf(sights), sights.data(), *x0, obs, *a, *l);
  return {RowsOf(*a, m, n), NumbersOf(*l, m)};
}

// The column of unknown j, by differences.
Numbers Derivative(std::int32_t mode, const std::vector<MultiResectObs>& sights, const Numbers& x,
                   std::size_t j) {
  constexpr double kStep = 1e-4;
  Numbers ahead = x;
  Numbers behind = x;
  ahead[j] += kStep;
  behind[j] -= kStep;
  Numbers column = LineariseAt(mode, sights, ahead).l;
  const Numbers back = LineariseAt(mode, sights, behind).l;
  for (std::size_t k = 0; k < column.size(); ++k) {
    column[k] = (column[k] - back[k]) / (2.0 * kStep);
  }
  return column;
}

void ExpectZero(const Numbers& numbers, double tolerance) {
  for (const double number : numbers) {
    EXPECT_NEAR(0.0, number, tolerance);
  }
}

// A whole sight, one without distance, one to a point without elevation, one without direction.
Network MixedSights() {
  Network net{30.0, -20.0, 5.0, 0.7, {}};
  AddSight(net, 130.0, 40.0, 12.0);
  AddSight(net, -70.0, 10.0, 9.0);
  AddSight(net, -20.0, -90.0);
  AddSight(net, 60.0, -140.0, 1.0);
  net.sights[0].elev -= 0.5;
  net.sights[0].heightTerm = 0.5;
  RemoveDistance(net.sights[1]);
  net.sights[3].hz = kValueAbsent;
  return net;
}

TEST(DesignMatrix, HoldsTheDerivativesInTheOrderOfTheObservations) {
  const Network net = MixedSights();
  const struct {
    std::int32_t mode;
    Numbers x;
    std::size_t equations;
  } rows[] = {{kLsqMode2D, {net.north, net.east, net.orient}, 6},
              {kLsqMode3D, {net.north, net.east, net.elev, net.orient}, 7}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.mode);
    const HeapGuard guard;
    const Linearised at = LineariseAt(row.mode, net.sights, row.x);
    ASSERT_EQ(row.equations, at.l.size());
    ExpectZero(at.l, 1e-12);
    for (std::size_t j = 0; j < row.x.size(); ++j) {
      Numbers difference = Derivative(row.mode, net.sights, row.x, j);
      for (std::size_t k = 0; k < row.equations; ++k) {
        difference[k] -= at.a[k][j];
      }
      ExpectZero(difference, 1e-9);
    }
  }
}

void ExpectExact(std::int32_t mode, Network net) {
  const HeapGuard guard;
  ResectSolution out{};
  ASSERT_EQ(kEngineOk, Resect(mode, net.sights, out));
  const bool inSpace = mode == kLsqMode3D;
  ExpectZero(
      {out.north - net.north, out.east - net.east, out.elev - (inSpace ? net.elev : kValueAbsent)},
      1e-7);
  ExpectZero({WithinHalfCircle(out.orient - net.orient)}, 1e-9);
  ExpectZero({out.sdNorth, out.sdEast, out.sdOrient, out.sigma0, inSpace ? out.sdElev : 0.0}, 1e-6);
  EXPECT_TRUE(out.orient >= 0.0 && out.orient < 2.0 * kPi) << out.orient;
}

TEST(DriverLaws, ExactNetworksComeBack) {
  Random random(20261121);
  for (const auto& geometry : kGeometries) {
    SCOPED_TRACE(geometry.name);
    for (int i = 0; i < 150; ++i) {
      ExpectExact(kLsqMode2D, DrawNetwork(random, geometry, Distances::kOne));
      const Network net = DrawNetwork(random, geometry, Distances::kAll);
      ExpectExact(kLsqMode2D, net);
      ExpectExact(kLsqMode3D, InSpace(random, net));
    }
  }
}

// A whole number of circles in the readings, as turned face-2 readings have it, changes nothing.
TEST(DriverLaws, CirclesInTheReadingsDoNotMatter) {
  Random random(20261123);
  for (int i = 0; i < 200; ++i) {
    Network net = DrawNetwork(random, kGeometries[0], Distances::kAll);
    for (auto& sight : net.sights) {
      sight.hz += 2.0 * kPi * random.Angle(-103, 103);
    }
    const HeapGuard guard;
    ResectSolution out{};
    ASSERT_EQ(kEngineOk, Resect(kLsqMode2D, net.sights, out));
    EXPECT_NEAR(0.0, std::hypot(out.north - net.north, out.east - net.east), 1e-8);
    EXPECT_NEAR(0.0, WithinHalfCircle(out.orient - net.orient), 1e-10);
  }
}

Network FourCorners() {
  Network net{10.0, 20.0, 0.0, 1.0, {}};
  AddSight(net, 110.0, 20.0);
  AddSight(net, 10.0, 120.0);
  AddSight(net, -90.0, 30.0);
  AddSight(net, 20.0, -80.0);
  return net;
}

MultiResectObs Contradiction(double north, double east, double hz, double horizDist) {
  MultiResectObs obs{};
  obs.north = north;
  obs.east = east;
  obs.elev = kValueAbsent;
  obs.hz = hz;
  obs.zenith = kPi / 2.0;
  obs.slopeDist = obs.horizDist = horizDist;
  obs.resHz = kAsItWas;
  return obs;
}

TEST(Driver, TellsRefusedFromNotConverged) {
  const HeapGuard guard;
  auto sights = FourCorners().sights;
  sights.resize(2);
  RemoveDistance(sights[0]);
  RemoveDistance(sights[1]);
  sights[0].resHz = kAsItWas;
  ResectSolution out = AsItWas();
  EXPECT_EQ(kEngineSingular, Resect(kLsqMode2D, sights, out));
  EXPECT_EQ(kAsItWas, out.north);
  EXPECT_EQ(kAsItWas, out.sigma0);
  EXPECT_EQ(kAsItWas, sights[0].resHz);

  sights.clear();
  EXPECT_EQ(kEngineSingular, Resect(kLsqMode2D, sights, out));

  // Distances that together do not span half of what lies between the points.
  sights = {Contradiction(60, -40, 2.5, 30), Contradiction(-10, 50, 1.5, 20),
            Contradiction(-90, -80, 4, kValueAbsent)};
  EXPECT_EQ(kEngineNotConverged, Resect(kLsqMode2D, sights, out));
  EXPECT_NE(kAsItWas, out.north);
  EXPECT_NE(kAsItWas, sights[0].resHz);
}

// In space a slope distance of nothing is the engine's refusal.
TEST(Driver, HandsOnTheCodesOfTheEngine) {
  const HeapGuard guard;
  Random random(1);
  auto sights = InSpace(random, FourCorners()).sights;
  sights[1].slopeDist = 1e-9;
  ResectSolution out = AsItWas();
  EXPECT_EQ(kEngineSingular, Resect(kLsqMode3D, sights, out));
  EXPECT_EQ(kAsItWas, out.elev);
}

TEST(Driver, FallsBackToThePlane) {
  const HeapGuard guard;
  auto sights = FourCorners().sights;
  ResectSolution out{};
  EXPECT_EQ(kEngineOk, Resect(kLsqMode3D, sights, out));
  EXPECT_EQ(kValueAbsent, out.elev);
  EXPECT_EQ(kValueAbsent, out.sdElev);
  EXPECT_NEAR(10.0, out.north, 1e-9);
}

// Without redundancy the sum of squares stands for the variance as it is.
TEST(Driver, HasNoDeviationsWithoutRedundancy) {
  const HeapGuard guard;
  auto sights = FourCorners().sights;
  sights.resize(3);
  for (auto& sight : sights) {
    RemoveDistance(sight);
    sight.hz += 1e-5;
  }
  sights[0].hz += 1e-5;
  ResectSolution out{};
  EXPECT_EQ(kEngineOk, Resect(kLsqMode2D, sights, out));
  EXPECT_LT(out.sigma0, 1e-12);
  EXPECT_LT(out.sdNorth, 1e-9);
}

// Observations, the two parts of the weights, x0, A (whose row handles are lost without elements,
// meant so), l, dx, v and Qxx; then the temporaries of every step.
TEST(Driver, ReleasesEverythingWhateverRequestIsRefused) {
  const auto net = FourCorners();
  const HeapGuard guard;
  const std::string letters = RefuseEachRequest([&] {
    auto sights = net.sights;
    sights[0].hz += 1e-4;
    sights[0].resHz = kAsItWas;
    ResectSolution out = AsItWas();
    const auto code = Resect(kLsqMode2D, sights, out);
    EXPECT_EQ(code != kEngineOk, out.north == kAsItWas && sights[0].resHz == kAsItWas);
    return code;
  });
  EXPECT_EQ("....", letters.substr(0, 4));
  EXPECT_EQ(".L....L", letters.substr(4, 7));
  EXPECT_GT(letters.size(), 20U);
  EXPECT_EQ(std::string::npos, letters.find('?')) << letters;
}

}  // namespace
