#include <fmt/format.h>

#include <algorithm>
#include <span>

#include "report/report.hpp"
#include "report/report_list.hpp"
#include "report/report_table.hpp"
#include "report/text_page.hpp"

namespace kavo_app {
namespace {

void PrintHeading(const Job& job, TextPage& page) {
  page.Folded("", job.title.empty() ? job.file : job.title);
  if (!job.source.empty()) {
    page.Folded("source: ", job.source);
  }
  for (const auto& setting : job.settingTexts) {
    page.Folded("setting: ", setting);
  }
  page.Line("lengths in metres, areas in square metres, angles in {}", UnitText(job.angles));
}

void PrintTitle(std::string_view name, const Service& service, TextPage& page) {
  page.Line("");
  page.Line("{}: {}, {}", name, service.name, service.summary);
}

// Sights and residuals are tables of their own, so a step that has them is a list.
bool FitsTable(const Service& service) {
  return std::ranges::find(service.inputs, Kind::kSights, &Field::kind) == service.inputs.end();
}

std::ptrdiff_t Warnings(std::span<const Outcome> outcomes) {
  return std::ranges::count_if(outcomes,
                               [](const auto& outcome) { return !outcome.warning.empty(); });
}

// The steps of one `each`, or a single one.
// @return how many warnings there are.
std::ptrdiff_t PrintGroup(std::span<const Step> steps, std::span<const Outcome> outcomes,
                          AngleUnit unit, TextPage& page) {
  const Service& service = *steps.front().service;
  if (steps.size() > 1 && FitsTable(service)) {
    PrintTitle(steps.front().name + " to " + steps.back().name, service, page);
    PrintTable(steps, outcomes, unit, page);
    return CommonWarning(outcomes).empty() ? Warnings(outcomes) : 1;
  }
  for (std::size_t i = 0; i < steps.size(); ++i) {
    PrintTitle(steps[i].name, service, page);
    PrintList(steps[i], outcomes[i], unit, page);
  }
  return Warnings(outcomes);
}

std::string Counted(std::ptrdiff_t count, std::string_view one) {
  return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

void PrintSummary(std::span<const Outcome> outcomes, std::ptrdiff_t warnings, TextPage& page) {
  const auto bad =
      std::ranges::count_if(outcomes, [](const auto& outcome) { return !outcome.Good(); });
  page.Line("");
  page.Line("{}, {}{}", Counted(std::ssize(outcomes), "step"),
            bad == 0 ? "all good" : fmt::format("{} not good", bad),
            warnings == 0 ? "" : ", " + Counted(warnings, "warning"));
}

}  // namespace

std::string TextReport(const Job& job, const std::vector<Outcome>& outcomes) {
  TextPage page;
  PrintHeading(job, page);
  const std::span<const Step> steps(job.steps);
  std::ptrdiff_t warnings = 0;
  for (std::size_t first = 0; first < steps.size();) {
    std::size_t last = first + 1;
    while (last < steps.size() && steps[last].group == steps[first].group) {
      ++last;
    }
    warnings += PrintGroup(steps.subspan(first, last - first),
                           std::span(outcomes).subspan(first, last - first), job.angles, page);
    first = last;
  }
  PrintSummary(outcomes, warnings, page);
  return page.Take();
}

}  // namespace kavo_app
