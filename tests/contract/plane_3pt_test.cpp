#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "at_load.hpp"
#include "points.hpp"

namespace {

using namespace kavo_test;

constexpr IntAngle kQuarter = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kHalf = ANGLE_HALF_CIRCLE;

struct Pierced {
  std::int32_t status;
  CoordPt point;
  double along;
  double across;
};

std::string Text(const Pierced& p) {
  return kavo_test::Text(p.status) + ": " + kavo_test::Text(p.point) + ", along " +
         kavo_test::Text(p.along) + ", across " + kavo_test::Text(p.across);
}

Pierced Sight(IntAngle ha, IntAngle va, const CoordPt& station, double instrumentHeight) {
  auto out = Untouched<Pierced>();
  out.status =
      KavoREFCalc3PtPlane(ha, va, &station, instrumentHeight, &out.point, &out.along, &out.across);
  return out;
}

// The preset outputs, which say that there is no point.
Pierced Nowhere(std::int32_t status) {
  return {status, Written(VALUE_INVALID, VALUE_INVALID, VALUE_INVALID, kFull), VALUE_INVALID,
          VALUE_INVALID};
}

void ExpectNear(const Pierced& expected, const Pierced& actual, double reach) {
  EXPECT_EQ(expected.status, actual.status);
  EXPECT_EQ(expected.point.flags, actual.point.flags);
  EXPECT_NEAR(expected.point.north, actual.point.north, reach);
  EXPECT_NEAR(expected.point.east, actual.point.east, reach);
  EXPECT_NEAR(expected.point.elev, actual.point.elev, reach);
  EXPECT_NEAR(expected.along, actual.along, reach);
  EXPECT_NEAR(expected.across, actual.across, reach);
}

Pierced Hit(double north, double east, double elev, double along, double across) {
  return {STATUS_OK, Written(north, east, elev, kFull), along, across};
}

void SetWall() {  // runs east at north 10; no third point
  const CoordPt p1 = Pt(10, 0, 0, kFull);
  const CoordPt p2 = Pt(10, 5, 0, kFull);
  ASSERT_EQ(STATUS_OK, KavoREFSet3PtBasePlane(&p1, &p2, nullptr));
}

void SetCeiling() {  // level at elevation 3, along it due north
  const CoordPt p1 = Pt(0, 0, 3, kFull);
  const CoordPt p2 = Pt(4, 0, 3, kFull);
  const CoordPt p3 = Pt(0, 4, 3, kFull);
  ASSERT_EQ(STATUS_OK, KavoREFSet3PtBasePlane(&p1, &p2, &p3));
}

TEST(Plane3Pt, IsPiercedBySights) {
  const CoordPt south = Pt(0, 0, 0, 0);  // the flags of a station are not looked at
  const CoordPt north = Pt(20, 3, 0);
  SetWall();
  const struct {
    const char* name;
    IntAngle ha;
    IntAngle va;
    const CoordPt& station;
    Pierced out;
  } rows[] = {
      {"level, from the south: across is positive downwards", 0, kQuarter, south,
       Hit(10, 0, 1.5, 0, -1.5)},
      {"from the north: upwards", kHalf, kQuarter, north, Hit(10, 3, 1.5, 3, 1.5)},
      {"from the south again", 0, kQuarter, south, Hit(10, 0, 1.5, 0, -1.5)},
      {"on face 2", kHalf, 3 * kQuarter, south, Hit(10, 0, 1.5, 0, -1.5)},
      {"north east, up one in one", 45 * kDegree, 45 * kDegree, south,
       Hit(10, 10, 1.5 + std::sqrt(200.0), 10, -1.5 - std::sqrt(200.0))},
      {"readings beyond a circle", -ANGLE_FULL_CIRCLE, -3 * kQuarter, south,
       Hit(10, 0, 1.5, 0, -1.5)},
      {"away from it", kHalf, kQuarter, south, Nowhere(STATUS_OK)},
      {"along it", kQuarter, kQuarter, south, Nowhere(STATUS_OK)},
      {"straight up along it", 0, 0, south, Nowhere(STATUS_OK)},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ExpectNear(row.out, Sight(row.ha, row.va, row.station, 1.5), 1e-12);
  }
}

TEST(Plane3Pt, TakesAVerticalSight) {
  SetCeiling();
  // From below, with north ahead, right is west.
  EXPECT_EQ(Text(Hit(1, 2, 3, 1, -2)), Text(Sight(0, 0, Pt(1, 2, 0), 1.0)));
  ExpectNear(Hit(1, 2, 3, 1, 2), Sight(0, kHalf, Pt(1, 2, 9), 1.0), 1e-12);
  // A plane set anew faces anew.
  SetCeiling();
  EXPECT_EQ(Text(Hit(1, 2, 3, 1, -2)), Text(Sight(0, 0, Pt(1, 2, 0), 1.0)));
}

TEST(Plane3Pt, LeavesOutputsPresetWithoutAnAnswer) {
  SetCeiling();
  for (const double height : {3.0, 3.0 + 4.9e-7, 3.0 - 4.9e-7}) {
    EXPECT_EQ(Text(Nowhere(ERR_INDETERMINATE)), Text(Sight(0, 0, Pt(1, 2), height)));
  }
  EXPECT_EQ(STATUS_OK, Sight(0, 0, Pt(1, 2), 3.0 - 5.1e-7).status);
}

TEST(Plane3Pt, IsGoneAfterARefusal) {
  const CoordPt origin = Pt(0, 0, 0, kFull);
  const CoordPt ahead = Pt(1, 1, 1, kFull);
  const CoordPt aside = Pt(9, -9, 0, kFull);
  const CoordPt inLine = Pt(3, 3, 3, kFull);
  const CoordPt noHeight = Pt(5, 7, 2);
  const CoordPt noPlace = Pt(5, 7, 2, COORD_HAS_ELEV);
  const CoordPt above = Pt(0, 0, 4, kFull);
  const CoordPt oneAbove = Pt(0, 0, 1, kFull);
  const CoordPt tooNear = Pt(0, 1e-7, 0, kFull);
  const CoordPt farOff = Pt(100, 0, 0, kFull);
  const struct {
    const char* name;
    const CoordPt* p1;
    const CoordPt* p2;
    const CoordPt* p3;
    std::int32_t status;
  } rows[] = {
      {"no height of the first", &noHeight, &ahead, &aside, ERR_POINT_INVALID},
      {"no place of the second", &origin, &noPlace, nullptr, ERR_POINT_INVALID},
      {"no height of the third", &origin, &ahead, &noHeight, ERR_POINT_INVALID},
      {"no place of the third, before equal points", &origin, &origin, &noPlace, ERR_POINT_INVALID},
      {"first is second", &origin, &origin, &aside, ERR_NO_DIRECTION},
      {"second is third", &origin, &ahead, &ahead, ERR_NO_DIRECTION},
      {"third is first", &origin, &ahead, &origin, ERR_NO_DIRECTION},
      {"in line", &origin, &ahead, &inLine, ERR_INDETERMINATE},
      {"two, one above the other", &above, &origin, nullptr, ERR_INDETERMINATE},
      {"two, the first where the third would be", &oneAbove, &origin, nullptr, ERR_NO_DIRECTION},
      {"the first two too near for a direction", &origin, &tooNear, &farOff, ERR_INDETERMINATE},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    SetWall();
    EXPECT_EQ(row.status, KavoREFSet3PtBasePlane(row.p1, row.p2, row.p3));
    EXPECT_EQ(Text(Nowhere(ERR_NO_BASE)), Text(Sight(0, kQuarter, origin, 0.0)));
  }
}

TEST(Plane3Pt, IsNotThereAtLoad) {
  ExpectAtLoad([] {
    EXPECT_EQ(Text(Nowhere(ERR_NO_BASE)), Text(Sight(0, kQuarter, Pt(0, 0), 0.0)));
    return !testing::Test::HasFailure();
  });
}

struct Vector {
  double north, east, elev;
};

Vector Mix(const Vector& v, double a, const Vector& w, double b) {
  return {a * v.north + b * w.north, a * v.east + b * w.east, a * v.elev + b * w.elev};
}

double Dot(const Vector& v, const Vector& w) {
  return v.north * w.north + v.east * w.east + v.elev * w.elev;
}

Vector Unit(const Vector& v) { return Mix(v, 1.0 / std::sqrt(Dot(v, v)), v, 0.0); }

// Positive when w lies to the right of v for one who looks against u.
double RightHand(const Vector& v, const Vector& w, const Vector& u) {
  return v.north * (w.east * u.elev - w.elev * u.east) -
         v.east * (w.north * u.elev - w.elev * u.north) +
         v.elev * (w.north * u.east - w.east * u.north);
}

CoordPt Point(const Vector& v) { return Pt(v.north, v.east, v.elev, kFull); }

// A plane in any attitude, by two perpendicular directions; an instrument on either side; its sight
// at a point of the plane, on both faces.
TEST(Plane3Pt, GivesBackThePointThatWasSighted) {
  std::mt19937_64 random(20261124);
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  const auto vector = [&] { return Vector{unit(random), unit(random), unit(random)}; };
  for (int i = 0; i < 2000; ++i) {
    const Vector first = Mix(vector(), 100.0, vector(), 0.0);
    const Vector ahead = Unit(vector());
    const Vector some = vector();
    const Vector aside = Unit(Mix(some, 1.0, ahead, -Dot(some, ahead)));
    const CoordPt p1 = Point(first);
    const CoordPt p2 = Point(Mix(first, 1.0, ahead, 30.0));
    const CoordPt p3 = Point(Mix(Mix(first, 1.0, ahead, 50 * unit(random)), 1.0, aside, 20.0));
    ASSERT_EQ(STATUS_OK, KavoREFSet3PtBasePlane(&p1, &p2, &p3));

    const double along = 50 * unit(random);
    const double left = 50 * unit(random);
    const Vector target = Mix(Mix(first, 1.0, ahead, along), 1.0, aside, left);
    const Vector back = Unit(vector());  // from the target to the instrument
    const double side = RightHand(ahead, aside, back);
    if (std::fabs(side) < 0.1) {
      continue;  // too slant for the tolerance below
    }
    const CoordPt station = Point(Mix(target, 1.0, back, 60.0));
    const CoordPt point = Point(target);
    AngDistRec polar;
    ASSERT_EQ(STATUS_OK, KavoCogoCoordToAngDist(&station, &point, &polar));
    const CoordPt ground = Pt(station.north, station.east, station.elev - 1.5);
    const Pierced face1 = Sight(polar.azimuth, polar.zenith, ground, 1.5);
    const double across = side > 0 ? left : -left;
    // Half a unit of both angles over 60 m, stretched by the slant.
    ExpectNear(Hit(target.north, target.east, target.elev, along, across), face1, 2e-4);
    const Pierced face2 =
        Sight(polar.azimuth + kHalf, ANGLE_FULL_CIRCLE - polar.zenith, ground, 1.5);
    EXPECT_EQ(Text(face1), Text(face2));
  }
}

}  // namespace
