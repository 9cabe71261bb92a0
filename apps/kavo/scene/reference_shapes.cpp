#include "scene/reference_shapes.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/geometry.hpp"
#include "host/instrument.hpp"
#include "scene/plan_shapes.hpp"

namespace kavo_app {
namespace {

void AddChainage(const std::string& name, std::vector<Spot> vertices, double length, Scene& scene) {
  const auto before = scene.paths.size();
  AddPath(scene, Stroke::kReference, vertices, name);
  if (scene.paths.size() > before && length > 0.0) {
    scene.chainages.push_back({std::move(vertices), length});
  }
}

// A name that stands along a line, in its middle or where there is room.
template <class At>
void AddName(std::string name, At at, Scene& scene) {
  scene.captions.push_back({at(0.5), std::move(name), {}, {at(0.4), at(0.6), at(0.3), at(0.7)}});
}

void AddBaseline(const std::string& name, const CoordPt& from, const CoordPt& to, Scene& scene) {
  AddChainage(name, {InPlan(from), InPlan(to)},
              std::hypot(to.north - from.north, to.east - from.east), scene);
  const auto at = [&](double part) {
    return Spot{from.east + part * (to.east - from.east),
                from.north + part * (to.north - from.north)};
  };
  AddName(name, at, scene);
}

// The arc that a step has set: its outputs say all of it, whichever inputs defined it.
struct ArcShape {
  CoordPt start;
  double startAzimuth;  // radians, as the azimuth at a chainage
  double radius;        // metres; negative turns to the left
  double length;

  double AzimuthAt(double along) const { return startAzimuth + along / radius; }
  Spot At(double along) const {
    const double turned = along / radius;
    const double ahead = radius * std::sin(turned);
    const double right = radius * (1.0 - std::cos(turned));
    return {start.east + ahead * std::sin(startAzimuth) + right * std::cos(startAzimuth),
            start.north + ahead * std::cos(startAzimuth) - right * std::sin(startAzimuth)};
  }
};

ArcShape ArcOf(const StepView& arc) {
  const auto startDir = Referred(arc.Settings(), std::get<IntAngle>(*arc.Out("startDir")));
  return {*arc.Find<CoordPt>("start"), Radians(startDir), std::get<double>(*arc.Out("radius")),
          std::get<double>(*arc.Out("arcLength"))};
}

}  // namespace

void AddLineSet(const StepView& step, Scene& scene) {
  AddBaseline(step.GetStep().name, *step.Find<CoordPt>("from"), *step.Find<CoordPt>("to"), scene);
}

void AddNewLine(const StepView& step, Scene& scene) {
  const auto* start = step.Find<CoordPt>("start");
  const auto* end = step.Find<CoordPt>("end");
  if (start != nullptr && end != nullptr) {
    AddBaseline(step.GetStep().name, *start, *end, scene);
  }
}

void AddArc(const StepView& step, Scene& scene) {
  constexpr int kVertices = 180;
  const auto arc = ArcOf(step);
  std::vector<Spot> vertices;
  for (int i = 0; i <= kVertices; ++i) {
    vertices.push_back(arc.At(arc.length * i / kVertices));
  }
  AddName(
      fmt::format("{}, R {} m", step.GetStep().name, MetresText(std::fabs(arc.radius))),
      [&arc](double part) { return arc.At(part * arc.length); }, scene);
  AddChainage(step.GetStep().name, std::move(vertices), arc.length, scene);
}

// Where the formula of the instrument leaves the geometry, as the step warns, there is no such
// line.
void AddArcOffset(const StepView& step, Scene& scene) {
  if (!step.Result().warning.empty()) {
    return;
  }
  const auto arc = ArcOf(step.BaseOf("arc"));
  const double along = std::get<double>(*step.Out("along"));
  const double offset = std::get<double>(*step.Out("offset"));
  const double azimuth = arc.AzimuthAt(std::clamp(along, 0.0, arc.length));
  const Spot point = InPlan(*step.Find<CoordPt>("point"));
  AddPath(
      scene, Stroke::kOffset,
      {point, {point.right - offset * std::cos(azimuth), point.up + offset * std::sin(azimuth)}});
}

}  // namespace kavo_app
