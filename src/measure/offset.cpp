// Offset measurements: points that the reflector cannot occupy, computed from points that it can,
// and turned into readings by the host's model of an observation.
#include <cmath>

#include "core/direction.hpp"
#include "core/host.hpp"
#include "core/int_angle.hpp"
#include "core/line.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"

namespace {

constexpr std::uint16_t kPositionAndElev = COORD_HAS_NE | COORD_HAS_ELEV;

// Hands the computed point to the host, then reports the host's readings, on the face that the
// instrument is on, and the host's point in its place. The host's own status comes back.
std::int32_t Report(double hookValue, AngleDistObs& obsOut, CoordPt& ptOut) noexcept {
  kavo::ObsReply reply{};
  const std::int32_t status =
      kavo::CalcObsFromPoint(ptOut.north, ptOut.east, ptOut.elev, hookValue, reply);
  const bool face2 = (kavo::QueryFaceSetting() & 0xFFFF) == 1;
  obsOut.ha = face2 ? kavo::TurnHalfCircle(reply.ha) : reply.ha;
  obsOut.va = face2 ? kavo::WrapSub(ANGLE_FULL_CIRCLE, reply.va) : reply.va;
  obsOut.dist = reply.dist;
  ptOut.north = reply.north;
  ptOut.east = reply.east;
  ptOut.elev = reply.elev;
  return status;
}

// A direction in plan as a vector of length 1.
struct UnitVector {
  double north;
  double east;
};

// False, with `unit` untouched, when the length from one point to the other is 0.
bool DirectionInPlan(const CoordPt& from, const CoordPt& to, UnitVector& unit) noexcept {
  const double dNorth = to.north - from.north;
  const double dEast = to.east - from.east;
  const double length = std::sqrt(kavo::Square(dEast) + kavo::Square(dNorth));
  if (length == 0.0) {
    return false;
  }
  const double perLength = 1.0 / length;
  unit.north = perLength * dNorth;
  unit.east = perLength * dEast;
  return true;
}

// The point at a distance from `origin` along a direction; metres.
void WriteAlong(const CoordPt& origin, const UnitVector& unit, double along, double elev,
                CoordPt& out) noexcept {
  kavo::WritePoint(out, along * unit.north + origin.north, along * unit.east + origin.east, elev,
                   kPositionAndElev);
}

// A direction in space as a vector of length 1, and the square of its part in plan.
struct SpaceVector {
  double north;
  double east;
  double elev;
  double planSquare;
};

SpaceVector DirectionInSpace(const CoordPt& from, const CoordPt& to) noexcept {
  const double dNorth = to.north - from.north;
  const double dEast = to.east - from.east;
  const double dElev = to.elev - from.elev;
  const double length =
      std::sqrt((kavo::Square(dElev) + kavo::Square(dEast)) + kavo::Square(dNorth));
  const double north = dNorth / length;
  const double east = dEast / length;
  return {north, east, dElev / length, kavo::Square(east) + kavo::Square(north)};
}

// Distance in space from b, along the line a-b, to the place whose plan position is `pierced`;
// negative on the side of a. The side is told by both coordinates (meant so): beyond b neither may
// run against the line.
double DistanceBeyondB(const CoordPt& a, const CoordPt& b, const CoordPt& pierced,
                       double planSquare) noexcept {
  const double dNorth = pierced.north - b.north;
  const double dEast = pierced.east - b.east;
  const double distance =
      std::sqrt(kavo::Square(dEast) + kavo::Square(dNorth)) / std::sqrt(planSquare);
  const bool beyond = (b.north - a.north) * dNorth >= 0.0 && (b.east - a.east) * dEast >= 0.0;
  return beyond ? distance : -distance;
}

// Where a sighting crosses the vertical plane through a and b, which becomes the library's.
std::int32_t CrossLinePlane(const CoordPt& a, const CoordPt& b, IntAngle ha, IntAngle va,
                            const CoordPt& station, double instrumentHeight,
                            CoordPt& pierced) noexcept {
  const std::int32_t setting = KavoREFSet2PtBasePlane(&a, &b);
  // GCOVR_EXCL_START: the caller has refused whatever the plane would refuse.
  if (setting != STATUS_OK && setting != WARN_NO_ELEVATION) {
    return setting;
  }
  // GCOVR_EXCL_STOP
  double along = 0.0;
  double height = 0.0;
  const std::int32_t status =
      KavoREFCalc2PtPlane(ha, va, &station, instrumentHeight, &pierced, &along, &height);
  // GCOVR_EXCL_BR_START: the plane has just been set, so there is a base.
  return status == ERR_NO_BASE || status == ERR_INDETERMINATE ? ERR_INDETERMINATE : STATUS_OK;
  // GCOVR_EXCL_BR_STOP
}

bool IsVertical(IntAngle zenith) noexcept { return zenith == 0 || zenith == ANGLE_HALF_CIRCLE; }

// Direction of a sighting on face 1; its zenith angle is that of the reading, wrapped.
IntAngle ReduceToFace1(IntAngle ha, IntAngle zenith) noexcept {
  const IntAngle azimuth = kavo::ApplyAzimuthReference(ha);
  return zenith > ANGLE_HALF_CIRCLE ? kavo::TurnHalfCircle(azimuth) : azimuth;
}

// The angle brought into [0, full circle), from however far below or above.
IntAngle IntoCircle(IntAngle a) noexcept {
  const IntAngle remainder = a % ANGLE_FULL_CIRCLE;
  return remainder < 0 ? kavo::WrapAdd(remainder, ANGLE_FULL_CIRCLE) : remainder;
}

// True when the two edges, both in [0, full circle), are one direction or opposite ones.
bool SameOrOpposite(IntAngle edge2, IntAngle edge3) noexcept {
  return kavo::WrapSub(edge2, edge3) % ANGLE_HALF_CIRCLE == 0;
}

// A round object as seen from the station: the direction to its left edge, radians, the distance to
// the point of tangency there and the radius, metres.
struct RoundObject {
  double left;
  double tangent;
  double radius;
};

// Finds the circle that touches both edges and is met at `dist` in the direction `ha`. False when
// that direction passes the object by.
bool FitCircle(IntAngle ha, IntAngle edge2, IntAngle edge3, double dist,
               RoundObject& object) noexcept {
  const double surface = kavo::IntAngleToRadUnwrapped(ha);
  const double radians2 = kavo::IntAngleToRadUnwrapped(edge2);
  const double radians3 = kavo::IntAngleToRadUnwrapped(edge3);
  const bool exchanged = std::sin(radians3 - radians2) < 0.0;
  const double left = exchanged ? radians3 : radians2;
  const double right = exchanged ? radians2 : radians3;
  const double sineLeft = std::sin(surface - left);
  const double sineRight = std::sin(right - surface);
  const double width = right - left;
  const double sineWidth = std::sin(width);
  const double q = kavo::Square(sineRight + sineLeft) - kavo::Square(sineWidth);
  if (q < 0.0) {
    return false;
  }
  object.left = left;
  object.tangent = (std::sqrt(q) + sineRight + sineLeft) * ((1.0 / sineWidth) * dist);
  object.radius = ((1.0 - std::cos(width)) * (1.0 / sineWidth)) * object.tangent;
  return true;
}

}  // namespace

