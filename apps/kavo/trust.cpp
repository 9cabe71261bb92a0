#include "trust.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "geometry.hpp"

namespace kavo_app {
namespace {

// Reports print metres and square metres to four decimals.
constexpr double kLastDigit = 1e-4;

// What the coordinates of a scene are moved by, in whole metres so that nothing is rounded.
struct Shift {
  double north = 0.0;
  double east = 0.0;

  Shift Back() const { return {-north, -east}; }
};

CoordPt Moved(CoordPt point, const Shift& shift) {
  point.north += shift.north;
  point.east += shift.east;
  return point;
}

Value Moved(const Value& value, const Shift& shift);

Figure Moved(const Figure& figure, const Shift& shift) {
  std::vector<Value> values;
  for (const auto& value : figure->Values()) {
    values.push_back(Moved(value, shift));
  }
  return std::make_shared<const Inputs>(figure->Fields(), std::move(values));
}

Value Moved(const Value& value, const Shift& shift) {
  Value moved = value;
  if (auto* point = std::get_if<CoordPt>(&moved)) {
    *point = Moved(*point, shift);
  } else if (auto* line = std::get_if<LineDef>(&moved)) {
    line->p1 = Moved(line->p1, shift);
    line->p2 = Moved(line->p2, shift);
  } else if (auto* points = std::get_if<std::vector<CoordPt>>(&moved)) {
    std::ranges::for_each(*points, [&](CoordPt& corner) { corner = Moved(corner, shift); });
  } else if (auto* sights = std::get_if<std::vector<Sight>>(&moved)) {
    std::ranges::for_each(*sights, [&](Sight& sight) { sight.point = Moved(sight.point, shift); });
  } else if (auto* figure = std::get_if<Figure>(&moved)) {
    *figure = Moved(*figure, shift);
  }
  return moved;
}

// The first point of a scene, rounded; nothing when there is none, or none with a number.
Shift OriginOf(const std::vector<Value>& values) {
  for (const auto& value : values) {
    const CoordPt* point = std::get_if<CoordPt>(&value);
    if (const auto* line = std::get_if<LineDef>(&value)) {
      point = &line->p1;
    } else if (const auto* points = std::get_if<std::vector<CoordPt>>(&value)) {
      point = points->empty() ? nullptr : points->data();
    }
    if (point != nullptr && std::isfinite(point->north) && std::isfinite(point->east)) {
      return {std::round(point->north), std::round(point->east)};
    }
  }
  return {};
}

Answer CallNearOrigin(const Service& service, const Inputs& in, const Shift& origin) {
  std::vector<Value> values;
  for (const auto& value : in.Values()) {
    values.push_back(Moved(value, origin.Back()));
  }
  Answer answer = service.call(Inputs(in.Fields(), std::move(values)));
  for (auto& output : answer.outputs) {
    output = Moved(output, origin);
  }
  return answer;
}

// Appends what differs in one number: its name and both values.
void TellDifference(std::string_view name, double far, double near, std::string& told) {
  if (std::fabs(far - near) > kLastDigit) {
    told += fmt::format("{}{} {:.4f}, near the origin {:.4f}", told.empty() ? "" : "; ", name, far,
                        near);
  }
}

void TellDifference(const Field& field, const Value& far, const Value& near, std::string& told) {
  if (const auto* number = std::get_if<double>(&far)) {
    TellDifference(field.name, *number, std::get<double>(near), told);
  } else if (const auto* point = std::get_if<CoordPt>(&far)) {
    const CoordPt& nearPoint = std::get<CoordPt>(near);
    TellDifference(fmt::format("{}.north", field.name), point->north, nearPoint.north, told);
    TellDifference(fmt::format("{}.east", field.name), point->east, nearPoint.east, told);
    if (HasElev(*point) && HasElev(nearPoint)) {
      TellDifference(fmt::format("{}.elev", field.name), point->elev, nearPoint.elev, told);
    }
  }
}

bool Succeeded(const Service& service, const Answer& answer) {
  const auto* row = FindStatus(service, answer.status);
  return row != nullptr && row->success;
}

// What the two calls disagree in; empty when they agree.
std::string Disagreement(const Service& service, const Answer& far, const Answer& near) {
  std::string told;
  if (far.status != near.status) {
    const auto* row = FindStatus(service, near.status);
    told = fmt::format("near the origin it is: {}", row != nullptr ? row->sentence : "no result");
  }
  if (!Succeeded(service, far) || !Succeeded(service, near)) {
    return told;
  }
  for (std::size_t i = 0; i < service.outputs.size(); ++i) {
    if (far.outputs[i].index() == near.outputs[i].index()) {
      TellDifference(service.outputs[i], far.outputs[i], near.outputs[i], told);
    }
  }
  return told;
}

}  // namespace

Answer CheckedCall(const Service& service, const Inputs& in) {
  Answer answer = service.call(in);
  const Shift origin = service.losesDigits ? OriginOf(in.Values()) : Shift{};
  if (origin.north == 0.0 && origin.east == 0.0) {
    return answer;
  }
  const auto told = Disagreement(service, answer, CallNearOrigin(service, in, origin));
  if (told.empty()) {
    return answer;
  }
  constexpr auto kWarning =
      "the instrument's formula loses digits this far from the origin of the coordinates";
  const auto warning = fmt::format("warning: {}: {}", kWarning, told);
  if (Succeeded(service, answer)) {
    answer.note += (answer.note.empty() ? "" : "; ") + warning;
  } else if (const auto* row = FindStatus(service, answer.status)) {
    answer.trouble = fmt::format("{}; {}", row->sentence, warning);
  }
  return answer;
}

}  // namespace kavo_app
