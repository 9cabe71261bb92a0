// What kavo can compute: one description per service drives reading, help and printing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "base/angle_text.hpp"
#include "service/value.hpp"

namespace kavo_app {

enum class Need {
  kRequired,
  kOptional,
  kOrZero,    ///< Optional, and counts as 0 when absent.
  kOneOf,     ///< Exactly one of the service's fields of this kind is needed.
  kOneAtMost  ///< At most one of the service's fields of this kind may be given.
};

/// What a field takes of the numbers: of its own, or of how many its list has.
struct Limit {
  bool (*holds)(double number) = nullptr;  ///< Null for any.
  std::string_view words{};                ///< After "must be".
};
inline constexpr Limit kAny;

/// One input or output of a service. A figure fits every field of its own name and no other.
struct Field {
  std::string_view name;
  Kind kind;
  std::string_view meaning;
  Need need = Need::kRequired;
  Limit limit = kAny;
};

/// What a call must give as well when it gives a field.
struct Rule {
  std::string_view given;
  std::string_view needed;
  std::string_view orNeeded{};  ///< What would do instead of `needed`; or empty.
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
  /// @param notation  of the angles that a note tells a reader.
  Inputs(std::span<const Field> fields, std::vector<Value> values,
         AngleUnit notation = AngleUnit::kDms)
      : fields_(fields), values_(std::move(values)), notation_(notation) {}

  const CoordPt& Point(std::string_view name) const { return Get<CoordPt>(name); }
  const std::vector<CoordPt>& Points(std::string_view name) const {
    return Get<std::vector<CoordPt>>(name);
  }
  const LineDef& Line(std::string_view name) const { return Get<LineDef>(name); }
  const std::vector<Sight>& Sights(std::string_view name) const {
    return Get<std::vector<Sight>>(name);
  }
  const std::vector<SightResidual>& Residuals(std::string_view name) const {
    return Get<std::vector<SightResidual>>(name);
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
  AngleUnit Notation() const { return notation_; }

 private:
  const Value& Find(std::string_view name) const;
  template <class T>
  const T& Get(std::string_view name) const {
    return std::get<T>(Find(name));
  }

  std::span<const Field> fields_;
  std::vector<Value> values_;
  AngleUnit notation_;
};

/// The outputs of a call that has a result, looked up in the same way.
using Outputs = Inputs;

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

/// How the instrument's settings bear on a service, beside that its azimuths count as they say; a
/// type of its own, so that no flag of a row is taken for one.
enum class SettingSet : std::uint8_t {};
inline constexpr SettingSet kHeedsNone{0};
/// Scale factor, sea level, curvature and refraction change the elevation that it finds from zenith
/// readings alone.
inline constexpr SettingSet kHeedsCorrections{1};
/// The face changes the readings that it gives.
inline constexpr SettingSet kHeedsFace{2};
/// A distance or a height that is measured goes into what it gives, and none of them corrects it.
inline constexpr SettingSet kTakenAsMeasured{4};

constexpr SettingSet operator|(SettingSet one, SettingSet other) {
  return SettingSet{
      static_cast<std::uint8_t>(static_cast<unsigned>(one) | static_cast<unsigned>(other))};
}
/// Whether two sets have something in common.
constexpr bool Share(SettingSet one, SettingSet other) {
  return (static_cast<unsigned>(one) & static_cast<unsigned>(other)) != 0;
}

/// One service: a row of the table.
struct Service {
  std::string_view name;
  std::string_view exportName;  ///< The export that it calls; "kavo" for none.
  std::string_view summary;
  std::span<const Field> inputs;
  std::span<const Field> outputs;
  std::span<const StatusRow> statuses;
  Answer (*call)(const Inputs& in);
  SettingSet settings = kHeedsNone;
  /// Its formula loses digits far from the origin of the coordinates: what it gives is checked.
  bool losesDigits = false;
  std::span<const Rule> rules{};
  /// Why what the inputs describe, or what was found from them, may not be what is meant; empty
  /// when nothing says so. Asked only where there is a result. May be null.
  std::string (*doubt)(const Inputs& in, const Outputs& out) = nullptr;
  /// The answer by geometry, for a formula that loses digits in other places too: what it gives is
  /// checked against this. Nothing where the given answer is as good. May be null.
  std::optional<Answer> (*truth)(const Inputs& in, const Answer& given) = nullptr;
};

/// All services, in the order in which they are listed.
std::span<const Service> Services();

/// The service of that name; null when there is none.
const Service* FindService(std::string_view name);

/// What is wrong with a name that is no service's, and which was probably meant.
std::string NoServiceAdvice(std::string_view name);

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

}  // namespace kavo_app
