#include "plan/area_label.hpp"

#include <algorithm>
#include <cmath>

namespace kavo_app {
namespace {

bool IsInside(Spot spot, const std::vector<Spot>& ring) {
  bool inside = false;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const Spot& a = ring[i - 1];
    const Spot& b = ring[i];
    if ((a.up > spot.up) != (b.up > spot.up) &&
        spot.right < a.right + (b.right - a.right) * (spot.up - a.up) / (b.up - a.up)) {
      inside = !inside;
    }
  }
  return inside;
}

double DistanceToRing(Spot spot, const std::vector<Spot>& ring) {
  double least = HUGE_VAL;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const Spot side{ring[i].right - ring[i - 1].right, ring[i].up - ring[i - 1].up};
    const Spot to{spot.right - ring[i - 1].right, spot.up - ring[i - 1].up};
    const double length = side.right * side.right + side.up * side.up;
    const double part =
        length > 0.0 ? std::clamp((to.right * side.right + to.up * side.up) / length, 0.0, 1.0)
                     : 0.0;
    least = std::min(least, std::hypot(to.right - part * side.right, to.up - part * side.up));
  }
  return least;
}

}  // namespace

Spot InnermostSpot(std::vector<Spot> ring) {
  constexpr int kNodes = 32;
  constexpr double kWide = 4.0;
  Extent extent;
  for (auto& spot : ring) {
    spot.up *= kWide;
    extent.Include(spot);
  }
  Spot best = ring.front();
  double bestDistance = 0.0;
  for (int i = 0; i < kNodes * kNodes; ++i) {
    const int row = i / kNodes;
    const Spot node{extent.left + (extent.right - extent.left) * (i % kNodes + 0.5) / kNodes,
                    extent.bottom + (extent.top - extent.bottom) * (row + 0.5) / kNodes};
    const double distance = IsInside(node, ring) ? DistanceToRing(node, ring) : 0.0;
    if (distance > bestDistance) {
      best = node;
      bestDistance = distance;
    }
  }
  return {best.right, best.up / kWide};
}

}  // namespace kavo_app
