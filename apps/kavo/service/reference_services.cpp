// The services of reference lines and arcs.
#include <fmt/format.h>

#include <array>
#include <cmath>

#include "base/geometry.hpp"
#include "host/instrument.hpp"
#include "service/arc_truth.hpp"
#include "service/service_families.hpp"
#include "service/service_rows.hpp"

namespace kavo_app {
namespace {

constexpr Field kAlong{"along", Kind::kLength, "chainage from the start; negative before it"};
constexpr Field kOffset{"offset", Kind::kLength, "distance across; positive to the right"};
constexpr Field kMeasured{"point", Kind::kPoint, "the measured point"};

// --- reference line

constexpr std::array kLineSetIn = {
    Field{"from", Kind::kPoint, "start of the base line"},
    Field{"to", Kind::kPoint, "its end"},
};
constexpr std::array kLineSetOut = {
    Field{"baseline", Kind::kFigure, "the base line, for steps of line-point"},
};
constexpr std::array kLineSetStatus = {
    StatusRow{KAVO_STATUS(STATUS_OK), true, "the base line is set"},
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false, "the ends coincide: give two different points"},
    kPointInvalid,
};

std::int32_t SetLine(const Inputs& in) {
  return KavoREFSetBaseLine(&in.Point("from"), &in.Point("to"));
}

Answer LineSet(const Inputs& in) { return {SetLine(in), {FigureOf(in)}}; }

constexpr std::array kLinePointIn = {
    Field{"baseline", Kind::kFigure, "the base line"},
    kMeasured,
};
constexpr std::array kLinePointOut = {
    kAlong,
    kOffset,
    Field{"dElev", Kind::kLength, "height above the line; none without heights"},
    Field{"foot", Kind::kPoint, "foot of the perpendicular on the line"},
};
constexpr std::array kLinePointStatus = {kComputed, kNoBase, kPointInvalid};

Answer LinePoint(const Inputs& in) {
  SetLine(in.Base("baseline"));
  RefLineResult out{};
  const auto status = KavoREFCalc(&in.Point("point"), &out);
  return {
      status,
      {out.along, out.offset, HasElev(out.foot) ? Value{out.dElev} : Value{}, OrNothing(out.foot)}};
}

// --- reference arc

constexpr Field kStart{
    "start", Kind::kPoint,
    "start of the arc; its elevation is the arc's, which is graded to that of an end"};
constexpr Field kStartDir{"startDir", Kind::kAzimuth, "azimuth of the tangent at the start"};
constexpr Field kEndDir{"endDir", Kind::kAzimuth, "azimuth of the tangent at the end"};
constexpr Field kRadius{"radius", Kind::kLength,
                        "radius; positive turns clockwise, negative anticlockwise"};
constexpr Field kArcLength{"arcLength", Kind::kLength, "length along the arc"};

constexpr std::array kArcOut = {
    Field{"arc", Kind::kFigure, "the arc, for steps of arc-point"},
    kStartDir,
    kEndDir,
    kRadius,
    kArcLength,
    Field{"centralAngle", Kind::kAngle, "angle at the centre, with the sign of the radius"},
};
constexpr StatusRow kSameTangents{KAVO_STATUS(ERR_INDETERMINATE), false,
                                  "both tangents have one azimuth: that is no arc"};

constexpr std::array kArcByTangentsIn = {kStart, Field{"end", Kind::kPoint, "end of the arc"},
                                         kStartDir, kEndDir};
constexpr std::array kArcByTangentsStatus = {
    kComputed,
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false, "the ends coincide: give two different points"},
    kSameTangents,
    kPointInvalid,
};
constexpr std::array kArcByAngleIn = {kStart, kStartDir, kRadius, kEndDir};
constexpr std::array kArcByAngleStatus = {
    kComputed,
    StatusRow{KAVO_STATUS(ERR_REFUSED), false, "the radius is 0: give another"},
    kSameTangents,
    kPointInvalid,
};
constexpr std::array kArcByLengthIn = {kStart, kStartDir, kRadius, kArcLength};
constexpr std::array kArcByLengthStatus = {
    kComputed,
    StatusRow{KAVO_STATUS(ERR_REFUSED), false,
              "the radius is 0, or the length not above 0: give others"},
    kPointInvalid,
};

// An arc is set by whichever three or four inputs its step had.
std::int32_t SetArc(const Inputs& in) {
  const CoordPt& start = in.Point("start");
  const IntAngle startDir = in.Angle("startDir");
  if (in.Has("end")) {
    return KavoREFSetArcByCoord(&start, &in.Point("end"), startDir, in.Angle("endDir"));
  }
  if (in.Has("endDir")) {
    return KavoREFSetArcByRadiusHAngle(&start, startDir, in.Number("radius"), in.Angle("endDir"));
  }
  return KavoREFSetArcByRadiusArcLen(&start, startDir, in.Number("radius"), in.Number("arcLength"));
}

