#include "report/report_list.hpp"

#include <fmt/format.h>

#include "report/report_numbers.hpp"
#include "report/report_sights.hpp"

namespace kavo_app {
namespace {

// A component that a point lacks, such as its elevation, is not mentioned; any other number is.
void PrintResults(const Step& step, const Outcome& outcome, AngleUnit unit, TextPage& page) {
  for (const auto& number : NumbersOf(*step.service)) {
    const Value value = NumberOf(number, outcome);
    if ((Available(value) || number.component.empty()) && !WasGiven(number, step, outcome)) {
      page.Result(number.heading, WithUnit(ValueText(value, unit), number.unit));
    }
  }
  for (const auto& output : outcome.outputs) {
    if (const auto* residuals = std::get_if<std::vector<SightResidual>>(&output)) {
      PrintResiduals(*residuals, unit, page);
    }
  }
}

void PrintRemarks(const Outcome& outcome, TextPage& page) {
  for (const auto& [heading, remark] : {std::pair("status", StatusRemark(outcome)),
                                        std::pair("note", std::string_view(outcome.note)),
                                        std::pair("warning", std::string_view(outcome.warning))}) {
    if (!remark.empty()) {
      page.Item(heading, remark);
    }
  }
}

std::string ComparisonText(const Comparison& comparison, AngleUnit angles, std::string_view unit) {
  const auto verdict = VerdictText(VerdictOn(comparison));
  return Available(comparison.computed)
             ? fmt::format("difference {} {}", WithUnit(DifferenceTextOf(comparison, angles), unit),
                           verdict)
             : std::string(verdict);
}

void PrintExpected(const Step& step, const Outcome& outcome, AngleUnit unit, TextPage& page) {
  for (const auto& number : NumbersOf(*step.service)) {
    const auto [expectation, comparison] = ExpectedOf(number, step, outcome);
    if (expectation != nullptr) {
      page.Item("expected", fmt::format("{} {}, {}", number.heading,
                                        WithUnit(ValueText(expectation->value, unit), number.unit),
                                        ComparisonText(*comparison, unit, number.unit)));
    }
  }
}

}  // namespace

void PrintInputs(const Step& step, const std::vector<bool>& skipped, TextPage& page) {
  for (std::size_t i = 0; i < step.inputs.size(); ++i) {
    const Field& field = step.service->inputs[i];
    const Input& input = step.inputs[i];
    if (field.kind == Kind::kSights || input.text.empty() || skipped[i]) {
      continue;
    }
    const bool literal = std::holds_alternative<double>(input.value);
    page.Item(field.name, literal ? WithUnit(input.text, UnitOf(field)) : input.text);
  }
}

void PrintList(const Step& step, const Outcome& outcome, AngleUnit unit, TextPage& page) {
  if (!step.note.empty()) {
    page.Folded("  ", step.note);
  }
  if (!step.code.empty()) {
    page.Item("code", step.code);
  }
  PrintInputs(step, std::vector<bool>(step.inputs.size()), page);
  for (const auto& input : outcome.inputs) {
    if (const auto* sights = std::get_if<std::vector<Sight>>(&input)) {
      PrintSights(*sights, unit, page);
    }
  }
  if (outcome.success) {
    PrintResults(step, outcome, unit, page);
  }
  PrintRemarks(outcome, page);
  PrintExpected(step, outcome, unit, page);
}

}  // namespace kavo_app
