#include "job/outcome.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "base/geometry.hpp"
#include "host/heap.hpp"
#include "service/trust.hpp"

namespace kavo_app {
namespace {

bool IsFinite(const CoordPt& point) {
  return std::isfinite(point.north) && std::isfinite(point.east) &&
         (!HasElev(point) || std::isfinite(point.elev));
}

// The numbers of an output; a line has its points beside it.
bool IsFiniteValue(const Value& value) {
  if (const auto* point = std::get_if<CoordPt>(&value)) {
    return IsFinite(*point);
  }
  const auto* number = std::get_if<double>(&value);
  return number == nullptr || std::isfinite(*number);
}

const StatusRow& RowOf(const Service& service, const Answer& answer) {
  const auto* row = FindStatus(service, answer.status);
  if (row == nullptr || answer.outputs.size() != service.outputs.size()) {
    throw std::logic_error(
        fmt::format("service {}: its table does not fit status {}", service.name, answer.status));
  }
  return *row;
}

void TakeStatus(const StatusRow& row, Outcome& outcome) {
  outcome.ran = true;
  outcome.status = row.code;
  outcome.statusName = row.name;
  outcome.sentence = row.sentence;
  outcome.success = row.success;
  outcome.passed = row.good;
}

}  // namespace

Value Component(const Value& output, std::string_view component) {
  const auto* point = std::get_if<CoordPt>(&output);
  if (point == nullptr) {
    return output;
  }
  if (component == "elev") {
    return HasElev(*point) ? Value{point->elev} : Value{};
  }
  return component == "north" ? point->north : point->east;
}

bool Outcome::Good() const {
  return success && passed && std::ranges::all_of(comparisons, [](const auto& comparison) {
           return Available(comparison.computed) && comparison.within.value_or(true);
         });
}

// Outputs stay without value when there is no result.
void CallService(const Service& service, Outcome& outcome) {
  Answer answer = CheckedCall(service, Inputs(service.inputs, outcome.inputs));
  ReclaimHeap();
  TakeStatus(RowOf(service, answer), outcome);
  outcome.warning = std::move(answer.warning);
  if (outcome.success && !std::ranges::all_of(answer.outputs, IsFiniteValue)) {
    answer.trouble = "the result is not a finite number: check the size of the inputs";
  }
  if (!answer.trouble.empty()) {
    outcome.success = false;
    outcome.sentence = std::move(answer.trouble);
  }
  outcome.outputs.resize(service.outputs.size());
  if (outcome.success) {
    outcome.note = std::move(answer.note);
    outcome.outputs = std::move(answer.outputs);
  }
}

}  // namespace kavo_app
