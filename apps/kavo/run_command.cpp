#include "run_command.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <system_error>
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

bool SameFile(const std::string& one, const std::string& other) {
  std::error_code failed;
  return one == other || std::filesystem::equivalent(one, other, failed);
}

void RefuseSharedTargets(const RunOptions& options) {
  for (auto one = kFormats.begin(); one != kFormats.end(); ++one) {
    const auto& target = options.*one->target;
    if (target.empty()) {
      continue;
    }
    const bool taken = std::any_of(kFormats.begin(), one, [&](const Format& other) {
      return SameFile(options.*other.target, target);
    });
    if (taken || SameFile(options.job, target)) {
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
  std::optional<std::string> printed;
  for (const auto& format : kFormats) {
    const auto& target = options.*format.target;
    if (target == kStandardOutput) {
      printed = format.write(job, outcomes);
    } else if (!target.empty()) {
      files.emplace_back(target, format.write(job, outcomes));
    }
  }
  PrintOut(printed ? *printed : TextReport(job, outcomes));
  std::ranges::for_each(files, &OutputFile::Keep);
  return std::ranges::all_of(outcomes, &Outcome::Good);
}

}  // namespace kavo_app
