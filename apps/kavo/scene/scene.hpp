// What a drawing shows, in metres; how it comes on paper is decided elsewhere.
#pragma once

#include <string>
#include <vector>

#include "scene/coordinates.hpp"
#include "scene/place_index.hpp"

namespace kavo_app {

/// A place on a drawing, metres: east and north in a plan, along and height on a facade.
struct Spot {
  double right;
  double up;
};

/// A rectangle of the drawing; empty as it stands here.
struct Extent {
  double left = 1.0;
  double right = -1.0;
  double bottom = 1.0;
  double top = -1.0;

  bool Empty() const { return left > right; }
  bool Holds(Spot spot) const {
    return left <= spot.right && spot.right <= right && bottom <= spot.up && spot.up <= top;
  }
  /// Widens it to hold the spot.
  void Include(Spot spot);
  void Include(const Extent& other);
};

struct ScenePoint {
  Spot at;
  Role role;
  std::string name;
  std::vector<std::string> details;  ///< Shown under the name.
  std::string code{};                ///< Its feature code, shown behind the name; may be empty.

  /// A foot has no name of its own.
  bool HasLabel() const { return role != Role::kFoot && !(name.empty() && details.empty()); }
};

enum class Stroke {
  kSight,
  kConstruction,  ///< Walls, edges and lines that led to a point.
  kOffset,        ///< From a point to what it is measured against.
  kReference,     ///< Reference lines and arcs, traces of planes, design slopes.
  kBoundary,      ///< Of an area; closed.
};

struct ScenePath {
  std::vector<Spot> vertices;
  Stroke stroke;
};

/// A line or arc with ticks at even chainages; the vertices have even distances.
struct Chainage {
  std::vector<Spot> vertices;
  double length;  ///< Metres, along the curve.
};

/// Text at no point: the name of a line, or of an area.
struct Caption {
  Spot at;
  std::string text;
  std::vector<Spot> ring{};    ///< The area's boundary, closed; empty for a line.
  std::vector<Spot> others{};  ///< Where it may stand as well, the best first.
};

/// A small vector that is drawn enlarged, metres: a residual, or the standard deviations of a
/// station to the right and up.
struct Enlarged {
  Spot at;
  Spot size;
};

/// The direction and sense in which a coordinate runs on the drawing.
struct Axis {
  std::string name;
  double sign = 1.0;  ///< -1 where it grows to the left or downwards.
};

struct Scene {
  std::string title;
  Axis rightAxis{"east"};
  Axis upAxis{"north"};
  bool northUp = true;
  std::vector<ScenePoint> points;
  PlaceIndex places;  ///< Of the points; AddPoint keeps it.
  std::vector<ScenePath> paths;
  std::vector<Chainage> chainages;
  std::vector<Caption> captions;
  std::vector<Enlarged> residuals;
  std::vector<Enlarged> deviations;
};

/// Adds a point, or its role and details to the same point when it is there already.
void AddPoint(Scene& scene, ScenePoint point);

/// Adds a line through spots.
void AddPath(Scene& scene, Stroke stroke, std::vector<Spot> vertices);

/// Adds all that another scene shows.
void Append(Scene& scene, Scene other);

/// Leaves of chainages that lie on each other, but for what directions are rounded to, the first.
void DropRepeated(std::vector<Chainage>& chainages);

/// The rectangle of all points and lines.
Extent ExtentOf(const Scene& scene);

/// Metres in three decimals and a difference with its sign, for labels.
std::string MetresText(double metres);

/// Everything that a job can show: plans, one for each place where it works, then a facade for each
/// plane and a section for each design slope that something was measured against.
std::vector<Scene> ScenesOf(const Job& job, const std::vector<Outcome>& outcomes);

/// Parts of ScenesOf.
std::vector<Scene> PlanScenes(const Job& job, const std::vector<Outcome>& outcomes);
std::vector<Scene> FacadeScenes(const Job& job, const std::vector<Outcome>& outcomes);
std::vector<Scene> SectionScenes(const Job& job, const std::vector<Outcome>& outcomes);

}  // namespace kavo_app
