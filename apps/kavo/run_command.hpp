// kavo run: a job in, its report and files out.
#pragma once

#include <string>

namespace kavo_app {

/// What to write besides the report: a file's name, "-" for standard output in place of the report,
/// or empty for not at all.
struct RunOptions {
  std::string job;
  std::string json;
  std::string csv;
  std::string geojson;
  std::string svg;
  bool strict = false;  ///< Whether a warning counts as a step that is not good.
};

/// Runs a job, prints the report and writes the files that the options ask for.
/// @return  true when every step is good.
/// @throws UserError  when the job is wrong, and then nothing is written; when something cannot be
///   written, and then no file is, or it says which are.
bool RunCommand(const RunOptions& options);

}  // namespace kavo_app
