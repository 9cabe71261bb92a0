// Jobs: read, run and reported. Lines `%%` part a job from the lists that it may name: points.csv,
// and the observations rows.csv.
#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "job/job.hpp"
#include "job/run.hpp"
#include "readers.hpp"
#include "report/report.hpp"

namespace kavo_fuzz {
namespace {

using namespace kavo_app;

// What an input takes from a step is an output of an earlier one.
bool IsTied(const Job& job, const Input& input, std::size_t step) {
  const bool own =
      !input.from || (input.from->step < step &&
                      input.from->output < job.steps[input.from->step].service->outputs.size());
  return own && std::ranges::all_of(input.parts,
                                    [&](const Input& part) { return IsTied(job, part, step); });
}

void HoldJob(const Job& job, const std::string& text) {
  for (std::size_t i = 0; i < job.steps.size(); ++i) {
    const Step& step = job.steps[i];
    Hold(step.service != nullptr && step.inputs.size() == step.service->inputs.size() &&
             step.varies.size() == step.inputs.size() &&
             std::ranges::all_of(step.inputs, [&](const Input& in) { return IsTied(job, in, i); }),
         "ReadJob", "ties every input", text);
  }
}

// Numbers are finite, and none is one of those that stand for no number.
bool IsResult(const Value& value) {
  const auto isNumber = [](double number) {
    return std::isfinite(number) && number != VALUE_INVALID;
  };
  if (const auto* angle = std::get_if<IntAngle>(&value)) {
    return *angle != ANGLE_INVALID;
  }
  if (const auto* point = std::get_if<CoordPt>(&value)) {
    return isNumber(point->north) && isNumber(point->east);
  }
  const auto* number = std::get_if<double>(&value);
  return number == nullptr || isNumber(*number);
}

void HoldOutcomes(const Job& job, const std::vector<Outcome>& outcomes, const std::string& text) {
  Hold(outcomes.size() == job.steps.size(), "RunJob", "has an outcome for each step", text);
  for (std::size_t i = 0; i < outcomes.size(); ++i) {
    const Outcome& outcome = outcomes[i];
    Hold(!outcome.sentence.empty() && outcome.comparisons.size() == job.steps[i].expected.size(),
         "RunJob", "says what became of each step", text);
    Hold(std::ranges::all_of(outcome.outputs, IsResult), "RunJob", "gives no number for none",
         text);
  }
}

std::string ReportOf(const std::filesystem::path& path, const std::string& text) {
  std::string report;
  Reads([&] {
    const Job job = ReadJob(path);
    HoldJob(job, text);
    const auto outcomes = RunJob(job);
    HoldOutcomes(job, outcomes, text);
    report = JsonReport(job, outcomes);
    Hold(nlohmann::json::accept(report), "JsonReport", "is JSON", report);
    report += TextReport(job, outcomes);
  });
  return report;
}

// What stands before the next parting line, which leaves the text with it.
std::string_view TakePart(std::string_view& text) {
  constexpr std::string_view kParting = "\n%%\n";
  const auto end = std::min(text.find(kParting), text.size());
  const auto part = text.substr(0, end);
  text.remove_prefix(std::min(end + kParting.size(), text.size()));
  return part;
}

}  // namespace
}  // namespace kavo_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kavo_fuzz;
  static const Folder folder;
  const std::string text(data, data + size);
  std::string_view rest = text;
  const auto path = folder.Write("job.toml", TakePart(rest));
  static_cast<void>(folder.Write("points.csv", TakePart(rest)));
  static_cast<void>(folder.Write("rows.csv", TakePart(rest)));
  Hold(ReportOf(path, text) == ReportOf(path, text), "RunJob", "gives the same again", text);
  return 0;
}
