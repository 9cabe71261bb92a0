#include "report/report_numbers.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "base/number_text.hpp"
#include "job/field_rules.hpp"
#include "service/service_rows.hpp"

namespace kavo_app {
namespace {

// A point is headed by its name where there are several, and where it comes beside what the service
// is for: the foot of a measured point is no survey point.
bool HeadedByName(const Service& service, std::size_t output) {
  return output > 0 || std::ranges::count(service.outputs, Kind::kPoint, &Field::kind) > 1;
}

void AddPoint(const Service& service, std::size_t output, std::vector<ResultNumber>& numbers) {
  const Field& field = service.outputs[output];
  for (const auto component : kPointKeys) {
    auto heading = HeadedByName(service, output) ? fmt::format("{} {}", field.name, component)
                                                 : std::string(component);
    numbers.push_back({output, component, std::move(heading), UnitOf(field)});
  }
}

}  // namespace

std::vector<ResultNumber> NumbersOf(const Service& service) {
  std::vector<ResultNumber> numbers;
  for (std::size_t i = 0; i < service.outputs.size(); ++i) {
    const Field& field = service.outputs[i];
    if (field.kind == Kind::kPoint) {
      AddPoint(service, i, numbers);
    } else if (ShowsItself(field.kind)) {
      numbers.push_back({i, "", std::string(field.name), UnitOf(field)});
    }
  }
  return numbers;
}

Value NumberOf(const ResultNumber& number, const Outcome& outcome) {
  return Component(outcome.outputs[number.output], number.component);
}

bool WasGiven(const ResultNumber& number, const Step& step, const Outcome& outcome) {
  const Field& result = step.service->outputs[number.output];
  const auto input = FindField(step.service->inputs, result.name);
  if (!outcome.success || !input || step.service->inputs[*input].meaning != result.meaning) {
    return false;
  }
  const auto text = [](const Value& value) { return ValueText(value, AngleUnit::kRaw); };
  return text(outcome.inputs[*input]) == text(NumberOf(number, outcome));
}

Expected ExpectedOf(const ResultNumber& number, const Step& step, const Outcome& outcome) {
  for (std::size_t i = 0; i < step.expected.size(); ++i) {
    const auto& expectation = step.expected[i];
    if (expectation.output == number.output && expectation.component == number.component) {
      return {&expectation, &outcome.comparisons[i]};
    }
  }
  return {};
}

std::string ValueText(const Value& value, AngleUnit unit) {
  if (const auto* angle = std::get_if<IntAngle>(&value)) {
    return AngleText(*angle, unit);
  }
  const auto* number = std::get_if<double>(&value);
  return number != nullptr ? NumberText(*number) : kNone;
}

std::string DifferenceTextOf(const Comparison& comparison, AngleUnit unit) {
  if (!Available(comparison.computed)) {
    return kNone;
  }
  if (const auto* angle = std::get_if<IntAngle>(&comparison.difference)) {
    return (*angle < 0 ? "" : "+") + AngleText(*angle, unit);
  }
  return DifferenceText(std::get<double>(comparison.difference));
}

std::string WithUnit(const std::string& text, std::string_view unit) {
  return text == kNone || unit.empty() ? text : fmt::format("{} {}", text, unit);
}

std::string_view UnitOf(const Field& field) { return InfoOf(field.kind).unit; }

std::string_view VerdictText(Verdict verdict) {
  switch (verdict) {
    case Verdict::kMissing:
      return "MISSING";
    case Verdict::kOutOfTolerance:
      return "OUT OF TOLERANCE";
    case Verdict::kOk:
      return "ok";
    case Verdict::kUnjudged:
      break;
  }
  return "";
}

std::string_view StatusRemark(const Outcome& outcome) {
  return outcome.sentence == kComputed.sentence ? std::string_view() : outcome.sentence;
}

}  // namespace kavo_app
