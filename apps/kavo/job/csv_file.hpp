// Comma-separated files as other programs write them, read line by line.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/user_error.hpp"

namespace kavo_app {

/// What other programs put between columns.
inline constexpr std::string_view kOtherSeparators = ";\t";

/// What is wrong with columns that stand between those.
std::string SeparatorAdvice();

/// One line of the file: its fields, and where it stands.
struct CsvRow {
  Place place;
  std::vector<std::string> fields;
};

/// Reads all rows of a file; blank lines are left out. A byte-order mark and line ends of
/// LF or CRLF are taken. Refused are: text that is not UTF-8, control characters, a quotation mark
/// that does not close on its line, a line too long to be a row, and a last line without line end,
/// because the file may have been cut off in the middle of a number.
/// @param path  the file.
/// @param what  what it should be, for the message when it cannot be read.
/// @throws UserError  with file and line.
std::vector<CsvRow> ReadCsv(const std::filesystem::path& path, const std::string& what);

/// The same, from an open stream, with the name that messages give it.
std::vector<CsvRow> ReadCsv(std::istream& file, const std::string& name);

}  // namespace kavo_app
