#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>

#include "sights.hpp"

namespace {

using namespace kavo_test;

constexpr IntAngle kQuarter = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kHalf = ANGLE_HALF_CIRCLE;

StnSetupResult ResectAngles(const StnDistObs (&sights)[3]) {
  StnAngleObs obs[3];
  std::transform(std::begin(sights), std::end(sights), obs, [](const StnDistObs& sight) {
    return StnAngleObs{sight.point, sight.ha, sight.va, sight.heightTerm};
  });
  auto result = Untouched<StnSetupResult>();
  EXPECT_EQ(STATUS_OK, KavoSTN3PtResect(&obs[0], &obs[1], &obs[2], &result));
  return result;
}

StnSetupResult ResectDistances(const StnDistObs& obsA, const StnDistObs& obsB) {
  auto result = Untouched<StnSetupResult>();
  EXPECT_EQ(STATUS_OK, KavoSTN2PtResect(&obsA, &obsB, &result));
  return result;
}

// A quarter and three quarters are exact. One less full circle is the same angle, but it goes
// through a tangent that is not infinite.
TEST(ThreePointResection, TakesOnlyTwoExactAnglesForRightOnes) {
  const auto station = [](IntAngle first, IntAngle zero) {
    const auto level = [&](IntAngle azimuth, double horizDist) {
      const CoordPt point = PointAt(Pt(0, 0), azimuth, horizDist);
      return StnDistObs{point, {}, InCircle(azimuth + zero), kQuarter, 0.0, 0.0, 0.0};
    };
    const auto result = ResectAngles({level(first, 200), level(0, 1), level(120 * kDegree, 150)});
    ExpectPlace(Pt(0, 0), result.station, 1e-12);
    return Text(result.station);
  };
  EXPECT_NE(station(3 * kQuarter, kHalf), station(3 * kQuarter, 0)) << "a quarter";
  EXPECT_NE(station(kQuarter, 3 * kQuarter), station(kQuarter, 0)) << "three quarters";
}

struct Scene {
  CoordPt station;
  IntAngle orient;
  StnDistObs sights[3];
};

// A point in a whole-unit direction from the station, with all that a set-up may want of it.
StnDistObs DrawSight(Random& random, const Scene& scene) {
  StnDistObs obs{};
  obs.ha = random.Direction();
  obs.va = random.Angle(60 * kDegree, 120 * kDegree);
  obs.hd = random.Metres(20, 1000);
  obs.vd = static_cast<double>(obs.hd / std::tan(Radians(obs.va)));
  obs.heightTerm = random.Metres(-2, 2);
  obs.point = PointAt(scene.station, obs.ha + scene.orient, obs.hd);
  obs.point.elev = scene.station.elev + obs.vd - obs.heightTerm;
  obs.point.flags = kFull;
  obs.local = PointAt(Pt(0, 0), obs.ha, obs.hd);
  return obs;
}

double SineBetween(const StnDistObs& a, const StnDistObs& b) {
  return static_cast<double>(std::sin(Radians(b.ha) - Radians(a.ha)));
}

// True when no two sights are nearly in line, and the station is well off the circle through the
// points: inverted at the station, points on a circle with it fall on one line, and the triangle
// that they make has no area.
bool IsOrdinary(const StnDistObs (&sights)[3]) {
  double area = 0.0;
  double parts = 0.0;
  for (int i = 0; i < 3; ++i) {
    const auto& a = sights[i];
    const auto& b = sights[(i + 1) % 3];
    if (!CrossWell(a.ha, b.ha, 10 * kDegree)) {
      return false;
    }
    const double part = SineBetween(a, b) / (a.hd * b.hd);
    area += part;
    parts += std::fabs(part);
  }
  return std::fabs(area) > 0.1 * parts;
}

Scene DrawScene(Random& random) {
  Scene scene{};
  scene.station =
      Pt(random.Metres(-1000, 1000), random.Metres(-1000, 1000), random.Metres(-100, 100), kFull);
  scene.orient = random.Angle(-kHalf, kHalf - 1);
  do {
    std::generate(std::begin(scene.sights), std::end(scene.sights),
                  [&] { return DrawSight(random, scene); });
  } while (!IsOrdinary(scene.sights));
  return scene;
}

void TurnToFaceTwo(StnDistObs& obs) {
  obs.ha = InCircle(obs.ha + kHalf);
  obs.va = ANGLE_FULL_CIRCLE - obs.va;
}

double Base(const Scene& scene) {
  return std::hypot(scene.sights[1].point.north - scene.sights[0].point.north,
                    scene.sights[1].point.east - scene.sights[0].point.east);
}

// The station is well determined by the distance to one point when the triangle is far from a right
// angle at the other point, where the distance ceases to reach the ray.
bool OneDistanceSuffices(const Scene& scene, double hd) {
  const double sine = SineBetween(scene.sights[0], scene.sights[1]);
  return hd < Base(scene) && std::fabs(hd / Base(scene) * sine) < 0.95;
}

// The laws hold for every ordinary station, wherever its circle is zeroed and however its points
// are shifted and turned; the tolerance is the rounding of the coordinates, some 1e-13 m, times
// what the weakest geometry makes of it.
class ResectionLaws : public testing::Test {
 protected:
  static constexpr int kScenes = 10000;
  static constexpr double kRounding = 1e-9;

