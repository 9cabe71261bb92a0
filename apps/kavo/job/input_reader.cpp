#include "job/input_reader.hpp"

#include <fmt/format.h>

#include "base/geometry.hpp"
#include "base/plain_text.hpp"
#include "job/field_rules.hpp"
#include "job/sight_reader.hpp"
#include "service/input_rules.hpp"

namespace kavo_app {
namespace {

constexpr Field kAnyPoint{"point", Kind::kPoint, "a point"};

// The parts of a list are put together when the step runs.
std::optional<double> MeasureOf(const Input& input) {
  return input.parts.empty() ? Measure(input.value) : static_cast<double>(input.parts.size());
}

// An angle is rounded when it is read: what the job says of it is in its own text.
std::string AngleWritten(const toml::node& node) {
  return node.is_string() ? node.value_or(std::string()) : fmt::format("{}", node.value_or(0.0));
}

// A service's only point is expected by its components, several points each by its name.
std::vector<std::string_view> ExpectableNames(const Service& service) {
  const auto onlyPoint = OnlyOutput(service, kAnyPoint);
  std::vector<std::string_view> names;
  for (std::size_t i = 0; i < service.outputs.size(); ++i) {
    if (i == onlyPoint) {
      names.insert(names.end(), kPointKeys.begin(), kPointKeys.end());
    } else if (ShowsItself(service.outputs[i].kind)) {
      names.push_back(service.outputs[i].name);
    }
  }
  return names;
}

}  // namespace

Input InputReader::Read(const TomlReader& step, const Field& field) const {
  const auto* node = step.Find(field.name);
  if (node != nullptr) {
    // One may mean to add to the other, such as an elevation for all.
    const auto* replaced = step.Replaced(field.name);
    if (node->is_table() && replaced != nullptr && replaced->is_table()) {
      step.Fail(*node, field.name, "the step itself has parts of it; give them all in one place");
    }
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

void InputReader::ReadTolerances(const TomlReader& step, Step& out) const {
  constexpr const char* kRule = "must be 0 or more";
  if (step.Find("tolerance") != nullptr) {
    out.tolerance = step.Number("tolerance", 0.0);
    if (*out.tolerance < 0.0) {
      step.FailAt("tolerance", kRule);
    }
  }
  if (const auto* node = step.Find("angle-tolerance")) {
    out.angleTolerance = AngleOf(step, *node, "angle-tolerance");
    if (*out.angleTolerance < 0) {
      step.FailAt("angle-tolerance", kRule);
    }
  }
}

void InputReader::ReadExpectations(const TomlReader& step, Step& out) const {
  if (step.Find("expect") == nullptr) {
    return;
  }
  const auto expect = step.Merged("expect", ExpectableNames(*out.service));
  const auto onlyPoint = OnlyOutput(*out.service, kAnyPoint);
  for (std::size_t i = 0; i < out.service->outputs.size(); ++i) {
    if (i == onlyPoint) {
      ReadExpectedPoint(expect, i, out);
    } else if (const auto* value = expect.Find(out.service->outputs[i].name)) {
      ReadExpected(expect, *value, i, out);
    }
  }
}

void InputReader::ReadExpected(const TomlReader& expect, const toml::node& value,
                               std::size_t output, Step& out) const {
  const Field& field = out.service->outputs[output];
  if (field.kind != Kind::kPoint) {
    out.expected.push_back({output, "", Literal(expect, value, field.name, field.kind)});
    return;
  }
  ReadExpectedPoint(expect.Merged(field.name, kPointKeys), output, out);
}

void InputReader::ReadExpectedPoint(const TomlReader& point, std::size_t output, Step& out) {
  for (const auto name : kPointKeys) {
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
    const auto fields = at.Inner(*table, field.name);
    fields.Only(kPointKeys);
    const CoordPt point = ReadPointFields(fields);
    const auto elev = HasElev(point) ? fmt::format(", {}", point.elev) : "";
    return {point, {}, {}, fmt::format("({}, {}{})", point.north, point.east, elev)};
  }
  const auto name = at.TextOf(node, field.name);
  if (const auto* point = names_.FindPoint(name)) {
    return {*point, {}, {}, name, true};
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
  const auto line = at.Inner(at.TableOf(node, field.name), field.name);
  line.Only(kLineKeys);
  Input input;
  LineDef def{};
  def.mode = ReadLineMode(line);
  const bool byPoints = def.mode == LINE_MODE_TWO_POINTS;
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
  if (names_.NamesStep(text) && !IsLiteral(text, field.kind)) {
    at.Fail(node, field.name, names_.NoResultAdvice(text, field));
  }
  const Value value = Literal(at, node, field.name, field.kind);
  const auto* number = std::get_if<double>(&value);
  return {value, {}, {}, number != nullptr ? fmt::format("{}", *number) : AngleWritten(node)};
}

Input InputReader::ReadResult(const TomlReader& at, const toml::node& node, const Field& field,
                              std::string_view name) const {
  const auto result = names_.FindResult(name, field);
  if (!result) {
    at.Fail(node, field.name, names_.NoResultAdvice(node.value_or(name), field));
  }
  return {{}, result, {}, std::string(name), true};
}

bool InputReader::IsLiteral(std::string_view text, Kind kind) const {
  return IsAngle(kind) ? ReadAngle(text, angles_).angle.has_value() : ReadNumber(text).has_value();
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
