// The multi-point resection against an adjustment of the tests' own: analytic derivatives, an
// orthogonal solution instead of normal equations, from the true station to full convergence.
#include <gtest/gtest.h>

#include <Eigen/Dense>
#include <cmath>
#include <cstdio>
#include <vector>

#include "fake_heap.hpp"
#include "multi_sights.hpp"
#include "networks.hpp"
#include "station/resect_approx.hpp"
#include "station/resect_driver.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr double kSigmaAngle = 2.0;
constexpr double kSigmaConst = 0.002;
constexpr double kSigmaProp = 2e-6;
constexpr double kPerUnit = kPi / ANGLE_HALF_CIRCLE;
constexpr double kSigma0 = kSigmaAngle * kPi / 648000.0;

// Measurement errors of these standard deviations. The horizontal distance and the height
// difference follow from the slope distance and the zenith angle.
void Disturb(Random& random, std::vector<MultiResectObs>& sights) {
  for (auto& sight : sights) {
    sight.hz += random.Normal(kSigma0);
    if (sight.slopeDist != kValueAbsent) {
      sight.slopeDist += random.Normal(std::hypot(kSigmaConst, kSigmaProp * sight.slopeDist));
      sight.zenith += random.Normal(kSigma0);
      sight.horizDist = sight.slopeDist * std::sin(sight.zenith);
      sight.heightDiff = sight.slopeDist * std::cos(sight.zenith);
    }
  }
}

// An observation equation of weight one: the derivatives by north, east, elevation and orientation,
// and computed less observed.
using Equation = Eigen::Matrix<double, 1, 5>;

double RootOfWeight(double dist) { return kSigma0 / std::hypot(kSigmaConst, kSigmaProp * dist); }

// The equations of a sight about a station: its direction and, in space, the slope distance and the
// zenith angle that its distances come from.
void AddEquations(const MultiResectObs& obs, bool inSpace, const Network& at,
                  std::vector<Equation>& equations) {
  const double dn = obs.north - at.north;
  const double de = obs.east - at.east;
  const double dist = std::hypot(dn, de);
  if (HasDirection(obs)) {
    const double turn = std::remainder(std::atan2(de, dn) - at.orient - obs.hz, 2.0 * kPi);
    equations.emplace_back(de / (dist * dist), -dn / (dist * dist), 0.0, -1.0, turn);
  }
  if (!GivesDistance(inSpace ? kLsqMode3D : kLsqMode2D, obs)) {
    return;
  }
  const Equation across(-dn / dist, -de / dist, 0.0, 0.0, dist - obs.horizDist);
  if (!inSpace) {
    equations.emplace_back(across * RootOfWeight(obs.horizDist));
    return;
  }
  const Equation up(0.0, 0.0, -1.0, 0.0, obs.elev + obs.heightTerm - at.elev - obs.heightDiff);
  const double s = std::sin(obs.zenith);
  const double c = std::cos(obs.zenith);
  equations.emplace_back((s * across + c * up) * RootOfWeight(obs.slopeDist));
  equations.emplace_back((c * across - s * up) / obs.slopeDist);
}

// An adjusted station.
struct Optimum {
  Network at;
  Eigen::MatrixXd cofactors;
  double squares;
  Eigen::Index redundancy;

  [[nodiscard]] double Deviation(Eigen::Index i, double sigma0) const {
    return sigma0 * std::sqrt(cofactors(i, i));
  }
};

// From the network's station, which is the true one. Without height equations the elevation stays.
Optimum Adjust(const Network& net, bool inSpace) {
  Optimum best{net, {}, 0.0, 0};
  const std::vector<Eigen::Index> unknowns =
      inSpace ? std::vector<Eigen::Index>{0, 1, 2, 3} : std::vector<Eigen::Index>{0, 1, 3};
  for (int pass = 0; pass < 30; ++pass) {
    std::vector<Equation> equations;
    for (const auto& obs : net.sights) {
      AddEquations(obs, inSpace, best.at, equations);
    }
    const auto m = static_cast<Eigen::Index>(equations.size());
    const Eigen::Map<const Eigen::Matrix<double, Eigen::Dynamic, 5, Eigen::RowMajor>> all(
        equations.front().data(), m, 5);
    const Eigen::MatrixXd a = all(Eigen::all, unknowns);
    const Eigen::VectorXd step = a.colPivHouseholderQr().solve(-all.col(4));
    best.cofactors = (a.transpose() * a).inverse();
    best.squares = all.col(4).squaredNorm();
    best.redundancy = m - step.size();
    best.at.north += step(0);
    best.at.east += step(1);
    best.at.elev += inSpace ? step(2) : 0.0;
    best.at.orient += step(step.size() - 1);
    if (std::hypot(step(0), step(1)) < 1e-9) {
      break;
    }
  }
  return best;
}

