// Station from any number of sights to known points, adjusted by least squares.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "core/direction.hpp"
#include "core/int_angle.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"
#include "lsq/heap.hpp"
#include "lsq/observations.hpp"
#include "station/resect_approx.hpp"
#include "station/resect_driver.hpp"
#include "station/sight_elevation.hpp"

namespace {

using kavo::MultiResectObs;

// Standard deviations of the measurements: arc-seconds, metres, and a part of the distance.
constexpr double kDefaultSigmaAngle = 2.0;
constexpr double kDefaultSigmaConst = 0x1.0624dd2f1a9fcp-9;  // 0.002
constexpr double kDefaultSigmaProp = 0x1.0c6f7a0b5ed8dp-19;  // 2e-6

// How far the residuals of the last pass may be from those at the station, radians or a part of the
// distance: 0.001. Measurements are a hundred times better, and blunders a thousand times worse.
constexpr double kMostBend = 0x1.0624dd2f1a9fcp-10;

constexpr double kPerPi = 0x1.45f306dc9c883p-2;  // 1 / pi, 0.3183098861837907

struct GiveBack {
  void operator()(MultiResectObs* block) const noexcept { kavo::HeapFree(block); }
};

// The working records of one call, one for each sight.
using WorkRecords = std::unique_ptr<MultiResectObs[], GiveBack>;

// Not initialised; null when the memory cannot be had.
WorkRecords NewWorkRecords(std::size_t count) noexcept {
  return WorkRecords(static_cast<MultiResectObs*>(kavo::HeapAlloc(count * sizeof(MultiResectObs))));
}

bool HasDistance(const MultiResectInput& sight) noexcept { return sight.slopeDist != 0.0; }

bool GivesElevByDistance(const MultiResectInput& sight) noexcept {
  return kavo::HasElev(sight.point) && HasDistance(sight);
}

// A face-2 reading goes through the library's own normalisation (meant so): it comes out some 45
// degrees away from the reading of face 1.
void FillReadings(const MultiResectInput& sight, MultiResectObs& rec) noexcept {
  IntAngle hz = sight.ha;
  IntAngle zenith = sight.va;
  if (sight.va < 0 || sight.va >= ANGLE_HALF_CIRCLE) {
    hz = kavo::WrapSub(sight.ha, ANGLE_HALF_CIRCLE);
    kavo::NormalizeAngle(hz);
    zenith = kavo::WrapSub(ANGLE_FULL_CIRCLE, sight.va);
  }
  rec.hz = kavo::IntAngleToRadUnwrapped(hz);
  rec.zenith = kavo::IntAngleToRadUnwrapped(zenith);
}

void FillWorkRecord(const MultiResectInput& sight, MultiResectObs& rec) noexcept {
  rec.north = sight.point.north;
  rec.east = sight.point.east;
  rec.elev = kavo::HasElev(sight.point) ? sight.point.elev : kavo::kValueAbsent;
  rec.heightTerm = sight.heightTerm;
  FillReadings(sight, rec);
  rec.slopeDist = HasDistance(sight) ? sight.slopeDist : kavo::kValueAbsent;
  rec.horizDist = HasDistance(sight) ? sight.horizDist : kavo::kValueAbsent;
  rec.heightDiff = HasDistance(sight) ? sight.heightDiff : kavo::kValueAbsent;
}

// Truncated, not rounded as other directions are (meant so).
IntAngle TruncatedAngle(double radians) noexcept {
  return kavo::TruncateToAngle(radians * ANGLE_HALF_CIRCLE * kPerPi);
}

// Elevations of the station, one from each sight that gives one.
struct Elevations {
  double sum = 0.0;
  double count = 0.0;
  double highest = -kavo::kValueAbsent;
  double lowest = kavo::kValueAbsent;

