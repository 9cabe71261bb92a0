// Details: the crowded parts of a scene again, larger.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "plan/crowds.hpp"
#include "plan/projection.hpp"

namespace kavo_app {
namespace {

constexpr double kCrowded = 6.0;         // points nearer than this are, millimetres on the sheet
constexpr std::size_t kLeastPoints = 4;  // that make a crowd
constexpr double kLeastGain = 2.0;       // by which a detail must be larger
constexpr double kBorder = 2.5;          // around a crowd, millimetres on the sheet
constexpr int kDeepest = 2;              // details of details

double DenominatorOf(const Extent& window) {
  Scene scene;
  scene.window = window;
  return Projection(scene).Denominator();
}

// The rectangles around the crowds that gain by being drawn alone.
std::vector<Extent> DetailsOf(const Scene& scene, const Projection& projection) {
  std::vector<Spot> shown;
  for (const auto& point : scene.points) {
    if (projection.Shows(point.at)) {
      shown.push_back(point.at);
    }
  }
  const double border = projection.Metres(kBorder);
  std::vector<Extent> details;
  for (const auto& [extent, points] : CrowdsOf(shown, projection.Metres(kCrowded))) {
    const Extent window{extent.left - border, extent.right + border, extent.bottom - border,
                        extent.top + border};
    if (points >= kLeastPoints && DenominatorOf(window) * kLeastGain <= projection.Denominator()) {
      details.push_back(window);
    }
  }
  return details;
}

// A scene with a part of it on a sheet of its own.
Scene PartOf(const Scene& scene, const Extent& window, const std::string& name) {
  Scene part = scene;
  part.window = window;
  part.insets.clear();
  part.title += ", " + name;
  return part;
}

void AddWithDetails(Scene scene, int depth, std::vector<Scene>& scenes) {
  const auto windows =
      depth < kDeepest ? DetailsOf(scene, Projection(scene)) : std::vector<Extent>{};
  std::vector<Scene> details;
  for (const auto& window : windows) {
    const auto name =
        windows.size() == 1 ? std::string("detail") : fmt::format("detail {}", details.size() + 1);
    details.push_back(PartOf(scene, window, name));
    scene.insets.push_back({window, name});
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
