// Plane area of a closed polygon.
#include <cmath>

#include "core/direction.hpp"
#include "kavostdlib.h"

namespace {

// Running sum of the cross products, with W. Kahan's compensation kept in the opposite sign and
// added. A local of the call: nothing of it outlives the call, and threads do not meet in it.
struct AreaSum {
  std::int16_t count;  // points taken so far, of an array that a signed 16-bit number counts
  const CoordPt* first;
  const CoordPt* previous;
  double compensation;
  double sum;
};

double Cross(const CoordPt& p, const CoordPt& previous) noexcept {
  return p.east * previous.north - p.north * previous.east;
}

void AddPoint(AreaSum& area, const CoordPt& p) noexcept {
  if (area.count == 0) {
    area.first = &p;
  } else {
    const double y = Cross(p, *area.previous) + area.compensation;
    const double t = area.sum + y;
    area.compensation = (area.sum - t) + y;
    area.sum = t;
  }
  area.previous = &p;
  ++area.count;
}

double Finish(const AreaSum& area) noexcept {
  if (area.count < 3) {
    return 0.0;
  }
  const double closing = Cross(*area.first, *area.previous);
  const double total = (closing + area.compensation) + area.sum;
  return std::fabs(total) * 0.5;
}

}  // namespace

double KavoCogoCalcArea(const CoordPt* points, std::int16_t count) {
  AreaSum area{};
  for (std::int16_t i = 0; i < count; ++i) {
    if (kavo::HasNE(points[i])) {
      AddPoint(area, points[i]);
    }
  }
  return Finish(area);
}
