#include "pipe/json_values.hpp"

#include <fmt/format.h>

#include "job/field_rules.hpp"
#include "job/sight_reader.hpp"
#include "pipe/json_toml.hpp"

namespace kavo_app {
namespace {

IntAngle AngleOf(const JsonNode& node, AngleUnit angles, const JsonPlace& place) {
  const auto reading = node.is_number() ? ReadAngle(JsonNumber(node, place), angles)
                                        : ReadAngle(JsonText(node, place), angles);
  if (!reading.angle) {
    place.Fail(reading.complaint);
  }
  return *reading.angle;
}

CoordPt PointOf(const JsonNode& node, const JsonPlace& place) {
  constexpr std::string_view kForm = R"({"north": ..., "east": ..., "elev": ...})";
  return ReadPointFields(JsonFields(JsonObject(node, place, kForm), place, kPointKeys));
}

LineDef LineOf(const JsonNode& node, AngleUnit angles, const JsonPlace& place) {
  const JsonFields fields(JsonObject(node, place), place, kLineKeys);
  LineDef line{};
  line.mode = ReadLineMode(fields);
  line.p1 = PointOf(*fields.Find("from"), fields.PlaceOf("from"));
  if (line.mode == LINE_MODE_TWO_POINTS) {
    line.p2 = PointOf(*fields.Find("to"), fields.PlaceOf("to"));
  } else {
    line.direction = AngleOf(*fields.Find("azimuth"), angles, fields.PlaceOf("azimuth"));
  }
  return line;
}

std::vector<CoordPt> PointsOf(const JsonNode& node, const JsonPlace& place) {
  std::vector<CoordPt> points;
  for (const JsonNode element : JsonList(node, place)) {
    if (points.size() == kMostPoints) {
      place.Fail(fmt::format("has more than {} points", kMostPoints));
    }
    points.push_back(PointOf(element, {&place, {}, points.size() + 1}));
  }
  return points;
}

// Sights can be given in many ways: they go through the reader of jobs, which knows what is right.
std::vector<Sight> SightsOf(const JsonFields& fields, const Field& field, AngleUnit angles) {
  const auto place = fields.PlaceOf(field.name);
  const auto list = JsonList(*fields.Find(field.name), place);  // a job could also name a file
  const toml::table table{{field.name, TomlOf(list, place)}};
  const Names noNames;
  const TomlReader reader(table, "", "");
  const auto input =
      ReadSights(InputReader(noNames, angles, {}), reader, *reader.Find(field.name), field);
  std::vector<Sight> sights;
  for (const auto& part : input.parts) {
    sights.push_back(std::get<std::vector<Sight>>(part.value).front());
    if (!part.parts.empty()) {
      sights.back().point = std::get<CoordPt>(part.parts.front().value);
    }
  }
  return sights;
}

}  // namespace

Value ReadJsonValue(const JsonFields& fields, const Field& field, AngleUnit angles) {
  const auto& node = *fields.Find(field.name);
  const auto place = fields.PlaceOf(field.name);
  switch (field.kind) {
    case Kind::kPoint:
      return PointOf(node, place);
    case Kind::kPoints:
      return PointsOf(node, place);
    case Kind::kLine:
      return LineOf(node, angles, place);
    case Kind::kSights:
      return SightsOf(fields, field, angles);
    default:
      break;
  }
  if (IsAngle(field.kind)) {
    return AngleOf(node, angles, place);
  }
  return JsonNumber(node, place);
}

}  // namespace kavo_app
