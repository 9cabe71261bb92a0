// Replays rows against the library with a host that the rows steer and look into.
//
//   check_host_rows FILE...

#include <vector>

#include "fake_host.hpp"
#include "replay.hpp"

namespace {

using namespace kavo_test;

// The host as shipped, but for these settings.
void HostSettings(std::int16_t azimuthReference, std::int32_t face) {
  Host() = FakeHost{};
  Host().azimuthReference = azimuthReference;
  Host().face = face;
}

// What the host says of any point, and the one that it gives back.
void HostReplies(std::int32_t code, IntAngle ha, IntAngle va, double dist, double north,
                 double east, double elev) {
  Host().replyCode = code;
  Host().reply = {ha, va, dist, {}, north, east, elev};
}

// The point that the host was last asked to observe.
void HostWasAsked(double* north, double* east, double* elev, double* hookValue) {
  *north = Host().askedNorth;
  *east = Host().askedEast;
  *elev = Host().askedElev;
  *hookValue = Host().askedHookValue;
}

}  // namespace

int main(int argc, char** argv) {
  const std::span<char* const> arguments(argv, static_cast<std::size_t>(argc));
  std::vector<Export> functions(Exports().begin(), Exports().end());
  functions.push_back({"HostSettings", kStateful<HostSettings>});
  functions.push_back({"HostReplies", kStateful<HostReplies>});
  functions.push_back({"HostWasAsked", kStateful<HostWasAsked>});
  return ReplayFiles(arguments.subspan(1), functions) ? 0 : 1;
}