  // Also that either face gives the same to the bit.
  static void ExpectStationFromDistances(const Scene& scene, double hdA, double hdB) {
    StnDistObs obsA = scene.sights[0];
    StnDistObs obsB = scene.sights[1];
    obsA.hd = hdA;
    obsB.hd = hdB;
    const auto result = ResectDistances(obsA, obsB);
    ExpectStation(scene.station, result.station, kRounding);
    EXPECT_EQ(scene.orient, result.orient);
    for (const double check :
         {result.distCheck, result.distResid1, result.distResid2, result.elevDiff}) {
      EXPECT_NEAR(0.0, check, kRounding);
    }
    TurnToFaceTwo(obsA);
    TurnToFaceTwo(obsB);
    EXPECT_EQ(Text(result), Text(ResectDistances(obsA, obsB)));
  }

  Random random{20261121};
};

TEST_F(ResectionLaws, AnExactStationComesBackFromThreeDirectionsOnAnyFace) {
  for (int i = 0; i < kScenes; ++i) {
    Scene scene = DrawScene(random);
    const auto result = ResectAngles(scene.sights);
    ExpectStation(scene.station, result.station, kRounding);
    EXPECT_EQ(scene.orient, result.orient);
    for (auto& sight : scene.sights) {
      if (random.Angle(0, 1) == 1) {
        TurnToFaceTwo(sight);
      }
    }
    EXPECT_EQ(Text(result), Text(ResectAngles(scene.sights)));
  }
}

TEST_F(ResectionLaws, AnExactStationComesBackFromOneDistanceOrTwo) {
  int solvedByA = 0;
  int solvedByB = 0;
  for (int i = 0; i < kScenes; ++i) {
    const Scene scene = DrawScene(random);
    const double hdA = scene.sights[0].hd;
    const double hdB = scene.sights[1].hd;
    ExpectStationFromDistances(scene, hdA, hdB);
    if (OneDistanceSuffices(scene, hdA)) {
      ExpectStationFromDistances(scene, hdA, 0.0);
      ++solvedByA;
    }
    if (OneDistanceSuffices(scene, hdB)) {
      ExpectStationFromDistances(scene, 0.0, hdB);
      ++solvedByB;
    }
  }
  EXPECT_GT(solvedByA, kScenes / 4);
  EXPECT_GT(solvedByB, kScenes / 4);
}

// The fit is a similarity: a frame that measures everything too long by one factor gives the same
// station, and the base check tells the factor.
TEST_F(ResectionLaws, TheScaleOfTheLocalFrameIsFree) {
  for (int i = 0; i < kScenes; ++i) {
    Scene scene = DrawScene(random);
    const double scale = random.Metres(0.5, 2.0);
    for (auto& sight : scene.sights) {
      sight.local.north *= scale;
      sight.local.east *= scale;
    }
    const auto result = ResectDistances(scene.sights[0], scene.sights[1]);
    ExpectPlace(scene.station, result.station, kRounding);
    EXPECT_NEAR((1.0 - scale) * Base(scene), result.distCheck, kRounding);
  }
}

}  // namespace
