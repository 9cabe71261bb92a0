// The adjustment of a resection: station and orientation from any number of sights, by iterated
// least squares.
#pragma once

#include <cstdint>

#include "lsq/observations.hpp"
#include "lsq/storage.hpp"

namespace kavo {

/// LsqResect's own code: the adjustment has not settled within its passes.
inline constexpr std::int32_t kEngineNotConverged = 1;

/// Result of an adjustment. In the plane `elev` and `sdElev` are kValueAbsent.
struct ResectSolution {
  double north;  ///< Of the station, metres.
  double east;   ///< Of the station, metres.
  double elev;   ///< Of the station, metres.
  /// Azimuth of the zero direction of the circle, radians, after one step of a full circle towards
  /// [0, 2 pi): an adjustment that has gone astray can leave it outside.
  double orient;
  double sdNorth;   ///< Standard deviation of `north`, metres.
  double sdEast;    ///< Standard deviation of `east`, metres.
  double sdElev;    ///< Standard deviation of `elev`, metres.
  double sdOrient;  ///< Standard deviation of `orient`, radians.
  double sigma0;    ///< Standard deviation of a direction after the adjustment, radians.
};

/// Linearises the observations about a station: l is observed less computed, and A its derivatives
/// by the unknowns, in the order of LsqBuildWeights.
/// @param mode  kLsqMode2D or kLsqMode3D, as LsqBuildWeights left it.
/// @param count  number of records.
/// @param recs  the sights.
/// @param x0  the unknowns: north, east, in space the elevation, orientation; metres and radians.
/// @param obs  the observations of LsqBuildWeights.
/// @param[out] a  A: observations by unknowns.
/// @param[out] l  of the observations, radians and metres; directions within half a circle.
void LsqDesignMatrix(std::int32_t mode, Index count, const MultiResectObs* recs, Vector x0,
                     Vector obs, Matrix a, Vector l) noexcept;

/// Adjusts a station. Everything that it allocates is released when it returns.
/// @param mode  kLsqMode2D or kLsqMode3D; becomes the former when there is nothing to go by in
///              height.
/// @param count  number of records.
/// @param[in,out] work  the sights; their residuals are written.
/// @param sigmaAngle  standard deviation of an angle, arc-seconds.
/// @param sigmaConst  constant part of that of a distance, metres.
/// @param sigmaProp  part proportional to the distance, a plain factor.
/// @param[out] out  the solution.
/// @return kEngineOk, or kEngineNotConverged with everything written all the same. kEngineNoMemory,
///         or kEngineSingular when the sights determine no station, with nothing written.
std::int32_t LsqResect(std::int32_t mode, Index count, MultiResectObs* work, double sigmaAngle,
                       double sigmaConst, double sigmaProp, ResectSolution& out) noexcept;

}  // namespace kavo
