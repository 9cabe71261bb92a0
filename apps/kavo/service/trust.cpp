#include "service/trust.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/geometry.hpp"
#include "base/number_text.hpp"
#include "base/plain_text.hpp"
#include "service/corrections.hpp"
#include "service/doubts.hpp"

namespace kavo_app {
namespace {

// Reports print metres and square metres to four decimals.
constexpr double kLastDigit = 1e-4;

// Where the first point of a moved scene comes to lie, in both coordinates, metres. At the origin
// itself the cosine that a right angle should not have would survive being added to a coordinate.
constexpr double kNearOrigin = 100.0;

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

// What brings the first point of a scene near the origin; nothing when it has none with a number.
Shift ToOrigin(const std::vector<Value>& values) {
  for (const auto& value : values) {
    const CoordPt* point = std::get_if<CoordPt>(&value);
    if (const auto* line = std::get_if<LineDef>(&value)) {
      point = &line->p1;
    } else if (const auto* points = std::get_if<std::vector<CoordPt>>(&value)) {
      point = points->empty() ? nullptr : points->data();
    } else if (const auto* figure = std::get_if<Figure>(&value)) {
      return ToOrigin((*figure)->Values());
    }
    if (point != nullptr && std::isfinite(point->north) && std::isfinite(point->east)) {
      return {kNearOrigin - std::round(point->north), kNearOrigin - std::round(point->east)};
    }
  }
  return {};
}

Answer CallMoved(const Service& service, const Inputs& in, const Shift& shift) {
  std::vector<Value> values;
  for (const auto& value : in.Values()) {
    values.push_back(Moved(value, shift));
  }
  Answer answer = service.call(Inputs(in.Fields(), std::move(values), in.Notation()));
  for (auto& output : answer.outputs) {
    output = Moved(output, shift.Back());
  }
  return answer;
}

bool Succeeded(const Service& service, const Answer& answer) {
  const auto* row = FindStatus(service, answer.status);
  return row != nullptr && row->success;
}

// One number of an answer; a point has several.
struct Number {
  std::string name;
  double value;
};

// The numbers of an answer that the coordinates bear on; none of a failure.
std::vector<Number> ComparedNumbers(const Service& service, const Answer& answer) {
  std::vector<Number> numbers;
  for (std::size_t i = 0; Succeeded(service, answer) && i < answer.outputs.size(); ++i) {
    const auto name = std::string(service.outputs[i].name);
    if (const auto* number = std::get_if<double>(&answer.outputs[i])) {
      numbers.push_back({name, *number});
    } else if (const auto* point = std::get_if<CoordPt>(&answer.outputs[i])) {
      numbers.push_back({name + ".north", point->north});
      numbers.push_back({name + ".east", point->east});
      if (HasElev(*point)) {
        numbers.push_back({name + ".elev", point->elev});
      }
    }
  }
  return numbers;
}

// Whether a reader of a report sees the difference; a number and none always differ.
bool Differ(double one, double other) {
  return (std::isfinite(one) || std::isfinite(other)) && !(std::fabs(one - other) <= kLastDigit);
}

// As reports print it. What is too large to be computed with is no number.
std::string TextOf(double number) {
  return std::isfinite(number) ? NumberText(number) : "no number";
}

// What a better answer has, where that is something else; empty when it is not.
std::string Disagreement(const Service& service, const Answer& asGiven, const Answer& better) {
  std::string told;
  const auto tell = [&told](const std::string& text) { told += (told.empty() ? "" : ", ") + text; };
  if (const auto* row = FindStatus(service, better.status);
      row != nullptr && better.status != asGiven.status) {
    tell(std::string(row->sentence));
  }
  const auto given = ComparedNumbers(service, asGiven);
  for (const auto& [name, value] : ComparedNumbers(service, better)) {
    const auto same = std::ranges::find(given, name, &Number::name);
    if (same == given.end()) {
      tell(fmt::format("{} {}", name, TextOf(value)));
    } else if (Differ(same->value, value)) {
      tell(fmt::format("{} {} instead of {}", name, TextOf(value), TextOf(same->value)));
    }
  }
  return told;
}

// What the answer should be by geometry, where that is something else; or empty.
std::string OffTheTruth(const Service& service, const Inputs& in, const Answer& answer) {
  const auto truth = service.truth(in, answer);
  const auto told = truth ? Disagreement(service, answer, *truth) : std::string();
  return told.empty() ? told
                      : fmt::format(
                            "the instrument's formula loses digits on this line; by "
                            "geometry the result is: {}",
                            told);
}

// What the answer is near the origin of the coordinates, where that is something else; or empty.
std::string OffTheOrigin(const Service& service, const Inputs& in, const Answer& answer) {
  const Shift shift = ToOrigin(in.Values());
  if (shift.north == 0.0 && shift.east == 0.0) {
    return {};
  }
  const auto told = Disagreement(service, answer, CallMoved(service, in, shift));
  return told.empty() ? told
                      : fmt::format(
                            "the instrument's formula loses digits at these coordinates; "
                            "with all points moved by north {} m, east {} m the result "
                            "is: {}",
                            shift.north, shift.east, told);
}

std::string LostDigits(const Service& service, const Inputs& in, const Answer& answer) {
  if (service.truth != nullptr) {
    return OffTheTruth(service, in, answer);
  }
  return service.losesDigits ? OffTheOrigin(service, in, answer) : std::string();
}

}  // namespace

Answer CheckedCall(const Service& service, const Inputs& in) {
  Answer answer = service.call(in);
  if (service.doubt != nullptr && answer.trouble.empty() && Succeeded(service, answer)) {
    const Outputs out(service.outputs, answer.outputs);
    answer.warning = Joined(answer.warning, service.doubt(in, out));
  }
  for (const auto& value : in.Values()) {
    if (const auto* sights = std::get_if<std::vector<Sight>>(&value)) {
      answer.warning = Joined(answer.warning, DoubtOfFaces(*sights));
    }
  }
  if (Succeeded(service, answer)) {
    answer.warning = Joined(answer.warning, UncorrectedWarning(service, in));
  }
  answer.warning = Joined(answer.warning, LostDigits(service, in, answer));
  return answer;
}

}  // namespace kavo_app
