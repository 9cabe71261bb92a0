#include "base/plain_text.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace kavo_app {
namespace {

bool ContinuesSequence(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

}  // namespace

std::optional<double> ReadNumber(std::string_view text) {
  text.remove_prefix(text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = error == std::errc{} && end == text.data() + text.size();
  return whole && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::string NoNumberAdvice(std::string_view text) {
  return fmt::format("{} is not a number; write one like 1234.567", Quoted(text));
}

std::string Shown(std::string_view text, std::size_t most) {
  const auto all = text.size();
  if (all > most) {
    std::size_t cut = most;
    while (cut > 0 && ContinuesSequence(text[cut])) {
      --cut;
    }
    text = text.substr(0, cut);
  }
  std::string shown;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    shown += code < ' ' || code == 0x7F ? fmt::format("\\x{:02x}", code) : std::string(1, c);
  }
  return text.size() < all ? fmt::format("{}... ({} bytes)", shown, all) : shown;
}

std::string Joined(const std::string& first, const std::string& second) {
  return first + (first.empty() || second.empty() ? "" : "; ") + second;
}

std::size_t Columns(std::string_view text) {
  return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, ContinuesSequence));
}

}  // namespace kavo_app
