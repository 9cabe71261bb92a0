// Files that a user names to be read.
#pragma once

#include <filesystem>
#include <fstream>
#include <istream>
#include <string>

#include "base/user_error.hpp"

namespace kavo_app {

/// Opens a file.
/// @param what  what it should be, for the message when it cannot be read.
/// @throws UserError  when it cannot.
std::ifstream OpenInput(const std::filesystem::path& path, const std::string& what);

/// Refuses a file whose reading ended before the file did.
/// @param place  how far it was read.
/// @throws UserError  when it did.
void RefuseCutShort(const std::istream& file, const Place& place);

}  // namespace kavo_app
