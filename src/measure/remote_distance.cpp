// Remote distance: distances and direction between two measured points.
#include "core/direction.hpp"
#include "kavostdlib.h"

namespace {

// The point with its height taken out of the computation.
CoordPt InPlan(const CoordPt& p) noexcept { return {p.north, p.east, 0.0, COORD_HAS_NE, {}}; }

}  // namespace

std::int32_t KavoRDMCalcByCoord(const CoordPt* first, const CoordPt* second, RdmResult* out) {
  if (!kavo::HasNE(*first) || !kavo::HasNE(*second)) {
    return ERR_POINT_INVALID;
  }
  const bool withElev = kavo::HasElev(*first) && kavo::HasElev(*second);
  const CoordPt a = withElev ? *first : InPlan(*first);
  const CoordPt b = withElev ? *second : InPlan(*second);
  // The elevation is compared with itself (meant so): true for everything but a NaN, so points one
  // above the other are refused like points that coincide, and carry their separation all the same.
  const bool coincide = kavo::SamePlace(a, b) && a.elev == a.elev;
  kavo::DistancesBetween(out->slopeDist, out->horizDist, out->dElev, a, b);
  out->azimuth = out->horizDist != 0.0 ? kavo::AzimuthBetween(a, b) : ANGLE_INVALID;
  return coincide ? ERR_NO_DIRECTION : STATUS_OK;
}
