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
Line line;
Line wall;  // the two points of the plane
struct Plane {
  bool isSet;
  CoordPt origin;
};
Plane plane;

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
  const auto [status, start, end] = Try<KavoREFSetBaseLine>(draw);
  line = {status == STATUS_OK, start, end};
}

void MeasureLine(Draw& draw) {
  const auto [status, point, out] = Try<KavoREFCalc>(draw);
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

void SetArcByTangents(Draw& draw) {
  const auto [status, start, startTangent, radius, endTangent] =
      Try<KavoREFSetArcByRadiusHAngle>(draw);
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
  const auto [status, p1, p2] = Try<KavoREFSet2PtBasePlane>(draw);
  wall = {status == STATUS_OK || status == WARN_NO_ELEVATION, p1, p2};
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
  const auto [status, ha, va, station, height, out, along, above] = Try<KavoREFCalc2PtPlane>(draw);
  Hold(wall.isSet == (status != ERR_NO_BASE), "KavoREFCalc2PtPlane",
       "knows whether there is a plane", status);
  if (!draw.IsCalmAndShipped() || along == VALUE_INVALID ||
      Distance(wall.start, wall.end) < kLeastSize ||
      std::fabs(above) + std::fabs(along) > kFarthest) {
    return;
  }
  const CoordPt axis = Pt(station.north, station.east, station.elev + height);
  Hold(Near(0, Offset(wall.start, wall.end, out), 1e-8) &&
           Near(along, Along(wall.start, wall.end, out), 1e-8) &&
           Near(above, out.elev - wall.start.elev, 1e-8) &&
           OffSight(axis, ha, va, out) < kSightReach,
       "KavoREFCalc2PtPlane", "lies on the plane and on the sight", wall.start, wall.end, ha, va,
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
  plane = {status == STATUS_OK, p1};
}

void PiercePlane(Draw& draw) {
  const auto [status, ha, va, station, height, out, along, across] = Try<KavoREFCalc3PtPlane>(draw);
  Hold(plane.isSet == (status != ERR_NO_BASE), "KavoREFCalc3PtPlane",
       "knows whether there is a plane", status);
  if (!draw.IsCalmAndShipped() || along == VALUE_INVALID || std::hypot(along, across) > kFarthest) {
    return;
  }
  const CoordPt axis = Pt(station.north, station.east, station.elev + height);
  const double apart = std::hypot(out.north - plane.origin.north, out.east - plane.origin.east,
                                  out.elev - plane.origin.elev);
  Hold(Near(apart, std::hypot(along, across), 1e-3) && OffSight(axis, ha, va, out) < kSightReach,
       "KavoREFCalc3PtPlane", "lies on the plane and on the sight", plane.origin, ha, va, station,
       height, out, along, across);
}

}  // namespace
}  // namespace kavo_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kavo_fuzz;
  Draw draw(data, size);
  RemoveBases();
  Run(draw, {SetLine, MeasureLine, Just<KavoREFSetArcByCoord>, SetArcByTangents,
             Just<KavoREFSetArcByRadiusArcLen>, Just<KavoREFGetArcParams>, Just<KavoREFCalcArc>,
             FindOnArc, SetWall, PierceWall, SetPlane, PiercePlane});
  return 0;
}
