// Where the label of an area goes, which its centroid is not in a bent parcel.
#pragma once

#include <vector>

#include "scene/scene.hpp"

namespace kavo_app {

/// Nodes of a grid inside an area, the farthest from its boundary first, with heights counted for
/// more because a label is wide; a corner when the area has no inside.
/// @param ring  the boundary, closed: its last vertex is its first.
std::vector<Spot> InnerSpots(const std::vector<Spot>& ring);

}  // namespace kavo_app
