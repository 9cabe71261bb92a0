#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "points.hpp"

namespace {

using namespace kavo_test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr IntAngle kOf3And4 = 3060294;  // atan2(4, 3)

RdmResult Result(double slopeDist, double horizDist, double dElev, IntAngle azimuth) {
  auto out = Untouched<RdmResult>();
  out.slopeDist = slopeDist;
  out.horizDist = horizDist;
  out.dElev = dElev;
  out.azimuth = azimuth;
  return out;
}

TEST(RemoteDistance, GivesDistancesAndDirection) {
  const struct {
    const char* name;
    CoordPt first;
    CoordPt second;
    std::int32_t status;
    RdmResult out;
  } rows[] = {
      {"3-4-12 box", Pt(0, 0, 0, kFull), Pt(3, 4, 12, kFull), STATUS_OK,
       Result(13, 5, 12, kOf3And4)},
      {"back again", Pt(3, 4, 12, kFull), Pt(0, 0, 0, kFull), STATUS_OK,
       Result(13, 5, -12, kOf3And4 + ANGLE_HALF_CIRCLE)},
      {"second without elevation", Pt(0, 0, 0, kFull), Pt(3, 4, 12), STATUS_OK,
       Result(5, 5, 0, kOf3And4)},
      {"first without elevation", Pt(0, 0, kNaN), Pt(3, 4, 12, kFull), STATUS_OK,
       Result(5, 5, 0, kOf3And4)},
      {"other flag bits are not looked at", Pt(0, 0, 0, 0xFFFF), Pt(3, 4, 12, 0xFFFF), STATUS_OK,
       Result(13, 5, 12, kOf3And4)},
      {"one above the other", Pt(1, 2, 0, kFull), Pt(1, 2, 5, kFull), ERR_NO_DIRECTION,
       Result(5, 0, 5, ANGLE_INVALID)},
      {"one above the other, without elevation", Pt(1, 2, 0), Pt(1, 2, 5, kFull), ERR_NO_DIRECTION,
       Result(0, 0, 0, ANGLE_INVALID)},
      {"one above a first one whose elevation is not a number", Pt(1, 2, kNaN, kFull),
       Pt(1, 2, 5, kFull), STATUS_OK, Result(kNaN, 0, kNaN, ANGLE_INVALID)},
      {"one whose elevation is not a number above the first", Pt(1, 2, 5, kFull),
       Pt(1, 2, kNaN, kFull), ERR_NO_DIRECTION, Result(kNaN, 0, kNaN, ANGLE_INVALID)},
      {"a north that is not a number", Pt(kNaN, 2, 5, kFull), Pt(1, 2, 5, kFull), STATUS_OK,
       Result(kNaN, kNaN, 0, ANGLE_INVALID)},
      {"apart by less than a distance can tell", Pt(0, 0), Pt(0, 1e-200), STATUS_OK,
       Result(0, 0, 0, ANGLE_INVALID)},
      {"no first point", Pt(0, 0, 0, COORD_HAS_ELEV), Pt(3, 4, 12, kFull), ERR_POINT_INVALID,
       Untouched<RdmResult>()},
      {"no second point", Pt(0, 0, 0, kFull), Pt(3, 4, 12, COORD_HAS_ELEV), ERR_POINT_INVALID,
       Untouched<RdmResult>()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto out = Untouched<RdmResult>();
    EXPECT_EQ(row.status, KavoRDMCalcByCoord(&row.first, &row.second, &out));
    EXPECT_EQ(Text(row.out), Text(out));
  }
}

}  // namespace
