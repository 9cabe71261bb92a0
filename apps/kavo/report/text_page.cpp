#include "report/text_page.hpp"

#include <algorithm>

#include "base/plain_text.hpp"

namespace kavo_app {
namespace {

constexpr std::size_t kMostColumns = 100;

// Takes the next line off a text, whichever way its lines end. Tabs have no stops here.
std::string TakeLine(std::string_view& text) {
  auto line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(text.size(), line.size() + 1));
  line.remove_suffix(line.ends_with('\r') ? 1 : 0);
  std::string out(line);
  std::ranges::replace(out, '\t', ' ');
  return InOneLine(out);
}

}  // namespace

void TextPage::Folded(std::string_view head, std::string_view text) {
  const std::size_t indent = Columns(head);
  out_ += head;
  FoldLine(indent, TakeLine(text));
  while (!text.empty()) {
    out_.append(indent, ' ');
    FoldLine(indent, TakeLine(text));
  }
}

void TextPage::FoldLine(std::size_t indent, std::string_view line) {
  std::size_t column = indent;
  while (!line.empty()) {
    const auto word = line.substr(0, line.find(' '));
    line.remove_prefix(std::min(line.size(), word.size() + 1));
    if (column > indent && column + 1 + Columns(word) > kMostColumns) {
      EndLine();
      out_.append(indent, ' ');
      column = indent;
    } else if (column > indent) {
      out_ += ' ';
      ++column;
    }
    out_ += word;
    column += Columns(word);
  }
  EndLine();
}

void TextPage::Item(std::string_view heading, std::string_view text) {
  Folded(fmt::format("  {:<16} ", heading), text);
}

void TextPage::Result(std::string_view heading, std::string_view text) {
  Folded(fmt::format("  {:<14} = ", heading), text);
}

void TextPage::PutLine(std::string_view line) {
  out_ += InOneLine(line);
  EndLine();
}

void TextPage::EndLine() {
  while (out_.ends_with(' ')) {
    out_.pop_back();
  }
  out_ += '\n';
}

}  // namespace kavo_app
