// Files of rows, replayed against functions.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "exports.hpp"

namespace kavo_test {

/// Replays each file, prints a line for every difference and `N passed, M failed` at the end.
/// Returns false on any difference, malformed row or file without a row.
bool ReplayFiles(std::span<char* const> paths, std::span<const Export> functions);

}  // namespace kavo_test
