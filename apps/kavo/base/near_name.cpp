#include "base/near_name.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <vector>

#include "base/plain_text.hpp"

namespace kavo_app {
namespace {

// How many letters are put in, left out, taken for another or exchanged with the next one.
std::size_t Slips(std::string_view one, std::string_view other) {
  // Between the first i letters of the one and the first j of the other.
  std::vector slips(one.size() + 1, std::vector<std::size_t>(other.size() + 1));
  for (std::size_t i = 0; i <= one.size(); ++i) {
    for (std::size_t j = 0; j <= other.size(); ++j) {
      if (i == 0 || j == 0) {
        slips[i][j] = i + j;
        continue;
      }
      const std::size_t wrong = one[i - 1] == other[j - 1] ? 0 : 1;
      slips[i][j] =
          std::min({slips[i - 1][j - 1] + wrong, slips[i - 1][j] + 1, slips[i][j - 1] + 1});
      if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1]) {
        slips[i][j] = std::min(slips[i][j], slips[i - 2][j - 2] + 1);
      }
    }
  }
  return slips.back().back();
}

// Of a short name another one is as near as what was meant.
std::size_t MostSlips(std::string_view text) {
  constexpr std::size_t kLettersPerSlip = 3;
  constexpr std::size_t kMost = 2;
  return std::min(text.size() / kLettersPerSlip, kMost);
}

}  // namespace

std::string_view NearName(std::string_view text, std::span<const std::string_view> known) {
  constexpr std::size_t kLongest = 60;  // no name is as long
  if (text.size() > kLongest) {
    return {};
  }
  const auto lower = Lower(text);
  std::string_view nearest;
  std::size_t least = MostSlips(text) + 1;
  for (const auto name : known) {
    if (const auto slips = Slips(lower, Lower(name)); slips < least) {
      nearest = name;
      least = slips;
    }
  }
  return nearest;
}

std::string UnknownAdvice(std::string_view name, std::span<const std::string_view> known) {
  const auto near = NearName(name, known);
  if (!near.empty() && Lower(near) == Lower(name)) {
    return MisspeltAdvice(name, near);
  }
  const auto meant = near.empty() ? "" : fmt::format("perhaps {} is meant; ", near);
  return fmt::format("is not known here; {}there are {}", meant, fmt::join(known, ", "));
}

std::string MisspeltAdvice(std::string_view name, std::string_view missing) {
  return NearName(name, {&missing, 1}).empty()
             ? ""
             : fmt::format("is not known here; write {}", missing);
}

}  // namespace kavo_app
