#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "sights.hpp"

namespace {

using namespace kavo_test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr IntAngle kQuarter = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kHalf = ANGLE_HALF_CIRCLE;

// A level sight to one of three points on the axes, 100 m from the origin.
StnAngleObs Sight(const CoordPt& point, IntAngle ha, IntAngle va = kQuarter,
                  double heightTerm = 0.0) {
  return {point, ha, va, heightTerm};
}

CoordPt North() { return Pt(100, 0); }
CoordPt East() { return Pt(0, 100); }
CoordPt South() { return Pt(-100, 0); }
CoordPt NoPlace() { return Pt(0, 0, 5, COORD_HAS_ELEV); }

CoordPt WithElev(CoordPt point, double elev) {
  point.elev = elev;
  point.flags = kFull;
  return point;
}

// What the resection writes over a record that was Untouched.
StnSetupResult WrittenSetup(const CoordPt& station, IntAngle orient) {
  auto result = Untouched<StnSetupResult>();
  result.station = station;
  result.orient = orient;
  return result;
}

// Right angles make the centres midpoints, and everything exact.
TEST(ThreePointResection, AnswersWithEveryStatus) {
  const struct {
    const char* name;
    StnAngleObs obs0, obs1, obs2;
    std::int32_t status;
    StnSetupResult result;
  } rows[] = {
      {"right angles from the origin", Sight(North(), 0), Sight(East(), kQuarter),
       Sight(South(), kHalf), STATUS_OK, WrittenSetup(Written(0, 0), 0)},
      {"the circle zeroed a quarter further", Sight(North(), kQuarter), Sight(East(), kHalf),
       Sight(South(), 3 * kQuarter), STATUS_OK, WrittenSetup(Written(0, 0), -kQuarter)},
      {"opposite the zero the orientation is minus half a circle", Sight(South(), 0),
       Sight(Pt(0, -100), kQuarter), Sight(North(), kHalf), STATUS_OK,
       WrittenSetup(Written(0, 0), -kHalf)},
      {"one sight on face 2", Sight(North(), 0), Sight(East(), 3 * kQuarter, 3 * kQuarter),
       Sight(South(), kHalf), STATUS_OK, WrittenSetup(Written(0, 0), 0)},
      {"one elevation is taken alone", Sight(North(), 0), Sight(WithElev(East(), 1000), kQuarter),
       Sight(South(), kHalf), STATUS_OK, WrittenSetup(Written(0, 0, 1000, kFull), 0)},
      {"three elevations are averaged, with their height terms",
       Sight(WithElev(North(), 1000), 0, kQuarter, 0.5),
       Sight(WithElev(East(), 1004), kQuarter, kQuarter, -2.0),
       Sight(WithElev(South(), 1003), kHalf, kQuarter, 0.5), STATUS_OK,
       WrittenSetup(Written(0, 0, 1002, kFull), 0)},
      // Meant so: a full circle more is another direction. Its tangent is 0, the centre infinite,
      // the station no number, and the orientation what remains of ANGLE_INVALID.
      {"face-1 readings are not wrapped", Sight(North(), 0), Sight(East(), ANGLE_FULL_CIRCLE),
       Sight(South(), kHalf), STATUS_OK,
       WrittenSetup(Written(kNaN, kNaN), ANGLE_INVALID % ANGLE_FULL_CIRCLE)},
      {"a coordinate that is not a number", Sight(North(), 0), Sight(Pt(kNaN, 100), kQuarter),
       Sight(South(), kHalf), STATUS_OK,
       WrittenSetup(Written(kNaN, kNaN), ANGLE_INVALID % ANGLE_FULL_CIRCLE)},
      {"two diameters of one circle", Sight(North(), 0), Sight(South(), kQuarter),
       Sight(North(), kHalf), ERR_INDETERMINATE, Untouched<StnSetupResult>()},
      {"first and second reading equal", Sight(North(), 7), Sight(East(), 7), Sight(South(), 9),
       ERR_SAME_DIRECTION, Untouched<StnSetupResult>()},
      {"first and third reading equal", Sight(North(), 7), Sight(East(), 8), Sight(South(), 7),
       ERR_SAME_DIRECTION, Untouched<StnSetupResult>()},
      {"second and third reading equal", Sight(North(), 6), Sight(East(), 7), Sight(South(), 7),
       ERR_SAME_DIRECTION, Untouched<StnSetupResult>()},
      {"equal once both are on face 1", Sight(North(), 7), Sight(East(), kHalf + 7, 3 * kQuarter),
       Sight(South(), 9), ERR_SAME_DIRECTION, Untouched<StnSetupResult>()},
      {"no first point, looked at before the readings", Sight(NoPlace(), 7), Sight(East(), 7),
       Sight(South(), 7), ERR_POINT_INVALID, Untouched<StnSetupResult>()},
      {"no second point", Sight(North(), 7), Sight(NoPlace(), 7), Sight(South(), 7),
       ERR_POINT_INVALID, Untouched<StnSetupResult>()},
      {"no third point", Sight(North(), 7), Sight(East(), 7), Sight(NoPlace(), 7),
       ERR_POINT_INVALID, Untouched<StnSetupResult>()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto result = Untouched<StnSetupResult>();
    EXPECT_EQ(row.status, KavoSTN3PtResect(&row.obs0, &row.obs1, &row.obs2, &result));
    EXPECT_EQ(Text(row.result), Text(result));
  }
}

// A station on the circle through the points: the centres differ in their last digits, and that is
// enough.
TEST(ThreePointResection, RefusesOnlyCentresThatCoincideExactly) {
  const auto obs0 = Sight(North(), 0);
  const auto obs1 = Sight(East(), 45 * kDegree);
  const auto obs2 = Sight(South(), 90 * kDegree);
  auto result = Untouched<StnSetupResult>();
  EXPECT_EQ(STATUS_OK, KavoSTN3PtResect(&obs0, &obs1, &obs2, &result));
}

// A quarter and three quarters are exact. One less full circle is the same angle, but it goes
// through a tangent that is not infinite.
TEST(ThreePointResection, TakesOnlyTwoExactAnglesForRightOnes) {
  const auto station = [](IntAngle first, IntAngle zero) {
    const CoordPt origin = Pt(0, 0);
    const auto obs0 = Sight(PointAt(origin, first, 200), InCircle(first + zero));
    const auto obs1 = Sight(PointAt(origin, 0, 1), InCircle(zero));
    const auto obs2 = Sight(PointAt(origin, 120 * kDegree, 150), InCircle(120 * kDegree + zero));
    StnSetupResult result{};
    EXPECT_EQ(STATUS_OK, KavoSTN3PtResect(&obs0, &obs1, &obs2, &result));
    EXPECT_NEAR(0.0, std::hypot(result.station.north, result.station.east), 1e-12);
    return Text(result.station);
  };
  EXPECT_NE(station(3 * kQuarter, kHalf), station(3 * kQuarter, 0)) << "a quarter";
  EXPECT_NE(station(kQuarter, 3 * kQuarter), station(kQuarter, 0)) << "three quarters";
}

struct Scene {
  CoordPt station;
  IntAngle orient;
  StnAngleObs sights[3];
};

// How far a station is from the circle through the points, as a part of its radius.
double OffCircle(const CoordPt& station, const StnAngleObs (&sights)[3]) {
  const CoordPt& a = sights[0].point;
  const double bn = sights[1].point.north - a.north;
  const double be = sights[1].point.east - a.east;
  const double cn = sights[2].point.north - a.north;
  const double ce = sights[2].point.east - a.east;
  const double twiceArea2 = 2.0 * (bn * ce - be * cn);
  const double bb = bn * bn + be * be;
  const double cc = cn * cn + ce * ce;
  const double un = (ce * bb - be * cc) / twiceArea2;
  const double ue = (bn * cc - cn * bb) / twiceArea2;
  const double radius = std::hypot(un, ue);
  return std::fabs(std::hypot(station.north - a.north - un, station.east - a.east - ue) / radius -
                   1.0);
}

// Points in whole-unit directions and zenith angles from a station, with elevations.
Scene DrawScene(Random& random) {
  Scene scene{};
  scene.station =
      Pt(random.Metres(-1000, 1000), random.Metres(-1000, 1000), random.Metres(-100, 100), kFull);
  scene.orient = random.Angle(-kHalf, kHalf - 1);
  for (auto& sight : scene.sights) {
    const double horizDist = random.Metres(20, 1000);
    sight.ha = random.Direction();
    sight.va = random.Angle(60 * kDegree, 120 * kDegree);
    sight.heightTerm = random.Metres(-2, 2);
    sight.point = PointAt(scene.station, sight.ha + scene.orient, horizDist);
    const auto rise = static_cast<double>(horizDist / std::tan(Radians(sight.va)));
    sight.point = WithElev(sight.point, scene.station.elev + rise - sight.heightTerm);
  }
  return scene;
}

bool IsOrdinary(const Scene& scene) {
  const auto& [a, b, c] = scene.sights;
  return CrossWell(a.ha, b.ha, 10 * kDegree) && CrossWell(b.ha, c.ha, 10 * kDegree) &&
         CrossWell(c.ha, a.ha, 10 * kDegree) && OffCircle(scene.station, scene.sights) > 0.1;
}

Scene DrawOrdinary(Random& random) {
  while (true) {
    const Scene scene = DrawScene(random);
    if (IsOrdinary(scene)) {
      return scene;
    }
  }
}

StnSetupResult Resect(const StnAngleObs (&sights)[3]) {
  auto result = Untouched<StnSetupResult>();
  EXPECT_EQ(STATUS_OK, KavoSTN3PtResect(&sights[0], &sights[1], &sights[2], &result));
  return result;
}

// The laws hold for every ordinary station; the tolerance is the rounding of the coordinates, some
// 1e-13 m, times what the weakest geometry makes of it.
class ThreePointLaws : public testing::Test {
 protected:
  static constexpr int kScenes = 5000;
  static constexpr double kRounding = 1e-9;
  Random random{20261121};
};

TEST_F(ThreePointLaws, AnExactStationComesBack) {
  for (int i = 0; i < kScenes; ++i) {
    const Scene scene = DrawOrdinary(random);
    const auto result = Resect(scene.sights);
    ExpectStation(scene.station, result.station, kRounding);
    EXPECT_EQ(scene.orient, result.orient);
  }
}

TEST_F(ThreePointLaws, FaceTwoEqualsFaceOne) {
  for (int i = 0; i < kScenes; ++i) {
    Scene scene = DrawOrdinary(random);
    const auto faceOne = Resect(scene.sights);
    for (auto& sight : scene.sights) {
      if (random.Angle(0, 1) == 1) {
        sight.ha = InCircle(sight.ha + kHalf);
        sight.va = ANGLE_FULL_CIRCLE - sight.va;
      }
    }
    EXPECT_EQ(Text(faceOne), Text(Resect(scene.sights)));
  }
}

TEST_F(ThreePointLaws, ZeroingTheCircleElsewhereChangesOnlyTheOrientation) {
  for (int i = 0; i < kScenes; ++i) {
    Scene scene = DrawOrdinary(random);
    const IntAngle by = random.Direction();
    for (auto& sight : scene.sights) {
      sight.ha = InCircle(sight.ha + by);
    }
    const auto result = Resect(scene.sights);
    ExpectStation(scene.station, result.station, kRounding);
    EXPECT_EQ(InHalfCircle(scene.orient - by), result.orient);
  }
}

TEST_F(ThreePointLaws, ShiftingAndTurningTheSceneMovesTheStation) {
  for (int i = 0; i < kScenes; ++i) {
    Scene scene = DrawOrdinary(random);
    const double byNorth = random.Metres(-1000, 1000);
    const double byEast = random.Metres(-1000, 1000);
    const IntAngle by = random.Direction();
    const auto c = static_cast<double>(std::cos(Radians(by)));
    const auto s = static_cast<double>(std::sin(Radians(by)));
    const auto move = [&](CoordPt& p) {
      const double north = p.north;
      p.north = c * north - s * p.east + byNorth;
      p.east = s * north + c * p.east + byEast;
    };
    move(scene.station);
    for (auto& sight : scene.sights) {
      move(sight.point);
    }
    const auto result = Resect(scene.sights);
    ExpectStation(scene.station, result.station, kRounding);
    EXPECT_EQ(InHalfCircle(scene.orient + by), result.orient);
  }
}

}  // namespace
