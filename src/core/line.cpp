#include "core/line.hpp"

#include <cmath>

#include "core/direction.hpp"
#include "core/int_angle.hpp"
#include "core/numeric.hpp"

namespace kavo {
namespace {

/// The line as a two-point definition whose points count as valid.
LineDef TwoPointLine(const PlanLine& line) noexcept {
  LineDef def{};
  WritePoint(def.p1, line.north1, line.east1, 0.0, COORD_HAS_NE);
  WritePoint(def.p2, line.north2, line.east2, 0.0, COORD_HAS_NE);
  def.mode = LINE_MODE_TWO_POINTS;
  return def;
}

// The half circle leaves the tangent as it is, but not its last bits.
void CoefficientsFromDirection(const LineDef& line, double& slope, double& intercept) noexcept {
  const IntAngle azimuth = ApplyAzimuthReference(WrapAdd(line.direction, ANGLE_HALF_CIRCLE));
  slope = std::tan(IntAngleToRadUnwrapped(azimuth));
  intercept = line.p1.east - line.p1.north * slope;
}

// For points of different north.
void CoefficientsFromPoints(const CoordPt& p1, const CoordPt& p2, double& slope,
                            double& intercept) noexcept {
  if (p1.east == p2.east) {
    slope = 0.0;
    intercept = p1.east;
    return;
  }
  slope = (p2.east - p1.east) / (p2.north - p1.north);
  intercept = (p1.east * p2.north - p2.east * p1.north) / (p2.north - p1.north);
}

}  // namespace

std::int32_t LineSlopeIntercept(const LineDef& line, double& slope, double& intercept) noexcept {
  if (!HasNE(line.p1)) {
    return ERR_POINT_INVALID;
  }
  if (line.mode != LINE_MODE_TWO_POINTS) {
    CoefficientsFromDirection(line, slope, intercept);
  } else {
    if (!HasNE(line.p2)) {
      return ERR_POINT_INVALID;
    }
    if (SamePlace(line.p1, line.p2)) {
      return ERR_NO_DIRECTION;
    }
    if (line.p1.north == line.p2.north) {
      slope = SLOPE_VERTICAL;
      intercept = VALUE_INVALID;
      return STATUS_OK;
    }
    CoefficientsFromPoints(line.p1, line.p2, slope, intercept);
  }
  // Only the positive side is held back (meant so); the intercept stays as it was computed.
  if (slope > SLOPE_VERTICAL) {
    slope = SLOPE_VERTICAL;
  }
  return STATUS_OK;
}

std::int32_t IntersectLines2Pt(const PlanLine& line1, const PlanLine& line2,
                               CoordPt& out) noexcept {
  WriteNoPoint(out);
  double m1 = 0.0;
  double b1 = 0.0;
  double m2 = 0.0;
  double b2 = 0.0;
  if (const auto status = LineSlopeIntercept(TwoPointLine(line1), m1, b1); status != STATUS_OK) {
    return status;
  }
  if (const auto status = LineSlopeIntercept(TwoPointLine(line2), m2, b2); status != STATUS_OK) {
    return status;
  }
  const bool constantNorth1 = line1.north1 == line1.north2;
  const bool constantNorth2 = line2.north1 == line2.north2;
  if (constantNorth1 && !constantNorth2) {
    out.north = line1.north1;
    out.east = line1.north1 * m2 + b2;
    return STATUS_OK;
  }
  if (constantNorth2 && !constantNorth1) {
    out.north = line2.north1;
    out.east = line2.north1 * m1 + b1;
    return STATUS_OK;
  }
  if (m1 == m2) {
    return ERR_PARALLEL;
  }
  out.north = (b2 - b1) / (m1 - m2);
  out.east = (b2 * m1 - m2 * b1) / (m1 - m2);
  return STATUS_OK;
}

}  // namespace kavo
