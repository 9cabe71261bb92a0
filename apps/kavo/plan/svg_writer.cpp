#include "plan/svg_writer.hpp"

#include <algorithm>
#include <array>
#include <iterator>

namespace kavo_app {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// The bytes of the UTF-8 character at the start of a text; 0 when there is none. Surrogates and
// characters beyond the last one are none.
std::size_t CharacterBytes(std::string_view text) {
  struct Form {
    unsigned char first;
    unsigned char last;
    unsigned char secondFirst;
    unsigned char secondLast;
    std::size_t bytes;
  };
  static constexpr std::array kForms = {
      Form{0xC2, 0xDF, 0x80, 0xBF, 2}, Form{0xE0, 0xE0, 0xA0, 0xBF, 3},
      Form{0xE1, 0xEC, 0x80, 0xBF, 3}, Form{0xED, 0xED, 0x80, 0x9F, 3},
      Form{0xEE, 0xEF, 0x80, 0xBF, 3}, Form{0xF0, 0xF0, 0x90, 0xBF, 4},
      Form{0xF1, 0xF3, 0x80, 0xBF, 4}, Form{0xF4, 0xF4, 0x80, 0x8F, 4},
  };
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) < 0x80) {
    return byte(0) >= 0x20 ? 1 : 0;
  }
  const auto form = std::ranges::find_if(
      kForms, [&](const Form& f) { return f.first <= byte(0) && byte(0) <= f.last; });
  if (form == kForms.end() || text.size() < form->bytes || byte(1) < form->secondFirst ||
      byte(1) > form->secondLast) {
    return 0;
  }
  const auto rest = text.substr(2, form->bytes - 2);
  const bool whole = std::ranges::all_of(
      rest, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; });
  return whole ? form->bytes : 0;
}

std::string_view Escaped(std::string_view character) {
  switch (character[0]) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return character;
  }
}

}  // namespace

std::string XmlText(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const auto bytes = CharacterBytes(text);
    const auto character = text.substr(0, std::max<std::size_t>(bytes, 1));
    const bool none = bytes == 0 || character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
    out += none ? kReplacement : Escaped(character);
    text.remove_prefix(character.size());
  }
  return out;
}

void SvgWriter::Open(std::string_view className, std::string_view attributes) {
  fmt::format_to(std::back_inserter(out_), "<g class=\"{}\" {}>\n", className, attributes);
}

void SvgWriter::Polyline(std::string_view className, const std::vector<PaperSpot>& vertices) {
  fmt::format_to(std::back_inserter(out_), R"(<polyline class="{}" points=")", className);
  for (const auto& spot : vertices) {
    fmt::format_to(std::back_inserter(out_), "{:.2f},{:.2f} ", spot.fromLeft, spot.fromTop);
  }
  out_ += "\"/>\n";
}

void SvgWriter::Line(std::string_view className, PaperSpot from, PaperSpot to) {
  fmt::format_to(std::back_inserter(out_),
                 "<line class=\"{}\" x1=\"{:.2f}\" y1=\"{:.2f}\" x2=\"{:.2f}\" y2=\"{:.2f}\"/>\n",
                 className, from.fromLeft, from.fromTop, to.fromLeft, to.fromTop);
}

void SvgWriter::Symbol(std::string_view id, PaperSpot at, std::string_view name) {
  const auto title = name.empty() ? std::string() : fmt::format("<title>{}</title>", XmlText(name));
  fmt::format_to(std::back_inserter(out_), R"(<use href="#{}" x="{:.2f}" y="{:.2f}">{}</use>{})",
                 id, at.fromLeft, at.fromTop, title, '\n');
}

void SvgWriter::Text(std::string_view className, PaperSpot at, std::string_view text,
                     std::string_view attributes) {
  fmt::format_to(std::back_inserter(out_),
                 "<text class=\"{}\" x=\"{:.2f}\" y=\"{:.2f}\"{}{}>{}</text>\n", className,
                 at.fromLeft, at.fromTop, attributes.empty() ? "" : " ", attributes, XmlText(text));
}

}  // namespace kavo_app
