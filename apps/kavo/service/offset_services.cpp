// The services for points that cannot be occupied. The instrument answers from the step's station.
#include <array>
#include <cmath>

#include "base/geometry.hpp"
#include "host/instrument.hpp"
#include "service/service_families.hpp"
#include "service/service_rows.hpp"

namespace kavo_app {
namespace {

constexpr Field kStation{"station", Kind::kPoint,
                         "the instrument's station; va and dist need its elevation"};
constexpr Field kAimHeight{"th", Kind::kLength, "height to aim at above the point", Need::kOrZero,
                           kBelow100};
constexpr Field kPointOut{"point", Kind::kPoint, "the point that cannot be occupied"};
constexpr Field kHaOut{"ha", Kind::kAzimuth, "horizontal reading to aim at it"};
constexpr Field kVaOut{"va", Kind::kZenith, "zenith reading to aim at it"};
constexpr Field kDistOut{"dist", Kind::kLength, "slope distance to it"};
constexpr std::array kOffsetOut = {kPointOut, kHaOut, kVaOut, kDistOut};
constexpr StatusRow kNoAim{KAVO_STATUS(ERR_REFUSED), false,
                           "the point is where the instrument stands: it cannot be aimed at"};

void SetUp(const Inputs& in) {
  SetUpInstrument({in.Point("station"), in.Angle("orient", 0), in.Number("ih", 0.0)});
}

// Without the station's elevation there is no zenith reading and no slope distance. Most exports do
// not tell that the host could not aim at the point.
Answer OffsetAnswer(const Inputs& in, std::int32_t status, const CoordPt& point,
                    const AngleDistObs& obs) {
  const CoordPt& station = in.Point("station");
  const bool withElev = HasElev(station);
  Answer answer{status,
                {OrNothing(point), obs.ha, withElev ? Value{obs.va} : Value{},
                 withElev ? Value{obs.dist} : Value{}}};
  if (status == STATUS_OK && point.north == station.north && point.east == station.east) {
    answer.trouble = kNoAim.sentence;
  }
  return answer;
}

constexpr std::array kCorner3In = {
    Field{"wallFrom", Kind::kPoint, "first point on the wall"},
    Field{"wallTo", Kind::kPoint, "second point on the wall"},
    Field{"point", Kind::kPoint, "point on the wall at a right angle to it, with elevation"},
    kStation,
    kOrient,
    kInstrumentHeight,
    kAimHeight,
};
constexpr std::array kCorner3Status = {
    kComputed,
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false,
              "the wall's points coincide: give two different points"},
    kPointInvalid,
};

Answer Corner3(const Inputs& in) {
  SetUp(in);
  AngleDistObs obs{};
  CoordPt point{};
  const auto status =
      KavoCalcOfsCorner3Pt(&in.Point("wallFrom"), &in.Point("wallTo"), &in.Point("point"), 0.0,
                           &obs, &point, in.Number("th", 0.0));
  return OffsetAnswer(in, status, point, obs);
}

constexpr std::array kCorner4In = {
    Field{"wall1From", Kind::kPoint, "first point on the first wall"},
    Field{"wall1To", Kind::kPoint, "second point on the first wall"},
    Field{"wall2From", Kind::kPoint, "first point on the second wall"},
    Field{"wall2To", Kind::kPoint, "second point on the second wall, with the corner's elevation"},
    kStation,
    kOrient,
    kInstrumentHeight,
    kAimHeight,
};
constexpr std::array kCorner4Status = {
    kComputed,
    StatusRow{KAVO_STATUS(ERR_INDETERMINATE), false,
              "the walls do not meet: they are parallel, or one is a point"},
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false,
              "a wall's points coincide: give two different points"},
    kPointInvalid,
};

Answer Corner4(const Inputs& in) {
  SetUp(in);
  AngleDistObs obs{};
  CoordPt point{};
  const auto status =
      KavoCalcOfsCorner4Pt(&in.Point("wall1From"), &in.Point("wall1To"), &in.Point("wall2From"),
                           &in.Point("wall2To"), 0.0, &obs, &point, in.Number("th", 0.0));
  return OffsetAnswer(in, status, point, obs);
}

constexpr std::array kEdgeIn = {
    Field{"from", Kind::kPoint, "first point of the edge, with elevation"},
    Field{"to", Kind::kPoint, "second point of the edge, with elevation"},
    Field{"ha", Kind::kAzimuth, "horizontal reading of the sighting, either face"},
    Field{"va", Kind::kZenith, "zenith reading of the sighting"},
    kStation,
    kOrient,
    kInstrumentHeight,
    kAimHeight,
};
constexpr std::array kEdgeStatus = {
    kComputed,
    kNoAim,
    StatusRow{KAVO_STATUS(ERR_INDETERMINATE), false,
              "the edge is vertical, or the station lies in its vertical plane: move the station"},
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false,
              "the edge's points coincide: give two different points"},
    kPointInvalid,
};

// The export also computes a point for a sighting that meets nothing, from VALUE_INVALID, and for
// one that leads away from the edge, drawn on backwards.
bool MeetsPlane(const Inputs& in, IntAngle ha) {
  CoordPt pierced{};
  double along = VALUE_INVALID;
  double height = VALUE_INVALID;
  KavoREFCalc2PtPlane(ha, in.Angle("va"), &in.Point("station"), in.Number("ih", 0.0), &pierced,
                      &along, &height);
  return along != VALUE_INVALID &&
         !IsBehind(in.Point("station"), Referred(Instrument(), ha), in.Angle("va"), pierced);
}

