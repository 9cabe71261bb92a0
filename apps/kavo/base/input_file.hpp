// Files that a user names to be read.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace kavo_app {

/// Opens a file.
/// @param what  what it should be, for the message when it cannot be read.
/// @throws UserError  when it cannot.
std::ifstream OpenInput(const std::filesystem::path& path, const std::string& what);

}  // namespace kavo_app
