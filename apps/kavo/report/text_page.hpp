// The page of a text report: lines, and text that is folded to its width. Free text may come from
// anyone: control characters are shown and never reach a terminal.
#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <utility>

namespace kavo_app {

class TextPage {
 public:
  /// A line of any length, without blanks at its end.
  template <class... Args>
  void Line(fmt::format_string<Args...> format, Args&&... args) {
    PutLine(fmt::format(format, std::forward<Args>(args)...));
  }
  /// A text that is folded where it is too long, with all its own lines behind the head.
  void Folded(std::string_view head, std::string_view text);
  /// What was given, or is to be said, with its heading.
  void Item(std::string_view heading, std::string_view text);
  /// What was computed: an equals sign sets it off from what was given, which may have its name.
  void Result(std::string_view heading, std::string_view text);

  std::string Take() { return std::move(out_); }

 private:
  void PutLine(std::string_view line);
  void FoldLine(std::size_t indent, std::string_view line);
  void EndLine();

  std::string out_;
};

}  // namespace kavo_app
