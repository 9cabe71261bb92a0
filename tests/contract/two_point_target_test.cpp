#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "points.hpp"

namespace {

using namespace kavo_test;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// The reflectors of most rows are the vector (1, 2, 2) of length 3 apart; nominal separations are
// powers of two, so that every expectation is exact.
TEST(TwoPointTarget, ExtendsThePole) {
  const CoordPt first = Pt(10, 20, 30, kFull);
  const CoordPt second = Pt(11, 22, 32, kFull);
  const auto untouched = Untouched<double>();
  const auto noPoint = Untouched<CoordPt>();
  const struct {
    const char* name;
    CoordPt first;
    CoordPt second;
    double nominal;
    double target;
    std::int32_t status;
    double separation;
    CoordPt out;
  } rows[] = {
      {"scaled by the nominal separation", first, second, 4, 8, STATUS_OK, 3,
       Written(13, 26, 36, kFull)},
      {"twice the nominal halves the extension", first, second, 8, 8, STATUS_OK, 3,
       Written(12, 24, 34, kFull)},
      {"an endless nominal separation", first, second, kInf, 8, STATUS_OK, 3,
       Written(11, 22, 32, kFull)},
      {"a vertical pole", Pt(1, 2, 9, kFull), Pt(1, 2, 7, kFull), 0, 1, STATUS_OK, 2,
       Written(1, 2, 6, kFull)},
      {"no distance: a copy of the whole second record", first, Pt(11, 22, 32, 0xFFFF), -0.0, 0,
       STATUS_OK, 3, Pt(11, 22, 32, kFull)},
      {"a negative nominal separation", first, second, -1, 1, ERR_REFUSED, untouched, noPoint},
      {"a nominal separation that is not a number", first, second, kNaN, 1, ERR_REFUSED, untouched,
       noPoint},
      {"a negative distance", first, second, 0, -1, ERR_REFUSED, untouched, noPoint},
      {"a distance that is not a number", first, second, 0, kNaN, ERR_REFUSED, untouched, noPoint},
      {"one reflector twice", first, first, 1, 1, ERR_NO_DIRECTION, untouched, noPoint},
      {"one reflector twice, and a negative distance", first, first, 1, -1, ERR_REFUSED, untouched,
       noPoint},
      {"first without elevation", Pt(10, 20, 30), second, 0, -1, ERR_POINT_INVALID, untouched,
       noPoint},
      {"first without position", Pt(10, 20, 30, COORD_HAS_ELEV), second, 0, 1, ERR_POINT_INVALID,
       untouched, noPoint},
      {"second without elevation", first, Pt(11, 22, 32), 0, 1, ERR_POINT_INVALID, untouched,
       noPoint},
      {"second without position", first, Pt(11, 22, 32, COORD_HAS_ELEV), 0, 1, ERR_POINT_INVALID,
       untouched, noPoint},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    auto separation = Untouched<double>();
    auto out = Untouched<CoordPt>();
    EXPECT_EQ(row.status, KavoCalc2PtTarget(&row.first, &row.second, row.nominal, row.target,
                                            &separation, &out));
    EXPECT_EQ(Text(row.separation), Text(separation));
    EXPECT_EQ(Text(row.out), Text(out));
  }
}

// Both reflectors of a pole whose tip is known lead back to the tip.
TEST(TwoPointTarget, RecoversASimulatedTip) {
  std::mt19937_64 random(20270303);
  std::uniform_real_distribution<double> metres(-100.0, 100.0);
  std::uniform_real_distribution<double> part(0.1, 3.0);
  for (int i = 0; i < 2000; ++i) {
    const double lean[3] = {metres(random), metres(random), metres(random)};
    const double length = std::hypot(lean[0], lean[1], lean[2]);
    const CoordPt tip = Pt(metres(random), metres(random), metres(random), kFull);
    const auto onPole = [&](double up) {
      return Pt(tip.north + lean[0] / length * up, tip.east + lean[1] / length * up,
                tip.elev + lean[2] / length * up, kFull);
    };
    const double target = part(random);
    const double apart = part(random);
    const CoordPt second = onPole(target);
    const CoordPt first = onPole(target + apart);
    for (const double nominal : {0.0, apart}) {
      double separation = 0.0;
      CoordPt out;
      ASSERT_EQ(STATUS_OK, KavoCalc2PtTarget(&first, &second, nominal, target, &separation, &out));
      EXPECT_NEAR(apart, separation, 1e-12);
      EXPECT_NEAR(tip.north, out.north, 1e-11);
      EXPECT_NEAR(tip.east, out.east, 1e-11);
      EXPECT_NEAR(tip.elev, out.elev, 1e-11);
    }
  }
}

}  // namespace
