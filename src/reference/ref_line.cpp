// Reference line: points measured against a base line through two known points.
#include <cmath>

#include "core/direction.hpp"
#include "kavostdlib.h"

namespace {

// The base line, one per loaded library; none at load.
struct RefLineBase {
  bool isSet;
  CoordPt start;  // start and end: elevations completed, both or neither valid
  CoordPt end;
  double length;     // horizontal, metres
  double unitNorth;  // unit vector from start to end
  double unitEast;
};

constinit RefLineBase baseLine{};

// With one elevation the line is level at it; with none it has no height.
void CompleteElevations(CoordPt& start, CoordPt& end) noexcept {
  const bool startHas = kavo::HasElev(start);
  const bool endHas = kavo::HasElev(end);
  if (!startHas) {
    start.elev = endHas ? end.elev : 0.0;
  }
  if (!endHas) {
    end.elev = startHas ? start.elev : 0.0;
  }
  start.flags = startHas || endHas ? COORD_HAS_NE | COORD_HAS_ELEV : COORD_HAS_NE;
  end.flags = start.flags;
}

// The line's elevation at a distance along it; the grade goes on beyond the base points.
double ElevationAt(double along) noexcept {
  const double grade = (baseLine.end.elev - baseLine.start.elev) / baseLine.length;
  return grade * along + baseLine.start.elev;
}

}  // namespace

std::int32_t KavoREFSetBaseLine(const CoordPt* start, const CoordPt* end) {
  baseLine.isSet = false;
  if (!kavo::HasNE(*start) || !kavo::HasNE(*end)) {
    return ERR_POINT_INVALID;
  }
  if (kavo::SamePlace(*start, *end)) {
    return ERR_NO_DIRECTION;
  }
  baseLine.start = *start;
  baseLine.end = *end;
  CompleteElevations(baseLine.start, baseLine.end);
  const double dNorth = end->north - start->north;
  const double dEast = end->east - start->east;
  baseLine.length = std::hypot(dNorth, dEast);
  const double perLength = 1.0 / baseLine.length;
  baseLine.unitNorth = perLength * dNorth;
  baseLine.unitEast = perLength * dEast;
  baseLine.isSet = true;
  return STATUS_OK;
}

std::int32_t KavoREFCalc(const CoordPt* point, RefLineResult* out) {
  if (!baseLine.isSet) {
    return ERR_NO_BASE;
  }
  if (!kavo::HasNE(*point)) {
    return ERR_POINT_INVALID;
  }
  const CoordPt& start = baseLine.start;
  const double dNorth = point->north - start.north;
  const double dEast = point->east - start.east;
  out->along = baseLine.unitEast * dEast + baseLine.unitNorth * dNorth;
  out->offset = -(baseLine.unitEast * dNorth - baseLine.unitNorth * dEast);
  const bool withElev = kavo::HasElev(*point) && kavo::HasElev(start);
  kavo::WritePoint(out->foot, out->along * baseLine.unitNorth + start.north,
                   out->along * baseLine.unitEast + start.east,
                   withElev ? ElevationAt(out->along) : 0.0,
                   withElev ? COORD_HAS_NE | COORD_HAS_ELEV : COORD_HAS_NE);
  out->dElev = withElev ? point->elev - out->foot.elev : 0.0;
  return STATUS_OK;
}
