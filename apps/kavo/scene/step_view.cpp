#include "scene/step_view.hpp"

#include <algorithm>
#include <stdexcept>

namespace kavo_app {

const Value* StepView::In(std::string_view name) const {
  const auto index = FindField(GetStep().service->inputs, name);
  return index && Result().ran ? &Result().inputs[*index] : nullptr;
}

const Value* StepView::Out(std::string_view name) const {
  const auto index = FindField(GetStep().service->outputs, name);
  return index ? &Result().outputs[*index] : nullptr;
}

StepView StepView::BaseOf(std::string_view name) const {
  const auto index = FindField(GetStep().service->inputs, name);
  if (!index || !GetStep().inputs[*index].from) {
    throw std::logic_error("no such base: " + std::string(name));
  }
  return SourceOf(*index);
}

std::string StepView::PointName(std::size_t output) const {
  const auto fields = GetStep().service->outputs;
  const bool several = std::ranges::count(fields, Kind::kPoint, &Field::kind) > 1;
  return several ? GetStep().name + '.' + std::string(fields[output].name) : GetStep().name;
}

}  // namespace kavo_app
