#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <string_view>

#include "base/geometry.hpp"
#include "base/number_text.hpp"
#include "base/plain_text.hpp"
#include "report/report.hpp"
#include "report/report_sights.hpp"
#include "service/service_rows.hpp"

namespace kavo_app {
namespace {

// The elevation of a point, and in a list a point as a whole, shows only when it is there.
void AddPointCells(const Value& value, const std::string& prefix, bool table,
                   std::vector<Cell>& cells) {
  const auto* point = std::get_if<CoordPt>(&value);
  const bool withElev = point != nullptr && HasElev(*point);
  if (point != nullptr || table) {
    cells.push_back({prefix + "north", "m", point != nullptr ? NumberText(point->north) : kNone});
    cells.push_back({prefix + "east", "m", point != nullptr ? NumberText(point->east) : kNone});
  }
  if (withElev || table) {
    cells.push_back({prefix + "elev", "m", withElev ? NumberText(point->elev) : kNone});
  }
}

class TextReporter {
 public:
  TextReporter(const Job& job, const std::vector<Outcome>& outcomes)
      : job_(job), outcomes_(outcomes) {}

  std::string Write() {
    Heading();
    for (std::size_t first = 0; first < job_.steps.size();) {
      const auto next =
          std::find_if(job_.steps.begin() + static_cast<std::ptrdiff_t>(first), job_.steps.end(),
                       [&](const Step& step) { return step.group != job_.steps[first].group; });
      const auto last = static_cast<std::size_t>(next - job_.steps.begin());
      Group(first, last);
      first = last;
    }
    Summary();
    return page_.Take();
  }

 private:
  void Heading() {
    page_.Line("{}", job_.title.empty() ? job_.file : job_.title);
    if (!job_.source.empty()) {
      page_.Line("source: {}", job_.source);
    }
    for (const auto& setting : job_.settingTexts) {
      page_.Line("setting: {}", setting);
    }
    page_.Line("lengths in metres, areas in square metres, angles in {}", UnitText(job_.angles));
  }

  // The steps [first, last): one step as a list, several as a table.
  void Group(std::size_t first, std::size_t last) {
    const Step& step = job_.steps[first];
    const bool table = last - first > 1;
    page_.Line("");
    page_.Line("{}: {}, {}",
               table ? fmt::format("{} to {}", step.name, job_.steps[last - 1].name) : step.name,
               step.service->name, step.service->summary);
    if (!step.note.empty()) {
      page_.Line("  {}", step.note);
    }
    if (!table && !step.code.empty()) {
      page_.Item("code", step.code);
    }
    for (std::size_t i = 0; i < step.inputs.size(); ++i) {
      const bool sights = step.service->inputs[i].kind == Kind::kSights;
      if (!sights && !step.inputs[i].text.empty() && !(table && Varies(first, last, i))) {
        page_.Item(std::string(step.service->inputs[i].name), InputText(step, i));
      }
    }
    Sights(first, last);
    if (table) {
      Table(first, last);
    } else {
      Results(first);
    }
  }

  // Once when all steps have the same sights, else under the name of each.
  void Sights(std::size_t first, std::size_t last) {
    const auto inputs = job_.steps[first].service->inputs;
    const auto field = std::ranges::find(inputs, Kind::kSights, &Field::kind);
    if (field == inputs.end()) {
      return;
    }
    const bool own =
        last - first > 1 && Varies(first, last, static_cast<std::size_t>(field - inputs.begin()));
    for (std::size_t i = first; i < (own ? last : first + 1); ++i) {
      if (own) {
        page_.Item("sights of", job_.steps[i].name);
      }
      PrintSights(outcomes_[i], job_.angles, page_);
    }
  }

  static std::string InputText(const Step& step, std::size_t index) {
    const auto unit = InfoOf(step.service->inputs[index].kind).unit;
    const bool literal = std::holds_alternative<double>(step.inputs[index].value);
    return literal ? fmt::format("{} {}", step.inputs[index].text, unit) : step.inputs[index].text;
  }