  void Add(double elev) noexcept {
    highest = elev > highest ? elev : highest;
    lowest = elev < lowest ? elev : lowest;
    sum += elev;
    count += 1.0;
  }
};

// From the measured height differences; each sight's own elevation takes the place of a residual
// that the plane does not have.
Elevations ElevsByDistance(std::span<const MultiResectInput> sights,
                           MultiResectObs* work) noexcept {
  Elevations elevs;
  for (std::size_t i = 0; i < sights.size(); ++i) {
    const MultiResectInput& sight = sights[i];
    if (GivesElevByDistance(sight)) {
      work[i].resHeightDiff =
          KavoSTNSeaLevelCalcByBM(sight.point.elev, sight.heightTerm, sight.heightDiff);
      elevs.Add(work[i].resHeightDiff);
    }
  }
  return elevs;
}

// From the zenith readings and the distances that the adjusted position gives.
Elevations ElevsByZenith(std::span<const MultiResectInput> sights, double north,
                         double east) noexcept {
  Elevations elevs;
  for (const MultiResectInput& sight : sights) {
    if (kavo::HasElev(sight.point)) {
      elevs.Add(kavo::StnElevFromSight(north, east, sight.point, sight.va, sight.heightTerm));
    }
  }
  return elevs;
}

// As soon as one sight has a distance to a point with an elevation, only such sights count.
Elevations StationElevs(std::span<const MultiResectInput> sights, MultiResectObs* work,
                        const kavo::ResectSolution& solution) noexcept {
  const Elevations elevs = ElevsByDistance(sights, work);
  return elevs.count > 0.0 ? elevs : ElevsByZenith(sights, solution.north, solution.east);
}

void WriteResult(const kavo::ResectSolution& solution, const Elevations& elevs,
                 MultiResectResult& result) noexcept {
  const bool found = elevs.count > 0.0;
  kavo::WritePoint(result.station, solution.north, solution.east,
                   found ? elevs.sum / elevs.count : 0.0,
                   found ? COORD_HAS_NE | COORD_HAS_ELEV : COORD_HAS_NE);
  result.orient = TruncatedAngle(solution.orient);
  result.sdNorth = solution.sdNorth;
  result.sdEast = solution.sdEast;
  result.elevSpread = found ? elevs.highest - elevs.lowest : 0.0;
}

// A distance to a point without an elevation was adjusted all the same; its residual is not given
// out (meant so).
void WriteResidual(const MultiResectInput& sight, const MultiResectObs& rec, double stationElev,
                   MultiResectResidual& residual) noexcept {
  const bool given = GivesElevByDistance(sight);
  residual.hzResid = TruncatedAngle(rec.resHz);
  residual.distResid = given ? rec.resHorizDist : 0.0;
  residual.elevResid = given ? rec.resHeightDiff - stationElev : 0.0;
}

// True when what the last pass left of a sight is what is left of it at the station.
bool Holds(const MultiResectObs& rec, const kavo::ResectSolution& solution) noexcept {
  const double dNorth = rec.north - solution.north;
  const double dEast = rec.east - solution.east;
  const double azimuth = std::atan2(dEast, dNorth);
  const double horizDist = std::hypot(dNorth, dEast);
  const double turn = kavo::WithinHalfCircle(azimuth - solution.orient - rec.hz - rec.resHz);
  const double shift =
      kavo::HasDistanceSet(rec) ? horizDist - rec.horizDist - rec.resHorizDist : 0.0;
  return std::fabs(turn) < kMostBend && std::fabs(shift) < kMostBend * horizDist;
}

// Sights that contradict one another, as when two points were mistaken for each other, can drive a
// pass farther than its linear model reaches. It then leaves residuals of nothing and a station
// anywhere, and may count as settled all the same.
bool HoldsForAll(std::span<const MultiResectObs> work,
                 const kavo::ResectSolution& solution) noexcept {
  return std::isfinite(solution.sdNorth) && std::isfinite(solution.sdEast) &&
         solution.orient >= 0.0 && solution.orient < 2.0 * kavo::kPi &&
         std::all_of(work.begin(), work.end(),
                     [&](const auto& rec) { return Holds(rec, solution); });
}

std::int32_t Adjust(std::span<MultiResectObs> work, kavo::ResectSolution& solution) noexcept {
  const auto code =
      kavo::LsqResect(kavo::kLsqMode2D, static_cast<kavo::Index>(work.size()), work.data(),
                      kDefaultSigmaAngle, kDefaultSigmaConst, kDefaultSigmaProp, solution);
  if (code == kavo::kEngineOk) {
    return HoldsForAll(work, solution) ? STATUS_OK : ERR_INDETERMINATE;
  }
  return code == kavo::kEngineNotConverged ? ERR_INDETERMINATE : ERR_REFUSED;
}

}  // namespace

std::int32_t KavoSTNMultiResect(std::int16_t count, const MultiResectInput* sights,
                                MultiResectResult* result, MultiResectResidual* residuals) {
  if (count == 0) {
    return ERR_REFUSED;
  }
  if (count < 0) {
    return ERR_NO_MEMORY;
  }
  const std::span given(sights, static_cast<std::size_t>(count));
  const WorkRecords work = NewWorkRecords(given.size());
  if (!work) {
    return ERR_NO_MEMORY;
  }
  for (std::size_t i = 0; i < given.size(); ++i) {
    FillWorkRecord(given[i], work[i]);
  }
  kavo::ResectSolution solution{};
  if (const auto status = Adjust({work.get(), given.size()}, solution); status != STATUS_OK) {
    return status;
  }
  const Elevations elevs = StationElevs(given, work.get(), solution);
  WriteResult(solution, elevs, *result);
  for (std::size_t i = 0; i < given.size(); ++i) {
    WriteResidual(given[i], work[i], result->station.elev, residuals[i]);
  }
  return STATUS_OK;
}
