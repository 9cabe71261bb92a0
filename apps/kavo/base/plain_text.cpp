#include "base/plain_text.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace kavo_app {
namespace {

// The bytes of the control character that the text begins with; 0 when it is none. Those above
// ASCII are two bytes, the second of which is their code.
std::size_t ControlBytes(std::string_view text) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) == 0xC2 && text.size() > 1 && byte(1) >= 0x80 && byte(1) < 0xA0) {
    return 2;
  }
  return IsControl(text.front()) ? 1 : 0;
}

}  // namespace

std::optional<double> ReadNumber(std::string_view text) {
  text.remove_prefix(text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = error == std::errc{} && end == text.data() + text.size();
  return whole && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::string NoNumberAdvice(std::string_view text) {
  const bool comma = text.find(',') != text.npos;
  return fmt::format("{} is not a number; {}", Quoted(text),
                     comma ? kListRule : "write one like 1234.567");
}

bool IsControl(char c) {
  const auto code = static_cast<unsigned char>(c);
  return code < ' ' || code == 0x7F;
}

std::string InOneLine(std::string_view text) {
  std::string line;
  while (!text.empty()) {
    const auto bytes = ControlBytes(text);
    if (bytes == 0) {
      line += text.front();
    } else {
      line += fmt::format("\\u{:04X}", static_cast<unsigned char>(text[bytes - 1]));
    }
    text.remove_prefix(std::max<std::size_t>(bytes, 1));
  }
  return line;
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
  const auto shown = InOneLine(text);
  return text.size() < all ? fmt::format("{}... ({} bytes)", shown, all) : shown;
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  }
  return lower;
}

std::string Joined(const std::string& first, const std::string& second) {
  return first + (first.empty() || second.empty() ? "" : "; ") + second;
}

std::size_t CharacterBytes(std::string_view text) {
  struct Form {
    unsigned char first;
    unsigned char last;
    unsigned char secondFirst;
    unsigned char secondLast;
    std::size_t bytes;
  };
  static constexpr std::array kForms = {
      Form{0xC2, 0xDF, 0x80, 0xBF, 2}, Form{0xE0, 0xE0, 0xA0, 0xBF, 3},
      Form{0xE1, 0xEC, 0x80, 0xBF, 3}, Form{0xED, 0xED, 0x80, 0x9F, 3},
      Form{0xEE, 0xEF, 0x80, 0xBF, 3}, Form{0xF0, 0xF0, 0x90, 0xBF, 4},
      Form{0xF1, 0xF3, 0x80, 0xBF, 4}, Form{0xF4, 0xF4, 0x80, 0x8F, 4},
  };
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) < 0x80) {
    return 1;
  }
  const auto form = std::ranges::find_if(
      kForms, [&](const Form& f) { return f.first <= byte(0) && byte(0) <= f.last; });
  if (form == kForms.end() || text.size() < form->bytes || byte(1) < form->secondFirst ||
      byte(1) > form->secondLast) {
    return 0;
  }
  const auto rest = text.substr(2, form->bytes - 2);
  return std::ranges::all_of(rest, ContinuesSequence) ? form->bytes : 0;
}

std::string AsUtf8(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const auto bytes = CharacterBytes(text);
    out += bytes == 0 ? kReplacement : text.substr(0, bytes);
    text.remove_prefix(std::max<std::size_t>(bytes, 1));
  }
  return out;
}

std::size_t Columns(std::string_view text) {
  return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, ContinuesSequence));
}

}  // namespace kavo_app
