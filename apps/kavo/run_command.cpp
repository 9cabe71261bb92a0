#include "run_command.hpp"

#include <algorithm>
#include <array>
#include <vector>

#include "base/output_file.hpp"
#include "base/user_error.hpp"
#include "report/report.hpp"

namespace kavo_app {
namespace {

constexpr std::string_view kStandardOutput = "-";

struct Format {
  const char* option;
  std::string RunOptions::*target;
  std::string (*write)(const Job& job, const std::vector<Outcome>& outcomes);
};
constexpr std::array kFormats = {
    Format{"--json", &RunOptions::json, JsonReport},
    Format{"--csv", &RunOptions::csv, CsvList},
    Format{"--geojson", &RunOptions::geojson, GeoJson},
    Format{"--svg", &RunOptions::svg, SvgDrawing},
};

void RefuseSharedTargets(const RunOptions& options) {
  for (auto one = kFormats.begin(); one != kFormats.end(); ++one) {
    const auto& target = options.*one->target;
    if (!target.empty() && std::any_of(kFormats.begin(), one, [&](const Format& other) {
          return options.*other.target == target;
        })) {
      throw UserError({"kavo run", 0}, one->option,
                      "\"" + target + "\" is taken; give each format a file of its own");
    }
  }
}

}  // namespace

bool RunCommand(const RunOptions& options) {
  RefuseSharedTargets(options);
  const Job job = ReadJob(options.job);
  const auto outcomes = RunJob(job);
  std::vector<OutputFile> files;
  bool printed = false;
  for (const auto& format : kFormats) {
    const auto& target = options.*format.target;
    if (target == kStandardOutput) {
      PrintOut(format.write(job, outcomes));
      printed = true;
    } else if (!target.empty()) {
      files.emplace_back(target, format.write(job, outcomes));
    }
  }
  if (!printed) {
    PrintOut(TextReport(job, outcomes));
  }
  std::ranges::for_each(files, &OutputFile::Keep);
  return std::ranges::all_of(outcomes, &Outcome::Good);
}

}  // namespace kavo_app
