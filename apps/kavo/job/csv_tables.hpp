// A CSV file with a heading as tables of a job.
#pragma once

#include <toml++/toml.h>

#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

#include "base/user_error.hpp"

namespace kavo_app {

/// One row as a table, for a TomlReader: a text under the name of each column; an empty field is
/// absent. A column "expect.north" makes north in a table expect.
struct CsvTable {
  Place place;
  toml::table table;
};

/// Reads a file whose first line names the columns. A column `point` is taken for `name` where
/// only a name is known: that is how lists of measured points head it. Rows without any text are
/// left out.
/// @param path    the file.
/// @param known   the columns that there can be.
/// @param zeroes  those among them that count as 0 when absent: a column that is there has them
/// all.
/// @throws UserError  with file and line; also for a row with more or fewer fields than the
/// heading,
///                    as one that was cut off has.
std::vector<CsvTable> ReadCsvTables(const std::filesystem::path& path,
                                    std::span<const std::string_view> known,
                                    std::span<const std::string_view> zeroes);

}  // namespace kavo_app
