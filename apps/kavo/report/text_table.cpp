#include "report/text_table.hpp"

#include <algorithm>
#include <string_view>

#include "base/number_text.hpp"
#include "base/plain_text.hpp"

namespace kavo_app {
namespace {

// Also an angle in degrees, minutes and seconds.
bool IsNumber(std::string_view text) {
  return text.find_first_not_of("+-.0123456789e") == text.npos && text != kNone;
}

// The columns that a number takes before its decimal sign, and those from there on.
std::size_t WholeOf(std::string_view number) { return std::min(number.find('.'), number.size()); }
std::size_t FractionOf(std::string_view number) { return number.size() - WholeOf(number); }

// A column with what it needs to bring its texts under each other.
class ColumnLayout {
 public:
  explicit ColumnLayout(const Column& column)
      : column_(column), width_(std::max(Columns(column.heading), Columns(column.unit))) {}

  void Take(std::string_view text) {
    empty_ = empty_ && (text.empty() || text == kNone);
    if (Aligned(text)) {
      whole_ = std::max(whole_, WholeOf(text));
      fraction_ = std::max(fraction_, FractionOf(text));
      width_ = std::max(width_, whole_ + fraction_);
    } else {
      width_ = std::max(width_, Columns(text));
    }
  }

  bool Empty() const { return empty_; }
  std::size_t Group() const { return column_.group; }
  std::string Heading() const { return Set(column_.heading, 0); }
  std::string Unit() const { return Set(column_.unit, 0); }
  std::string Text(std::string_view text) const {
    return Set(text, Aligned(text) ? fraction_ - FractionOf(text) : 0);
  }

 private:
  bool Aligned(std::string_view text) const {
    return column_.holds == Holds::kNumbers && IsNumber(text);
  }

  // The text on its side of the column; on the right, with blanks behind it.
  std::string Set(std::string_view text, std::size_t behind) const {
    const std::string blanks(width_ - behind - Columns(text), ' ');
    return column_.holds == Holds::kNames ? std::string(text) + blanks
                                          : blanks + std::string(text) + std::string(behind, ' ');
  }

  const Column& column_;
  std::size_t width_;
  std::size_t whole_ = 0;
  std::size_t fraction_ = 0;
  bool empty_ = true;
};

// The texts of one line, each as its column sets it.
template <class TextOf>
void PrintLine(const std::vector<ColumnLayout>& columns, const TextOf& textOf, TextPage& page) {
  std::string line;
  const ColumnLayout* before = nullptr;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!columns[i].Empty()) {
      const bool apart = before != nullptr && before->Group() != columns[i].Group();
      line += (apart ? "   " : " ") + textOf(i);
      before = &columns[i];
    }
  }
  if (line.find_first_not_of(' ') != line.npos) {  // not all tables have units
    page.Line(" {}", line);
  }
}

}  // namespace

// In one line each before they are measured.
void TextTable::AddRow(std::vector<std::string> texts) {
  for (auto& text : texts) {
    std::ranges::replace(text, '\n', ' ');
    text = InOneLine(text);
  }
  rows_.push_back(std::move(texts));
}

void TextTable::Print(TextPage& page) const {
  std::vector<ColumnLayout> columns(columns_.begin(), columns_.end());
  for (const auto& row : rows_) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      columns[i].Take(row[i]);
    }
  }
  PrintLine(
      columns, [&columns](std::size_t i) { return columns[i].Heading(); }, page);
  PrintLine(
      columns, [&columns](std::size_t i) { return columns[i].Unit(); }, page);
  for (const auto& row : rows_) {
    PrintLine(
        columns, [&columns, &row](std::size_t i) { return columns[i].Text(row[i]); }, page);
  }
}

}  // namespace kavo_app
