// The services of reference planes, which sights without a reflector meet.
#include <array>

#include "base/geometry.hpp"
#include "host/instrument.hpp"
#include "service/service_families.hpp"
#include "service/service_rows.hpp"

namespace kavo_app {
namespace {

constexpr Field kStation{"station", Kind::kPoint,
                         "the instrument's station; heights need its elevation"};
constexpr Field kHa{"ha", Kind::kAzimuth, "horizontal reading, either face"};
constexpr Field kVa{"va", Kind::kZenith, "zenith reading"};
constexpr StatusRow kOnPlane{KAVO_STATUS(ERR_INDETERMINATE), false,
                             "the instrument stands in the plane: move it off the plane"};
constexpr const char* kLeadsAway = "the sight leads away from the wall: check ha and orient";
constexpr const char* kMissesPlane =
    "the sight does not meet the plane: it is parallel to it, vertical or leads away from it";

constexpr std::array kWallSetIn = {
    Field{"p1", Kind::kPoint, "first point; its elevation is the height reference"},
    Field{"p2", Kind::kPoint, "second point"},
};
constexpr std::array kWallSetOut = {
    Field{"wall", Kind::kFigure, "the vertical plane, for steps of wall-point"},
};
constexpr std::array kWallSetStatus = {
    StatusRow{KAVO_STATUS(STATUS_OK), true, "the plane is set"},
    StatusRow{KAVO_STATUS(WARN_NO_ELEVATION), true,
              "the plane is set; its first point has no elevation"},
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false,
              "the points coincide in plan: give two different points"},
    kPointInvalid,
};

std::int32_t SetWall(const Inputs& in) {
  return KavoREFSet2PtBasePlane(&in.Point("p1"), &in.Point("p2"));
}

Answer WallSet(const Inputs& in) { return {SetWall(in), {FigureOf(in)}}; }

constexpr std::array kWallPointIn = {
    Field{"wall", Kind::kFigure, "the vertical plane"},
    kStation,
    kInstrumentHeight,
    kOrient,
    kHa,
    kVa,
};
constexpr std::array kWallPointOut = {
    Field{"point", Kind::kPoint, "where the sight meets the plane"},
    Field{"along", Kind::kLength, "distance along the plane from its first point"},
    Field{"height", Kind::kLength, "height above its first point; none without elevation"},
};
constexpr std::array kWallPointStatus = {
    kComputed,
    StatusRow{KAVO_STATUS(WARN_NO_ELEVATION), true,
              "computed; the plane's first point has no elevation"},
    kNoBase,
    kOnPlane,
};

Answer WallPoint(const Inputs& in) {
  SetWall(in.Base("wall"));
  CoordPt point{};
  double along = VALUE_INVALID;
  double height = VALUE_INVALID;
  const IntAngle azimuth = Wrapped(in.Angle("ha") + in.Angle("orient", 0));
  const auto status = KavoREFCalc2PtPlane(azimuth, in.Angle("va"), &in.Point("station"),
                                          in.Number("ih", 0.0), &point, &along, &height);
  const bool stationElev = HasElev(in.Point("station"));
  const bool withElev = stationElev && HasElev(in.Base("wall").Point("p1"));
  if (!stationElev) {
    point.flags = COORD_HAS_NE;
  }
  Answer answer{status,
                {OrNothing(point), OrNothing(along), withElev ? OrNothing(height) : Value{}}};
  if (status == STATUS_OK || status == WARN_NO_ELEVATION) {
    // The export draws the sight on backwards, and mirrors its height.
    const bool behind =
        IsBehind(in.Point("station"), Referred(Instrument(), azimuth), in.Angle("va"), point);
    answer.trouble = along == VALUE_INVALID ? kMissesPlane : behind ? kLeadsAway : "";
  }
  return answer;
}

constexpr std::array kPlaneSetIn = {
    Field{"p1", Kind::kPoint, "first point, the origin; with elevation"},
    Field{"p2", Kind::kPoint, "second point, the direction along; with elevation"},
    Field{"p3", Kind::kPoint, "third point, with elevation; the plane is vertical when absent",
          Need::kOptional},
};
constexpr std::array kPlaneSetOut = {
    Field{"plane", Kind::kFigure, "the plane, for steps of plane-point"},
};
constexpr std::array kPlaneSetStatus = {
    StatusRow{KAVO_STATUS(STATUS_OK), true, "the plane is set"},
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false,
              "two of the points coincide: give different ones"},
    StatusRow{KAVO_STATUS(ERR_INDETERMINATE), false, "the points lie in one line: give one off it"},
    kPointInvalid,
};

std::int32_t SetPlane(const Inputs& in) {
  return KavoREFSet3PtBasePlane(&in.Point("p1"), &in.Point("p2"),
                                in.Has("p3") ? &in.Point("p3") : nullptr);
}

Answer PlaneSet(const Inputs& in) { return {SetPlane(in), {FigureOf(in)}}; }

constexpr std::array kPlanePointIn = {
    Field{"plane", Kind::kFigure, "the plane"}, kStation, kInstrumentHeight, kOrient, kHa, kVa,
};
constexpr std::array kPlanePointOut = {
    Field{"point", Kind::kPoint, "where the sight meets the plane"},
    Field{"along", Kind::kLength, "in the plane, from its first point towards the second"},
    Field{"across", Kind::kLength,
          "in the plane, across that; positive to the right as seen from the instrument"},
};
constexpr std::array kPlanePointStatus = {kComputed, kNoBase, kOnPlane, kPointInvalid};

Answer PlanePoint(const Inputs& in) {
  if (!HasElev(in.Point("station"))) {
    return {ERR_POINT_INVALID, {{}, {}, {}}};
  }
  SetPlane(in.Base("plane"));
  CoordPt point{};
  double along = VALUE_INVALID;
  double across = VALUE_INVALID;
  const auto status =
      KavoREFCalc3PtPlane(Wrapped(in.Angle("ha") + in.Angle("orient", 0)), in.Angle("va"),
                          &in.Point("station"), in.Number("ih", 0.0), &point, &along, &across);
  Answer answer{status, {OrNothing(point), OrNothing(along), OrNothing(across)}};
  if (status == STATUS_OK && along == VALUE_INVALID) {
    answer.trouble = kMissesPlane;
  }
  return answer;
}

constexpr std::array kServices = {
    Service{"wall-set", "KavoREFSet2PtBasePlane", "vertical plane through two points", kWallSetIn,
            kWallSetOut, kWallSetStatus, WallSet},
    Service{"wall-point", "KavoREFCalc2PtPlane", "sight intersected with a vertical plane",
            kWallPointIn, kWallPointOut, kWallPointStatus, WallPoint, kTakenAsMeasured},
    Service{"plane-set", "KavoREFSet3PtBasePlane", "plane through three points, or vertical by two",
            kPlaneSetIn, kPlaneSetOut, kPlaneSetStatus, PlaneSet},
    Service{"plane-point", "KavoREFCalc3PtPlane", "sight intersected with a plane", kPlanePointIn,
            kPlanePointOut, kPlanePointStatus, PlanePoint, kTakenAsMeasured},
};

}  // namespace

std::span<const Service> PlaneServices() { return kServices; }

}  // namespace kavo_app
