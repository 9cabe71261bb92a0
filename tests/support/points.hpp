// Short ways to write the points and lines of a test.
#pragma once

#include "kavostdlib.h"
#include "text.hpp"

namespace kavo_test {

constexpr std::uint16_t kPlan = COORD_HAS_NE;
constexpr std::uint16_t kFull = COORD_HAS_NE | COORD_HAS_ELEV;

/// A point as a caller gives it. Its padding is not zero, and nothing may depend on it.
inline CoordPt Pt(double north, double east, double elev = 0.0, std::uint16_t flags = kPlan) {
  return {north, east, elev, flags, {0xBEEF, 0xBEEF, 0xBEEF}};
}

/// A point as the library writes it over a record that was Untouched.
inline CoordPt Written(double north, double east, double elev = 0.0, std::uint16_t flags = kPlan) {
  auto point = Untouched<CoordPt>();
  point.north = north;
  point.east = east;
  point.elev = elev;
  point.flags = flags;
  return point;
}

/// A point that was not found, as the library writes it.
inline CoordPt NotFound() { return Written(VALUE_INVALID, VALUE_INVALID); }

inline LineDef TwoPoints(const CoordPt& p1, const CoordPt& p2) {
  return {p1, p2, 0, LINE_MODE_TWO_POINTS, 0xBEEF};
}

inline LineDef Bearing(const CoordPt& p1, IntAngle direction) {
  return {p1, Pt(0, 0, 0, 0), direction, LINE_MODE_DIRECTION, 0xBEEF};
}

constexpr IntAngle kDegree = 57600;

}  // namespace kavo_test
