// A host instrument that a test sets up and looks into.
#pragma once

#include "core/host.hpp"

namespace kavo_test {

/// What the host answers, and the point that it was last asked to observe.
struct FakeHost {
  std::int16_t azimuthReference = 0;
  std::int16_t curvRefr = 0;
  std::int16_t seaLevel = 0;
  std::int16_t refrCoef = 0;
  double scaleFactor = 1.0;
  double meanElev = 0.0;
  std::int32_t face = 0;
  kavo::ObsReply reply{};
  std::int32_t replyCode = -1;
  double askedNorth = 0.0;
  double askedEast = 0.0;
  double askedElev = 0.0;
  double askedHookValue = 0.0;
};

/// The host that answers the library in this program.
FakeHost& Host();

/// Gives the host back its shipped answers at the end of a scope.
struct HostGuard {
  HostGuard() = default;
  HostGuard(const HostGuard&) = delete;
  HostGuard& operator=(const HostGuard&) = delete;
  ~HostGuard() { Host() = FakeHost{}; }
};

}  // namespace kavo_test
