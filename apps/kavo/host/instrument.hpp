// The instrument that kavo puts behind the library.
#pragma once

#include <cstdint>

#include "base/geometry.hpp"
#include "kavostdlib.h"

namespace kavo_app {

/// What a job can set on the instrument; as it stands here, everything is off and the library
/// answers as shipped.
struct InstrumentSettings {
  bool azimuthFromSouth = false;
  bool curvatureRefraction = false;
  std::int16_t refractionIndex = 0;  ///< 0, 1 or 2: coefficient 0.132, 0.133 or 0.2.
  bool seaLevel = false;
  double siteElev = 0.0;     ///< Mean elevation of the site, metres.
  double scaleFactor = 1.0;  ///< Grid scale factor, no unit.
  bool face2 = false;
};

/// An azimuth from north as the settings have azimuths counted, or one of theirs as it is from
/// north: half a circle either way, when they count from south.
constexpr IntAngle Referred(const InstrumentSettings& settings, IntAngle azimuth) {
  return settings.azimuthFromSouth ? Wrapped(Wrapped(azimuth) + ANGLE_HALF_CIRCLE) : azimuth;
}

/// The station that the instrument stands on while a step is computed.
struct InstrumentSetup {
  CoordPt station{};    ///< Needs a position; the elevation of a station without one counts as 0.
  IntAngle orient = 0;  ///< Azimuth of the circle's zero.
  double height = 0.0;  ///< Of the instrument above the station, metres.
};

/// Sets the instrument up. Until then it answers no point, as the library does as shipped.
void SetUpInstrument(const InstrumentSetup& setup);

/// Sets the instrument that answers the library in this process.
void SetInstrument(const InstrumentSettings& settings);

/// What it is set to.
const InstrumentSettings& Instrument();

}  // namespace kavo_app
