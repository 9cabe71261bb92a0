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

std::string SecondsText(std::optional<IntAngle> angle) {
  return angle ? ZeroUnsigned(fmt::format("{:.1f}", ArcSeconds(*angle))) : kNone;
}

std::string MillimetresText(double metres) {
  return ZeroUnsigned(fmt::format("{:.2f}", metres * 1000.0));
}

}  // namespace kavo_app
