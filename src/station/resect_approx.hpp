// Where the adjustment of a resection begins: station and orientation in closed form.
#pragma once

#include <cmath>
#include <cstdint>

#include "core/numeric.hpp"
#include "lsq/observations.hpp"
#include "lsq/storage.hpp"

namespace kavo {

/// An angle less the full circles in it, however many.
/// @param radians  any angle.
/// @return within half a circle either side of 0; not a number for what is not finite.
inline double WithinHalfCircle(double radians) noexcept {
  constexpr double kTwoPi = 2.0 * kPi;
  return radians - kTwoPi * std::floor(radians / kTwoPi + 0.5);
}

/// Approximate values of the unknowns, exact for exact sights: an adjustment without redundancy
/// does not improve them a second time.
/// @param mode  kLsqMode2D or kLsqMode3D, as LsqBuildWeights left it.
/// @param count  number of records.
/// @param recs  the sights. A position takes directions to two distinct points at least, with a
///              distance, or to three.
/// @param[out] unknowns  3 in the plane, 4 in space; always written.
/// @param[out] limit  passes that the adjustment may take, 10; always written.
/// @param[out] x0  created over 1..unknowns and owned by the caller: north, east, in space the
///                 elevation, orientation. Metres, and radians within half a circle either side.
///                 Untouched on a refusal.
/// @return kEngineOk; kEngineNoMemory; kEngineSingular when the sights determine no station, or a
///         number in them is not finite.
std::int32_t LsqApproxValues(std::int32_t mode, Index count, const MultiResectObs* recs,
                             Index& unknowns, Index& limit, Vector& x0) noexcept;

}  // namespace kavo
