// Reference arc: its three definitions, and its parameters read back.
#include <cmath>
#include <cstdlib>

#include "core/direction.hpp"
#include "core/int_angle.hpp"
#include "core/line.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"
#include "reference/ref_arc.hpp"

namespace kavo {

constinit RefArcBase refArcBase{};

namespace {

// A given end point this near to the computed one, in plan, is the end of the arc: 0.05 m.
constexpr double kEndTolerance = 0x1.999999999999ap-5;

// A plane position, or a vector in plan; metres.
struct PlanVector {
  double north;
  double east;
};

PlanVector UnitVector(IntAngle direction) noexcept {
  const double radians = IntAngleToRadUnwrapped(direction);
  return {std::cos(radians), std::sin(radians)};
}

double PlanDistance(const CoordPt& a, const CoordPt& b) noexcept {
  return std::hypot(a.north - b.north, a.east - b.east);
}

// The line through a point in a direction, by a second point one metre on.
PlanLine LineAlong(const CoordPt& point, IntAngle direction) noexcept {
  const PlanVector unit = UnitVector(direction);
  return {point.north, point.east, point.north + unit.north, point.east + unit.east};
}

// Length of the arc that turns from one tangent to the other in the sense of the radius.
double ArcLength(IntAngle startDir, IntAngle endDir, double radius) noexcept {
  const IntAngle turn =
      radius >= 0.0 ? WrapCircle(WrapSub(endDir, startDir)) : WrapCircle(WrapSub(startDir, endDir));
  return turn * (std::fabs(radius) * kTwoPi) * kPerFullCircle;
}

IntAngle CentralAngle(double arcLength, double radius) noexcept {
  return TruncateToAngle(((arcLength / radius) * kUnitsPerHalfCircle) * kPerPi);
}

IntAngle CentreToStartDir(IntAngle startDir, double radius) noexcept {
  return radius < 0.0 ? WrapCircle(WrapAdd(startDir, ANGLE_QUARTER_CIRCLE))
                      : WrapCircle(WrapSub(startDir, ANGLE_QUARTER_CIRCLE));
}

// Puts the centre a radius beside the start.
void PlaceCentre(RefArcBase& arc) noexcept {
  arc.centreToStartDir = CentreToStartDir(arc.startDir, arc.radius);
  const PlanVector toStart = UnitVector(arc.centreToStartDir);
  arc.centre.north = arc.start.north - toStart.north * std::fabs(arc.radius);
  arc.centre.east = arc.start.east - toStart.east * std::fabs(arc.radius);
  arc.centre.flags = COORD_HAS_NE;
}

// Forgets the end point of an earlier definition; its numbers stay and are not read.
void DropEnd(RefArcBase& arc) noexcept {
  arc.end.flags = 0;
  arc.endConsistent = false;
}

// Lays the arc from the start to the line of the end tangent, as far behind the tangents' meeting
// point as the start lies before it.
// @return where the arc ends.
PlanVector LayBetweenTangents(RefArcBase& arc) noexcept {
  CoordPt vertex{};
  // That the tangents do not meet is not looked at (meant so).
  IntersectLines2Pt(LineAlong(arc.start, arc.startDir), LineAlong(arc.end, arc.endDir), vertex);
  const double tangentLength = PlanDistance(vertex, arc.start);
  const IntAngle turn = WrapCircle(WrapSub(arc.endDir, arc.startDir));
  const IntAngle halfSupplement = WrapSub(ANGLE_HALF_CIRCLE, turn) / 2;
  arc.radius = std::tan(IntAngleToRadUnwrapped(halfSupplement)) * tangentLength;
  arc.arcLength = ArcLength(arc.startDir, arc.endDir, arc.radius);
  arc.centralAngle = CentralAngle(arc.arcLength, arc.radius);
  PlaceCentre(arc);
  const PlanVector toEnd = UnitVector(WrapAdd(arc.centreToStartDir, arc.centralAngle));
  return {arc.centre.north + std::fabs(arc.radius) * toEnd.north,
          arc.centre.east + std::fabs(arc.radius) * toEnd.east};
}

// Lays a half circle from the start to the line of the end tangent, straight across, on the side of
// the given end. The centre is the middle of the constructed diameter, not of start and given end.
// @return where the arc ends.
PlanVector LayHalfCircle(RefArcBase& arc) noexcept {
  const IntAngle toTheRight = WrapAdd(arc.startDir, ANGLE_QUARTER_CIRCLE);
  CoordPt opposite{};
  IntersectLines2Pt(LineAlong(arc.start, toTheRight), LineAlong(arc.end, arc.endDir), opposite);
  const PlanVector right = UnitVector(toTheRight);
  const double endToTheRight = (arc.end.north - arc.start.north) * right.north +
                               (arc.end.east - arc.start.east) * right.east;
  // No side, no arc: 0 / 0 is not a number (meant so).
  arc.radius =
      (endToTheRight / std::fabs(endToTheRight)) * (PlanDistance(opposite, arc.start) * 0.5);
  WritePoint(arc.centre, (opposite.north + arc.start.north) * 0.5,
             (opposite.east + arc.start.east) * 0.5, arc.centre.elev, COORD_HAS_NE);
  arc.arcLength = std::fabs(arc.radius * kPi);
  arc.centralAngle = arc.radius < 0.0 ? -ANGLE_HALF_CIRCLE : ANGLE_HALF_CIRCLE;
  arc.centreToStartDir = CentreToStartDir(arc.startDir, arc.radius);
  return {opposite.north, opposite.east};
}

// Asks for the elevation of the start, not of the end (meant so): no height, nothing to grade.
bool IsEndConsistent(const RefArcBase& arc, const PlanVector& computedEnd) noexcept {
  return HasElev(arc.start) && std::hypot(arc.end.north - computedEnd.north,
                                          arc.end.east - computedEnd.east) < kEndTolerance;
}

// The azimuth reference, which must not turn an angle that does not exist into a direction.
IntAngle ReportedDirection(IntAngle direction) noexcept {
  return direction == ANGLE_INVALID ? ANGLE_INVALID : ApplyAzimuthReference(direction);
}

}  // namespace
}  // namespace kavo

