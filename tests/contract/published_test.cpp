// Real and published data with known answers; tests/data/published/README.md explains the files.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "call.hpp"
#include "json_records.hpp"

namespace {

using namespace kavo_test;
using Json = nlohmann::json;

/// Calls an export with its inputs by the names of its parameters, and gives its outputs by theirs.
template <auto Export, std::size_t Count = 1>
Json CallByName(const std::string& parameters, const Json& in) {
  std::istringstream words(parameters);
  const std::vector<std::string> names{std::istream_iterator<std::string>(words), {}};
  Call<Export, Count> call;
  call.VisitArguments([&](std::size_t number, auto& argument) {
    if constexpr (requires { argument.value; }) {
      in.at(names.at(number)).get_to(argument.value);
    }
  });
  Json out = Json::object();
  if constexpr (std::is_same_v<typename Call<Export, Count>::Result, Nothing>) {
    call.Make(Export);
  } else {
    out["status"] = call.Make(Export);
  }
  call.VisitArguments([&](std::size_t number, auto& argument) {
    if constexpr (requires { argument.items; }) {
      out[names.at(number)] = Count == 1 ? Json(argument.items[0]) : Json(argument.items);
    }
  });
  return out;
}

Json Area(const std::string& /*parameters*/, const Json& in) {
  const std::vector<CoordPt> points = in.at("points");
  return {{"value", KavoCogoCalcArea(points.data(), static_cast<std::int16_t>(points.size()))}};
}

Json Benchmark(const std::string& /*parameters*/, const Json& in) {
  return {
      {"value", KavoSTNSeaLevelCalcByBM(in.at("bmElev"), in.at("heightTerm"), in.at("vertDiff"))}};
}

Json MultiResect(const std::string& /*parameters*/, const Json& in) {
  const std::vector<MultiResectInput> sights = in.at("sights");
  auto result = Untouched<MultiResectResult>();
  std::vector residuals(sights.size(), Untouched<MultiResectResidual>());
  const auto status = KavoSTNMultiResect(static_cast<std::int16_t>(sights.size()), sights.data(),
                                         &result, residuals.data());
  return {{"status", status}, {"result", result}, {"residuals", residuals}};
}

Json KnownLine(const std::string& /*parameters*/, const Json& in) {
  const MultiResectInput sight1 = in.at("sight1");
  const MultiResectInput sight2 = in.at("sight2");
  auto result = Untouched<MultiResectResult>();
  auto accuracy = Untouched<std::array<MultiResectResidual, 2>>();
  const auto status =
      KavoSTNKnownLine(&sight1, &sight2, in.at("lineAzimuth"), &result, accuracy.data());
  return {{"status", status}, {"result", result}, {"accuracy", accuracy}};
}

struct Adapter {
  Json (*call)(const std::string& parameters, const Json& in);
  std::string parameters;  // their names, in order
};

const std::map<std::string, Adapter>& Exports() {
  static const std::map<std::string, Adapter> exports = {
      {"KavoCogoCalcArea", {Area, ""}},
      {"KavoCogoCoordToAngDist", {CallByName<KavoCogoCoordToAngDist>, "station point out"}},
      {"KavoCogoAngDistToCoord", {CallByName<KavoCogoAngDistToCoord>, "station polar out"}},
      {"KavoCogoCalcSlopeByDist", {CallByName<KavoCogoCalcSlopeByDist>, "horizDist dElev out"}},
      {"KavoCogoCalcCrossLine", {CallByName<KavoCogoCalcCrossLine>, "line1 line2 out"}},
      {"KavoCogoCalcCrossLineCircle",
       {CallByName<KavoCogoCalcCrossLineCircle, 2>, "line centre radius out"}},
      {"KavoCogoCalcCrossCircle",
       {CallByName<KavoCogoCalcCrossCircle, 2>, "centre1 radius1 centre2 radius2 out"}},
      {"KavoCogoCalcPtLine", {CallByName<KavoCogoCalcPtLine>, "line point foot"}},
      {"KavoCogoOffsetToCoord", {CallByName<KavoCogoOffsetToCoord>, "a b along offset out"}},
      {"KavoCogoCalcTransLine", {CallByName<KavoCogoCalcTransLine>, "line rotation offset out"}},
      {"KavoREMSetBase", {CallByName<KavoREMSetBase>, "base"}},
      {"KavoREMCalc", {CallByName<KavoREMCalc>, "ha zenith out"}},
      {"KavoRDMCalcByCoord", {CallByName<KavoRDMCalcByCoord>, "first second out"}},
      {"KavoBRSetSlope", {CallByName<KavoBRSetSlope>, "elev1 offset1 elev2 offset2"}},
      {"KavoBRCalc", {CallByName<KavoBRCalc>, "reference point out"}},
      {"KavoCalc2PtTarget",
       {CallByName<KavoCalc2PtTarget>, "first second nominal target separation out"}},
      {"KavoREFSetBaseLine", {CallByName<KavoREFSetBaseLine>, "start end"}},
      {"KavoREFCalc", {CallByName<KavoREFCalc>, "point out"}},
      {"KavoREFSetArcByCoord",
       {CallByName<KavoREFSetArcByCoord>, "start end startTangent endTangent"}},
      {"KavoREFSetArcByRadiusHAngle",
       {CallByName<KavoREFSetArcByRadiusHAngle>, "start startTangent radius endTangent"}},
      {"KavoREFSetArcByRadiusArcLen",
       {CallByName<KavoREFSetArcByRadiusArcLen>, "start startTangent radius arcLength"}},
      {"KavoREFGetArcParams", {CallByName<KavoREFGetArcParams>, "out"}},
      {"KavoREFCalcArc", {CallByName<KavoREFCalcArc>, "point out"}},
      {"KavoREFSet2PtBasePlane", {CallByName<KavoREFSet2PtBasePlane>, "p1 p2"}},
      {"KavoREFCalc2PtPlane",
       {CallByName<KavoREFCalc2PtPlane>,
        "ha va station instrumentHeight result alongPlane heightOnPlane"}},
      {"KavoSTNSeaLevelCalcByBM", {Benchmark, ""}},
      {"KavoSTN3PtResect", {CallByName<KavoSTN3PtResect>, "obs0 obs1 obs2 result"}},
      {"KavoSTN2PtResect", {CallByName<KavoSTN2PtResect>, "obsA obsB result"}},
      {"KavoSTNMultiResect", {MultiResect, ""}},
      {"KavoSTNKnownLine", {KnownLine, ""}},
  };
  return exports;
}

// The files.

/// Where a path like out[1].north leads to.
Json::json_pointer Pointer(std::string path) {
  std::erase(path, ']');
  std::replace(path.begin(), path.end(), '[', '/');
  std::replace(path.begin(), path.end(), '.', '/');
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
    earlier.erase("from");
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
  const auto& [function, parameters] = call->second;
  const Json outputs = function(parameters, Resolved(step.at("inputs"), kept));
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
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
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
      cases.push_back(
          {TestName(entry.path().stem().string(), body.at("name")), group.at("export"), body});
    }
  }
  std::sort(cases.begin(), cases.end(),
            [](const auto& a, const auto& b) { return a.name < b.name; });
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Data, Published, ::testing::ValuesIn(Cases()),
                         [](const auto& published) { return published.param.name; });

}  // namespace
