#include "job/input_reader.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/geometry.hpp"
#include "base/plain_text.hpp"
#include "job/sight_reader.hpp"
#include "service/input_rules.hpp"

namespace kavo_app {
namespace {

constexpr Field kAnyPoint{"point", Kind::kPoint, "a point"};

std::optional<std::size_t> OnlyOutput(const Service& service, const Field& wanted) {
  const auto fits = [&wanted](const Field& field) { return Fits(field, wanted); };
  if (std::ranges::count_if(service.outputs, fits) != 1) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(std::ranges::find_if(service.outputs, fits) -
                                  service.outputs.begin());
}

// The parts of a list are put together when the step runs.
std::optional<double> MeasureOf(const Input& input) {
  return input.parts.empty() ? Measure(input.value) : static_cast<double>(input.parts.size());
}

// A service's only point is expected by its components, several points each by its name.
std::vector<std::string_view> ExpectableNames(const Service& service) {
  const auto onlyPoint = OnlyOutput(service, kAnyPoint);
  std::vector<std::string_view> names;
  for (std::size_t i = 0; i < service.outputs.size(); ++i) {
    if (i == onlyPoint) {
      names.insert(names.end(), kComponents.begin(), kComponents.end());
    } else if (ShowsItself(service.outputs[i].kind)) {
      names.push_back(service.outputs[i].name);
    }
  }
  return names;
}

}  // namespace

CoordPt ReadPointTable(const TomlReader& point) {
  point.Only(kComponents);
  for (const auto name : {kComponents[0], kComponents[1]}) {
    if (point.Find(name) == nullptr) {
      point.FailMissing(name, "a point has north and east, and may have elev");
    }
  }
  CoordPt out{};
  out.north = point.Number("north", 0.0);
  out.east = point.Number("east", 0.0);
  out.elev = point.Number("elev", 0.0);
  out.flags = point.Find("elev") != nullptr ? COORD_HAS_NE | COORD_HAS_ELEV : COORD_HAS_NE;
  return out;
}

void Names::AddStep(const std::string& name, const Service& service, std::size_t index) {
  steps_.emplace(name, Known{&service, index});
}

bool Names::Taken(std::string_view name) const {
  return points_.contains(name) || steps_.contains(name);
}

const CoordPt* Names::FindPoint(std::string_view name) const {
  const auto point = points_.find(name);
  return point == points_.end() ? nullptr : &point->second;
}

std::optional<ResultRef> Names::FindResult(std::string_view text, const Field& wanted) const {
  if (const auto step = steps_.find(text); step != steps_.end()) {
    const auto output = OnlyOutput(*step->second.service, wanted);
    return output ? std::optional(ResultRef{step->second.index, *output}) : std::nullopt;
  }
  const auto dot = text.rfind('.');
  const auto step = dot == text.npos ? steps_.end() : steps_.find(text.substr(0, dot));
  if (step == steps_.end()) {
    return std::nullopt;
  }
  const auto& outputs = step->second.service->outputs;
  const auto output = FindField(outputs, text.substr(dot + 1));
  if (!output || !Fits(outputs[*output], wanted)) {
    return std::nullopt;
  }
  return ResultRef{step->second.index, *output};
}

Input InputReader::Read(const TomlReader& step, const Field& field) const {
  const auto* node = step.Find(field.name);
  if (node != nullptr) {
    auto input = ReadNode(step, *node, field);
    if (const auto trouble = TroubleOfLimit(field, MeasureOf(input)); !trouble.empty()) {
      step.Fail(*node, field.name, trouble);
    }
    return input;
  }
  if (field.need == Need::kRequired) {
    step.FailMissing(field.name, fmt::format("{}: {}", field.meaning, InfoOf(field.kind).writing));
  }
  return {};
}

void InputReader::ReadExpectations(const TomlReader& step, Step& out) const {
  if (step.Find("tolerance") != nullptr) {
    out.tolerance = step.Number("tolerance", 0.0);
  }
  if (const auto* node = step.Find("angle-tolerance")) {
    out.angleTolerance = AngleOf(step, *node, "angle-tolerance");
  }
  const auto* node = step.Find("expect");
  if (node == nullptr) {
    return;
  }
  const auto expect = step.Inner(step.TableOf(*node, "expect"), "expect");
  const auto onlyPoint = OnlyOutput(*out.service, kAnyPoint);
  expect.Only(ExpectableNames(*out.service));
  for (std::size_t i = 0; i < out.service->outputs.size(); ++i) {
    const Field& field = out.service->outputs[i];
    if (i == onlyPoint) {
      ReadExpectedPoint(expect, i, out);
    } else if (const auto* value = expect.Find(field.name)) {
      if (field.kind == Kind::kPoint) {
        const auto point = expect.Inner(expect.TableOf(*value, field.name), field.name);
        point.Only(kComponents);
        ReadExpectedPoint(point, i, out);
      } else {
        out.expected.push_back({i, "", Literal(expect, *value, field.name, field.kind)});
      }
    }
  }
}

void InputReader::ReadExpectedPoint(const TomlReader& point, std::size_t output, Step& out) {
  for (const auto name : kComponents) {
    if (const auto* component = point.Find(name)) {
      out.expected.push_back({output, std::string(name), point.NumberOf(*component, name)});
    }
  }
}

Input InputReader::ReadNode(const TomlReader& at, const toml::node& node,
                            const Field& field) const {
  switch (field.kind) {
    case Kind::kPoint:
      return ReadPoint(at, node, field);
    case Kind::kPoints:
      return ReadPoints(at, node, field);
    case Kind::kLine:
      return ReadLine(at, node, field);
    case Kind::kSights:
      return ReadSights(*this, at, node, field);
    case Kind::kFigure:
      return ReadResult(at, node, field, at.TextOf(node, field.name));
    default:
      return ReadScalar(at, node, field);
  }
}

Input InputReader::ReadPoint(const TomlReader& at, const toml::node& node,
                             const Field& field) const {
  if (const auto* table = node.as_table()) {
    const CoordPt point = ReadPointTable(at.Inner(*table, field.name));
    const auto elev = HasElev(point) ? fmt::format(", {}", point.elev) : "";
    return {point, {}, {}, fmt::format("({}, {}{})", point.north, point.east, elev)};
  }
  const auto name = at.TextOf(node, field.name);
  if (const auto* point = names_.FindPoint(name)) {
    return {*point, {}, {}, name};
  }
  return ReadResult(at, node, field, name);
}

Input InputReader::ReadPoints(const TomlReader& at, const toml::node& node,
                              const Field& field) const {
  const auto& list = at.ArrayOf(node, field.name);
  if (list.size() > kMostPoints) {
    at.Fail(node, field.name, fmt::format("has more than {} points", kMostPoints));
  }
  const Field corner{field.name, Kind::kPoint, field.meaning};
  Input input;
  input.value = std::vector<CoordPt>();
  for (const auto& element : list) {
    input.parts.push_back(ReadPoint(at, element, corner));
    input.text += (input.text.empty() ? "" : " ") + input.parts.back().text;
  }
  return input;
}

Input InputReader::ReadLine(const TomlReader& at, const toml::node& node,
                            const Field& field) const {
  if (node.is_string()) {
    return ReadResult(at, node, field, at.TextOf(node, field.name));
  }
  static constexpr std::array<std::string_view, 3> kKeys = {"from", "to", "azimuth"};
  const auto line = at.Inner(at.TableOf(node, field.name), field.name);
  line.Only(kKeys);
  const bool byPoints = line.Owns("to");
  if (byPoints == line.Owns("azimuth")) {
    line.FailMissing("to", "a line has from, and either to or azimuth");
  }
  Input input;
  LineDef def{};
  def.mode = byPoints ? LINE_MODE_TWO_POINTS : LINE_MODE_DIRECTION;
  input.value = def;
  input.parts.push_back(Read(line, {"from", Kind::kPoint, "first point of the line"}));
  input.parts.push_back(byPoints ? Read(line, {"to", Kind::kPoint, "second point of the line"})
                                 : Read(line, {"azimuth", Kind::kAzimuth, "azimuth of the line"}));
  input.text =
      fmt::format("{} {} {}", input.parts[0].text, byPoints ? "to" : "at", input.parts[1].text);
  return input;
}

Input InputReader::ReadScalar(const TomlReader& at, const toml::node& node,
                              const Field& field) const {
  const auto text = node.value_or(std::string_view());
  if (text.starts_with('@')) {
    return ReadResult(at, node, field, text.substr(1));
  }
  const Value value = Literal(at, node, field.name, field.kind);
  const auto* angle = std::get_if<IntAngle>(&value);
  return {
      value,
      {},
      {},
      angle != nullptr ? AngleText(*angle, angles_) : fmt::format("{}", std::get<double>(value))};
}

Input InputReader::ReadResult(const TomlReader& at, const toml::node& node, const Field& field,
                              std::string_view text) const {
  const auto result = names_.FindResult(text, field);
  if (!result) {
    at.Fail(node, field.name,
            fmt::format("{} is neither a control point nor a fitting result of an earlier step; "
                        "wanted is: {}",
                        Quoted(text), field.meaning));
  }
  return {{}, result, {}, std::string(text)};
}

Value InputReader::Literal(const TomlReader& at, const toml::node& node, std::string_view name,
                           Kind kind) const {
  if (IsAngle(kind)) {
    return AngleOf(at, node, name);
  }
  return at.NumberOf(node, name);
}

IntAngle InputReader::AngleOf(const TomlReader& at, const toml::node& node,
                              std::string_view name) const {
  const auto reading = node.is_number() ? ReadAngle(at.NumberOf(node, name), angles_)
                                        : ReadAngle(at.TextOf(node, name), angles_);
  if (!reading.angle) {
    at.Fail(node, name, reading.complaint);
  }
  return *reading.angle;
}

}  // namespace kavo_app
