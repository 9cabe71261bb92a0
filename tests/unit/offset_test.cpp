// The geometry of the offset measurements: the point that the host is asked to observe, and how
// its answer is reported.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "fake_host.hpp"
#include "points.hpp"

namespace {

using namespace kavo_test;

constexpr IntAngle kLevel = ANGLE_QUARTER_CIRCLE;
const double kRadians = std::acos(-1.0) / ANGLE_HALF_CIRCLE;

struct Reported {
  std::int32_t status = 0;
  AngleDistObs obs = Untouched<AngleDistObs>();
  CoordPt point = Untouched<CoordPt>();
  double radius = Untouched<double>();
  double hookValue = 0.0;  // as the host was asked with it
};

// That the call succeeded, and which point the host was asked to observe.
void ExpectAsked(const Reported& out, double north, double east, double elev, double tolerance) {
  EXPECT_EQ(STATUS_OK, out.status);
  EXPECT_NEAR(north, Host().askedNorth, tolerance);
  EXPECT_NEAR(east, Host().askedEast, tolerance);
  EXPECT_EQ(elev, Host().askedElev);
}

Reported Corner3Pt(const CoordPt& a, const CoordPt& b, const CoordPt& p, double hookValue = 0.0) {
  Reported out;
  out.status = KavoCalcOfsCorner3Pt(&a, &b, &p, -1.0, &out.obs, &out.point, hookValue);
  out.hookValue = Host().askedHookValue;
  return out;
}

Reported Corner4Pt(const CoordPt& a1, const CoordPt& b1, const CoordPt& a2, const CoordPt& b2,
                   double hookValue = 0.0) {
  Reported out;
  out.status = KavoCalcOfsCorner4Pt(&a1, &b1, &a2, &b2, -1.0, &out.obs, &out.point, hookValue);
  out.hookValue = Host().askedHookValue;
  return out;
}

Reported LineHA(const CoordPt& a, const CoordPt& b, IntAngle ha, IntAngle va,
                const CoordPt& station, double hookValue = 0.0) {
  Reported out;
  out.status = KavoCalcOfsLineHA(&a, &b, ha, va, &station, 1.5, &out.obs, &out.point, hookValue);
  out.hookValue = Host().askedHookValue;
  return out;
}

Reported Circle(const AngleDistObs& surface, IntAngle ha2, IntAngle va2, IntAngle ha3, IntAngle va3,
                const CoordPt& station, double hookValue = 0.0) {
  Reported out;
  out.point.elev = 77.0;
  out.status = KavoCalcOfsCircle(&surface, hookValue, ha2, va2, ha3, va3, &station, -1.0, &out.obs,
                                 &out.point, &out.radius);
  out.hookValue = Host().askedHookValue;
  return out;
}

// One good call of each, with a hook value of its own.
TEST(Offset, ReportsWhatTheHostAnswers) {
  const struct {
    const char* name;
    std::int32_t face;
    AngleDistObs obs;
  } rows[] = {
      {"face 1", 0, {11 * kDegree, 80 * kDegree, 12.5}},
      {"face 2", 1, {191 * kDegree, 280 * kDegree, 12.5}},
      {"only the low 16 bits of the face count", 0x70001, {191 * kDegree, 280 * kDegree, 12.5}},
      {"any other face is face 1", -1, {11 * kDegree, 80 * kDegree, 12.5}},
  };
  const CoordPt a = Pt(0, 10, 1, kFull);
  const CoordPt b = Pt(20, 10, 3, kFull);
  const HostGuard guard;
  Host().reply = {11 * kDegree, 80 * kDegree, 12.5, {}, 1.0, 2.0, 3.0};
  for (const auto& row : rows) {
    Host().face = row.face;
    for (const std::int32_t hostStatus : {0, -1, -77}) {
      Host().replyCode = hostStatus;
      const struct {
        const char* name;
        std::int32_t status;
        double hookValue;
        Reported out;
      } calls[] = {
          {"three points", STATUS_OK, 1.0, Corner3Pt(a, b, Pt(4, 3, 2, kFull), 1.0)},
          {"four points", STATUS_OK, 2.0, Corner4Pt(a, b, Pt(7, 0), Pt(7, 4, 2, kFull), 2.0)},
          {"line", hostStatus, 3.0, LineHA(a, b, kLevel, kLevel, Pt(5, 0), 3.0)},
          {"circle", STATUS_OK, 4.0,
           Circle({0, kLevel, 5.0}, 330 * kDegree, kLevel, 30 * kDegree, kLevel, Pt(0, 0), 4.0)},
      };
      for (const auto& call : calls) {
        SCOPED_TRACE(std::string(row.name) + ", " + call.name);
        EXPECT_EQ(call.status, call.out.status);
        EXPECT_EQ(call.hookValue, call.out.hookValue);
        EXPECT_EQ(Text(row.obs), Text(call.out.obs));
        EXPECT_EQ(Text(Written(1, 2, 3, kFull)), Text(call.out.point));
      }
    }
  }
}

// A rectangular building on a 3-4-5 slant with its corner at (19, 32).
TEST(Offset, FindsACornerByHand) {
  const HostGuard guard;
  const CoordPt a = Pt(10, 20);
  const CoordPt b = Pt(16, 28);
  ExpectAsked(Corner3Pt(a, b, Pt(15, 35, 7, kFull)), 19, 32, 7, 1e-13);
  ExpectAsked(Corner3Pt(b, a, Pt(15, 35, 7, kFull)), 19, 32, 7, 1e-13);
  ExpectAsked(Corner4Pt(a, b, Pt(11, 38), Pt(15, 35, 7, kFull)), 19, 32, 7, 1e-13);
  ExpectAsked(Corner4Pt(Pt(3, 0), Pt(3, 1), Pt(0, 8), Pt(1, 8, 7, kFull)), 3, 8, 7, 1e-13);
}

// A scene that is turned about the station and shifted with it.
struct Scene {
  double north;
  double east;
  double turn;  // radians
  CoordPt operator()(double ahead, double right, double elev = 0.0) const {
    return Pt(north + ahead * std::cos(turn) - right * std::sin(turn),
              east + ahead * std::sin(turn) + right * std::cos(turn), elev, kFull);
  }
};

// The point of the line is found before, between and beyond its two points, whichever way the line
// runs and on either face. The sighting's zenith angle does not enter.
TEST(Offset, FollowsALineInSpace) {
  std::mt19937_64 random(20270505);
  std::uniform_real_distribution<double> metres(-100.0, 100.0);
  std::uniform_int_distribution<IntAngle> reading(0, ANGLE_FULL_CIRCLE - 1);
  const HostGuard guard;
  for (int i = 0; i < 2000; ++i) {
    const IntAngle ha = reading(random);
    const Scene scene{metres(random), metres(random), ha * kRadians};
    const double ahead = std::fabs(metres(random)) + 1.0;
    const CoordPt station = scene(0, 0);
    const CoordPt hidden = scene(ahead, 0, metres(random));
    // The line through the hidden point, which stands at `at` lengths from a.
    const double at = metres(random) / 25.0;
    const double along = metres(random);
    const double right = std::fabs(metres(random)) + 2.0;
    const double rise = metres(random);
    const CoordPt a = scene(ahead - at * along, -at * right, hidden.elev - at * rise);
    const CoordPt b =
        scene(ahead + (1 - at) * along, (1 - at) * right, hidden.elev + (1 - at) * rise);
    for (const bool face2 : {false, true}) {
      const IntAngle va = 45 * kDegree;
      LineHA(a, b, face2 ? (ha + ANGLE_HALF_CIRCLE) % ANGLE_FULL_CIRCLE : ha,
             face2 ? ANGLE_FULL_CIRCLE - va : va, station);
      EXPECT_NEAR(hidden.north, Host().askedNorth, 1e-8);
      EXPECT_NEAR(hidden.east, Host().askedEast, 1e-8);
      EXPECT_NEAR(hidden.elev, Host().askedElev, 1e-8);
    }
  }
}

// The sighting may lie behind the instrument, and an unflagged elevation of a is used all the same.
TEST(Offset, FollowsALineBehindTheInstrument) {
  const HostGuard guard;
  LineHA(Pt(0, 10, 1), Pt(20, 10, 3, kFull), 3 * kLevel, kLevel, Pt(5, 0));
  EXPECT_NEAR(5.0, Host().askedNorth, 1e-13);
  EXPECT_NEAR(10.0, Host().askedEast, 1e-13);
  EXPECT_NEAR(1.5, Host().askedElev, 1e-13);
}

// A column built from its edges and radius comes back with its centre and radius, wherever between
// the edges its surface was met, with the edges in either order and each sighting on either face.
TEST(Offset, FindsARoundObject) {
  std::mt19937_64 random(20270606);
  std::uniform_int_distribution<IntAngle> reading(0, ANGLE_FULL_CIRCLE - 1);
  std::uniform_int_distribution<IntAngle> halfWidth(kDegree, 80 * kDegree);
  std::uniform_real_distribution<double> metres(1.0, 100.0);
  std::uniform_real_distribution<double> part(-0.99, 0.99);
  std::uniform_int_distribution<int> coin(0, 1);
  const auto sighted = [&](IntAngle& ha, IntAngle& va) {
    ha = (ha + ANGLE_FULL_CIRCLE) % ANGLE_FULL_CIRCLE;
    va = 100 * kDegree;
    if (coin(random) == 1) {
      ha = (ha + ANGLE_HALF_CIRCLE) % ANGLE_FULL_CIRCLE;
      va = ANGLE_FULL_CIRCLE - va;
    }
  };
  const HostGuard guard;
  for (int i = 0; i < 2000; ++i) {
    const IntAngle middle = reading(random);
    const IntAngle half = halfWidth(random);
    const auto aside = static_cast<IntAngle>(half * part(random));
    const double toCentre = metres(random);
    const double radius = toCentre * std::sin(half * kRadians);
    // Along a ray that leaves the middle by `aside`, to the near side of the circle.
    const double across = toCentre * std::sin(aside * kRadians);
    AngleDistObs surface{
        middle + aside, 0,
        toCentre * std::cos(aside * kRadians) - std::sqrt(radius * radius - across * across)};
    IntAngle ha2 = middle - half;
    IntAngle va2 = 0;
    IntAngle ha3 = middle + half;
    IntAngle va3 = 0;
    sighted(surface.ha, surface.va);
    sighted(ha2, va2);
    sighted(ha3, va3);
    if (coin(random) == 1) {
      std::swap(ha2, ha3);
      std::swap(va2, va3);
    }
    const Scene scene{metres(random), metres(random), middle * kRadians};
    const CoordPt centre = scene(toCentre, 0);
    const auto out = Circle(surface, ha2, va2, ha3, va3, scene(0, 0));
    // Near an edge the root in the formula loses half of its digits.
    EXPECT_NEAR(radius, out.radius, 1e-7);
    ExpectAsked(out, centre.north, centre.east, 77.0, 1e-7);  // the elevation is the caller's
  }
}

// Sighted away from the object, the radius comes out negative: that is how a caller can tell.
TEST(Offset, ShowsARoundObjectBehindTheInstrument) {
  const HostGuard guard;
  const auto out = Circle({ANGLE_HALF_CIRCLE, kLevel, 5.0}, 330 * kDegree, kLevel, 30 * kDegree,
                          kLevel, Pt(0, 0));
  EXPECT_EQ(STATUS_OK, out.status);
  EXPECT_LT(out.radius, 0.0);
}

// With azimuths that count from south every sighting is turned by a half circle.
TEST(Offset, AppliesTheAzimuthReference) {
  const HostGuard guard;
  Host().azimuthReference = 1;
  ExpectAsked(Circle({ANGLE_HALF_CIRCLE, kLevel, 5.0}, 150 * kDegree, kLevel, 210 * kDegree, kLevel,
                     Pt(0, 0)),
              10, 0, 77.0, 1e-13);
}

// So is the sight to a plane. The turned sight has the wall before it and meets it high up, the
// unturned one is followed backwards and meets it low down.
TEST(TwoPointPlane, AppliesTheAzimuthReference) {
  const CoordPt p1 = Pt(0, 10, 100, kFull);
  const CoordPt p2 = Pt(20, 10);
  const CoordPt station = Pt(5, 0, 100);
  ASSERT_EQ(STATUS_OK, KavoREFSet2PtBasePlane(&p1, &p2));
  const HostGuard guard;
  for (const bool fromSouth : {true, false}) {
    Host().azimuthReference = fromSouth ? 1 : 0;
    CoordPt result;
    double along = 0.0;
    double height = 0.0;
    ASSERT_EQ(STATUS_OK, KavoREFCalc2PtPlane(3 * ANGLE_QUARTER_CIRCLE, 45 * kDegree, &station, 0.0,
                                             &result, &along, &height));
    EXPECT_NEAR(fromSouth ? 10.0 : -10.0, height, 1e-13);
  }
}

}  // namespace
