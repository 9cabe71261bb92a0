#include "base/angle_text.hpp"

#include <fmt/compile.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "base/near_name.hpp"
#include "base/plain_text.hpp"

namespace kavo_app {
namespace {

constexpr std::int64_t kUnitsPerDegree = ANGLE_FULL_CIRCLE / 360;
constexpr std::int64_t kUnitsPerMinute = kUnitsPerDegree / 60;
constexpr std::int64_t kUnitsPerSecond = kUnitsPerMinute / 60;
constexpr std::int64_t kUnitsPerGon = ANGLE_FULL_CIRCLE / 400;

struct UnitRow {
  AngleUnit unit;
  std::string_view name;
  std::string_view text;
  std::string_view example;
  std::int64_t unitsPerOne;  // of the library, in one of the decimal unit; 0 for DMS
};

constexpr std::array kUnits = {
    UnitRow{AngleUnit::kDms, "dms", "degrees-minutes-seconds", "123-45-56.78", 0},
    UnitRow{AngleUnit::kGon, "gon", "gon", "137.50963", kUnitsPerGon},
    UnitRow{AngleUnit::kDegrees, "deg", "decimal degrees", "123.76577", kUnitsPerDegree},
    UnitRow{AngleUnit::kRaw, "raw", "1/16 arc-seconds", "7128908", 1},
};

const UnitRow& RowOf(AngleUnit unit) {
  for (const auto& row : kUnits) {
    if (row.unit == unit) {
      return row;
    }
  }
  std::abort();
}

// All of `text` as a number without sign, exponent or blanks.
std::optional<double> PlainNumber(std::string_view text, bool whole) {
  const auto plain = [whole](char c) { return (c >= '0' && c <= '9') || (c == '.' && !whole); };
  if (!std::ranges::all_of(text, plain)) {
    return std::nullopt;
  }
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return number;
}

AngleReading Complain(std::string_view text, std::string_view what, AngleUnit unit) {
  const bool comma = text.find(',') != text.npos;
  return {std::nullopt, fmt::format("{} {}; {}write an angle like {} ({})", Quoted(text), what,
                                    comma ? "the decimal sign is a point; " : "",
                                    AngleExample(unit), UnitText(unit))};
}

AngleReading FromUnits(double units, std::string_view text, AngleUnit unit) {
  if (!(std::fabs(units) <= ANGLE_FULL_CIRCLE)) {
    return Complain(text, "is more than a full circle", unit);
  }
  return {static_cast<IntAngle>(std::lround(units)), {}};
}

// The three texts of 123-45-56.78 or of 123°45'56.78"; nothing when a sign between is missing.
struct DmsParts {
  std::string_view degrees;
  std::string_view minutes;
  std::string_view seconds;
};

std::optional<DmsParts> SplitDms(std::string_view body) {
  constexpr std::string_view kDegreeSign = "\u00B0";
  const bool signs = body.find(kDegreeSign) != body.npos;
  const std::string_view afterDegrees = signs ? kDegreeSign : "-";
  const std::string_view afterMinutes = signs ? "'" : "-";
  const std::string_view afterSeconds = signs ? "\"" : "";
  const auto first = body.find(afterDegrees);
  const auto minutes = first == body.npos ? first : first + afterDegrees.size();
  const auto second = first == body.npos ? first : body.find(afterMinutes, minutes);
  if (second == body.npos || !body.ends_with(afterSeconds) ||
      second + 1 > body.size() - afterSeconds.size()) {
    return std::nullopt;
  }
  body.remove_suffix(afterSeconds.size());
  return DmsParts{body.substr(0, first), body.substr(minutes, second - minutes),
                  body.substr(second + 1)};
}

AngleReading ReadDms(std::string_view text) {
  const bool negative = text.starts_with('-');
  const auto parts = SplitDms(text.substr(negative || text.starts_with('+') ? 1 : 0));
  if (!parts) {
    return Complain(text, "does not have degrees, minutes and seconds", AngleUnit::kDms);
  }
  const auto degrees = PlainNumber(parts->degrees, true);
  const auto minutes = PlainNumber(parts->minutes, true);
  const auto seconds = PlainNumber(parts->seconds, false);
  if (!degrees || !minutes || !seconds) {
    return Complain(text, "is not made of numbers", AngleUnit::kDms);
  }
  if (*minutes >= 60.0 || *seconds >= 60.0) {
    return Complain(text, "has 60 or more minutes or seconds", AngleUnit::kDms);
  }
  const double units =
      *degrees * kUnitsPerDegree + *minutes * kUnitsPerMinute + *seconds * kUnitsPerSecond;
  return FromUnits(negative ? -units : units, text, AngleUnit::kDms);
}

std::string DmsText(IntAngle angle) {
  constexpr std::int64_t kTenThousandthsPerUnit = 10000 / kUnitsPerSecond;
  const std::int64_t units = std::llabs(angle);
  auto text = fmt::format(FMT_COMPILE("{}{}-{:02}-{:02}.{:04}"), angle < 0 ? "-" : "",
                          units / kUnitsPerDegree, units % kUnitsPerDegree / kUnitsPerMinute,
                          units % kUnitsPerMinute / kUnitsPerSecond,
                          units % kUnitsPerSecond * kTenThousandthsPerUnit);
  const auto point = text.find('.');
  text.erase(std::max(text.find_last_not_of('0'), point + 1) + 1);
  return text;
}

std::string DecimalText(IntAngle angle, std::int64_t unitsPerOne) {
  constexpr std::int64_t kScale = 100000;
  const std::int64_t scaled = (std::llabs(angle) * kScale + unitsPerOne / 2) / unitsPerOne;
  return fmt::format(FMT_COMPILE("{}{}.{:05}"), angle < 0 ? "-" : "", scaled / kScale,
                     scaled % kScale);
}

}  // namespace

std::optional<AngleUnit> AngleUnitNamed(std::string_view name) {
  for (const auto& row : kUnits) {
    if (row.name == name) {
      return row.unit;
    }
  }
  return std::nullopt;
}

std::string NoUnitAdvice(std::string_view name) {
  std::array<std::string_view, kUnits.size()> names;
  std::ranges::transform(kUnits, names.begin(), &UnitRow::name);
  return fmt::format("{} {}", Quoted(name), UnknownAdvice(name, names));
}

std::string_view UnitText(AngleUnit unit) { return RowOf(unit).text; }

std::string_view AngleExample(AngleUnit unit) { return RowOf(unit).example; }

AngleReading ReadAngle(std::string_view text, AngleUnit unit) {
  if (unit == AngleUnit::kDms) {
    return ReadDms(text);
  }
  const bool negative = text.starts_with('-');
  const auto body = text.substr(negative || text.starts_with('+') ? 1 : 0);
  const auto number = PlainNumber(body, unit == AngleUnit::kRaw);
  if (!number) {
    return Complain(text, "is not a number", unit);
  }
  const double signedNumber = negative ? -*number : *number;
  return FromUnits(signedNumber * static_cast<double>(RowOf(unit).unitsPerOne), text, unit);
}

AngleReading ReadAngle(double number, AngleUnit unit) {
  const auto text = fmt::format("{}", number);
  if (unit == AngleUnit::kDms) {
    return Complain(text, "is a number, not text in quotes", unit);
  }
  if (unit == AngleUnit::kRaw && number != std::trunc(number)) {
    return Complain(text, "is not a whole number", unit);
  }
  return FromUnits(number * static_cast<double>(RowOf(unit).unitsPerOne), text, unit);
}

std::string AngleText(IntAngle angle, AngleUnit unit) {
  switch (unit) {
    case AngleUnit::kDms:
      return DmsText(angle);
    case AngleUnit::kRaw:
      return fmt::format("{}", angle);
    case AngleUnit::kGon:
    case AngleUnit::kDegrees:
      break;
  }
  return DecimalText(angle, RowOf(unit).unitsPerOne);
}

}  // namespace kavo_app
