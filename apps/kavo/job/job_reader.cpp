#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <span>
#include <string>

#include "base/plain_text.hpp"
#include "job/csv_tables.hpp"
#include "job/input_reader.hpp"
#include "job/job.hpp"
#include "job/job_settings.hpp"
#include "job/toml_reader.hpp"
#include "service/input_rules.hpp"

namespace kavo_app {
namespace {

constexpr std::array<std::string_view, 7> kJobKeys = {"title",  "source",  "angles", "settings",
                                                      "points", "control", "step"};
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

// The parser may quote the file at any length.
constexpr std::size_t kMostOfComplaint = 200;

toml::table ParseToml(const std::filesystem::path& path) {
  std::ifstream file(path);
  if (!file || std::filesystem::is_directory(path)) {
    throw UserError({path.string(), 0}, "", "cannot be read; give a job file");
  }
  // Read whole first: the parser would seek, which it cannot in what is piped in.
  const std::string text(std::istreambuf_iterator<char>(file), {});
  try {
    return toml::parse(text, path.string());
  } catch (const toml::parse_error& error) {
    throw UserError(
        {path.string(), error.source().begin.line}, "",
        fmt::format("is not valid TOML: {}; text and DMS angles stand in quotation marks, "
                    "decimals have a point",
                    Shown(error.description(), kMostOfComplaint)));
  }
}

class JobReader {
 public:
  explicit JobReader(const std::filesystem::path& path)
      : path_(path), table_(ParseToml(path)), top_(table_, path.string(), "") {}

  Job Read() {
    top_.Only(kJobKeys);
    job_.file = path_.string();
    job_.readFiles = {path_};
    job_.title = top_.Text("title");
    job_.source = top_.Text("source");
    ReadAngles();
    ReadSettings(top_, job_);
    ReadPoints();
    ReadSteps();
    return std::move(job_);
  }

 private:
  void ReadAngles() {
    const auto* node = top_.Find("angles");
    if (node == nullptr) {
      return;
    }
    const auto unit = AngleUnitNamed(top_.TextOf(*node, "angles"));
    if (!unit) {
      top_.Fail(*node, "angles", "is not a notation; there are dms, gon, deg, raw");
    }
    job_.angles = *unit;
  }

  void ReadPoints() {
    if (const auto* node = top_.Find("points")) {
      const auto& table = top_.TableOf(*node, "points");
      for (const auto& [name, point] : table) {
        const auto label = fmt::format("points.{}", Shown(name.str()));
        names_.Points().emplace(name.str(),
                                ReadPointTable(top_.Inner(top_.TableOf(point, label), label)));
      }
    }
    if (const auto* node = top_.Find("control")) {
      ReadControlPoints(FileNamed(top_.TextOf(*node, "control")), names_.Points());
    }
  }

  void ReadSteps() {
    const auto* node = top_.Find("step");
    if (node == nullptr) {
      top_.FailMissing("step", "a job has at least one [[step]]");
    }
    for (const auto& element : top_.ArrayOf(*node, "step")) {
      ReadStep(top_.TableOf(element, "step"), job_.steps.size());
    }
  }

  // One step, or with `each` one for every row, all in one group.
  void ReadStep(const toml::table& table, std::size_t group) {
    const TomlReader step(table, job_.file, LabelOf(table));
    const Service& service = ServiceOf(step);
    step.Only(KnownStepKeys(service));
    AddSteps(step, service, table, group);
    const auto added = std::span(job_.steps).subspan(group);
    RefuseIdleTolerance(step, service, std::ranges::any_of(added, Expects));
  }

