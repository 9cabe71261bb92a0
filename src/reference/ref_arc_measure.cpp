// Reference arc: points measured against the arc that was defined last.
#include <cmath>
#include <cstdlib>
#include <limits>

#include "core/direction.hpp"
#include "core/int_angle.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"
#include "reference/ref_arc.hpp"

namespace {

using kavo::RefArcBase;

// A point in plan, in the terms of the arc; metres.
struct AlongOffset {
  double along;
  double offset;
};

// Azimuth from the centre to a point, truncated to the unit; ANGLE_INVALID when a difference is not
// a number. The azimuth reference has no part in it: the arc is stored with it applied.
IntAngle DirectionFromCentre(double dNorth, double dEast) noexcept {
  if (dNorth == 0.0) {
    return dEast >= 0.0 ? ANGLE_QUARTER_CIRCLE : 3 * ANGLE_QUARTER_CIRCLE;
  }
  if (dEast == 0.0) {
    return dNorth >= 0.0 ? 0 : ANGLE_HALF_CIRCLE;
  }
  const IntAngle anticlockwise =
      kavo::TruncateToAngle(std::atan2(dEast, dNorth) * kavo::kUnitsPerHalfCircle * -kavo::kPerPi);
  return anticlockwise == ANGLE_INVALID ? ANGLE_INVALID
                                        : (ANGLE_FULL_CIRCLE - anticlockwise) % ANGLE_FULL_CIRCLE;
}

// A direction counted from the start's, by one step: in (-half circle, half circle].
IntAngle FromStart(IntAngle direction, IntAngle centreToStartDir) noexcept {
  const IntAngle rel = kavo::WrapSub(direction, centreToStartDir);
  if (rel <= -ANGLE_HALF_CIRCLE) {
    return kavo::WrapAdd(rel, ANGLE_FULL_CIRCLE);
  }
  return rel > ANGLE_HALF_CIRCLE ? kavo::WrapSub(rel, ANGLE_FULL_CIRCLE) : rel;
}

// Length of an angle on the arc. Other last bits than the length of the whole arc has.
double LengthOnArc(IntAngle angle, double radius) noexcept {
  return angle * kavo::kPerFullCircle * std::fabs(radius) * kavo::kTwoPi;
}

// `rel`: direction of the point from the start's; `dist`: from the centre, metres.
AlongOffset MeasureClockwise(const RefArcBase& arc, IntAngle rel, double dist) noexcept {
  if (rel > -ANGLE_QUARTER_CIRCLE && rel < 0) {  // before the start: on its tangent
    const double x = kavo::IntAngleToRadUnwrapped(rel);
    const double along = std::sin(x) * dist;
    return {along, arc.radius - along / std::tan(x)};
  }
  if (rel <= arc.centralAngle && rel >= -ANGLE_QUARTER_CIRCLE) {
    return {LengthOnArc(rel, arc.radius), arc.radius - dist};
  }
  const IntAngle pastEnd =
      rel - arc.centralAngle + (rel < -ANGLE_QUARTER_CIRCLE ? ANGLE_FULL_CIRCLE : 0);
  const double x = kavo::IntAngleToRadUnwrapped(std::abs(pastEnd));
  return {std::sin(x) * dist + arc.arcLength, arc.radius - std::cos(x) * dist};
}

// The mirror image, but for two corners (meant so). Exactly opposite the start, the arc counts
// backwards. And beyond a quarter circle past the start, the angle past the end is taken from
// 20736000 - centralAngle - rel, where 20736000 + centralAngle - rel would be the mirror image:
// along and offset are then off, unless the arc is a half circle, for which the two are the same.
AlongOffset MeasureAnticlockwise(const RefArcBase& arc, IntAngle rel, double dist) noexcept {
  if (rel > 0 && rel < ANGLE_QUARTER_CIRCLE) {  // before the start: on its tangent
    const double x = kavo::IntAngleToRadUnwrapped(rel);
    const double along = -(std::sin(x) * dist);
    return {along, arc.radius - along / std::tan(x)};
  }
  if (rel >= arc.centralAngle && (rel <= ANGLE_QUARTER_CIRCLE || rel >= ANGLE_HALF_CIRCLE)) {
    return {LengthOnArc(-rel, arc.radius), arc.radius + dist};
  }
  const IntAngle pastEnd = rel <= ANGLE_QUARTER_CIRCLE ? rel - arc.centralAngle
                                                       : ANGLE_FULL_CIRCLE - arc.centralAngle - rel;
  const double x = kavo::IntAngleToRadUnwrapped(std::abs(pastEnd));
  return {std::sin(x) * dist + arc.arcLength, arc.radius + std::cos(x) * dist};
}

// Where an angle or the radius is not a number, neither is the answer: the integers above would
// hide it.
AlongOffset Measure(const RefArcBase& arc, IntAngle direction, double dist) noexcept {
  if (direction != ANGLE_INVALID && arc.centralAngle != ANGLE_INVALID) {
    const IntAngle rel = FromStart(direction, arc.centreToStartDir);
    if (arc.radius >= 0.0) {
      return MeasureClockwise(arc, rel, dist);
    }
    if (arc.radius < 0.0) {
      return MeasureAnticlockwise(arc, rel, dist);
    }
  }
  constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
  return {kNoNumber, kNoNumber};
}

// Height of a point above the arc. The elevation flags of the point and of the arc's end are not
// looked at (meant so).
double HeightAboveArc(const RefArcBase& arc, double along, double elev) noexcept {
  if (!kavo::HasElev(arc.start)) {
    return 0.0;
  }
  if (!arc.endConsistent) {
    return elev - arc.start.elev;
  }
  const double part = along / arc.arcLength;
  return elev - (part * (arc.end.elev - arc.start.elev) + arc.start.elev);
}

}  // namespace

std::int32_t KavoREFCalcArc(const CoordPt* point, RefLineResult* out) {
  // Whether an arc is set is not tested (meant so).
  const RefArcBase& arc = kavo::refArcBase;
  if (!kavo::HasNE(*point)) {
    return ERR_POINT_INVALID;
  }
  if (kavo::SamePlace(*point, arc.centre)) {
    return ERR_NO_DIRECTION;
  }
  kavo::WritePoint(out->foot, 0.0, 0.0, 0.0, 0);
  const double dNorth = point->north - arc.centre.north;
  const double dEast = point->east - arc.centre.east;
  const AlongOffset plan =
      Measure(arc, DirectionFromCentre(dNorth, dEast), std::hypot(dNorth, dEast));
  out->along = plan.along;
  out->offset = plan.offset;
  out->dElev = HeightAboveArc(arc, plan.along, point->elev);
  return STATUS_OK;
}
