#include "service/arc_truth.hpp"

#include <cmath>
#include <numbers>

#include "base/geometry.hpp"

namespace kavo_app {
namespace {

constexpr double kCircle = 2.0 * std::numbers::pi;
constexpr double kQuarter = 0.5 * std::numbers::pi;

// A point in the frame of a tangent: ahead of its origin and to the right of it, metres.
struct TangentFrame {
  double ahead;
  double right;
};

TangentFrame InFrame(double azimuth, double dNorth, double dEast) {
  return {std::cos(azimuth) * dNorth + std::sin(azimuth) * dEast,
          std::cos(azimuth) * dEast - std::sin(azimuth) * dNorth};
}

}  // namespace

CoordPt EndOf(const Arc& arc) {
  const double radius = std::fabs(arc.radius);
  const double turned = arc.arcLength / radius;
  const double ahead = radius * std::sin(turned);
  const double right = arc.radius * (1.0 - std::cos(turned));
  const double azimuth = Radians(arc.startDir);
  CoordPt end = arc.start;
  end.north += std::cos(azimuth) * ahead - std::sin(azimuth) * right;
  end.east += std::sin(azimuth) * ahead + std::cos(azimuth) * right;
  return end;
}

ArcPosition TrueArcPosition(const Arc& arc, const CoordPt& point) {
  const double startAzimuth = Radians(arc.startDir);
  const auto fromStart =
      InFrame(startAzimuth, point.north - arc.start.north, point.east - arc.start.east);
  const double radius = std::fabs(arc.radius);
  const double side = arc.radius < 0.0 ? -1.0 : 1.0;
  // Counted from the centre: the angle travelled from the start, in the sense of the arc.
  const double inward = side * fromStart.right;
  double travelled = std::atan2(fromStart.ahead, radius - inward);
  travelled += travelled < 0.0 ? kCircle : 0.0;
  const double total = arc.arcLength / radius;
  if (travelled <= total) {
    return {travelled * radius, side * (radius - std::hypot(fromStart.ahead, radius - inward))};
  }
  if (travelled > kCircle - kQuarter) {
    return {fromStart.ahead, fromStart.right};
  }
  const TangentFrame end{radius * std::sin(total), side * radius * (1.0 - std::cos(total))};
  const auto fromEnd =
      InFrame(side * total, fromStart.ahead - end.ahead, fromStart.right - end.right);
  return {arc.arcLength + fromEnd.ahead, fromEnd.right};
}

}  // namespace kavo_app
