// Where the label of an area goes.
#pragma once

#include <vector>

#include "plan/scene.hpp"

namespace kavo_app {

/// A place for the label of an area, which the centroid is not in a bent parcel: of a grid's nodes
/// inside, the one farthest from the boundary, with heights counted for more because a label is
/// wide.
/// @param ring  the boundary, closed: its last vertex is its first.
Spot InnermostSpot(std::vector<Spot> ring);

}  // namespace kavo_app