// The export on whole-unit readings, which the network takes over.
MultiAnswer ResectRounded(Network& net) {
  MultiSights sights;
  for (auto& obs : net.sights) {
    const auto ha = static_cast<IntAngle>(std::lround(obs.hz / kPerUnit));
    obs.hz = ha * kPerUnit;
    sights.push_back(
        Sight(Pt(obs.north, obs.east), ha, IsThere(obs.horizDist) ? obs.horizDist : 0.0));
  }
  return Resect(sights);
}

double PlaneDeviation(const Optimum& best, double sigma0) {
  return std::hypot(best.Deviation(0, sigma0), best.Deviation(1, sigma0));
}

#ifdef __SANITIZE_ADDRESS__
constexpr int kNetworks = 200;
#else
constexpr int kNetworks = 5000;
#endif

// What became of the networks of a kind, counted.
struct Tally {
  int right = 0;
  int refused = 0;
  int elsewhere = 0;  // at another place, which suits the sights better than the true one
  int wrong = 0;      // neither, with STATUS_OK
};

// Within a tenth of the standard deviation that the figure has from the start.
bool IsAt(const Optimum& best, const Network& station) {
  return std::hypot(station.north - best.at.north, station.east - best.at.east) <
         1e-6 + 0.1 * PlaneDeviation(best, kSigma0);
}

void Count(Network net, Tally& tally) {
  const MultiAnswer answer = ResectRounded(net);
  if (answer.status != STATUS_OK) {
    ++tally.refused;
    return;
  }
  const Optimum best = Adjust(net, false);
  Network station = net;
  station.north = answer.result.station.north;
  station.east = answer.result.station.east;
  station.orient = answer.result.orient * kPerUnit;
  if (IsAt(best, station)) {
    ++tally.right;
    return;
  }
  const Optimum other = Adjust(station, false);
  ++(IsAt(other, station) && other.squares < best.squares ? tally.elsewhere : tally.wrong);
}

// Directions with one distance or none may be refused where chance puts a network close to what
// they cannot determine; a thousandth of the radius from the danger circle a few have two optima.
TEST(Truth, NoStationIsSilentlyWrong) {
  Random random(20261121);
  for (const auto& [kind, distances] : {std::pair{"no distance", Distances::kNone},
                                        {"one distance", Distances::kOne},
                                        {"all distances", Distances::kAll}}) {
    for (const auto& geometry : kGeometries) {
      SCOPED_TRACE(std::string(kind) + ", " + geometry.name);
      Tally tally;
      for (int i = 0; i < kNetworks; ++i) {
        Network net = DrawNetwork(random, geometry, distances);
        Disturb(random, net.sights);
        Count(net, tally);
      }
      std::printf("%-13s  %-18s  of %d: right %d, refused %d, elsewhere %d, wrong %d\n", kind,
                  geometry.name, kNetworks, tally.right, tally.refused, tally.elsewhere,
                  tally.wrong);
      const bool atDangerCircle = geometry.addSights == AddNearDangerCircle;
      EXPECT_EQ(0, tally.wrong);
      EXPECT_LE(tally.refused, distances == Distances::kAll ? 0 : 1 + kNetworks / 1000);
      EXPECT_LE(tally.elsewhere, atDangerCircle ? 1 + kNetworks / 1000 : 0);
    }
  }
  ReclaimHeap();  // what singular figures lost
}

// True when what is given as residuals, in units and metres, is what the station leaves.
bool ResidualsHold(const Network& net, const MultiAnswer& answer) {
  bool hold = true;
  for (std::size_t i = 0; i < net.sights.size(); ++i) {
    const auto& obs = net.sights[i];
    const double azimuth =
        std::atan2(obs.east - answer.result.station.east, obs.north - answer.result.station.north);
    const double units = answer.result.orient + answer.residuals[i].hzResid;
    const double turn = std::remainder(azimuth - obs.hz - units * kPerUnit, 2.0 * kPi);
    hold = hold && std::fabs(turn) < 0.001 + 2.0 * kPerUnit;
  }
  return hold;
}

