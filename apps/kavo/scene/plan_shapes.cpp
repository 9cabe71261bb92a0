#include "scene/plan_shapes.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numbers>

#include "base/geometry.hpp"
#include "scene/inner_spots.hpp"
#include "scene/reference_shapes.hpp"
#include "scene/setup_shapes.hpp"

namespace kavo_app {
namespace {

// --- straight lines between two points of a service

struct Segment {
  std::string_view service;
  std::string_view from;
  std::string_view to;
  Stroke stroke;
};

constexpr std::array kSegments = {
    Segment{"inverse", "station", "point", Stroke::kSight},
    Segment{"forward", "station", "point", Stroke::kSight},
    Segment{"radiate", "station", "point", Stroke::kSight},
    Segment{"offset-point", "from", "to", Stroke::kConstruction},
    Segment{"distance", "first", "second", Stroke::kConstruction},
    Segment{"two-point-target", "first", "point", Stroke::kConstruction},
    Segment{"slope", "reference", "point", Stroke::kOffset},
    Segment{"foot", "point", "foot", Stroke::kOffset},
    Segment{"point-on-edge", "from", "to", Stroke::kConstruction},
    Segment{"point-on-edge", "station", "point", Stroke::kSight},
    Segment{"column", "station", "point", Stroke::kSight},
    Segment{"line-point", "point", "foot", Stroke::kOffset},
    Segment{"wall-set", "p1", "p2", Stroke::kReference},
    Segment{"wall-point", "station", "point", Stroke::kSight},
    Segment{"plane-set", "p1", "p2", Stroke::kReference},
    Segment{"plane-point", "station", "point", Stroke::kSight},
};

void AddSegments(const StepView& step, Scene& scene) {
  for (const auto& segment : kSegments) {
    const auto* from = step.Find<CoordPt>(segment.from);
    const auto* to = step.Find<CoordPt>(segment.to);
    if (segment.service == step.GetStep().service->name && from != nullptr && to != nullptr) {
      AddPath(scene, segment.stroke, {InPlan(*from), InPlan(*to)});
    }
  }
}

// --- lines that meet in the computed points

void AddMeetingLines(const StepView& step, Scene& scene) {
  for (const auto* name : {"line", "line1", "line2"}) {
    const auto* line = step.Find<LineDef>(name);
    if (line == nullptr) {
      continue;
    }
    const bool byPoints = line->mode == LINE_MODE_TWO_POINTS;
    if (byPoints) {
      AddPath(scene, Stroke::kConstruction, {InPlan(line->p1), InPlan(line->p2)});
    }
    for (const auto& output : step.Result().outputs) {
      if (const auto* met = std::get_if<CoordPt>(&output)) {
        AddPath(scene, Stroke::kConstruction, {InPlan(line->p1), InPlan(*met)});
      }
    }
  }
}

// --- areas, corners and round columns

// The walls up to the hidden corner that both services compute.
void AddCorner(const StepView& step, Scene& scene) {
  const auto& corner = std::get<CoordPt>(*step.Out("point"));
  for (const auto* name : {"wallFrom", "point", "wall1From", "wall2From"}) {
    const auto* wall = std::get_if<CoordPt>(step.In(name));
    if (wall != nullptr) {
      AddPath(scene, Stroke::kConstruction, {InPlan(*wall), InPlan(corner)});
    }
  }
}

void AddParcel(const StepView& step, Scene& scene) {
  const auto& corners = *step.Find<std::vector<CoordPt>>("points");
  if (corners.empty()) {
    return;
  }
  std::vector<Spot> vertices;
  std::ranges::transform(corners, std::back_inserter(vertices), InPlan);
  vertices.push_back(vertices.front());
  scene.captions.push_back(
      {InnerSpots(vertices).front(),
       fmt::format("{}: {:.2f} m²", step.GetStep().name, std::get<double>(*step.Out("area"))),
       vertices});
  AddPath(scene, Stroke::kBoundary, std::move(vertices));
}

void AddColumn(const StepView& step, Scene& scene) {
  constexpr int kVertices = 72;
  const Spot centre = InPlan(*step.Find<CoordPt>("point"));
  const double radius = std::get<double>(*step.Out("radius"));
  std::vector<Spot> vertices;
  for (int i = 0; i <= kVertices; ++i) {
    const double turned = 2.0 * std::numbers::pi * i / kVertices;
    vertices.push_back(
        {centre.right + radius * std::sin(turned), centre.up + radius * std::cos(turned)});
  }
  AddPath(scene, Stroke::kReference, std::move(vertices));
}

struct Shape {
  std::string_view service;
  void (*add)(const StepView& step, Scene& scene);
};

constexpr std::array kShapes = {
    Shape{"line-set", AddLineSet},
    Shape{"transform-line", AddNewLine},
    Shape{"arc-by-tangents", AddArc},
    Shape{"arc-by-angle", AddArc},
    Shape{"arc-by-length", AddArc},
    Shape{"arc-point", AddArcOffset},
    Shape{"area", AddParcel},
    Shape{"column", AddColumn},
    Shape{"foot", AddMeetingLines},
    Shape{"intersect-lines", AddMeetingLines},
    Shape{"intersect-line-circle", AddMeetingLines},
    Shape{"corner-by-wall", AddCorner},
    Shape{"corner-by-walls", AddCorner},
};

// What a point measured against a line or arc is told by, or one staked from a line, at the point
// itself. The staked one has the step's name, and says itself when it is out of tolerance.
void AddPosition(const StepView& step, Scene& scene) {
  const auto* along = step.Find<double>("along");
  const auto* offset = step.Find<double>("offset");
  const auto* told = step.Find<CoordPt>("point");
  if (told == nullptr || along == nullptr || offset == nullptr) {
    return;
  }
  auto text = fmt::format("along {}, offset {}", MetresText(*along), MetresText(*offset));
  if (step.In("point") != nullptr) {
    text = fmt::format("{}: {}{}", step.GetStep().name, text, step.Flaw());
  }
  const auto at = InPlan(*told);
  for (auto& point : scene.points) {
    if (point.role != Role::kFoot && point.at.right == at.right && point.at.up == at.up) {
      point.details.push_back(text);
    }
  }
}

}  // namespace

Scene ShapesOf(const StepView& step) {
  Scene scene;
  for (const auto& point : PointsOf(step)) {
    AddPoint(scene, {InPlan(point.at), point.role, point.name,
                     point.good ? std::vector<std::string>{}
                                : std::vector<std::string>{"out of tolerance"},
                     point.code});
  }
  if (!step.Result().success) {
    return scene;
  }
  AddSegments(step, scene);
  AddSetUp(step, scene);
  AddPosition(step, scene);
  const auto shape = std::ranges::find(kShapes, step.GetStep().service->name, &Shape::service);
  if (shape != kShapes.end()) {
    shape->add(step, scene);
  }
  return scene;
}

}  // namespace kavo_app
