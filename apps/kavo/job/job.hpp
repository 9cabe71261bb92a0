// A job: what a job file says, checked and ready to run.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/angle_text.hpp"
#include "host/instrument.hpp"
#include "service/service.hpp"

namespace kavo_app {

/// An output of an earlier step.
struct ResultRef {
  std::size_t step;
  std::size_t output;
};

/// An input before the run: a value, an earlier result, or parts that make up a line or a list.
struct Input {
  Value value;                    ///< Set when the job gives the value itself.
  std::optional<ResultRef> from;  ///< Set when it comes from an earlier step.
  std::vector<Input> parts;       ///< The points of a list; the two definitions of a line.
  std::string text;               ///< As the job writes it, for the report; empty when absent.
  bool named = false;             ///< The text is a name, not the value itself.
};

/// A published or otherwise known value of one number of the outputs.
struct Expectation {
  std::size_t output;
  std::string component;  ///< Of a point; empty for other kinds.
  Value value;
};

/// One call of a service.
struct Step {
  const Service* service = nullptr;
  std::string name;           ///< As the job names it, or "step 3".
  std::string note;           ///< The job's remark; may be empty.
  std::string code;           ///< The feature code of a measured point; may be empty.
  std::size_t group = 0;      ///< Steps of one `each` share their group.
  std::vector<Input> inputs;  ///< One for each input field of the service.
  std::vector<bool> varies;   ///< For each input: given in the row of an `each`, not for all.
  std::vector<Expectation> expected;
  std::optional<double> tolerance;         ///< Metres, square metres, per cent or none.
  std::optional<IntAngle> angleTolerance;  ///< For angles.
};

/// Everything that a job file says.
struct Job {
  std::string file;
  std::vector<std::filesystem::path> readFiles;  ///< Itself and all that it names; never written.
  std::string title;
  std::string source;
  AngleUnit angles = AngleUnit::kDms;
  InstrumentSettings settings;
  std::vector<std::string> settingTexts;  ///< What [settings] changes, for the report.
  std::vector<Step> steps;

  /// The path of a file that the job names, which lies beside it; noted as one that it reads.
  std::filesystem::path FileNamed(const std::string& name) {
    return readFiles.emplace_back(std::filesystem::path(file).parent_path() / name);
  }
};

/// Reads and checks a job file, the lists that it names and everything that its steps refer to.
/// @throws UserError  with file, line, field and what would be right.
Job ReadJob(const std::filesystem::path& path);

}  // namespace kavo_app
