// Reference arc and plane: what only a host's settings or a look inside can show.
#include <gtest/gtest.h>

#include <cmath>

#include "fake_host.hpp"
#include "points.hpp"
#include "reference/ref_arc.hpp"

namespace {

using namespace kavo_test;

constexpr IntAngle kQuarter = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kHalf = ANGLE_HALF_CIRCLE;
const double kPi = std::acos(-1.0);

TEST(RefArc, LiesAsItsTangentsCountFromSouth) {
  const HostGuard guard;
  Host().azimuthReference = 1;
  const CoordPt start = Pt(0, 0);
  // Southward and to the right, that is to the west.
  const CoordPt end = Pt(-100, -100);
  const auto expectArc = [&](std::int32_t status, IntAngle endDir) {
    RefArcParams params;
    RefLineResult out;
    ASSERT_EQ(STATUS_OK, status);
    KavoREFGetArcParams(&params);
    KavoREFCalcArc(&end, &out);
    EXPECT_EQ(Text(IntAngle{0}), Text(params.startDir));
    EXPECT_NEAR(endDir, params.endDir, 1);
    EXPECT_NEAR(50 * kPi, out.along, 6e-5);
    EXPECT_NEAR(0.0, out.offset, 1e-9);
  };
  expectArc(KavoREFSetArcByRadiusHAngle(&start, 0, 100, kQuarter), kQuarter);
  expectArc(KavoREFSetArcByRadiusArcLen(&start, 0, 100, 50 * kPi), kQuarter);
  expectArc(KavoREFSetArcByCoord(&start, &end, 0, kQuarter), kQuarter);

  // An end tangent that does not exist is not turned into one.
  RefArcParams params;
  ASSERT_EQ(STATUS_OK, KavoREFSetArcByRadiusArcLen(&start, 0, 100, std::nan("")));
  KavoREFGetArcParams(&params);
  EXPECT_EQ(Text(IntAngle{ANGLE_INVALID}), Text(params.endDir));
}

// The elevation flag of the start decides, although only plan positions are compared (meant so).
TEST(RefArc, HasAConsistentEndWithElevationAlone) {
  const CoordPt end = Pt(100, 100);
  for (const std::uint16_t flags : {kFull, kPlan}) {
    const CoordPt start = Pt(0, 0, 0, flags);
    ASSERT_EQ(STATUS_OK, KavoREFSetArcByCoord(&start, &end, 0, kQuarter));
    EXPECT_EQ(flags == kFull, kavo::refArcBase.endConsistent);
  }
}

TEST(RefArc, IsMarkedAsSetBySuccessAlone) {
  const CoordPt start = Pt(0, 0);
  for (int again = 0; again < 2; ++again) {
    KavoREFSetArcByRadiusHAngle(&start, 0, 100, kQuarter);
    EXPECT_TRUE(kavo::refArcBase.isSet);
    KavoREFSetArcByRadiusHAngle(&start, 0, 100, 0);
    EXPECT_FALSE(kavo::refArcBase.isSet);
    KavoREFSetArcByRadiusArcLen(&start, 0, 100, 1);
    EXPECT_TRUE(kavo::refArcBase.isSet);
    KavoREFSetArcByRadiusArcLen(&start, 0, 0, 1);
    EXPECT_FALSE(kavo::refArcBase.isSet);
    const CoordPt end = Pt(1, 1);
    KavoREFSetArcByCoord(&start, &end, 0, kQuarter);
    EXPECT_TRUE(kavo::refArcBase.isSet);
    KavoREFSetArcByCoord(&start, &start, 0, kQuarter);
    EXPECT_FALSE(kavo::refArcBase.isSet);
  }
}

TEST(Plane3Pt, TakesSightsThatCountFromSouth) {
  const HostGuard guard;
  Host().azimuthReference = 1;
  const CoordPt p1 = Pt(10, 0, 0, kFull);
  const CoordPt p2 = Pt(10, 5, 0, kFull);
  const CoordPt station = Pt(0, 0);
  ASSERT_EQ(STATUS_OK, KavoREFSet3PtBasePlane(&p1, &p2, nullptr));
  CoordPt point;
  double along = 0;
  double across = 0;
  ASSERT_EQ(STATUS_OK,
            KavoREFCalc3PtPlane(kHalf, kQuarter, &station, 0.0, &point, &along, &across));
  EXPECT_NEAR(10.0, point.north, 1e-12);
  EXPECT_NEAR(0.0, along, 1e-12);
}

}  // namespace
