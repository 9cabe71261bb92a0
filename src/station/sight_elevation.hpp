// What every station set-up takes from one sight: its horizontal reading on face 1, and the
// elevation of the station.
#pragma once

#include "kavostdlib.h"

namespace kavo {

/// Horizontal reading of a sight, reduced to face 1. A reading that was taken on face 1 is handed
/// back as it is, not wrapped into one circle (meant so); one of face 2 is turned by half a circle.
/// @param ha  horizontal reading as taken, 1/16 arc-second.
/// @param va  zenith reading: from half a circle upward, wrapped into one circle, it is of face 2.
/// @return the reading, 1/16 arc-second.
IntAngle FaceOneReading(IntAngle ha, IntAngle va) noexcept;

/// Elevation of the station from the zenith angle to a point of known elevation, with the grid
/// scale, the sea level and the curvature and refraction corrections that the host has switched on.
/// The line of sight is kept one arc-minute off the vertical.
/// @param stationNorth,stationEast  plane position of the station, metres.
/// @param point  the point sighted; only its plane position, its elevation and COORD_HAS_ELEV are
///               looked at.
/// @param va  zenith reading on either face. The face rule is this function's own: as a signed
///            number below half a circle it is taken for face 1, so that a negative one is clamped
///            to the zenith.
/// @param heightTerm  added to the elevation of the point, metres.
/// @return the elevation of the station, metres; 0.0 when the point has none.
double StnElevFromSight(double stationNorth, double stationEast, const CoordPt& point, IntAngle va,
                        double heightTerm) noexcept;

}  // namespace kavo
