// Real and published data with known answers; tests/data/published/README.md explains the files.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "json_records.hpp"

namespace {

using namespace kavo_test;
using Json = nlohmann::json;

// The exports: inputs by name in, outputs by name out.

Json CoordToAngDist(const Json& in) {
  const CoordPt station = in.at("station");
  const CoordPt point = in.at("point");
  auto out = Untouched<AngDistRec>();
  const auto status = KavoCogoCoordToAngDist(&station, &point, &out);
  return {{"status", status}, {"out", out}};
}

Json AngDistToCoord(const Json& in) {
  const CoordPt station = in.at("station");
  const AngDistRec polar = in.at("polar");
  auto out = Untouched<CoordPt>();
  const auto status = KavoCogoAngDistToCoord(&station, &polar, &out);
  return {{"status", status}, {"out", out}};
}

Json CrossLine(const Json& in) {
  const LineDef line1 = in.at("line1");
  const LineDef line2 = in.at("line2");
  auto out = Untouched<CoordPt>();
  const auto status = KavoCogoCalcCrossLine(&line1, &line2, &out);
  return {{"status", status}, {"out", out}};
}

Json CrossLineCircle(const Json& in) {
  const LineDef line = in.at("line");
  const CoordPt centre = in.at("centre");
  auto out = Untouched<std::array<CoordPt, 2>>();
  const auto status = KavoCogoCalcCrossLineCircle(&line, &centre, in.at("radius"), out.data());
  return {{"status", status}, {"out", out}};
}

Json CrossCircle(const Json& in) {
  const CoordPt centre1 = in.at("centre1");
  const CoordPt centre2 = in.at("centre2");
  auto out = Untouched<std::array<CoordPt, 2>>();
  const auto status =
      KavoCogoCalcCrossCircle(&centre1, in.at("radius1"), &centre2, in.at("radius2"), out.data());
  return {{"status", status}, {"out", out}};
}

Json Area(const Json& in) {
  const std::vector<CoordPt> points = in.at("points");
  return {{"value", KavoCogoCalcArea(points.data(), static_cast<std::int16_t>(points.size()))}};
}

// Station set-up.

Json Benchmark(const Json& in) {
  return {
      {"value", KavoSTNSeaLevelCalcByBM(in.at("bmElev"), in.at("heightTerm"), in.at("vertDiff"))}};
}

Json ThreePointResection(const Json& in) {
  const StnAngleObs obs0 = in.at("obs0");
  const StnAngleObs obs1 = in.at("obs1");
  const StnAngleObs obs2 = in.at("obs2");
  auto result = Untouched<StnSetupResult>();
  const auto status = KavoSTN3PtResect(&obs0, &obs1, &obs2, &result);
  return {{"status", status}, {"result", result}};
}

Json TwoPointResection(const Json& in) {
  const StnDistObs obsA = in.at("obsA");
  const StnDistObs obsB = in.at("obsB");
  auto result = Untouched<StnSetupResult>();
  const auto status = KavoSTN2PtResect(&obsA, &obsB, &result);
  return {{"status", status}, {"result", result}};
}

Json MultiPointResection(const Json& in) {
  const std::vector<MultiResectInput> sights = in.at("sights");
  auto result = Untouched<MultiResectResult>();
  std::vector residuals(sights.size(), Untouched<MultiResectResidual>());
  const auto status = KavoSTNMultiResect(static_cast<std::int16_t>(sights.size()), sights.data(),
                                         &result, residuals.data());
  return {{"status", status}, {"result", result}, {"residuals", residuals}};
}

Json KnownLine(const Json& in) {
  const MultiResectInput sight1 = in.at("sight1");
  const MultiResectInput sight2 = in.at("sight2");
  auto result = Untouched<MultiResectResult>();
  auto accuracy = Untouched<std::array<MultiResectResidual, 2>>();
  const auto status =
      KavoSTNKnownLine(&sight1, &sight2, in.at("lineAzimuth"), &result, accuracy.data());
  return {{"status", status}, {"result", result}, {"accuracy", accuracy}};
}

const std::map<std::string, Json (*)(const Json&)>& Exports() {
  static const std::map<std::string, Json (*)(const Json&)> exports = {
      {"KavoCogoAngDistToCoord", AngDistToCoord},
      {"KavoCogoCalcArea", Area},
      {"KavoCogoCalcCrossCircle", CrossCircle},
      {"KavoCogoCalcCrossLine", CrossLine},
      {"KavoCogoCalcCrossLineCircle", CrossLineCircle},
      {"KavoCogoCoordToAngDist", CoordToAngDist},
      {"KavoSTN2PtResect", TwoPointResection},
      {"KavoSTN3PtResect", ThreePointResection},
      {"KavoSTNKnownLine", KnownLine},
      {"KavoSTNMultiResect", MultiPointResection},
      {"KavoSTNSeaLevelCalcByBM", Benchmark},
  };
  return exports;
}

// The files.

/// Where a path like out[1].north leads to.
Json::json_pointer Pointer(std::string path) {
  std::erase(path, ']');
  std::ranges::replace(path, '[', '/');
  std::ranges::replace(path, '.', '/');
  return Json::json_pointer('/' + path);
}

/// What a host makes of a reading before it calls the library.
Json Reduced(const Json& reading) {
  constexpr double kEarthRadius = 6371000.0;
  const IntAngle zenith = reading.value("va", ANGLE_QUARTER_CIRCLE);
  const double radians = zenith * (std::acos(-1.0) / ANGLE_HALF_CIRCLE);
  const double slopeDist = reading.value("slopeDist", 0.0);
  const double horizDist = reading.value("horizDist", slopeDist * std::sin(radians));
  double dElev = reading.value("vertDiff", slopeDist * std::cos(radians)) +
                 reading.value("ih", 0.0) - reading.value("th", 0.0);
  if (reading.contains("refraction")) {
    const double refraction = reading.at("refraction");
    dElev += (1 - refraction) * horizDist * horizDist / (2 * kEarthRadius);
  }
  return AngDistRec{reading.value("orient", 0) + reading.value("ha", 0), zenith, slopeDist,
                    horizDist, dElev};
}

/// A value of a file with angles as plain integers, earlier outputs in place and readings reduced.
Json Resolved(const Json& given, const Json& kept) {
  if (given.contains("int")) {
    return given.at("int");
  }
  if (given.contains("reduce")) {
    return Reduced(Resolved(given.at("reduce"), kept));
  }
  Json resolved = given;
  for (auto& child : resolved) {
    if (child.is_structured()) {
      child = Resolved(child, kept);
    }
  }
  if (given.contains("from")) {
    Json earlier = kept.at(Pointer(given.at("from")));
    if (given.size() == 1) {
      return earlier;
    }
    earlier.update(resolved);
    return earlier;
  }
  return resolved;
}

// Checks.

double Tolerance(const Json& tolerances, const std::string& path, const std::string& field,
                 bool isAngle) {
  for (const auto& key : {path, field}) {
    if (tolerances.contains(key)) {
      return tolerances.at(key);
    }
  }
  return tolerances.at(isAngle ? "angle" : "m");
}

double Difference(const std::string& field, double want, double got) {
  static const std::set<std::string> directions = {"azimuth",  "zenith", "orient",
                                                   "startDir", "endDir", "direction"};
  const double difference = got - want;
  return directions.contains(field) ? std::remainder(difference, ANGLE_FULL_CIRCLE) : difference;
}

void Check(const std::string& path, const Json& want, const Json& outputs, const Json& tolerances) {
  static const std::set<std::string> exact = {"status", "flags", "mode"};
  SCOPED_TRACE(path);
  const auto pointer = Pointer(path);
  ASSERT_TRUE(outputs.contains(pointer)) << "no such output in " << outputs;
  const Json& got = outputs.at(pointer);
  ASSERT_TRUE(got.is_number() && want.is_number());
  const std::string& field = pointer.back();
  if (exact.contains(field)) {
    EXPECT_EQ(want, got);
    return;
  }
  const double tolerance = Tolerance(tolerances, path, field, want.is_number_integer());
  EXPECT_LE(std::fabs(Difference(field, want, got)), tolerance)
      << "want " << want << ", got " << got;
}

struct PublishedCase {
  std::string name;
  std::string defaultExport;
  Json body;
};

void PrintTo(const PublishedCase& published, std::ostream* out) { *out << published.body["name"]; }

/// Makes the call of a step, checks its outputs and keeps them for the steps that follow.
void RunStep(const Json& step, const std::string& defaultExport, Json& kept) {
  const auto call = Exports().find(step.value("export", defaultExport));
  ASSERT_NE(Exports().end(), call) << "no adapter for the export";
  ASSERT_FALSE(step.at("expected").empty());
  const Json outputs = call->second(Resolved(step.at("inputs"), kept));
  const auto checkAll = [&](const char* wanted, const char* tolerances) {
    SCOPED_TRACE(wanted);
    const Json all = step.value(wanted, Json::object());
    for (const auto& [path, want] : all.items()) {
      Check(path, Resolved(want, kept), outputs, step.value(tolerances, Json::object()));
    }
  };
  checkAll("expected", "tolerance");
  checkAll("recomputed", "recomputed_tolerance");
  if (step.contains("as")) {
    kept[step.at("as").get<std::string>()] = outputs;
  }
}

class Published : public ::testing::TestWithParam<PublishedCase> {};

TEST_P(Published, Holds) {
  const auto& [name, defaultExport, body] = GetParam();
  Json kept = Json::object();
  for (const Json& step : body.value("steps", Json::array({body}))) {
    SCOPED_TRACE(step.value("id", ""));
    RunStep(step, body.value("export", defaultExport), kept);
  }
}

std::string TestName(const std::string& file, const std::string& title) {
  std::string name = file + "_" + title;
  std::ranges::replace_if(
      name, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

/// Every case of every file. What is wrong with a file ends the program, with its name.
std::vector<PublishedCase> Cases() {
  std::vector<PublishedCase> cases;
  for (const auto& entry : std::filesystem::directory_iterator(KAVO_TEST_DATA "/published")) {
    if (entry.path().extension() != ".json") {
      continue;
    }
    const Json group = Json::parse(std::ifstream(entry.path()));
    if (group.at("cases").size() != group.at("count")) {
      throw std::runtime_error(entry.path().string() + ": count is not the number of cases");
    }
    for (const Json& body : group.at("cases")) {
      cases.push_back({TestName(entry.path().stem(), body.at("name")), group.at("export"), body});
    }
  }
  std::ranges::sort(cases, {}, &PublishedCase::name);
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Data, Published, ::testing::ValuesIn(Cases()),
                         [](const auto& published) { return published.param.name; });

}  // namespace
