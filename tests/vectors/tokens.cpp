#include "tokens.hpp"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <sstream>
#include <system_error>
#include <utility>

namespace kavo_test {
namespace {

constexpr std::uint64_t kCanonicalNan = 0x7ff8000000000000;  // sign and payload promise nothing
constexpr std::int64_t kUnitsPerDegree = ANGLE_FULL_CIRCLE / 360;

constexpr std::pair<std::string_view, std::int64_t> kNames[] = {
    {"STATUS_OK", STATUS_OK},
    {"ERR_REFUSED", ERR_REFUSED},
    {"ERR_NO_MEMORY", ERR_NO_MEMORY},
    {"ERR_NO_BASE", ERR_NO_BASE},
    {"ERR_NO_DIRECTION", ERR_NO_DIRECTION},
    {"ERR_POINT_INVALID", ERR_POINT_INVALID},
    {"ERR_SIGHT_VERTICAL", ERR_SIGHT_VERTICAL},
    {"ERR_SIGHT_OFF_BASE", ERR_SIGHT_OFF_BASE},
    {"ERR_NO_DISTANCE", ERR_NO_DISTANCE},
    {"ERR_INDETERMINATE", ERR_INDETERMINATE},
    {"ERR_PARALLEL", ERR_PARALLEL},
    {"ERR_SAME_DIRECTION", ERR_SAME_DIRECTION},
    {"WARN_NO_ELEVATION", WARN_NO_ELEVATION},
    {"WARN_SLOPE_VERTICAL", WARN_SLOPE_VERTICAL},
    {"WARN_SLOPE_LEVEL", WARN_SLOPE_LEVEL},
    {"ANGLE_INVALID", ANGLE_INVALID},
    {"VALUE_INVALID", ANGLE_INVALID},
    {"SLOPE_VERTICAL", ANGLE_INVALID},
    {"AZIMUTH_FROM_POINTS", AZIMUTH_FROM_POINTS},
    {"LINE_MODE_DIRECTION", LINE_MODE_DIRECTION},
    {"LINE_MODE_TWO_POINTS", LINE_MODE_TWO_POINTS},
    // Flags of a point.
    {"none", 0},
    {"plan", COORD_HAS_NE},
    {"elev", COORD_HAS_ELEV},
    {"full", COORD_HAS_NE | COORD_HAS_ELEV},
};
static_assert(VALUE_INVALID == ANGLE_INVALID);
static_assert(SLOPE_VERTICAL == ANGLE_INVALID);

std::optional<std::int64_t> Named(std::string_view word) {
  for (const auto& [name, value] : kNames) {
    if (name == word) {
      return value;
    }
  }
  return {};
}

// All of the text as one integer.
template <class T>
std::optional<T> Whole(std::string_view text, int base) {
  T value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  return error == std::errc{} && end == text.data() + text.size() ? std::optional(value)
                                                                  : std::nullopt;
}

template <class T>
using BitsOf = std::conditional_t<sizeof(T) == 8, std::uint64_t,
                                  std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint16_t>>;

// The same bytes as a value of another type.
template <class To, class From>
To Reinterpret(From from) {
  static_assert(sizeof(To) == sizeof(From));
  To to;
  std::memcpy(&to, &from, sizeof to);
  return to;
}

template <class T>
BitsOf<T> Bits(T value) {
  return std::isnan(static_cast<double>(value)) ? static_cast<BitsOf<T>>(kCanonicalNan)
                                                : Reinterpret<BitsOf<T>>(value);
}

template <class T>
std::optional<T> FromBits(std::string_view word) {
  const auto bits = Whole<BitsOf<T>>(word, 16);
  return bits && word.size() == 2 * sizeof(T) ? std::optional(Reinterpret<T>(*bits)) : std::nullopt;
}

std::optional<double> Real(std::string_view word) {
  if (const auto named = Named(word)) {
    return static_cast<double>(*named);
  }
  const std::string text(word);
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  return !text.empty() && *end == '\0' ? std::optional(value) : std::nullopt;
}

// One term of a sum: a name, units or degrees.
std::optional<std::int64_t> Term(std::string_view word) {
  if (const auto named = Named(word)) {
    return named;
  }
  const bool degrees = word.ends_with('d');
  word.remove_suffix(degrees ? 1 : 0);
  const auto value = Whole<std::int64_t>(word, 10);
  return value && degrees ? *value * kUnitsPerDegree : value;
}

std::optional<std::int64_t> Sum(std::string_view word) {
  std::int64_t sum = 0;
  while (!word.empty()) {
    const bool negative = word.starts_with('-');
    word.remove_prefix(negative || word.starts_with('+') ? 1 : 0);
    const std::string_view text = word.substr(0, word.find_first_of("+-"));
    const auto term = Term(text);
    if (!term) {
      return {};
    }
    sum += negative ? -*term : *term;
    word.remove_prefix(text.size());
  }
  return sum;
}

template <class T>
std::optional<T> Readable(std::string_view word) {
  if constexpr (std::is_same_v<T, double>) {
    return Real(word);
  } else {
    const auto sum = word.empty() ? std::nullopt : Sum(word);
    return sum && std::in_range<T>(*sum) ? std::optional(static_cast<T>(*sum)) : std::nullopt;
  }
}

}  // namespace

template <class T>
std::optional<T> Number(std::string_view word, Spelling spelling) {
  return spelling == Spelling::kBits ? FromBits<T>(word) : Readable<T>(word);
}

template <class T>
std::string Word(T value, Spelling spelling) {
  std::ostringstream text;
  if (spelling == Spelling::kReadable) {
    text << std::setprecision(17) << value;
  } else {
    text << std::hex << std::setfill('0') << std::setw(2 * sizeof value) << Bits(value);
  }
  return text.str();
}

template <class T>
bool Expects(std::string_view word, T value, Spelling spelling) {
  if (word == "_") {
    return IsUntouched(value);
  }
  const std::size_t tilde = word.find('~');
  const auto want = Number<T>(word.substr(0, tilde), spelling);
  if (tilde == std::string_view::npos || !want) {
    return want && Bits(*want) == Bits(value);
  }
  const auto tolerance = Real(word.substr(tilde + 1));
  return tolerance &&
         std::fabs(static_cast<double>(value) - static_cast<double>(*want)) <= *tolerance;
}

bool Words::Accept(std::string_view word) {
  const bool found = next_ < words_.size() && words_[next_] == word;
  next_ += found ? 1 : 0;
  return found;
}

std::string Words::Next() { return next_ < words_.size() ? words_[next_++] : ""; }

void Words::Parenthesis(std::string_view parenthesis) {
  fit_ = fit_ && (spelling_ == Spelling::kBits || Accept(parenthesis));
}

#define KAVO_NUMBER(T)                                                           \
  template std::optional<T> Number<T>(std::string_view word, Spelling spelling); \
  template std::string Word<T>(T value, Spelling spelling);                      \
  template bool Expects<T>(std::string_view word, T value, Spelling spelling)
KAVO_NUMBER(double);
KAVO_NUMBER(std::int32_t);
KAVO_NUMBER(std::int16_t);
KAVO_NUMBER(std::uint16_t);
KAVO_NUMBER(std::uint32_t);

}  // namespace kavo_test
