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

void ForwardUndoesInverse(Draw& draw) {
  const CoordPt station = draw.Point();
  const CoordPt point = draw.Point();
  AngDistRec polar;
  CoordPt back;
  const auto status = Ask<KavoCogoCoordToAngDist>(station, point, polar);
  if (status != STATUS_OK || Ask<KavoCogoAngDistToCoord>(station, polar, back) != STATUS_OK) {
    return;
  }
  if (draw.IsCalm()) {
    // Half a unit of azimuth (1.5e-7 rad) at the distance, and the last digits.
    Hold(Distance(point, back) <= 1.6e-7 * polar.horizDist + 1e-9 &&
             Near(point.elev, back.elev, 1e-9),
         "KavoCogoAngDistToCoord", "undoes the inverse", station, point, polar, back);
  }
}

void Forward(Draw& draw) {
  const CoordPt station = draw.Point();
  const auto polar = draw.Rec<AngDistRec>();
  CoordPt out;
  const auto status = Ask<KavoCogoAngDistToCoord>(station, polar, out);
  Hold(!draw.IsCalm() ||
           (status == STATUS_OK && Near(std::fabs(polar.horizDist), Distance(station, out), 1e-9)),
       "KavoCogoAngDistToCoord", "lies at the distance", station, polar, out);
}

void Grade(Draw& draw) {
  const double horizDist = draw.Metres();
  const double dElev = draw.Metres();
  SlopeRec out;
  Ask<KavoCogoCalcSlopeByDist>(horizDist, dElev, out);
  Hold(!draw.IsCalm() || horizDist == 0.0 || dElev == 0.0 ||
           Near(100.0, out.percent * out.ratio, 1e-12),
       "KavoCogoCalcSlopeByDist", "the ratio is the inverse of the grade", horizDist, dElev, out);
}

void CrossLines(Draw& draw) {
  const auto line1 = draw.Rec<LineDef>();
  const auto line2 = draw.Rec<LineDef>();
  CoordPt out;
  const auto status = Ask<KavoCogoCalcCrossLine>(line1, line2, out);
  if (draw.IsCalmAndShipped() && IsGentle(line1, 1000) && IsGentle(line2, 1000) &&
      MeetWell(line1, line2)) {
    Hold(status == STATUS_OK && Near(0, OffLine(line1, out), 1e-6) &&
             Near(0, OffLine(line2, out), 1e-6),
         "KavoCogoCalcCrossLine", "lies on both lines", line1, line2, out);
  }
}

void CrossLineAndCircle(Draw& draw) {
  const auto line = draw.Rec<LineDef>();
  const CoordPt centre = draw.Point();
  const double radius = draw.Metres();
  CoordPt out[2];
  const auto count = Ask<KavoCogoCalcCrossLineCircle>(line, centre, radius, out);
  Hold(count != 1 || Text(out[0]) == Text(out[1]) || !draw.IsCalm(), "KavoCogoCalcCrossLineCircle",
       "touches in one point", line, centre, radius, out[0], out[1]);
  if (!draw.IsCalmAndShipped() || radius < kLeastSize || !IsGentle(line, 10)) {
    return;
  }
  const double room = radius - std::fabs(OffLine(line, centre));
  Hold(std::fabs(room) < kNearTouching || count == (room > 0 ? 2 : 0),
       "KavoCogoCalcCrossLineCircle", "meets as often as it comes near", line, centre, radius);
  for (int i = 0; i < (count == 2 && room > kNearTouching ? 2 : 0); ++i) {
    Hold(Near(0, OffLine(line, out[i]), 1e-6) && Near(radius, Distance(centre, out[i]), 1e-5),
         "KavoCogoCalcCrossLineCircle", "lies on both", line, centre, radius, out[i]);
  }
}

void CrossCircles(Draw& draw) {
  const CoordPt centre1 = draw.Point();
  const CoordPt centre2 = draw.Point();
  const double radius1 = draw.Metres();
  const double radius2 = draw.Metres();
  CoordPt out[2];
  const auto count = Ask<KavoCogoCalcCrossCircle>(centre1, radius1, centre2, radius2, out);
  const double apart = Distance(centre1, centre2);
  const double room = std::fmin(radius1 + radius2 - apart, apart - std::fabs(radius1 - radius2));
  if (!draw.IsCalm() || apart < kLeastSize || std::fmin(radius1, radius2) < kLeastSize ||
      std::fabs(room) < kNearTouching) {
    return;
  }
  Hold(count == (room > 0 ? 2 : 0), "KavoCogoCalcCrossCircle", "meet as often as they come near",
       centre1, radius1, centre2, radius2);
  for (int i = 0; i < count; ++i) {
    const double side = Offset(centre1, centre2, out[i]);
    Hold(Near(radius1, Distance(centre1, out[i]), 1e-6) &&
             Near(radius2, Distance(centre2, out[i]), 1e-6) && (i == 0 ? side > 0 : side < 0),
         "KavoCogoCalcCrossCircle", "lies on both, the right one first", centre1, radius1, centre2,
         radius2, out[i]);
  }
}

void Foot(Draw& draw) {
  const auto line = draw.Rec<LineDef>();
  const CoordPt point = draw.Point();
  CoordPt foot;
  const auto status = Ask<KavoCogoCalcPtLine>(line, point, foot);
  if (draw.IsCalmAndShipped() && IsGentle(line, 1000)) {
    Hold(status == STATUS_OK && Near(0, OffLine(line, foot), 1e-6) &&
             Near(0, Along(line.p1, Ahead(line), point) - Along(line.p1, Ahead(line), foot), 1e-6),
         "KavoCogoCalcPtLine", "lies on the line, square to it from the point", line, point, foot);
  }
}

void AlongAndOffset(Draw& draw) {
  const CoordPt a = draw.Point();
  const CoordPt b = draw.Point();
  const double along = draw.Metres();
  const double offset = draw.Metres();
  CoordPt out;
  const auto status = Ask<KavoCogoOffsetToCoord>(a, b, along, offset, out);
  if (draw.IsCalm() && Distance(a, b) >= kLeastSize) {
    Hold(status == STATUS_OK && Near(along, Along(a, b, out), 1e-8) &&
             Near(offset, Offset(a, b, out), 1e-8),
         "KavoCogoOffsetToCoord", "lies where it was put", a, b, along, offset, out);
  }
}

void Transform(Draw& draw) {
  const auto line = draw.Rec<LineDef>();
  const IntAngle rotation = draw.Angle();
  const double offset = draw.Metres();
  LineDef out;
  const auto status = Ask<KavoCogoCalcTransLine>(line, rotation, offset, out);
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
  Run(draw, {ForwardUndoesInverse, Forward, Grade, CrossLines, CrossLineAndCircle, CrossCircles,
             Foot, AlongAndOffset, Transform, Area});
  return 0;
}
