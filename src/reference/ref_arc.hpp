// The reference arc: what its definitions write and its measurement reads.
#pragma once

#include "kavostdlib.h"

namespace kavo {

/// 2 pi, 6.283185307179586.
inline constexpr double kTwoPi = 0x1.921fb54442d18p+2;

/// 1 / pi, 0.3183098861837907.
inline constexpr double kPerPi = 0x1.45f306dc9c883p-2;

/// 1 / ANGLE_FULL_CIRCLE, 4.8225308641975306e-8.
inline constexpr double kPerFullCircle = 0x1.9e409340f4581p-25;

/// Units of IntAngle in half a circle.
inline constexpr double kUnitsPerHalfCircle = ANGLE_HALF_CIRCLE;

/// A circular curve in plan. A positive radius turns clockwise, a negative one anticlockwise.
struct RefArcBase {
  bool isSet;             ///< The last definition succeeded. The measurement does not ask.
  CoordPt start;          ///< The start point as given.
  CoordPt end;            ///< The given end point; flags 0 when the definition has none.
  IntAngle startDir;      ///< Azimuth of the start tangent.
  IntAngle endDir;        ///< Azimuth of the end tangent; may lie outside one circle.
  double radius;          ///< Metres, signed.
  double arcLength;       ///< Metres, positive.
  CoordPt centre;         ///< North and east; flags 1.
  IntAngle centralAngle;  ///< With the sign of the radius; ANGLE_INVALID when it does not exist.
  IntAngle centreToStartDir;  ///< Azimuth from the centre to the start.
  bool endConsistent;         ///< The given end is the arc's: heights are graded to it.
};

/// The arc, one per loaded library; all zeros at load. Defined beside the definitions of the arc.
extern RefArcBase refArcBase;

}  // namespace kavo
