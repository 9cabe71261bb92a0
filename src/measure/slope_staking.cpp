// Slope staking: a measured point against a design slope given in cross-section.
#include "core/direction.hpp"
#include "kavostdlib.h"

namespace {

// The design slope through two points of a cross-section; none when the library is loaded.
struct DesignSlope {
  bool set;
  bool leftSide;      // offsets are negative
  std::int32_t kind;  // STATUS_OK, WARN_SLOPE_VERTICAL or WARN_SLOPE_LEVEL
  double elev1;       // metres, as all below
  double offset1;
  double elev2;
  double offset2;
};

DesignSlope slope;

std::int32_t KindOfSlope(double elev1, double offset1, double elev2, double offset2) noexcept {
  if (elev1 == elev2) {
    return WARN_SLOPE_LEVEL;
  }
  return offset1 != offset2 ? STATUS_OK : WARN_SLOPE_VERTICAL;
}

// Elevation above the slope at a signed offset; not for a vertical slope.
double HeightAboveSlope(double elev, double offset) noexcept {
  return (elev - ((slope.elev2 - slope.elev1) * (offset - slope.offset1)) /
                     (slope.offset2 - slope.offset1)) -
         slope.elev1;
}

// How far the point lies outside the slope at the point's elevation; not for a level slope. To the
// left offsets grow inwards, so the difference is taken the other way round.
double DistanceOutside(double elev, double offset) noexcept {
  const double inside =
      ((slope.offset2 - slope.offset1) / (slope.elev2 - slope.elev1)) * (elev - slope.elev1) -
      offset + slope.offset1;
  return slope.leftSide ? inside : -inside;
}

}  // namespace

std::int32_t KavoBRSetSlope(double elev1, double offset1, double elev2, double offset2) {
  slope.set = false;
  if (elev1 == elev2 && offset1 == offset2) {
    return ERR_REFUSED;
  }
  if ((offset1 < 0.0 && offset2 > 0.0) || (offset2 < 0.0 && offset1 > 0.0)) {
    return ERR_REFUSED;
  }
  slope.leftSide = !(offset1 >= 0.0 && offset2 >= 0.0);
  slope.elev1 = elev1;
  slope.offset1 = offset1;
  slope.elev2 = elev2;
  slope.offset2 = offset2;
  slope.kind = KindOfSlope(elev1, offset1, elev2, offset2);
  slope.set = true;
  return slope.kind;
}

std::int32_t KavoBRCalc(const CoordPt* reference, const CoordPt* point, SlopeStakeResult* out) {
  if (!slope.set) {
    return ERR_NO_BASE;
  }
  if (!kavo::HasNE(*reference) || !kavo::HasNEElev(*point)) {
    return ERR_POINT_INVALID;
  }
  if (kavo::SamePlace(*reference, *point)) {
    return ERR_NO_DIRECTION;
  }
  double slopeDist = 0.0;
  double dElev = 0.0;
  kavo::DistancesBetween(slopeDist, out->horizDist, dElev, *reference, *point);
  const double offset = slope.leftSide ? -out->horizDist : out->horizDist;
  out->vertDiff =
      slope.kind != WARN_SLOPE_VERTICAL ? HeightAboveSlope(point->elev, offset) : VALUE_INVALID;
  out->horizDiff =
      slope.kind != WARN_SLOPE_LEVEL ? DistanceOutside(point->elev, offset) : VALUE_INVALID;
  return slope.kind;
}