Answer PointOnEdge(const Inputs& in) {
  SetUp(in);
  if (!HasElev(in.Point("from"))) {
    return {ERR_POINT_INVALID, {{}, {}, {}, {}}};
  }
  const IntAngle ha = Wrapped(in.Angle("ha") + in.Angle("orient", 0));
  AngleDistObs obs{};
  CoordPt point{};
  const auto status = KavoCalcOfsLineHA(&in.Point("from"), &in.Point("to"), ha, in.Angle("va"),
                                        &in.Point("station"), in.Number("ih", 0.0), &obs, &point,
                                        in.Number("th", 0.0));
  auto answer = OffsetAnswer(in, status, point, obs);
  if (status == STATUS_OK && !MeetsPlane(in, ha)) {
    answer.trouble =
        "the sighting is vertical, runs along the edge or leads away from it: it meets it nowhere";
  }
  return answer;
}

constexpr std::array kColumnIn = {
    Field{"ha", Kind::kAzimuth, "horizontal reading to the surface, either face"},
    Field{"va", Kind::kZenith, "zenith reading to the surface"},
    Field{"horizDist", Kind::kLength, "horizontal distance to the surface", Need::kRequired,
          kAboveZero},
    Field{"ha2", Kind::kAzimuth, "horizontal reading to one edge"},
    Field{"va2", Kind::kZenith, "zenith reading to it; as va when absent", Need::kOptional},
    Field{"ha3", Kind::kAzimuth, "horizontal reading to the other edge"},
    Field{"va3", Kind::kZenith, "zenith reading to it; as va when absent", Need::kOptional},
    kStation,
    kOrient,
    kInstrumentHeight,
};
constexpr std::array kColumnOut = {
    Field{"point", Kind::kPoint, "the centre, at the height of the sight to the surface"},
    Field{"radius", Kind::kLength, "the radius"},
    Field{"ha", Kind::kAzimuth, "horizontal reading to the centre"},
    Field{"va", Kind::kZenith, "zenith reading to the centre"},
    Field{"dist", Kind::kLength, "slope distance to the centre"},
};
constexpr std::array kColumnStatus = {
    kComputed,
    StatusRow{KAVO_STATUS(ERR_INDETERMINATE), false,
              "the edges are sighted in one direction or in opposite ones: sight both edges"},
    StatusRow{KAVO_STATUS(ERR_POINT_INVALID), false,
              "a sight is vertical, or the surface is not sighted between the edges"},
};

// Height of what is sighted above the instrument's axis, metres; the reading is of either face.
double RiseOf(IntAngle va, double horizDist) {
  return horizDist * std::cos(Radians(va)) / std::fabs(std::sin(Radians(va)));
}

Answer Column(const Inputs& in) {
  SetUp(in);
  const CoordPt& station = in.Point("station");
  const IntAngle orient = in.Angle("orient", 0);
  const IntAngle va = in.Angle("va");
  const auto azimuth = [&in, orient](std::string_view name) {
    return Wrapped(in.Angle(name) + orient);
  };
  const AngleDistObs surface{azimuth("ha"), va, in.Number("horizDist")};
  AngleDistObs obs{};
  double radius = VALUE_INVALID;
  // The export hands on the elevation that it finds in the point.
  CoordPt point = AtElev({}, station.elev + in.Number("ih", 0.0) + RiseOf(va, surface.dist));
  const auto status =
      KavoCalcOfsCircle(&surface, 0.0, azimuth("ha2"), in.Angle("va2", va), azimuth("ha3"),
                        in.Angle("va3", va), &station, 0.0, &obs, &point, &radius);
  if (!HasElev(station)) {
    point.flags = COORD_HAS_NE;
  }
  auto answer = OffsetAnswer(in, status, point, obs);
  answer.outputs.insert(answer.outputs.begin() + 1, OrNothing(radius));
  if (status == STATUS_OK && radius < 0.0) {
    answer.trouble = "the surface is sighted away from the edges: check its horizontal reading";
  }
  return answer;
}

constexpr std::array kServices = {
    Service{"corner-by-wall", "KavoCalcOfsCorner3Pt", "hidden corner of two walls at right angles",
            kCorner3In, kOffsetOut, kCorner3Status, Corner3, kHeedsFace},
    Service{"corner-by-walls", "KavoCalcOfsCorner4Pt", "hidden corner of two walls", kCorner4In,
            kOffsetOut, kCorner4Status, Corner4, kHeedsFace},
    Service{"point-on-edge", "KavoCalcOfsLineHA", "sighted point on an inclined edge", kEdgeIn,
            kOffsetOut, kEdgeStatus, PointOnEdge, kHeedsFace | kTakenAsMeasured},
    Service{"column", "KavoCalcOfsCircle", "centre and radius of a round column", kColumnIn,
            kColumnOut, kColumnStatus, Column, kHeedsFace | kTakenAsMeasured},
};

}  // namespace

std::span<const Service> OffsetServices() { return kServices; }

}  // namespace kavo_app
