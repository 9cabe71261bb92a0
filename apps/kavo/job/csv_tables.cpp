#include "job/csv_tables.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <string>

#include "base/plain_text.hpp"
#include "job/csv_file.hpp"

namespace kavo_app {
namespace {

using Columns = std::vector<std::string>;

bool Knows(std::span<const std::string_view> known, std::string_view name) {
  return std::ranges::find(known, name) != known.end();
}

void CheckColumn(const std::string& column, const Place& place,
                 std::span<const std::string_view> known) {
  if (column.find(';') != std::string::npos) {
    throw UserError(place, "", "the columns stand between commas, not semicolons");
  }
  if (!Knows(known, std::string_view(column).substr(0, column.find('.')))) {
    throw UserError(place, Quoted(column),
                    fmt::format("is no column here; the first line names the columns, and there "
                                "are {}",
                                fmt::join(known, ", ")));
  }
}

Columns ColumnsOf(const CsvRow& heading, std::span<const std::string_view> known) {
  Columns columns;
  for (auto column : heading.fields) {
    if (column == "point" && !Knows(known, column)) {
      column = "name";
    }
    CheckColumn(column, heading.place, known);
    if (std::ranges::find(columns, column) != columns.end()) {
      throw UserError(heading.place, column, "heads two columns");
    }
    columns.push_back(std::move(column));
  }
  return columns;
}

// Puts the text at "a.b.c" into table c of table b of table a.
void Insert(toml::table& table, std::string_view column, const std::string& text,
            const Place& place) {
  const auto dot = column.find('.');
  const auto key = column.substr(0, dot);
  auto* node = table.get(key);
  if (dot == column.npos ? node != nullptr : node != nullptr && !node->is_table()) {
    throw UserError(place, std::string(key), "is both a column and the table of others");
  }
  if (dot == column.npos) {
    table.insert(key, text);
    return;
  }
  if (node == nullptr) {
    node = &table.insert(key, toml::table()).first->second;
  }
  Insert(*node->as_table(), column.substr(dot + 1), text, place);
}

toml::table TableOf(const CsvRow& row, const Columns& columns) {
  if (row.fields.size() != columns.size()) {
    throw UserError(row.place, "",
                    fmt::format("has {} fields where the heading has {}; is the line whole, and "
                                "are decimals written with a point?",
                                row.fields.size(), columns.size()));
  }
  toml::table table;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!row.fields[i].empty()) {
      Insert(table, columns[i], row.fields[i], row.place);
    }
  }
  return table;
}

}  // namespace

std::vector<CsvTable> ReadCsvTables(const std::filesystem::path& path,
                                    std::span<const std::string_view> known) {
  const auto rows = ReadCsv(path, "a comma-separated file with a heading");
  if (rows.size() < 2) {
    throw UserError({path.string(), 1}, "",
                    "has no rows; the first line names the columns, the others are rows");
  }
  const auto columns = ColumnsOf(rows.front(), known);
  std::vector<CsvTable> tables;
  tables.reserve(rows.size());
  for (auto row = rows.begin() + 1; row != rows.end(); ++row) {
    if (auto table = TableOf(*row, columns); !table.empty()) {
      tables.push_back({row->place, std::move(table)});
    }
  }
  return tables;
}

}  // namespace kavo_app
