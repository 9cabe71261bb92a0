// The points that the host is asked to observe, in scenes that are turned and shifted.
#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "fake_host.hpp"
#include "scenes.hpp"

namespace {

using namespace kavo_test;

void ExpectAsked(const CoordPt& point, double reach) {
  EXPECT_NEAR(point.north, Host().askedNorth, reach);
  EXPECT_NEAR(point.east, Host().askedEast, reach);
  EXPECT_NEAR(point.elev, Host().askedElev, reach);
}

// The point of the line is found before, between and beyond its two points, whichever way the line
// runs and on either face. The sighting's zenith angle does not enter.
TEST(Offset, FollowsALineInSpace) {
  Scenes scenes;
  const HostGuard guard;
  for (int i = 0; i < kScenes; ++i) {
    const AngDistRec sight{scenes.Angle(0, ANGLE_FULL_CIRCLE - 1), 45 * kDegree, 0, 0, 0};
    const Motion motion{1, sight.azimuth * kRadPerUnit, scenes.Between(-1e3, 1e3),
                        scenes.Between(-1e3, 1e3)};
    const double ahead = scenes.Between(1, 100);
    // The line through the hidden point, which stands at `at` lengths from a.
    const double at = scenes.Between(-4, 4);
    const double along = scenes.Between(-100, 100);
    const double right = scenes.Between(2, 100);
    const double rise = scenes.Between(-100, 100);
    const CoordPt a = motion(Pt(ahead - at * along, -at * right, -at * rise));
    const CoordPt b =
        motion(Pt(ahead + (1 - at) * along, (1 - at) * right, (1 - at) * rise, kFull));
    const CoordPt station = motion(Pt(0, 0));
    for (const auto& [ha, va, slope, horiz, dElev] : {sight, OnFace2(sight)}) {
      AngleDistObs obs;
      CoordPt point;
      KavoCalcOfsLineHA(&a, &b, ha, va, &station, 1.5, &obs, &point, 0);
      ExpectAsked(motion(Pt(ahead, 0)), 1e-8);
    }
  }
}

// A column built from its edges and radius comes back with its centre and radius, wherever between
// the edges its surface was met, with the edges in either order and each sighting on either face.
TEST(Offset, FindsARoundObject) {
  Scenes scenes;
  const HostGuard guard;
  const auto sighted = [&](IntAngle ha) {
    const AngDistRec sight{(ha + ANGLE_FULL_CIRCLE) % ANGLE_FULL_CIRCLE, 100 * kDegree, 0, 0, 0};
    return scenes.Between(-1, 1) < 0 ? sight : OnFace2(sight);
  };
  for (int i = 0; i < kScenes; ++i) {
    const IntAngle middle = scenes.Angle(0, ANGLE_FULL_CIRCLE - 1);
    const IntAngle half = scenes.Angle(kDegree, 80 * kDegree);
    const auto aside = static_cast<IntAngle>(half * scenes.Between(-0.99, 0.99));
    const double toCentre = scenes.Between(1, 100);
    const double radius = toCentre * std::sin(half * kRadPerUnit);
    // Along a ray that leaves the middle by `aside`, to the near side of the circle.
    const double across = toCentre * std::sin(aside * kRadPerUnit);
    const double dist =
        toCentre * std::cos(aside * kRadPerUnit) - std::sqrt(radius * radius - across * across);
    const AngDistRec ray = sighted(middle + aside);
    AngDistRec left = sighted(middle - half);
    AngDistRec right = sighted(middle + half);
    if (i % 2 == 0) {
      std::swap(left, right);
    }
    const Motion motion{1, middle * kRadPerUnit, scenes.Between(-1e3, 1e3),
                        scenes.Between(-1e3, 1e3)};
    const CoordPt station = motion(Pt(0, 0));
    const AngleDistObs surface{ray.azimuth, ray.zenith, dist};
    AngleDistObs obs;
    CoordPt point = Pt(0, 0, 77);
    double found = 0;
    ASSERT_EQ(STATUS_OK, KavoCalcOfsCircle(&surface, 0, left.azimuth, left.zenith, right.azimuth,
                                           right.zenith, &station, -1, &obs, &point, &found));
    // Near an edge the root in the formula loses half of its digits.
    EXPECT_NEAR(radius, found, 1e-7);
    ExpectAsked(motion(Pt(toCentre, 0, 77)), 1e-7);  // the elevation is the caller's
  }
}

}  // namespace
