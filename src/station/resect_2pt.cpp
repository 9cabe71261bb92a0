// Station from sights to two known points, of which one or both carry a distance.
#include <cmath>
#include <cstdint>

#include "core/direction.hpp"
#include "core/int_angle.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"
#include "station/sight_elevation.hpp"

namespace {

bool HasDistance(const StnDistObs& obs) noexcept { return obs.hd != 0.0; }

IntAngle FaceOneReading(const StnDistObs& obs) noexcept {
  return kavo::FaceOneReading(obs.ha, obs.va);
}

// The plane position and the orientation. A station that is not finite, or that falls on the first
// point, has no direction to it; the orientation is computed all the same (meant so).
void WriteSetup(double north, double east, const StnDistObs& obsA,
                StnSetupResult& result) noexcept {
  kavo::WritePoint(result.station, north, east, 0.0, COORD_HAS_NE);
  result.orient = kavo::RelativeDirection(result.station, obsA.point, FaceOneReading(obsA));
}

// Angle at the first point between the station and the second point; `x` is the distance from the
// station to the second point. Meant so: only plus half a circle is an exact case.
double AngleAtFirst(IntAngle turn, double hd, double x, double sine, double cosine) noexcept {
  if (turn == 0) {
    return kavo::kPi;
  }
  if (turn == ANGLE_HALF_CIRCLE) {
    return 0.0;
  }
  return std::atan2(x * sine, hd - x * cosine);
}

// Law of sines in the triangle of the station, the point whose distance is known, and the other.
std::int32_t SolveOneDistance(const StnDistObs& obsA, const StnDistObs& obsB,
                              StnSetupResult& result) noexcept {
  const StnDistObs& first = HasDistance(obsA) ? obsA : obsB;
  const StnDistObs& second = HasDistance(obsA) ? obsB : obsA;
  const IntAngle turn = kavo::WrapSub(FaceOneReading(second), FaceOneReading(first));
  const double gamma = kavo::IntAngleToRad(turn);
  const double sine = std::sin(gamma);
  const double cosine = std::cos(gamma);
  const double dNorth = second.point.north - first.point.north;
  const double dEast = second.point.east - first.point.east;
  const double base = std::hypot(dNorth, dEast);
  const double hd = first.hd;
  if (hd > base) {
    return ERR_INDETERMINATE;
  }
  const double x = std::sqrt(1.0 - kavo::Square((hd / base) * sine)) * base + hd * cosine;
  const double phi = AngleAtFirst(turn, hd, x, sine, cosine);
  // The direction of the base counts from east here.
  const double omega = phi - std::atan2(dNorth, dEast);
  WriteSetup(first.point.north - std::sin(omega) * hd, std::cos(omega) * hd + first.point.east,
             obsA, result);
  return STATUS_OK;
}

// Similarity transformation from the instrument's frame to the known coordinates, by two points:
// a = scale * cos(turn), b = scale * sin(turn).
std::int32_t SolveTwoDistances(const StnDistObs& obsA, const StnDistObs& obsB,
                               StnSetupResult& result) noexcept {
  const double dLocalNorth = obsB.local.north - obsA.local.north;
  const double dNorth = obsB.point.north - obsA.point.north;
  const double dLocalEast = obsB.local.east - obsA.local.east;
  const double dEast = obsB.point.east - obsA.point.east;
  const double localSquare = kavo::Square(dLocalEast) + kavo::Square(dLocalNorth);
  if (localSquare == 0.0) {
    return ERR_NO_DIRECTION;
  }
  const double perSquare = 1.0 / localSquare;
  const double a = (dEast * dLocalEast + dNorth * dLocalNorth) * perSquare;
  const double b = (dLocalEast * dNorth - dEast * dLocalNorth) * perSquare;
  WriteSetup((obsA.point.north - a * obsA.local.north) - b * obsA.local.east,
             (b * obsA.local.north + obsA.point.east) - a * obsA.local.east, obsA, result);
  return STATUS_OK;
}

bool GivesElev(const StnDistObs& obs) noexcept {
  return HasDistance(obs) && kavo::HasElev(obs.point);
}

// In another order of operations than the benchmark's (meant so): the last bits may differ.
double StationElev(const StnDistObs& obs) noexcept {
  return (obs.point.elev - obs.vd) + obs.heightTerm;
}

void WriteElev(const StnDistObs& obsA, const StnDistObs& obsB, StnSetupResult& result) noexcept {
  const double elevA = GivesElev(obsA) ? StationElev(obsA) : 0.0;
  const double elevB = GivesElev(obsB) ? StationElev(obsB) : 0.0;
  const int count = (GivesElev(obsA) ? 1 : 0) + (GivesElev(obsB) ? 1 : 0);
  result.station.elev = count != 0 ? (elevB + elevA) / count : 0.0;
  result.station.flags = count != 0 ? COORD_HAS_NE | COORD_HAS_ELEV : COORD_HAS_NE;
  result.elevDiff = count == 2 ? elevA - elevB : 0.0;
}

double BaseMisclosure(const StnDistObs& obsA, const StnDistObs& obsB) noexcept {
  return std::hypot(obsB.point.north - obsA.point.north, obsB.point.east - obsA.point.east) -
         std::hypot(obsB.local.north - obsA.local.north, obsB.local.east - obsA.local.east);
}

double DistResidual(const StnDistObs& obs, const CoordPt& station) noexcept {
  if (!HasDistance(obs)) {
    return 0.0;
  }
  return obs.hd - std::hypot(obs.point.north - station.north, obs.point.east - station.east);
}

void WriteChecks(const StnDistObs& obsA, const StnDistObs& obsB, StnSetupResult& result) noexcept {
  const bool both = HasDistance(obsA) && HasDistance(obsB);
  result.distCheck = both ? BaseMisclosure(obsA, obsB) : 0.0;
  result.distResid1 = DistResidual(obsA, result.station);
  result.distResid2 = DistResidual(obsB, result.station);
}

}  // namespace

std::int32_t KavoSTN2PtResect(const StnDistObs* obsA, const StnDistObs* obsB,
                              StnSetupResult* result) {
  if (!kavo::HasNE(obsA->point) || !kavo::HasNE(obsB->point)) {
    return ERR_POINT_INVALID;
  }
  if (kavo::SamePlace(obsA->point, obsB->point)) {
    return ERR_NO_DIRECTION;
  }
  if (!HasDistance(*obsA) && !HasDistance(*obsB)) {
    return ERR_NO_DISTANCE;
  }
  const bool both = HasDistance(*obsA) && HasDistance(*obsB);
  const auto status =
      both ? SolveTwoDistances(*obsA, *obsB, *result) : SolveOneDistance(*obsA, *obsB, *result);
  // Whatever the status (meant so): after a refusal the checks stand against the position that the
  // record held.
  WriteElev(*obsA, *obsB, *result);
  WriteChecks(*obsA, *obsB, *result);
  return status;
}
