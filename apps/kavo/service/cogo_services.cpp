// The services of coordinate geometry: directions, points and lines, areas.
#include <array>
#include <cmath>

#include "base/geometry.hpp"
#include "service/doubts.hpp"
#include "service/faces.hpp"
#include "service/line_truth.hpp"
#include "service/outline.hpp"
#include "service/service_families.hpp"
#include "service/service_rows.hpp"

namespace kavo_app {
namespace {

// --- inverse

constexpr std::array kInverseIn = {
    Field{"station", Kind::kPoint, "where the direction starts"},
    Field{"point", Kind::kPoint, "where it leads"},
};
constexpr std::array kInverseOut = {
    Field{"azimuth", Kind::kAzimuth, "direction from the station to the point"},
    Field{"zenith", Kind::kZenith, "zenith angle of the sight; none without both elevations"},
    Field{"slopeDist", Kind::kLength, "slope distance; none without both elevations"},
    Field{"horizDist", Kind::kLength, "horizontal distance"},
    Field{"dElev", Kind::kLength, "height difference, point minus station; none likewise"},
};
constexpr std::array kInverseStatus = {
    kComputed,
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false,
              "the points coincide, so there is no direction: give two different points"},
    kPointInvalid,
};

// The export counts a missing elevation as the number that its field holds; nothing that rests on
// such a number is handed on.
Answer Inverse(const Inputs& in) {
  const CoordPt& station = in.Point("station");
  const CoordPt& point = in.Point("point");
  AngDistRec out{};
  const auto status = KavoCogoCoordToAngDist(&station, &point, &out);
  if (!HasElev(station) || !HasElev(point)) {
    return {status, {OrNothing(out.azimuth), {}, {}, out.horizDist, {}}};
  }
  return {status,
          {OrNothing(out.azimuth), OrNothing(out.zenith), out.slopeDist, out.horizDist, out.dElev}};
}

// --- forward

constexpr std::array kForwardIn = {
    Field{"station", Kind::kPoint, "where the direction starts"},
    Field{"azimuth", Kind::kAzimuth, "direction to the point"},
    Field{"horizDist", Kind::kLength, "horizontal distance; negative goes the opposite way"},
    Field{"dElev", Kind::kLength, "height difference", Need::kOrZero},
};
constexpr std::array kForwardStatus = {kComputed, kPointInvalid};

Answer Forward(const Inputs& in) {
  const AngDistRec polar{in.Angle("azimuth"), 0, 0.0, in.Number("horizDist"),
                         in.Number("dElev", 0.0)};
  CoordPt out{};
  const auto status = KavoCogoAngDistToCoord(&in.Point("station"), &polar, &out);
  return {status, {OrNothing(out)}};
}

// --- radiate: forward from a reading

constexpr std::array kRadiateIn = {
    Field{"station", Kind::kPoint, "the instrument's station"},
    kOrient,
    kHa,
    kVa,
    kFace,
    Field{"slopeDist", Kind::kLength, "slope distance", Need::kOneOf, kAboveZero},
    Field{"horizDist", Kind::kLength, "horizontal distance", Need::kOneOf, kAboveZero},
    kInstrumentHeight,
    kTargetHeight,
    kHa2,
    kVa2,
};
constexpr std::array kRadiateRules = {kPairNeedsHa2, kPairNeedsVa};

Answer Radiate(const Inputs& in) {
  const auto [sight, trouble, note] = PointingOf(in);
  const AngDistRec polar{Wrapped(in.Angle("orient", 0) + sight.ha), sight.va, sight.slopeDist,
                         sight.horizDist,
                         sight.heightDiff + in.Number("ih", 0.0) - sight.targetHeight};
  CoordPt out{};
  const auto status = KavoCogoAngDistToCoord(&in.Point("station"), &polar, &out);
  if (!sight.hasHeight) {
    out.flags = static_cast<std::uint16_t>(out.flags & COORD_HAS_NE);
  }
  return {status, {OrNothing(out)}, note, trouble};
}

// --- grade

constexpr std::array kGradeIn = {
    Field{"horizDist", Kind::kLength, "horizontal distance"},
    Field{"dElev", Kind::kLength, "height difference; positive is uphill"},
};
constexpr std::array kGradeOut = {
    Field{"percent", Kind::kPercent, "height per horizontal distance; none when vertical"},
    Field{"ratio", Kind::kRatio, "horizontal distance per unit of height; none when level"},
};
constexpr std::array kGradeStatus = {kComputed};

Answer Grade(const Inputs& in) {
  SlopeRec out{};
  KavoCogoCalcSlopeByDist(in.Number("horizDist"), in.Number("dElev"), &out);
  constexpr double kNoSign = 0.0;  // added to a level or vertical slope's 0, which may be negative
  return {STATUS_OK, {OrNothing(out.percent + kNoSign), OrNothing(out.ratio + kNoSign)}};
}

// --- points and lines

constexpr std::array kFootIn = {
    Field{"line", Kind::kLine, "the line"},
    Field{"point", Kind::kPoint, "the point off it"},
};
constexpr std::array kFootOut = {
    Field{"foot", Kind::kPoint,
          "foot of the perpendicular; its elevation goes by north difference"},
};
constexpr std::array kLineStatus = {kComputed, kLinePointsCoincide, kPointInvalid};

Answer Foot(const Inputs& in) {
  CoordPt out{};
  const auto status = KavoCogoCalcPtLine(&in.Line("line"), &in.Point("point"), &out);
  if (!std::isfinite(out.elev)) {  // a line of constant north has no grade by north difference
    out.flags = COORD_HAS_NE;
  }
  return {status, {OrNothing(out)}};
}

constexpr std::array kOffsetPointIn = {
    Field{"from", Kind::kPoint, "start of the line"},
    Field{"to", Kind::kPoint, "end of the line"},
    Field{"along", Kind::kLength, "distance along the line from its start"},
    Field{"offset", Kind::kLength, "distance across the line; positive to the right"},
};

Answer OffsetPoint(const Inputs& in) {
  CoordPt out{};
  const auto status = KavoCogoOffsetToCoord(&in.Point("from"), &in.Point("to"), in.Number("along"),
                                            in.Number("offset"), &out);
  return {status, {OrNothing(out)}};
}

constexpr std::array kTransformLineIn = {
    Field{"line", Kind::kLine, "the line"},
    Field{"rotation", Kind::kAngle, "turn about its first point, clockwise", Need::kOrZero},
    Field{"offset", Kind::kLength, "shift across the turned line, to the right", Need::kOrZero},
};
constexpr std::array kTransformLineOut = {
    Field{"line", Kind::kLine, "the new line"},
    Field{"start", Kind::kPoint, "its first point"},
    Field{"end", Kind::kPoint, "its second point; none for a line by azimuth"},
    Field{"azimuth", Kind::kAzimuth, "its azimuth"},
};

// Azimuth of a line as a surveyor expects it. The direction that the export writes is taken modulo
// a circle, which its in-place normalisation leaves usable above a full circle.
IntAngle AzimuthOf(const LineDef& line) {
  if (line.mode != LINE_MODE_TWO_POINTS) {
    return Wrapped(line.direction);
  }
  AngDistRec polar{};
  KavoCogoCoordToAngDist(&line.p1, &line.p2, &polar);
  return polar.azimuth;
}

Answer TransformLine(const Inputs& in) {
  const LineDef& line = in.Line("line");
  IntAngle rotation = in.Angle("rotation", 0);
  const bool byPoints = line.mode == LINE_MODE_TWO_POINTS;
  if (!byPoints) {
    // Two circles more keep the new direction above a full circle, where it stays usable.
    rotation = Wrapped(rotation) + 2 * ANGLE_FULL_CIRCLE;
  }
  LineDef out{};
  const auto status = KavoCogoCalcTransLine(&line, rotation, in.Number("offset", 0.0), &out);
  if (status != STATUS_OK) {
    return {status, {{}, {}, {}, {}}};
  }
  out.direction = AzimuthOf(out);
  return {status, {out, out.p1, byPoints ? Value{out.p2} : Value{}, OrNothing(out.direction)}};
}

// --- area

constexpr Limit kThreeOrMore{[](double count) { return count >= 3.0; }, "three corners or more"};
constexpr std::array kAreaIn = {
    Field{"points", Kind::kPoints, "the corners in order", Need::kRequired, kThreeOrMore},
};
constexpr std::array kAreaOut = {
    Field{"area", Kind::kArea, "plane area enclosed"},
};
constexpr std::array kAreaStatus = {kComputed};

Answer Area(const Inputs& in) {
  const auto& points = in.Points("points");
  const auto count = static_cast<std::int16_t>(points.size());
  return {STATUS_OK, {KavoCogoCalcArea(points.data(), count)}};
}

std::string AreaDoubt(const Inputs& in, const Outputs& /*out*/) {
  return OutlineDoubt(in.Points("points"));
}

constexpr std::array kServices = {
    Service{"inverse", "KavoCogoCoordToAngDist", "direction and distances between two points",
            kInverseIn, kInverseOut, kInverseStatus, Inverse},
    Service{"forward", "KavoCogoAngDistToCoord", "point at an azimuth and distance", kForwardIn,
            kPointOut, kForwardStatus, Forward, kTakenAsMeasured},
    Service{"radiate", "KavoCogoAngDistToCoord", "point from a reading at an oriented station",
            kRadiateIn, kPointOut, kForwardStatus, Radiate, kTakenAsMeasured, kKeepsDigits,
            kRadiateRules, DoubtOfPointing},
    Service{"grade", "KavoCogoCalcSlopeByDist", "grade and ratio of a slope", kGradeIn, kGradeOut,
            kGradeStatus, Grade},
    Service{"foot", "KavoCogoCalcPtLine", "foot of the perpendicular from a point to a line",
            kFootIn, kFootOut, kLineStatus, Foot, kHeedsNone, kKeepsDigits, kNoRules, kNoDoubt,
            FootTruth},
    Service{"offset-point", "KavoCogoOffsetToCoord", "point at a chainage and offset of a line",
            kOffsetPointIn, kPointOut, kLineStatus, OffsetPoint},
    Service{"transform-line", "KavoCogoCalcTransLine", "line turned and shifted", kTransformLineIn,
            kTransformLineOut, kLineStatus, TransformLine},
    Service{"area", "KavoCogoCalcArea", "plane area of a polygon", kAreaIn, kAreaOut, kAreaStatus,
            Area, kHeedsNone, kLosesDigits, kNoRules, AreaDoubt},
};

}  // namespace

std::span<const Service> CogoServices() { return kServices; }

}  // namespace kavo_app
