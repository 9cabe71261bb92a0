// Two-point target: a hidden point on the axis of a pole that carries two reflectors.
#include <cmath>

#include "core/direction.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"

std::int32_t KavoCalc2PtTarget(const CoordPt* first, const CoordPt* second, double nominal,
                               double target, double* separation, CoordPt* out) {
  if (!kavo::HasNEElev(*first) || !kavo::HasNEElev(*second)) {
    return ERR_POINT_INVALID;
  }
  if (!(nominal >= 0.0) || !(target >= 0.0)) {
    return ERR_REFUSED;
  }
  const double dNorth = second->north - first->north;
  const double dEast = second->east - first->east;
  const double dElev = second->elev - first->elev;
  const double measured =
      std::sqrt((kavo::Square(dElev) + kavo::Square(dEast)) + kavo::Square(dNorth));
  if (measured == 0.0) {
    return ERR_NO_DIRECTION;
  }
  *separation = measured;
  if (target == 0.0) {
    *out = *second;  // the whole record, reserved bytes too (meant so)
    out->flags = COORD_HAS_NE | COORD_HAS_ELEV;
    return STATUS_OK;
  }
  // Scaled by the nominal separation, not by the measured one (meant so): where they differ, the
  // extension is stretched or shrunk.
  const double perLength = 1.0 / (nominal == 0.0 ? measured : nominal);
  kavo::WritePoint(*out, (perLength * dNorth) * target + second->north,
                   (perLength * dEast) * target + second->east,
                   dElev * (perLength * target) + second->elev, COORD_HAS_NE | COORD_HAS_ELEV);
  return STATUS_OK;
}
