// What the steps of a job can refer to by name.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "base/user_error.hpp"
#include "job/control_points.hpp"
#include "job/job.hpp"

namespace kavo_app {

/// The only output of a service that fits a field; nothing when none or several do.
std::optional<std::size_t> OnlyOutput(const Service& service, const Field& wanted);

/// The control points and the steps so far. Each has its own name and knows where it stands.
class Names {
 public:
  /// Why nothing can have this name, such as where it stands already; empty for a good one.
  /// @param service  of the step that is to have it, whose results go by it; null for a point.
  std::string NameTrouble(std::string_view name, const Service* service = nullptr) const;

  /// Makes a point known under its name, which is good.
  void AddPoint(const ControlPoint& point);
  /// Makes a step's results known under its name, which is good.
  void AddStep(const std::string& name, const Service& service, std::size_t index,
               const Place& place);

  const CoordPt* FindPoint(std::string_view name) const;
  /// The result "step.field", or the only result of "step" that fits the wanted field.
  std::optional<ResultRef> FindResult(std::string_view text, const Field& wanted) const;

  /// True when a text names a step, or a field of one, which it may not have.
  bool NamesStep(std::string_view text) const { return StepOf(text).step != nullptr; }
  /// What is wrong with a text, as the job has it, that is no fitting result, and what would be
  /// right.
  std::string NoResultAdvice(std::string_view text, const Field& wanted) const;

 private:
  struct Known {
    Place place;
    CoordPt point;
    const Service* service;  ///< Null for a point.
    std::size_t index;       ///< Of a step.
  };
  struct StepField {
    const Known* step;  ///< Null when the text names none.
    std::string_view name;
    std::optional<std::string_view> field;
  };
  // Why a point and a result of a step would go by one name.
  std::string ResultTrouble(std::string_view name, const Service* service) const;
  static std::string WhatIs(const Known& known);
  const Known* Find(std::string_view name) const;
  StepField StepOf(std::string_view text) const;

  std::map<std::string, Known, std::less<>> known_;
};

}  // namespace kavo_app
