#include "station/resect_candidates.hpp"

#include <cmath>
#include <cstddef>

#include "core/numeric.hpp"

namespace kavo {
namespace {

// A position in the frame of the instrument: ahead at reading 0, and to the right of that.
struct LocalPos {
  double ahead;
  double right;
};

LocalPos LocalAt(double hz, double horizDist) noexcept {
  return {horizDist * std::cos(hz), horizDist * std::sin(hz)};
}

// The instrument's frame turned into the direction whose cosine and sine stand in proportion to `a`
// and `b`, and shifted so that the local position comes to lie on the point. False when a and b are
// nothing.
bool Pin(double a, double b, const LocalPos& local, double north, double east,
         PlaneFix& fix) noexcept {
  const double length = std::hypot(a, b);
  if (!(length >= kNegligible)) {
    return false;
  }
  const double cosW = a / length;
  const double sinW = b / length;
  fix = {north - (cosW * local.ahead - sinW * local.right),
         east - (sinW * local.ahead + cosW * local.right), cosW, sinW};
  return true;
}

// Means over the sights with direction and distance.
struct MeanSight {
  double count;
  LocalPos local;
  double north;
  double east;
};

MeanSight MeanOfMeasured(const Sights& sights) noexcept {
  MeanSight sum{};
  for (const MultiResectObs& rec : sights.recs) {
    if (sights.HasBoth(rec)) {
      const LocalPos local = LocalAt(rec.hz, rec.horizDist);
      sum.count += 1.0;
      sum.local.ahead += local.ahead;
      sum.local.right += local.right;
      sum.north += sights.North(rec);
      sum.east += sights.East(rec);
    }
  }
  const double n = sum.count;
  return {n, {sum.local.ahead / n, sum.local.right / n}, sum.north / n, sum.east / n};
}

// The condition that the ray of a sight goes through its point, z (a, b) + t (p, q) = 0, is linear
// in (a, b) = (cos w, sin w) and in the station turned into the instrument's frame,
// p = a north + b east and q = a east - b north.
struct RayCondition {
  double z1;
  double z2;
  double t1;
  double t2;
};

RayCondition ConditionOf(const Sights& sights, const MultiResectObs& rec) noexcept {
  const double c = std::cos(rec.hz);
  const double s = std::sin(rec.hz);
  const double n = sights.North(rec);
  const double e = sights.East(rec);
  return {c * e - s * n, -(s * e + c * n), s, -c};
}

// K t is what a station takes up of z; spread is the sum of z squared.
struct Elimination {
  double k11;
  double k12;
  double k21;
  double k22;
  double spread;
};

// K = (sum z t^T) T^-1 with T = sum t t^T. False when the rays are parallel.
bool EliminateStation(const Sights& sights, Elimination& out) noexcept {
  double t11 = 0.0;
  double t12 = 0.0;
  double t22 = 0.0;
  Elimination zt{};
  for (const MultiResectObs& rec : sights.recs) {
    if (HasDirection(rec)) {
      const RayCondition r = ConditionOf(sights, rec);
      t11 += r.t1 * r.t1;
      t12 += r.t1 * r.t2;
      t22 += r.t2 * r.t2;
      zt.k11 += r.z1 * r.t1;
      zt.k12 += r.z1 * r.t2;
      zt.k21 += r.z2 * r.t1;
      zt.k22 += r.z2 * r.t2;
      zt.spread += r.z1 * r.z1 + r.z2 * r.z2;
    }
  }
  const double det = t11 * t22 - t12 * t12;
  if (!(Square(det / Square(t11 + t22)) >= kNegligible)) {
    return false;
  }
  out = {(zt.k11 * t22 - zt.k12 * t12) / det, (zt.k12 * t11 - zt.k11 * t12) / det,
         (zt.k21 * t22 - zt.k22 * t12) / det, (zt.k22 * t11 - zt.k21 * t12) / det, zt.spread};
  return true;
}

// The (a, b) that leaves the least sum of squares of y = z - K t, which this form gets without
// cancellation: the minor axis of M = sum y y^T, in one of its two senses. False when M has no
// axes, as for a station on one circle with all the points.
bool LeastAxis(const Sights& sights, const Elimination& k, double& a, double& b) noexcept {
  double m11 = 0.0;
  double m12 = 0.0;
  double m22 = 0.0;
  for (const MultiResectObs& rec : sights.recs) {
    if (HasDirection(rec)) {
      const RayCondition r = ConditionOf(sights, rec);
      const double y1 = r.z1 - (k.k11 * r.t1 + k.k12 * r.t2);
      const double y2 = r.z2 - (k.k21 * r.t1 + k.k22 * r.t2);
      m11 += y1 * y1;
      m12 += y1 * y2;
      m22 += y2 * y2;
    }
  }
  if (!(Square(std::hypot(m11 - m22, 2.0 * m12) / k.spread) >= kNegligible)) {
    return false;
  }
  const double majorAxis = 0.5 * std::atan2(2.0 * m12, m11 - m22);
  a = -std::sin(majorAxis);
  b = std::cos(majorAxis);
  return true;
}

// True when the rays run away from their points rather than towards them.
bool LooksBackwards(const Sights& sights, const PlaneFix& fix) noexcept {
  double sumOfCosines = 0.0;
  for (const MultiResectObs& rec : sights.recs) {
    if (HasDirection(rec)) {
      const LocalPos ray = LocalAt(rec.hz, 1.0);
      const double dNorth = sights.North(rec) - fix.north;
      const double dEast = sights.East(rec) - fix.east;
      sumOfCosines += ((fix.cosW * ray.ahead - fix.sinW * ray.right) * dNorth +
                       (fix.sinW * ray.ahead + fix.cosW * ray.right) * dEast) /
                      std::hypot(dNorth, dEast);
    }
  }
  return sumOfCosines < 0.0;
}

double PointDistance(const MultiResectObs& a, const MultiResectObs& b) noexcept {
  return std::hypot(b.north - a.north, b.east - a.east);
}

// Null when no sight has a direction and a distance.
const MultiResectObs* SightOfShortestDistance(const Sights& sights) noexcept {
  const MultiResectObs* shortest = nullptr;
  for (const MultiResectObs& rec : sights.recs) {
    if (sights.HasBoth(rec) && (shortest == nullptr || rec.horizDist < shortest->horizDist)) {
      shortest = &rec;
    }
  }
  return shortest;
}

const MultiResectObs& SightFarthestFrom(const MultiResectObs& from, const Sights& sights) noexcept {
  const MultiResectObs* farthest = &from;
  for (const MultiResectObs& rec : sights.recs) {
    if (HasDirection(rec) && PointDistance(from, rec) > PointDistance(from, *farthest)) {
      farthest = &rec;
    }
  }
  return *farthest;
}

// The triangle of the station and the points of two sights, laid along the known side and pinned at
// A; `toB` is the distance from the station to B. False when there is no such triangle.
bool LayTriangle(const Sights& sights, const MultiResectObs& a, const MultiResectObs& b, double toB,
                 PlaneFix& fix) noexcept {
  if (!(toB > 0.0)) {
    return false;
  }
  const LocalPos localA = LocalAt(a.hz, a.horizDist);
  const LocalPos localB = LocalAt(b.hz, toB);
  const double u = localB.ahead - localA.ahead;
  const double v = localB.right - localA.right;
  const double n = b.north - a.north;
  const double e = b.east - a.east;
  return Pin(u * n + v * e, u * e - v * n, localA, sights.North(a), sights.East(a), fix);
}

}  // namespace

Sights AboutTheirCentroid(std::int32_t mode, std::span<const MultiResectObs> recs) noexcept {
  Sights sights{recs, mode, 0.0, 0.0};
  double used = 0.0;
  for (const MultiResectObs& rec : recs) {
    if (sights.HasEither(rec)) {
      sights.north += rec.north;
      sights.east += rec.east;
      used += 1.0;
    }
  }
  sights.north /= used;
  sights.east /= used;
  return sights;
}

bool RigidFit(const Sights& sights, PlaneFix& fix) noexcept {
  const MeanSight mean = MeanOfMeasured(sights);
  if (mean.count < 2.0) {
    return false;
  }
  double a = 0.0;
  double b = 0.0;
  for (const MultiResectObs& rec : sights.recs) {
    if (sights.HasBoth(rec)) {
      const LocalPos local = LocalAt(rec.hz, rec.horizDist);
      const double u = local.ahead - mean.local.ahead;
      const double v = local.right - mean.local.right;
      const double n = sights.North(rec) - mean.north;
      const double e = sights.East(rec) - mean.east;
      a += u * n + v * e;
      b += u * e - v * n;
    }
  }
  return Pin(a, b, mean.local, mean.north, mean.east, fix);
}

bool AllDirections(const Sights& sights, PlaneFix& fix) noexcept {
  Elimination k{};
  double a = 0.0;
  double b = 0.0;
  if (!EliminateStation(sights, k) || !LeastAxis(sights, k, a, b)) {
    return false;
  }
  const double p = -(k.k11 * a + k.k21 * b);
  const double q = -(k.k12 * a + k.k22 * b);
  fix = {a * p - b * q, b * p + a * q, a, b};
  // With all signs turned the station stays; only the orientation turns.
  if (LooksBackwards(sights, fix)) {
    fix.cosW = -a;
    fix.sinW = -b;
  }
  return true;
}

std::size_t Triangle(const Sights& sights, bool onlyTwoPoints,
                     std::array<PlaneFix, 2>& fixes) noexcept {
  const MultiResectObs* a = SightOfShortestDistance(sights);
  if (a == nullptr) {
    return 0;
  }
  const MultiResectObs& b = SightFarthestFrom(*a, sights);
  const double side = PointDistance(*a, b);
  if (onlyTwoPoints && a->horizDist > side) {
    return 0;
  }
  const double gamma = b.hz - a->hz;
  const double middle = a->horizDist * std::cos(gamma);
  const double square = Square(side) - Square(a->horizDist * std::sin(gamma));
  const double half = square > 0.0 ? std::sqrt(square) : 0.0;
  std::size_t found = 0;
  if (LayTriangle(sights, *a, b, middle + half, fixes[found])) {
    ++found;
  }
  if (!onlyTwoPoints && LayTriangle(sights, *a, b, middle - half, fixes[found])) {
    ++found;
  }
  return found;
}

}  // namespace kavo
