// The observations of the multi-point resection: counted, laid out with their weights, and given
// their residuals.
#pragma once

#include "lsq/storage.hpp"

namespace kavo {

/// Stands for a field that was not measured, 1e20.
inline constexpr double kValueAbsent = 0x1.5af1d78b58c4p+66;

/// Adjustment in the plane: directions and horizontal distances.
inline constexpr std::int32_t kLsqMode2D = 2;
/// Adjustment in space: height differences as well. Any other mode takes no distance at all.
inline constexpr std::int32_t kLsqMode3D = 3;

/// One sight; 96 bytes. Fields that were not measured hold kValueAbsent. A sight has a direction
/// when `hz` is there, and a distance set when `zenith` and the three distances all are.
struct MultiResectObs {
  double north;          ///< The known point's north, metres.
  double east;           ///< The known point's east, metres.
  double elev;           ///< The known point's elevation, metres.
  double heightTerm;     ///< Height term of the sight, metres; not read here.
  double hz;             ///< Horizontal direction, radians.
  double zenith;         ///< Zenith angle, radians.
  double slopeDist;      ///< Slope distance, metres.
  double horizDist;      ///< Horizontal distance, metres.
  double heightDiff;     ///< Height difference, metres.
  double resHz;          ///< Out: residual of `hz`, radians.
  double resHorizDist;   ///< Out: residual of `horizDist`, metres.
  double resHeightDiff;  ///< Out: residual of `heightDiff`, metres.
};
static_assert(sizeof(MultiResectObs) == 96);

/// True when a field was measured.
constexpr bool IsThere(double value) noexcept { return value != kValueAbsent; }

/// True when a sight has a direction.
constexpr bool HasDirection(const MultiResectObs& rec) noexcept { return IsThere(rec.hz); }

/// True when a sight has a distance set.
constexpr bool HasDistanceSet(const MultiResectObs& rec) noexcept {
  return IsThere(rec.zenith) && IsThere(rec.slopeDist) && IsThere(rec.horizDist) &&
         IsThere(rec.heightDiff);
}

/// True when a sight gives the adjustment a horizontal distance and, in space, the height
/// difference that belongs to it.
constexpr bool GivesDistance(std::int32_t mode, const MultiResectObs& rec) noexcept {
  return HasDistanceSet(rec) && (mode == kLsqMode2D || (mode == kLsqMode3D && IsThere(rec.elev)));
}

/// Counts the observations that a list of sights gives.
/// @param[in,out] mode  becomes kLsqMode2D when no point has an elevation or no sight a distance
///                      set.
/// @param count  number of records; below 1 is none.
/// @param recs  the sights.
/// @param[out] nDir  directions.
/// @param[out] nHeight  height differences.
/// @param[out] nDist  horizontal distances.
/// @param[out] nElev  points with an elevation.
void LsqCountObs(std::int32_t& mode, Index count, const MultiResectObs* recs, Index& nDir,
                 Index& nHeight, Index& nDist, Index& nElev) noexcept;

/// Makes the observation vector and the weight matrix, in units of the weight of one direction.
/// Observations stand in the order of the sights: direction, horizontal distance, height
/// difference, as far as they are there.
/// @param[in,out] mode  as LsqCountObs leaves it.
/// @param count  number of records; below 1 is none, and gives empty objects.
/// @param recs  the sights.
/// @param sigmaAngle  standard deviation of an angle, arc-seconds.
/// @param sigmaConst  constant part of that of a distance, metres.
/// @param sigmaProp  part proportional to the distance, a plain factor.
/// @param[out] obs  created over 1..total: radians and metres.
/// @param[out] w  created over 1..total, as a matrix or as a band: the same elements.
/// @param[out] total  number of observations.
/// @param[out] nDist  number of horizontal distances.
/// @return kEngineOk with `obs` and `w` owned by the caller; kEngineNoMemory, or kEngineSingular
/// for
///         a slope distance of nothing in space, with nothing left allocated and `obs` and `w`
///         untouched. `mode`, `total` and `nDist` hold what was counted all the same.
template <WeightMatrix Weights>
std::int32_t LsqBuildWeights(std::int32_t& mode, Index count, const MultiResectObs* recs,
                             double sigmaAngle, double sigmaConst, double sigmaProp, Vector& obs,
                             Weights& w, Index& total, Index& nDist) noexcept;

/// Writes residuals into the sights with their signs turned (meant so): what was adjusted less what
/// was measured. A residual without an observation is 0.0.
/// @param mode  as LsqBuildWeights left it; any mode but the two changes nothing.
/// @param count  number of records; below 1 is none.
/// @param[in,out] recs  the sights; `resHz`, `resHorizDist` and `resHeightDiff` are written.
/// @param v  residuals of the adjustment, in the order of LsqBuildWeights.
void LsqScatterResiduals(std::int32_t mode, Index count, MultiResectObs* recs, Vector v) noexcept;

}  // namespace kavo
