// A job file as the parser has it.
#pragma once

#include <toml++/toml.h>

#include <filesystem>

namespace kavo_app {

/// Reads a job file.
/// @throws UserError  when it cannot be read or is no TOML, with the line.
toml::table ReadToml(const std::filesystem::path& path);

}  // namespace kavo_app
