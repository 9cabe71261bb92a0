#include "station/resect_driver.hpp"

#include <gtest/gtest.h>

#include "fake_heap.hpp"
#include "networks.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr double kAsItWas = 42.0;

Network FourCorners() {
  Network net{10.0, 20.0, 0.0, 1.0, {}};
  AddSight(net, 110.0, 20.0);
  AddSight(net, 10.0, 120.0);
  AddSight(net, -90.0, 30.0);
  AddSight(net, 20.0, -80.0);
  return net;
}

// Distances that together do not span half of what lies between the points.
Network Contradiction() {
  Network net{0.0, 0.0, 0.0, 0.0, {}};
  const double rows[][4] = {{60, -40, 2.5, 30}, {-10, 50, 1.5, 20}, {-90, -80, 4, kValueAbsent}};
  for (const auto& [north, east, hz, dist] : rows) {
    AddSight(net, north, east);
    net.sights.back().hz = hz;
    net.sights.back().slopeDist = net.sights.back().horizDist = dist;
  }
  return net;
}

Network SlopeOfNothing() {
  Random random(1);
  Network net = InSpace(random, FourCorners());
  net.sights[1].slopeDist = 1e-9;
  return net;
}

TEST(Driver, WritesWhenItHasAStationSettledOrNot) {
  const struct {
    const char* name;
    std::int32_t mode;
    Network net;
    std::int32_t code;
  } rows[] = {
      {"no sight", kLsqMode2D, {}, kEngineSingular},
      {"in space a slope distance of nothing", kLsqMode3D, SlopeOfNothing(), kEngineSingular},
      {"without elevations space is the plane", kLsqMode3D, FourCorners(), kEngineOk},
      {"not settled in ten passes", kLsqMode2D, Contradiction(), kEngineNotConverged},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const HeapGuard guard;
    auto work = row.net.sights;
    for (auto& rec : work) {
      rec.resHz = kAsItWas;
    }
    ResectSolution out{kAsItWas, kAsItWas, kAsItWas, kAsItWas, kAsItWas,
                       kAsItWas, kAsItWas, kAsItWas, kAsItWas};
    EXPECT_EQ(row.code, LsqResect(row.mode, static_cast<Index>(work.size()), work.data(), 2.0,
                                  0.002, 2e-6, out));
    const bool written = row.code != kEngineSingular;
    for (const auto& rec : work) {
      EXPECT_EQ(written, rec.resHz != kAsItWas);
    }
    EXPECT_EQ(written, out.north != kAsItWas && out.sigma0 != kAsItWas);
    EXPECT_EQ(written ? kValueAbsent : kAsItWas, out.elev);
    EXPECT_EQ(written ? kValueAbsent : kAsItWas, out.sdElev);
  }
}

TEST(Driver, ReleasesWhatItWorksWithInReverseOrder) {
  const HeapGuard guard;
  auto work = FourCorners().sights;
  ResectSolution out{};
  EXPECT_EQ(kEngineOk, LsqResect(kLsqMode2D, static_cast<Index>(work.size()), work.data(), 2.0,
                                 0.002, 2e-6, out));
  const auto& released = Heap().released;
  ASSERT_GE(released.size(), 11U);
  EXPECT_EQ((std::vector{11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1}),
            std::vector(released.end() - 11, released.end()));
}

}  // namespace
