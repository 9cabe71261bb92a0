#include "plan/svg_writer.hpp"

#include <algorithm>
#include <iterator>

#include "base/plain_text.hpp"

namespace kavo_app {
namespace {

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
    const auto bytes = static_cast<unsigned char>(text.front()) < 0x20 ? 0 : CharacterBytes(text);
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

void SvgWriter::Box(std::string_view className, const PaperBox& box) {
  fmt::format_to(
      std::back_inserter(out_),
      "<rect class=\"{}\" x=\"{:.2f}\" y=\"{:.2f}\" width=\"{:.2f}\" height=\"{:.2f}\"/>\n",
      className, box.left, box.top, box.right - box.left, box.bottom - box.top);
}

void SvgWriter::Symbol(std::string_view id, PaperSpot at, std::string_view name) {
  const auto title = name.empty() ? std::string() : fmt::format("<title>{}</title>", XmlText(name));
  fmt::format_to(std::back_inserter(out_), R"(<use href="#{}" x="{:.2f}" y="{:.2f}">{}</use>{})",
                 id, at.fromLeft, at.fromTop, title, '\n');
}

void SvgWriter::Text(std::string_view className, PaperSpot at, std::string_view text,
                     std::string_view attributes, std::string_view code) {
  const auto behind = code.empty() ? std::string()
                                   : fmt::format(R"(<tspan class="code" dx="{}">{}</tspan>)",
                                                 kCodeGap, XmlText(code));
  fmt::format_to(std::back_inserter(out_),
                 "<text class=\"{}\" x=\"{:.2f}\" y=\"{:.2f}\"{}{}>{}{}</text>\n", className,
                 at.fromLeft, at.fromTop, attributes.empty() ? "" : " ", attributes, XmlText(text),
                 behind);
}

}  // namespace kavo_app
