// Numbers as a text report shows them.
#pragma once

#include <optional>
#include <string>

#include "kavostdlib.h"

namespace kavo_app {

/// Stands where there is no number.
inline constexpr const char* kNone = "-";

/// Four decimals, a tenth of a millimetre. Nothing has no sign, here and in the others.
std::string NumberText(double number);

/// The same with its sign.
std::string DifferenceText(double number);

/// Metres as millimetres in two decimals.
std::string MillimetresText(double metres);

/// Arc-seconds in one decimal; "-" for none.
std::string SecondsText(std::optional<IntAngle> angle);

}  // namespace kavo_app
