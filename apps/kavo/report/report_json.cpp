#include <algorithm>
#include <cmath>
#include <iterator>
#include <nlohmann/json.hpp>

#include "base/geometry.hpp"
#include "job/faces.hpp"
#include "report/report.hpp"

namespace kavo_app {
namespace {

using Json = nlohmann::ordered_json;

// JSON has no word for what is not finite, so that is text.
Json NumberJson(double number) {
  if (std::isfinite(number)) {
    return number;
  }
  if (std::isnan(number)) {
    return "not a number";
  }
  return number > 0.0 ? "infinite" : "minus infinite";
}

Json AngleJson(IntAngle angle, AngleUnit unit) {
  return {{"intAngle", angle}, {"text", AngleText(angle, unit)}};
}

Json PointJson(const CoordPt& point) {
  Json json{{"north", NumberJson(point.north)}, {"east", NumberJson(point.east)}};
  if (HasElev(point)) {
    json["elev"] = NumberJson(point.elev);
  }
  return json;
}

Json LineJson(const LineDef& line, AngleUnit unit) {
  Json json{{"from", PointJson(line.p1)}};
  if (line.mode == LINE_MODE_TWO_POINTS) {
    json["to"] = PointJson(line.p2);
  } else {
    json["azimuth"] = AngleJson(line.direction, unit);
  }
  return json;
}

Json ResidualsJson(const std::vector<SightResidual>& residuals, AngleUnit unit) {
  Json json = Json::array();
  for (const auto& residual : residuals) {
    Json row{{"sight", residual.name}, {"direction", AngleJson(residual.direction, unit)}};
    row["distance"] = residual.dist ? NumberJson(*residual.dist) : Json();
    row["elevation"] = residual.elev ? NumberJson(*residual.elev) : Json();
    json.push_back(std::move(row));
  }
  return json;
}

Json PointsJson(const std::vector<CoordPt>& points) {
  Json json = Json::array();
  std::ranges::transform(points, std::back_inserter(json), PointJson);
  return json;
}

Json ReadingJson(const Reading& reading, AngleUnit unit) {
  Json json{{"face", reading.face2 ? 2 : 1}, {"ha", AngleJson(reading.ha, unit)}};
  if (reading.va) {
    json["va"] = AngleJson(*reading.va, unit);
  }
  if (reading.slopeDist != 0.0) {
    json["slopeDist"] = NumberJson(reading.slopeDist);
  }
  if (reading.horizDist != 0.0) {
    json["horizDist"] = NumberJson(reading.horizDist);
  }
  if (reading.heightDiff) {
    json["heightDiff"] = NumberJson(*reading.heightDiff);
  }
  return json;
}

Json SightJson(const Sight& sight, AngleUnit unit) {
  Json json{{"sight", sight.name},
            {"point", HasPosition(sight.point) ? PointJson(sight.point) : Json()}};
  if (!sight.code.empty()) {
    json["code"] = sight.code;
  }
  json["readings"] = Json::array();
  for (const auto& reading : sight.readings) {
    json["readings"].push_back(ReadingJson(reading, unit));
  }
  if (sight.errors) {
    json["collimation"] = AngleJson(sight.errors->collimation, unit);
    json["index"] = sight.errors->index ? AngleJson(*sight.errors->index, unit) : Json();
  }
  json["ha"] = AngleJson(sight.ha, unit);
  json["va"] = AngleJson(sight.va, unit);
  const bool measured = sight.slopeDist != 0.0;
  json["slopeDist"] = measured ? NumberJson(sight.slopeDist) : Json();
  json["horizDist"] = measured ? NumberJson(sight.horizDist) : Json();
  json["heightDiff"] = measured && sight.hasHeight ? NumberJson(sight.heightDiff) : Json();
  json["th"] = NumberJson(sight.targetHeight);
  return json;
}

Json SightsJson(const std::vector<Sight>& sights, AngleUnit unit) {
  Json json{{"sights", Json::array()}};
  for (const auto& sight : sights) {
    json["sights"].push_back(SightJson(sight, unit));
  }
  const auto summary = SummaryOfFaces(sights);
  if (summary.pairs > 0) {
    json["faces"] = {
        {"pairs", summary.pairs},
        {"collimation", AngleJson(summary.collimation, unit)},
        {"collimationSpread", AngleJson(summary.collimationSpread, unit)},
        {"index", summary.index ? AngleJson(*summary.index, unit) : Json()},
        {"indexSpread", summary.indexSpread ? AngleJson(*summary.indexSpread, unit) : Json()}};
  }
  return json;
}

Json ValueJson(const Value& value, AngleUnit unit) {
  if (const auto* angle = std::get_if<IntAngle>(&value)) {
    return AngleJson(*angle, unit);
  }
  if (const auto* number = std::get_if<double>(&value)) {
    return NumberJson(*number);
  }
  if (const auto* point = std::get_if<CoordPt>(&value)) {
    return PointJson(*point);
  }
  if (const auto* line = std::get_if<LineDef>(&value)) {
    return LineJson(*line, unit);
  }
  if (const auto* points = std::get_if<std::vector<CoordPt>>(&value)) {
    return PointsJson(*points);
  }
  if (const auto* sights = std::get_if<std::vector<Sight>>(&value)) {
    return SightsJson(*sights, unit);
  }
  if (const auto* residuals = std::get_if<std::vector<SightResidual>>(&value)) {
    return ResidualsJson(*residuals, unit);
  }
  return nullptr;
}

Json InputsJson(const Step& step, const Outcome& outcome, AngleUnit unit) {
  Json json = Json::object();
  for (std::size_t i = 0; i < step.inputs.size(); ++i) {
    if (step.inputs[i].text.empty()) {
      continue;
    }
    const auto name = std::string(step.service->inputs[i].name);
    json[name] = {{"written", step.inputs[i].text}};
    const bool isBase =
        step.service->inputs[i].kind == Kind::kFigure;  // its own step says all of it
    if (outcome.ran && Available(outcome.inputs[i]) && !isBase) {
      json[name]["value"] = ValueJson(outcome.inputs[i], unit);
    }
  }
  return json;
}

Json ExpectedJson(const Step& step, const Outcome& outcome, std::size_t index, AngleUnit unit) {
  const auto& expected = step.expected[index];
  const auto& comparison = outcome.comparisons[index];
  Json json{{"output", step.service->outputs[expected.output].name}};
  if (!expected.component.empty()) {
    json["component"] = expected.component;
  }
  json["expected"] = ValueJson(expected.value, unit);
  json["computed"] = ValueJson(comparison.computed, unit);
  if (Available(comparison.computed)) {
    json["difference"] =
        std::visit([unit](auto d) { return ValueJson(d, unit); }, comparison.difference);
  }
  if (comparison.within) {
    json["within"] = *comparison.within;
  }
  return json;
}

Json StepJson(const Step& step, const Outcome& outcome, AngleUnit unit) {
  Json json{{"name", step.name},
            {"service", step.service->name},
            {"export", step.service->exportName},
            {"remark", step.note},
            {"inputs", InputsJson(step, outcome, unit)},
            {"ran", outcome.ran},
            {"success", outcome.success},
            {"good", outcome.Good()}};
  if (!step.code.empty()) {
    json["code"] = step.code;
  }
  if (outcome.ran) {
    json["status"] = outcome.status;
    if (!outcome.statusName.empty()) {
      json["statusName"] = outcome.statusName;
    }
  }
  json["meaning"] = outcome.sentence;
  if (!outcome.note.empty()) {
    json["note"] = outcome.note;
  }
  if (!outcome.warning.empty()) {
    json["warning"] = outcome.warning;
  }
  Json outputs = Json::object();
  for (std::size_t i = 0; i < outcome.outputs.size(); ++i) {
    if (step.service->outputs[i].kind == Kind::kFigure) {
      continue;  // the inputs say all of it
    }
    outputs[std::string(step.service->outputs[i].name)] = ValueJson(outcome.outputs[i], unit);
  }
  json["outputs"] = outputs;
  for (std::size_t i = 0; i < step.expected.size(); ++i) {
    json["expected"].push_back(ExpectedJson(step, outcome, i, unit));
  }
  return json;
}

}  // namespace

std::string JsonReport(const Job& job, const std::vector<Outcome>& outcomes) {
  Json json{{"format", "kavo report 1"},
            {"title", job.title},
            {"source", job.source},
            {"job", job.file},
            {"lengths", "m"},
            {"areas", "m2"},
            {"angles", UnitText(job.angles)},
            {"settings", job.settingTexts},
            {"good", std::ranges::all_of(outcomes, &Outcome::Good)},
            {"steps", Json::array()}};
  for (std::size_t i = 0; i < job.steps.size(); ++i) {
    json["steps"].push_back(StepJson(job.steps[i], outcomes[i], job.angles));
  }
  constexpr int kIndent = 2;
  return json.dump(kIndent, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace kavo_app
