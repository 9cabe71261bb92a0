#include "scene/inner_spots.hpp"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>

namespace kavo_app {
namespace {

constexpr int kNodes = 32;     // of the grid, each way
constexpr double kWide = 4.0;  // a label is about so many times as wide as it is high

bool IsInside(Spot spot, const std::vector<Spot>& ring) {
  bool inside = false;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const auto& a = ring[i - 1];
    const auto& b = ring[i];
    if ((a.up > spot.up) != (b.up > spot.up) &&
        spot.right < a.right + (b.right - a.right) * (spot.up - a.up) / (b.up - a.up)) {
      inside = !inside;
    }
  }
  return inside;
}

// With heights counted for more.
double DistanceToSide(Spot spot, Spot from, Spot to) {
  const double right = to.right - from.right;
  const double up = (to.up - from.up) * kWide;
  const double spotRight = spot.right - from.right;
  const double spotUp = (spot.up - from.up) * kWide;
  const double square = right * right + up * up;
  const double part =
      square > 0.0 ? std::clamp((spotRight * right + spotUp * up) / square, 0.0, 1.0) : 0.0;
  return std::hypot(spotRight - part * right, spotUp - part * up);
}

double DistanceToRing(Spot spot, const std::vector<Spot>& ring) {
  double least = HUGE_VAL;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    least = std::min(least, DistanceToSide(spot, ring[i - 1], ring[i]));
  }
  return least;
}

Extent ExtentOf(const std::vector<Spot>& ring) {
  Extent extent;
  for (const auto& spot : ring) {
    extent.Include(spot);
  }
  return extent;
}

}  // namespace

std::vector<Spot> InnerSpots(const std::vector<Spot>& ring) {
  struct Node {
    Spot at;
    double distance;
  };
  const auto extent = ExtentOf(ring);
  std::vector<Node> nodes;
  for (int i = 0; i < kNodes * kNodes; ++i) {
    const int row = i / kNodes;
    const Spot at{extent.left + (extent.right - extent.left) * (i % kNodes + 0.5) / kNodes,
                  extent.top - (extent.top - extent.bottom) * (row + 0.5) / kNodes};
    if (IsInside(at, ring)) {
      nodes.push_back({at, DistanceToRing(at, ring)});
    }
  }
  std::ranges::stable_sort(nodes, std::ranges::greater(), &Node::distance);
  std::vector<Spot> spots;
  std::ranges::transform(nodes, std::back_inserter(spots), &Node::at);
  if (spots.empty()) {
    spots.push_back(ring.front());
  }
  return spots;
}

}  // namespace kavo_app
