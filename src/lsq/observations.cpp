#include "lsq/observations.hpp"

#include <cmath>

#include "core/numeric.hpp"

namespace kavo {
namespace {

constexpr double kArcsecToRad = 0x1.455a5b2ff8f9dp-18;  // 4.84813681109536e-6

// Standard deviations of the measurements before the adjustment.
struct Sigmas {
  double angle;       // radians; the unit of weight
  double constant;    // metres
  double proportion;  // of the distance
};

double DistanceWeight(const Sigmas& sigmas, double dist) noexcept {
  return sigmas.angle / (Square(sigmas.constant) + Square(sigmas.proportion * dist)) * sigmas.angle;
}

// Weights without any, over 1..n; null when they cannot be had.
template <WeightMatrix Weights>
Weights NoWeights(Index n) noexcept;

template <>
Matrix NoWeights(Index n) noexcept {
  const Matrix w = MatAlloc(1, n, 1, n);
  for (Index i = 1; w && i <= n; ++i) {
    for (Index j = 1; j <= n; ++j) {
      w[i][j] = 0.0;
    }
  }
  return w;
}

template <>
Band NoWeights(Index n) noexcept {
  const Band w = BandAlloc(n);
  for (Index i = 1; w && i <= n; ++i) {
    w.diagonal[i] = 0.0;
  }
  for (Index i = 1; w && i < n; ++i) {
    w.coupling[i] = 0.0;
  }
  return w;
}

void SetWeight(Matrix w, Index k, double weight) noexcept { w[k][k] = weight; }
void SetWeight(const Band& w, Index k, double weight) noexcept { w.diagonal[k] = weight; }

// Couples observation k to the next one.
void SetCoupling(Matrix w, Index k, double weight) noexcept {
  w[k][k + 1] = weight;
  w[k + 1][k] = weight;
}
void SetCoupling(const Band& w, Index k, double weight) noexcept { w.coupling[k] = weight; }

// Horizontal distance and height difference as observations k and k + 1, with the weights that a
// slope distance and a zenith angle of unit weight leave to them. The two are coupled (meant so):
// they come from the same two measurements. False when the slope distance is nothing.
template <WeightMatrix Weights>
bool PlaceInSpace(const MultiResectObs& rec, const Sigmas& sigmas, Index k, Vector obs,
                  const Weights& w) noexcept {
  obs[k] = rec.horizDist;
  obs[k + 1] = rec.heightDiff;
  const double slopeWeight = DistanceWeight(sigmas, rec.slopeDist);
  const double c = std::cos(rec.zenith);
  const double s = std::sin(rec.zenith);
  const double slopeSquare = Square(rec.slopeDist);
  if (slopeSquare < kNegligible) {
    return false;
  }
  const double acrossWeight = 1.0 / slopeSquare;
  SetWeight(w, k, Square(s) * slopeWeight + acrossWeight * Square(c));
  SetCoupling(w, k, (slopeWeight - acrossWeight) * s * c);
  SetWeight(w, k + 1, Square(c) * slopeWeight + Square(s) * acrossWeight);
  return true;
}

template <WeightMatrix Weights>
std::int32_t PlaceObservations(std::int32_t mode, Index count, const MultiResectObs* recs,
                               const Sigmas& sigmas, Vector obs, const Weights& w) noexcept {
  Index k = 1;
  for (Index i = 0; i < count; ++i) {
    const MultiResectObs& rec = recs[i];
    if (HasDirection(rec)) {
      obs[k] = rec.hz;
      SetWeight(w, k, 1.0);
      k += 1;
    }
    if (!GivesDistance(mode, rec)) {
      continue;
    }
    if (mode == kLsqMode2D) {
      obs[k] = rec.horizDist;
      SetWeight(w, k, DistanceWeight(sigmas, rec.horizDist));
      k += 1;
    } else {
      if (!PlaceInSpace(rec, sigmas, k, obs, w)) {
        return kEngineSingular;
      }
      k += 2;
    }
  }
  return kEngineOk;
}

}  // namespace

void LsqCountObs(std::int32_t& mode, Index count, const MultiResectObs* recs, Index& nDir,
                 Index& nHeight, Index& nDist, Index& nElev) noexcept {
  nDir = nHeight = nDist = nElev = 0;
  Index nSets = 0;
  for (Index i = 0; i < count; ++i) {
    nElev += IsThere(recs[i].elev) ? 1 : 0;
    nSets += HasDistanceSet(recs[i]) ? 1 : 0;
  }
  if (nElev == 0 || nSets == 0) {
    mode = kLsqMode2D;
  }
  for (Index i = 0; i < count; ++i) {
    const MultiResectObs& rec = recs[i];
    nDir += HasDirection(rec) ? 1 : 0;
    if (GivesDistance(mode, rec)) {
      nDist += 1;
      nHeight += mode == kLsqMode3D ? 1 : 0;
    }
  }
}

template <WeightMatrix Weights>
std::int32_t LsqBuildWeights(std::int32_t& mode, Index count, const MultiResectObs* recs,
                             double sigmaAngle, double sigmaConst, double sigmaProp, Vector& obs,
                             Weights& w, Index& total, Index& nDist) noexcept {
  Index nDir = 0;
  Index nHeight = 0;
  Index nElev = 0;
  LsqCountObs(mode, count, recs, nDir, nHeight, nDist, nElev);
  total = nDist + nDir + nHeight;
  Owner ownObs{VecAlloc(1, total)};
  if (!ownObs) {
    return kEngineNoMemory;
  }
  Owner ownW{NoWeights<Weights>(total)};
  if (!ownW) {
    return kEngineNoMemory;
  }
  const Sigmas sigmas{sigmaAngle * kArcsecToRad, sigmaConst, sigmaProp};
  if (const auto code = PlaceObservations(mode, count, recs, sigmas, *ownObs, *ownW);
      code != kEngineOk) {
    return code;
  }
  obs = ownObs.Disown();
  w = ownW.Disown();
  return kEngineOk;
}

template std::int32_t LsqBuildWeights(std::int32_t&, Index, const MultiResectObs*, double, double,
                                      double, Vector&, Matrix&, Index&, Index&) noexcept;
template std::int32_t LsqBuildWeights(std::int32_t&, Index, const MultiResectObs*, double, double,
                                      double, Vector&, Band&, Index&, Index&) noexcept;

void LsqScatterResiduals(std::int32_t mode, Index count, MultiResectObs* recs, Vector v) noexcept {
  if (mode != kLsqMode2D && mode != kLsqMode3D) {
    return;
  }
  Index k = 1;
  for (Index i = 0; i < count; ++i) {
    MultiResectObs& rec = recs[i];
    rec.resHz = rec.resHorizDist = rec.resHeightDiff = 0.0;
    if (HasDirection(rec)) {
      rec.resHz = -v[k];
      k += 1;
    }
    if (GivesDistance(mode, rec)) {
      rec.resHorizDist = -v[k];
      k += 1;
      if (mode == kLsqMode3D) {
        rec.resHeightDiff = -v[k];
        k += 1;
      }
    }
  }
}

}  // namespace kavo
