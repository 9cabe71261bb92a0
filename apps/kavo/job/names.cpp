#include "job/names.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <span>

#include "base/plain_text.hpp"

namespace kavo_app {
namespace {

// Numbers and angles refer to results by an @; what has no other text than a name does without.
bool HasSign(const Field& wanted) {
  switch (wanted.kind) {
    case Kind::kPoint:
    case Kind::kPoints:
    case Kind::kLine:
    case Kind::kFigure:
    case Kind::kSights:
    case Kind::kResiduals:
      return false;
    default:
      return true;
  }
}

// How a job refers to the results of a step that fit a field; empty when none does.
std::string FittingResults(std::string_view step, const Service& service, const Field& wanted) {
  std::string all;
  for (const auto& output : service.outputs) {
    if (Fits(output, wanted)) {
      all += fmt::format("{}\"{}{}.{}\"", all.empty() ? "" : " or ", HasSign(wanted) ? "@" : "",
                         Shown(step), output.name);
    }
  }
  return all;
}

}  // namespace

std::optional<std::size_t> OnlyOutput(const Service& service, const Field& wanted) {
  const auto fits = [&wanted](const Field& field) { return Fits(field, wanted); };
  if (std::ranges::count_if(service.outputs, fits) != 1) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(std::ranges::find_if(service.outputs, fits) -
                                  service.outputs.begin());
}

std::string Names::NameTrouble(std::string_view name, const Service* service) const {
  if (name.empty()) {
    return "the name is empty; give each point and step its own";
  }
  if (InOneLine(name) != name) {
    return "a name is one line of text, without control characters";
  }
  if (const auto* known = Find(name)) {
    return fmt::format("the {} has this name already; give each point and step its own",
                       WhatIs(*known));
  }
  return ResultTrouble(name, service);
}

std::string Names::ResultTrouble(std::string_view name, const Service* service) const {
  const auto [step, stepName, field] = StepOf(name);
  if (step != nullptr && FindField(step->service->outputs, *field)) {
    return fmt::format("a result of the {} goes by this name; give each its own", WhatIs(*step));
  }
  const auto outputs = service != nullptr ? service->outputs : std::span<const Field>();
  for (const auto& output : outputs) {
    if (const auto* known = Find(fmt::format("{}.{}", name, output.name))) {
      return fmt::format("its result \"{}.{}\" would go by the name of the {}; give each its own",
                         Shown(name), output.name, WhatIs(*known));
    }
  }
  return {};
}

void Names::AddPoint(const ControlPoint& point) {
  known_.emplace(point.name, Known{point.place, point.at, nullptr, 0});
}

void Names::AddStep(const std::string& name, const Service& service, std::size_t index,
                    const Place& place) {
  known_.emplace(name, Known{place, {}, &service, index});
}

const CoordPt* Names::FindPoint(std::string_view name) const {
  const auto* known = Find(name);
  return known != nullptr && known->service == nullptr ? &known->point : nullptr;
}

std::optional<ResultRef> Names::FindResult(std::string_view text, const Field& wanted) const {
  const auto [step, name, field] = StepOf(text);
  if (step == nullptr) {
    return std::nullopt;
  }
  const auto& outputs = step->service->outputs;
  const auto output = field ? FindField(outputs, *field) : OnlyOutput(*step->service, wanted);
  return output && Fits(outputs[*output], wanted) ? std::optional(ResultRef{step->index, *output})
                                                  : std::nullopt;
}

std::string Names::NoResultAdvice(std::string_view text, const Field& wanted) const {
  const bool marked = text.starts_with('@');
  const auto reference = text.substr(marked ? 1 : 0);
  if (!marked && HasSign(wanted) && FindResult(reference, wanted)) {
    return fmt::format("the result of a step has an @ before it; write \"@{}\"", Shown(reference));
  }
  const auto [step, name, field] = StepOf(reference);
  if (step != nullptr) {
    const auto results = FittingResults(name, *step->service, wanted);
    return results.empty()
               ? fmt::format("{} has no result that fits; wanted is: {}", Quoted(name),
                             wanted.meaning)
               : fmt::format("{} is no result that fits; write {}", Quoted(text), results);
  }
  if (marked && !HasSign(wanted) && FindPoint(reference) != nullptr) {
    return fmt::format("a point has no @ before it; write {}", Quoted(reference));
  }
  if (known_.empty()) {
    return fmt::format(
        "{} refers to nothing, as there are no control points and no earlier steps; "
        "wanted is: {}: {}",
        Quoted(text), wanted.meaning, InfoOf(wanted.kind).writing);
  }
  return fmt::format("{} is {} result of an earlier step; wanted is: {}", Quoted(text),
                     HasSign(wanted) ? "no" : "neither a control point nor a", wanted.meaning);
}

std::string Names::WhatIs(const Known& known) {
  return fmt::format("{} at {}", known.service == nullptr ? "known point" : "step",
                     known.place.Text());
}

const Names::Known* Names::Find(std::string_view name) const {
  const auto known = known_.find(name);
  return known == known_.end() ? nullptr : &known->second;
}

Names::StepField Names::StepOf(std::string_view text) const {
  if (const auto* step = Find(text); step != nullptr && step->service != nullptr) {
    return {step, text, std::nullopt};
  }
  const auto dot = text.rfind('.');
  const auto name = text.substr(0, dot);
  const auto* step = dot == text.npos ? nullptr : Find(name);
  if (step == nullptr || step->service == nullptr) {
    return {};
  }
  return {step, name, text.substr(dot + 1)};
}

}  // namespace kavo_app
