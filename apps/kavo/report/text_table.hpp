// The layout of a table in a text report.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "report/text_page.hpp"

namespace kavo_app {

/// What stands in a column: names and remarks on the left, numbers with their decimal signs under
/// each other.
enum class Holds { kNames, kNumbers };

struct Column {
  std::string heading;
  std::string unit;  ///< Stands under the heading.
  Holds holds = Holds::kNumbers;
  std::size_t group = 0;  ///< A wider gap stands between columns of different groups.
};

/// A table; every text keeps the digits that it has. A column without any value is left out.
class TextTable {
 public:
  explicit TextTable(std::vector<Column> columns) : columns_(std::move(columns)) {}

  /// @param texts  one for each column; "-" or nothing where there is no value.
  void AddRow(std::vector<std::string> texts);

  void Print(TextPage& page) const;

 private:
  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace kavo_app
