// The offset measurements of the library as shipped: statuses and what is written. The shipped
// library has no instrument, so every success reports zeros; tests/unit looks at the geometry.
#include <gtest/gtest.h>

#include "points.hpp"

namespace {

using namespace kavo_test;

constexpr IntAngle kEast = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kLevel = ANGLE_QUARTER_CIRCLE;
constexpr double kUnused = 12345.0;
constexpr double kHookValue = 1.5;

struct Outputs {
  AngleDistObs obs = Untouched<AngleDistObs>();
  CoordPt point = Untouched<CoordPt>();
};

std::string AsText(const Outputs& out) { return Text(out.obs) + "; " + Text(out.point); }

// What a computed point becomes without an instrument.
Outputs Zeros() { return {{0, 0, 0.0}, Written(0, 0, 0, kFull)}; }

TEST(Corner3Pt, IsComputedOrRefused) {
  const CoordPt a = Pt(0, 0, 0, 0);  // flags of the wall are not looked at
  const CoordPt b = Pt(0, 9, 0, 0);
  const struct {
    const char* name;
    CoordPt b;
    CoordPt p;
    std::int32_t status;
    Outputs out;
  } rows[] = {
      {"computed", b, Pt(4, 3, 2, kFull), STATUS_OK, Zeros()},
      {"p without elevation", b, Pt(4, 3, 2), ERR_POINT_INVALID, {}},
      {"p without position", b, Pt(4, 3, 2, COORD_HAS_ELEV), ERR_POINT_INVALID, {}},
      {"a wall of one point", Pt(0, 0, 7, kFull), Pt(4, 3, 2, kFull), ERR_NO_DIRECTION, {}},
      {"a wall of one point, p invalid", a, Pt(4, 3, 2), ERR_POINT_INVALID, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Outputs out;
    EXPECT_EQ(row.status,
              KavoCalcOfsCorner3Pt(&a, &row.b, &row.p, kUnused, &out.obs, &out.point, kHookValue));
    EXPECT_EQ(AsText(row.out), AsText(out));
  }
}

TEST(Corner4Pt, IsComputedOrRefused) {
  const CoordPt origin = Pt(0, 0, 0, 0);
  const CoordPt a2 = Pt(0, 2, 0, 0);
  const CoordPt b2 = Pt(1, 1, 5, kFull);
  const Outputs atCrossing{Untouched<AngleDistObs>(), Written(1, 1)};
  const Outputs notFound{Untouched<AngleDistObs>(), NotFound()};
  const struct {
    const char* name;
    CoordPt a1;
    CoordPt b1;
    CoordPt a2;
    CoordPt b2;
    std::int32_t status;
    Outputs out;
  } rows[] = {
      {"computed", origin, Pt(3, 3, 0, 0), a2, b2, STATUS_OK, Zeros()},
      {"b2 without elevation", origin, Pt(3, 3), a2, Pt(1, 1), ERR_POINT_INVALID, atCrossing},
      {"b2 without position", origin, Pt(3, 3), a2, Pt(1, 1, 5, COORD_HAS_ELEV), ERR_POINT_INVALID,
       atCrossing},
      {"parallel", origin, Pt(-1, 1), a2, b2, ERR_INDETERMINATE, notFound},
      {"parallel along constant north", origin, Pt(0, 1), Pt(1, 0), b2, ERR_INDETERMINATE,
       notFound},
      {"parallel, and b2 invalid", origin, Pt(-1, 1), a2, Pt(1, 1), ERR_INDETERMINATE, notFound},
      {"first wall of one point", origin, origin, a2, b2, ERR_INDETERMINATE, notFound},
      {"second wall of one point", origin, Pt(3, 3), b2, b2, ERR_INDETERMINATE, notFound},
      {"first wall too short for a length", origin, Pt(1e-200, 1e-200), a2, b2, ERR_NO_DIRECTION,
       atCrossing},
      {"second wall too short for a length", Pt(2, 0), Pt(0, 2), origin,
       Pt(1e-200, 1e-200, 5, kFull), ERR_NO_DIRECTION, atCrossing},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Outputs out;
    EXPECT_EQ(row.status, KavoCalcOfsCorner4Pt(&row.a1, &row.b1, &row.a2, &row.b2, kUnused,
                                               &out.obs, &out.point, kHookValue));
    EXPECT_EQ(AsText(row.out), AsText(out));
  }
}

// The east of the two-point plane in force, which always runs north in these tests.
double EastOfPlane() {
  const CoordPt station = Pt(5, 0, 0, kFull);
  CoordPt seen;
  double along = 0.0;
  double height = 0.0;
  KavoREFCalc2PtPlane(kEast, kLevel, &station, 0.0, &seen, &along, &height);
  return seen.east;
}

TEST(LineHA, IsComputedOrRefusedAndReplacesThePlane) {
  const CoordPt a = Pt(0, 10, 1);
  const CoordPt b = Pt(20, 10, 3, kFull);
  const CoordPt station = Pt(5, 0, 0, 0);
  const struct {
    const char* name;
    CoordPt a;
    CoordPt b;
    IntAngle ha;
    IntAngle va;
    CoordPt station;
    std::int32_t status;
    Outputs out;
    double eastOfPlane;  // 30: as it was before the call
  } rows[] = {
      {"computed: the host refuses, as shipped", a, b, kEast, kLevel, station, ERR_REFUSED, Zeros(),
       10},
      {"a sight along the line is not refused", a, b, 0, kLevel, station, ERR_REFUSED, Zeros(), 10},
      {"nor is a vertical one", a, b, kEast, 0, station, ERR_REFUSED, Zeros(), 10},
      {"a without position", Pt(0, 10, 1, 0), b, kEast, kLevel, station, ERR_POINT_INVALID, {}, 30},
      {"b without position",
       a,
       Pt(20, 10, 3, COORD_HAS_ELEV),
       kEast,
       kLevel,
       station,
       ERR_POINT_INVALID,
       {},
       30},
      {"b without elevation", a, Pt(20, 10, 3), kEast, kLevel, station, ERR_POINT_INVALID, {}, 30},
      {"one above the other",
       a,
       Pt(0, 10, 3, kFull),
       kEast,
       kLevel,
       station,
       ERR_NO_DIRECTION,
       {},
       30},
      {"one above the other, b without elevation",
       a,
       Pt(0, 10),
       kEast,
       kLevel,
       station,
       ERR_NO_DIRECTION,
       {},
       30},
      {"vertical as far as the numbers tell",
       Pt(0, 0, 0, kFull),
       Pt(1e-170, 0, 1, kFull),
       kEast,
       kLevel,
       station,
       ERR_INDETERMINATE,
       {},
       30},
      {"from the line's own plane", a, b, kEast, kLevel, Pt(-7, 10), ERR_INDETERMINATE, {}, 10},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const CoordPt p1 = Pt(0, 30);
    const CoordPt p2 = Pt(1, 30);
    ASSERT_EQ(WARN_NO_ELEVATION, KavoREFSet2PtBasePlane(&p1, &p2));
    Outputs out;
    EXPECT_EQ(row.status, KavoCalcOfsLineHA(&row.a, &row.b, row.ha, row.va, &row.station, 1.5,
                                            &out.obs, &out.point, kHookValue));
    EXPECT_EQ(AsText(row.out), AsText(out));
    EXPECT_EQ(row.eastOfPlane, EastOfPlane());
  }
}

// A column of radius 5 at (10, 0): its edges stand 30 degrees to either side of north and its
// surface 5 m to the north.
TEST(RoundObject, IsComputedOrRefused) {
  const IntAngle left = 330 * kDegree;
  const IntAngle right = 30 * kDegree;
  const struct {
    const char* name;
    IntAngle ha1;
    IntAngle va1;
    IntAngle ha2;
    IntAngle va2;
    IntAngle ha3;
    IntAngle va3;
    std::int32_t status;
  } rows[] = {
      {"computed", 0, kLevel, left, kLevel, right, kLevel, STATUS_OK},
      {"all but vertical", 0, 1, left, ANGLE_HALF_CIRCLE - 1, right, -ANGLE_FULL_CIRCLE + 1,
       STATUS_OK},
      {"edges exchanged and far out of the circle", 0, kLevel, right - 100 * ANGLE_FULL_CIRCLE,
       kLevel, left + 100 * ANGLE_FULL_CIRCLE, kLevel, STATUS_OK},
      {"surface sighted straight up", 0, 0, left, kLevel, right, kLevel, ERR_POINT_INVALID},
      {"surface sighted straight down", 0, -ANGLE_HALF_CIRCLE, left, kLevel, right, kLevel,
       ERR_POINT_INVALID},
      {"one edge sighted straight up", 0, kLevel, left, ANGLE_FULL_CIRCLE, right, kLevel,
       ERR_POINT_INVALID},
      {"other edge sighted straight down", 0, kLevel, left, kLevel, right, ANGLE_HALF_CIRCLE,
       ERR_POINT_INVALID},
      {"vertical before the edges", 0, 0, left, kLevel, left, kLevel, ERR_POINT_INVALID},
      {"one edge twice", 0, kLevel, left, kLevel, left, kLevel, ERR_INDETERMINATE},
      {"one edge twice, two circles apart", 0, kLevel, left, kLevel, left - 2 * ANGLE_FULL_CIRCLE,
       kLevel, ERR_INDETERMINATE},
      {"one edge on both faces", 0, kLevel, left, kLevel, left - ANGLE_HALF_CIRCLE, 3 * kLevel,
       ERR_INDETERMINATE},
      {"opposite edges", 0, kLevel, left, kLevel, left - ANGLE_HALF_CIRCLE, kLevel,
       ERR_INDETERMINATE},
      {"surface sighted past the object", 31 * kDegree, kLevel, left, kLevel, right, kLevel,
       ERR_POINT_INVALID},
  };
  const CoordPt station = Pt(0, 0, 0, 0);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const AngleDistObs surface{row.ha1, row.va1, 5.0};
    Outputs out;
    auto radius = Untouched<double>();
    EXPECT_EQ(row.status,
              KavoCalcOfsCircle(&surface, kHookValue, row.ha2, row.va2, row.ha3, row.va3, &station,
                                kUnused, &out.obs, &out.point, &radius));
    EXPECT_EQ(AsText(row.status == STATUS_OK ? Zeros() : Outputs{}), AsText(out));
    if (row.status == STATUS_OK) {
      EXPECT_NEAR(5.0, radius, 1e-12);
    } else {
      EXPECT_EQ(Text(Untouched<double>()), Text(radius));
    }
  }
}

}  // namespace
