// The smallest host: azimuths count from south, everything else is off.
#include "core/host.hpp"

namespace kavo {

std::int16_t GetSettingInt(std::uint16_t id) noexcept {
  return id == kSettingAzimuthReference ? 1 : 0;
}
double GetSettingReal(std::uint16_t /*id*/) noexcept { return 1.0; }
void GetSiteRecord(SiteRecord& out) noexcept { out = SiteRecord{}; }
std::int32_t CalcObsFromPoint(double /*north*/, double /*east*/, double /*elev*/,
                              double /*hookValue*/, ObsReply& reply) noexcept {
  reply = ObsReply{};
  return -1;
}
std::int32_t QueryFaceSetting() noexcept { return 0; }

}  // namespace kavo
