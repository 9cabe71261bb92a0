// A mistake in what the user wrote, told in one line that says where it is and what would be right.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace kavo_app {

/// Place in a file that the user wrote.
struct Place {
  std::string file;
  std::size_t line = 0;  ///< Counted from 1; 0 when the whole file is meant.
};

/// The text with its control characters written as TOML writes them, such as \u000A: names and
/// texts may hold some, and would break the line.
inline std::string InOneLine(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string line;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code >= 0x20 && code != 0x7F) {
      line += c;
    } else {
      line.append("\\u00").append({kDigits[code / 16], kDigits[code % 16]});
    }
  }
  return line;
}

/// Thrown for anything that is wrong with the user's input; kavo then ends with exit code 2.
struct UserError : std::runtime_error {
  /// @param place  file and line.
  /// @param field  what is wrong there, such as "step 3001: azimuth"; may be empty.
  /// @param advice  what is wrong with it and what would be right.
  UserError(const Place& place, const std::string& field, const std::string& advice)
      : UserError(place, (field.empty() ? "" : field + ": ") + advice) {}

  std::string complaint;  ///< The field and the advice, for who knows the place.

 private:
  UserError(const Place& place, std::string fieldAndAdvice)
      : std::runtime_error(InOneLine(place.file +
                                     (place.line > 0 ? ':' + std::to_string(place.line) : "") +
                                     ": " + fieldAndAdvice)),
        complaint(std::move(fieldAndAdvice)) {}
};

}  // namespace kavo_app
