// Facades: what was sighted on a plane, in the plane's own coordinates, as seen by the instrument.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

#include "base/geometry.hpp"
#include "scene/scene.hpp"

namespace kavo_app {
namespace {

// A place in a plane, metres: along from its first point, and across. On a vertical plane by two
// points, across is the height.
struct InPlane {
  double along;
  double across;
};

// How the plane's coordinates come on paper: so much of each goes to the right and up.
struct Turn {
  InPlane right;
  InPlane up;

  Spot On(InPlane at) const {
    return {right.along * at.along + right.across * at.across,
            up.along * at.along + up.across * at.across};
  }
};

struct Facade {
  std::vector<InPlane> known;  // the points that set it
  Turn turn;
  std::string acrossName;
};

// To the right of the line from p1 to p2, metres.
double OffsetFrom(const CoordPt& p1, const CoordPt& p2, const CoordPt& point) {
  const double dNorth = p2.north - p1.north;
  const double dEast = p2.east - p1.east;
  return ((point.east - p1.east) * dNorth - (point.north - p1.north) * dEast) /
         std::hypot(dNorth, dEast);
}

// Who stands on the right of the wall's way from p1 to p2 sees p2 on the right.
Facade WallFacade(const StepView& wall, const StepView& sight) {
  const auto& p1 = *wall.Find<CoordPt>("p1");
  const auto& p2 = *wall.Find<CoordPt>("p2");
  const double length = std::hypot(p2.north - p1.north, p2.east - p1.east);
  const double side = OffsetFrom(p1, p2, *sight.Find<CoordPt>("station")) < 0.0 ? -1.0 : 1.0;
  Facade facade{{}, {{side, 0.0}, {0.0, 1.0}}, "height"};
  if (HasElev(p1) && HasElev(p2)) {
    facade.known = {{0.0, 0.0}, {length, p2.elev - p1.elev}};
  }
  return facade;
}

// Where the sky is less than this across the plane, elevations do not tell how far across a point
// is.
constexpr double kUpright = 0.1;

// How much of the way up goes along and across a plane, which the sighted point tells.
InPlane SkyOf(const StepView& plane, const StepView& sight, double length) {
  const auto& p1 = *plane.Find<CoordPt>("p1");
  const auto& p2 = *plane.Find<CoordPt>("p2");
  const double along = std::get<double>(*sight.Out("along"));
  const double across = std::get<double>(*sight.Out("across"));
  const double skyAlong = (p2.elev - p1.elev) / length;
  const double height = sight.Find<CoordPt>("point")->elev - p1.elev;
  return {skyAlong, across == 0.0 ? 0.0 : (height - along * skyAlong) / across};
}

// Across is to the right of along as the instrument sees it, so turning the sheet by quarter
// circles never mirrors. The turn taken is the one that has the sky most upward.
Turn UprightTurn(InPlane sky) {
  static constexpr std::array kTurns = {
      Turn{{1.0, 0.0}, {0.0, -1.0}},
      Turn{{-1.0, 0.0}, {0.0, 1.0}},
      Turn{{0.0, 1.0}, {1.0, 0.0}},
      Turn{{0.0, -1.0}, {-1.0, 0.0}},
  };
  return *std::ranges::max_element(kTurns, {}, [sky](const Turn& turn) { return turn.On(sky).up; });
}

Facade PlaneFacade(const StepView& plane, const StepView& sight) {
  const auto& p1 = *plane.Find<CoordPt>("p1");
  const auto& p2 = *plane.Find<CoordPt>("p2");
  const double length = std::hypot(p2.north - p1.north, p2.east - p1.east, p2.elev - p1.elev);
  const auto sky = SkyOf(plane, sight, length);
  Facade facade{{{0.0, 0.0}, {length, 0.0}}, UprightTurn(sky), "across"};
  const auto* p3 = plane.Find<CoordPt>("p3");
  if (p3 != nullptr && std::fabs(sky.across) > kUpright) {
    const double along =
        ((p3->north - p1.north) * (p2.north - p1.north) +
         (p3->east - p1.east) * (p2.east - p1.east) + (p3->elev - p1.elev) * (p2.elev - p1.elev)) /
        length;
    facade.known.push_back({along, (p3->elev - p1.elev - along * sky.along) / sky.across});
  }
  return facade;
}

Axis AxisOf(InPlane part, const std::string& acrossName) {
  return part.along != 0.0 ? Axis{"along", part.along} : Axis{acrossName, part.across};
}

Scene EmptyFacade(const StepView& plane, const StepView& sight, const Facade& facade) {
  const auto station = FindField(sight.GetStep().service->inputs, "station");
  Scene scene;
  scene.title = fmt::format("Facade \"{}\" seen from {}", plane.GetStep().name,
                            sight.GetStep().inputs[*station].text);
  scene.northUp = false;
  scene.rightAxis = AxisOf(facade.turn.right, facade.acrossName);
  scene.upAxis = AxisOf(facade.turn.up, facade.acrossName);
  std::vector<Spot> line;
  for (std::size_t i = 0; i < facade.known.size(); ++i) {
    line.push_back(facade.turn.On(facade.known[i]));
    AddPoint(scene, {line.back(), Role::kControl, plane.GetStep().inputs[i].text, {}});
  }
  line.resize(std::min<std::size_t>(line.size(), 2));
  AddPath(scene, Stroke::kConstruction, std::move(line));
  return scene;
}

// A facade is seen from one station: the other side of a plane is its mirror image.
using View = std::tuple<std::size_t, double, double>;

View ViewOf(const StepView& plane, const StepView& sight) {
  const auto& station = *sight.Find<CoordPt>("station");
  return {plane.Index(), station.north, station.east};
}

bool IsOnWall(const StepView& sight) { return sight.In("wall") != nullptr; }

// What was found where a sight meets the plane; nothing for other steps.
std::optional<InPlane> PlaceOnPlane(const StepView& sight) {
  const auto service = sight.GetStep().service->name;
  const auto* along = sight.Find<double>("along");
  const auto* across = sight.Find<double>(IsOnWall(sight) ? "height" : "across");
  if ((service != "wall-point" && service != "plane-point") || along == nullptr ||
      across == nullptr) {
    return std::nullopt;
  }
  return InPlane{*along, *across};
}

void AddSighted(const StepView& sight, InPlane at, const Facade& facade, Scene& scene) {
  auto position = fmt::format("along {}, {} {}{}", MetresText(at.along), facade.acrossName,
                              MetresText(at.across), sight.Flaw());
  AddPoint(scene, {facade.turn.On(at),
                   Role::kComputed,
                   sight.GetStep().name,
                   {std::move(position)},
                   sight.GetStep().code});
}

}  // namespace

std::vector<Scene> FacadeScenes(const Job& job, const std::vector<Outcome>& outcomes) {
  std::vector<Scene> scenes;
  std::map<View, std::pair<Facade, std::size_t>> known;
  for (std::size_t i = 0; i < job.steps.size(); ++i) {
    const StepView sight(job, outcomes, i);
    const auto at = PlaceOnPlane(sight);
    if (!at) {
      continue;
    }
    const auto plane = sight.BaseOf(IsOnWall(sight) ? "wall" : "plane");
    const auto [view, isNew] = known.try_emplace(ViewOf(plane, sight));
    auto& [facade, scene] = view->second;
    if (isNew) {
      facade = IsOnWall(sight) ? WallFacade(plane, sight) : PlaneFacade(plane, sight);
      scene = scenes.size();
      scenes.push_back(EmptyFacade(plane, sight, facade));
    }
    AddSighted(sight, *at, facade, scenes[scene]);
  }
  return scenes;
}

}  // namespace kavo_app
