// Simulated free stations: a true station, and sights to points in every kind of geometry.
#pragma once

#include <cmath>
#include <vector>

#include "core/numeric.hpp"
#include "lsq/observations.hpp"
#include "sights.hpp"

namespace kavo_test {

using kavo::kPi;

/// A true station, and its sights.
struct Network {
  double north;
  double east;
  double elev;
  double orient;  ///< Azimuth less reading, radians.
  std::vector<kavo::MultiResectObs> sights;
};

/// Which sights of a network have a distance.
enum class Distances { kNone, kOne, kAll };

/// Adds a sight, without error, to a point given in the coordinates of the network.
inline void AddSight(Network& net, double north, double east, double elev = kavo::kValueAbsent) {
  const double dNorth = north - net.north;
  const double dEast = east - net.east;
  const double horizDist = std::hypot(dNorth, dEast);
  const double dElev = elev == kavo::kValueAbsent ? 0.0 : elev - net.elev;
  kavo::MultiResectObs obs{};
  obs.north = north;
  obs.east = east;
  obs.elev = elev;
  obs.hz = std::fmod(std::atan2(dEast, dNorth) - net.orient + 4.0 * kPi, 2.0 * kPi);
  obs.zenith = std::atan2(horizDist, dElev);
  obs.slopeDist = std::hypot(horizDist, dElev);
  obs.horizDist = horizDist;
  obs.heightDiff = dElev;
  net.sights.push_back(obs);
}

/// Adds a sight along an azimuth (radians) and a horizontal distance.
inline void AddRay(Network& net, double azimuth, double horizDist) {
  AddSight(net, net.north + horizDist * std::cos(azimuth),
           net.east + horizDist * std::sin(azimuth));
}

/// Takes the distance out of a sight.
inline void RemoveDistance(kavo::MultiResectObs& obs) {
  obs.slopeDist = obs.horizDist = obs.heightDiff = kavo::kValueAbsent;
}

/// A kind of geometry: adds `count` sights to a station.
struct Geometry {
  const char* name;
  void (*addSights)(Random& random, int count, Network& net);
};

/// Adds points around a centre that lies some distance from the station.
inline void AddRing(Random& random, int count, double centreDist, double least, double most,
                    Network& net) {
  const double to = random.Metres(-kPi, kPi);
  const double north = net.north + centreDist * std::cos(to);
  const double east = net.east + centreDist * std::sin(to);
  for (int i = 0; i < count; ++i) {
    const double at = 2.0 * kPi * (i + random.Metres(-0.3, 0.3)) / count;
    const double radius = random.Metres(least, most);
    AddSight(net, north + radius * std::cos(at), east + radius * std::sin(at));
  }
}

inline void AddInside(Random& random, int count, Network& net) {
  AddRing(random, count, 0.0, 30.0, 1000.0, net);
}

/// In the coordinates of a national grid.
inline void AddInsideFarAway(Random& random, int count, Network& net) {
  net.north += 5600000.0;
  net.east += 3400000.0;
  AddInside(random, count, net);
}

inline void AddOutside(Random& random, int count, Network& net) {
  AddRing(random, count, random.Metres(750.0, 2000.0), 300.0, 500.0, net);
}

inline void AddSector(Random& random, int count, Network& net) {
  const double to = random.Metres(-kPi, kPi);
  for (int i = 0; i < count; ++i) {
    AddRay(net, to + random.Metres(0.0, 0.5), random.Metres(50.0, 1000.0));
  }
}

inline void AddLine(Random& random, int count, Network& net) {
  const double across = random.Metres(-kPi, kPi);
  const double offset = random.Metres(20.0, 200.0);
  for (int i = 0; i < count; ++i) {
    const double along = random.Metres(-500.0, 500.0);
    AddRay(net, across + std::atan2(along, offset), std::hypot(along, offset));
  }
}

inline void AddClusters(Random& random, int count, Network& net) {
  const double to = random.Metres(-kPi, kPi);
  for (int i = 0; i < count; ++i) {
    AddRay(net, to + (i % 2 == 0 ? 0.0 : 1.7) + random.Metres(-0.02, 0.02),
           random.Metres(280.0, 320.0));
  }
}

inline void AddMixedRanges(Random& random, int count, Network& net) {
  for (int i = 0; i < count; ++i) {
    AddRay(net, random.Metres(-kPi, kPi), std::pow(10.0, random.Metres(0.7, 3.7)));
  }
}

inline void AddRepeated(Random& random, int count, Network& net) {
  AddInside(random, count, net);
  for (int i = 0; i < count; i += 2) {
    net.sights.push_back(net.sights[static_cast<std::size_t>(i)]);
  }
}

/// The station is off the circle of the points by a thousandth of its radius.
inline void AddNearDangerCircle(Random& random, int count, Network& net) {
  const double radius = random.Metres(100.0, 500.0);
  const double off = random.Angle(0, 1) == 0 ? 0.999 : 1.001;
  AddRing(random, count, radius * off, radius, radius, net);
}

inline constexpr Geometry kGeometries[] = {
    {"inside", AddInside},
    {"inside, far away", AddInsideFarAway},
    {"outside", AddOutside},
    {"sector", AddSector},
    {"line", AddLine},
    {"clusters", AddClusters},
    {"mixed ranges", AddMixedRanges},
    {"repeated points", AddRepeated},
    {"near danger circle", AddNearDangerCircle},
};

/// A network of a kind of geometry, without errors, its sights in no order.
inline Network DrawNetwork(Random& random, const Geometry& geometry, Distances distances) {
  Network net{random.Metres(-1000.0, 1000.0),
              random.Metres(-1000.0, 1000.0),
              0.0,
              random.Metres(-kPi, kPi),
              {}};
  geometry.addSights(random, random.Angle(3, 8), net);
  random.Shuffle(net.sights);
  for (std::size_t i = 0; i < net.sights.size(); ++i) {
    if (distances == Distances::kNone || (distances == Distances::kOne && i != 0)) {
      RemoveDistance(net.sights[i]);
    }
  }
  return net;
}

/// The points of a network, lifted to elevations.
inline Network InSpace(Random& random, const Network& flat) {
  Network net{flat.north, flat.east, random.Metres(-50.0, 50.0), flat.orient, {}};
  for (const auto& sight : flat.sights) {
    AddSight(net, sight.north, sight.east, net.elev + random.Metres(-20.0, 20.0));
    auto& added = net.sights.back();
    added.heightTerm = random.Metres(-2.0, 2.0);
    added.elev -= added.heightTerm;
  }
  return net;
}

}  // namespace kavo_test
