#include "measure_services.hpp"

#include <array>
#include <cmath>

#include "geometry.hpp"
#include "instrument.hpp"

namespace kavo_app {
namespace {

// --- remote elevation

constexpr StatusRow kVertical{ERR_SIGHT_VERTICAL, false,
                              "the sight is vertical: measure from farther away"};
constexpr StatusRow kNoBase{ERR_NO_BASE, false, "there is no base: set one in an earlier step"};

constexpr std::array kRemoteBaseIn = {
    Field{"ha", Kind::kAzimuth, "horizontal reading to the reflector, either face"},
    Field{"va", Kind::kZenith, "zenith reading to the reflector"},
    Field{"slopeDist", Kind::kLength, "slope distance to the reflector"},
};
constexpr std::array kRemoteBaseOut = {
    Field{"base", Kind::kFigure, "the reflector, for steps of remote-elevation"},
};
constexpr std::array kRemoteBaseStatus = {
    StatusRow{STATUS_OK, true, "the base is set"},
    kVertical,
};

std::int32_t SetRemoteBase(const Inputs& in) {
  const AngDistRec sight{Wrapped(in.Angle("ha")), in.Angle("va"), in.Number("slopeDist"), 0.0, 0.0};
  return KavoREMSetBase(&sight);
}

Answer RemoteBase(const Inputs& in) { return {SetRemoteBase(in), {FigureOf(in)}}; }

constexpr std::array kRemoteIn = {
    Field{"base", Kind::kFigure, "the reflector below or above the remote point"},
    Field{"ha", Kind::kAzimuth, "horizontal reading to the remote point, either face"},
    Field{"va", Kind::kZenith, "zenith reading to the remote point"},
};
constexpr std::array kRemoteOut = {
    Field{"height", Kind::kLength, "height above the base reflector; negative below it"},
    Field{"offset", Kind::kLength, "distance from the base sight, across it; right is positive"},
};
constexpr std::array kRemoteStatus = {
    kComputed,
    kNoBase,
    kVertical,
    StatusRow{ERR_SIGHT_OFF_BASE, true,
              "the sight is a quarter circle or more off the base, so there is no offset"},
};

Answer RemoteElevation(const Inputs& in) {
  if (const auto status = SetRemoteBase(in.Base("base")); status != STATUS_OK) {
    return {status, {{}, {}}};
  }
  CoordPt out{};
  const auto status = KavoREMCalc(Wrapped(in.Angle("ha")), in.Angle("va"), &out);
  return {status, {OrNothing(out.elev), OrNothing(out.north)}};
}

// --- remote distance

constexpr std::array kDistanceIn = {
    Field{"first", Kind::kPoint, "from here"},
    Field{"second", Kind::kPoint, "to here"},
};
constexpr std::array kDistanceOut = {
    Field{"slopeDist", Kind::kLength, "slope distance; none without both elevations"},
    Field{"horizDist", Kind::kLength, "horizontal distance"},
    Field{"dElev", Kind::kLength, "height difference, second minus first; none likewise"},
    Field{"azimuth", Kind::kAzimuth, "direction from the first point to the second"},
};
constexpr std::array kDistanceStatus = {
    kComputed,
    StatusRow{ERR_NO_DIRECTION, true, "the points have one plane position, so no azimuth"},
    kPointInvalid,
};

Answer Distance(const Inputs& in) {
  RdmResult out{};
  const auto status = KavoRDMCalcByCoord(&in.Point("first"), &in.Point("second"), &out);
  if (!HasElev(in.Point("first")) || !HasElev(in.Point("second"))) {
    return {status, {{}, out.horizDist, {}, OrNothing(out.azimuth)}};
  }
  return {status, {out.slopeDist, out.horizDist, out.dElev, OrNothing(out.azimuth)}};
}

// --- slope staking

constexpr StatusRow kSlopeVertical{WARN_SLOPE_VERTICAL, true, "the design slope is vertical"};
constexpr StatusRow kSlopeLevel{WARN_SLOPE_LEVEL, true, "the design slope is level"};

constexpr std::array kSlopeSetIn = {
    Field{"elev1", Kind::kLength, "elevation of the first design point"},
    Field{"offset1", Kind::kLength, "its offset from the centre line; negative to the left"},
    Field{"elev2", Kind::kLength, "elevation of the second design point"},
    Field{"offset2", Kind::kLength, "its offset, on the same side"},
};
constexpr std::array kSlopeSetOut = {
    Field{"slope", Kind::kFigure, "the design slope, for steps of slope"},
};
constexpr std::array kSlopeSetStatus = {
    StatusRow{STATUS_OK, true, "the slope is set"},
    kSlopeVertical,
    kSlopeLevel,
    StatusRow{ERR_REFUSED, false,
              "the design points are one point, or on opposite sides: give two on one side"},
};

std::int32_t SetSlope(const Inputs& in) {
  return KavoBRSetSlope(in.Number("elev1"), in.Number("offset1"), in.Number("elev2"),
                        in.Number("offset2"));
}

Answer SlopeSet(const Inputs& in) { return {SetSlope(in), {FigureOf(in)}}; }

constexpr std::array kSlopeIn = {
    Field{"slope", Kind::kFigure, "the design slope"},
    Field{"reference", Kind::kPoint, "point of the centre line in this cross-section"},
    Field{"point", Kind::kPoint, "the measured point, with elevation"},
};
constexpr std::array kSlopeOut = {
    Field{"horizDiff", Kind::kLength, "distance outside the slope; negative inside it"},
    Field{"vertDiff", Kind::kLength, "height above the slope; negative below it"},
    Field{"horizDist", Kind::kLength, "distance from the centre line's point"},
};
constexpr std::array kSlopeStatus = {
    kComputed,
    kSlopeVertical,
    kSlopeLevel,
    kNoBase,
    StatusRow{ERR_NO_DIRECTION, false,
              "the measured point is the centre line's point: measure one beside it"},
    kPointInvalid,
};

Answer Slope(const Inputs& in) {
  SetSlope(in.Base("slope"));
  SlopeStakeResult out{VALUE_INVALID, VALUE_INVALID, VALUE_INVALID};
  const auto status = KavoBRCalc(&in.Point("reference"), &in.Point("point"), &out);
  return {status, {OrNothing(out.horizDiff), OrNothing(out.vertDiff), OrNothing(out.horizDist)}};
}

// --- two-point target

constexpr std::array kTargetIn = {
    Field{"first", Kind::kPoint, "reflector farther from the hidden point, with elevation"},
    Field{"second", Kind::kPoint, "reflector nearer to it, with elevation"},
    Field{"nominal", Kind::kLength, "known distance between them; the measured one when absent",
          Need::kOptional},
    Field{"target", Kind::kLength, "distance from the second reflector to the hidden point"},
};
constexpr std::array kTargetOut = {
    Field{"separation", Kind::kLength, "measured distance between the reflectors"},
    Field{"point", Kind::kPoint, "the hidden point"},
};
constexpr std::array kTargetStatus = {
    kComputed,
    StatusRow{ERR_REFUSED, false, "a distance is negative: give 0 or more"},
    StatusRow{ERR_NO_DIRECTION, false, "the reflectors coincide: measure two different ones"},
    kPointInvalid,
};

Answer TwoPointTarget(const Inputs& in) {
  double separation = VALUE_INVALID;
  CoordPt out{};
  const auto status =
      KavoCalc2PtTarget(&in.Point("first"), &in.Point("second"), in.Number("nominal", 0.0),
                        in.Number("target"), &separation, &out);
  return {status, {OrNothing(separation), OrNothing(out)}};
}

// --- offset measurements: the instrument answers from the step's station

constexpr Field kStation{"station", Kind::kPoint,
                         "the instrument's station; va and dist need its elevation"};
constexpr Field kOrient{"orient", Kind::kAzimuth, "azimuth of the circle's zero; 0 when absent",
                        Need::kOptional};
constexpr Field kInstrumentHeight{"ih", Kind::kLength, "instrument height; 0 when absent",
                                  Need::kOptional};
constexpr Field kTargetHeight{"th", Kind::kLength,
                              "height to aim at above the point; 0 when absent", Need::kOptional};
constexpr Field kPointOut{"point", Kind::kPoint, "the point that cannot be occupied"};
constexpr Field kHaOut{"ha", Kind::kAzimuth, "horizontal reading to aim at it"};
constexpr Field kVaOut{"va", Kind::kZenith, "zenith reading to aim at it"};
constexpr Field kDistOut{"dist", Kind::kLength, "slope distance to it"};
constexpr std::array kOffsetOut = {kPointOut, kHaOut, kVaOut, kDistOut};
constexpr StatusRow kNoAim{ERR_REFUSED, false,
                           "the point is where the instrument stands: it cannot be aimed at"};

void SetUp(const Inputs& in) {
  SetUpInstrument({in.Point("station"), in.Angle("orient", 0), in.Number("ih", 0.0)});
}

// Without the station's elevation there is no zenith reading and no slope distance.
Answer OffsetAnswer(const Inputs& in, std::int32_t status, const CoordPt& point,
                    const AngleDistObs& obs) {
  if (!HasElev(in.Point("station"))) {
    return {status, {OrNothing(point), obs.ha, {}, {}}};
  }
  return {status, {OrNothing(point), obs.ha, obs.va, obs.dist}};
}

constexpr std::array kCorner3In = {
    Field{"wallFrom", Kind::kPoint, "first point on the wall"},
    Field{"wallTo", Kind::kPoint, "second point on the wall"},
    Field{"point", Kind::kPoint, "point on the wall at a right angle to it, with elevation"},
    kStation,
    kOrient,
    kInstrumentHeight,
    kTargetHeight,
};
constexpr std::array kCorner3Status = {
    kComputed,
    StatusRow{ERR_NO_DIRECTION, false, "the wall's points coincide: give two different points"},
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
    kTargetHeight,
};
constexpr std::array kCorner4Status = {
    kComputed,
    StatusRow{ERR_INDETERMINATE, false,
              "the walls do not meet: they are parallel, or one is a point"},
    StatusRow{ERR_NO_DIRECTION, false, "a wall's points coincide: give two different points"},
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
    kTargetHeight,
};
constexpr std::array kEdgeStatus = {
    kComputed,
    kNoAim,
    StatusRow{ERR_INDETERMINATE, false,
              "the edge is vertical, or the station lies in its vertical plane: move the station"},
    StatusRow{ERR_NO_DIRECTION, false, "the edge's points coincide: give two different points"},
    kPointInvalid,
};

// The export also computes a point for a sighting that meets nothing: from VALUE_INVALID.
bool MeetsPlane(const Inputs& in, IntAngle ha) {
  CoordPt pierced{};
  double along = VALUE_INVALID;
  double height = VALUE_INVALID;
  KavoREFCalc2PtPlane(ha, in.Angle("va"), &in.Point("station"), in.Number("ih", 0.0), &pierced,
                      &along, &height);
  return along != VALUE_INVALID;
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
    answer.trouble = "the sighting is vertical or runs along the edge: it meets it nowhere";
  }
  return answer;
}

constexpr std::array kColumnIn = {
    Field{"ha", Kind::kAzimuth, "horizontal reading to the surface, either face"},
    Field{"va", Kind::kZenith, "zenith reading to the surface"},
    Field{"horizDist", Kind::kLength, "horizontal distance to the surface"},
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
    StatusRow{ERR_INDETERMINATE, false,
              "the edges are sighted in one direction or in opposite ones: sight both edges"},
    StatusRow{ERR_POINT_INVALID, false,
              "a sight is vertical, or the surface is not sighted between the edges"},
};

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
  CoordPt point =
      AtElev({}, station.elev + in.Number("ih", 0.0) + surface.dist / std::tan(Radians(va)));
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
    Service{"remote-base", "KavoREMSetBase", "reflector under or over a remote point",
            kRemoteBaseIn, kRemoteBaseOut, kRemoteBaseStatus, RemoteBase},
    Service{"remote-elevation", "KavoREMCalc", "height of a remote point above its base", kRemoteIn,
            kRemoteOut, kRemoteStatus, RemoteElevation},
    Service{"distance", "KavoRDMCalcByCoord", "distances and direction between two points",
            kDistanceIn, kDistanceOut, kDistanceStatus, Distance},
    Service{"slope-set", "KavoBRSetSlope", "design slope through two points of a cross-section",
            kSlopeSetIn, kSlopeSetOut, kSlopeSetStatus, SlopeSet},
    Service{"slope", "KavoBRCalc", "point against a design slope", kSlopeIn, kSlopeOut,
            kSlopeStatus, Slope},
    Service{"two-point-target", "KavoCalc2PtTarget", "hidden point on a pole with two reflectors",
            kTargetIn, kTargetOut, kTargetStatus, TwoPointTarget},
    Service{"corner-by-wall", "KavoCalcOfsCorner3Pt", "hidden corner of two walls at right angles",
            kCorner3In, kOffsetOut, kCorner3Status, Corner3},
    Service{"corner-by-walls", "KavoCalcOfsCorner4Pt", "hidden corner of two walls", kCorner4In,
            kOffsetOut, kCorner4Status, Corner4},
    Service{"point-on-edge", "KavoCalcOfsLineHA", "sighted point on an inclined edge", kEdgeIn,
            kOffsetOut, kEdgeStatus, PointOnEdge},
    Service{"column", "KavoCalcOfsCircle", "centre and radius of a round column", kColumnIn,
            kColumnOut, kColumnStatus, Column},
};

}  // namespace

std::span<const Service> MeasureServices() { return kServices; }

}  // namespace kavo_app
