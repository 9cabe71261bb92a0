// A mistake in what the user wrote, told in one line that says where it is and what would be right.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/plain_text.hpp"

namespace kavo_app {

/// Place in a file that the user wrote.
struct Place {
  std::string file;
  std::size_t line = 0;  ///< Counted from 1; 0 when the whole file is meant.

  /// As messages write it, such as points.csv:12.
  std::string Text() const { return line > 0 ? file + ':' + std::to_string(line) : file; }
};

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
      : std::runtime_error(InOneLine(place.Text() + ": " + fieldAndAdvice)),
        complaint(std::move(fieldAndAdvice)) {}
};

}  // namespace kavo_app
