#include "station/resect_driver.hpp"

#include <cmath>

#include "core/numeric.hpp"
#include "lsq/adjustment.hpp"
#include "lsq/arithmetic.hpp"
#include "station/resect_approx.hpp"

namespace kavo {
namespace {

constexpr double kTwoPi = 2.0 * kPi;
// The sum of squares has settled when it changes by less than this part of itself: 0.001.
constexpr double kSettled = 0x1.0624dd2f1a9fcp-10;

// Everything that an adjustment works with.
struct Adjustment {
  std::int32_t mode;
  Index count;
  const MultiResectObs* recs;
  Index equations;
  Index unknowns;
  Index limit;
  Vector obs;
  Band weights;
  Vector x0;
  Matrix a;
  Vector l;
  Vector dx;
  Vector v;
  Matrix qxx;
};

// Observations, weights, approximate values and work arrays: all or none.
std::int32_t Prepare(double sigmaAngle, double sigmaConst, double sigmaProp,
                     Adjustment& adj) noexcept {
  Index nDist = 0;
  auto code = LsqBuildWeights(adj.mode, adj.count, adj.recs, sigmaAngle, sigmaConst, sigmaProp,
                              adj.obs, adj.weights, adj.equations, nDist);
  if (code != kEngineOk) {
    return code;
  }
  Owner obs{adj.obs};
  Owner weights{adj.weights};
  code = LsqApproxValues(adj.mode, adj.count, adj.recs, adj.unknowns, adj.limit, adj.x0);
  if (code != kEngineOk) {
    return code;
  }
  Owner x0{adj.x0};
  code = LsqAllocWork(adj.a, adj.l, adj.dx, adj.v, adj.qxx, adj.unknowns, adj.equations);
  if (code != kEngineOk) {
    return code;
  }
  obs.Disown();
  weights.Disown();
  x0.Disown();
  return kEngineOk;
}

void FreeAll(const Adjustment& adj) noexcept {
  LsqFreeWork(adj.obs, adj.weights, adj.x0, adj.a, adj.l, adj.dx, adj.v, adj.qxx, adj.unknowns,
              adj.equations);
}

// One pass: corrects the unknowns and gives the weighted sum of the squares that are left.
std::int32_t Improve(const Adjustment& adj, double& omega) noexcept {
  const Index m = adj.equations;
  const Index n = adj.unknowns;
  LsqDesignMatrix(adj.mode, adj.count, adj.recs, adj.x0, adj.obs, adj.a, adj.l);
  auto code = LsqNormalInverse(adj.a, adj.weights, adj.qxx, m, n);
  if (code != kEngineOk) {
    return code;
  }
  code = LsqSolutionVector(adj.a, adj.qxx, adj.weights, adj.l, adj.dx, m, n);
  if (code != kEngineOk) {
    return code;
  }
  VecAdd(adj.x0, adj.dx, adj.x0, n);
  code = LsqMatVecAdd(adj.a, adj.l, adj.dx, adj.v, m, n);
  if (code != kEngineOk) {
    return code;
  }
  return LsqQuadraticForm(adj.weights, adj.v, omega, m);
}

// Passes until nothing is left or the sum of squares has settled; `pass` ends beyond the limit when
// neither came about.
std::int32_t Iterate(const Adjustment& adj, Index& pass, double& omega) noexcept {
  double previous = 0.0;
  for (pass = 1; pass <= adj.limit; ++pass) {
    if (const auto code = Improve(adj, omega); code != kEngineOk) {
      return code;
    }
    if (omega < kNegligible) {
      break;
    }
    // Settled too when the quotient is not a number.
    if (pass != 1 && !(std::fabs((omega - previous) / previous) >= kSettled)) {
      break;
    }
    previous = omega;
  }
  return kEngineOk;
}

// One step either way, no more.
double WithinFullCircle(double radians) noexcept {
  if (radians < 0.0) {
    radians += kTwoPi;
  }
  if (radians >= kTwoPi) {
    radians -= kTwoPi;
  }
  return radians;
}

void WriteSolution(const Adjustment& adj, double omega, ResectSolution& out) noexcept {
  const Index redundancy = adj.equations - adj.unknowns;
  const double variance = redundancy > 0 ? omega / redundancy : omega;
  const auto deviation = [&](Index i) { return std::sqrt(adj.qxx[i][i] * variance); };
  const bool inSpace = adj.mode == kLsqMode3D;
  out.north = adj.x0[1];
  out.east = adj.x0[2];
  out.elev = inSpace ? adj.x0[3] : kValueAbsent;
  out.orient = WithinFullCircle(adj.x0[adj.unknowns]);
  out.sdNorth = deviation(1);
  out.sdEast = deviation(2);
  out.sdElev = inSpace ? deviation(3) : kValueAbsent;
  out.sdOrient = deviation(adj.unknowns);
  out.sigma0 = std::sqrt(variance);
}

// The point of a sight seen from the station.
struct Sighted {
  double dNorth;
  double dEast;
  double distSquare;
};

// Orientation is the last unknown, n.
void DirectionRow(double reading, const Sighted& s, Vector x0, Index n, Vector row,
                  double& l) noexcept {
  row[1] = -s.dEast / s.distSquare;
  row[2] = s.dNorth / s.distSquare;
  row[3] = 0.0;
  row[n] = 1.0;
  l = WithinHalfCircle(reading - (std::atan2(s.dEast, s.dNorth) - x0[n]));
}

void DistanceRow(double horizDist, const Sighted& s, Index n, Vector row, double& l) noexcept {
  const double computed = std::sqrt(s.distSquare);
  row[1] = s.dNorth / computed;
  row[2] = s.dEast / computed;
  row[3] = 0.0;
  row[n] = 0.0;
  l = horizDist - computed;
}

void HeightRow(double heightDiff, const MultiResectObs& rec, Vector x0, Vector row,
               double& l) noexcept {
  row[1] = 0.0;
  row[2] = 0.0;
  row[3] = 1.0;
  row[4] = 0.0;
  l = heightDiff - ((rec.elev + rec.heightTerm) - x0[3]);
}

}  // namespace

void LsqDesignMatrix(std::int32_t mode, Index count, const MultiResectObs* recs, Vector x0,
                     Vector obs, Matrix a, Vector l) noexcept {
  const Index n = mode == kLsqMode3D ? 4 : 3;
  Index k = 1;
  for (Index i = 0; i < count; ++i) {
    const MultiResectObs& rec = recs[i];
    const double dNorth = rec.north - x0[1];
    const double dEast = rec.east - x0[2];
    const Sighted sighted{dNorth, dEast, Square(dNorth) + Square(dEast)};
    if (HasDirection(rec)) {
      DirectionRow(obs[k], sighted, x0, n, a[k], l[k]);
      k += 1;
    }
    if (GivesDistance(mode, rec)) {
      DistanceRow(obs[k], sighted, n, a[k], l[k]);
      k += 1;
      if (mode == kLsqMode3D) {
        HeightRow(obs[k], rec, x0, a[k], l[k]);
        k += 1;
      }
    }
  }
}

std::int32_t LsqResect(std::int32_t mode, Index count, MultiResectObs* work, double sigmaAngle,
                       double sigmaConst, double sigmaProp, ResectSolution& out) noexcept {
  Adjustment adj{};
  adj.mode = mode;
  adj.count = count;
  adj.recs = work;
  if (const auto code = Prepare(sigmaAngle, sigmaConst, sigmaProp, adj); code != kEngineOk) {
    return code;
  }
  Index pass = 0;
  double omega = 0.0;
  const auto code = Iterate(adj, pass, omega);
  if (code == kEngineOk) {
    WriteSolution(adj, omega, out);
    LsqScatterResiduals(adj.mode, count, work, adj.v);
  }
  FreeAll(adj);
  if (code != kEngineOk) {
    return code;
  }
  // GCOVR_EXCL_BR_START: the limit is always 10.
  return adj.limit > 1 && pass > adj.limit ? kEngineNotConverged : kEngineOk;
  // GCOVR_EXCL_BR_STOP
}

}  // namespace kavo
