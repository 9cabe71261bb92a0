// Values as JSON on one line, with every digit.
#pragma once

#include <string>
#include <string_view>

#include "base/angle_text.hpp"
#include "service/service.hpp"

namespace kavo_app {

/// Appends a text in quotation marks, with escapes where JSON wants them. The text is UTF-8.
void AppendJsonText(std::string& out, std::string_view text);

/// Appends a number as the shortest text that reads back as the same number; null for one that is
/// not finite, which JSON has no word for.
void AppendJsonNumber(std::string& out, double number);

/// Appends a value: an angle as the library's integer and in the given notation, a point by its
/// components, null for no value. A base has no value of its own.
void AppendJsonValue(std::string& out, const Value& value, AngleUnit angles);

}  // namespace kavo_app
