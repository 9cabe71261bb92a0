#include "report/text_page.hpp"

#include <algorithm>

#include "base/plain_text.hpp"

namespace kavo_app {
namespace {

constexpr std::size_t kMostColumns = 100;

}  // namespace

void TextPage::Folded(std::string_view head, std::string_view text) {
  const std::size_t indent = Columns(head);
  std::size_t column = indent;
  out_ += head;
  while (!text.empty()) {
    const auto word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
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

void TextPage::EndLine() {
  while (out_.ends_with(' ')) {
    out_.pop_back();
  }
  out_ += '\n';
}

}  // namespace kavo_app
