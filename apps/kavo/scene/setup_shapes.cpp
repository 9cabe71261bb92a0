#include "scene/setup_shapes.hpp"

#include <cmath>

#include "base/geometry.hpp"
#include "scene/plan_shapes.hpp"

namespace kavo_app {
namespace {

// A sight's residual as a vector: across it by the direction, along it by the distance.
Spot ResidualVector(const CoordPt& station, const CoordPt& point, const SightResidual& residual) {
  const double dNorth = point.north - station.north;
  const double dEast = point.east - station.east;
  const double distance = std::hypot(dNorth, dEast);
  const double across = Radians(residual.direction) * distance;
  const double ahead = residual.dist.value_or(0.0);
  return {(ahead * dEast + across * dNorth) / distance,
          (ahead * dNorth - across * dEast) / distance};
}

}  // namespace

void AddSetUp(const StepView& step, Scene& scene) {
  const auto* sights = step.Find<std::vector<Sight>>("sights");
  const auto* station = step.Find<CoordPt>("station");
  if (sights == nullptr || station == nullptr) {
    return;
  }
  const auto* residuals = step.Find<std::vector<SightResidual>>("residuals");
  for (std::size_t i = 0; i < sights->size(); ++i) {
    const CoordPt& point = (*sights)[i].point;
    if (!HasPosition(point)) {
      continue;  // only the line's azimuth is known
    }
    AddPath(scene, Stroke::kSight, {InPlan(*station), InPlan(point)});
    if (residuals != nullptr) {
      scene.residuals.push_back({InPlan(point), ResidualVector(*station, point, (*residuals)[i])});
    }
  }
  const auto* north = step.Find<double>("sdNorth");
  const auto* east = step.Find<double>("sdEast");
  if (north != nullptr && east != nullptr) {
    scene.deviations.push_back({InPlan(*station), {*east, *north}});
  }
}

}  // namespace kavo_app
