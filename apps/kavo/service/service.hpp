// What kavo can compute: one description per service drives reading, help and printing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
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

/// What a reader must know of a kind.
struct KindInfo {
  std::string_view unit;     ///< "m", "m2", "%"; "angle" for the job's unit; empty for none.
  std::string_view writing;  ///< How a job writes it, for help.
};
const KindInfo& InfoOf(Kind kind);

/// True for azimuths, zenith angles and angles.
bool IsAngle(Kind kind);

/// True for what shows by itself in a report. Lines and figures show in the points and numbers
/// beside them.
bool ShowsItself(Kind kind);

enum class Need {
  kRequired,
  kOptional,
  kOneOf  ///< Exactly one of the service's fields of this kind is needed.
};

/// One input or output of a service. A figure fits every field of its own name and no other.
struct Field {
  std::string_view name;
  Kind kind;
  std::string_view meaning;
  Need need = Need::kRequired;
};

/// A status that the service's export can return.
struct StatusRow {
  std::int32_t code;
  std::string_view name;  ///< Of the constant, such as "ERR_NO_BASE"; empty for a count of points.
  bool success;
  std::string_view sentence;  ///< What it means; for a failure also what to do.
  bool good = true;           ///< False for a check that has a result and is not passed.
};

/// The inputs of one call, looked up by field name. A name or type that is not the table's is a
/// fault of the program and ends it.
class Inputs {
 public:
  Inputs(std::span<const Field> fields, std::vector<Value> values)
      : fields_(fields), values_(std::move(values)) {}

  const CoordPt& Point(std::string_view name) const { return Get<CoordPt>(name); }
  const std::vector<CoordPt>& Points(std::string_view name) const {
    return Get<std::vector<CoordPt>>(name);
  }
  const LineDef& Line(std::string_view name) const { return Get<LineDef>(name); }
  const std::vector<Sight>& Sights(std::string_view name) const {
    return Get<std::vector<Sight>>(name);
  }
  /// The inputs of the step that set the base.
  const Inputs& Base(std::string_view name) const { return *Get<Figure>(name); }
  IntAngle Angle(std::string_view name) const { return Get<IntAngle>(name); }
  double Number(std::string_view name) const { return Get<double>(name); }
  /// The number, or `absent` when the job does not give it.
  double Number(std::string_view name, double absent) const {
    return Available(Find(name)) ? Number(name) : absent;
  }
  IntAngle Angle(std::string_view name, IntAngle absent) const {
    return Available(Find(name)) ? Angle(name) : absent;
  }
  /// True when the service has such an input and the job gives it.
  bool Has(std::string_view name) const;

  std::span<const Field> Fields() const { return fields_; }
  const std::vector<Value>& Values() const { return values_; }

 private:
  const Value& Find(std::string_view name) const;
  template <class T>
  const T& Get(std::string_view name) const {
    return std::get<T>(Find(name));
  }

  std::span<const Field> fields_;
  std::vector<Value> values_;
};

/// What a call gave.
struct Answer {
  std::int32_t
      status;  ///< Of the export, or of kavo's own check; STATUS_OK for an export without one.
  std::vector<Value> outputs;  ///< One for each output field, in the table's order.
  std::string note{};  ///< What a reader of the result must know beyond the table; or empty.
  /// Why there is no result although the export reports none missing; or empty.
  std::string trouble{};
  std::string warning{};  ///< Why the numbers, or the failure, may not be trusted; or empty.
};

/// The first two fields of a StatusRow from the constant, so that its name is written once.
#define KAVO_STATUS(constant) (constant), #constant

/// One service: a row of the table.
struct Service {
  std::string_view name;
  std::string_view exportName;  ///< The export that it calls; "kavo" for none.
  std::string_view summary;
  std::span<const Field> inputs;
  std::span<const Field> outputs;
  std::span<const StatusRow> statuses;
  Answer (*call)(const Inputs& in);
  /// Its formula loses digits far from the origin of the coordinates: what it gives is checked.
  bool losesDigits = false;
};

/// All services, in the order in which they are listed.
std::span<const Service> Services();

/// The service of that name; null when there is none.
const Service* FindService(std::string_view name);

/// What is wrong with a name that is no service's, and which was probably meant.
std::string NoServiceAdvice(std::string_view name);

/// What is wrong with the choice among a service's inputs of which exactly one is needed; empty
/// when nothing is.
std::string ChoiceTrouble(const Service& service, const std::vector<bool>& given);

/// True when a value of one field can stand for the other: of the same kind, and a figure of the
/// same name. Angles of all kinds can stand for each other.
bool Fits(const Field& given, const Field& wanted);

/// The row of a status; null when the service has none for it.
const StatusRow* FindStatus(const Service& service, std::int32_t code);

/// A field's place in a list of fields, if it is there.
std::optional<std::size_t> FindField(std::span<const Field> fields, std::string_view name);

/// The input for a base that another service sets; null when the service takes none.
const Field* BaseInput(const Service& service);

/// The base that a step sets, for its output.
Figure FigureOf(const Inputs& in);

/// An output as a value: none for what the library marks as not available.
Value OrNothing(double number);
Value OrNothing(IntAngle angle);
Value OrNothing(const CoordPt& point);

}  // namespace kavo_app
