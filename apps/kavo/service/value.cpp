#include "service/value.hpp"

#include "base/geometry.hpp"

namespace kavo_app {

bool SameNumbers(const Value& one, const Value& other) {
  if (one.index() != other.index()) {
    return false;
  }
  if (const auto* number = std::get_if<double>(&one)) {
    return *number == std::get<double>(other);
  }
  if (const auto* angle = std::get_if<IntAngle>(&one)) {
    return *angle == std::get<IntAngle>(other);
  }
  if (const auto* point = std::get_if<CoordPt>(&one)) {
    const auto& twin = std::get<CoordPt>(other);
    return point->north == twin.north && point->east == twin.east && point->flags == twin.flags &&
           (!HasElev(*point) || point->elev == twin.elev);
  }
  return true;
}

const KindInfo& InfoOf(Kind kind) {
  static constexpr std::string_view kNumber = "number, or \"@step.field\"";
  static constexpr KindInfo kPoint{"point", "m", "name, or {north, east, elev}"};
  static constexpr KindInfo kPoints{"points", "m", "list of points"};
  static constexpr KindInfo kLine{"line", "m", "name, {from, to}, or {from, azimuth}"};
  static constexpr KindInfo kFigure{"base", "", "name of the step that sets it"};
  static constexpr KindInfo kSights{
      "sights", "",
      "list of {point, ha, va, slopeDist or horizDist and heightDiff, th, code, face}, all but ha "
      "optional; or a CSV file with these columns; two readings of a point on both faces are one "
      "sight"};
  static constexpr KindInfo kResiduals{"list", "", "not an input"};
  static constexpr KindInfo kAngle{"angle", "", "in the job's notation, or \"@step.field\""};
  static constexpr KindInfo kLength{"metres", "m", kNumber};
  static constexpr KindInfo kArea{"square metres", "m2", kNumber};
  static constexpr KindInfo kPercent{"per cent", "%", kNumber};
  static constexpr KindInfo kRatio{"number", "", kNumber};
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

Value OrNothing(double number) { return number == VALUE_INVALID ? Value{} : Value{number}; }

Value OrNothing(IntAngle angle) { return angle == ANGLE_INVALID ? Value{} : Value{angle}; }

Value OrNothing(const CoordPt& point) {
  return point.north == VALUE_INVALID || point.east == VALUE_INVALID ? Value{} : Value{point};
}

}  // namespace kavo_app
