// Closed-form stations from many sights to known points: the candidates for the start of the
// adjustment. Each is exact for exact sights, takes all the sights that it can use, and runs over
// them a fixed number of times.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "lsq/observations.hpp"

namespace kavo {

/// The sights of one adjustment, with the centroid of their points: coordinates are counted from
/// there, so that large ones cost no digits.
struct Sights {
  std::span<const MultiResectObs> recs;
  std::int32_t mode;  ///< Of the adjustment: it decides which distances count.
  double north;       ///< Of the centroid, metres.
  double east;        ///< Of the centroid, metres.

  [[nodiscard]] double North(const MultiResectObs& rec) const noexcept { return rec.north - north; }
  [[nodiscard]] double East(const MultiResectObs& rec) const noexcept { return rec.east - east; }
  [[nodiscard]] bool HasDistance(const MultiResectObs& rec) const noexcept {
    return GivesDistance(mode, rec);
  }
  [[nodiscard]] bool HasBoth(const MultiResectObs& rec) const noexcept {
    return HasDirection(rec) && HasDistance(rec);
  }
  [[nodiscard]] bool HasEither(const MultiResectObs& rec) const noexcept {
    return HasDirection(rec) || HasDistance(rec);
  }
};

/// A station and its orientation w: the azimuth of a sight is its reading plus w.
struct PlaneFix {
  double north;  ///< From the centroid, metres.
  double east;   ///< From the centroid, metres.
  double cosW;
  double sinW;
};

/// The sights with their centroid.
/// @param mode  kLsqMode2D or kLsqMode3D.
/// @param recs  the sights; they are not copied.
Sights AboutTheirCentroid(std::int32_t mode, std::span<const MultiResectObs> recs) noexcept;

/// Turns and shifts the sights with direction and distance onto their points, by least squares and
/// without a change of scale.
/// @return false when there are fewer than two, or all are at one place.
bool RigidFit(const Sights& sights, PlaneFix& fix) noexcept;

/// The station whose rays, all of them, pass their points closest in the sense of a linear least
/// squares problem. For three distinct points or more.
/// @return false when the directions do not determine it: all rays are parallel, or the station is
///         on one circle with all the points.
bool AllDirections(const Sights& sights, PlaneFix& fix) noexcept;

/// The stations from the shortest distance and the direction to the point that is farthest from its
/// end, by the law of cosines.
/// @param onlyTwoPoints  true when there is no third point to tell two solutions apart: then the
///                       distance must not be longer than the two points are apart.
/// @param[out] fixes  the solutions.
/// @return how many they are: 0, 1 or 2.
std::size_t Triangle(const Sights& sights, bool onlyTwoPoints,
                     std::array<PlaneFix, 2>& fixes) noexcept;

}  // namespace kavo
