#include "report/report_table.hpp"

#include <algorithm>

#include "base/number_text.hpp"
#include "base/plain_text.hpp"
#include "report/report_list.hpp"
#include "report/report_numbers.hpp"
#include "report/text_table.hpp"

namespace kavo_app {
namespace {

// Points, lines and bases stand by their names.
bool IsNamed(Kind kind) {
  return kind == Kind::kPoint || kind == Kind::kPoints || kind == Kind::kLine ||
         kind == Kind::kFigure;
}

Column InputColumn(const Field& field) {
  return IsNamed(field.kind) ? Column{std::string(field.name), "", Holds::kNames}
                             : Column{std::string(field.name), std::string(UnitOf(field))};
}

// The group of the columns behind those that were given; every expected number has one after it.
constexpr std::size_t kResults = 1;

// A result with the name of an input, such as the reading to aim at a point, says what it is.
Column ResultColumn(const ResultNumber& number, std::span<const Field> inputs) {
  return FindField(inputs, number.heading)
             ? Column{"computed", number.heading, Holds::kNumbers, kResults}
             : Column{number.heading, std::string(number.unit), Holds::kNumbers, kResults};
}

class StepTable {
 public:
  StepTable(std::span<const Step> steps, std::span<const Outcome> outcomes, AngleUnit unit)
      : steps_(steps), outcomes_(outcomes), unit_(unit), commonWarning_(CommonWarning(outcomes)) {
    const auto& note = steps.front().note;
    if (std::ranges::all_of(steps, [&note](const Step& step) { return step.note == note; })) {
      commonNote_ = note;
    }
    FindInputs();
    FindNumbers();
  }

  void Print(TextPage& page) const {
    if (!commonNote_.empty()) {
      page.Folded("  ", commonNote_);
    }
    PrintInputs(steps_.front(), isColumn_, page);
    if (!commonWarning_.empty()) {
      page.Item("warning", commonWarning_);
    }
    TextTable table(TableColumns());
    for (std::size_t i = 0; i < steps_.size(); ++i) {
      table.AddRow(Row(steps_[i], outcomes_[i]));
    }
    table.Print(page);
  }

 private:
  // What is found once for all rows, so that the cost grows with the rows alone.
  void FindInputs() {
    for (std::size_t i = 0; i < steps_.front().inputs.size(); ++i) {
      isColumn_.push_back(
          std::ranges::any_of(steps_, [i](const Step& step) { return step.varies[i]; }));
    }
  }

  void FindNumbers() {
    for (const auto& number : NumbersOf(*steps_.front().service)) {
      if (AnyRow([&number](const Step& step, const Outcome& outcome) {
            return !WasGiven(number, step, outcome);
          })) {
        results_.push_back(number);
      }
      if (AnyRow([&number](const Step& step, const Outcome& outcome) {
            return ExpectedOf(number, step, outcome).expectation != nullptr;
          })) {
        expected_.push_back(number);
      }
    }
  }

  template <class Test>
  bool AnyRow(const Test& test) const {
    for (std::size_t i = 0; i < steps_.size(); ++i) {
      if (test(steps_[i], outcomes_[i])) {
        return true;
      }
    }
    return false;
  }

  std::vector<Column> TableColumns() const {
    const auto inputs = steps_.front().service->inputs;
    std::vector<Column> columns{{"name", "", Holds::kNames}, {"code", "", Holds::kNames}};
    for (std::size_t i = 0; i < isColumn_.size(); ++i) {
      if (isColumn_[i]) {
        columns.push_back(InputColumn(inputs[i]));
      }
    }
    for (const auto& number : results_) {
      columns.push_back(ResultColumn(number, inputs));
    }
    std::size_t group = kResults;
    for (const auto& number : expected_) {
      ++group;
      columns.push_back({"expected", number.heading, Holds::kNumbers, group});
      columns.push_back({"difference", number.heading, Holds::kNumbers, group});
    }
    columns.push_back({"", "", Holds::kNames, group + 1});
    return columns;
  }

  std::vector<std::string> Row(const Step& step, const Outcome& outcome) const {
    std::vector<std::string> texts{step.name, step.code.empty() ? kNone : step.code};
    for (std::size_t i = 0; i < isColumn_.size(); ++i) {
      if (isColumn_[i]) {
        texts.push_back(step.inputs[i].text.empty() ? kNone : step.inputs[i].text);
      }
    }
    for (const auto& number : results_) {
      texts.push_back(ValueText(NumberOf(number, outcome), unit_));
    }
    for (const auto& number : expected_) {
      const auto [expectation, comparison] = ExpectedOf(number, step, outcome);
      const bool expects = expectation != nullptr;
      texts.push_back(expects ? ValueText(expectation->value, unit_) : "");
      texts.push_back(expects ? DifferenceTextOf(*comparison, unit_) : "");
    }
    texts.push_back(Remarks(step, outcome));
    return texts;
  }

  // All that there is to say of a row.
  std::string Remarks(const Step& step, const Outcome& outcome) const {
    std::string remarks;
    for (const std::string_view remark :
         {outcome.success ? VerdictText(outcome.WorstVerdict()) : "", StatusRemark(outcome),
          std::string_view(outcome.note), commonNote_.empty() ? std::string_view(step.note) : ""}) {
      remarks += (remarks.empty() || remark.empty() ? "" : ", ") + std::string(remark);
    }
    const bool told = outcome.warning.empty() || !commonWarning_.empty();
    return Joined(remarks, told ? "" : "warning: " + outcome.warning);
  }

  std::span<const Step> steps_;
  std::span<const Outcome> outcomes_;
  AngleUnit unit_;
  std::string_view commonWarning_;
  std::string commonNote_;
  std::vector<bool> isColumn_;  // for each input
  std::vector<ResultNumber> results_;
  std::vector<ResultNumber> expected_;
};

}  // namespace

std::string_view CommonWarning(std::span<const Outcome> outcomes) {
  const std::string_view first = outcomes.front().warning;
  const auto differs = [first](const Outcome& outcome) { return outcome.warning != first; };
  return std::ranges::any_of(outcomes, differs) ? "" : first;
}

void PrintTable(std::span<const Step> steps, std::span<const Outcome> outcomes, AngleUnit unit,
                TextPage& page) {
  StepTable(steps, outcomes, unit).Print(page);
}

}  // namespace kavo_app
