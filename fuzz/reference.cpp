// Reference line, arc and planes.
#include <cmath>

#include "draw.hpp"
#include "judge.hpp"
#include "scenes.hpp"

namespace kavo_fuzz {
namespace {

constexpr double kLeastSize = 1.0;

// The bases as they were last given, where the statuses told that they were taken.
struct Line {
  bool isSet;
  CoordPt start, end;
};
struct Plane {
  bool isSet;
  CoordPt p1, p2, p3;
};
Line line;
Plane wall;   // by two points
Plane plane;  // by three

// Every input begins without line and planes, and with one arc: it cannot be taken away.
void RemoveBases() {
  const CoordPt none{};
  line.isSet = Ask<KavoREFSetBaseLine>(none, none) == STATUS_OK;
  wall.isSet = Ask<KavoREFSet2PtBasePlane>(none, none) != ERR_POINT_INVALID;
  plane.isSet = Ask<KavoREFSet3PtBasePlane>(none, none, none) == STATUS_OK;
  Hold(!line.isSet && !wall.isSet && !plane.isSet, "RemoveBases", "refuses points of no place");
  Ask<KavoREFSetArcByRadiusArcLen>(Pt(0, 0), 0, 100.0, 100.0);
}

void SetLine(Draw& draw) {
  const CoordPt start = draw.Point();
  const CoordPt end = draw.Point();
  line = {Ask<KavoREFSetBaseLine>(start, end) == STATUS_OK, start, end};
}

void MeasureLine(Draw& draw) {
  const CoordPt point = draw.Point();
  RefLineResult out;
  const auto status = Ask<KavoREFCalc>(point, out);
  Hold(line.isSet == (status != ERR_NO_BASE), "KavoREFCalc", "knows whether there is a line",
       status);
  if (!draw.IsCalm() || status != STATUS_OK || Distance(line.start, line.end) < kLeastSize) {
    return;
  }
  CoordPt back;
  Ask<KavoCogoOffsetToCoord>(line.start, line.end, out.along, out.offset, back);
  Hold(Near(Along(line.start, line.end, point), out.along, 1e-8) &&
           Near(Offset(line.start, line.end, point), out.offset, 1e-8) &&
           Near(0, Offset(line.start, line.end, out.foot), 1e-8) && Distance(point, back) < 1e-8 &&
           Near(point.elev, back.elev + out.dElev, 1e-5),
       "KavoREFCalc", "is undone by the point at along and offset", line.start, line.end, point,
       out, back);
}

void MeasureArc(Draw& draw) {
  RefLineResult out;
  Ask<KavoREFCalcArc>(draw.Point(), out);
}

void ReadArc(Draw& /*draw*/) {
  RefArcParams params;
  Ask<KavoREFGetArcParams>(params);
}

void SetArcByCoord(Draw& draw) {
  const CoordPt start = draw.Point();
  const CoordPt end = draw.Point();
  const IntAngle startTangent = draw.Angle();
  Ask<KavoREFSetArcByCoord>(start, end, startTangent, draw.Angle());
}

void SetArcByTangents(Draw& draw) {
  const CoordPt start = draw.Point();
  const IntAngle startTangent = draw.Angle();
  const double radius = draw.Metres();
  const IntAngle endTangent = draw.Angle();
  const auto status = Ask<KavoREFSetArcByRadiusHAngle>(start, startTangent, radius, endTangent);
  if (!draw.IsCalm() || status != STATUS_OK) {
    return;
  }
  RefArcParams byTangents;
  RefArcParams byLength;
  Ask<KavoREFGetArcParams>(byTangents);
  const double length = byTangents.arcLength;
  Ask<KavoREFSetArcByRadiusArcLen>(start, startTangent, radius, length);
  Ask<KavoREFGetArcParams>(byLength);
  Hold(byTangents.startDir == byLength.startDir && radius == byLength.radius &&
           byTangents.centralAngle == byLength.centralAngle && length == byLength.arcLength,
       "KavoREFSetArcByRadiusArcLen", "lays the same arc by its length", start, byTangents,
       byLength);
}

void SetArcByLength(Draw& draw) {
  const CoordPt start = draw.Point();
  const IntAngle startTangent = draw.Angle();
  const double radius = draw.Metres();
  Ask<KavoREFSetArcByRadiusArcLen>(start, startTangent, radius, draw.Metres());
}

// A point laid out by the curve's own equation: the azimuth grows by 1 / R per metre, and the place
// is its integral.
CoordPt OnCurve(const CoordPt& start, IntAngle tangent, double radius, double along,
                double offset) {
  const double azimuth = static_cast<double>(Radians(tangent));
  const double there = azimuth + along / radius;
  return Pt(start.north + radius * (std::sin(there) - std::sin(azimuth)) - offset * std::sin(there),
            start.east + radius * (std::cos(azimuth) - std::cos(there)) + offset * std::cos(there));
}

void FindOnArc(Draw& draw) {
  const CoordPt start = Pt(draw.Between(-500, 500), draw.Between(-500, 500));
  const IntAngle tangent = static_cast<IntAngle>(draw.Between(0, ANGLE_FULL_CIRCLE));
  const IntAngle turn = 2 * static_cast<IntAngle>(draw.Between(5, 85) * kDegree);
  const double size = draw.Between(20, 220);
  const double radius = draw.Below(2) == 0 ? size : -size;
  const double length = static_cast<double>(Radians(turn)) * size;
  const IntAngle endTangent = InCircle(tangent + (radius > 0 ? turn : -turn));
  const CoordPt end = OnCurve(start, tangent, radius, length, 0);
  const int way = draw.Below(3);
  const auto status = way == 0 ? Ask<KavoREFSetArcByCoord>(start, end, tangent, endTangent)
                      : way == 1
                          ? Ask<KavoREFSetArcByRadiusHAngle>(start, tangent, radius, endTangent)
                          : Ask<KavoREFSetArcByRadiusArcLen>(start, tangent, radius, length);
  const double along = length * draw.Between(0.01, 0.99);
  const double offset = size * draw.Between(-0.8, 0.8);
  const CoordPt point = OnCurve(start, tangent, radius, along, offset);
  RefLineResult out;
  Ask<KavoREFCalcArc>(point, out);
  const double reach = 6.1e-7 * 2 * size + 1e-9;  // two units of direction, and the last digits
  Hold(!draw.IsCalmAndShipped() || (status == STATUS_OK && Near(along, out.along, reach) &&
                                    Near(offset, out.offset, reach)),
       "KavoREFCalcArc", "finds the point that was put there", start, tangent, radius, turn, way,
       point, along, offset, out);
}

void SetWall(Draw& draw) {
  const CoordPt p1 = draw.Point();
  const CoordPt p2 = draw.Point();
  const auto status = Ask<KavoREFSet2PtBasePlane>(p1, p2);
  wall = {status == STATUS_OK || status == WARN_NO_ELEVATION, p1, p2, {}};
}

// How far a point lies off the sight from an instrument, which is a line without ends; metres.
double OffSight(const CoordPt& axis, IntAngle ha, IntAngle va, const CoordPt& point) {
  const auto azimuth = static_cast<double>(Radians(ha));
  const auto zenith = static_cast<double>(Radians(va));
  const double north = std::sin(zenith) * std::cos(azimuth);
  const double east = std::sin(zenith) * std::sin(azimuth);
  const double up = std::cos(zenith);
  const double dNorth = point.north - axis.north;
  const double dEast = point.east - axis.east;
  const double dUp = point.elev - axis.elev;
  return std::hypot(dEast * up - dUp * east, dUp * north - dNorth * up,
                    dNorth * east - dEast * north);
}

// Sights that pierce within ten kilometres; a slant one does so with as many digits less.
constexpr double kFarthest = 1e4;
constexpr double kSightReach = 1e-4;

void PierceWall(Draw& draw) {
  const IntAngle ha = draw.Angle();
  const IntAngle va = draw.Angle();
  const CoordPt station = draw.Point();
  const double height = draw.Metres();
  CoordPt out;
  double along = 0.0;
  double above = 0.0;
  const auto status = Ask<KavoREFCalc2PtPlane>(ha, va, station, height, out, along, above);
  Hold(wall.isSet == (status != ERR_NO_BASE), "KavoREFCalc2PtPlane",
       "knows whether there is a plane", status);
  if (!draw.IsCalmAndShipped() || along == VALUE_INVALID ||
      Distance(wall.p1, wall.p2) < kLeastSize || std::fabs(above) + std::fabs(along) > kFarthest) {
    return;
  }
  const CoordPt axis = Pt(station.north, station.east, station.elev + height);
  Hold(Near(0, Offset(wall.p1, wall.p2, out), 1e-8) &&
           Near(along, Along(wall.p1, wall.p2, out), 1e-8) &&
           Near(above, out.elev - wall.p1.elev, 1e-8) && OffSight(axis, ha, va, out) < kSightReach,
       "KavoREFCalc2PtPlane", "lies on the plane and on the sight", wall.p1, wall.p2, ha, va,
       station, height, out, along, above);
}

void SetPlane(Draw& draw) {
  const CoordPt p1 = draw.Point();
  const CoordPt p2 = draw.Point();
  std::vector<CoordPt> p3;
  if (draw.Below(4) != 0) {
    p3.push_back(draw.Point());
  }
  const auto status = Ask<KavoREFSet3PtBasePlane>(p1, p2, p3);
  const CoordPt above = Pt(p2.north, p2.east, p2.elev + 1.0, kFull);
  plane = {status == STATUS_OK, p1, p2, p3.empty() ? above : p3.front()};
}

// The cross product of two sides of the triangle that makes the plane, times the way to a point.
double Volume(const CoordPt& point) {
  const auto minus = [](const CoordPt& a, const CoordPt& b) {
    return Pt(a.north - b.north, a.east - b.east, a.elev - b.elev);
  };
  const CoordPt v = minus(plane.p2, plane.p1);
  const CoordPt w = minus(plane.p3, plane.p1);
  const CoordPt to = minus(point, plane.p1);
  return (v.east * w.elev - v.elev * w.east) * to.north +
         (v.elev * w.north - v.north * w.elev) * to.east +
         (v.north * w.east - v.east * w.north) * to.elev;
}

double DoubleArea() {
  const CoordPt& p = plane.p1;
  const double north = Volume(Pt(p.north + 1, p.east, p.elev));
  const double east = Volume(Pt(p.north, p.east + 1, p.elev));
  return std::hypot(north, east, Volume(Pt(p.north, p.east, p.elev + 1)));
}

void PiercePlane(Draw& draw) {
  const IntAngle ha = draw.Angle();
  const IntAngle va = draw.Angle();
  const CoordPt station = draw.Point();
  const double height = draw.Metres();
  CoordPt out;
  double along = 0.0;
  double across = 0.0;
  const auto status = Ask<KavoREFCalc3PtPlane>(ha, va, station, height, out, along, across);
  Hold(plane.isSet == (status != ERR_NO_BASE), "KavoREFCalc3PtPlane",
       "knows whether there is a plane", status);
  if (!draw.IsCalmAndShipped() || along == VALUE_INVALID || std::hypot(along, across) > kFarthest ||
      DoubleArea() < kLeastSize) {
    return;
  }
  const CoordPt axis = Pt(station.north, station.east, station.elev + height);
  const double apart =
      std::hypot(out.north - plane.p1.north, out.east - plane.p1.east, out.elev - plane.p1.elev);
  Hold(Near(0, Volume(out) / DoubleArea(), 1e-3) && Near(apart, std::hypot(along, across), 1e-3) &&
           OffSight(axis, ha, va, out) < kSightReach,
       "KavoREFCalc3PtPlane", "lies on the plane and on the sight", plane.p1, plane.p2, plane.p3,
       ha, va, station, height, out, along, across);
}

}  // namespace
}  // namespace kavo_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kavo_fuzz;
  Draw draw(data, size);
  RemoveBases();
  Run(draw, {SetLine, MeasureLine, MeasureArc, ReadArc, SetArcByCoord, SetArcByTangents,
             SetArcByLength, FindOnArc, SetWall, PierceWall, SetPlane, PiercePlane});
  return 0;
}
