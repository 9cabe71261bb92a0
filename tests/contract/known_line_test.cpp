#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "multi_sights.hpp"

namespace {

using namespace kavo_test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr IntAngle kQuarter = ANGLE_QUARTER_CIRCLE;
constexpr IntAngle kEighth = kQuarter / 2;
constexpr double kDist = 30.0 * std::numbers::sqrt2;

// A station at the origin sees the first point to the north-west and the second to the north-east:
// the line runs 60 m due east.

CoordPt First(double elev = 0.0, std::uint16_t flags = kPlan) { return Pt(30, -30, elev, flags); }
CoordPt Second(double elev = 0.0, std::uint16_t flags = kPlan) { return Pt(30, 30, elev, flags); }
// Anywhere, and nowhere.
CoordPt Unknown() { return Pt(kNaN, kNaN, kNaN, 0); }

MultiResectInput ToFirst(const CoordPt& point = First(), double heightDiff = 0.0,
                         double heightTerm = 0.0) {
  return Sight(point, 7 * kEighth, kDist, heightDiff, heightTerm);
}
MultiResectInput ToSecond(const CoordPt& point, double heightDiff = 0.0) {
  return Sight(point, kEighth, kDist, heightDiff);
}
// Taken through the other face, without a slope distance: it does not enter the adjustment.
MultiResectInput OnFaceTwo(MultiResectInput sight) {
  sight.va = 19000000;
  sight.slopeDist = 0.0;
  return sight;
}

MultiAnswer Call(const MultiResectInput& sight1, const MultiResectInput& sight2,
                 IntAngle lineAzimuth) {
  MultiAnswer answer{0, Untouched<MultiResectResult>(),
                     std::vector(2, Untouched<MultiResectResidual>())};
  answer.status =
      KavoSTNKnownLine(&sight1, &sight2, lineAzimuth, &answer.result, answer.residuals.data());
  return answer;
}

TEST(KnownLine, SetsTheStationUp) {
  const struct {
    const char* name;
    MultiResectInput sight1, sight2;
    IntAngle lineAzimuth;
    std::uint16_t flags;
    double elev;
    double elevSpread;
    double distResid;
  } rows[] = {
      {"an azimuth given: the second point is not looked at", ToFirst(), ToSecond(Unknown()),
       kQuarter, kPlan, NO_ELEVATION, 0.0, 0.0},
      {"the elevation of the first sight", ToFirst(First(100, kFull), 2.0, 1.5),
       ToSecond(Unknown()), kQuarter, kFull, 99.5, 0.0, 0.0},
      {"first its difference, then its height term", ToFirst(First(0x1p53, kFull), 0x1p53, 1.0),
       ToSecond(Unknown()), kQuarter, kFull, 1.0, 0.0, 0.0},
      {"the first sight alone, whatever the flags say", ToFirst(First(100)),
       ToSecond(Second(90, kFull), -4.0), kQuarter, kFull, NO_ELEVATION, 0.0, 0.0},
      {"the spread of an azimuth given is that of the sights", ToFirst(First(100, kFull), 2.0),
       ToSecond(Second(90, kFull), -4.0), kQuarter, kFull, 98.0, 4.0, 0.0},
      {"from points that are right", ToFirst(First(100, kFull), 2.0),
       ToSecond(Second(98, kFull), 0.0), AZIMUTH_FROM_POINTS, kFull, 98.0, 0.0, 0.0},
      {"from points a centimetre too far apart and half a metre too high",
       ToFirst(First(100, kFull), 2.0), ToSecond(Pt(30, 30.01, 98.5, kFull), 0.0),
       AZIMUTH_FROM_POINTS, kFull, 98.0, -0.5, -0.01},
      {"from points without elevations: the measured difference", ToFirst(First(), 2.0),
       ToSecond(Second(), 0.5), AZIMUTH_FROM_POINTS, kPlan, NO_ELEVATION, -1.5, 0.0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const auto [status, result, accuracy] = Call(row.sight1, row.sight2, row.lineAzimuth);
    ASSERT_EQ(STATUS_OK, status);
    EXPECT_LT(std::hypot(result.station.north, result.station.east), 1e-9);
    EXPECT_LE(std::fabs(std::remainder(result.orient, ANGLE_FULL_CIRCLE)), 1.0) << result.orient;
    EXPECT_EQ(row.flags, result.station.flags);
    EXPECT_EQ(row.elev, result.station.elev);
    EXPECT_NEAR(row.elevSpread, result.elevSpread, 1e-9);
    EXPECT_NEAR(row.distResid, accuracy[0].distResid, 1e-9);
    EXPECT_NEAR(0.0, accuracy[1].distResid, 1e-9);
  }
}

// Meant so: the local position of a first sight on face 2 is that of its reading as taken, that of
// a second one 2615296 units beyond its face-1 equivalent.
TEST(KnownLine, LooksAtTheFaceOfTheSecondSightAlone) {
  const auto asTaken = Call(OnFaceTwo(ToFirst()), ToSecond(Second()), AZIMUTH_FROM_POINTS);
  EXPECT_EQ(STATUS_OK, asTaken.status);
  EXPECT_NEAR(0.0, asTaken.residuals[0].distResid, 1e-9);

  auto faceTwo = OnFaceTwo(ToSecond(Second()));
  faceTwo.ha += ANGLE_HALF_CIRCLE;
  const auto turned = Call(ToFirst(), faceTwo, AZIMUTH_FROM_POINTS);
  const double between = (90.0 + 2615296.0 / kDegree) / 180.0 * std::acos(-1.0);
  EXPECT_EQ(STATUS_OK, turned.status);
  EXPECT_NEAR(2.0 * kDist * std::sin(between / 2.0) - 60.0, turned.residuals[0].distResid, 1e-9);
}

TEST(KnownLine, LeavesEverythingAloneWhenItRefuses) {
  const auto withoutSlope = [](MultiResectInput sight) {
    sight.slopeDist = 0.0;
    return sight;
  };
  const struct {
    const char* name;
    MultiResectInput sight1, sight2;
    IntAngle lineAzimuth;
    std::int32_t status;
  } rows[] = {
      {"one place measured twice", ToFirst(), ToFirst(Second()), kQuarter, ERR_NO_DIRECTION},
      {"one known point twice", ToFirst(), ToSecond(First()), AZIMUTH_FROM_POINTS,
       ERR_NO_DIRECTION},
      {"the first point without a position", ToFirst(First(1, COORD_HAS_ELEV)), ToSecond(Second()),
       AZIMUTH_FROM_POINTS, ERR_POINT_INVALID},
      {"the second point without a position", ToFirst(), ToSecond(Second(1, COORD_HAS_ELEV)),
       AZIMUTH_FROM_POINTS, ERR_POINT_INVALID},
      {"no slope distance", withoutSlope(ToFirst()), withoutSlope(ToSecond(Second())), kQuarter,
       ERR_REFUSED},
      {"a coordinate that is not a number", ToFirst(Pt(kNaN, 0)), ToSecond(Second()), kQuarter,
       ERR_REFUSED},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const MultiAnswer answer = Call(row.sight1, row.sight2, row.lineAzimuth);
    EXPECT_EQ(row.status, answer.status);
    EXPECT_TRUE(answer.IsUntouched());
  }
}

}  // namespace
