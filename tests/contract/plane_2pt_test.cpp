#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "points.hpp"

namespace {

using namespace kavo_test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr IntAngle kEast = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kLevel = ANGLE_QUARTER_CIRCLE;

struct Pierced {
  std::int32_t status;
  CoordPt result;
  double along;
  double height;
};

Pierced Sight(IntAngle ha, IntAngle va, const CoordPt& station, double instrumentHeight) {
  Pierced out{0, Untouched<CoordPt>(), Untouched<double>(), Untouched<double>()};
  out.status =
      KavoREFCalc2PtPlane(ha, va, &station, instrumentHeight, &out.result, &out.along, &out.height);
  return out;
}

std::string AsText(const Pierced& p) {
  return Text(p.status) + ": " + Text(p.result) + ", along " + Text(p.along) + ", height " +
         Text(p.height);
}

Pierced Missed(std::int32_t status) {
  return {status, Written(VALUE_INVALID, VALUE_INVALID, VALUE_INVALID, kFull), VALUE_INVALID,
          VALUE_INVALID};
}

void ExpectNear(const Pierced& expected, const Pierced& actual, double tolerance) {
  EXPECT_EQ(expected.status, actual.status);
  EXPECT_NEAR(expected.result.north, actual.result.north, tolerance);
  EXPECT_NEAR(expected.result.east, actual.result.east, tolerance);
  EXPECT_NEAR(expected.result.elev, actual.result.elev, tolerance);
  EXPECT_NEAR(expected.along, actual.along, tolerance);
  EXPECT_NEAR(expected.height, actual.height, tolerance);
  const auto& r = actual.result;
  EXPECT_EQ(Text(Written(r.north, r.east, r.elev, kFull)), Text(r));
}

std::int32_t SetPlane(const CoordPt& p1, const CoordPt& p2) {
  return KavoREFSet2PtBasePlane(&p1, &p2);
}

// Taken before main, when no plane can have been set.
const Pierced kAtLoad = Sight(kEast, kLevel, Pt(5, 0, 50, kFull), 1.5);

TEST(TwoPointPlane, IsNotThereAtLoad) { EXPECT_EQ(AsText(Missed(ERR_NO_BASE)), AsText(kAtLoad)); }

TEST(TwoPointPlane, IsSetOrRefused) {
  const CoordPt p1 = Pt(0, 10, 100, kFull);
  const struct {
    const char* name;
    CoordPt p1;
    CoordPt p2;
    std::int32_t status;
  } rows[] = {
      {"with elevation", p1, Pt(20, 10), STATUS_OK},
      {"without elevation", Pt(0, 10), Pt(20, 10, 5, kFull), WARN_NO_ELEVATION},
      {"no first point", Pt(0, 10, 1, COORD_HAS_ELEV), Pt(20, 10, 5, kFull), ERR_POINT_INVALID},
      {"no second point", p1, Pt(20, 10, 5, COORD_HAS_ELEV), ERR_POINT_INVALID},
      {"one above the other", p1, Pt(0, 10, 5, kFull), ERR_NO_DIRECTION},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_EQ(STATUS_OK, SetPlane(Pt(0, 30, 0, kFull), Pt(1, 30)));
    EXPECT_EQ(row.status, SetPlane(row.p1, row.p2));
    // The new plane is used, or none: never the earlier one.
    const auto seen = Sight(kEast, kLevel, Pt(5, 0, 50), 1.5);
    if (row.status == ERR_POINT_INVALID || row.status == ERR_NO_DIRECTION) {
      EXPECT_EQ(AsText(Missed(ERR_NO_BASE)), AsText(seen));
    } else {
      EXPECT_EQ(row.status, seen.status);
      EXPECT_EQ(10.0, seen.result.east);
    }
  }
}

// A wall along east 10 from (0, 10, 100) northwards, seen from (5, 0) at elevation 50 + 1.5.
TEST(TwoPointPlane, IsPiercedBySights) {
  const double diagonal = std::sqrt(200.0);
  const struct {
    const char* name;
    IntAngle ha;
    IntAngle va;
    double north;
    double elev;
  } rows[] = {
      {"level, square on", kEast, kLevel, 5, 51.5},
      {"up one in one", kEast, 45 * kDegree, 5, 61.5},
      {"down one in one", kEast, 135 * kDegree, 5, 41.5},
      {"aslant", 45 * kDegree, 45 * kDegree, 15, 51.5 + diagonal},
      {"before the base point", 135 * kDegree, 135 * kDegree, -5, 51.5 - diagonal},
      {"on face 2", 225 * kDegree, 315 * kDegree, 15, 51.5 + diagonal},
      {"one circle down", 45 * kDegree, -315 * kDegree, 15, 51.5 + diagonal},
      {"behind the station, followed backwards", 225 * kDegree, 45 * kDegree, 15, 51.5 - diagonal},
      {"2 units off parallel", 2, kLevel, 5 + 10 / std::tan(2 * std::acos(-1.0) / 10368000), 51.5},
  };
  const CoordPt station = Pt(5, 0, 50, 0);  // its flags are not looked at
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    // The far end of the wall is given without an elevation and with one: it is not read.
    ASSERT_EQ(STATUS_OK, SetPlane(Pt(0, 10, 100, kFull), Pt(20, 10, -7, kFull)));
    const double tolerance = 1e-11 + std::fabs(row.north) * 1e-9;
    ExpectNear({STATUS_OK, Pt(row.north, 10, row.elev), row.north, row.elev - 100},
               Sight(row.ha, row.va, station, 1.5), tolerance);
    // The same points without an elevation to refer to.
    ASSERT_EQ(WARN_NO_ELEVATION, SetPlane(Pt(0, 10, kNaN), Pt(20, 10)));
    ExpectNear({WARN_NO_ELEVATION, Pt(row.north, 10, row.elev), row.north, 0.0},
               Sight(row.ha, row.va, station, 1.5), tolerance);
  }
}

