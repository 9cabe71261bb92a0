#include "job/csv_tables.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "base/near_name.hpp"
#include "base/plain_text.hpp"
#include "job/csv_file.hpp"

namespace kavo_app {
namespace {

using Columns = std::vector<std::string>;

constexpr std::string_view kPoint = "point";

// The columns that there can be. Lists of measured points head their names with `point`.
std::vector<std::string_view> Known(std::span<const std::string_view> fields) {
  std::vector<std::string_view> known(fields.begin(), fields.end());
  if (std::ranges::find(known, kPoint) == known.end()) {
    known.insert(known.begin(), kPoint);
  }
  return known;
}

void CheckColumn(const std::string& column, const Place& place,
                 std::span<const std::string_view> known) {
  if (column.find_first_of(kOtherSeparators) != std::string::npos) {
    throw UserError(place, "", SeparatorAdvice());
  }
  const auto key = std::string_view(column).substr(0, column.find('.'));
  if (std::ranges::find(known, key) == known.end()) {
    throw UserError(place, "heading: " + Quoted(column), UnknownAdvice(key, known));
  }
}

Columns ColumnsOf(const CsvRow& heading, std::span<const std::string_view> fields) {
  const bool pointIsName = std::ranges::find(fields, kPoint) == fields.end();
  const auto known = Known(fields);
  Columns columns;
  for (const auto& head : heading.fields) {
    CheckColumn(head, heading.place, known);
    auto column = pointIsName && head == kPoint ? "name" : head;
    if (std::ranges::find(columns, column) != columns.end()) {
      throw UserError(heading.place, "heading: " + Quoted(head),
                      fmt::format("is there twice{}; keep one",
                                  head == column ? "" : ", as it means the same as name"));
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
    throw UserError(place, "heading: " + Quoted(key),
                    fmt::format("stands beside columns that are parts of it, such as {}.north; "
                                "keep either",
                                key));
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

void CheckWidth(const CsvRow& row, std::size_t wanted) {
  if (row.fields.size() == wanted) {
    return;
  }
  if (row.fields.front().find_first_of(kOtherSeparators) != std::string::npos) {
    throw UserError(row.place, "", SeparatorAdvice());
  }
  throw UserError(row.place, "",
                  fmt::format("has {} fields where the heading has {}; {}; is the line whole?",
                              row.fields.size(), wanted, kListRule));
}

toml::table TableOf(const CsvRow& row, const Columns& columns) {
  CheckWidth(row, columns.size());
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
