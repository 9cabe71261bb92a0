#include "job/step_reader.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>
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

bool Expects(const Step& step) { return !step.expected.empty(); }

// A limit that nothing is held to would pass for a check.
void RefuseIdleTolerance(const TomlReader& reader, const Service& service, bool expects) {
  for (const std::string_view key : {"tolerance", "angle-tolerance"}) {
    if (!expects && reader.Owns(key) && !FindField(service.inputs, key)) {
      reader.FailAt(key, "has nothing to hold; say with expect what the results should be");
    }
  }
}

std::vector<bool> Given(const std::vector<Input>& inputs) {
  std::vector<bool> given(inputs.size());
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    given[i] = !inputs[i].text.empty();
  }
  return given;
}

}  // namespace

void StepReader::Read(const toml::table& table) {
  const std::size_t group = job_.steps.size();
  const TomlReader step(table, job_.file, LabelOf(table));
  const Service& service = ServiceOf(step);
  step.Only(KnownStepKeys(service));
  AddSteps(step, service, table, group);
  const auto added = std::span(job_.steps).subspan(group);
  if (added.empty()) {
    step.FailAt("each", "has no rows; give one at least");
  }
  RefuseIdleTolerance(step, service, std::ranges::any_of(added, Expects));
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
  for (const auto& [place, table] : ReadCsvTables(job_.FileNamed(file), columns)) {
    AddStep(TomlReader(table, place, LabelOf(table), &step), service, group);
  }
}

void StepReader::AddStep(const TomlReader& reader, const Service& service, std::size_t group) {
  Step step;
  step.service = &service;
  step.group = group;
  step.name = NameOf(reader);
  step.note = reader.Text("note");
  step.code = reader.Text("code");
  ReadInputs(reader, step);
  RefuseIdleTolerance(reader, service, Expects(step));
  names_.AddStep(step.name, service, job_.steps.size(), reader.PlaceOfAll());
  job_.steps.push_back(std::move(step));
}

void StepReader::ReadInputs(const TomlReader& reader, Step& step) {
  const InputReader inputs(names_, job_.angles, std::filesystem::path(job_.file).parent_path());
  for (const auto& field : step.service->inputs) {
    step.inputs.push_back(inputs.Read(reader, field));
    step.varies.push_back(reader.Owns(field.name));
    if (field.kind == Kind::kSights) {
      NoteSightFile(reader, field.name);
    }
  }
  if (const auto trouble = TroubleOfChoice(*step.service, Given(step.inputs))) {
    reader.Find(trouble->field) != nullptr ? reader.FailAt(trouble->field, trouble->advice)
                                           : reader.FailHere(trouble->field, trouble->advice);
  }
  inputs.ReadTolerances(reader, step);
  inputs.ReadExpectations(reader, step);
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

std::string StepReader::NameOf(const TomlReader& reader) const {
  const auto* node = reader.Find("name");
  auto name = node != nullptr ? reader.TextOf(*node, "name")
                              : fmt::format("step {}", job_.steps.size() + 1);
  if (const auto trouble = names_.NameTrouble(name); !trouble.empty()) {
    node != nullptr ? reader.FailAt("name", trouble) : reader.FailHere("name", trouble);
  }
  return name;
}

}  // namespace kavo_app
