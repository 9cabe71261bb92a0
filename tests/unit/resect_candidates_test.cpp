#include "station/resect_candidates.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "networks.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

// A sight from a station at (10, 20) with its circle zeroed to the north.
MultiResectObs SightTo(double north, double east, bool measured) {
  Network net{10.0, 20.0, 0.0, 0.0, {}};
  AddSight(net, north, east);
  if (!measured) {
    RemoveDistance(net.sights.back());
  }
  return net.sights.back();
}

void ExpectStation(const Sights& sights, const PlaneFix& fix) {
  EXPECT_NEAR(10.0, sights.north + fix.north, 1e-12);
  EXPECT_NEAR(20.0, sights.east + fix.east, 1e-12);
  EXPECT_NEAR(1.0, fix.cosW, 1e-15);
  EXPECT_NEAR(0.0, fix.sinW, 1e-15);
}

TEST(RigidFit, NeedsTwoDistances) {
  std::vector sights = {SightTo(110, 20, true), SightTo(10, 70, true), SightTo(-40, 0, false)};
  PlaneFix fix{};
  const Sights two = AboutTheirCentroid(kLsqMode2D, sights);
  EXPECT_TRUE(RigidFit(two, fix));
  ExpectStation(two, fix);
  RemoveDistance(sights[0]);
  EXPECT_FALSE(RigidFit(AboutTheirCentroid(kLsqMode2D, sights), fix));
}

TEST(Triangle, HasASolutionForEachPositiveSide) {
  const struct {
    const char* name;
    std::vector<MultiResectObs> sights;
    bool onlyTwoPoints;
    std::size_t found;
  } rows[] = {
      {"no distance", {SightTo(10, 70, false), SightTo(-70, 20, false)}, false, 0},
      {"right angle: the other solution is behind the station",
       {SightTo(10, 70, true), SightTo(-70, 20, false)},
       false,
       1},
      {"both solutions are ahead", {SightTo(10, 70, true), SightTo(20, 60, false)}, false, 2},
      {"two points alone, the distance the longer",
       {SightTo(10, 70, true), SightTo(20, 60, false)},
       true,
       0},
      {"the shortest distance to the farthest point",
       {SightTo(10, 220, true), SightTo(10, 70, true), SightTo(-190, 20, false),
        SightTo(20, 80, true)},
       false,
       1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Sights sights = AboutTheirCentroid(kLsqMode2D, row.sights);
    std::array<PlaneFix, 2> fixes{};
    ASSERT_EQ(row.found, Triangle(sights, row.onlyTwoPoints, fixes));
    if (row.found == 1) {
      ExpectStation(sights, fixes[0]);
    }
  }
}

}  // namespace
