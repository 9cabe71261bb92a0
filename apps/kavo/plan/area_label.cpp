#include "plan/area_label.hpp"

#include <algorithm>
#include <cmath>

namespace kavo_app {
namespace {

constexpr int kNodes = 32;     // of the grid, each way
constexpr double kWide = 4.0;  // a label is about so many times as wide as it is high

bool IsInside(PaperSpot spot, const std::vector<PaperSpot>& ring) {
  bool inside = false;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const auto& a = ring[i - 1];
    const auto& b = ring[i];
    if ((a.fromTop > spot.fromTop) != (b.fromTop > spot.fromTop) &&
        spot.fromLeft < a.fromLeft + (b.fromLeft - a.fromLeft) * (spot.fromTop - a.fromTop) /
                                         (b.fromTop - a.fromTop)) {
      inside = !inside;
    }
  }
  return inside;
}

// With heights counted for more.
double DistanceToSide(PaperSpot spot, PaperSpot from, PaperSpot to) {
  const double right = to.fromLeft - from.fromLeft;
  const double down = (to.fromTop - from.fromTop) * kWide;
  const double spotRight = spot.fromLeft - from.fromLeft;
  const double spotDown = (spot.fromTop - from.fromTop) * kWide;
  const double square = right * right + down * down;
  const double part =
      square > 0.0 ? std::clamp((spotRight * right + spotDown * down) / square, 0.0, 1.0) : 0.0;
  return std::hypot(spotRight - part * right, spotDown - part * down);
}

double DistanceToRing(PaperSpot spot, const std::vector<PaperSpot>& ring) {
  double least = HUGE_VAL;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    least = std::min(least, DistanceToSide(spot, ring[i - 1], ring[i]));
  }
  return least;
}

PaperBox BoxAround(const std::vector<PaperSpot>& ring) {
  PaperBox box = Around(ring.front(), 0.0);
  for (const auto& spot : ring) {
    box = {std::min(box.left, spot.fromLeft), std::min(box.top, spot.fromTop),
           std::max(box.right, spot.fromLeft), std::max(box.bottom, spot.fromTop)};
  }
  return box;
}

}  // namespace

std::vector<PaperSpot> InnerSpots(const std::vector<PaperSpot>& ring) {
  struct Node {
    PaperSpot at;
    double distance;
  };
  const auto box = BoxAround(ring);
  std::vector<Node> nodes;
  for (int i = 0; i < kNodes * kNodes; ++i) {
    const int row = i / kNodes;
    const PaperSpot at{box.left + (box.right - box.left) * (i % kNodes + 0.5) / kNodes,
                       box.top + (box.bottom - box.top) * (row + 0.5) / kNodes};
    if (IsInside(at, ring)) {
      nodes.push_back({at, DistanceToRing(at, ring)});
    }
  }
  std::ranges::stable_sort(nodes, std::ranges::greater(), &Node::distance);
  std::vector<PaperSpot> spots;
  std::ranges::transform(nodes, std::back_inserter(spots), &Node::at);
  if (spots.empty()) {
    spots.push_back(ring.front());
  }
  return spots;
}

}  // namespace kavo_app
