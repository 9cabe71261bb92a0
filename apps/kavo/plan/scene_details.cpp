// Details: the crowded parts of a scene again, larger.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

#include "plan/projection.hpp"

namespace kavo_app {
namespace {

constexpr double kCrowded = 6.0;         // points nearer than this are, millimetres on the sheet
constexpr std::size_t kLeastPoints = 4;  // that make a crowd
constexpr double kLeastGain = 2.0;       // by which a detail must be larger
constexpr double kBorder = 2.5;          // around a crowd, millimetres on the sheet
constexpr int kDeepest = 2;              // details of details

// Groups of points with a chain of short distances between them, as a number for each point.
std::vector<std::size_t> GroupsOf(const std::vector<PaperSpot>& spots) {
  std::vector<std::size_t> group(spots.size());
  std::iota(group.begin(), group.end(), std::size_t{0});
  const auto root = [&group](std::size_t i) {
    while (group[i] != i) {
      i = group[i] = group[group[i]];
    }
    return i;
  };
  for (std::size_t i = 0; i < spots.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const double dLeft = spots[i].fromLeft - spots[j].fromLeft;
      const double dTop = spots[i].fromTop - spots[j].fromTop;
      if (dLeft * dLeft + dTop * dTop < kCrowded * kCrowded) {
        group[root(i)] = root(j);
      }
    }
  }
  for (std::size_t i = 0; i < spots.size(); ++i) {
    group[i] = root(i);
  }
  return group;
}

// The rectangles around the crowds that gain by being drawn alone.
std::vector<Extent> Crowds(const Scene& scene, const Projection& projection) {
  std::vector<Spot> shown;
  std::vector<PaperSpot> spots;
  for (const auto& point : scene.points) {
    if (projection.Shown().Holds(point.at)) {
      shown.push_back(point.at);
      spots.push_back(projection.On(point.at));
    }
  }
  const auto groups = GroupsOf(spots);
  const double border = projection.Metres(kBorder);
  std::vector<Extent> crowds;
  for (std::size_t root = 0; root < groups.size(); ++root) {
    Extent crowd;
    for (std::size_t i = 0; i < groups.size() && groups[root] == root; ++i) {
      if (groups[i] == root) {
        crowd.Include(shown[i]);
      }
    }
    if (crowd.Empty() ||
        static_cast<std::size_t>(std::ranges::count(groups, root)) < kLeastPoints) {
      continue;
    }
    crowd = {crowd.left - border, crowd.right + border, crowd.bottom - border, crowd.top + border};
    Scene detail;
    detail.window = crowd;
    if (Projection(detail).Denominator() * kLeastGain <= projection.Denominator()) {
      crowds.push_back(crowd);
    }
  }
  return crowds;
}

void AddWithDetails(Scene scene, int depth, std::vector<Scene>& scenes) {
  const auto crowds = depth < kDeepest ? Crowds(scene, Projection(scene)) : std::vector<Extent>{};
  std::vector<Scene> details;
  for (const auto& crowd : crowds) {
    const auto name =
        crowds.size() == 1 ? std::string("detail") : fmt::format("detail {}", details.size() + 1);
    Scene detail = scene;
    detail.window = crowd;
    detail.title += ", " + name;
    details.push_back(std::move(detail));
    scene.insets.push_back({crowd, name});
  }
  scenes.push_back(std::move(scene));
  for (auto& detail : details) {
    AddWithDetails(std::move(detail), depth + 1, scenes);
  }
}

}  // namespace

std::vector<Scene> WithDetails(std::vector<Scene> scenes) {
  std::vector<Scene> all;
  for (auto& scene : scenes) {
    AddWithDetails(std::move(scene), 0, all);
  }
  return all;
}

}  // namespace kavo_app
