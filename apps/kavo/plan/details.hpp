// Details: the crowded parts of a scene again, larger.
#pragma once

#include <vector>

#include "scene/scene.hpp"

namespace kavo_app {

/// Each scene, followed by its crowded parts as scenes of their own; one that is crowded all over,
/// by the sheets that it is cut into.
std::vector<Scene> WithDetails(std::vector<Scene> scenes);

}  // namespace kavo_app
