// The services of the measurement programs: remote elevation and distance, slope staking and the
// two-point target.
#include <fmt/format.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <string>

#include "base/geometry.hpp"
#include "service/faces.hpp"
#include "service/service_families.hpp"
#include "service/service_rows.hpp"

namespace kavo_app {
namespace {

// --- remote elevation

constexpr StatusRow kVertical{KAVO_STATUS(ERR_SIGHT_VERTICAL), false,
                              "the sight is vertical: measure from farther away"};

constexpr std::array kRemoteBaseIn = {
    Field{"ha", Kind::kAzimuth, "horizontal reading to the reflector, either face"},
    Field{"va", Kind::kZenith, "zenith reading to the reflector"},
    Field{"slopeDist", Kind::kLength, "slope distance to the reflector", Need::kRequired,
          kAboveZero},
};
constexpr std::array kRemoteBaseOut = {
    Field{"base", Kind::kFigure, "the reflector, for steps of remote-elevation"},
};
constexpr std::array kRemoteBaseStatus = {
    StatusRow{KAVO_STATUS(STATUS_OK), true, "the base is set"},
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
// The export computes a height for a sight anywhere around.
constexpr const char* kOffBase =
    "the sight is a quarter circle or more off the base: sight a point above or below it";
constexpr std::array kRemoteStatus = {
    kComputed,
    kNoBase,
    kVertical,
    StatusRow{KAVO_STATUS(ERR_SIGHT_OFF_BASE), false, kOffBase},
};

IntAngle Face1Direction(const Inputs& in) {
  return Wrapped(in.Angle("ha")) + (IsFace2(in.Angle("va")) ? ANGLE_HALF_CIRCLE : 0);
}

Answer RemoteElevation(const Inputs& in) {
  if (const auto status = SetRemoteBase(in.Base("base")); status != STATUS_OK) {
    return {status, {{}, {}}};
  }
  CoordPt out{};
  const auto status = KavoREMCalc(Wrapped(in.Angle("ha")), in.Angle("va"), &out);
  Answer answer{status, {OrNothing(out.elev), OrNothing(out.north)}};
  const IntAngle off = Face1Direction(in) - Face1Direction(in.Base("base"));
  if (status == STATUS_OK && std::abs(Folded(off)) > ANGLE_QUARTER_CIRCLE) {
    answer.trouble = kOffBase;
  }
  return answer;
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
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), true,
              "the points have one plane position, so no azimuth"},
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

constexpr StatusRow kSlopeVertical{KAVO_STATUS(WARN_SLOPE_VERTICAL), true,
                                   "the design slope is vertical"};
constexpr StatusRow kSlopeLevel{KAVO_STATUS(WARN_SLOPE_LEVEL), true, "the design slope is level"};

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
    StatusRow{KAVO_STATUS(STATUS_OK), true, "the slope is set"},
    kSlopeVertical,
    kSlopeLevel,
    StatusRow{KAVO_STATUS(ERR_REFUSED), false,
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
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false,
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
    StatusRow{KAVO_STATUS(ERR_REFUSED), false, "a distance is negative: give 0 or more"},
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false,
              "the reflectors coincide: measure two different ones"},
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

// A pole is made to a millimetre and each reflector measured to a few.
std::string TargetDoubt(const Inputs& in, const Outputs& out) {
  constexpr double kPoleOff = 5e-3;  // metres
  const double off = out.Number("separation") - in.Number("nominal", 0.0);
  return in.Number("nominal", 0.0) != 0.0 && std::fabs(off) > kPoleOff
             ? fmt::format(
                   "the reflectors were measured {:.4f} m apart and not {:.4f}: check "
                   "nominal and the points",
                   out.Number("separation"), in.Number("nominal"))
             : "";
}

constexpr std::array kServices = {
    Service{"remote-base", "KavoREMSetBase", "reflector under or over a remote point",
            kRemoteBaseIn, kRemoteBaseOut, kRemoteBaseStatus, RemoteBase},
    Service{"remote-elevation", "KavoREMCalc", "height of a remote point above its base", kRemoteIn,
            kRemoteOut, kRemoteStatus, RemoteElevation, kTakenAsMeasured},
    Service{"distance", "KavoRDMCalcByCoord", "distances and direction between two points",
            kDistanceIn, kDistanceOut, kDistanceStatus, Distance},
    Service{"slope-set", "KavoBRSetSlope", "design slope through two points of a cross-section",
            kSlopeSetIn, kSlopeSetOut, kSlopeSetStatus, SlopeSet},
    Service{"slope", "KavoBRCalc", "point against a design slope", kSlopeIn, kSlopeOut,
            kSlopeStatus, Slope},
    Service{"two-point-target", "KavoCalc2PtTarget", "hidden point on a pole with two reflectors",
            kTargetIn, kTargetOut, kTargetStatus, TwoPointTarget, kHeedsNone, kKeepsDigits,
            kNoRules, TargetDoubt},
};

}  // namespace

std::span<const Service> MeasureServices() { return kServices; }

}  // namespace kavo_app
