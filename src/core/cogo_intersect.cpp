// Intersections of lines and circles in plan.
#include <cmath>

#include "core/direction.hpp"
#include "core/line.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"

namespace {

// Slopes closer than this are parallel: 1e-5, as the field instruments have it.
constexpr double kParallelSlopes = 0x1.4f8b588e368f1p-17;

// Both results of a line of constant north lie on it, found or not.
std::int32_t CrossConstantNorth(double lineNorth, const CoordPt& centre, double radiusSquare,
                                CoordPt out[2]) noexcept {
  out[0].north = lineNorth;
  out[1].north = lineNorth;
  const double b = 2.0 * centre.east;
  const double dNorth = lineNorth - centre.north;
  const double disc = b * b - 4.0 * ((dNorth * dNorth + centre.east * centre.east) - radiusSquare);
  if (disc < 0.0) {
    return 0;
  }
  const double root = std::sqrt(disc);
  out[0].east = (b - root) * 0.5;
  out[1].east = (root + b) * 0.5;
  return root == 0.0 ? 1 : 2;
}

// The line's equation put into the circle's: a north^2 - b north + c = 0.
std::int32_t CrossSloped(double slope, double intercept, const CoordPt& centre, double radiusSquare,
                         CoordPt out[2]) noexcept {
  const double a = slope * slope + 1.0;
  const double b = ((centre.east * slope + centre.north) - slope * intercept) * 2.0;
  const double c = ((kavo::Square(centre.north) + kavo::Square(intercept)) -
                    (centre.east * intercept) * 2.0 + kavo::Square(centre.east)) -
                   radiusSquare;
  const double disc = b * b - (c * a) * 4.0;
  if (disc < 0.0) {
    return 0;
  }
  const double root = std::sqrt(disc);
  const double perA = 1.0 / a;
  out[0].north = ((b - root) * perA) * 0.5;
  out[0].east = out[0].north * slope + intercept;
  out[1].north = ((root + b) * perA) * 0.5;
  out[1].east = out[1].north * slope + intercept;
  return root == 0.0 ? 1 : 2;
}

}  // namespace

std::int32_t KavoCogoCalcCrossLine(const LineDef* line1, const LineDef* line2, CoordPt* out) {
  kavo::WriteNoPoint(*out);
  double m1 = 0.0;
  double b1 = 0.0;
  double m2 = 0.0;
  double b2 = 0.0;
  if (const auto status = kavo::LineSlopeIntercept(*line1, m1, b1); status != STATUS_OK) {
    return status;
  }
  if (const auto status = kavo::LineSlopeIntercept(*line2, m2, b2); status != STATUS_OK) {
    return status;
  }
  const double slopeDiff = m1 - m2;
  if (std::fabs(slopeDiff) < kParallelSlopes) {
    return ERR_PARALLEL;
  }
  if (m1 == SLOPE_VERTICAL) {
    out->north = line1->p1.north;
    out->east = line1->p1.north * m2 + b2;
  } else if (m2 == SLOPE_VERTICAL) {
    out->north = line2->p1.north;
    out->east = line2->p1.north * m1 + b1;
  } else {
    out->north = (b2 - b1) / slopeDiff;
    out->east = (b2 * m1 - m2 * b1) / slopeDiff;
  }
  return STATUS_OK;
}

std::int32_t KavoCogoCalcCrossLineCircle(const LineDef* line, const CoordPt* centre, double radius,
                                         CoordPt out[2]) {
  if (radius < 0.0) {
    return ERR_REFUSED;
  }
  kavo::WriteNoPoint(out[0]);
  kavo::WriteNoPoint(out[1]);
  const double radiusSquare = radius * radius;
  double slope = 0.0;
  double intercept = 0.0;
  if (const auto status = kavo::LineSlopeIntercept(*line, slope, intercept); status != STATUS_OK) {
    return status;
  }
  if (slope == SLOPE_VERTICAL) {
    return CrossConstantNorth(line->p1.north, *centre, radiusSquare, out);
  }
  return CrossSloped(slope, intercept, *centre, radiusSquare, out);
}

std::int32_t KavoCogoCalcCrossCircle(const CoordPt* centre1, double radius1, const CoordPt* centre2,
                                     double radius2, CoordPt out[2]) {
  if (!(radius1 > 0.0 && radius2 > 0.0)) {
    return ERR_REFUSED;
  }
  if (kavo::SamePlace(*centre1, *centre2)) {
    return radius1 != radius2 ? 0 : ERR_REFUSED;
  }
  kavo::WriteNoPoint(out[0]);
  kavo::WriteNoPoint(out[1]);
  const double dNorth = centre2->north - centre1->north;
  const double dEast = centre2->east - centre1->east;
  const double distSquare = dEast * dEast + dNorth * dNorth;
  const double perDist = 1.0 / std::sqrt(distSquare);
  const double unitNorth = perDist * dNorth;
  const double unitEast = perDist * dEast;
  // Distance from the first centre to the common chord, then half the chord.
  const double a = (((kavo::Square(radius1) + distSquare) - kavo::Square(radius2)) * perDist) * 0.5;
  const double halfChordSquare = kavo::Square(radius1) - a * a;
  if (halfChordSquare < 0.0) {
    return 0;
  }
  const double h = std::sqrt(halfChordSquare);
  out[0].north = (a * unitNorth + centre1->north) - h * unitEast;
  out[0].east = (centre1->east + h * unitNorth) + a * unitEast;
  out[1].north = (centre1->north + h * unitEast) + a * unitNorth;
  out[1].east = (centre1->east + a * unitEast) - h * unitNorth;
  return kavo::SamePlace(out[0], out[1]) ? 1 : 2;
}
