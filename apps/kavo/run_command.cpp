#include "run_command.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "base/output_file.hpp"
#include "base/user_error.hpp"
#include "plan/drawing.hpp"
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

bool SameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
  std::error_code failed;
  return std::filesystem::absolute(one, failed).lexically_normal() ==
             std::filesystem::absolute(other, failed).lexically_normal() ||
         std::filesystem::equivalent(one, other, failed);
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
    if (taken) {
      throw UserError({"kavo run", 0}, one->option,
                      "\"" + target + "\" is taken; give each format a file of its own");
    }
  }
}

// A list of measurements may be the only one there is: no result takes its place.
void RefuseReadFiles(const RunOptions& options, const Job& job) {
  for (const auto& format : kFormats) {
    const auto& target = options.*format.target;
    const auto isTarget = [&](const auto& file) { return SameFile(file, target); };
    if (!target.empty() && target != kStandardOutput &&
        std::ranges::any_of(job.readFiles, isTarget)) {
      throw UserError({"kavo run", 0}, format.option,
                      "\"" + target + "\" is read by the job; write to another file");
    }
  }
}

}  // namespace

bool RunCommand(const RunOptions& options) {
  RefuseSharedTargets(options);
  const Job job = ReadJob(options.job);
  RefuseReadFiles(options, job);
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
  OutputFile::KeepAll(files);
  return std::ranges::all_of(outcomes, [&options](const Outcome& outcome) {
    return outcome.Good() && (!options.strict || outcome.warning.empty());
  });
}

}  // namespace kavo_app
