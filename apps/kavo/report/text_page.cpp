#include "report/text_page.hpp"

#include <algorithm>

#include "base/plain_text.hpp"

namespace kavo_app {
namespace {

std::string_view HeadingOf(const Cell& cell) { return cell.heading; }
// The unit of all angles stands at the head of the report.
std::string_view UnitOf(const Cell& cell) {
  return cell.unit == "angle" ? std::string_view() : std::string_view(cell.unit);
}
std::string_view TextOf(const Cell& cell) { return cell.text; }

}  // namespace

void TextPage::EndLine() {
  while (out_.ends_with(' ')) {
    out_.pop_back();
  }
  out_ += '\n';
}

void TextPage::Item(std::string_view heading, std::string_view text) {
  Line("  {:<12} {}", heading, text);
}

void TextPage::Rows(const std::vector<std::vector<Cell>>& rows) {
  const auto widest = std::ranges::max_element(rows, {}, &std::vector<Cell>::size);
  std::vector<std::size_t> widths;
  for (const auto& cell : *widest) {
    widths.push_back(std::max(Columns(HeadingOf(cell)), Columns(UnitOf(cell))));
  }
  for (const auto& row : rows) {
    for (std::size_t i = 0; i + 1 < row.size(); ++i) {
      widths[i] = std::max(widths[i], Columns(row[i].text));
    }
  }
  TableLine(*widest, widths, HeadingOf);
  TableLine(*widest, widths, UnitOf);
  for (const auto& row : rows) {
    TableLine(row, widths, TextOf);
  }
}

// The verdict is as long as it needs.
void TextPage::TableLine(const std::vector<Cell>& row, const std::vector<std::size_t>& widths,
                         std::string_view (*text)(const Cell& cell)) {
  fmt::format_to(std::back_inserter(out_), "  {:<{}}", text(row.front()), widths.front());
  for (std::size_t i = 1; i + 1 < row.size(); ++i) {
    fmt::format_to(std::back_inserter(out_), " {:>{}}", text(row[i]), widths[i]);
  }
  Line("  {}", text(row.back()));
}

}  // namespace kavo_app
