// Station from horizontal and zenith readings to three known points.
#include <array>
#include <cmath>
#include <cstdint>

#include "core/direction.hpp"
#include "core/int_angle.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"
#include "station/sight_elevation.hpp"

namespace {

constexpr IntAngle kThreeQuarterCircle = 15552000;

struct Centre {
  double north;
  double east;
};

// Centre of the circle from whose points, on the proper side, `from` and `to` appear under `angle`.
// Only these two exact angles have the midpoint for a centre. Meant so: minus a quarter circle goes
// through the tangent like any other angle.
Centre CircleOfEqualAngle(const CoordPt& from, const CoordPt& to, IntAngle angle) noexcept {
  const Centre middle{(to.north + from.north) * 0.5, (to.east + from.east) * 0.5};
  if (angle == ANGLE_QUARTER_CIRCLE || angle == kThreeQuarterCircle) {
    return middle;
  }
  const double t = std::tan(kavo::IntAngleToRad(angle)) * 2.0;
  return {middle.north - (to.east - from.east) / t, (to.north - from.north) / t + middle.east};
}

// Where the two circles that pass through `common` meet again: its image in the line of centres.
// False when the centres coincide; there is no tolerance.
bool SecondIntersection(const Centre& c1, const Centre& c2, const CoordPt& common,
                        CoordPt& station) noexcept {
  const double dNorth = c2.north - c1.north;
  const double dEast = c2.east - c1.east;
  const double distSquare = kavo::Square(dEast) + kavo::Square(dNorth);
  if (distSquare == 0.0) {
    return false;
  }
  const double k =
      ((common.east - c1.east) * dNorth - (common.north - c1.north) * dEast) * 2.0 / distSquare;
  station.north = k * dEast + common.north;
  station.east = common.east - k * dNorth;
  return true;
}

// Mean elevation over the sights to points that have one.
void WriteMeanElev(const std::array<const StnAngleObs*, 3>& sights, CoordPt& station) noexcept {
  double sum = 0.0;
  std::int16_t count = 0;
  for (const StnAngleObs* sight : sights) {
    if (kavo::HasElev(sight->point)) {
      sum += kavo::StnElevFromSight(station.north, station.east, sight->point, sight->va,
                                    sight->heightTerm);
      ++count;
    }
  }
  station.elev = count != 0 ? sum / count : 0.0;
  station.flags = count != 0 ? COORD_HAS_NE | COORD_HAS_ELEV : COORD_HAS_NE;
}

}  // namespace

std::int32_t KavoSTN3PtResect(const StnAngleObs* obs0, const StnAngleObs* obs1,
                              const StnAngleObs* obs2, StnSetupResult* result) {
  if (!kavo::HasNE(obs0->point) || !kavo::HasNE(obs1->point) || !kavo::HasNE(obs2->point)) {
    return ERR_POINT_INVALID;
  }
  const IntAngle h0 = kavo::FaceOneReading(obs0->ha, obs0->va);
  const IntAngle h1 = kavo::FaceOneReading(obs1->ha, obs1->va);
  const IntAngle h2 = kavo::FaceOneReading(obs2->ha, obs2->va);
  if (h1 == h0 || h2 == h0 || h2 == h1) {
    return ERR_SAME_DIRECTION;
  }
  const Centre c1 = CircleOfEqualAngle(obs0->point, obs1->point, kavo::WrapSub(h1, h0));
  const Centre c2 = CircleOfEqualAngle(obs1->point, obs2->point, kavo::WrapSub(h2, h1));
  if (!SecondIntersection(c1, c2, obs1->point, result->station)) {
    return ERR_INDETERMINATE;
  }
  WriteMeanElev({obs0, obs1, obs2}, result->station);
  // A station that is not finite, or that falls on the first point, has no direction to it; the
  // orientation is computed all the same (meant so).
  result->orient = kavo::RelativeDirection(result->station, obs0->point, h0);
  return STATUS_OK;
}
