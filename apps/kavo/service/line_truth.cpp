#include "service/line_truth.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/geometry.hpp"

namespace kavo_app {
namespace {

// Nearer than this to touching, coordinates do not tell whether a line meets a circle, metres.
constexpr double kTouch = 1e-6;

// A line by a point and a direction of length 1.
struct Straight {
  CoordPt from;
  double north;
  double east;
};

Straight StraightOf(const LineDef& line) {
  if (line.mode != LINE_MODE_TWO_POINTS) {
    const double azimuth = Radians(line.direction);
    return {line.p1, std::cos(azimuth), std::sin(azimuth)};
  }
  const double dNorth = line.p2.north - line.p1.north;
  const double dEast = line.p2.east - line.p1.east;
  const double length = std::hypot(dNorth, dEast);
  return {line.p1, dNorth / length, dEast / length};
}

// How far a point lies along a line, and to the right of it, metres.
double Along(const Straight& line, const CoordPt& point) {
  return (point.north - line.from.north) * line.north + (point.east - line.from.east) * line.east;
}
double Across(const Straight& line, const CoordPt& point) {
  return (point.east - line.from.east) * line.north - (point.north - line.from.north) * line.east;
}

CoordPt Beside(const CoordPt& point, double dNorth, double dEast) {
  return {point.north + dNorth, point.east + dEast, 0.0, COORD_HAS_NE, {}};
}

// Counted from the point itself, so that large coordinates cost no digits.
CoordPt FootOn(const Straight& line, const CoordPt& point) {
  const double across = Across(line, point);
  return Beside(point, across * line.east, -across * line.north);
}

double Distance(const CoordPt& one, const CoordPt& other) {
  return std::hypot(one.north - other.north, one.east - other.east);
}

// Whether all points that were given lie so near to one that they may be it.
bool AllNear(const Answer& given, const CoordPt& point, double radius) {
  const double near = std::sqrt(2.0 * radius * kTouch) + kTouch;
  return std::ranges::all_of(given.outputs, [&](const Value& output) {
    const auto* at = std::get_if<CoordPt>(&output);
    return at == nullptr || Distance(*at, point) <= near;
  });
}

}  // namespace

std::optional<Answer> LineCircleTruth(const Inputs& in, const Answer& given) {
  if (given.status < 0) {
    return std::nullopt;
  }
  const auto line = StraightOf(in.Line("line"));
  const double radius = in.Number("radius");
  const auto foot = FootOn(line, in.Point("centre"));
  const double across = std::fabs(Across(line, in.Point("centre")));
  if (std::fabs(radius - across) <= kTouch) {
    const bool asGood = given.status > 0 && AllNear(given, foot, radius);
    return asGood ? std::nullopt : std::optional(Answer{1, {foot, Value{}}});
  }
  if (across > radius) {
    return Answer{0, {Value{}, Value{}}};
  }
  const double half = std::sqrt((radius - across) * (radius + across));
  auto first = Beside(foot, -half * line.north, -half * line.east);
  auto second = Beside(foot, half * line.north, half * line.east);
  // The order hangs on a north that a line to the east hardly has: it is as it was given.
  const auto* givenFirst = std::get_if<CoordPt>(&given.outputs.front());
  const bool turned = givenFirst != nullptr && given.status == 2 && std::isfinite(givenFirst->north)
                          ? Distance(*givenFirst, second) < Distance(*givenFirst, first)
                          : second.north < first.north;
  if (turned) {
    std::swap(first, second);
  }
  return Answer{2, {first, second}};
}

std::optional<Answer> FootTruth(const Inputs& in, const Answer& given) {
  const auto* givenFoot = std::get_if<CoordPt>(&given.outputs.front());
  if (givenFoot == nullptr) {
    return std::nullopt;
  }
  const auto& ends = in.Line("line");
  const auto line = StraightOf(ends);
  auto foot = FootOn(line, in.Point("point"));
  if (HasElev(*givenFoot)) {
    const bool graded = ends.mode == LINE_MODE_TWO_POINTS && HasElev(ends.p1) && HasElev(ends.p2);
    const double part = graded ? Along(line, in.Point("point")) / Along(line, ends.p2) : 0.0;
    foot = AtElev(foot,
                  graded ? ends.p1.elev + part * (ends.p2.elev - ends.p1.elev) : givenFoot->elev);
  }
  return Answer{given.status, {foot}};
}

}  // namespace kavo_app
