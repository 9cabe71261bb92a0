// A worked example of a host build: the five functions that the library asks its host.
#include "host/instrument.hpp"

#include "base/geometry.hpp"
#include "core/host.hpp"

namespace kavo_app {
namespace {

InstrumentSettings instrument;
InstrumentSetup setup;
bool isSetUp = false;

}  // namespace

void SetInstrument(const InstrumentSettings& settings) { instrument = settings; }

const InstrumentSettings& Instrument() { return instrument; }

void SetUpInstrument(const InstrumentSetup& newSetup) {
  setup = newSetup;
  isSetUp = true;
}

}  // namespace kavo_app

namespace kavo {

using kavo_app::instrument;
using kavo_app::setup;

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

// The readings from the station's axis to a target that stands `hookValue` above the point, and the
// point itself, also when it cannot be aimed at: some exports do not look at the status. The
// reading on the circle is the azimuth less the orientation.
std::int32_t CalcObsFromPoint(double north, double east, double elev, double hookValue,
                              ObsReply& reply) noexcept {
  reply = ObsReply{};
  if (!kavo_app::isSetUp) {
    return -1;
  }
  const CoordPt axis = kavo_app::AtElev(setup.station, setup.station.elev + setup.height);
  const CoordPt target{north, east, elev + hookValue, COORD_HAS_NE | COORD_HAS_ELEV, {}};
  reply.north = north;
  reply.east = east;
  reply.elev = elev;
  AngDistRec sight{};
  if (KavoCogoCoordToAngDist(&axis, &target, &sight) != STATUS_OK) {
    return -1;
  }
  reply.ha = kavo_app::Wrapped(sight.azimuth - setup.orient);
  reply.va = sight.zenith;
  reply.dist = sight.slopeDist;
  return 0;
}

std::int32_t QueryFaceSetting() noexcept { return instrument.face2 ? 1 : 0; }

}  // namespace kavo
