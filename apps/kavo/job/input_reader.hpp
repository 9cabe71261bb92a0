// The inputs and expectations of a step, read from its tables and tied to points and results.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "job/control_points.hpp"
#include "job/job.hpp"
#include "job/toml_reader.hpp"

namespace kavo_app {

/// What a step can refer to: the control points and the steps before it.
class Names {
 public:
  /// The known points; lists and the job's own table fill them.
  ControlPoints& Points() { return points_; }

  /// Makes a step's results known under its name.
  void AddStep(const std::string& name, const Service& service, std::size_t index);
  /// True when a point or step has the name.
  bool Taken(std::string_view name) const;
  const CoordPt* FindPoint(std::string_view name) const;
  /// The result "step.field", or the only result of "step" that fits the wanted field.
  std::optional<ResultRef> FindResult(std::string_view text, const Field& wanted) const;

 private:
  struct Known {
    const Service* service;
    std::size_t index;
  };
  ControlPoints points_;
  std::map<std::string, Known, std::less<>> steps_;
};

/// Reads a point from its table: north, east and, if known, elev.
CoordPt ReadPointTable(const TomlReader& point);

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

  /// Reads what a step expects of its outputs, with its tolerances.
  void ReadExpectations(const TomlReader& step, Step& out) const;

 private:
  Input ReadNode(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadPoint(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadPoints(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadLine(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadScalar(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadResult(const TomlReader& at, const toml::node& node, const Field& field,
                   std::string_view text) const;
  static void ReadExpectedPoint(const TomlReader& point, std::size_t output, Step& out);
  Value Literal(const TomlReader& at, const toml::node& node, std::string_view name,
                Kind kind) const;
  const Names& names_;
  AngleUnit angles_;
  std::filesystem::path folder_;
};

}  // namespace kavo_app