TEST(TwoPointPlane, IsMissedBySights) {
  const CoordPt station = Pt(5, 0, 50, kFull);
  const IntAngle down = ANGLE_HALF_CIRCLE;
  const struct {
    const char* name;
    IntAngle ha;
    IntAngle va;
    CoordPt station;
    bool onPlane;
  } rows[] = {
      {"straight up", kEast, 0, station, false},
      {"straight up as a full circle", kEast, ANGLE_FULL_CIRCLE, station, false},
      {"straight down", kEast, down, station, false},
      {"straight down, one circle below", kEast, -down, station, false},
      {"parallel", 0, kLevel, station, false},
      {"parallel but for 1 unit", 1, kLevel, station, false},
      {"parallel the other way", ANGLE_HALF_CIRCLE, kLevel, station, false},
      {"from the base point", kEast, kLevel, Pt(0, 10, 50), true},
      {"from the plane beyond both points", kEast, kLevel, Pt(-33, 10, 50), true},
      {"from 20 nanometres beside it, with 20 m of base", kEast, kLevel, Pt(5, 10 - 2e-8), true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_EQ(STATUS_OK, SetPlane(Pt(0, 10, 100, kFull), Pt(20, 10)));
    EXPECT_EQ(AsText(Missed(row.onPlane ? ERR_INDETERMINATE : STATUS_OK)),
              AsText(Sight(row.ha, row.va, row.station, 1.5)));
    ASSERT_EQ(WARN_NO_ELEVATION, SetPlane(Pt(0, 10), Pt(20, 10)));
    EXPECT_EQ(AsText(Missed(row.onPlane ? ERR_INDETERMINATE : WARN_NO_ELEVATION)),
              AsText(Sight(row.ha, row.va, row.station, 1.5)));
  }
  // The limits are sharp, and what is not a number is neither parallel nor on the plane.
  ASSERT_EQ(STATUS_OK, SetPlane(Pt(0, 10, 100, kFull), Pt(20, 10)));
  EXPECT_NEAR(5.0, Sight(kEast, kLevel, Pt(5, 10 - 3e-8), 0).along, 1e-9);
  EXPECT_NEAR(5.0, Sight(kEast, 1, station, 1.5).result.north, 1e-9);
  const auto nowhere = Sight(kEast, kLevel, Pt(kNaN, 0, 50), 0);
  EXPECT_EQ(STATUS_OK, nowhere.status);
  EXPECT_TRUE(std::isnan(nowhere.along) && std::isnan(nowhere.result.north));
  ASSERT_EQ(STATUS_OK, SetPlane(Pt(0, 10, 100, kFull), Pt(kNaN, 10)));
  EXPECT_TRUE(std::isnan(Sight(kEast, kLevel, station, 1.5).along));
}

// A point of the plane is seen again where it is, from either side and on either face, with a base
// elevation and without, and from the other end of the base.
TEST(TwoPointPlane, RecoversASimulatedPoint) {
  std::mt19937_64 random(20270404);
  std::uniform_real_distribution<double> metres(-100.0, 100.0);
  for (int i = 0; i < 2000; ++i) {
    const CoordPt p1 = Pt(metres(random), metres(random), metres(random), kFull);
    const CoordPt p2 = Pt(metres(random), metres(random), metres(random), kFull);
    const double length = std::hypot(p2.north - p1.north, p2.east - p1.east);
    const double along = metres(random);
    const double height = metres(random);
    const CoordPt point = Pt(p1.north + along * (p2.north - p1.north) / length,
                             p1.east + along * (p2.east - p1.east) / length, p1.elev + height);
    const CoordPt station = Pt(metres(random), metres(random), metres(random));
    const CoordPt axis = Pt(station.north, station.east, station.elev + 1.6, kFull);
    AngDistRec sight;
    ASSERT_EQ(STATUS_OK, KavoCogoCoordToAngDist(&axis, &point, &sight));
    const double dNorth = station.north - p1.north;
    const double dEast = station.east - p1.east;
    const double apart =
        std::fabs((p2.east - p1.east) * dNorth - (p2.north - p1.north) * dEast) / length;
    if (apart < 1.0) {
      continue;  // along the wall: half a unit of direction moves the point by metres
    }
    // Half a unit of direction moves the point by its distance over the sine of the angle of
    // incidence, one of zenith by the square of the slope distance over the horizontal one.
    const double tolerance =
        1e-9 + 3e-7 * sight.horizDist *
                   (sight.horizDist / apart +
                    sight.slopeDist * sight.slopeDist / (sight.horizDist * sight.horizDist)) *
                   (1.0 + std::fabs(sight.dElev) / sight.horizDist);
    const IntAngle ha2 = (sight.azimuth + ANGLE_HALF_CIRCLE) % ANGLE_FULL_CIRCLE;
    const IntAngle va2 = ANGLE_FULL_CIRCLE - sight.zenith;

    ASSERT_EQ(STATUS_OK, SetPlane(p1, p2));
    const auto seen = Sight(sight.azimuth, sight.zenith, station, 1.6);
    ExpectNear({STATUS_OK, point, along, height}, seen, tolerance);
    EXPECT_EQ(AsText(seen), AsText(Sight(ha2, va2, station, 1.6)));

    ASSERT_EQ(STATUS_OK, SetPlane(p2, p1));
    ExpectNear({STATUS_OK, point, length - along, point.elev - p2.elev},
               Sight(sight.azimuth, sight.zenith, station, 1.6), tolerance);

    ASSERT_EQ(WARN_NO_ELEVATION, SetPlane(Pt(p1.north, p1.east), p2));
    ExpectNear({WARN_NO_ELEVATION, point, along, 0.0},
               Sight(sight.azimuth, sight.zenith, station, 1.6), tolerance);
  }
}

}  // namespace
