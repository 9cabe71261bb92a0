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

const KindInfo& InfoOf(Kind kind) {
  static constexpr KindInfo kPoint{"m", "name, or {north, east, elev}"};
  static constexpr KindInfo kPoints{"m", "list of points"};
  static constexpr KindInfo kLine{"m", "name, {from, to}, or {from, azimuth}"};
  static constexpr KindInfo kFigure{"", "name of the step that sets it"};
  static constexpr KindInfo kSights{
      "",
      "list of {point, ha, va, slopeDist or horizDist and heightDiff, th, code, face}, all but ha "
      "optional; or a CSV file with these columns; two readings of a point on both faces are one "
      "sight"};
  static constexpr KindInfo kResiduals{"", "not an input"};
  static constexpr KindInfo kAngle{"angle", "in the job's notation, or \"@step.field\""};
  static constexpr KindInfo kLength{"m", "number, or \"@step.field\""};
  static constexpr KindInfo kArea{"m2", "number, or \"@step.field\""};
  static constexpr KindInfo kPercent{"%", "number, or \"@step.field\""};
  static constexpr KindInfo kRatio{"", "number, or \"@step.field\""};
  switch (kind) {
    case Kind::kPoint:
      return kPoint;
    case Kind::kPoints:
      return kPoints;
    case Kind::kLine:
      return kLine;
    case Kind::kFigure:
      return kFigure;
    case Kind::kSights:
      return kSights;
    case Kind::kResiduals:
      return kResiduals;
    case Kind::kAzimuth:
    case Kind::kZenith:
    case Kind::kAngle:
      return kAngle;
    case Kind::kLength:
      return kLength;
    case Kind::kArea:
      return kArea;
    case Kind::kPercent:
      return kPercent;
    case Kind::kRatio:
      break;
  }
  return kRatio;
}

bool IsAngle(Kind kind) {
  return kind == Kind::kAzimuth || kind == Kind::kZenith || kind == Kind::kAngle;
}

bool ShowsItself(Kind kind) {
  return kind != Kind::kLine && kind != Kind::kFigure && kind != Kind::kResiduals;
}

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

std::string ChoiceTrouble(const Service& service, const std::vector<bool>& given) {
  std::string names;
  int count = 0;
  for (std::size_t i = 0; i < service.inputs.size(); ++i) {
    if (service.inputs[i].need == Need::kOneOf) {
      names += (names.empty() ? "" : " or ") + std::string(service.inputs[i].name);
      count += given[i] ? 1 : 0;
    }
  }
  return names.empty() || count == 1 ? "" : "give exactly one: " + names;
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

Value OrNothing(double number) { return number == VALUE_INVALID ? Value{} : Value{number}; }

Value OrNothing(IntAngle angle) { return angle == ANGLE_INVALID ? Value{} : Value{angle}; }

Value OrNothing(const CoordPt& point) {
  return point.north == VALUE_INVALID || point.east == VALUE_INVALID ? Value{} : Value{point};
}

}  // namespace kavo_app
