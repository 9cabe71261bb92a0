#include "station/resect_approx.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>

#include "station/resect_candidates.hpp"

namespace kavo {
namespace {

constexpr Index kIterationLimit = 10;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool SamePoint(const MultiResectObs& a, const MultiResectObs& b) noexcept {
  return a.north == b.north && a.east == b.east;
}

// Distinct points that directions were read to: 0, 1, 2, or 3 for any more.
int CountPoints(const Sights& sights) noexcept {
  const MultiResectObs* first = nullptr;
  const MultiResectObs* second = nullptr;
  for (const MultiResectObs& rec : sights.recs) {
    if (!HasDirection(rec)) {
      continue;
    }
    if (first == nullptr) {
      first = &rec;
    } else if (SamePoint(rec, *first)) {
      continue;
    } else if (second == nullptr) {
      second = &rec;
    } else if (!SamePoint(rec, *second)) {
      return 3;
    }
  }
  return (first != nullptr ? 1 : 0) + (second != nullptr ? 1 : 0);
}

// What a fix leaves of the readings, in radians, and of the distances, as a part of them: the sum
// of squares. Not finite when a number in the sights is not, when a distance is not positive, or
// when the fix falls on a point.
double Misfit(const Sights& sights, const PlaneFix& fix) noexcept {
  const double w = std::atan2(fix.sinW, fix.cosW);
  double sum = 0.0;
  for (const MultiResectObs& rec : sights.recs) {
    if (!sights.HasEither(rec)) {
      continue;
    }
    const double dNorth = sights.North(rec) - fix.north;
    const double dEast = sights.East(rec) - fix.east;
    const double horizDist = std::hypot(dNorth, dEast);
    if (!(horizDist > 0.0) || (sights.HasDistance(rec) && !(rec.horizDist > 0.0))) {
      return kInfinity;
    }
    if (HasDirection(rec)) {
      sum += Square(WithinHalfCircle(rec.hz + w - std::atan2(dEast, dNorth)));
    }
    if (sights.HasDistance(rec)) {
      sum += Square((rec.horizDist - horizDist) / horizDist);
    }
  }
  return sum;
}

// The fix that suits the sights best so far, and how badly.
struct Choice {
  PlaneFix fix;
  double misfit;
};

// A misfit that is not a number is not less than any.
void Offer(const Sights& sights, const PlaneFix& fix, Choice& best) noexcept {
  const double misfit = Misfit(sights, fix);
  if (misfit < best.misfit) {
    best = {fix, misfit};
  }
}

// The best of the candidates. Its misfit is infinite when there is none.
Choice ChooseFix(const Sights& sights) noexcept {
  Choice best{{}, kInfinity};
  const int points = CountPoints(sights);
  if (points < 2) {
    return best;
  }
  PlaneFix fix{};
  const bool fitted = RigidFit(sights, fix);
  if (fitted) {
    Offer(sights, fix, best);
  }
  if (points > 2 && AllDirections(sights, fix)) {
    Offer(sights, fix, best);
  }
  if (points > 2 || !fitted) {
    std::array<PlaneFix, 2> fixes{};
    const std::size_t found = Triangle(sights, points == 2, fixes);
    for (const PlaneFix& triangle : std::span(fixes).first(found)) {
      Offer(sights, triangle, best);
    }
  }
  return best;
}

// Mean over the sights that give the station an elevation; not a number when there is none.
double MeanElev(std::span<const MultiResectObs> recs) noexcept {
  double sum = 0.0;
  double used = 0.0;
  for (const MultiResectObs& rec : recs) {
    if (GivesDistance(kLsqMode3D, rec)) {
      sum += (rec.elev + rec.heightTerm) - rec.heightDiff;
      used += 1.0;
    }
  }
  return sum / used;
}

}  // namespace

std::int32_t LsqApproxValues(std::int32_t mode, Index count, const MultiResectObs* recs,
                             Index& unknowns, Index& limit, Vector& x0) noexcept {
  const bool inSpace = mode == kLsqMode3D;
  unknowns = inSpace ? 4 : 3;
  limit = kIterationLimit;
  const std::span all(recs, count > 0 ? static_cast<std::size_t>(count) : 0);
  const Sights sights = AboutTheirCentroid(mode, all);
  const auto [fix, misfit] = ChooseFix(sights);
  const double elev = inSpace ? MeanElev(all) : 0.0;
  if (!std::isfinite(misfit) || !std::isfinite(elev)) {
    return kEngineSingular;
  }
  const Vector values = VecAlloc(1, unknowns);
  if (!values) {
    return kEngineNoMemory;
  }
  values[1] = sights.north + fix.north;
  values[2] = sights.east + fix.east;
  if (inSpace) {
    values[3] = elev;
  }
  values[unknowns] = std::atan2(fix.sinW, fix.cosW);
  x0 = values;
  return kEngineOk;
}

}  // namespace kavo
