// Which points lie so near to each other that they make a crowd.
#pragma once

#include <vector>

#include "scene/scene.hpp"

namespace kavo_app {

struct Crowd {
  Extent extent;
  std::size_t points = 0;
};

/// The spots in groups, each with a chain of distances below `near` between all of its spots.
/// @param near  metres, above 0.
std::vector<Crowd> CrowdsOf(const std::vector<Spot>& spots, double near);

}  // namespace kavo_app
