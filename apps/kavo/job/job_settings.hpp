// The [settings] table of a job: what the instrument behind the library is set to.
#pragma once

#include "job/job.hpp"
#include "job/toml_reader.hpp"

namespace kavo_app {

/// Reads the table, if there is one, into the job's settings and their texts.
void ReadSettings(const TomlReader& top, Job& job);

}  // namespace kavo_app
