// The host of the library as shipped: no instrument, every correction off.
#include "core/host.hpp"

namespace kavo {

std::int16_t GetSettingInt(std::uint16_t /*id*/) noexcept { return 0; }

double GetSettingReal(std::uint16_t id) noexcept {
  // GCOVR_EXCL_BR_START: the library asks for no other setting.
  return id == kSettingScaleFactor ? 1.0 : 0.0;
  // GCOVR_EXCL_BR_STOP
}

// GCOVR_EXCL_START: asked for where the height of the site counts, and here it never does.
void GetSiteRecord(SiteRecord& out) noexcept { out = SiteRecord{}; }
// GCOVR_EXCL_STOP

// Meant as it stands: without an instrument there are no readings, so the reply is all zeros and
// the result a refusal, while the offset measurements still answer their own status.
std::int32_t CalcObsFromPoint(double /*north*/, double /*east*/, double /*elev*/,
                              double /*hookValue*/, ObsReply& reply) noexcept {
  reply = ObsReply{};
  return -1;
}

std::int32_t QueryFaceSetting() noexcept { return 0; }

}  // namespace kavo
