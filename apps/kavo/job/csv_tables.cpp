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

bool Holds(std::span<const std::string_view> keys, std::string_view key) {
  return std::ranges::find(keys, key) != keys.end();
}

// Lists of measured points head their names with `point`.
bool IsName(std::string_view column, std::span<const std::string_view> known) {
  return column == "point" && !Holds(known, column);
}

void CheckColumn(const std::string& column, const Place& place,
                 std::span<const std::string_view> known) {
  if (column.find_first_of(kOtherSeparators) != std::string::npos) {
    throw UserError(place, "", SeparatorAdvice());
  }
  const auto key = std::string_view(column).substr(0, column.find('.'));
  if (!Holds(known, key) && !IsName(column, known)) {
    std::vector<std::string_view> all(known.begin(), known.end());
    if (!Holds(known, "point")) {
      all.insert(all.begin(), "point");
    }
    throw UserError(place, "heading: " + Quoted(column), UnknownAdvice(key, all));
  }
}

// A column stands once, and not beside those that are parts of it.
void CheckApart(const Columns& columns, const Place& place) {
  for (const auto& column : columns) {
    if (std::ranges::count(columns, column) > 1) {
      throw UserError(place, "heading: " + Quoted(column),
                      fmt::format("is there twice{}; keep one",
                                  column == "name" ? ", maybe once as point" : ""));
    }
    const auto part = std::ranges::find_if(
        columns, [&](const auto& other) { return other.starts_with(column + '.'); });
    if (part != columns.end()) {
      throw UserError(place, "heading: " + Quoted(column),
                      fmt::format("stands beside {}, which is a part of it; keep either", *part));
    }
  }
}

Columns ColumnsOf(const CsvRow& heading, std::span<const std::string_view> known) {
  Columns columns;
  for (const auto& column : heading.fields) {
    CheckColumn(column, heading.place, known);
    columns.push_back(IsName(column, known) ? "name" : column);
  }
  CheckApart(columns, heading.place);
  return columns;
}

// Puts the text at "a.b.c" into table c of table b of table a.
void Insert(toml::table& table, std::string_view column, const std::string& text) {
  const auto dot = column.find('.');
  const auto key = column.substr(0, dot);
  if (dot == column.npos) {
    table.insert(key, text);
    return;
  }
  auto* inner = table.insert(key, toml::table()).first->second.as_table();
  Insert(*inner, column.substr(dot + 1), text);
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

// A target height that was left out of one row would count as 0 there.
void RefuseEmpty(const CsvRow& row, const Columns& columns,
                 std::span<const std::string_view> zeroes) {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (row.fields[i].empty() && Holds(zeroes, columns[i])) {
      throw UserError(row.place, columns[i], "is empty; write 0 where there is none");
    }
  }
}

toml::table TableOf(const CsvRow& row, const Columns& columns) {
  CheckWidth(row, columns.size());
  toml::table table;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!row.fields[i].empty()) {
      Insert(table, columns[i], row.fields[i]);
    }
  }
  return table;
}

}  // namespace

std::vector<CsvTable> ReadCsvTables(const std::filesystem::path& path,
                                    std::span<const std::string_view> known,
                                    std::span<const std::string_view> zeroes) {
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
      RefuseEmpty(*row, columns, zeroes);
      tables.push_back({row->place, std::move(table)});
    }
  }
  return tables;
}

}  // namespace kavo_app
