// What one step puts on a plan.
#pragma once

#include "scene/scene.hpp"

namespace kavo_app {

/// The place of a point on a plan.
constexpr Spot InPlan(const CoordPt& point) { return {point.east, point.north}; }

/// The points of the step and what shows its work: sights, lines, arcs, areas, residuals.
Scene ShapesOf(const StepView& step);

}  // namespace kavo_app
