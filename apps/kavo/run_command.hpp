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
};

/// Runs a job and writes everything that the options ask for, or nothing.
/// @return  true when every step is good.
/// @throws UserError  when the job is wrong or something cannot be written.
bool RunCommand(const RunOptions& options);

}  // namespace kavo_app
