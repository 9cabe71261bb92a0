// Three-point plane: sights without distance, intersected with a plane in any attitude.
#include <cmath>

#include "core/direction.hpp"
#include "core/int_angle.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"

namespace {

// A cross product, a distance from the plane, a cosine: nothing, when smaller than this, 5e-7.
constexpr double kNothing = 0x1.0c6f7a0b5ed8dp-21;

// A position or a vector in space, metres; or a unit vector.
struct Vector {
  double north;
  double east;
  double elev;
};

// Signed distance from a plane: unit . position + constant, metres.
struct PlaneForm {
  Vector unit;
  double constant;
};

// The plane, one per loaded library; none at load. The three forms are zero at the base.
struct RefPlane3PtBase {
  bool isSet;
  Vector base;       // the first point
  Vector a;          // from the first to the second point
  PlaneForm normal;  // unit normal; faces the instrument once a sight was measured
  PlaneForm across;  // unit vector in the plane, across a
  PlaneForm along;   // unit vector in the plane, along a
};

constinit RefPlane3PtBase plane{};

Vector Position(const CoordPt& p) noexcept { return {p.north, p.east, p.elev}; }

Vector Minus(const Vector& v, const Vector& w) noexcept {
  return {v.north - w.north, v.east - w.east, v.elev - w.elev};
}

Vector Times(const Vector& v, double factor) noexcept {
  return {v.north * factor, v.east * factor, v.elev * factor};
}

bool Same(const Vector& v, const Vector& w) noexcept {
  return v.north == w.north && v.east == w.east && v.elev == w.elev;
}

// Elevation first, then east, then north: the order shows in the last digits.
double Dot(const Vector& v, const Vector& w) noexcept {
  return v.elev * w.elev + v.east * w.east + v.north * w.north;
}

Vector Cross(const Vector& v, const Vector& w) noexcept {
  return {v.east * w.elev - v.elev * w.east, v.elev * w.north - v.north * w.elev,
          v.north * w.east - v.east * w.north};
}

double Evaluate(const PlaneForm& form, const Vector& x) noexcept {
  return Dot(form.unit, x) + form.constant;
}

// The form of a direction, zero at a position.
PlaneForm FormThrough(const Vector& unit, const Vector& zero) noexcept {
  return {unit, -Dot(unit, zero)};
}

// The same for a vector of any length; false when it is too short to have a direction.
bool MakeForm(const Vector& v, const Vector& zero, PlaneForm& form) noexcept {
  using kavo::Square;
  const double length = std::sqrt(Square(v.elev) + Square(v.east) + Square(v.north));
  if (length < kNothing) {
    return false;
  }
  form = FormThrough(Times(v, 1.0 / length), zero);
  return true;
}

// Turns the form about; it stays zero at the base.
void Turn(PlaneForm& form) noexcept { form = FormThrough(Times(form.unit, -1.0), plane.base); }

// Turns the plane to face an instrument; false when the instrument lies in the plane. It stays
// turned for the sights that follow (meant so); the axis along it stays as it was set.
bool FaceInstrument(const Vector& instrument) noexcept {
  const double side = Evaluate(plane.normal, instrument);
  if (std::fabs(side) < kNothing) {
    return false;
  }
  if (side < 0.0) {
    Turn(plane.normal);
    // As long as it was when the plane was set, so never too short.
    MakeForm(Cross(plane.normal.unit, plane.a), plane.base, plane.across);
  }
  return true;
}

// Unit vector of a sight; readings of face 2 are reduced to face 1.
Vector SightDirection(IntAngle ha, IntAngle va) noexcept {
  IntAngle azimuth = kavo::ApplyAzimuthReference(ha);
  IntAngle zenith = kavo::WrapCircle(va);
  if (zenith >= ANGLE_HALF_CIRCLE) {
    zenith = ANGLE_FULL_CIRCLE - zenith;
    azimuth = kavo::TurnHalfCircle(azimuth);
  }
  const double zenithRad = kavo::IntAngleToRad(zenith);
  const double azimuthRad = kavo::IntAngleToRad(azimuth);
  return {std::sin(zenithRad) * std::cos(azimuthRad), std::sin(zenithRad) * std::sin(azimuthRad),
          std::cos(zenithRad)};
}

// Where a sight meets the plane that faces it; false when it runs along the plane or away from it.
bool Pierce(const Vector& instrument, const Vector& sight, Vector& pierce) noexcept {
  const Vector& n = plane.normal.unit;
  // Not Dot: summed in an order of its own.
  const double approach = n.east * sight.east + n.elev * sight.elev + n.north * sight.north;
  if (approach > -kNothing) {
    return false;
  }
  const double dist = Evaluate(plane.normal, instrument) / -approach;
  pierce = {instrument.north + dist * sight.north, instrument.east + dist * sight.east,
            instrument.elev + dist * sight.elev};
  return true;
}

constexpr bool HasAll(const CoordPt& p) noexcept { return kavo::HasNE(p) && kavo::HasElev(p); }

}  // namespace

std::int32_t KavoREFSet3PtBasePlane(const CoordPt* p1, const CoordPt* p2, const CoordPt* p3) {
  plane.isSet = false;
  if (!HasAll(*p1) || !HasAll(*p2) || (p3 != nullptr && !HasAll(*p3))) {
    return ERR_POINT_INVALID;
  }
  const Vector first = Position(*p1);
  const Vector second = Position(*p2);
  const Vector third =
      p3 != nullptr ? Position(*p3) : Vector{second.north, second.east, second.elev + 1.0};
  if (Same(first, second) || Same(second, third) || Same(third, first)) {
    return ERR_NO_DIRECTION;
  }
  plane.base = first;
  plane.a = Minus(second, first);
  if (!MakeForm(Cross(plane.a, Minus(third, second)), first, plane.normal) ||
      !MakeForm(Cross(plane.normal.unit, plane.a), first, plane.across) ||
      !MakeForm(Cross(plane.across.unit, plane.normal.unit), first, plane.along)) {
    return ERR_INDETERMINATE;
  }
  // Only rounding could turn the axis (meant so).
  // GCOVR_EXCL_START: and there is none, as the constant was summed in the same order.
  if (Evaluate(plane.along, first) < 0.0) {
    Turn(plane.along);
  }
  // GCOVR_EXCL_STOP
  plane.isSet = true;
  return STATUS_OK;
}

std::int32_t KavoREFCalc3PtPlane(IntAngle ha, IntAngle va, const CoordPt* station,
                                 double instrumentHeight, CoordPt* result, double* alongPlane,
                                 double* acrossPlane) {
  const Vector instrument = {station->north, station->east, station->elev + instrumentHeight};
  *alongPlane = VALUE_INVALID;
  *acrossPlane = VALUE_INVALID;
  kavo::WritePoint(*result, VALUE_INVALID, VALUE_INVALID, VALUE_INVALID,
                   COORD_HAS_NE | COORD_HAS_ELEV);
  if (!plane.isSet) {
    return ERR_NO_BASE;
  }
  if (!FaceInstrument(instrument)) {
    return ERR_INDETERMINATE;
  }
  Vector pierce{};
  if (!Pierce(instrument, SightDirection(ha, va), pierce)) {
    return STATUS_OK;  // no error, and no point (meant so)
  }
  kavo::WritePoint(*result, pierce.north, pierce.east, pierce.elev, COORD_HAS_NE | COORD_HAS_ELEV);
  *alongPlane = Evaluate(plane.along, pierce);
  *acrossPlane = Evaluate(plane.across, pierce);
  return STATUS_OK;
}
