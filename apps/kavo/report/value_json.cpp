#include "report/value_json.hpp"

#include <optional>

#include "base/geometry.hpp"
#include "service/faces.hpp"

namespace kavo_app {
namespace {

void WriteNumber(const JsonWriter& json, std::optional<double> number) {
  if (number) {
    json.Number(*number);
  } else {
    json.Null();
  }
}

void WriteAngle(const JsonWriter& json, std::optional<IntAngle> angle, AngleUnit angles) {
  if (!angle) {
    json.Null();
    return;
  }
  auto object = json.Object();
  object.Key("intAngle").Integer(*angle);
  object.Key("text").Text(AngleText(*angle, angles));
}

void WritePoint(const JsonWriter& json, const CoordPt& point) {
  auto object = json.Object();
  object.Key("north").Number(point.north);
  object.Key("east").Number(point.east);
  if (HasElev(point)) {
    object.Key("elev").Number(point.elev);
  }
}

void WritePoints(const JsonWriter& json, const std::vector<CoordPt>& points) {
  auto array = json.Array();
  for (const auto& point : points) {
    WritePoint(array.Next(), point);
  }
}

void WriteLine(const JsonWriter& json, const LineDef& line, AngleUnit angles) {
  auto object = json.Object();
  WritePoint(object.Key("from"), line.p1);
  if (line.mode == LINE_MODE_TWO_POINTS) {
    WritePoint(object.Key("to"), line.p2);
  } else {
    WriteAngle(object.Key("azimuth"), line.direction, angles);
  }
}

void WriteResiduals(const JsonWriter& json, const std::vector<SightResidual>& residuals,
                    AngleUnit angles) {
  auto array = json.Array();
  for (const auto& residual : residuals) {
    auto row = array.Next().Object();
    row.Key("sight").Text(residual.name);
    WriteAngle(row.Key("direction"), residual.direction, angles);
    WriteNumber(row.Key("distance"), residual.dist);
    WriteNumber(row.Key("elevation"), residual.elev);
  }
}

// What was not read is left out.
void WriteReading(const JsonWriter& json, const Reading& reading, AngleUnit angles) {
  auto object = json.Object();
  object.Key("face").Integer(reading.face2 ? 2 : 1);
  WriteAngle(object.Key("ha"), reading.ha, angles);
  if (reading.va) {
    WriteAngle(object.Key("va"), reading.va, angles);
  }
  if (reading.slopeDist != 0.0) {
    object.Key("slopeDist").Number(reading.slopeDist);
  }
  if (reading.horizDist != 0.0) {
    object.Key("horizDist").Number(reading.horizDist);
  }
  if (reading.heightDiff) {
    object.Key("heightDiff").Number(*reading.heightDiff);
  }
}

void WriteReadings(const JsonWriter& json, const Sight& sight, AngleUnit angles) {
  auto array = json.Array();
  for (const auto& reading : sight.readings) {
    WriteReading(array.Next(), reading, angles);
  }
}

// What the readings make. What only stands in for a reading is no measurement and is left null: a
// sight without a zenith reading counts as level.
void WriteReduced(ObjectWriter& object, const Sight& sight, AngleUnit angles) {
  const auto ifSo = [](bool told, auto value) {
    return told ? std::optional(value) : std::nullopt;
  };
  const bool measured = sight.slopeDist != 0.0;
  WriteAngle(object.Key("ha"), sight.ha, angles);
  WriteAngle(object.Key("va"), ifSo(sight.readings.front().va.has_value(), sight.va), angles);
  WriteNumber(object.Key("slopeDist"), ifSo(measured, sight.slopeDist));
  WriteNumber(object.Key("horizDist"), ifSo(measured, sight.horizDist));
  WriteNumber(object.Key("heightDiff"), ifSo(measured && sight.hasHeight, sight.heightDiff));
  WriteNumber(object.Key("th"), ifSo(sight.hasHeight, sight.targetHeight));
}

void WriteSight(const JsonWriter& json, const Sight& sight, AngleUnit angles) {
  auto object = json.Object();
  object.Key("sight").Text(sight.name);
  if (HasPosition(sight.point)) {
    WritePoint(object.Key("point"), sight.point);
  } else {
    object.Key("point").Null();
  }
  object.OptionalText("code", sight.code);
  WriteReadings(object.Key("readings"), sight, angles);
  if (sight.errors) {
    WriteAngle(object.Key("collimation"), sight.errors->collimation, angles);
    WriteAngle(object.Key("index"), sight.errors->index, angles);
  }
  WriteReduced(object, sight, angles);
}

void WriteFaces(const JsonWriter& json, const FaceSummary& faces, AngleUnit angles) {
  auto object = json.Object();
  object.Key("pairs").Integer(static_cast<std::int64_t>(faces.pairs));
  WriteAngle(object.Key("collimation"), faces.collimation, angles);
  WriteAngle(object.Key("collimationSpread"), faces.collimationSpread, angles);
  WriteAngle(object.Key("index"), faces.index, angles);
  WriteAngle(object.Key("indexSpread"), faces.indexSpread, angles);
}

void WriteSights(const JsonWriter& json, const std::vector<Sight>& sights, AngleUnit angles) {
  auto object = json.Object();
  {
    auto array = object.Key("sights").Array();
    for (const auto& sight : sights) {
      WriteSight(array.Next(), sight, angles);
    }
  }
  if (const auto faces = SummaryOfFaces(sights); faces.pairs > 0) {
    WriteFaces(object.Key("faces"), faces, angles);
  }
}

}  // namespace

void WriteJsonValue(const JsonWriter& json, const Value& value, AngleUnit angles) {
  if (const auto* angle = std::get_if<IntAngle>(&value)) {
    WriteAngle(json, *angle, angles);
  } else if (const auto* number = std::get_if<double>(&value)) {
    json.Number(*number);
  } else if (const auto* point = std::get_if<CoordPt>(&value)) {
    WritePoint(json, *point);
  } else if (const auto* line = std::get_if<LineDef>(&value)) {
    WriteLine(json, *line, angles);
  } else if (const auto* points = std::get_if<std::vector<CoordPt>>(&value)) {
    WritePoints(json, *points);
  } else if (const auto* sights = std::get_if<std::vector<Sight>>(&value)) {
    WriteSights(json, *sights, angles);
  } else if (const auto* residuals = std::get_if<std::vector<SightResidual>>(&value)) {
    WriteResiduals(json, *residuals, angles);
  } else {
    json.Null();
  }
}

void WriteJsonOutputs(const JsonWriter& json, const Service& service, const Outcome& outcome,
                      AngleUnit angles) {
  auto object = json.Object();
  for (std::size_t i = 0; i < outcome.outputs.size(); ++i) {
    if (service.outputs[i].kind != Kind::kFigure) {
      WriteJsonValue(object.Key(service.outputs[i].name), outcome.outputs[i], angles);
    }
  }
}

void WriteJsonStatus(ObjectWriter& object, const Outcome& outcome) {
  object.Key("status").Integer(outcome.status);
  object.OptionalText("statusName", outcome.statusName);
}

}  // namespace kavo_app
