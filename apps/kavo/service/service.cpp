#include "service/service.hpp"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>
#include <string>

#include "base/near_name.hpp"
#include "base/plain_text.hpp"
#include "service/service_families.hpp"

namespace kavo_app {

std::optional<std::size_t> FindField(std::span<const Field> fields, std::string_view name) {
  const auto field = std::ranges::find(fields, name, &Field::name);
  if (field == fields.end()) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(field - fields.begin());
}

const Value& Inputs::Find(std::string_view name) const {
  const auto index = FindField(fields_, name);
  if (!index) {
    throw std::logic_error("no such input: " + std::string(name));
  }
  return values_[*index];
}

bool Inputs::Has(std::string_view name) const {
  const auto index = FindField(fields_, name);
  return index && Available(values_[*index]);
}

std::span<const Service> Services() {
  static const std::vector<Service> services = [] {
    std::vector<Service> all;
    for (const auto family : {CogoServices(), IntersectServices(), MeasureServices(),
                              OffsetServices(), ReferenceServices(), PlaneServices(),
                              StationServices(), AdjustmentServices(), CheckServices()}) {
      all.insert(all.end(), family.begin(), family.end());
    }
    return all;
  }();
  return services;
}

const Service* FindService(std::string_view name) {
  const auto service = std::ranges::find(Services(), name, &Service::name);
  return service == Services().end() ? nullptr : &*service;
}

std::string NoServiceAdvice(std::string_view name) {
  std::vector<std::string_view> names;
  std::ranges::transform(Services(), std::back_inserter(names), &Service::name);
  const auto near = NearName(name, names);
  const auto meant = near.empty() ? "" : "perhaps " + std::string(near) + " is meant; ";
  return Quoted(name) + " is no service; " + meant + "kavo list names them";
}

const StatusRow* FindStatus(const Service& service, std::int32_t code) {
  const auto row = std::ranges::find(service.statuses, code, &StatusRow::code);
  return row == service.statuses.end() ? nullptr : &*row;
}

bool Fits(const Field& given, const Field& wanted) {
  if (given.kind == Kind::kFigure) {
    return wanted.kind == Kind::kFigure && given.name == wanted.name;
  }
  return given.kind == wanted.kind || (IsAngle(given.kind) && IsAngle(wanted.kind));
}

const Field* BaseInput(const Service& service) {
  const auto base = std::ranges::find(service.inputs, Kind::kFigure, &Field::kind);
  return base == service.inputs.end() ? nullptr : &*base;
}

Figure FigureOf(const Inputs& in) { return std::make_shared<const Inputs>(in); }

}  // namespace kavo_app
