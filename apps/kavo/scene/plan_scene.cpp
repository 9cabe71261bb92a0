// Plans: what the steps show, one plan for each place where the job works.
#include <fmt/format.h>

#include <algorithm>

#include "scene/plan_shapes.hpp"

namespace kavo_app {
namespace {

// A place, with what the steps at it show.
struct Place {
  std::size_t firstStep;
  Extent extent;
  Scene scene;
};

// Two places are one when they lie less than their own size apart, or so near that one sheet shows
// both well.
bool Near(const Extent& one, const Extent& other) {
  constexpr double kLeast = 250.0;  // metres
  const double size = std::max({one.right - one.left, one.top - one.bottom,
                                other.right - other.left, other.top - other.bottom, kLeast});
  return one.left - size <= other.right && other.left - size <= one.right &&
         one.bottom - size <= other.top && other.bottom - size <= one.top;
}

// Puts a step where it belongs. What it joins is one place from now on, which may be near others in
// turn.
void Settle(std::vector<Place>& places, Place next) {
  for (;;) {
    const auto found = std::ranges::find_if(
        places, [&next](const Place& place) { return Near(place.extent, next.extent); });
    if (found == places.end()) {
      places.push_back(std::move(next));
      return;
    }
    Place joined = std::move(*found);
    places.erase(found);
    joined.firstStep = std::min(joined.firstStep, next.firstStep);
    joined.extent.Include(next.extent);
    Append(joined.scene, std::move(next.scene));
    next = std::move(joined);
  }
}

}  // namespace

std::vector<Scene> PlanScenes(const Job& job, const std::vector<Outcome>& outcomes) {
  std::vector<Place> places;
  for (std::size_t i = 0; i < job.steps.size(); ++i) {
    auto scene = ShapesOf({job, outcomes, i});
    const auto extent = ExtentOf(scene);
    if (!extent.Empty()) {
      Settle(places, {i, extent, std::move(scene)});
    }
  }
  std::ranges::sort(places, {}, &Place::firstStep);
  std::vector<Scene> scenes;
  for (auto& place : places) {
    DropRepeated(place.scene.chainages);
    place.scene.title = places.size() == 1
                            ? "Plan"
                            : fmt::format("Plan {} of {}", scenes.size() + 1, places.size());
    scenes.push_back(std::move(place.scene));
  }
  return scenes;
}

}  // namespace kavo_app
