#include "service/input_rules.hpp"

#include <fmt/format.h>

#include <algorithm>

namespace kavo_app {
namespace {

std::string NeedText(const Rule& rule) {
  return rule.orNeeded.empty() ? std::string(rule.needed)
                               : fmt::format("{} or {}", rule.needed, rule.orNeeded);
}

// Too many or too few of the inputs that take each other's place.
std::optional<InputTrouble> TroubleAmong(Need need, const Service& service,
                                         const std::vector<bool>& given) {
  std::string names;
  int count = 0;
  for (std::size_t i = 0; i < service.inputs.size(); ++i) {
    if (service.inputs[i].need == need) {
      names += (names.empty() ? "" : " or ") + std::string(service.inputs[i].name);
      count += given[i] ? 1 : 0;
    }
  }
  if (count > 1) {
    return InputTrouble{names, "both are given; give one of them"};
  }
  if (count == 0 && need == Need::kOneOf && !names.empty()) {
    return InputTrouble{names, "is missing; give one of them"};
  }
  return std::nullopt;
}

}  // namespace

std::optional<InputTrouble> TroubleOfChoice(const Service& service,
                                            const std::vector<bool>& given) {
  for (const auto need : {Need::kOneOf, Need::kOneAtMost}) {
    if (auto trouble = TroubleAmong(need, service, given)) {
      return trouble;
    }
  }
  const auto isGiven = [&](std::string_view name) {
    const auto index = FindField(service.inputs, name);
    return index && given[*index];
  };
  for (const auto& rule : service.rules) {
    if (isGiven(rule.given) && !isGiven(rule.needed) && !isGiven(rule.orNeeded)) {
      const Field& needed = service.inputs[*FindField(service.inputs, rule.needed)];
      return InputTrouble{std::string(rule.given),
                          fmt::format("needs {} as well: {}", NeedText(rule), needed.meaning)};
    }
  }
  return std::nullopt;
}

std::optional<double> Measure(const Value& value) {
  if (const auto* number = std::get_if<double>(&value)) {
    return *number;
  }
  if (const auto* angle = std::get_if<IntAngle>(&value)) {
    return *angle;
  }
  if (const auto* points = std::get_if<std::vector<CoordPt>>(&value)) {
    return static_cast<double>(points->size());
  }
  if (const auto* sights = std::get_if<std::vector<Sight>>(&value)) {
    return static_cast<double>(sights->size());
  }
  return std::nullopt;
}

std::string TroubleOfLimit(const Field& field, std::optional<double> measure) {
  if (!measure || field.limit.holds == nullptr || field.limit.holds(*measure)) {
    return {};
  }
  return fmt::format("must be {}", field.limit.words);
}

std::string TroubleOfLimits(const Service& service, const std::vector<Value>& inputs) {
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    const Field& field = service.inputs[i];
    if (const auto trouble = TroubleOfLimit(field, Measure(inputs[i])); !trouble.empty()) {
      return fmt::format("{} {}", field.name, trouble);
    }
  }
  return {};
}

std::vector<std::string> NeedsOf(const Service& service, const Field& field) {
  std::vector<std::string> needs;
  for (const auto& rule : service.rules) {
    if (rule.given == field.name) {
      needs.push_back(NeedText(rule));
    }
  }
  return needs;
}

}  // namespace kavo_app
