// Lines in plan as east = slope * north + intercept.
#pragma once

#include <cstdint>

#include "kavostdlib.h"

namespace kavo {

/// A line through two plane positions; metres.
struct PlanLine {
  double north1;
  double east1;
  double north2;
  double east2;
};

/// Coefficients of a line in east = slope * north + intercept.
/// @param line  the line, in either mode.
/// @param[out] slope  east per north, no unit; SLOPE_VERTICAL for a line of constant north, and the
///                    most that a line can have on the positive side.
/// @param[out] intercept  east at north 0, metres; VALUE_INVALID for a two-point line of constant
///                        north, where it means nothing.
/// @return STATUS_OK; ERR_NO_DIRECTION (two points that coincide) or ERR_POINT_INVALID (a point
///         without position), both with the outputs untouched.
std::int32_t LineSlopeIntercept(const LineDef& line, double& slope, double& intercept) noexcept;

/// Intersection of two lines through two points each. Unlike the exported intersection it has no
/// tolerance: only exactly equal slopes are parallel.
/// @param line1,line2  metres; no flags to test.
/// @param[out] out  the point, elev 0, flags 1; VALUE_INVALID in plan on a refusal.
/// @return STATUS_OK; ERR_NO_DIRECTION (a line's two points coincide) or ERR_PARALLEL.
std::int32_t IntersectLines2Pt(const PlanLine& line1, const PlanLine& line2, CoordPt& out) noexcept;

}  // namespace kavo
