// Points and lines: the foot of a perpendicular, along and offset, a line turned and shifted.
#include <cmath>

#include "core/direction.hpp"
#include "core/int_angle.hpp"
#include "core/line.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"

namespace {

void WriteElev(CoordPt& out, double elev) noexcept {
  out.elev = elev;
  out.flags |= COORD_HAS_ELEV;
}

// The plane position of the foot on east = slope * north + intercept.
void WriteFoot(const LineDef& line, double slope, double intercept, const CoordPt& point,
               CoordPt& foot) noexcept {
  if (slope == SLOPE_VERTICAL) {
    foot.north = line.p1.north;
    foot.east = point.east;
    return;
  }
  if (slope == 0.0) {
    foot.north = point.north;
    foot.east = line.p1.east;
    return;
  }
  const double acrossSlope = -1.0 / slope;
  const double acrossIntercept = point.east - point.north * acrossSlope;
  const double den = slope - acrossSlope;
  foot.north = (acrossIntercept - intercept) / den;
  foot.east = (acrossIntercept * slope - acrossSlope * intercept) / den;
}

// The elevation of a foot that already has its place.
void WriteFootElev(const LineDef& line, CoordPt& foot) noexcept {
  const CoordPt& p1 = line.p1;
  const CoordPt& p2 = line.p2;
  if (kavo::HasElev(p1)) {
    WriteElev(foot, p1.elev);
  }
  if (line.mode != LINE_MODE_TWO_POINTS || !kavo::HasElev(p2)) {
    return;
  }
  if (!kavo::HasElev(p1)) {
    WriteElev(foot, p2.elev);
    return;
  }
  // By north difference, not by distance along the line (meant so): not finite on a line of
  // constant north.
  WriteElev(foot,
            ((foot.north - p1.north) * (p2.elev - p1.elev)) / (p2.north - p1.north) + p1.elev);
}

void CopyPoint(const CoordPt& from, CoordPt& to) noexcept {
  kavo::WritePoint(to, from.north, from.east, from.elev, from.flags);
}

// Every field but the padding.
void CopyLine(const LineDef& from, LineDef& to) noexcept {
  CopyPoint(from.p1, to.p1);
  CopyPoint(from.p2, to.p2);
  to.direction = from.direction;
  to.mode = from.mode;
}

// Azimuth of a line; ANGLE_INVALID of a line by direction stays what it is.
IntAngle LineAzimuth(const LineDef& line) noexcept {
  if (line.mode == LINE_MODE_TWO_POINTS) {
    return kavo::AzimuthBetween(line.p1, line.p2);
  }
  return line.direction == ANGLE_INVALID ? ANGLE_INVALID
                                         : kavo::ApplyAzimuthReference(line.direction);
}

// Turns `p2` about `p1`, clockwise for a positive rotation.
void TurnSecondPoint(const LineDef& line, IntAngle rotation, CoordPt& p2) noexcept {
  const double dNorth = line.p2.north - line.p1.north;
  const double dEast = line.p2.east - line.p1.east;
  const double radians = kavo::IntAngleToRadUnwrapped(rotation);
  const double cosine = std::cos(radians);
  const double sine = std::sin(radians);
  p2.north = (cosine * dNorth - sine * dEast) + line.p1.north;
  p2.east = (cosine * dEast + sine * dNorth) + line.p1.east;
}

// Shifts the first point across the azimuth, which may be ANGLE_INVALID and is used all the same.
void ShiftByDirection(const CoordPt& p1, IntAngle azimuth, double offset, CoordPt& out) noexcept {
  const double radians = kavo::IntAngleToRadUnwrapped(kavo::WrapAdd(azimuth, ANGLE_QUARTER_CIRCLE));
  out.north = std::cos(radians) * offset + p1.north;
  out.east = std::sin(radians) * offset + p1.east;
}

// Shifts both points across the line from the old first point to the turned second one.
void ShiftByPoints(const CoordPt& p1, double offset, LineDef& turned) noexcept {
  const CoordPt p2 = turned.p2;
  KavoCogoOffsetToCoord(&p1, &p2, 0.0, offset, &turned.p1);
  const double length = std::hypot(p2.north - p1.north, p2.east - p1.east);
  KavoCogoOffsetToCoord(&p1, &p2, length, offset, &turned.p2);
}

}  // namespace

std::int32_t KavoCogoCalcPtLine(const LineDef* line, const CoordPt* point, CoordPt* foot) {
  kavo::WriteNoPoint(*foot);
  double slope = 0.0;
  double intercept = 0.0;
  if (const auto status = kavo::LineSlopeIntercept(*line, slope, intercept); status != STATUS_OK) {
    return status;
  }
  WriteFoot(*line, slope, intercept, *point, *foot);
  WriteFootElev(*line, *foot);
  return STATUS_OK;
}

std::int32_t KavoCogoOffsetToCoord(const CoordPt* a, const CoordPt* b, double along, double offset,
                                   CoordPt* out) {
  if (!kavo::HasNE(*a) || !kavo::HasNE(*b)) {
    return ERR_POINT_INVALID;
  }
  if (kavo::SamePlace(*a, *b)) {
    return ERR_NO_DIRECTION;
  }
  // With one elevation the line is level at it.
  const bool withElev = kavo::HasElev(*a) || kavo::HasElev(*b);
  const double elevA = kavo::HasElev(*a) ? a->elev : b->elev;
  const double elevB = kavo::HasElev(*b) ? b->elev : a->elev;
  const double dNorth = b->north - a->north;
  const double dEast = b->east - a->east;
  const double perLength = 1.0 / std::hypot(dNorth, dEast);
  const double unitNorth = perLength * dNorth;
  const double unitEast = perLength * dEast;
  kavo::WritePoint(*out, (unitNorth * along + a->north) - unitEast * offset,
                   (unitEast * along + unitNorth * offset) + a->east,
                   withElev ? ((elevB - elevA) * perLength) * along + elevA : 0.0,
                   withElev ? COORD_HAS_NE | COORD_HAS_ELEV : COORD_HAS_NE);
  return STATUS_OK;
}

std::int32_t KavoCogoCalcTransLine(const LineDef* line, IntAngle rotation, double offset,
                                   LineDef* out) {
  const bool byPoints = line->mode == LINE_MODE_TWO_POINTS;
  if (!kavo::HasNE(line->p1) || (byPoints && !kavo::HasNE(line->p2))) {
    return ERR_POINT_INVALID;
  }
  if (byPoints && kavo::SamePlace(line->p1, line->p2)) {
    return ERR_NO_DIRECTION;
  }
  LineDef turned{};
  CopyLine(*line, turned);
  IntAngle azimuth = LineAzimuth(*line);
  if (azimuth != ANGLE_INVALID) {
    azimuth = kavo::WrapAdd(azimuth, rotation);
    kavo::NormalizeAngle(azimuth);
    turned.direction = azimuth;
  }
  if (rotation != 0 && byPoints) {
    TurnSecondPoint(*line, rotation, turned.p2);
  }
  if (offset != 0.0 && byPoints) {
    ShiftByPoints(line->p1, offset, turned);
    azimuth = turned.direction;
  } else if (offset != 0.0) {
    ShiftByDirection(line->p1, azimuth, offset, turned.p1);
  }
  if (azimuth != ANGLE_INVALID) {
    turned.direction = kavo::ApplyAzimuthReference(azimuth);
  }
  CopyLine(turned, *out);
  return STATUS_OK;
}
