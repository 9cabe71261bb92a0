#include <nlohmann/json.hpp>

#include "base/geometry.hpp"
#include "plan/scene.hpp"
#include "report/coordinates.hpp"
#include "report/report.hpp"

namespace kavo_app {
namespace {

using Json = nlohmann::ordered_json;

Json Feature(const char* type, Json coordinates, Json properties) {
  return {{"type", "Feature"},
          {"geometry", {{"type", type}, {"coordinates", std::move(coordinates)}}},
          {"properties", std::move(properties)}};
}

Json PointFeature(const JobPoint& point) {
  Json coordinates = {point.at.east, point.at.north};
  if (HasElev(point.at)) {
    coordinates.push_back(point.at.elev);
  }
  Json properties{{"name", point.name}, {"role", RoleText(point.role)}};
  if (!point.service.empty()) {
    properties["service"] = point.service;
    properties["good"] = point.good;
    properties["code"] = point.code;
  }
  return Feature("Point", std::move(coordinates), std::move(properties));
}

Json Vertices(const ScenePath& path) {
  Json vertices = Json::array();
  for (const auto& spot : path.vertices) {
    vertices.push_back({spot.right, spot.up});
  }
  return vertices;
}

void AddPathFeatures(const Scene& plan, Json& features) {
  for (const auto& path : plan.paths) {
    if (path.stroke == Stroke::kBoundary) {
      features.push_back(Feature("Polygon", Json::array({Vertices(path)}), {{"role", "area"}}));
    } else if (path.stroke == Stroke::kReference) {
      features.push_back(Feature("LineString", Vertices(path), {{"role", "reference"}}));
    }
  }
}

}  // namespace

// "crs": null is how GeoJSON, before it settled on longitude and latitude, said that no
// transformation may be assumed; programs still take it so.
std::string GeoJson(const Job& job, const std::vector<Outcome>& outcomes) {
  Json features = Json::array();
  for (const auto& point : AllPoints(job, outcomes)) {
    features.push_back(PointFeature(point));
  }
  for (const auto& plan : PlanScenes(job, outcomes)) {
    AddPathFeatures(plan, features);
  }
  const Json json{{"type", "FeatureCollection"},
                  {"name", job.title.empty() ? job.file : job.title},
                  {"crs", nullptr},
                  {"coordinates",
                   "projected: east, north and elevation in metres of the job's own grid, not "
                   "longitude and latitude"},
                  {"features", std::move(features)}};
  return json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace kavo_app
