// The vertical plane through two points, and sights that pierce it.
#include <cmath>

#include "core/direction.hpp"
#include "core/int_angle.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"

namespace {

// Below this a station counts as standing on the plane (square metres: its distance from the plane
// times the base length, so the test grows with the base, meant so), and a sight as parallel to it
// (sine of the angle between the two): 5e-7, as the field instruments have it.
constexpr double kNearZero = 0x1.0c6f7a0b5ed8dp-21;

// The base that sights are measured against; none when the library is loaded.
struct RefPlane2PtBase {
  bool set;
  CoordPt base;
  double length;  // metres, as the next two
  double dNorth;
  double dEast;
  double unitNorth;
  double unitEast;
};

RefPlane2PtBase plane;

// A sight on face 1 from a station whose place is counted from the base point.
struct PlaneSight {
  double dNorth;  // station minus base point, metres
  double dEast;
  double horizon;  // elevation of the line of sight at the station, metres
  double cosine;   // of the direction
  double sine;
  IntAngle zenith;
};

bool IsVertical(IntAngle zenith) noexcept { return zenith == 0 || zenith == ANGLE_HALF_CIRCLE; }

// A zenith reading, wrapped, belongs to face 2 beyond half a circle, not at it.
PlaneSight ReduceToFace1(IntAngle azimuth, IntAngle zenith, double dNorth, double dEast,
                         double horizon) noexcept {
  const bool face2 = zenith > ANGLE_HALF_CIRCLE;
  const double radians = kavo::IntAngleToRad(face2 ? kavo::TurnHalfCircle(azimuth) : azimuth);
  return {dNorth,
          dEast,
          horizon,
          std::cos(radians),
          std::sin(radians),
          face2 ? kavo::WrapSub(ANGLE_FULL_CIRCLE, zenith) : zenith};
}

// Height over the base point of the place where the sight pierces the plane. The distance to it is
// signed, so that behind the station the sight is followed backwards.
double HeightOverBase(const PlaneSight& sight, double across) noexcept {
  const double stationHeight = sight.horizon - plane.base.elev;
  if (sight.zenith == ANGLE_QUARTER_CIRCLE) {
    return stationHeight;
  }
  const double tangent = std::tan(kavo::IntAngleToRad(sight.zenith));
  return (plane.unitEast * sight.dNorth - plane.unitNorth * sight.dEast) / (across * tangent) +
         stationHeight;
}

// The same place's elevation where the base point has none: from the station alone.
double ElevFromStation(const PlaneSight& sight, const CoordPt& station,
                       const CoordPt& pierced) noexcept {
  if (sight.zenith == ANGLE_QUARTER_CIRCLE) {
    return sight.horizon;
  }
  const double dNorth = pierced.north - station.north;
  const double dEast = pierced.east - station.east;
  const double tangent = std::tan(kavo::IntAngleToRad(sight.zenith));
  const double fall = std::hypot(dNorth, dEast) * (-1.0 / tangent);
  const bool behind = dNorth * sight.cosine + dEast * sight.sine < 0.0;
  return behind ? sight.horizon + fall : sight.horizon - fall;
}

// Writes the outputs of a sight that is not parallel to the plane: `across`, the sine of the angle
// between the two, is not near zero.
void WritePierced(const PlaneSight& sight, double across, const CoordPt& station, CoordPt& result,
                  double& alongPlane, double& heightOnPlane) noexcept {
  const double along = (sight.sine * sight.dNorth - sight.cosine * sight.dEast) / across;
  alongPlane = along;
  result.north = (along / plane.length) * plane.dNorth + plane.base.north;
  result.east = (along / plane.length) * plane.dEast + plane.base.east;
  if (kavo::HasElev(plane.base)) {
    heightOnPlane = HeightOverBase(sight, across);
    result.elev = heightOnPlane + plane.base.elev;
  } else {
    heightOnPlane = 0.0;
    result.elev = ElevFromStation(sight, station, result);
  }
}

}  // namespace

std::int32_t KavoREFSet2PtBasePlane(const CoordPt* p1, const CoordPt* p2) {
  plane.set = false;
  if (!kavo::HasNE(*p1) || !kavo::HasNE(*p2)) {
    return ERR_POINT_INVALID;
  }
  if (kavo::SamePlace(*p1, *p2)) {
    return ERR_NO_DIRECTION;
  }
  plane.base = *p1;
  plane.dNorth = p2->north - p1->north;
  plane.dEast = p2->east - p1->east;
  plane.length = std::hypot(plane.dNorth, plane.dEast);
  const double perLength = 1.0 / plane.length;
  plane.unitNorth = perLength * plane.dNorth;
  plane.unitEast = perLength * plane.dEast;
  plane.set = true;
  return kavo::HasElev(*p1) ? STATUS_OK : WARN_NO_ELEVATION;
}

std::int32_t KavoREFCalc2PtPlane(IntAngle ha, IntAngle va, const CoordPt* station,
                                 double instrumentHeight, CoordPt* result, double* alongPlane,
                                 double* heightOnPlane) {
  *heightOnPlane = VALUE_INVALID;
  *alongPlane = VALUE_INVALID;
  kavo::WritePoint(*result, VALUE_INVALID, VALUE_INVALID, VALUE_INVALID,
                   COORD_HAS_NE | COORD_HAS_ELEV);
  if (!plane.set) {
    return ERR_NO_BASE;
  }
  const double dNorth = station->north - plane.base.north;
  const double dEast = station->east - plane.base.east;
  if (std::fabs(plane.dEast * dNorth - plane.dNorth * dEast) < kNearZero) {
    return ERR_INDETERMINATE;
  }
  // A vertical or a parallel sight is no error (meant so): the outputs stay as they were preset.
  const std::int32_t status = kavo::HasElev(plane.base) ? STATUS_OK : WARN_NO_ELEVATION;
  const IntAngle zenith = kavo::WrapCircle(va);
  if (IsVertical(zenith)) {
    return status;
  }
  const PlaneSight sight = ReduceToFace1(kavo::ApplyAzimuthReference(ha), zenith, dNorth, dEast,
                                         station->elev + instrumentHeight);
  const double across = plane.unitNorth * sight.sine - plane.unitEast * sight.cosine;
  if (!(std::fabs(across) < kNearZero)) {
    WritePierced(sight, across, *station, *result, *alongPlane, *heightOnPlane);
  }
  return status;
}
