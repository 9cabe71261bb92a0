#include <optional>
#include <string_view>

#include "base/geometry.hpp"
#include "base/json_writer.hpp"
#include "base/plain_text.hpp"
#include "report/report.hpp"
#include "scene/coordinates.hpp"
#include "scene/scene.hpp"

namespace kavo_app {
namespace {

void WritePosition(const JsonWriter& json, double east, double north,
                   std::optional<double> elev = std::nullopt) {
  auto position = json.Array();
  position.Next().Number(east);
  position.Next().Number(north);
  if (elev) {
    position.Next().Number(*elev);
  }
}

void WriteVertices(const JsonWriter& json, const ScenePath& path) {
  auto vertices = json.Array();
  for (const auto& spot : path.vertices) {
    WritePosition(vertices.Next(), spot.right, spot.up);
  }
}

void WriteGeometry(const JsonWriter& json, const JobPoint& point) {
  auto geometry = json.Object();
  geometry.Key("type").Text("Point");
  WritePosition(geometry.Key("coordinates"), point.at.east, point.at.north,
                HasElev(point.at) ? std::optional(point.at.elev) : std::nullopt);
}

// A polygon is a list of rings; an area has one.
void WriteGeometry(const JsonWriter& json, const ScenePath& path) {
  auto geometry = json.Object();
  if (path.stroke == Stroke::kBoundary) {
    geometry.Key("type").Text("Polygon");
    auto rings = geometry.Key("coordinates").Array();
    WriteVertices(rings.Next(), path);
  } else {
    geometry.Key("type").Text("LineString");
    WriteVertices(geometry.Key("coordinates"), path);
  }
}

void WriteProperties(const JsonWriter& json, const JobPoint& point) {
  auto properties = json.Object();
  properties.Key("name").Text(point.name);
  properties.Key("role").Text(RoleText(point.role));
  if (!point.service.empty()) {
    properties.Key("service").Text(point.service);
    properties.Key("good").Boolean(point.flaw.empty());
    properties.Key("code").Text(point.code);
  }
}

void WriteProperties(const JsonWriter& json, const ScenePath& path) {
  auto properties = json.Object();
  properties.Key("name").Text(path.name);
  properties.Key("role").Text(path.stroke == Stroke::kBoundary ? "area" : "reference");
}

// A point or a path.
template <class Shown>
void WriteFeature(const JsonWriter& json, const Shown& shown) {
  auto feature = json.Object();
  feature.Key("type").Text("Feature");
  WriteGeometry(feature.Key("geometry"), shown);
  WriteProperties(feature.Key("properties"), shown);
}

void WriteFeatures(const JsonWriter& json, const Job& job, const std::vector<Outcome>& outcomes) {
  auto features = json.Array();
  for (const auto& point : AllPoints(job, outcomes)) {
    WriteFeature(features.Next(), point);
  }
  for (const auto& plan : PlanScenes(job, outcomes)) {
    for (const auto& path : plan.paths) {
      if (path.stroke == Stroke::kBoundary || path.stroke == Stroke::kReference) {
        WriteFeature(features.Next(), path);
      }
    }
  }
}

constexpr std::string_view kCoordinates =
    "projected: east, north and elevation in metres of the job's own grid, not longitude and "
    "latitude";

// "crs": null is how GeoJSON, before it settled on longitude and latitude, said that no
// transformation may be assumed; programs still take it so.
void WriteCollection(const JsonWriter& json, const Job& job, const std::vector<Outcome>& outcomes) {
  auto collection = json.Object();
  collection.Key("type").Text("FeatureCollection");
  collection.Key("name").Text(job.title.empty() ? AsUtf8(job.file) : job.title);
  collection.Key("crs").Null();
  collection.Key("coordinates").Text(kCoordinates);
  WriteFeatures(collection.Key("features"), job, outcomes);
}

}  // namespace

std::string GeoJson(const Job& job, const std::vector<Outcome>& outcomes) {
  JsonDocument collection;
  WriteCollection(collection.Start(), job, outcomes);
  return std::string(collection.Text()) + '\n';
}

}  // namespace kavo_app
