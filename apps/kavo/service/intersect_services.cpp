// The services that intersect lines and circles.
#include <array>

#include "service/line_truth.hpp"
#include "service/service_families.hpp"
#include "service/service_rows.hpp"

namespace kavo_app {
namespace {

constexpr std::array kCrossLinesIn = {
    Field{"line1", Kind::kLine, "first line"},
    Field{"line2", Kind::kLine, "second line"},
};
constexpr std::array kCrossLinesStatus = {
    kComputed,
    StatusRow{KAVO_STATUS(ERR_PARALLEL), false,
              "the lines are parallel: they do not meet in a point"},
    kLinePointsCoincide,
    kPointInvalid,
};

Answer CrossLines(const Inputs& in) {
  CoordPt out{};
  const auto status = KavoCogoCalcCrossLine(&in.Line("line1"), &in.Line("line2"), &out);
  return {status, {OrNothing(out)}};
}

constexpr std::array kCrossLineCircleIn = {
    Field{"line", Kind::kLine, "the line"},
    Field{"centre", Kind::kPoint, "centre of the circle"},
    Field{"radius", Kind::kLength, "radius of the circle"},
};
constexpr std::array kCrossLineCircleOut = {
    Field{"first", Kind::kPoint,
          "the one with the smaller north (east, on a line of constant north)"},
    Field{"second", Kind::kPoint, "the other one"},
};
constexpr std::array kCrossLineCircleStatus = {
    StatusRow{2, "", true, "two points"},
    StatusRow{1, "", true, "the line touches the circle in one point"},
    StatusRow{0, "", false,
              "the line misses the circle: check the radius, the centre and the line"},
    StatusRow{KAVO_STATUS(ERR_REFUSED), false, "the radius is negative: give 0 or more"},
    kLinePointsCoincide,
    kPointInvalid,
};

Answer TwoPoints(std::int32_t status, const CoordPt (&out)[2]) {
  return {status, {OrNothing(out[0]), OrNothing(out[1])}};
}

Answer CrossLineCircle(const Inputs& in) {
  CoordPt out[2]{};
  const auto status =
      KavoCogoCalcCrossLineCircle(&in.Line("line"), &in.Point("centre"), in.Number("radius"), out);
  return TwoPoints(status, out);
}

constexpr std::array kCrossCirclesIn = {
    Field{"centre1", Kind::kPoint, "centre of the first circle"},
    Field{"radius1", Kind::kLength, "its radius"},
    Field{"centre2", Kind::kPoint, "centre of the second circle"},
    Field{"radius2", Kind::kLength, "its radius"},
};
constexpr std::array kCrossCirclesOut = {
    Field{"first", Kind::kPoint, "the one to the right of the direction from centre1 to centre2"},
    Field{"second", Kind::kPoint, "the one to its left"},
};
constexpr std::array kCrossCirclesStatus = {
    StatusRow{2, "", true, "two points"},
    StatusRow{1, "", true, "the circles touch in one point"},
    StatusRow{0, "", false,
              "the circles do not meet: check the radii against the centres' distance"},
    StatusRow{KAVO_STATUS(ERR_REFUSED), false,
              "a radius is not above 0, or both circles are the same one: give two circles"},
};

Answer CrossCircles(const Inputs& in) {
  CoordPt out[2]{};
  const auto status = KavoCogoCalcCrossCircle(&in.Point("centre1"), in.Number("radius1"),
                                              &in.Point("centre2"), in.Number("radius2"), out);
  return TwoPoints(status, out);
}

constexpr std::array kServices = {
    Service{"intersect-lines", "KavoCogoCalcCrossLine", "point where two lines meet", kCrossLinesIn,
            kPointOut, kCrossLinesStatus, CrossLines, kHeedsNone, kLosesDigits},
    Service{"intersect-line-circle", "KavoCogoCalcCrossLineCircle",
            "points where a line meets a circle", kCrossLineCircleIn, kCrossLineCircleOut,
            kCrossLineCircleStatus, CrossLineCircle, kHeedsNone, kKeepsDigits, kNoRules, kNoDoubt,
            LineCircleTruth},
    Service{"intersect-circles", "KavoCogoCalcCrossCircle", "points where two circles meet",
            kCrossCirclesIn, kCrossCirclesOut, kCrossCirclesStatus, CrossCircles},
};

}  // namespace

std::span<const Service> IntersectServices() { return kServices; }

}  // namespace kavo_app
