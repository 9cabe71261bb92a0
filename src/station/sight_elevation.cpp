#include "station/sight_elevation.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "core/direction.hpp"
#include "core/host.hpp"
#include "core/int_angle.hpp"
#include "core/numeric.hpp"

namespace kavo {
namespace {

// One arc-minute from the zenith, 0.0002908882086657216, and from the nadir, 3.1413017653811273.
constexpr double kLeastZenith = 0x1.3104b57cf96a3p-12;
constexpr double kGreatestZenith = 0x1.92162d1e96e9bp+1;

// 1 / R and 1 / (2 R) for an earth of R = 6370000 m: 1.5698587127158556e-7, 7.849293563579278e-8.
constexpr double kPerEarthRadius = 0x1.511fe53ae3a03p-23;
constexpr double kPerEarthDiameter = 0x1.511fe53ae3a03p-24;

// Coefficients of refraction, by the host's index: 0.132, 0.133, 0.2.
constexpr std::array kRefraction = {0x1.0e5604189374cp-3, 0x1.10624dd2f1aa0p-3,
                                    0x1.999999999999ap-3};

// An index outside the table counts as 0.
double RefractionCoefficient() noexcept {
  const std::int16_t index = GetSettingInt(kSettingRefrCoef);
  const bool inTable = index >= 0 && static_cast<std::size_t>(index) < kRefraction.size();
  return kRefraction[inTable ? static_cast<std::size_t>(index) : 0];
}

bool CurvRefrIsOn() noexcept { return GetSettingInt(kSettingCurvRefr) == 1; }

double ClampedZenith(IntAngle va) noexcept {
  const IntAngle faceOne = va < ANGLE_HALF_CIRCLE ? va : WrapSub(ANGLE_FULL_CIRCLE, va);
  const double zenith = IntAngleToRadUnwrapped(faceOne);
  if (zenith < kLeastZenith) {
    return kLeastZenith;
  }
  return zenith > kGreatestZenith ? kGreatestZenith : zenith;
}

// From the grid to the ground. The factor is asked for afresh where it is used, as all settings
// are.
double Unscaled(double horizDist) noexcept {
  if (GetSettingReal(kSettingScaleFactor) == 1.0) {
    return horizDist;
  }
  const double scale = GetSettingReal(kSettingScaleFactor);
  return scale != 0.0 ? horizDist / scale : horizDist;
}

// From sea level to the height of the site.
double RaisedFromSeaLevel(double horizDist) noexcept {
  if (GetSettingInt(kSettingSeaLevel) != 1) {
    return horizDist;
  }
  SiteRecord site{};
  GetSiteRecord(site);
  return (site.meanElev * kPerEarthRadius + 1.0) * horizDist;
}

double HorizontalCurvRefr(double horizDist, double zenith) noexcept {
  if (!CurvRefrIsOn()) {
    return horizDist;
  }
  const double k = RefractionCoefficient();
  const double slopeDist = horizDist / std::sin(zenith);
  return (1.0 - k * 0.5) * (slopeDist * slopeDist * std::sin(zenith * 2.0)) * kPerEarthDiameter +
         horizDist;
}

double VerticalCurvRefr(double vertDiff, double horizDist) noexcept {
  if (!CurvRefrIsOn()) {
    return vertDiff;
  }
  const double k = RefractionCoefficient();
  return (horizDist * horizDist) * (1.0 - k) * kPerEarthDiameter + vertDiff;
}

}  // namespace

IntAngle FaceOneReading(IntAngle ha, IntAngle va) noexcept {
  return WrapCircle(va) < ANGLE_HALF_CIRCLE ? ha : TurnHalfCircle(ha);
}

double StnElevFromSight(double stationNorth, double stationEast, const CoordPt& point, IntAngle va,
                        double heightTerm) noexcept {
  if (!HasElev(point)) {
    return 0.0;
  }
  const double zenith = ClampedZenith(va);
  double horizDist = std::hypot(point.north - stationNorth, point.east - stationEast);
  horizDist = Unscaled(horizDist);
  horizDist = RaisedFromSeaLevel(horizDist);
  horizDist = HorizontalCurvRefr(horizDist, zenith);
  const double vertDiff = VerticalCurvRefr(horizDist / std::tan(zenith), horizDist);
  return (point.elev + heightTerm) - vertDiff;
}

}  // namespace kavo
