// Small geometry that kavo does itself, around what the library does.
#pragma once

#include <cmath>
#include <numbers>

#include "kavostdlib.h"

namespace kavo_app {

/// The angle in [0, full circle).
constexpr IntAngle Wrapped(IntAngle angle) {
  const IntAngle rest = angle % ANGLE_FULL_CIRCLE;
  return rest < 0 ? rest + ANGLE_FULL_CIRCLE : rest;
}

/// The angle in (-half circle, half circle].
constexpr IntAngle Folded(IntAngle angle) {
  const IntAngle wrapped = Wrapped(angle);
  return wrapped > ANGLE_HALF_CIRCLE ? wrapped - ANGLE_FULL_CIRCLE : wrapped;
}

/// Radians of an angle.
constexpr double Radians(IntAngle angle) {
  return static_cast<double>(angle) * (std::numbers::pi / ANGLE_HALF_CIRCLE);
}

/// Arc-seconds of an angle.
constexpr double ArcSeconds(IntAngle angle) { return static_cast<double>(angle) / 16.0; }

/// Thousandths of a gon of an angle.
constexpr double Milligon(IntAngle angle) {
  constexpr double kPerCircle = 400000.0;
  return static_cast<double>(angle) * (kPerCircle / ANGLE_FULL_CIRCLE);
}

/// Whether the point has a position.
constexpr bool HasPosition(const CoordPt& point) { return (point.flags & COORD_HAS_NE) != 0; }

/// Whether the point's elevation is known.
constexpr bool HasElev(const CoordPt& point) { return (point.flags & COORD_HAS_ELEV) != 0; }

/// Whether a point lies behind a sight in plan, which meets it only when it is drawn backwards.
/// @param azimuth  of the sight, from north.
/// @param va       of the sight, of either face.
inline bool IsBehind(const CoordPt& station, IntAngle azimuth, IntAngle va, const CoordPt& point) {
  const double ahead = std::cos(Radians(azimuth)) * (point.north - station.north) +
                       std::sin(Radians(azimuth)) * (point.east - station.east);
  return std::sin(Radians(va)) * ahead < 0.0;
}

/// The point with another elevation.
constexpr CoordPt AtElev(CoordPt point, double elev) {
  point.elev = elev;
  point.flags = COORD_HAS_NE | COORD_HAS_ELEV;
  return point;
}

}  // namespace kavo_app
