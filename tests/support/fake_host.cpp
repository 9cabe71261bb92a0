#include "fake_host.hpp"

namespace kavo_test {

FakeHost& Host() {
  static FakeHost host;
  return host;
}

}  // namespace kavo_test

namespace kavo {

std::int16_t GetSettingInt(std::uint16_t id) noexcept {
  switch (id) {
    case kSettingAzimuthReference:
      return kavo_test::Host().azimuthReference;
    case kSettingCurvRefr:
      return kavo_test::Host().curvRefr;
    case kSettingSeaLevel:
      return kavo_test::Host().seaLevel;
    case kSettingRefrCoef:
      return kavo_test::Host().refrCoef;
    default:
      return 0;
  }
}

double GetSettingReal(std::uint16_t id) noexcept {
  return id == kSettingScaleFactor ? kavo_test::Host().scaleFactor : 0.0;
}

void GetSiteRecord(SiteRecord& out) noexcept {
  out = SiteRecord{};
  out.meanElev = kavo_test::Host().meanElev;
}

std::int32_t CalcObsFromPoint(double north, double east, double elev, double hookValue,
                              ObsReply& reply) noexcept {
  auto& host = kavo_test::Host();
  host.askedNorth = north;
  host.askedEast = east;
  host.askedElev = elev;
  host.askedHookValue = hookValue;
  reply = host.reply;
  return host.replyCode;
}

std::int32_t QueryFaceSetting() noexcept { return kavo_test::Host().face; }

}  // namespace kavo
