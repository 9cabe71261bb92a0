// Remote elevation: the height of a point that cannot carry a reflector, above one that does.
#include <cmath>

#include "core/int_angle.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"

namespace {

// The base that remote sights are measured against; none when the library is loaded.
struct RemoteElevationBase {
  bool set;
  IntAngle ha;       // horizontal reading, on face 1
  double height;     // of the reflector above the instrument's horizon, metres
  double horizDist;  // metres
};

RemoteElevationBase remoteBase;

// A sight as it reads on face 1.
struct Sight {
  IntAngle ha;
  IntAngle zenith;
};

// A zenith reading of exactly half a circle counts as face 2 here; a horizontal reading of face 1
// stays as it is, beyond one circle too.
Sight ReduceToFace1(IntAngle ha, IntAngle zenith) noexcept {
  const IntAngle wrapped = kavo::WrapCircle(zenith);
  if (wrapped >= ANGLE_HALF_CIRCLE) {
    return {kavo::TurnHalfCircle(ha), kavo::WrapSub(ANGLE_FULL_CIRCLE, wrapped)};
  }
  return {ha, wrapped};
}

// Rounded to 32 units, 2 arc-seconds: the steps in which this family compares angles.
constexpr IntAngle RoundTo32(IntAngle a) noexcept { return kavo::WrapAdd(a, 15) & ~31; }

bool IsVertical(IntAngle zenith) noexcept { return RoundTo32(zenith) % ANGLE_HALF_CIRCLE == 0; }

// Less than a quarter circle to either side of the base sight, in steps of 32 units.
bool IsBesideBase(IntAngle turned) noexcept {
  const IntAngle folded =
      turned <= ANGLE_HALF_CIRCLE ? turned : kavo::WrapSub(ANGLE_FULL_CIRCLE, turned);
  return RoundTo32(folded) < ANGLE_QUARTER_CIRCLE;
}

// Height of a sight above the instrument's horizon at the base's distance, metres.
double HeightAtBase(IntAngle zenith) noexcept {
  return remoteBase.horizDist *
         std::tan(kavo::IntAngleToRad(kavo::WrapSub(ANGLE_QUARTER_CIRCLE, zenith)));
}

}  // namespace

std::int32_t KavoREMSetBase(const AngDistRec* base) {
  remoteBase.set = false;
  const Sight sight = ReduceToFace1(base->azimuth, base->zenith);
  remoteBase.ha = sight.ha;
  if (IsVertical(sight.zenith)) {
    return ERR_SIGHT_VERTICAL;
  }
  remoteBase.horizDist = base->slopeDist * std::sin(kavo::IntAngleToRad(sight.zenith));
  remoteBase.height = HeightAtBase(sight.zenith);
  remoteBase.set = true;
  return STATUS_OK;
}

std::int32_t KavoREMCalc(IntAngle ha, IntAngle zenith, CoordPt* out) {
  out->east = 0.0;
  out->flags = COORD_HAS_NE | COORD_HAS_ELEV;
  if (!remoteBase.set) {
    out->north = VALUE_INVALID;
    out->elev = VALUE_INVALID;
    return ERR_NO_BASE;
  }
  const Sight sight = ReduceToFace1(ha, zenith);
  if (IsVertical(sight.zenith)) {
    out->elev = VALUE_INVALID;  // north stays what the caller left there (meant so)
    return ERR_SIGHT_VERTICAL;
  }
  out->elev = HeightAtBase(sight.zenith) - remoteBase.height;
  const IntAngle turned = kavo::WrapCircle(kavo::WrapSub(sight.ha, remoteBase.ha));
  if (!IsBesideBase(turned)) {
    out->north = VALUE_INVALID;
    return ERR_SIGHT_OFF_BASE;
  }
  // Not folded: the tangent of the fourth quadrant is negative, so the sign tells the side.
  out->north = remoteBase.horizDist * std::tan(kavo::IntAngleToRad(turned));
  return STATUS_OK;
}
