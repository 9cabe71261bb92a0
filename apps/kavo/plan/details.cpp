#include "plan/details.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "plan/crowds.hpp"
#include "plan/projection.hpp"
#include "plan/tiles.hpp"

namespace kavo_app {
namespace {

constexpr double kCrowded = 6.0;         // points nearer than this are, millimetres on the sheet
constexpr std::size_t kLeastPoints = 4;  // that make a crowd
constexpr double kLeastGain = 2.0;       // by which a detail must be larger
constexpr int kDeepest = 2;              // details of details

double DenominatorOf(const Extent& window) {
  Scene scene;
  scene.window = window;
  return Projection(scene).Denominator();
}

// With a margin, and large enough for a place where points coincide.
Extent Widened(const Extent& crowd) {
  constexpr double kMargin = 0.05;       // of its size
  constexpr double kLeastMargin = 0.25;  // metres
  const double size = std::max(crowd.right - crowd.left, crowd.top - crowd.bottom);
  const double margin = std::max(kMargin * size, kLeastMargin);
  return {crowd.left - margin, crowd.right + margin, crowd.bottom - margin, crowd.top + margin};
}

// The rectangles around the crowds that gain by being drawn alone, as points at one place do not.
std::vector<Extent> DetailsOf(const Scene& scene, const Projection& projection) {
  std::vector<Spot> shown;
  for (const auto& point : scene.points) {
    if (projection.Shows(point.at)) {
      shown.push_back(point.at);
    }
  }
  const auto place = [](Spot spot) { return std::pair(spot.right, spot.up); };
  std::ranges::sort(shown, {}, place);
  const auto same = [&place](Spot a, Spot b) { return place(a) == place(b); };
  shown.erase(std::unique(shown.begin(), shown.end(), same), shown.end());
  std::vector<Extent> details;
  for (const auto& [extent, points] : CrowdsOf(shown, projection.Metres(kCrowded))) {
    const auto window = Widened(extent);
    if (points >= kLeastPoints && DenominatorOf(window) * kLeastGain <= projection.Denominator()) {
      details.push_back(window);
    }
  }
  return details;
}

// Parts of a scene on sheets of their own, which the scene shows as insets from now on.
std::vector<Scene> Cut(Scene& scene, const std::vector<Extent>& windows, const char* word,
                       bool isTile) {
  const auto insets = scene.insets;
  std::vector<Scene> parts;
  for (const auto& window : windows) {
    const auto name =
        windows.size() == 1 ? std::string(word) : fmt::format("{} {}", word, parts.size() + 1);
    Scene part = scene;
    part.window = window;
    part.insets = insets;
    part.title += ", " + name;
    parts.push_back(std::move(part));
    scene.insets.push_back({window, name, isTile});
  }
  return parts;
}

// Where what is left is too full for one sheet, it is cut into sheets, and these no further.
void AddWithDetails(Scene scene, int depth, std::vector<Scene>& scenes) {
  const Projection projection(scene);
  std::vector<Scene> details;
  std::vector<Scene> tiles;
  if (depth < kDeepest) {
    details = Cut(scene, DetailsOf(scene, projection), "detail", false);
  }
  if (depth <= kDeepest) {
    tiles = Cut(scene, TilesOf(scene, projection), "sheet", true);
  }
  scenes.push_back(std::move(scene));
  for (auto& detail : details) {
    AddWithDetails(std::move(detail), depth + 1, scenes);
  }
  std::ranges::move(tiles, std::back_inserter(scenes));
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