Answer ArcSet(const Inputs& in) {
  const auto status = SetArc(in);
  RefArcParams params{};
  KavoREFGetArcParams(&params);
  return {status,
          {FigureOf(in), params.startDir, Wrapped(params.endDir), params.radius, params.arcLength,
           params.centralAngle}};
}

// Well above what directions truncated to their unit can make on an arc of that radius, metres.
double ArcBound(double radius) {
  constexpr double kMillimetre = 1e-3;
  constexpr double kTruncation = 1e-6;
  return kMillimetre + kTruncation * std::fabs(radius);
}

// The export lets the arc end where the tangents lead it.
std::string TangentsDoubt(const Inputs& in, const Outputs& out) {
  const CoordPt end = EndOf({in.Point("start"), Referred(Instrument(), out.Angle("startDir")),
                             out.Number("radius"), out.Number("arcLength")});
  const double off = std::hypot(end.north - in.Point("end").north, end.east - in.Point("end").east);
  return off > ArcBound(out.Number("radius"))
             ? fmt::format("the tangents do not fit the ends: the arc ends {:.4f} m away from end",
                           off)
             : "";
}

// The export cuts off what is more.
std::string ArcLengthDoubt(const Inputs& in, const Outputs& out) {
  const double length = out.Number("arcLength");
  return in.Number("arcLength") - length > ArcBound(out.Number("radius"))
             ? fmt::format("arcLength is more than the full circle of {:.4f} m, which was taken",
                           length)
             : "";
}

constexpr std::array kArcPointIn = {
    Field{"arc", Kind::kFigure, "the arc"},
    kMeasured,
};
constexpr std::array kArcPointOut = {
    kAlong,
    kOffset,
    Field{"dElev", Kind::kLength, "height above the arc; none without heights"},
};
constexpr std::array kArcPointStatus = {
    kComputed,
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false,
              "the point is the centre of the arc: it has no chainage"},
    kPointInvalid,
};

// The library's formula leaves the geometry in some places (its header names them), which a
// surveyor must hear of.
std::string ArcWarning(const Inputs& arc, const CoordPt& point, const RefLineResult& out) {
  RefArcParams params{};
  KavoREFGetArcParams(&params);
  const auto truth = TrueArcPosition({arc.Point("start"), Referred(Instrument(), params.startDir),
                                      params.radius, params.arcLength},
                                     point);
  if (std::hypot(truth.along - out.along, truth.offset - out.offset) <= ArcBound(params.radius)) {
    return {};
  }
  return fmt::format(
      "the instrument's formula is off here; geometrically along is {:.4f} m, "
      "offset {:.4f} m",
      truth.along, truth.offset);
}

Answer ArcPoint(const Inputs& in) {
  const Inputs& arc = in.Base("arc");
  const CoordPt& point = in.Point("point");
  SetArc(arc);
  RefLineResult out{};
  const auto status = KavoREFCalcArc(&point, &out);
  // An arc by both ends is graded between them.
  const bool withElev = HasElev(point) && HasElev(arc.Point("start")) &&
                        (!arc.Has("end") || HasElev(arc.Point("end")));
  Answer answer{status, {out.along, out.offset, withElev ? Value{out.dElev} : Value{}}};
  answer.warning = ArcWarning(arc, point, out);
  return answer;
}

constexpr std::array kServices = {
    Service{"line-set", "KavoREFSetBaseLine", "reference line through two points", kLineSetIn,
            kLineSetOut, kLineSetStatus, LineSet},
    Service{"line-point", "KavoREFCalc", "point against a reference line", kLinePointIn,
            kLinePointOut, kLinePointStatus, LinePoint},
    Service{"arc-by-tangents", "KavoREFSetArcByCoord", "reference arc by its ends and tangents",
            kArcByTangentsIn, kArcOut, kArcByTangentsStatus, ArcSet, kHeedsNone, kLosesDigits,
            kNoRules, TangentsDoubt},
    Service{"arc-by-angle", "KavoREFSetArcByRadiusHAngle",
            "reference arc by start, radius and end tangent", kArcByAngleIn, kArcOut,
            kArcByAngleStatus, ArcSet},
    Service{"arc-by-length", "KavoREFSetArcByRadiusArcLen",
            "reference arc by start, radius and length", kArcByLengthIn, kArcOut,
            kArcByLengthStatus, ArcSet, kHeedsNone, kKeepsDigits, kNoRules, ArcLengthDoubt},
    Service{"arc-point", "KavoREFCalcArc", "point against a reference arc", kArcPointIn,
            kArcPointOut, kArcPointStatus, ArcPoint, kHeedsNone, kLosesDigits},
};

}  // namespace

std::span<const Service> ReferenceServices() { return kServices; }

}  // namespace kavo_app
