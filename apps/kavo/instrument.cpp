// A worked example of a host build: the five functions that the library asks its host.
#include "instrument.hpp"

#include "core/host.hpp"

namespace kavo_app {
namespace {

InstrumentSettings instrument;

}  // namespace

void SetInstrument(const InstrumentSettings& settings) { instrument = settings; }

}  // namespace kavo_app

namespace kavo {

using kavo_app::instrument;

std::int16_t GetSettingInt(std::uint16_t id) noexcept {
  switch (id) {
    case kSettingAzimuthReference:
      return instrument.azimuthFromSouth ? 1 : 0;
    case kSettingCurvRefr:
      return instrument.curvatureRefraction ? 1 : 0;
    case kSettingSeaLevel:
      return instrument.seaLevel ? 1 : 0;
    case kSettingRefrCoef:
      return instrument.refractionIndex;
    default:
      return 0;
  }
}

double GetSettingReal(std::uint16_t id) noexcept {
  return id == kSettingScaleFactor ? instrument.scaleFactor : 0.0;
}

void GetSiteRecord(SiteRecord& out) noexcept {
  out = SiteRecord{};
  out.meanElev = instrument.siteElev;
}

// No job sets the instrument up on a station yet, so there is nothing to read an angle from.
std::int32_t CalcObsFromPoint(double /*north*/, double /*east*/, double /*elev*/,
                              double /*hookValue*/, ObsReply& reply) noexcept {
  reply = ObsReply{};
  return -1;
}

std::int32_t QueryFaceSetting() noexcept { return instrument.face2 ? 1 : 0; }

}  // namespace kavo