  bool Varies(std::size_t first, std::size_t last, std::size_t input) const {
    return std::any_of(job_.steps.begin() + static_cast<std::ptrdiff_t>(first),
                       job_.steps.begin() + static_cast<std::ptrdiff_t>(last),
                       [input](const Step& step) { return step.varies[input]; });
  }

  std::vector<Cell> OutputCells(std::size_t index, bool table) const {
    const auto fields = job_.steps[index].service->outputs;
    const auto points = std::ranges::count(fields, Kind::kPoint, &Field::kind);
    std::vector<Cell> cells;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const Value& value = outcomes_[index].outputs[i];
      const auto name = std::string(fields[i].name);
      if (fields[i].kind == Kind::kPoint) {
        AddPointCells(value, points > 1 ? name + '.' : "", table, cells);
      } else if (ShowsItself(fields[i].kind)) {
        cells.push_back({name, std::string(InfoOf(fields[i].kind).unit), ValueText(value)});
      }
    }
    return cells;
  }

  std::string ValueText(const Value& value) const {
    if (const auto* angle = std::get_if<IntAngle>(&value)) {
      return AngleText(*angle, job_.angles);
    }
    const auto* number = std::get_if<double>(&value);
    return number != nullptr ? NumberText(*number) : kNone;
  }

  std::string DifferenceTextOf(const Comparison& comparison) const {
    if (!Available(comparison.computed)) {
      return kNone;
    }
    if (const auto* angle = std::get_if<IntAngle>(&comparison.difference)) {
      return (*angle < 0 ? "" : "+") + AngleText(*angle, job_.angles);
    }
    return DifferenceText(std::get<double>(comparison.difference));
  }

  static std::string ExpectedName(const Step& step, const Expectation& expected) {
    const auto fields = step.service->outputs;
    const bool several = std::ranges::count(fields, Kind::kPoint, &Field::kind) > 1;
    auto output = std::string(fields[expected.output].name);
    if (expected.component.empty()) {
      return output;
    }
    return several ? output + '.' + expected.component : expected.component;
  }

  static std::string_view Verdict(const Comparison& comparison) {
    if (!Available(comparison.computed)) {
      return "MISSING";
    }
    if (!comparison.within) {
      return "";
    }
    return *comparison.within ? "ok" : "OUT OF TOLERANCE";
  }

  void Results(std::size_t index) {
    const Step& step = job_.steps[index];
    const Outcome& outcome = outcomes_[index];
    if (!outcome.success) {
      page_.Item("status", outcome.sentence);
    } else {
      for (const auto& cell : OutputCells(index, false)) {
        const bool bare = cell.text == kNone || cell.unit == "angle" || cell.unit.empty();
        page_.Item(cell.heading, bare ? cell.text : fmt::format("{} {}", cell.text, cell.unit));
      }
      PrintResiduals(outcome, page_);
      if (!Remark(outcome).empty()) {
        page_.Item("status", outcome.sentence);
      }
      if (!outcome.note.empty()) {
        page_.Item("note", outcome.note);
      }
    }
    if (!outcome.warning.empty()) {
      page_.Item("warning", outcome.warning);
    }
    for (std::size_t i = 0; i < step.expected.size(); ++i) {
      page_.Item(
          "expected",
          fmt::format("{} {}, difference {} {}", ExpectedName(step, step.expected[i]),
                      ValueText(step.expected[i].value), DifferenceTextOf(outcome.comparisons[i]),
                      Verdict(outcome.comparisons[i])));
    }
  }

  // What the status says beyond that there is a result.
  static std::string_view Remark(const Outcome& outcome) {
    return outcome.sentence == kComputed.sentence ? std::string_view() : outcome.sentence;
  }

  // What all rows of a table have in common: found once, so that its cost grows with the rows
  // alone.
  struct Layout {
    std::vector<std::size_t> varying;   // inputs that get a column
    std::vector<std::string> expected;  // outputs that any row expects, in the outputs' order
    bool codes;                         // whether any row has a feature code
  };

  Layout LayoutOf(std::size_t first, std::size_t last) const {
    const auto rows = std::span(job_.steps).subspan(first, last - first);
    Layout layout{{}, ExpectedNames(first, last), false};
    for (std::size_t i = 0; i < rows.front().inputs.size(); ++i) {
      if (Varies(first, last, i)) {
        layout.varying.push_back(i);
      }
    }
    layout.codes = std::ranges::any_of(rows, [](const Step& row) { return !row.code.empty(); });
    return layout;
  }

