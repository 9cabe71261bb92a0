#include "core/direction.hpp"

#include <cmath>

#include "core/host.hpp"
#include "core/int_angle.hpp"
#include "core/numeric.hpp"

namespace kavo {

IntAngle ApplyAzimuthReference(IntAngle a) noexcept {
  return GetSettingInt(kSettingAzimuthReference) == 1 ? TurnHalfCircle(a) : a;
}

IntAngle AzimuthBetween(const CoordPt& from, const CoordPt& to) noexcept {
  if (!HasNE(from) || !HasNE(to)) {
    return ANGLE_INVALID;
  }
  const double dNorth = to.north - from.north;
  const double dEast = to.east - from.east;
  if (dNorth == 0.0 && dEast == 0.0) {
    return ANGLE_INVALID;
  }
  const IntAngle azimuth = RadToIntAngle(std::atan2(dEast, dNorth));
  return azimuth == ANGLE_INVALID ? ANGLE_INVALID : ApplyAzimuthReference(azimuth);
}

IntAngle ZenithBetween(const CoordPt& from, const CoordPt& to) noexcept {
  const double dNorth = to.north - from.north;
  const double dEast = to.east - from.east;
  const double dElev = to.elev - from.elev;
  const double horizDist = std::hypot(dEast, dNorth);
  if (horizDist == 0.0 && dElev == 0.0) {
    return ANGLE_INVALID;
  }
  const IntAngle elevation = RadToIntAngle(std::atan2(dElev, horizDist));
  if (elevation == ANGLE_INVALID) {
    return ANGLE_INVALID;
  }
  return WrapSub(ANGLE_450_DEGREES, elevation) % ANGLE_FULL_CIRCLE;
}

std::int32_t DistancesBetween(double& slopeDist, double& horizDist, double& dElev,
                              const CoordPt& from, const CoordPt& to) noexcept {
  if (!HasNE(from) || !HasNE(to)) {
    return ERR_POINT_INVALID;
  }
  const double northSquare = Square(to.north - from.north);
  const double eastSquare = Square(to.east - from.east);
  horizDist = std::sqrt(eastSquare + northSquare);
  if (HasElev(from)) {
    slopeDist = std::sqrt(Square(to.elev - from.elev) + eastSquare + northSquare);
    dElev = to.elev - from.elev;
    return STATUS_OK;
  }
  slopeDist = horizDist;
  dElev = 0.0;
  return STATUS_OK;
}

IntAngle RelativeDirection(const CoordPt& from, const CoordPt& to, IntAngle reference) noexcept {
  const IntAngle azimuth = AzimuthBetween(from, to);
  const IntAngle turned = WrapCircle(WrapSub(azimuth, reference));
  return turned >= ANGLE_HALF_CIRCLE ? WrapSub(turned, ANGLE_FULL_CIRCLE) : turned;
}

}  // namespace kavo
