// Runs a job: every step in order, each with what it needs from the steps before it.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "job.hpp"

namespace kavo_app {

/// An expected number beside the computed one.
struct Comparison {
  Value computed;  ///< No value when there is none to compare.
  std::variant<double, IntAngle>
      difference;              ///< Computed minus expected; angles within +-half a circle.
  std::optional<bool> within;  ///< Whether it is in the step's tolerance, if there is one.
};

/// What became of a step.
struct Outcome {
  bool ran = false;
  std::int32_t status = 0;               ///< Of the export; only when it ran.
  const StatusRow* statusRow = nullptr;  ///< Null when the step did not run.
  std::string skipped;                   ///< Why it did not run.
  std::vector<Value> inputs;             ///< As the call got them; only when it ran.
  std::vector<Value> outputs;            ///< In the order of the service's outputs.
  std::vector<Comparison> comparisons;   ///< One for each expectation.

  /// True when the export succeeded and nothing expected is out of tolerance.
  bool Good() const;
};

/// Runs all steps on an instrument with the job's settings. A step that fails leaves its outputs
/// without value; what depends on them is skipped.
std::vector<Outcome> RunJob(const Job& job);

}  // namespace kavo_app