  // What any row of a table expects, in the order of the outputs.
  std::vector<std::string> ExpectedNames(std::size_t first, std::size_t last) const {
    std::vector<std::string> names;
    for (const auto& cell : OutputCells(first, true)) {
      const bool expected = std::any_of(
          job_.steps.begin() + static_cast<std::ptrdiff_t>(first),
          job_.steps.begin() + static_cast<std::ptrdiff_t>(last), [&cell](const Step& step) {
            return std::ranges::any_of(step.expected, [&](const Expectation& expectation) {
              return ExpectedName(step, expectation) == cell.heading;
            });
          });
      if (expected) {
        names.push_back(cell.heading);
      }
    }
    return names;
  }

  std::vector<Cell> TableRow(std::size_t index, const Layout& layout) const {
    const Step& step = job_.steps[index];
    const Outcome& outcome = outcomes_[index];
    std::vector<Cell> cells{{"name", "", step.name}};
    if (layout.codes) {
      cells.push_back({"code", "", step.code.empty() ? kNone : step.code});
    }
    for (const auto i : layout.varying) {
      const Field& field = step.service->inputs[i];
      const auto& text = step.inputs[i].text;
      cells.push_back({std::string(field.name), std::string(InfoOf(field.kind).unit),
                       text.empty() ? kNone : text});
    }
    std::ranges::move(OutputCells(index, true), std::back_inserter(cells));
    for (const auto& name : layout.expected) {
      Cell expected{"expected", name, ""};
      Cell difference{"difference", name, ""};
      for (std::size_t i = 0; i < step.expected.size(); ++i) {
        if (ExpectedName(step, step.expected[i]) == name) {
          expected.text = ValueText(step.expected[i].value);
          difference.text = DifferenceTextOf(outcome.comparisons[i]);
        }
      }
      cells.push_back(expected);
      cells.push_back(difference);
    }
    cells.push_back({"", "", std::string(RowVerdict(outcome))});
    return cells;
  }

  static std::string RowVerdict(const Outcome& outcome) {
    const auto warning = outcome.warning.empty() ? "" : "warning: " + outcome.warning;
    if (!outcome.success) {
      return Joined(outcome.sentence, warning);
    }
    std::string_view worst;
    for (const auto& comparison : outcome.comparisons) {
      const auto verdict = Verdict(comparison);
      if (worst.empty() || worst == "ok") {
        worst = verdict;
      }
    }
    std::string remarks;
    for (const std::string_view remark : {worst, Remark(outcome), std::string_view(outcome.note)}) {
      remarks += (remarks.empty() || remark.empty() ? "" : ", ") + std::string(remark);
    }
    return Joined(remarks, warning);
  }

  void Table(std::size_t first, std::size_t last) {
    const auto layout = LayoutOf(first, last);
    std::vector<std::vector<Cell>> rows;
    for (std::size_t i = first; i < last; ++i) {
      rows.push_back(TableRow(i, layout));
    }
    page_.Rows(rows);
  }

  void Summary() {
    const auto bad =
        std::ranges::count_if(outcomes_, [](const auto& outcome) { return !outcome.Good(); });
    const auto warnings = std::ranges::count_if(
        outcomes_, [](const auto& outcome) { return !outcome.warning.empty(); });
    page_.Line("");
    page_.Line("{} {}, {}{}", outcomes_.size(), outcomes_.size() == 1 ? "step" : "steps",
               bad == 0 ? "all good" : fmt::format("{} not good", bad),
               warnings == 0
                   ? ""
                   : fmt::format(", {} {}", warnings, warnings == 1 ? "warning" : "warnings"));
  }

  const Job& job_;
  const std::vector<Outcome>& outcomes_;
  TextPage page_;
};

}  // namespace

std::string TextReport(const Job& job, const std::vector<Outcome>& outcomes) {
  return TextReporter(job, outcomes).Write();
}

}  // namespace kavo_app
