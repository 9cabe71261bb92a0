// Runs a job: every step in order, each with what it needs from the steps before it.
#pragma once

#include <vector>

#include "job/job.hpp"
#include "job/outcome.hpp"

namespace kavo_app {

/// Runs all steps on an instrument with the job's settings. A step that fails leaves its outputs
/// without value; what depends on them is skipped.
std::vector<Outcome> RunJob(const Job& job);

}  // namespace kavo_app
