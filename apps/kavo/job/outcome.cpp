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

Verdict VerdictOn(const Comparison& comparison) {
  if (!Available(comparison.computed)) {
    return Verdict::kMissing;
  }
  if (!comparison.within) {
    return Verdict::kUnjudged;
  }
  return *comparison.within ? Verdict::kOk : Verdict::kOutOfTolerance;
}

Verdict Outcome::WorstVerdict() const {
  Verdict worst = Verdict::kUnjudged;
  for (const auto& comparison : comparisons) {
    worst = std::max(worst, VerdictOn(comparison));
  }
  return worst;
}

std::string_view Outcome::Flaw() const {
  if (!success) {
    return "no result";
  }
  switch (WorstVerdict()) {
    case Verdict::kMissing:
      return "expected value missing";
    case Verdict::kOutOfTolerance:
      return "out of tolerance";
    case Verdict::kUnjudged:
    case Verdict::kOk:
      break;
  }
  return passed ? "" : "check not passed";
}

// Outputs stay without value when there is no result.
void CallService(const Service& service, AngleUnit notation, Outcome& outcome) {
  Answer answer = CheckedCall(service, Inputs(service.inputs, outcome.inputs, notation));
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
