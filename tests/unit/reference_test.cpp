// Reference arc: what only a look inside can show.
#include "reference/ref_arc.hpp"

#include <gtest/gtest.h>

#include "points.hpp"

namespace {

using namespace kavo_test;

// The elevation flag of the start decides, although only plan positions are compared (meant so).
TEST(RefArc, HasAConsistentEndWithElevationAlone) {
  const CoordPt end = Pt(100, 100);
  for (const std::uint16_t flags : {kFull, kPlan}) {
    const CoordPt start = Pt(0, 0, 0, flags);
    ASSERT_EQ(STATUS_OK, KavoREFSetArcByCoord(&start, &end, 0, ANGLE_QUARTER_CIRCLE));
    EXPECT_EQ(flags == kFull, kavo::refArcBase.endConsistent);
  }
}

TEST(RefArc, IsMarkedAsSetBySuccessAlone) {
  const CoordPt start = Pt(0, 0);
  const CoordPt end = Pt(1, 1);
  const auto expect = [](bool isSet, std::int32_t status) {
    EXPECT_EQ(isSet, status == STATUS_OK);
    EXPECT_EQ(isSet, kavo::refArcBase.isSet);
  };
  expect(true, KavoREFSetArcByRadiusHAngle(&start, 0, 100, ANGLE_QUARTER_CIRCLE));
  expect(false, KavoREFSetArcByRadiusHAngle(&start, 0, 100, 0));
  expect(true, KavoREFSetArcByRadiusArcLen(&start, 0, 100, 1));
  expect(false, KavoREFSetArcByRadiusArcLen(&start, 0, 0, 1));
  expect(true, KavoREFSetArcByCoord(&start, &end, 0, ANGLE_QUARTER_CIRCLE));
  expect(false, KavoREFSetArcByCoord(&start, &start, 0, ANGLE_QUARTER_CIRCLE));
}

}  // namespace
