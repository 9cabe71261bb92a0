// The values of inputs and outputs, and what they are kinds of.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "kavostdlib.h"

namespace kavo_app {

/// What kind of thing a field holds; it decides the unit, how a job writes it and how a report
/// prints it.
enum class Kind {
  kPoint,
  kPoints,
  kLine,
  kFigure,
  kSights,
  kResiduals,
  kAzimuth,
  kZenith,
  kAngle,
  kLength,
  kArea,
  kPercent,
  kRatio
};

/// The most points or sights of one input: the library counts them in 16 bits.
inline constexpr std::size_t kMostPoints = std::numeric_limits<std::int16_t>::max();

class Inputs;

/// A base that a step has set, such as a reference line: the inputs that set it. Every step that
/// measures against it sets it again first, so that no two bases of a job get into each other's
/// way.
using Figure = std::shared_ptr<const Inputs>;

/// What was read in one pointing, as it was read.
struct Reading {
  IntAngle ha = 0;             ///< Horizontal reading.
  std::optional<IntAngle> va;  ///< Zenith reading; a level sight of unknown height without it.
  bool face2 = false;
  double slopeDist = 0.0;            ///< Metres; 0 when not measured, as the next.
  double horizDist = 0.0;            ///< Metres.
  std::optional<double> heightDiff;  ///< Target minus instrument, metres; none when not measured.
};

/// What two readings of one sight on both faces say of the instrument.
struct FaceErrors {
  IntAngle collimation;           ///< Face 1 less face 2, halved; of the line of sight.
  std::optional<IntAngle> index;  ///< To take off zenith readings of face 1; none without them.
};

/// A sight to a known point, reduced to face 1.
struct Sight {
  std::string name;                  ///< Of the point, as the job has it.
  std::string code;                  ///< Feature code; may be empty.
  std::vector<Reading> readings;     ///< One, or one on each face, face 1 first.
  std::optional<FaceErrors> errors;  ///< Of a pair.
  CoordPt point{};                   ///< Without a position where the job gives no point.
  IntAngle ha = 0;                   ///< Horizontal direction.
  IntAngle va = 0;                   ///< Zenith angle.
  bool face2 = false;                ///< Whether it was read on face 2 alone.
  double slopeDist = 0.0;            ///< Metres; 0 when none was measured, as the next two.
  double horizDist = 0.0;            ///< Metres.
  double heightDiff = 0.0;           ///< Point minus instrument, metres.
  bool hasHeight = false;            ///< Whether the readings tell a height.
  double targetHeight = 0.0;         ///< Metres.
};

/// What a sight's measurement is off the adjusted station.
struct SightResidual {
  std::string name;
  IntAngle direction;          ///< Adjusted less measured.
  std::optional<double> dist;  ///< Adjusted less measured, metres; none without distance.
  std::optional<double> elev;  ///< Station elevation from this sight, metres; none likewise.
};

/// A field's value. An IntAngle for azimuths, zenith angles and angles; a double, in metres, square
/// metres, per cent or none, for the other numbers; no value where there is none.
using Value = std::variant<std::monostate, IntAngle, double, CoordPt, LineDef, std::vector<CoordPt>,
                           Figure, std::vector<Sight>, std::vector<SightResidual>>;

/// True when there is a value.
inline bool Available(const Value& value) { return value.index() != 0; }

/// True for two outputs of one field with the same number, or for a point the same numbers; true
/// for what is no number and no point.
bool SameNumbers(const Value& one, const Value& other);

/// What a reader must know of a kind.
struct KindInfo {
  std::string_view word;     ///< What help calls it; the unit of a number.
  std::string_view unit;     ///< "m", "m2", "%"; empty for none, and for angles: the job's own.
  std::string_view writing;  ///< How a job writes it, for help.
};
const KindInfo& InfoOf(Kind kind);

/// True for azimuths, zenith angles and angles.
bool IsAngle(Kind kind);

/// True for what shows by itself in a report. Lines and figures show in the points and numbers
/// beside them.
bool ShowsItself(Kind kind);

/// An output as a value: none for what the library marks as not available.
Value OrNothing(double number);
Value OrNothing(IntAngle angle);
Value OrNothing(const CoordPt& point);

}  // namespace kavo_app