  void AddSteps(const TomlReader& step, const Service& service, const toml::table& table,
                std::size_t group) {
    const auto* each = step.Find("each");
    if (each == nullptr) {
      AddStep(step, service, group);
      return;
    }
    if (each->is_string()) {
      ReadRows(step, service, step.TextOf(*each, "each"), group);
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
  void ReadRows(const TomlReader& step, const Service& service, const std::string& file,
                std::size_t group) {
    const auto columns = KnownRowKeys(service);
    for (const auto& [place, table] : ReadCsvTables(FileNamed(file), columns)) {
      AddStep(TomlReader(table, place, LabelOf(table), &step), service, group);
    }
  }

  // What messages call the step that a table makes.
  std::string LabelOf(const toml::table& table) const {
    const auto* name = table.get_as<std::string>("name");
    return name != nullptr ? fmt::format("step {}", Quoted(name->get()))
                           : fmt::format("step {}", job_.steps.size() + 1);
  }

  static const Service& ServiceOf(const TomlReader& step) {
    const auto* node = step.Find("service");
    if (node == nullptr) {
      step.FailMissing("service", "kavo list names them");
    }
    const auto name = step.TextOf(*node, "service");
    const auto* service = FindService(name);
    if (service == nullptr) {
      step.Fail(*node, "service",
                fmt::format("{} is no service; kavo list names them", Quoted(name)));
    }
    return *service;
  }

  void AddStep(const TomlReader& reader, const Service& service, std::size_t group) {
    const InputReader inputs(names_, job_.angles, path_.parent_path());
    Step step;
    step.service = &service;
    step.group = group;
    step.name = NameOf(reader);
    step.note = reader.Text("note");
    step.code = reader.Text("code");
    for (const auto& field : service.inputs) {
      step.inputs.push_back(inputs.Read(reader, field));
      step.varies.push_back(reader.Owns(field.name));
      if (field.kind == Kind::kSights) {
        NoteSightFile(reader, field.name);
      }
    }
    if (const auto trouble = TroubleOfChoice(service, Given(step.inputs))) {
      const auto* node = reader.Find(trouble->field);
      node != nullptr ? reader.Fail(*node, trouble->field, trouble->advice)
                      : reader.FailHere(trouble->field, trouble->advice);
    }
    inputs.ReadExpectations(reader, step);
    RefuseIdleTolerance(reader, service, Expects(step));
    names_.AddStep(step.name, service, job_.steps.size());
    job_.steps.push_back(std::move(step));
  }

  static bool Expects(const Step& step) { return !step.expected.empty(); }

  // A limit that nothing is held to would pass for a check.
  static void RefuseIdleTolerance(const TomlReader& reader, const Service& service, bool expects) {
    for (const std::string_view key : {"tolerance", "angle-tolerance"}) {
      if (!expects && reader.Owns(key) && !FindField(service.inputs, key)) {
        reader.Fail(*reader.Find(key), key,
                    "has nothing to hold; say with expect what the results should be");
      }
    }
  }

  // A file beside the job, noted as one that the job reads.
  const std::filesystem::path& FileNamed(const std::string& name) {
    return job_.readFiles.emplace_back(path_.parent_path() / name);
  }

  void NoteSightFile(const TomlReader& reader, std::string_view field) {
    const auto* node = reader.Find(field);
    if (node != nullptr && node->is_string()) {
      FileNamed(reader.TextOf(*node, field));
    }
  }

  static std::vector<bool> Given(const std::vector<Input>& inputs) {
    std::vector<bool> given(inputs.size());
    for (std::size_t i = 0; i < inputs.size(); ++i) {
      given[i] = !inputs[i].text.empty();
    }
    return given;
  }

  std::string DefaultName(const TomlReader& reader) const {
    auto name = fmt::format("step {}", job_.steps.size() + 1);
    if (names_.Taken(name)) {
      reader.FailHere("name", fmt::format("{} is taken; give this step a name", Quoted(name)));
    }
    return name;
  }

  std::string NameOf(const TomlReader& reader) const {
    const auto* node = reader.Find("name");
    if (node == nullptr) {
      return DefaultName(reader);
    }
    auto name = reader.TextOf(*node, "name");
    if (name.empty()) {
      reader.Fail(*node, "name", "is empty; give the step a name, or leave this out");
    }
    if (names_.Taken(name)) {
      reader.Fail(
          *node, "name",
          fmt::format("{} is taken by {}; give each point and step its own", Quoted(name),
                      names_.FindPoint(name) != nullptr ? "a known point" : "an earlier step"));
    }
    return name;
  }

  std::filesystem::path path_;
  toml::table table_;
  TomlReader top_;
  Names names_;
  Job job_;
};

}  // namespace

Job ReadJob(const std::filesystem::path& path) { return JobReader(path).Read(); }

}  // namespace kavo_app
