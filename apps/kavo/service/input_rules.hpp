// What can be told of the inputs of a call before it is made, from the table of services alone.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "service/service.hpp"

namespace kavo_app {

/// What is wrong with the inputs that are given, and what would be right.
struct InputTrouble {
  std::string field;  ///< Or several, "slopeDist or horizDist".
  std::string advice;
};

/// For each input whether it is there.
template <class Input>
std::vector<bool> Given(const std::vector<Input>& inputs, bool (*isThere)(const Input&)) {
  std::vector<bool> given(inputs.size());
  std::transform(inputs.begin(), inputs.end(), given.begin(), isThere);
  return given;
}

/// What is missing or too much among the inputs; nothing when they can be called with.
/// @param given  for each input of the service whether it is there.
std::optional<InputTrouble> TroubleOfChoice(const Service& service, const std::vector<bool>& given);

/// What a field's limit looks at: a number, the size of an angle, how many a list has; nothing for
/// other values.
std::optional<double> Measure(const Value& value);

/// What would be right, where a measure is beyond the field's limit; empty when it is not.
std::string TroubleOfLimit(const Field& field, std::optional<double> measure);

/// The same for all inputs of a call, with the field's name before it.
std::string TroubleOfLimits(const Service& service, const std::vector<Value>& inputs);

/// What else an input needs, "tolerance" or "slopeDist or horizDist", one for each rule.
std::vector<std::string> NeedsOf(const Service& service, const Field& field);

}  // namespace kavo_app
