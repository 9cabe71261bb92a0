#include "report/value_json.hpp"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>

#include "base/geometry.hpp"

namespace kavo_app {
namespace {

template <class Number>
void AppendShortest(std::string& out, Number number) {
  std::array<char, 32> digits{};  // enough for a double and for any integer
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  out.append(digits.data(), end);
}

void Append(std::string& out, IntAngle angle, AngleUnit angles) {
  out += R"({"intAngle":)";
  AppendShortest(out, angle);
  out += R"(,"text":")";
  out += AngleText(angle, angles);
  out += R"("})";
}

void Append(std::string& out, const CoordPt& point) {
  out += R"({"north":)";
  AppendJsonNumber(out, point.north);
  out += R"(,"east":)";
  AppendJsonNumber(out, point.east);
  if (HasElev(point)) {
    out += R"(,"elev":)";
    AppendJsonNumber(out, point.elev);
  }
  out += '}';
}

void Append(std::string& out, const LineDef& line, AngleUnit angles) {
  out += R"({"from":)";
  Append(out, line.p1);
  if (line.mode == LINE_MODE_TWO_POINTS) {
    out += R"(,"to":)";
    Append(out, line.p2);
  } else {
    out += R"(,"azimuth":)";
    Append(out, line.direction, angles);
  }
  out += '}';
}

void Append(std::string& out, std::optional<double> number) {
  if (number) {
    AppendJsonNumber(out, *number);
  } else {
    out += "null";
  }
}

void Append(std::string& out, const std::vector<SightResidual>& residuals, AngleUnit angles) {
  out += '[';
  for (const auto& residual : residuals) {
    out += &residual == residuals.data() ? R"({"sight":)" : R"(,{"sight":)";
    AppendJsonText(out, residual.name);
    out += R"(,"direction":)";
    Append(out, residual.direction, angles);
    out += R"(,"distance":)";
    Append(out, residual.dist);
    out += R"(,"elevation":)";
    Append(out, residual.elev);
    out += '}';
  }
  out += ']';
}

}  // namespace

void AppendJsonText(std::string& out, std::string_view text) {
  out += '"';
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      fmt::format_to(std::back_inserter(out), "\\u{:04x}", static_cast<unsigned char>(c));
    } else {
      out += c;
    }
  }
  out += '"';
}

void AppendJsonNumber(std::string& out, double number) {
  if (std::isfinite(number)) {
    AppendShortest(out, number);
  } else {
    out += "null";
  }
}

void AppendJsonValue(std::string& out, const Value& value, AngleUnit angles) {
  if (const auto* angle = std::get_if<IntAngle>(&value)) {
    Append(out, *angle, angles);
  } else if (const auto* number = std::get_if<double>(&value)) {
    AppendJsonNumber(out, *number);
  } else if (const auto* point = std::get_if<CoordPt>(&value)) {
    Append(out, *point);
  } else if (const auto* line = std::get_if<LineDef>(&value)) {
    Append(out, *line, angles);
  } else if (const auto* residuals = std::get_if<std::vector<SightResidual>>(&value)) {
    Append(out, *residuals, angles);
  } else {
    out += "null";
  }
}

}  // namespace kavo_app
