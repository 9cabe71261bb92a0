// Inverse and forward, intersections, points and lines, area.
#include <cmath>

#include "draw.hpp"
#include "judge.hpp"
#include "scenes.hpp"

namespace kavo_fuzz {
namespace {

// Laws hold where the answer does not hang on the last digits: figures of a metre and more, lines
// that cross at six degrees and more, and slopes that the library's line equation bears well.
constexpr double kLeastSize = 1.0;
constexpr double kLeastSine = 0.1;
constexpr double kNearTouching = 0.01;

// A second point of the line.
CoordPt Ahead(const LineDef& line) {
  return line.mode == LINE_MODE_TWO_POINTS ? line.p2 : PointAt(line.p1, line.direction, 100.0);
}

double OffLine(const LineDef& line, const CoordPt& p) { return Offset(line.p1, Ahead(line), p); }

bool IsGentle(const LineDef& line, double greatestSlope) {
  const CoordPt ahead = Ahead(line);
  const double dNorth = std::fabs(ahead.north - line.p1.north);
  const bool isConstantNorth = line.mode == LINE_MODE_TWO_POINTS && dNorth == 0.0;
  return Distance(line.p1, ahead) >= kLeastSize &&
         (isConstantNorth || std::fabs(ahead.east - line.p1.east) <= greatestSlope * dNorth);
}

bool MeetWell(const LineDef& line1, const LineDef& line2) {
  const CoordPt ahead = Ahead(line2);
  const double across = OffLine(line1, ahead) - OffLine(line1, line2.p1);
  return std::fabs(across) > kLeastSine * Distance(line2.p1, ahead);
}

void Inverse(Draw& draw) {
  const auto [status, station, point, polar] = Try<KavoCogoCoordToAngDist>(draw);
  if (draw.IsCalm() && status == STATUS_OK) {
    CoordPt back;
    Ask<KavoCogoAngDistToCoord>(station, polar, back);
    // Half a unit of azimuth (1.5e-7 rad) at the distance, and the last digits.
    Hold(Distance(point, back) <= 1.6e-7 * polar.horizDist + 1e-9 &&
             Near(point.elev, back.elev, 1e-9),
         "KavoCogoAngDistToCoord", "undoes the inverse", station, point, polar, back);
  }
}

void CrossLines(Draw& draw) {
  const auto [status, line1, line2, out] = Try<KavoCogoCalcCrossLine>(draw);
  if (draw.IsCalmAndShipped() && IsGentle(line1, 1000) && IsGentle(line2, 1000) &&
      MeetWell(line1, line2)) {
    Hold(status == STATUS_OK && Near(0, OffLine(line1, out), 1e-6) &&
             Near(0, OffLine(line2, out), 1e-6),
         "KavoCogoCalcCrossLine", "lies on both lines", line1, line2, out);
  }
}

void CrossLineAndCircle(Draw& draw) {
  const auto [count, line, centre, radius, out] = Try<KavoCogoCalcCrossLineCircle, 2>(draw);
  if (!draw.IsCalmAndShipped() || radius < kLeastSize || !IsGentle(line, 10)) {
    return;
  }
  const double room = radius - std::fabs(OffLine(line, centre));
  Hold(std::fabs(room) < kNearTouching || count == (room > 0 ? 2 : 0),
       "KavoCogoCalcCrossLineCircle", "meets as often as it comes near", line, centre, radius);
  for (const CoordPt& p : out) {
    Hold(room < kNearTouching ||
             (Near(0, OffLine(line, p), 1e-6) && Near(radius, Distance(centre, p), 1e-5)),
         "KavoCogoCalcCrossLineCircle", "lies on both", line, centre, radius, p);
  }
}

void CrossCircles(Draw& draw) {
  const auto [count, centre1, radius1, centre2, radius2, out] =
      Try<KavoCogoCalcCrossCircle, 2>(draw);
  const double apart = Distance(centre1, centre2);
  const double room = std::fmin(radius1 + radius2 - apart, apart - std::fabs(radius1 - radius2));
  if (!draw.IsCalm() || apart < kLeastSize || std::fmin(radius1, radius2) < kLeastSize ||
      std::fabs(room) < kNearTouching) {
    return;
  }
  Hold(count == (room > 0 ? 2 : 0), "KavoCogoCalcCrossCircle", "meet as often as they come near",
       centre1, radius1, centre2, radius2);
  for (std::size_t i = 0; i < (count == 2 ? 2 : 0); ++i) {
    const double side = Offset(centre1, centre2, out[i]);
    Hold(Near(radius1, Distance(centre1, out[i]), 1e-6) &&
             Near(radius2, Distance(centre2, out[i]), 1e-6) && (i == 0 ? side > 0 : side < 0),
         "KavoCogoCalcCrossCircle", "lies on both, the right one first", centre1, radius1, centre2,
         radius2, out[i]);
  }
}

void Foot(Draw& draw) {
  const auto [status, line, point, foot] = Try<KavoCogoCalcPtLine>(draw);
  if (draw.IsCalmAndShipped() && IsGentle(line, 1000)) {
    Hold(status == STATUS_OK && Near(0, OffLine(line, foot), 1e-6) &&
             Near(0, Along(line.p1, Ahead(line), point) - Along(line.p1, Ahead(line), foot), 1e-6),
         "KavoCogoCalcPtLine", "lies on the line, square to it from the point", line, point, foot);
  }
}

void AlongAndOffset(Draw& draw) {
  const auto [status, a, b, along, offset, out] = Try<KavoCogoOffsetToCoord>(draw);
  if (draw.IsCalm() && Distance(a, b) >= kLeastSize) {
    Hold(status == STATUS_OK && Near(along, Along(a, b, out), 1e-8) &&
             Near(offset, Offset(a, b, out), 1e-8),
         "KavoCogoOffsetToCoord", "lies where it was put", a, b, along, offset, out);
  }
}

void Transform(Draw& draw) {
  const auto [status, line, rotation, offset, out] = Try<KavoCogoCalcTransLine>(draw);
  if (!draw.IsCalmAndShipped() || status != STATUS_OK || line.mode != LINE_MODE_TWO_POINTS) {
    return;
  }
  Hold(out.direction > ANGLE_FULL_CIRCLE, "KavoCogoCalcTransLine", "normalises in its own way",
       line, rotation, out);
  if (Distance(line.p1, line.p2) >= kLeastSize) {
    const CoordPt turned = {line.p1.north + out.p2.north - out.p1.north,
                            line.p1.east + out.p2.east - out.p1.east,
                            0,
                            0,
                            {}};
    Hold(Near(Distance(line.p1, line.p2), Distance(line.p1, turned), 1e-8) &&
             Near(offset, Offset(line.p1, turned, out.p1), 1e-8) &&
             Near(0, Along(line.p1, turned, out.p1), 1e-8),
         "KavoCogoCalcTransLine", "keeps the length and shifts it sideways", line, rotation, offset,
         out);
  }
}

void Area(Draw& draw) {
  std::vector<CoordPt> points(static_cast<std::size_t>(draw.Below(9)));
  std::ranges::generate(points, [&] { return draw.Point(); });
  const auto count = static_cast<std::int16_t>(points.empty() ? -draw.Byte() : points.size());
  const double area = Ask<KavoCogoCalcArea>(points, count);
  Hold(!(area < 0.0) && (count >= 3 || area == 0.0), "KavoCogoCalcArea", "is not negative", area);
  if (draw.IsCalm() && count > 0) {
    std::ranges::reverse(points);
    std::rotate(points.begin(), points.begin() + draw.Below(count), points.end());
    const double again = Ask<KavoCogoCalcArea>(points, count);
    Hold(Near(area, again, 1e-7), "KavoCogoCalcArea",
         "is the same from any corner, either way round", area, again);
  }
}

}  // namespace
}  // namespace kavo_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kavo_fuzz;
  Draw draw(data, size);
  Run(draw, {Inverse, Just<KavoCogoAngDistToCoord>, Just<KavoCogoCalcSlopeByDist>, CrossLines,
             CrossLineAndCircle, CrossCircles, Foot, AlongAndOffset, Transform, Area});
  return 0;
}
