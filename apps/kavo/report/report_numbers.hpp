// The numbers of a step in a text report, and the words beside them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/angle_text.hpp"
#include "job/run.hpp"

namespace kavo_app {

/// One number among the results of a service: an output, or a component of a point.
struct ResultNumber {
  std::size_t output;
  std::string_view component;  ///< "north", "east" or "elev"; empty where the output is no point.
  std::string heading;
  std::string_view unit;  ///< Empty also for angles: that of all angles heads the report.
};

/// What a report shows of a service's results, in their order.
std::vector<ResultNumber> NumbersOf(const Service& service);

/// The number of an outcome; no value when it has none.
Value NumberOf(const ResultNumber& number, const Outcome& outcome);

/// True when the number is an input too and came back as it was given, as the radius of an arc by
/// radius and length.
bool WasGiven(const ResultNumber& number, const Step& step, const Outcome& outcome);

/// What a step expects of the number, with how it compares; nulls when it expects nothing.
struct Expected {
  const Expectation* expectation = nullptr;
  const Comparison* comparison = nullptr;
};
Expected ExpectedOf(const ResultNumber& number, const Step& step, const Outcome& outcome);

/// A number or an angle as text; "-" for none.
std::string ValueText(const Value& value, AngleUnit unit);

/// Computed minus expected, with its sign; "-" when nothing was computed.
std::string DifferenceTextOf(const Comparison& comparison, AngleUnit unit);

/// The text with its unit, if there is a number and it has one.
std::string WithUnit(const std::string& text, std::string_view unit);

/// The unit of a field's numbers, for reading beside them.
std::string_view UnitOf(const Field& field);

/// The verdict as a report has it; empty when the step has no tolerance for the number.
std::string_view VerdictText(Verdict verdict);

/// Why there is no result, or what the status says beyond that there is one; or empty.
std::string_view StatusRemark(const Outcome& outcome);

}  // namespace kavo_app
