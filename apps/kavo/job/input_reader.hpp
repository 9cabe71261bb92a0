// The inputs and expectations of a step, read from its tables and tied to points and results.
#pragma once

#include <filesystem>
#include <string_view>
#include <utility>

#include "job/job.hpp"
#include "job/names.hpp"
#include "job/toml_reader.hpp"

namespace kavo_app {

/// Reads single inputs; throws UserError for what is mistyped or refers to nothing.
class InputReader {
 public:
  /// @param folder  where files lie that a step names.
  InputReader(const Names& names, AngleUnit angles, std::filesystem::path folder)
      : names_(names), angles_(angles), folder_(std::move(folder)) {}

  /// Reads a field of a step; an empty Input when an optional one is absent.
  Input Read(const TomlReader& step, const Field& field) const;

  /// Reads an angle in the job's notation.
  IntAngle AngleOf(const TomlReader& at, const toml::node& node, std::string_view name) const;

  /// The folder of the files that a step names.
  const std::filesystem::path& Folder() const { return folder_; }

  /// Reads how far a step's results may be off what it expects.
  void ReadTolerances(const TomlReader& step, Step& out) const;
  /// Reads what a step expects of its outputs.
  void ReadExpectations(const TomlReader& step, Step& out) const;

 private:
  Input ReadNode(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadPoint(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadPoints(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadLine(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadScalar(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadResult(const TomlReader& at, const toml::node& node, const Field& field,
                   std::string_view name) const;
  void ReadExpected(const TomlReader& expect, const toml::node& value, std::size_t output,
                    Step& out) const;
  static void ReadExpectedPoint(const TomlReader& point, std::size_t output, Step& out);
  // True for text that is the number or angle itself.
  bool IsLiteral(std::string_view text, Kind kind) const;
  Value Literal(const TomlReader& at, const toml::node& node, std::string_view name,
                Kind kind) const;
  const Names& names_;
  AngleUnit angles_;
  std::filesystem::path folder_;
};

}  // namespace kavo_app
