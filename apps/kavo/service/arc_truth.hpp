// Where a point really lies against a circular arc.
#pragma once

#include "kavostdlib.h"

namespace kavo_app {

/// An arc by its start; the sign of the radius as the library has it.
struct Arc {
  CoordPt start;
  IntAngle startDir;  ///< Azimuth of the start tangent, from north.
  double radius;      ///< Metres; positive is clockwise, to the right.
  double arcLength;   ///< Metres.
};

/// Chainage and offset against an arc and the tangents at its ends, metres.
struct ArcPosition {
  double along;
  double offset;  ///< Positive to the right of the way ahead.
};

/// Where the arc ends in plan.
CoordPt EndOf(const Arc& arc);

/// The position by plain geometry, for arcs of any length and either sense: radially on the arc;
/// less than a quarter circle before the start by projection on the start tangent; elsewhere past
/// the end, on the end tangent. The library's formulas give the same but for the places that its
/// header names.
ArcPosition TrueArcPosition(const Arc& arc, const CoordPt& point);

}  // namespace kavo_app
