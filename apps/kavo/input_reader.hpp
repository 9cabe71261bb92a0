// The inputs and expectations of a step, read from its tables and tied to points and results.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "control_points.hpp"
#include "job.hpp"
#include "toml_reader.hpp"

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
  InputReader(const Names& names, AngleUnit angles) : names_(names), angles_(angles) {}

  /// Reads a field of a step; an empty Input when an optional one is absent.
  Input Read(const TomlReader& step, const Field& field) const;

  /// Reads what a step expects of its outputs, with its tolerances.
  void ReadExpectations(const TomlReader& step, Step& out) const;

 private:
  Input ReadNode(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadPoint(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadPoints(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadLine(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadSights(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadSight(const TomlReader& at) const;
  Input ReadScalar(const TomlReader& at, const toml::node& node, const Field& field) const;
  Input ReadResult(const TomlReader& at, const toml::node& node, const Field& field,
                   std::string_view text) const;
  static void ReadExpectedPoint(const TomlReader& point, std::size_t output, Step& out);
  Value Literal(const TomlReader& at, const toml::node& node, std::string_view name,
                Kind kind) const;
  IntAngle AngleOf(const TomlReader& at, const toml::node& node, std::string_view name) const;

  const Names& names_;
  AngleUnit angles_;
};

}  // namespace kavo_app
