// Numbers as a text report shows them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/angle_text.hpp"
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

/// The unit of residuals and instrument errors among angles of a notation: "mgon" for gon, and
/// arc-seconds, a quotation mark, for all others.
std::string_view SmallAngleUnit(AngleUnit unit);

/// An angle in that unit: an error in 0.1 arc-seconds or 0.01 mgon, a residual in one digit more;
/// "-" for none.
std::string ErrorText(std::optional<IntAngle> angle, AngleUnit unit);
std::string ResidualText(std::optional<IntAngle> angle, AngleUnit unit);

/// An error with its unit.
std::string ErrorWithUnit(std::optional<IntAngle> angle, AngleUnit unit);

}  // namespace kavo_app