std::int32_t KavoCalcOfsCorner3Pt(const CoordPt* a, const CoordPt* b, const CoordPt* p,
                                  double /*unused*/, AngleDistObs* obsOut, CoordPt* ptOut,
                                  double hookValue) {
  // The flags of the wall's own two points are not looked at (meant so).
  if (!kavo::HasNEElev(*p)) {
    return ERR_POINT_INVALID;
  }
  UnitVector wall{};
  if (!DirectionInPlan(*a, *b, wall)) {
    return ERR_NO_DIRECTION;
  }
  const double along = (p->east - a->east) * wall.east + (p->north - a->north) * wall.north;
  WriteAlong(*a, wall, along, p->elev, *ptOut);
  Report(hookValue, *obsOut, *ptOut);
  return STATUS_OK;
}

std::int32_t KavoCalcOfsCorner4Pt(const CoordPt* a1, const CoordPt* b1, const CoordPt* a2,
                                  const CoordPt* b2, double /*unused*/, AngleDistObs* obsOut,
                                  CoordPt* ptOut, double hookValue) {
  // First, and into the caller's point (meant so): two points that coincide are thus indeterminate
  // too, and only a length lost to underflow is left for the tests below.
  if (kavo::IntersectLines2Pt({a1->north, a1->east, b1->north, b1->east},
                              {a2->north, a2->east, b2->north, b2->east}, *ptOut) != STATUS_OK) {
    return ERR_INDETERMINATE;
  }
  if (!kavo::HasNEElev(*b2)) {
    return ERR_POINT_INVALID;
  }
  UnitVector u1{};
  UnitVector u2{};
  if (!DirectionInPlan(*a1, *b1, u1) || !DirectionInPlan(*a2, *b2, u2)) {
    return ERR_NO_DIRECTION;
  }
  const double along = ((a2->north - a1->north) * u2.east - (a2->east - a1->east) * u2.north) /
                       (u2.east * u1.north - u2.north * u1.east);
  WriteAlong(*a1, u1, along, b2->elev, *ptOut);
  Report(hookValue, *obsOut, *ptOut);
  return STATUS_OK;
}

