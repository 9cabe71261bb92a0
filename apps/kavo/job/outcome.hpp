// What became of a call of a service, and of a step of a job.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "service/service.hpp"

namespace kavo_app {

/// An expected number beside the computed one.
struct Comparison {
  Value computed;  ///< No value when there is none to compare.
  std::variant<double, IntAngle>
      difference;              ///< Computed minus expected; angles within +-half a circle.
  std::optional<bool> within;  ///< Whether it is in the step's tolerance, if there is one.
};

/// How an expected number is met; the worse ones stand later.
enum class Verdict { kUnjudged, kOk, kOutOfTolerance, kMissing };
Verdict VerdictOn(const Comparison& comparison);

/// A number of an output: of a point the component of that name, otherwise the output itself. No
/// value when there is none.
Value Component(const Value& output, std::string_view component);

/// What became of a step.
struct Outcome {
  bool ran = false;
  bool success = false;                 ///< It ran, and its outputs hold a result.
  bool passed = true;                   ///< False for a check that is not passed.
  std::int32_t status = 0;              ///< Of the export; only when it ran.
  std::string_view statusName{};        ///< Of the constant; empty for a count of points.
  std::string sentence;                 ///< What the status means, or why there is no result.
  std::string note;                     ///< What a reader of the result must know; may be empty.
  std::string warning;                  ///< Why it may not be trusted; or empty.
  std::vector<Value> inputs;            ///< As the call got them; only when it ran.
  std::vector<Value> outputs;           ///< In the order of the service's outputs.
  std::vector<Comparison> comparisons;  ///< One for each expectation.

  /// The worst of its comparisons; unjudged without any.
  Verdict WorstVerdict() const;
  /// In words, what keeps the step from being good: it has no result, something expected is missing
  /// or out of tolerance, or it is a check that is not passed. Empty when nothing does.
  std::string_view Flaw() const;
  bool Good() const { return Flaw().empty(); }
};

/// Calls a service with the inputs that the outcome holds and notes what came of it.
/// @param notation  of the angles in notes.
void CallService(const Service& service, AngleUnit notation, Outcome& outcome);

}  // namespace kavo_app
