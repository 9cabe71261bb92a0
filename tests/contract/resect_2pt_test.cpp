#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "sights.hpp"

namespace {

using namespace kavo_test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr IntAngle kQuarter = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kHalf = ANGLE_HALF_CIRCLE;
// What the orientation becomes when the direction to the first point does not exist.
constexpr IntAngle kNoOrient = ANGLE_INVALID % ANGLE_FULL_CIRCLE;

StnDistObs Sight(const CoordPt& point, IntAngle ha, double hd, const CoordPt& local = Pt(0, 0),
                 double vd = 0.0, double heightTerm = 0.0) {
  return {point, local, ha, kQuarter, hd, vd, heightTerm};
}

StnDistObs OnFaceTwo(StnDistObs obs) {
  obs.ha = InCircle(obs.ha + kHalf);
  obs.va = ANGLE_FULL_CIRCLE - obs.va;
  return obs;
}

struct Checks {
  double distCheck;
  double distResid1;
  double distResid2;
  double elevDiff;
};

// What the resection writes over a record that was Untouched.
StnSetupResult WrittenSetup(const CoordPt& station, IntAngle orient, const Checks& checks) {
  auto result = Untouched<StnSetupResult>();
  result.station = station;
  result.orient = orient;
  result.distCheck = checks.distCheck;
  result.distResid1 = checks.distResid1;
  result.distResid2 = checks.distResid2;
  result.elevDiff = checks.elevDiff;
  return result;
}

// What it writes when it finds no position: the numbers that the record held are next to nothing
// beside the coordinates of a point.
StnSetupResult NoPosition(double elev, std::uint16_t flags, const Checks& checks) {
  const auto held = Untouched<StnSetupResult>();
  return WrittenSetup(Written(held.station.north, held.station.east, elev, flags), held.orient,
                      checks);
}

// Two known points 10 m apart on a line to the north, and 5 m apart across a corner.
CoordPt Near(double elev = 0.0, std::uint16_t flags = kPlan) { return Pt(0, 0, elev, flags); }
CoordPt Far(double elev = 0.0, std::uint16_t flags = kPlan) { return Pt(10, 0, elev, flags); }
CoordPt P(double elev = 0.0, std::uint16_t flags = kPlan) { return Pt(10, 23, elev, flags); }
CoordPt Q(double elev = 0.0, std::uint16_t flags = kPlan) { return Pt(6, 20, elev, flags); }
CoordPt NoPlace() { return Pt(1, 1, 1, COORD_HAS_ELEV); }

TEST(TwoPointResection, AnswersWithEveryStatus) {
  const double eastOff = 4.0 * std::cos(std::acos(-1.0) / 2.0);
  const struct {
    const char* name;
    StnDistObs obsA, obsB;
    std::int32_t status;
    StnSetupResult result;
  } rows[] = {
      {"station, point with the distance and other point in line", Sight(Near(), 7, 4.0),
       Sight(Far(), 7, 0.0), STATUS_OK,
       WrittenSetup(Written(-4, eastOff), -7, {0.0, 4.0 - std::hypot(4.0, eastOff), 0.0, 0.0})},
      {"station between the points", Sight(Near(), 0, 4.0), Sight(Far(), kHalf, 0.0), STATUS_OK,
       WrittenSetup(Written(4, eastOff), -kHalf, {0.0, 4.0 - std::hypot(4.0, eastOff), 0.0, 0.0})},
      // On an easterly base the exact case shows: phi is 0, not the rounding of a sine of pi.
      {"exactly between them", Sight(Near(), 0, 4.0), Sight(Pt(0, 10), kHalf, 0.0), STATUS_OK,
       WrittenSetup(Written(0, 4), -kQuarter, {0.0, 0.0, 0.0, 0.0})},
      {"meant so: minus half a circle is not the exact case", Sight(Near(), kHalf, 4.0),
       Sight(Pt(0, 10), 0, 0.0), STATUS_OK,
       WrittenSetup(Written(-4.0 * std::sin(std::atan2(6.0 * std::sin(std::acos(-1.0)), 10.0)), 4),
                    kQuarter, {0.0, 0.0, 0.0, 0.0})},
      {"the second point has the distance, the first one still gives the orientation",
       Sight(Far(), 7, 0.0), Sight(Near(), 7, 4.0), STATUS_OK,
       WrittenSetup(Written(-4, eastOff), -7, {0.0, 0.0, 4.0 - std::hypot(4.0, eastOff), 0.0})},
      // Station (10, 20), turned by a quarter, 3 m and 4 m from the corner's points.
      {"two distances", Sight(P(), 0, 3.0, Pt(3, 0)), Sight(Q(), kQuarter, 4.0, Pt(0, 4)),
       STATUS_OK, WrittenSetup(Written(10, 20), kQuarter, {0.0, 0.0, 0.0, 0.0})},
      {"local positions need no flags", Sight(P(), 0, 3.0, Pt(3, 0, 0, 0)),
       Sight(Q(), kQuarter, 4.0, Pt(0, 4, 0, 0)), STATUS_OK,
       WrittenSetup(Written(10, 20), kQuarter, {0.0, 0.0, 0.0, 0.0})},
      {"local positions twice too long, distances 1/2 too long and 1/4 too short",
       Sight(P(), 0, 3.5, Pt(6, 0)), Sight(Q(), kQuarter, 3.75, Pt(0, 8)), STATUS_OK,
       WrittenSetup(Written(10, 20), kQuarter, {-5.0, 0.5, -0.25, 0.0})},
      {"two elevations", Sight(P(100, kFull), 0, 3.0, Pt(3, 0), 2.0, 1.5),
       Sight(Q(90, kFull), kQuarter, 4.0, Pt(0, 4), -8.0, 1.0), STATUS_OK,
       WrittenSetup(Written(10, 20, 99.25, kFull), kQuarter, {0.0, 0.0, 0.0, 0.5})},
      {"an elevation at one point alone", Sight(P(100, kFull), 0, 3.0, Pt(3, 0), 2.0, 1.5),
       Sight(Q(90), kQuarter, 4.0, Pt(0, 4), -8.0, 1.0), STATUS_OK,
       WrittenSetup(Written(10, 20, 99.5, kFull), kQuarter, {0.0, 0.0, 0.0, 0.0})},
      {"a sight without distance gives no elevation", Sight(Near(100, kFull), 0, 0.0),
       Sight(Far(90, kFull), kHalf, 4.0, Pt(0, 0), 1.0, 0.25), STATUS_OK,
       WrittenSetup(Written(6, eastOff, 89.25, kFull), -kHalf, {0.0, 0.0, 0.0, 0.0})},
      {"first its difference, then its height term",
       Sight(P(0x1p53, kFull), 0, 3.0, Pt(3, 0), 0x1p53, 1.0),
       Sight(Q(0x1p53, kFull), kQuarter, 4.0, Pt(0, 4), 0x1p53, 1.0), STATUS_OK,
       WrittenSetup(Written(10, 20, 1.0, kFull), kQuarter, {0.0, 0.0, 0.0, 0.0})},
      {"a distance that is not a number is a distance", Sight(Near(), 0, kNaN),
       Sight(Far(), kQuarter, 0.0), STATUS_OK,
       WrittenSetup(Written(kNaN, kNaN), kNoOrient, {0.0, kNaN, 0.0, 0.0})},
      {"one distance longer than the base: the elevation and the checks are written",
       Sight(Pt(3, 4, 100, kFull), 0, 5.5, Pt(0, 0), 2.0, 1.0), Sight(Pt(6, 8), kQuarter, 0.0),
       ERR_INDETERMINATE, NoPosition(99, kFull, {0.0, 0.5, 0.0, 0.0})},
      {"so they are when the second sight has it", Sight(Pt(3, 4), 0, 0.0),
       Sight(Pt(6, 8), kQuarter, 5.5), ERR_INDETERMINATE,
       NoPosition(0, kPlan, {0.0, 0.0, -4.5, 0.0})},
      {"two local positions that coincide", Sight(Pt(3, 4, 100, kFull), 0, 5.5, Pt(3, 0), 2.0, 1.0),
       Sight(Pt(6, 8, 90, kFull), kQuarter, 9.0, Pt(3, 0), -8.0, 0.0), ERR_NO_DIRECTION,
       NoPosition(98.5, kFull, {5.0, 0.5, -1.0, 1.0})},
      {"no distance, for all the elevations", Sight(Near(100, kFull), 0, 0.0),
       Sight(Far(90, kFull), kQuarter, -0.0), ERR_NO_DISTANCE, Untouched<StnSetupResult>()},
      {"one known point, looked at before the distances", Sight(Near(100, kFull), 0, 0.0),
       Sight(Near(90, kFull), kQuarter, 0.0), ERR_NO_DIRECTION, Untouched<StnSetupResult>()},
      {"no first point, looked at before all", Sight(NoPlace(), 0, 0.0), Sight(NoPlace(), 0, 0.0),
       ERR_POINT_INVALID, Untouched<StnSetupResult>()},
      {"no second point", Sight(Near(), 0, 1.0), Sight(NoPlace(), 0, 1.0), ERR_POINT_INVALID,
       Untouched<StnSetupResult>()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto result = Untouched<StnSetupResult>();
    EXPECT_EQ(row.status, KavoSTN2PtResect(&row.obsA, &row.obsB, &result));
    EXPECT_EQ(Text(row.result), Text(result));
  }
}

constexpr double kRounding = 1e-9;

struct Scene {
  CoordPt station;
  IntAngle orient;
  StnDistObs obsA;
  StnDistObs obsB;
};

// A point in a whole-unit direction from the station, with its distance, local position and height.
StnDistObs DrawSight(Random& random, const Scene& scene) {
  StnDistObs obs{};
  obs.ha = random.Direction();
  obs.va = random.Angle(60 * kDegree, 120 * kDegree);
  obs.hd = random.Metres(20, 1000);
  obs.vd = random.Metres(-50, 50);
  obs.heightTerm = random.Metres(-2, 2);
  obs.point = PointAt(scene.station, obs.ha + scene.orient, obs.hd);
  obs.point.elev = scene.station.elev + obs.vd - obs.heightTerm;
  obs.point.flags = kFull;
  obs.local = PointAt(Pt(0, 0), obs.ha, obs.hd);
  return obs;
}

Scene DrawScene(Random& random) {
  Scene scene{};
  scene.station =
      Pt(random.Metres(-1000, 1000), random.Metres(-1000, 1000), random.Metres(-100, 100), kFull);
  scene.orient = random.Angle(-kHalf, kHalf - 1);
  do {
    scene.obsA = DrawSight(random, scene);
    scene.obsB = DrawSight(random, scene);
  } while (!CrossWell(scene.obsA.ha, scene.obsB.ha, 10 * kDegree));
  return scene;
}

double Base(const Scene& scene) {
  return std::hypot(scene.obsB.point.north - scene.obsA.point.north,
                    scene.obsB.point.east - scene.obsA.point.east);
}

// The station is well determined by the distance to one point when the triangle is far from a right
// angle at the other point, where the distance ceases to reach the ray.
bool OneDistanceSuffices(const Scene& scene, double hd) {
  const double sine = std::sin(static_cast<double>(Radians(scene.obsB.ha - scene.obsA.ha)));
  return hd < Base(scene) && std::fabs(hd / Base(scene) * sine) < 0.95;
}

void ExpectScene(const Scene& scene) {
  auto result = Untouched<StnSetupResult>();
  ASSERT_EQ(STATUS_OK, KavoSTN2PtResect(&scene.obsA, &scene.obsB, &result));
  ExpectStation(scene.station, result.station, kRounding);
  EXPECT_EQ(scene.orient, result.orient);
  const double worst = std::max({std::fabs(result.distCheck), std::fabs(result.distResid1),
                                 std::fabs(result.distResid2), std::fabs(result.elevDiff)});
  EXPECT_LT(worst, kRounding);
}

// Points 147.6 m apart, the first one at 109.5 m and the second one at 196.4 m, readings rounded.
TEST(TwoPointResection, SolvesTheTriangleFromTheDistanceToOnePoint) {
  const CoordPt station = Pt(12.3, -45.6);
  const IntAngle orient = 33 * kDegree;
  const auto reading = [&](double north, double east) {
    const double azimuth = std::atan2(east - station.east, north - station.north);
    return static_cast<IntAngle>(std::lround(azimuth / std::acos(-1.0) * kHalf)) - orient;
  };
  const double toA = std::hypot(100 - station.north, 20 - station.east);
  const double toB = std::hypot(30 - station.north, 150 - station.east);
  auto obsA = Sight(Pt(100, 20), reading(100, 20), toA);
  auto obsB = Sight(Pt(30, 150), reading(30, 150), 0.0);
  StnSetupResult result{};
  ASSERT_EQ(STATUS_OK, KavoSTN2PtResect(&obsA, &obsB, &result));
  // A unit is 3e-7 rad; at these distances the angle between the readings tells 6e-5 m.
  ExpectPlace(station, result.station, 1e-4);
  EXPECT_NEAR(orient, result.orient, 1);
  EXPECT_NEAR(0.0, result.distResid1, 1e-12);
  obsA.hd = 0.0;
  obsB.hd = toB;
  EXPECT_EQ(ERR_INDETERMINATE, KavoSTN2PtResect(&obsA, &obsB, &result));
  // As long as the base is not yet too long.
  obsB.hd = std::hypot(30 - 100, 150 - 20);
  EXPECT_EQ(STATUS_OK, KavoSTN2PtResect(&obsA, &obsB, &result));
}

TEST(TwoPointLaws, AnExactStationComesBack) {
  Random random(20261121);
  int solved[3] = {};
  for (int i = 0; i < 20000; ++i) {
    Scene scene = DrawScene(random);
    const double hdA = scene.obsA.hd;
    const double hdB = scene.obsB.hd;
    ExpectScene(scene);
    ++solved[0];
    if (OneDistanceSuffices(scene, hdA)) {
      scene.obsB.hd = 0.0;
      ExpectScene(scene);
      ++solved[1];
    }
    if (OneDistanceSuffices(scene, hdB)) {
      scene.obsA.hd = 0.0;
      scene.obsB.hd = hdB;
      ExpectScene(scene);
      ++solved[2];
    }
  }
  EXPECT_GT(solved[1], 5000);
  EXPECT_GT(solved[2], 5000);
}

TEST(TwoPointLaws, FaceTwoEqualsFaceOne) {
  Random random(20261122);
  for (int i = 0; i < 5000; ++i) {
    Scene scene = DrawScene(random);
    if (OneDistanceSuffices(scene, scene.obsA.hd)) {
      scene.obsB.hd = 0.0;
    }
    StnSetupResult faceOne{};
    StnSetupResult faceTwo{};
    ASSERT_EQ(STATUS_OK, KavoSTN2PtResect(&scene.obsA, &scene.obsB, &faceOne));
    const StnDistObs turnedA = OnFaceTwo(scene.obsA);
    const StnDistObs turnedB = OnFaceTwo(scene.obsB);
    ASSERT_EQ(STATUS_OK, KavoSTN2PtResect(&turnedA, &turnedB, &faceTwo));
    EXPECT_EQ(Text(faceOne), Text(faceTwo));
  }
}

// The fit is a similarity: a frame that measures everything too long by one factor gives the same
// station, and the base check tells the factor.
TEST(TwoPointLaws, TheScaleOfTheLocalFrameIsFree) {
  Random random(20261123);
  for (int i = 0; i < 5000; ++i) {
    Scene scene = DrawScene(random);
    const double scale = random.Metres(0.5, 2.0);
    for (StnDistObs* obs : {&scene.obsA, &scene.obsB}) {
      obs->local.north *= scale;
      obs->local.east *= scale;
    }
    StnSetupResult result{};
    ASSERT_EQ(STATUS_OK, KavoSTN2PtResect(&scene.obsA, &scene.obsB, &result));
    ExpectPlace(scene.station, result.station, kRounding);
    EXPECT_NEAR((1.0 - scale) * Base(scene), result.distCheck, kRounding);
  }
}

}  // namespace