// Two points mistaken for each other: mostly there is no place that suits the readings, and a pass
// of the adjustment leads anywhere and leaves residuals of nothing.
TEST(Truth, MistakenPointsGiveNoStationAnywhere) {
  Random random(20261122);
  for (const auto distances : {Distances::kNone, Distances::kOne, Distances::kAll}) {
    int refused = 0;
    for (int i = 0; i < kNetworks; ++i) {
      Network net = DrawNetwork(random, kGeometries[0], distances);
      std::swap(net.sights[0].north, net.sights[1].north);
      std::swap(net.sights[0].east, net.sights[1].east);
      const MultiAnswer answer = ResectRounded(net);
      refused += answer.status != STATUS_OK ? 1 : 0;
      if (answer.status == STATUS_OK) {
        EXPECT_TRUE(ResidualsHold(net, answer));
        EXPECT_LT(std::hypot(answer.result.station.north - net.north,
                             answer.result.station.east - net.east),
                  1e5);
      }
    }
    std::printf("%d of %d networks with two points exchanged refused\n", refused, kNetworks);
    EXPECT_GT(refused, kNetworks / 4);
  }
  ReclaimHeap();  // what singular figures lost
}

// Some sights without distance, elevation or direction, and with whole circles in their readings;
// the first three stay complete.
void Thin(Random& random, std::vector<MultiResectObs>& sights) {
  for (std::size_t i = 0; i < sights.size(); ++i) {
    MultiResectObs& obs = sights[i];
    obs.hz += 2.0 * kPi * random.Angle(-103, 103);
    switch (i < 3 ? 0 : random.Angle(0, 3)) {
      case 1:
        RemoveDistance(obs);
        break;
      case 2:
        obs.elev = kValueAbsent;
        break;
      case 3:
        obs.hz = kValueAbsent;
        break;
      default:
        break;
    }
  }
}

// What is computed at the adjusted station less what was measured.
void ExpectResiduals(const Network& net, std::int32_t mode, const ResectSolution& out) {
  for (const auto& obs : net.sights) {
    const double dn = obs.north - out.north;
    const double de = obs.east - out.east;
    const double turn = std::remainder(std::atan2(de, dn) - out.orient - obs.hz, 2.0 * kPi);
    const double shift = std::hypot(dn, de) - obs.horizDist;
    const double rise = obs.elev + obs.heightTerm - out.elev - obs.heightDiff;
    const bool measured = GivesDistance(mode, obs);
    EXPECT_NEAR(HasDirection(obs) ? turn : 0.0, obs.resHz, 1e-8);
    EXPECT_NEAR(measured ? shift : 0.0, obs.resHorizDist, 1e-6);
    EXPECT_NEAR(measured && mode == kLsqMode3D ? rise : 0.0, obs.resHeightDiff, 1e-6);
  }
}

void ExpectOptimum(Network net, std::int32_t mode) {
  const bool inSpace = mode == kLsqMode3D;
  const Optimum best = Adjust(net, inSpace);
  const double sigma0 = std::sqrt(best.squares / static_cast<double>(best.redundancy));
  const HeapGuard guard;
  ResectSolution out{};
  ASSERT_EQ(kEngineOk, LsqResect(mode, static_cast<Index>(net.sights.size()), net.sights.data(),
                                 kSigmaAngle, kSigmaConst, kSigmaProp, out));
  const double near = 1e-3 * PlaneDeviation(best, sigma0) + 1e-9;
  EXPECT_LT(std::hypot(out.north - best.at.north, out.east - best.at.east), near);
  EXPECT_NEAR(0.0, std::remainder(out.orient - best.at.orient, 2.0 * kPi), 1e-8);
  EXPECT_TRUE(out.orient >= 0.0 && out.orient < 2.0 * kPi);
  EXPECT_NEAR(inSpace ? best.at.elev : kValueAbsent, out.elev, near);
  const Eigen::Index last = best.cofactors.rows() - 1;
  EXPECT_NEAR(1.0, out.sigma0 / sigma0, 1e-3);
  EXPECT_NEAR(1.0, out.sdNorth / best.Deviation(0, sigma0), 1e-3);
  EXPECT_NEAR(1.0, out.sdEast / best.Deviation(1, sigma0), 1e-3);
  EXPECT_NEAR(1.0, out.sdElev / (inSpace ? best.Deviation(2, sigma0) : kValueAbsent), 1e-3);
  EXPECT_NEAR(1.0, out.sdOrient / best.Deviation(last, sigma0), 1e-3);
  ExpectResiduals(net, mode, out);
}

TEST(Truth, DriverGivesTheOptimumWithItsDeviations) {
  Random random(20261123);
  for (const auto& geometry : kGeometries) {
    SCOPED_TRACE(geometry.name);
    for (int i = 0; i < 50 && !HasFailure(); ++i) {
      const Network flat = DrawNetwork(random, geometry, Distances::kAll);
      for (const auto mode : {kLsqMode2D, kLsqMode3D}) {
        Network net = mode == kLsqMode3D ? InSpace(random, flat) : flat;
        Disturb(random, net.sights);
        Thin(random, net.sights);
        ExpectOptimum(net, mode);
      }
    }
  }
}

}  // namespace
