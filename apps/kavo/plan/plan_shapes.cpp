#include "plan/plan_shapes.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "base/geometry.hpp"
#include "plan/area_label.hpp"

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

// --- reference lines and arcs

void AddChainage(std::vector<Spot> vertices, double length, Scene& scene) {
  const auto before = scene.paths.size();
  AddPath(scene, Stroke::kReference, vertices);
  if (scene.paths.size() > before && length > 0.0) {
    scene.chainages.push_back({std::move(vertices), length});
  }
}

void AddBaseline(const std::string& name, const CoordPt& from, const CoordPt& to, Scene& scene) {
  AddChainage({InPlan(from), InPlan(to)}, std::hypot(to.north - from.north, to.east - from.east),
              scene);
  scene.captions.push_back({{(from.east + to.east) / 2.0, (from.north + to.north) / 2.0}, name});
}

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
  return {*arc.Find<CoordPt>("start"), Radians(std::get<IntAngle>(*arc.Out("startDir"))),
          std::get<double>(*arc.Out("radius")), std::get<double>(*arc.Out("arcLength"))};
}

void AddArc(const StepView& step, Scene& scene) {
  constexpr int kVertices = 180;
  const auto arc = ArcOf(step);
  std::vector<Spot> vertices;
  for (int i = 0; i <= kVertices; ++i) {
    vertices.push_back(arc.At(arc.length * i / kVertices));
  }
  scene.captions.push_back(
      {arc.At(arc.length / 2.0),
       fmt::format("{}, R {} m", step.GetStep().name, MetresText(std::fabs(arc.radius)))});
  AddChainage(std::move(vertices), arc.length, scene);
}

// From the point square to the arc or, past its ends, to the tangent. Where the instrument's
// formula leaves the geometry, as the step's note says, there is no such line.
void AddArcOffset(const StepView& step, Scene& scene) {
  if (!step.Result().note.empty()) {
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
      {InnermostSpot(vertices),
       fmt::format("{}: {:.2f} m²", step.GetStep().name, std::get<double>(*step.Out("area")))});
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

// --- set-ups

// A sight's residual as a vector: across it by the direction, along it by the distance.
Spot ResidualVector(const CoordPt& station, const CoordPt& point, const SightResidual& residual) {
  const double dNorth = point.north - station.north;
  const double dEast = point.east - station.east;
  const double distance = std::hypot(dNorth, dEast);
  const double across = Radians(residual.direction) * distance;
  const double ahead = residual.dist.value_or(0.0);
  return {(ahead * dEast + across * dNorth) / distance,
          (ahead * dNorth - across * dEast) / distance};
}

void AddSetUp(const StepView& step, Scene& scene) {
  const auto* sights = step.Find<std::vector<Sight>>("sights");
  const auto* station = step.Find<CoordPt>("station");
  if (sights == nullptr || station == nullptr) {
    return;
  }
  const auto* residuals = step.Find<std::vector<SightResidual>>("residuals");
  for (std::size_t i = 0; i < sights->size(); ++i) {
    const CoordPt& point = (*sights)[i].point;
    if (!HasPosition(point)) {
      continue;  // only the line's azimuth is known
    }
    AddPath(scene, Stroke::kSight, {InPlan(*station), InPlan(point)});
    if (residuals != nullptr) {
      scene.residuals.push_back({InPlan(point), ResidualVector(*station, point, (*residuals)[i])});
    }
  }
  const auto* north = step.Find<double>("sdNorth");
  const auto* east = step.Find<double>("sdEast");
  if (north != nullptr && east != nullptr) {
    scene.deviations.push_back({InPlan(*station), {*east, *north}});
  }
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

// What a point measured against a line or arc is told by: at the foot, if the service gives it.
void AddPosition(const StepView& step, Scene& scene) {
  const auto* along = step.Out("along");
  const auto* offset = step.Out("offset");
  if (along == nullptr || offset == nullptr || !Available(*along) || !Available(*offset)) {
    return;
  }
  const auto text = fmt::format("along {}, offset {}{}", MetresText(std::get<double>(*along)),
                                MetresText(std::get<double>(*offset)), step.Flaw());
  const auto at = InPlan(*step.Find<CoordPt>("point"));
  for (auto& point : scene.points) {
    if (step.Find<CoordPt>("foot") != nullptr) {
      if (point.name == step.GetStep().name) {
        point.details.push_back(text);
      }
    } else if (point.at.right == at.right && point.at.up == at.up) {
      point.details.push_back(fmt::format("{}: {}", step.GetStep().name, text));
    }
  }
}

}  // namespace

Scene ShapesOf(const StepView& step) {
  Scene scene;
  for (const auto& point : PointsOf(step)) {
    AddPoint(scene, {InPlan(point.at), point.role, point.name,
                     point.good ? std::vector<std::string>{}
                                : std::vector<std::string>{"out of tolerance"}});
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
