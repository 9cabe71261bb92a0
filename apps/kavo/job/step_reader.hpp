// The steps of a job: each from its table, or many from the rows of its `each`.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "job/input_reader.hpp"
#include "job/names.hpp"
#include "job/toml_reader.hpp"

namespace kavo_app {

/// Reads steps into a job. Each can refer to what the names know and to the steps before it.
class StepReader {
 public:
  /// @param[in,out] job    has its file and notation of angles; receives steps and files read.
  /// @param[in,out] names  has the control points; receives the steps.
  StepReader(Job& job, Names& names) : job_(job), names_(names) {}

  /// Reads one step, or with `each` one for every row, all in one group.
  void Read(const toml::table& table);

 private:
  void AddSteps(const TomlReader& step, const Service& service, const toml::table& table,
                std::size_t group);
  void AddFileRows(const TomlReader& step, const Service& service, const std::string& file,
                   std::size_t group);
  void AddStep(const TomlReader& reader, const Service& service, std::size_t group);
  void ReadInputs(const TomlReader& reader, Step& step);
  Input ReadInput(const InputReader& inputs, const TomlReader& reader, const Field& field);
  void NoteSightFile(const TomlReader& reader, std::string_view field);
  std::string LabelOf(const toml::table& table) const;
  std::string NameOf(const TomlReader& reader, const Service& service) const;

  Job& job_;
  Names& names_;
  std::map<std::string_view, Input> shared_;  // what rows of one step have from the step
};

}  // namespace kavo_app