std::int32_t KavoCalcOfsLineHA(const CoordPt* a, const CoordPt* b, IntAngle ha, IntAngle va,
                               const CoordPt* station, double instrumentHeight,
                               AngleDistObs* obsOut, CoordPt* ptOut, double hookValue) {
  if (!kavo::HasNE(*a) || !kavo::HasNE(*b)) {
    return ERR_POINT_INVALID;
  }
  if (kavo::SamePlace(*a, *b)) {
    return ERR_NO_DIRECTION;
  }
  if (!kavo::HasElev(*b)) {
    return ERR_POINT_INVALID;
  }
  const SpaceVector line = DirectionInSpace(*a, *b);
  if (line.planSquare == 0.0) {
    return ERR_INDETERMINATE;
  }
  CoordPt pierced{};
  if (const auto status = CrossLinePlane(*a, *b, ha, va, *station, instrumentHeight, pierced);
      status != STATUS_OK) {
    return status;
  }
  // A sighting that misses the plane goes on with the plane's VALUE_INVALID (meant so).
  const double s = DistanceBeyondB(*a, *b, pierced, line.planSquare);
  kavo::WritePoint(*ptOut, s * line.north + b->north, s * line.east + b->east,
                   s * line.elev + b->elev, kPositionAndElev);
  return Report(hookValue, *obsOut, *ptOut);
}

std::int32_t KavoCalcOfsCircle(const AngleDistObs* surface, double hookValue, IntAngle ha2,
                               IntAngle va2, IntAngle ha3, IntAngle va3, const CoordPt* station,
                               double /*unused*/, AngleDistObs* obsOut, CoordPt* ptOut,
                               double* radius) {
  const IntAngle z1 = kavo::WrapCircle(surface->va);
  const IntAngle z2 = kavo::WrapCircle(va2);
  const IntAngle z3 = kavo::WrapCircle(va3);
  if (IsVertical(z1) || IsVertical(z2) || IsVertical(z3)) {
    return ERR_POINT_INVALID;
  }
  const IntAngle edge2 = IntoCircle(ReduceToFace1(ha2, z2));
  const IntAngle edge3 = IntoCircle(ReduceToFace1(ha3, z3));
  if (SameOrOpposite(edge2, edge3)) {
    return ERR_INDETERMINATE;
  }
  RoundObject object{};
  if (!FitCircle(ReduceToFace1(surface->ha, z1), edge2, edge3, surface->dist, object)) {
    return ERR_POINT_INVALID;
  }
  *radius = object.radius;
  const double cosine = std::cos(object.left);
  const double sine = std::sin(object.left);
  // The elevation that the caller left in the point goes to the host as it is (meant so).
  ptOut->north = cosine * object.tangent + station->north - sine * object.radius;
  ptOut->east = cosine * object.radius + sine * object.tangent + station->east;
  ptOut->flags = kPositionAndElev;
  Report(hookValue, *obsOut, *ptOut);
  return STATUS_OK;
}
