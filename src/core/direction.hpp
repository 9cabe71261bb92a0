// Directions, zenith angles and distances between two points.
#pragma once

#include <cstdint>

#include "kavostdlib.h"

namespace kavo {

/// True when the point's plane position is valid.
constexpr bool HasNE(const CoordPt& p) noexcept { return (p.flags & COORD_HAS_NE) != 0; }

/// True when the point's elevation is valid.
constexpr bool HasElev(const CoordPt& p) noexcept { return (p.flags & COORD_HAS_ELEV) != 0; }

/// True when the point is valid in all three dimensions.
constexpr bool HasNEElev(const CoordPt& p) noexcept { return HasNE(p) && HasElev(p); }

/// True when both points have exactly the same north and east.
constexpr bool SamePlace(const CoordPt& a, const CoordPt& b) noexcept {
  return a.north == b.north && a.east == b.east;
}

/// Writes the four named fields of a point and leaves its padding alone.
/// @param[out] out  the point.
/// @param north,east,elev  metres.
/// @param flags  COORD_HAS_NE, COORD_HAS_ELEV.
inline void WritePoint(CoordPt& out, double north, double east, double elev,
                       std::uint16_t flags) noexcept {
  out.north = north;
  out.east = east;
  out.elev = elev;
  out.flags = flags;
}

/// Writes the record of a point that has not been found: VALUE_INVALID in plan, elev 0, flags 1.
inline void WriteNoPoint(CoordPt& out) noexcept {
  WritePoint(out, VALUE_INVALID, VALUE_INVALID, 0.0, COORD_HAS_NE);
}

/// Turns a direction by a half circle when the host's azimuths count from south.
/// @param a  direction, 1/16 arc-second.
/// @return `a` itself, or (a + half circle) rem full circle.
IntAngle ApplyAzimuthReference(IntAngle a) noexcept;

/// Direction from one point to another, with the azimuth reference applied.
/// @param from,to  need COORD_HAS_NE.
/// @return [0, full circle); ANGLE_INVALID when a point has no position, the two coincide, or a
///         coordinate is not a number.
IntAngle AzimuthBetween(const CoordPt& from, const CoordPt& to) noexcept;

/// Zenith angle of the sight from one point to another. Flags are not looked at: callers test.
/// @param from,to  north, east and elev are read.
/// @return [0, half circle]; ANGLE_INVALID when the points coincide in space, or a coordinate is
///         not a number.
IntAngle ZenithBetween(const CoordPt& from, const CoordPt& to) noexcept;

/// Distances between two points. The heights count when `from` has an elevation; the elevation flag
/// of `to` is not looked at (meant so).
/// @param[out] slopeDist,horizDist,dElev  metres; without heights slopeDist = horizDist, dElev = 0.
/// @param from,to  need COORD_HAS_NE.
/// @return STATUS_OK; ERR_POINT_INVALID with the outputs untouched.
std::int32_t DistancesBetween(double& slopeDist, double& horizDist, double& dElev,
                              const CoordPt& from, const CoordPt& to) noexcept;

/// Direction from one point to another, counted from a reference direction. An invalid direction is
/// not caught (meant so): callers test the points.
/// @param from,to  need COORD_HAS_NE.
/// @param reference  direction, 1/16 arc-second.
/// @return [-half circle, half circle) when the azimuth less the reference is at least -full
/// circle.
IntAngle RelativeDirection(const CoordPt& from, const CoordPt& to, IntAngle reference) noexcept;

}  // namespace kavo
