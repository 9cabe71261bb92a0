// Writes the elements of an SVG drawing; all lengths are millimetres on the sheet.
#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <vector>

#include "plan/paper.hpp"

namespace kavo_app {

/// A text that XML can hold: markup escaped, what is no character replaced.
std::string XmlText(std::string_view text);

class SvgWriter {
 public:
  /// Opens a group of a class; Close ends it.
  void Open(std::string_view className, std::string_view attributes = {});
  void Close() { out_ += "</g>\n"; }
  void Polyline(std::string_view className, const std::vector<PaperSpot>& vertices);
  void Line(std::string_view className, PaperSpot from, PaperSpot to);
  void Box(std::string_view className, const PaperBox& box);
  /// A symbol that the head of the drawing defines; a viewer shows its name, if it has one, where
  /// the mouse rests on it.
  void Symbol(std::string_view id, PaperSpot at, std::string_view name = {});
  /// Text on its base line; `attributes` such as text-anchor or transform. The code, if any,
  /// follows it in the style of its own class.
  void Text(std::string_view className, PaperSpot at, std::string_view text,
            std::string_view attributes = {}, std::string_view code = {});
  /// Markup as it stands.
  void Raw(std::string_view markup) { out_ += markup; }

  std::string Take() { return std::move(out_); }

 private:
  std::string out_;
};

}  // namespace kavo_app
