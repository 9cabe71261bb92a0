// The [settings] table of a job: what the instrument behind the library is set to.
#pragma once

#include <string_view>

#include "job/job.hpp"
#include "job/toml_reader.hpp"

namespace kavo_app {

/// Reads the table, if there is one, into the job's settings and their texts.
void ReadSettings(const TomlReader& top, Job& job);

/// Refuses a setting that is on and would change nothing: it would pass for a correction.
/// @param heeded  what the services that are to be called heed, together.
/// @param calls   what they are, for the message.
void RefuseIdleSettings(const TomlReader& top, const InstrumentSettings& set, SettingSet heeded,
                        std::string_view calls);

}  // namespace kavo_app
