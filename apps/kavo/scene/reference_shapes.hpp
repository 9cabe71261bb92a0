// Reference lines and arcs on a plan, and what was measured against them.
#pragma once

#include "scene/scene.hpp"

namespace kavo_app {

/// The line that a step has set, with its chainage and name.
void AddLineSet(const StepView& step, Scene& scene);

/// The same of a line that a step has computed.
void AddNewLine(const StepView& step, Scene& scene);

/// The arc that a step has set, with its chainage, name and radius.
void AddArc(const StepView& step, Scene& scene);

/// From a measured point square to the arc or, past its ends, to the tangent.
void AddArcOffset(const StepView& step, Scene& scene);

}  // namespace kavo_app
