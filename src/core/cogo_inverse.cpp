// Inverse, forward and grade: the exports between two points and the sight that joins them.
#include <cmath>

#include "core/direction.hpp"
#include "core/int_angle.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"

namespace {

constexpr double kPerCent = 100.0;

}  // namespace

std::int32_t KavoCogoCoordToAngDist(const CoordPt* station, const CoordPt* point, AngDistRec* out) {
  double slopeDist = 0.0;
  double horizDist = 0.0;
  double dElev = 0.0;
  const auto status = kavo::DistancesBetween(slopeDist, horizDist, dElev, *station, *point);
  if (status != STATUS_OK) {
    return status;
  }
  out->slopeDist = slopeDist;
  out->horizDist = horizDist;
  out->dElev = dElev;
  // From the elev fields, whatever the flags say (meant so).
  out->zenith = kavo::ZenithBetween(*station, *point);
  out->azimuth = kavo::AzimuthBetween(*station, *point);
  if (out->azimuth == ANGLE_INVALID || out->zenith == ANGLE_INVALID) {
    return ERR_NO_DIRECTION;
  }
  return STATUS_OK;
}

std::int32_t KavoCogoAngDistToCoord(const CoordPt* station, const AngDistRec* polar, CoordPt* out) {
  if (!kavo::HasNE(*station)) {
    return ERR_POINT_INVALID;
  }
  IntAngle azimuth = kavo::ApplyAzimuthReference(polar->azimuth);
  double distance = polar->horizDist;
  if (distance < 0.0) {
    distance = -distance;
    azimuth = kavo::WrapAdd(azimuth, ANGLE_HALF_CIRCLE);
  }
  const double radians = kavo::IntAngleToRad(azimuth);
  const bool withElev = kavo::HasElev(*station);
  kavo::WritePoint(*out, std::cos(radians) * distance + station->north,
                   std::sin(radians) * distance + station->east,
                   withElev ? station->elev + polar->dElev : 0.0,
                   withElev ? COORD_HAS_NE | COORD_HAS_ELEV : COORD_HAS_NE);
  return STATUS_OK;
}

void KavoCogoCalcSlopeByDist(double horizDist, double dElev, SlopeRec* out) {
  out->percent = horizDist == 0.0 ? SLOPE_VERTICAL : dElev / horizDist * kPerCent;
  out->ratio = dElev == 0.0 ? SLOPE_VERTICAL : horizDist / dElev;
}
