// Measurements simulated from coordinates: each program gives back what was built into its scene.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "scenes.hpp"

namespace {

using namespace kavo_test;

// The sight from a station to a point, as read on a circle of any orientation, on either face.
AngDistRec Read(const CoordPt& station, const CoordPt& point, IntAngle orientation, bool face2) {
  AngDistRec sight;
  EXPECT_EQ(STATUS_OK, KavoCogoCoordToAngDist(&station, &point, &sight));
  sight.azimuth = (sight.azimuth + orientation) % ANGLE_FULL_CIRCLE;
  return face2 ? OnFace2(sight) : sight;
}

TEST(RemoteElevation, RecoversHeightAndOffset) {
  Scenes scenes;
  const CoordPt station = Pt(0, 0, 0, kFull);
  for (int i = 0; i < kScenes; ++i) {
    const double dist = scenes.Between(20, 200);
    const Motion turn{1, scenes.Between(-4, 4), 0, 0};
    const double base = scenes.Between(-50, 50);
    const double height = scenes.Between(-50, 50);
    const double side = scenes.Between(-50, 50);
    const IntAngle orientation = scenes.Angle(0, ANGLE_FULL_CIRCLE - 1);
    const auto sight = [&](double right, double elev, bool face2) {
      return Read(station, turn(Pt(dist, right, elev, kFull)), orientation, face2);
    };
    const AngDistRec reflector = sight(0, base, i % 2 == 0);
    ASSERT_EQ(STATUS_OK, KavoREMSetBase(&reflector));
    // A unit of zenith (1.5e-7 rad half up, half down) at a steep sight of either base or remote.
    const double steep = 1 + std::max((base + height) * (base + height), 2500.0) / (dist * dist);
    for (const bool face2 : {false, true}) {
      const AngDistRec above = sight(0, base + height, face2);
      const AngDistRec beside = sight(side, 0, face2);
      CoordPt out;
      ASSERT_EQ(STATUS_OK, KavoREMCalc(above.azimuth, above.zenith, &out));
      ASSERT_NEAR(height, out.elev, 4e-7 * dist * steep);
      ASSERT_EQ(STATUS_OK, KavoREMCalc(beside.azimuth, beside.zenith, &out));
      ASSERT_NEAR(side, out.north, 4e-7 * dist * (1 + side * side / (dist * dist)));
    }
  }
}

// A point built on the slope lies on it, and one moved off it is off by that much: on either side,
// wherever the cross-section lies, and with the slope's two points exchanged.
TEST(SlopeStaking, RecoversAPointOffTheSlope) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const double side = i % 2 == 0 ? 1.0 : -1.0;
    const double foot = scenes.Between(1, 50);
    const double top = foot + scenes.Between(1, 50);
    const double grade = scenes.Between(-1, 1);
    const double level = scenes.Between(-20, 20);
    const auto elevAt = [&](double offset) { return level + grade * (offset - foot); };
    const double offset = scenes.Between(1, 50);
    const double above = scenes.Between(-20, 20);
    const Motion motion = scenes.AnyMotion();
    const CoordPt reference = motion(Pt(0, 0));
    const CoordPt point = motion(Pt(0, offset, elevAt(offset) + above, kFull));
    for (const auto& [one, other] : {std::pair(foot, top), std::pair(top, foot)}) {
      SlopeStakeResult out;
      ASSERT_EQ(STATUS_OK, KavoBRSetSlope(elevAt(one), side * one, elevAt(other), side * other));
      ASSERT_EQ(STATUS_OK, KavoBRCalc(&reference, &point, &out));
      ASSERT_NEAR(offset, out.horizDist, 1e-11);
      ASSERT_NEAR(above, out.vertDiff, 1e-9);
      // Up by `above` is, at the point's elevation, outside by -above / grade.
      ASSERT_NEAR(-above, out.horizDiff * grade, 1e-9);
    }
  }
}

// Both reflectors of a pole whose tip is known lead back to the tip.
TEST(TwoPointTarget, RecoversTheTipOfAPole) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const CoordPt tip = scenes.Point();
    const CoordPt lean = scenes.Point();
    const double length = std::hypot(lean.north, lean.east, lean.elev);
    const auto onPole = [&](double up) {
      const double part = up / length;
      return Pt(tip.north + lean.north * part, tip.east + lean.east * part,
                tip.elev + lean.elev * part, kFull);
    };
    const double target = scenes.Between(0.1, 3);
    const double apart = scenes.Between(0.1, 3);
    const CoordPt second = onPole(target);
    const CoordPt first = onPole(target + apart);
    for (const double nominal : {0.0, apart}) {
      double separation = 0;
      CoordPt out;
      ASSERT_EQ(STATUS_OK, KavoCalc2PtTarget(&first, &second, nominal, target, &separation, &out));
      ASSERT_NEAR(apart, separation, 1e-11);
      ASSERT_TRUE(Near(tip, out, 1e-9));
      ASSERT_NEAR(tip.elev, out.elev, 1e-9);
    }
  }
}

// The one output whose reserved bytes are written.
TEST(TwoPointTarget, CopiesTheWholeRecordForNoDistance) {
  const CoordPt first = Pt(10, 20, 30, kFull);
  const CoordPt second = Pt(11, 22, 32, kFull);
  double separation = 0;
  auto out = Untouched<CoordPt>();
  ASSERT_EQ(STATUS_OK, KavoCalc2PtTarget(&first, &second, 0, 0, &separation, &out));
  EXPECT_EQ(Text(second), Text(out));
}

}  // namespace
