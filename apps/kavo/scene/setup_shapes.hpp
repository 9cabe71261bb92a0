// Set-ups on a plan: sights, and how well they fit.
#pragma once

#include "scene/scene.hpp"

namespace kavo_app {

/// The sights of a step that has any, their residuals and the standard deviations of the station.
void AddSetUp(const StepView& step, Scene& scene);

}  // namespace kavo_app
