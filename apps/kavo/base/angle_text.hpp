// Angles as people write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "kavostdlib.h"

namespace kavo_app {

/// The notation of all angles of one job.
enum class AngleUnit {
  kDms,      ///< Degrees, minutes and seconds: 123-45-56.78 or 123°45'56.78".
  kGon,      ///< 400 to the circle.
  kDegrees,  ///< 360 to the circle, decimal.
  kRaw,      ///< The library's units, 1/16 arc-second.
};

/// The unit of that name in a job file, if there is one: dms, gon, deg or raw.
std::optional<AngleUnit> AngleUnitNamed(std::string_view name);

/// What is wrong with a name that is no unit's, and what would be right.
std::string NoUnitAdvice(std::string_view name);

/// The unit as a report names it, such as "degrees-minutes-seconds".
std::string_view UnitText(AngleUnit unit);

/// What an angle in this unit looks like, for messages.
std::string_view AngleExample(AngleUnit unit);

/// What came of reading an angle: the angle, or what is wrong with the text.
struct AngleReading {
  std::optional<IntAngle> angle;
  std::string complaint;
};

/// Reads an angle of at most a full circle in either sense, rounded to the nearest unit. The sign
/// of a DMS angle holds for all of it, also when its degrees are 0.
AngleReading ReadAngle(std::string_view text, AngleUnit unit);

/// Reads an angle given as a plain number; DMS has none.
AngleReading ReadAngle(double number, AngleUnit unit);

/// The angle in text that reads back as the same angle: up to four decimals of a second (exact), or
/// five of a gon or degree. Computed in integers, so that 59.99 seconds never print as 60.
std::string AngleText(IntAngle angle, AngleUnit unit);

}  // namespace kavo_app
