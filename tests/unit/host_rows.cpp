// Replays rows against the library with a host that the rows steer and look into.
//
//   check_host_rows FILE...

#include <vector>

#include "fake_host.hpp"
#include "replay.hpp"
#include "station/sight_elevation.hpp"

namespace {

using namespace kavo_test;

// The host as shipped, but for these settings.
void HostSettings(std::int16_t azimuthReference, std::int32_t face) {
  Host() = FakeHost{};
  Host().azimuthReference = azimuthReference;
  Host().face = face;
}

void HostDistances(double scaleFactor, std::int16_t seaLevel, double meanElev) {
  Host().scaleFactor = scaleFactor;
  Host().seaLevel = seaLevel;
  Host().meanElev = meanElev;
}

void HostRefraction(std::int16_t curvRefr, std::int16_t refrCoef) {
  Host().curvRefr = curvRefr;
  Host().refrCoef = refrCoef;
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

// Internals, with parameters as a row can give them.

IntAngle FaceOneReading(IntAngle ha, IntAngle va) { return kavo::FaceOneReading(ha, va); }

double StnElevFromSight(double stationNorth, double stationEast, const CoordPt* point, IntAngle va,
                        double heightTerm) {
  return kavo::StnElevFromSight(stationNorth, stationEast, *point, va, heightTerm);
}

}  // namespace

int main(int argc, char** argv) {
  const std::span<char* const> arguments(argv, static_cast<std::size_t>(argc));
  std::vector<Export> functions(Exports().begin(), Exports().end());
  functions.push_back({"HostSettings", kStateful<HostSettings>});
  functions.push_back({"HostDistances", kStateful<HostDistances>});
  functions.push_back({"HostRefraction", kStateful<HostRefraction>});
  functions.push_back({"HostReplies", kStateful<HostReplies>});
  functions.push_back({"HostWasAsked", kStateful<HostWasAsked>});
  functions.push_back({"FaceOneReading", kStateful<FaceOneReading>});
  functions.push_back({"StnElevFromSight", kStateful<StnElevFromSight>});
  return ReplayFiles(arguments.subspan(1), functions) ? 0 : 1;
}
