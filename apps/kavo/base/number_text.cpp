#include "base/number_text.hpp"

#include <fmt/format.h>

#include <cmath>

#include "base/geometry.hpp"

namespace kavo_app {
namespace {

// Nothing has no sign.
std::string ZeroUnsigned(std::string text) {
  if (text.starts_with('-') && text.find_first_not_of("-0.") == std::string::npos) {
    text.erase(0, 1);
  }
  return text;
}

std::string SmallAngleText(std::optional<IntAngle> angle, AngleUnit unit, int moreDigits) {
  if (!angle) {
    return kNone;
  }
  const bool gon = unit == AngleUnit::kGon;
  return ZeroUnsigned(fmt::format("{:.{}f}", gon ? Milligon(*angle) : ArcSeconds(*angle),
                                  (gon ? 2 : 1) + moreDigits));
}

}  // namespace

std::string NumberText(double number) {
  constexpr double kReadable = 1e12;
  return std::fabs(number) < kReadable ? ZeroUnsigned(fmt::format("{:.4f}", number))
                                       : fmt::format("{}", number);
}

std::string DifferenceText(double number) {
  const auto text = NumberText(number);
  return text.starts_with('-') ? text : "+" + text;
}

std::string_view SmallAngleUnit(AngleUnit unit) { return unit == AngleUnit::kGon ? "mgon" : "\""; }

std::string ErrorText(std::optional<IntAngle> angle, AngleUnit unit) {
  return SmallAngleText(angle, unit, 0);
}

std::string ResidualText(std::optional<IntAngle> angle, AngleUnit unit) {
  return SmallAngleText(angle, unit, 1);
}

std::string ErrorWithUnit(std::optional<IntAngle> angle, AngleUnit unit) {
  const bool apart = angle && unit == AngleUnit::kGon;
  return ErrorText(angle, unit) + (apart ? " " : "") +
         std::string(angle ? SmallAngleUnit(unit) : "");
}

std::string MillimetresText(double metres) {
  return ZeroUnsigned(fmt::format("{:.2f}", metres * 1000.0));
}

}  // namespace kavo_app