std::int32_t KavoREFSetArcByCoord(const CoordPt* start, const CoordPt* end, IntAngle startTangent,
                                  IntAngle endTangent) {
  kavo::RefArcBase& arc = kavo::refArcBase;
  arc.isSet = false;
  if (!kavo::HasNE(*start) || !kavo::HasNE(*end)) {
    return ERR_POINT_INVALID;
  }
  if (kavo::SamePlace(*start, *end)) {
    return ERR_NO_DIRECTION;
  }
  const IntAngle startDir = kavo::WrapCircle(startTangent);
  const IntAngle endDir = kavo::WrapCircle(endTangent);
  if (startDir == endDir) {
    return ERR_INDETERMINATE;
  }
  arc.start = *start;
  arc.end = *end;
  arc.startDir = kavo::ApplyAzimuthReference(startDir);
  arc.endDir = kavo::ApplyAzimuthReference(endDir);
  const bool opposite = std::abs(arc.startDir - arc.endDir) == ANGLE_HALF_CIRCLE;
  const auto computedEnd = opposite ? kavo::LayHalfCircle(arc) : kavo::LayBetweenTangents(arc);
  arc.endConsistent = kavo::IsEndConsistent(arc, computedEnd);
  arc.isSet = true;
  return STATUS_OK;
}

std::int32_t KavoREFSetArcByRadiusHAngle(const CoordPt* start, IntAngle startTangent, double radius,
                                         IntAngle endTangent) {
  kavo::RefArcBase& arc = kavo::refArcBase;
  arc.isSet = false;
  if (!kavo::HasNE(*start)) {
    return ERR_POINT_INVALID;
  }
  const IntAngle startDir = kavo::WrapCircle(startTangent);
  const IntAngle endDir = kavo::WrapCircle(endTangent);
  if (startDir == endDir) {
    return ERR_INDETERMINATE;
  }
  if (radius == 0.0) {
    return ERR_REFUSED;
  }
  arc.start = *start;
  kavo::DropEnd(arc);
  arc.startDir = kavo::ApplyAzimuthReference(startDir);
  arc.endDir = kavo::ApplyAzimuthReference(endDir);
  arc.radius = radius;
  arc.arcLength = kavo::ArcLength(arc.startDir, arc.endDir, radius);
  arc.centralAngle = kavo::CentralAngle(arc.arcLength, radius);
  kavo::PlaceCentre(arc);
  arc.isSet = true;
  return STATUS_OK;
}

std::int32_t KavoREFSetArcByRadiusArcLen(const CoordPt* start, IntAngle startTangent, double radius,
                                         double arcLength) {
  kavo::RefArcBase& arc = kavo::refArcBase;
  arc.isSet = false;
  if (!kavo::HasNE(*start)) {
    return ERR_POINT_INVALID;
  }
  if (radius == 0.0 || arcLength <= 0.0) {
    return ERR_REFUSED;
  }
  arc.start = *start;
  kavo::DropEnd(arc);
  arc.startDir = kavo::ApplyAzimuthReference(kavo::WrapCircle(startTangent));
  arc.radius = radius;
  const double fullCircle = std::fabs(radius) * kavo::kTwoPi;
  arc.arcLength = arcLength > fullCircle ? fullCircle : arcLength;
  arc.centralAngle = kavo::CentralAngle(arc.arcLength, radius);
  // Not brought back into one circle (meant so).
  arc.endDir = arc.centralAngle == ANGLE_INVALID ? ANGLE_INVALID
                                                 : kavo::WrapAdd(arc.centralAngle, arc.startDir);
  kavo::PlaceCentre(arc);
  arc.isSet = true;
  return STATUS_OK;
}

std::int32_t KavoREFGetArcParams(RefArcParams* out) {
  const kavo::RefArcBase& arc = kavo::refArcBase;
  out->arcLength = arc.arcLength;
  out->radius = arc.radius;
  out->startDir = kavo::ReportedDirection(arc.startDir);
  out->endDir = kavo::ReportedDirection(arc.endDir);
  out->centralAngle = arc.centralAngle;
  return STATUS_OK;
}
