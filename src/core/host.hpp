// What a host instrument supplies: its settings, its site and its model of an observation.
//
// The library as shipped answers with the fixed values of host_defaults.cpp. A host build replaces
// that one file by its own with all five functions (KAVO_HOST_SOURCES). They are called from within
// the library's functions, on the caller's thread; they must not call back into the library.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kavostdlib.h"

namespace kavo {

/// Integer setting: 1 = azimuths count from south, anything else = from north.
inline constexpr std::uint16_t kSettingAzimuthReference = 0xC103;
/// Integer setting: 1 = apply the earth-curvature and refraction correction.
inline constexpr std::uint16_t kSettingCurvRefr = 0xC122;
/// Integer setting: 1 = reduce horizontal distances for the height of the site above the sea.
inline constexpr std::uint16_t kSettingSeaLevel = 0xC123;
/// Integer setting: which coefficient of refraction: 0 = 0.132, 1 = 0.133, 2 = 0.2.
inline constexpr std::uint16_t kSettingRefrCoef = 0xC125;
/// Real setting: grid scale factor, no unit; 1.0 and 0.0 both mean none.
inline constexpr std::uint16_t kSettingScaleFactor = 0xD468;

/// The site that the instrument works on; 96 bytes.
struct SiteRecord {
  std::uint8_t reserved0[40];
  double meanElev;  ///< Mean elevation of the site, metres.
  std::uint8_t reserved1[48];
};

/// What the instrument would read at a point; 56 bytes.
struct ObsReply {
  IntAngle ha;                ///< Horizontal reading, face 1.
  IntAngle va;                ///< Zenith reading, face 1.
  double dist;                ///< Distance, metres.
  std::uint8_t reserved[16];  ///< Never read by the library.
  double north;               ///< North of the point to report, metres.
  double east;                ///< East of the point to report, metres.
  double elev;                ///< Elevation of the point to report, metres.
};

/// An integer setting of the instrument.
/// @param id  kSettingAzimuthReference, kSettingCurvRefr, kSettingSeaLevel or kSettingRefrCoef.
/// @return the setting; 0 for an id that the host does not know.
std::int16_t GetSettingInt(std::uint16_t id) noexcept;

/// A real setting of the instrument.
/// @param id  kSettingScaleFactor.
/// @return the setting; 0.0 for an id that the host does not know.
double GetSettingReal(std::uint16_t id) noexcept;

/// The site's record.
/// @param[out] out  written whole.
void GetSiteRecord(SiteRecord& out) noexcept;

/// The readings that the instrument would take at a computed point.
/// @param north,east,elev  the point, metres.
/// @param hookValue  a number that the caller of the offset measurement passes through, metres.
/// @param[out] reply  written whole, whatever the result.
/// @return 0, or a negative code of the host's that the point cannot be observed.
std::int32_t CalcObsFromPoint(double north, double east, double elev, double hookValue,
                              ObsReply& reply) noexcept;

/// The face that the instrument is on.
/// @return 1 in the low 16 bits when readings are to be reported for face 2.
std::int32_t QueryFaceSetting() noexcept;

}  // namespace kavo
