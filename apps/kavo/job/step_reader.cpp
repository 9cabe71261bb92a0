#include "job/step_reader.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>
#include <variant>
#include <vector>

#include "base/plain_text.hpp"
#include "job/csv_tables.hpp"
#include "job/input_reader.hpp"
#include "service/input_rules.hpp"

namespace kavo_app {
namespace {

constexpr std::array<std::string_view, 8> kStepKeys = {
    "service", "name", "note", "code", "each", "expect", "tolerance", "angle-tolerance"};

std::vector<std::string_view> KnownStepKeys(const Service& service) {
  std::vector<std::string_view> known(kStepKeys.begin(), kStepKeys.end());
  for (const auto& field : service.inputs) {
    if (std::ranges::find(known, field.name) == known.end()) {
      known.push_back(field.name);
    }
  }
  return known;
}

// A row's step is of the same service, and has no rows of its own.
std::vector<std::string_view> KnownRowKeys(const Service& service) {
  auto known = KnownStepKeys(service);
  std::erase_if(known, [](auto key) { return key == "service" || key == "each"; });
  return known;
}

// What counts as 0 in a row without it.
std::vector<std::string_view> ZeroKeys(const TomlReader& step, const Service& service) {
  std::vector<std::string_view> keys;
  for (const auto& field : service.inputs) {
    if (field.need == Need::kOrZero && step.Find(field.name) == nullptr) {
      keys.push_back(field.name);
    }
  }
  return keys;
}

// Which keys a step can have depends on its service: a key that is nearly `service` is told here.
const Service& ServiceOf(const TomlReader& step) {
  if (step.Find("service") == nullptr) {
    step.RefuseMisspelt("service");
  }
  const auto name = step.TextOf(step.Required("service", "kavo list names them"), "service");
  const auto* service = FindService(name);
  if (service == nullptr) {
    step.FailAt("service", NoServiceAdvice(name));
  }
  return *service;
}

// What holds the expected angles, and what all the others.
struct Tolerance {
  std::string_view key;
  bool forAngles;
  const char* idle;      // it has none of its own to hold
  const char* unjudged;  // it is needed as well
};
constexpr std::array kTolerances = {
    Tolerance{"tolerance", false, "has only angles to hold; give angle-tolerance for them",
              "more than angles is expected; give tolerance as well"},
    Tolerance{"angle-tolerance", true, "has no angles to hold; what is expected takes tolerance",
              "angles are expected; give angle-tolerance as well"},
};

bool Expects(const Step& step, bool angles) {
  return std::ranges::any_of(step.expected, [angles](const Expectation& expected) {
    return std::holds_alternative<IntAngle>(expected.value) == angles;
  });
}

// A limit that nothing is held to would pass for a check. One that the service takes is for more.
void RefuseIdleTolerance(const TomlReader& reader, const Service& service,
                         std::span<const Step> steps) {
  const auto expect = [steps](bool angles) {
    return std::ranges::any_of(steps, [angles](const Step& step) { return Expects(step, angles); });
  };
  for (const auto& tolerance : kTolerances) {
    if (reader.Owns(tolerance.key) && !FindField(service.inputs, tolerance.key) &&
        !expect(tolerance.forAngles)) {
      reader.FailAt(tolerance.key,
                    expect(!tolerance.forAngles)
                        ? tolerance.idle
                        : "has nothing to hold; say with expect what the results should be");
    }
  }
}

// So would an expected value without a limit, where others have one.
void RefuseUnjudged(const TomlReader& reader, const Step& step) {
  const auto given = [&](std::string_view key) { return reader.Find(key) != nullptr; };
  for (const auto& tolerance : kTolerances) {
    const auto& other = kTolerances.at(tolerance.forAngles ? 0 : 1);
    if (!given(tolerance.key) && given(other.key) && !FindField(step.service->inputs, other.key) &&
        Expects(step, tolerance.forAngles)) {
      reader.FailAt("expect", tolerance.unjudged);
    }
  }
}

bool IsWritten(const Input& input) { return !input.text.empty(); }

}  // namespace

void StepReader::Read(const toml::table& table) {
  const std::size_t group = job_.steps.size();
  const TomlReader step(table, job_.file, LabelOf(table));
  const Service& service = ServiceOf(step);
  step.Only(KnownStepKeys(service));
  shared_.clear();
  AddSteps(step, service, table, group);
  const auto added = std::span(job_.steps).subspan(group);
  if (added.empty()) {
    step.FailAt("each", "has no rows; give one at least");
  }
  RefuseIdleTolerance(step, service, added);
}

void StepReader::AddSteps(const TomlReader& step, const Service& service, const toml::table& table,
                          std::size_t group) {
  const auto* each = step.Find("each");
  if (each == nullptr) {
    AddStep(step, service, group);
    return;
  }
  if (each->is_string()) {
    AddFileRows(step, service, step.TextOf(*each, "each"), group);
    return;
  }
  if (!each->is_array()) {
    step.Fail(*each, "each", "write a list of rows, or the name of a CSV file");
  }
  const auto known = KnownRowKeys(service);
  for (const auto& element : step.ArrayOf(*each, "each")) {
    const auto& rowTable = step.TableOf(element, "each");
    const TomlReader row(rowTable, job_.file, LabelOf(rowTable), &table);
    row.Only(known);
    AddStep(row, service, group);
  }
}

// One step for every row of a CSV file.
void StepReader::AddFileRows(const TomlReader& step, const Service& service,
                             const std::string& file, std::size_t group) {
  const auto columns = KnownRowKeys(service);
  const auto zeroes = ZeroKeys(step, service);
  for (const auto& [place, table] : ReadCsvTables(job_.FileNamed(file), columns, zeroes)) {
    AddStep(TomlReader(table, place, LabelOf(table), &step), service, group);
  }
}

void StepReader::AddStep(const TomlReader& reader, const Service& service, std::size_t group) {
  Step step;
  step.service = &service;
  step.group = group;
  step.name = NameOf(reader, service);
  step.note = reader.Text("note");
  step.code = reader.Line("code");
  ReadInputs(reader, step);
  RefuseIdleTolerance(reader, service, {&step, 1});
  RefuseUnjudged(reader, step);
  names_.AddStep(step.name, service, job_.steps.size(), reader.PlaceOfAll());
  job_.steps.push_back(std::move(step));
}

void StepReader::ReadInputs(const TomlReader& reader, Step& step) {
  const InputReader inputs(names_, job_.angles, std::filesystem::path(job_.file).parent_path());
  for (const auto& field : step.service->inputs) {
    step.inputs.push_back(ReadInput(inputs, reader, field));
    step.varies.push_back(reader.Owns(field.name));
  }
  if (const auto trouble = TroubleOfChoice(*step.service, Given(step.inputs, IsWritten))) {
    reader.Find(trouble->field) != nullptr ? reader.FailAt(trouble->field, trouble->advice)
                                           : reader.FailHere(trouble->field, trouble->advice);
  }
  inputs.ReadTolerances(reader, step);
  inputs.ReadExpectations(reader, step);
}

// What the step says for all its rows is read once: it may be a long file.
Input StepReader::ReadInput(const InputReader& inputs, const TomlReader& reader,
                            const Field& field) {
  const auto read = shared_.find(field.name);
  if (read != shared_.end() && !reader.Owns(field.name)) {
    return read->second;
  }
  auto input = inputs.Read(reader, field);
  if (field.kind == Kind::kSights) {
    NoteSightFile(reader, field.name);
  }
  if (!reader.Owns(field.name)) {
    shared_.emplace(field.name, input);
  }
  return input;
}

void StepReader::NoteSightFile(const TomlReader& reader, std::string_view field) {
  const auto* node = reader.Find(field);
  if (node != nullptr && node->is_string()) {
    job_.FileNamed(reader.TextOf(*node, field));
  }
}

// What messages call the step that a table makes.
std::string StepReader::LabelOf(const toml::table& table) const {
  const auto* name = table.get_as<std::string>("name");
  return name != nullptr ? fmt::format("step {}", Quoted(name->get()))
                         : fmt::format("step {}", job_.steps.size() + 1);
}

std::string StepReader::NameOf(const TomlReader& reader, const Service& service) const {
  const auto* node = reader.Find("name");
  auto name = node != nullptr ? reader.TextOf(*node, "name")
                              : fmt::format("step {}", job_.steps.size() + 1);
  if (const auto trouble = names_.NameTrouble(name, &service); !trouble.empty()) {
    node != nullptr ? reader.FailAt("name", trouble) : reader.FailHere("name", trouble);
  }
  return name;
}

}  // namespace kavo_app
