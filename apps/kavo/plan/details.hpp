// The sheets that show a scene: all of it, and its crowded parts again, larger.
#pragma once

#include <vector>

#include "plan/view.hpp"

namespace kavo_app {

/// A view of each scene, followed by its crowded parts as views of their own; one that is crowded
/// all over, by the sheets that it is cut into.
/// @param scenes  they must outlive the views.
std::vector<View> ViewsOf(const std::vector<Scene>& scenes);

}  // namespace kavo_app
