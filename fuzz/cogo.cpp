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
constexpr double kGreatestSlope = 1000.0;

// A second point of the line.
CoordPt Ahead(const LineDef& line) {
  return line.mode == LINE_MODE_TWO_POINTS ? line.p2 : PointAt(line.p1, line.direction, 100.0);
}

double OffLine(const LineDef& line, const CoordPt& p) { return Offset(line.p1, Ahead(line), p); }

bool IsGentle(const LineDef& line) {
  const CoordPt ahead = Ahead(line);
  const double dNorth = std::fabs(ahead.north - line.p1.north);
  const bool isConstantNorth = line.mode == LINE_MODE_TWO_POINTS && dNorth == 0.0;
  return Distance(line.p1, ahead) >= kLeastSize &&
         (isConstantNorth || std::fabs(ahead.east - line.p1.east) <= kGreatestSlope * dNorth);
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
  if (draw.IsCalmAndShipped() && IsGentle(line1) && IsGentle(line2) && MeetWell(line1, line2)) {
    Hold(status == STATUS_OK && Near(0, OffLine(line1, out), 1e-6) &&
             Near(0, OffLine(line2, out), 1e-6),
         "KavoCogoCalcCrossLine", "lies on both lines", line1, line2, out);
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
  Run(draw,
      {Inverse, Just<KavoCogoAngDistToCoord>, Just<KavoCogoCalcSlopeByDist>, CrossLines,
       Just<KavoCogoCalcCrossLineCircle, 2>, Just<KavoCogoCalcCrossCircle, 2>,
       Just<KavoCogoCalcPtLine>, Just<KavoCogoOffsetToCoord>, Just<KavoCogoCalcTransLine>, Area});
  return 0;
}
