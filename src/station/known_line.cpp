// Station from sights to a known point and to a second point on a known line through it.
#include <array>
#include <cmath>
#include <cstdint>

#include "core/direction.hpp"
#include "core/int_angle.hpp"
#include "core/numeric.hpp"
#include "kavostdlib.h"

namespace {

// The sighted point in the instrument's own frame, north along the reading 0 of the circle.
CoordPt LocalPoint(const MultiResectInput& sight, IntAngle ha) noexcept {
  const double radians = kavo::IntAngleToRadUnwrapped(ha);
  return {sight.horizDist * std::cos(radians),
          sight.horizDist * std::sin(radians),
          sight.heightDiff,
          COORD_HAS_NE | COORD_HAS_ELEV,
          {}};
}

// Face 2 goes through the library's own normalisation (meant so): the reading comes out some 45
// degrees away from that of face 1.
IntAngle ReducedReading(const MultiResectInput& sight) noexcept {
  if (sight.va >= 0 && sight.va < ANGLE_HALF_CIRCLE) {
    return sight.ha;
  }
  IntAngle ha = kavo::WrapSub(sight.ha, ANGLE_HALF_CIRCLE);
  kavo::NormalizeAngle(ha);
  return ha;
}

// From the first sighted point to the second, as measured. Only the second sight's face is looked
// at (meant so).
std::int32_t MeasureLine(const MultiResectInput& sight1, const MultiResectInput& sight2,
                         RdmResult& measured) noexcept {
  const CoordPt first = LocalPoint(sight1, sight1.ha);
  const CoordPt second = LocalPoint(sight2, ReducedReading(sight2));
  return KavoRDMCalcByCoord(&first, &second, &measured);
}

std::int32_t FindAzimuth(const MultiResectInput& sight1, const MultiResectInput& sight2,
                         IntAngle lineAzimuth, IntAngle& azimuth) noexcept {
  azimuth = lineAzimuth;
  if (lineAzimuth != AZIMUTH_FROM_POINTS) {
    return STATUS_OK;
  }
  AngDistRec inverse{};
  const auto status = KavoCogoCoordToAngDist(&sight1.point, &sight2.point, &inverse);
  azimuth = inverse.azimuth;
  return status;
}

// The second sight, its point laid on the line at the measured distance.
MultiResectInput LaidOnLine(const MultiResectInput& sight1, const MultiResectInput& sight2,
                            IntAngle azimuth, double horizDist) noexcept {
  const double radians = kavo::IntAngleToRadUnwrapped(kavo::ApplyAzimuthReference(azimuth));
  MultiResectInput laid = sight2;
  laid.point.north = std::cos(radians) * horizDist + sight1.point.north;
  laid.point.east = std::sin(radians) * horizDist + sight1.point.east;
  return laid;
}

// In another order of operations than the benchmark's (meant so): the last bits may differ.
double StationElev(const MultiResectInput& sight1) noexcept {
  if (!kavo::HasElev(sight1.point)) {
    return NO_ELEVATION;
  }
  return (sight1.point.elev - sight1.heightDiff) + sight1.heightTerm;
}

}  // namespace

std::int32_t KavoSTNKnownLine(const MultiResectInput* sight1, const MultiResectInput* sight2,
                              IntAngle lineAzimuth, MultiResectResult* result,
                              MultiResectResidual accuracy[2]) {
  RdmResult measured{};
  if (const auto status = MeasureLine(*sight1, *sight2, measured); status != STATUS_OK) {
    return status;
  }
  IntAngle azimuth = 0;
  if (const auto status = FindAzimuth(*sight1, *sight2, lineAzimuth, azimuth);
      status != STATUS_OK) {
    return status;
  }
  const std::array sights = {*sight1, LaidOnLine(*sight1, *sight2, azimuth, measured.horizDist)};
  if (const auto status = KavoSTNMultiResect(2, sights.data(), result, accuracy);
      status != STATUS_OK) {
    return status;
  }
  // Whatever the adjustment made of it (meant so); its flags stay.
  result->station.elev = StationElev(*sight1);
  if (lineAzimuth != AZIMUTH_FROM_POINTS) {
    return STATUS_OK;
  }
  RdmResult known{};
  const std::int32_t status = KavoRDMCalcByCoord(&sight1->point, &sight2->point, &known);
  // GCOVR_EXCL_START: the azimuth between these points has been had.
  if (status != STATUS_OK) {
    return status;
  }
  // GCOVR_EXCL_STOP
  accuracy[0].distResid = measured.horizDist - known.horizDist;
  result->elevSpread = measured.dElev - known.dElev;
  return STATUS_OK;
}
