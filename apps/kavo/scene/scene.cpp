#include "scene/scene.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <numbers>

namespace kavo_app {
namespace {

// Farther away is no place on earth, and its differences would overflow.
constexpr double kFarthest = 1e9;

bool OnEarth(Spot spot) {
  return std::fabs(spot.right) < kFarthest && std::fabs(spot.up) < kFarthest;
}

// A point without a name is any that lies there.
bool IsSame(const ScenePoint& known, const ScenePoint& next) {
  return known.at.right == next.at.right && known.at.up == next.at.up &&
         (known.name == next.name || next.name.empty());
}

constexpr double kRounding = 1e-4;  // of a line's place, in its length

bool Same(const Chainage& one, const Chainage& other) {
  const auto near = [&one](Spot a, Spot b) {
    return std::hypot(a.right - b.right, a.up - b.up) <= kRounding * one.length;
  };
  return near(one.vertices.front(), other.vertices.front()) &&
         near(one.vertices[one.vertices.size() / 2], other.vertices[other.vertices.size() / 2]) &&
         near(one.vertices.back(), other.vertices.back());
}

// A number that is nearly the same for the same line, and for others only by chance: the weights
// have no common measure.
double MarkOf(const Chainage& chainage) {
  constexpr double kInverseSqrt3 = 0.5773502691896258;
  constexpr double kInverseSqrt7 = 0.3779644730092272;
  const auto& from = chainage.vertices.front();
  const auto& to = chainage.vertices.back();
  return from.right + from.up / std::numbers::sqrt2 + to.right * kInverseSqrt3 +
         to.up * kInverseSqrt7;
}

template <class T>
void Move(std::vector<T>& from, std::vector<T>& to) {
  std::ranges::move(from, std::back_inserter(to));
}

}  // namespace

void Extent::Include(Spot spot) {
  if (Empty()) {
    *this = {spot.right, spot.right, spot.up, spot.up};
    return;
  }
  left = std::min(left, spot.right);
  right = std::max(right, spot.right);
  bottom = std::min(bottom, spot.up);
  top = std::max(top, spot.up);
}

void Extent::Include(const Extent& other) {
  if (!other.Empty()) {
    Include(Spot{other.left, other.bottom});
    Include(Spot{other.right, other.top});
  }
}

void AddPoint(Scene& scene, ScenePoint point) {
  if (!OnEarth(point.at)) {
    return;
  }
  const auto found = scene.places.Find(
      point.at.up, point.at.right, [&](std::size_t i) { return IsSame(scene.points[i], point); });
  if (!found) {
    scene.places.Add(point.at.up, point.at.right, scene.points.size());
    scene.points.push_back(std::move(point));
    return;
  }
  auto* known = &scene.points[*found];
  known->role = std::max(known->role, point.role);
  if (known->code.empty()) {
    known->code = std::move(point.code);
  }
  for (auto& detail : point.details) {
    if (std::ranges::find(known->details, detail) == known->details.end()) {
      known->details.push_back(std::move(detail));
    }
  }
}

void AddPath(Scene& scene, Stroke stroke, std::vector<Spot> vertices) {
  if (std::ranges::all_of(vertices, OnEarth)) {
    scene.paths.push_back({std::move(vertices), stroke});
  }
}

void Append(Scene& scene, Scene other) {
  for (auto& point : other.points) {
    AddPoint(scene, std::move(point));
  }
  Move(other.paths, scene.paths);
  Move(other.chainages, scene.chainages);
  Move(other.captions, scene.captions);
  Move(other.residuals, scene.residuals);
  Move(other.deviations, scene.deviations);
}

void DropRepeated(std::vector<Chainage>& chainages) {
  constexpr double kNear = 4.0 * kRounding;  // above what the weights make of a rounding
  std::vector<Chainage> kept;
  std::multimap<double, std::size_t> byMark;
  for (auto& chainage : chainages) {
    const double mark = MarkOf(chainage);
    const double near = kNear * chainage.length;
    if (std::none_of(byMark.lower_bound(mark - near), byMark.upper_bound(mark + near),
                     [&](const auto& known) { return Same(kept[known.second], chainage); })) {
      byMark.emplace(mark, kept.size());
      kept.push_back(std::move(chainage));
    }
  }
  chainages = std::move(kept);
}

Extent ExtentOf(const Scene& scene) {
  Extent extent;
  for (const auto& point : scene.points) {
    extent.Include(point.at);
  }
  for (const auto& path : scene.paths) {
    for (const auto& spot : path.vertices) {
      extent.Include(spot);
    }
  }
  return extent;
}

std::string MetresText(double metres) {
  auto text = fmt::format("{:.3f}", metres);
  return text == "-0.000" ? "0.000" : text;
}

std::vector<Scene> ScenesOf(const Job& job, const std::vector<Outcome>& outcomes) {
  auto scenes = PlanScenes(job, outcomes);
  for (auto more : {FacadeScenes(job, outcomes), SectionScenes(job, outcomes)}) {
    Move(more, scenes);
  }
  return scenes;
}

}  // namespace kavo_app
