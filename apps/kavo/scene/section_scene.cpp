// Sections: what was staked against a design slope, square to the centre line.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "scene/scene.hpp"

namespace kavo_app {
namespace {

// Offset from the centre line and elevation of the two design points.
struct DesignSlope {
  Spot first;
  Spot second;

  double Side() const { return first.right < 0.0 || second.right < 0.0 ? -1.0 : 1.0; }
};

DesignSlope DesignOf(const StepView& slope) {
  return {{*slope.Find<double>("offset1"), *slope.Find<double>("elev1")},
          {*slope.Find<double>("offset2"), *slope.Find<double>("elev2")}};
}

Scene EmptySection(const StepView& slope) {
  const auto design = DesignOf(slope);
  Scene scene;
  scene.title = fmt::format("Section of {}", slope.GetStep().name);
  scene.northUp = false;
  scene.rightAxis = {"offset from the centre line"};
  scene.upAxis = {"elevation"};
  AddPath(scene, Stroke::kReference, {design.first, design.second});
  AddPoint(scene, {design.first, Role::kControl, "design 1", {}});
  AddPoint(scene, {design.second, Role::kControl, "design 2", {}});
  AddPath(scene, Stroke::kConstruction,
          {{0.0, std::min(design.first.up, design.second.up)},
           {0.0, std::max(design.first.up, design.second.up)}});
  scene.captions.push_back({{0.0, std::max(design.first.up, design.second.up)}, "centre line"});
  return scene;
}

// The measured point with its distances to the slope, level and plumb, and the slope drawn on to
// where they end.
void AddStake(const StepView& step, const DesignSlope& design, Scene& scene) {
  const Spot at{design.Side() * *step.Find<double>("horizDist"), step.Find<CoordPt>("point")->elev};
  ScenePoint point{at, Role::kComputed, step.GetStep().name, {}, step.GetStep().code};
  const auto add = [&](const char* field, const char* label, Spot end) {
    if (const auto* off = step.Find<double>(field)) {
      AddPath(scene, Stroke::kOffset, {at, end});
      AddPath(scene, Stroke::kReference, {design.second, end});
      point.details.push_back(fmt::format("{} {}", label, MetresText(*off)));
    }
  };
  const auto* level = step.Find<double>("horizDiff");
  const auto* plumb = step.Find<double>("vertDiff");
  add("horizDiff", "outside",
      {at.right - design.Side() * (level != nullptr ? *level : 0.0), at.up});
  add("vertDiff", "above", {at.right, at.up - (plumb != nullptr ? *plumb : 0.0)});
  AddPoint(scene, std::move(point));
}

}  // namespace

std::vector<Scene> SectionScenes(const Job& job, const std::vector<Outcome>& outcomes) {
  std::vector<Scene> scenes;
  std::map<std::size_t, std::size_t> known;  // the scene of each step that set a slope
  for (std::size_t i = 0; i < job.steps.size(); ++i) {
    const StepView step(job, outcomes, i);
    if (job.steps[i].service->name != "slope" || !step.Result().success) {
      continue;
    }
    const auto slope = step.BaseOf("slope");
    const auto [scene, isNew] = known.try_emplace(slope.Index(), scenes.size());
    if (isNew) {
      scenes.push_back(EmptySection(slope));
    }
    AddStake(step, DesignOf(slope), scenes[scene->second]);
  }
  return scenes;
}

}  // namespace kavo_app
