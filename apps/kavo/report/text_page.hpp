// The page of a text report: lines, items and tables.
#pragma once

#include <fmt/format.h>

#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavo_app {

/// Stands where there is no number.
inline constexpr const char* kNone = "-";

/// One number or name of a result, with the heading that it has in a list or table.
struct Cell {
  std::string heading;
  std::string unit;
  std::string text;
};

class TextPage {
 public:
  /// A line without blanks at its end.
  template <class... Args>
  void Line(fmt::format_string<Args...> format, Args&&... args) {
    fmt::format_to(std::back_inserter(out_), format, std::forward<Args>(args)...);
    EndLine();
  }
  /// A heading and what it holds.
  void Item(std::string_view heading, std::string_view text);
  /// A table with headings and units above it. Its first and last column, names and verdicts, stand
  /// on the left, the numbers between them on the right.
  void Rows(const std::vector<std::vector<Cell>>& rows);

  std::string Take() { return std::move(out_); }

 private:
  void EndLine();
  void TableLine(const std::vector<Cell>& row, const std::vector<std::size_t>& widths,
                 std::string_view (*text)(const Cell& cell));

  std::string out_;
};

}  // namespace kavo_app
