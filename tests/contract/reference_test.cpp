// Points put where the reference line, arc or plane says, and found there again.
#include <gtest/gtest.h>

#include <cmath>

#include "scenes.hpp"

namespace {

using namespace kavo_test;

// Whatever way the line runs; and from the other end everything is seen the other way round.
TEST(RefLine, FindsThePointThatWasPutThere) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const LineDef line = scenes.Line();
    const double length = Distance(line.p1, line.p2);
    const double along = scenes.Between(-1000, 1000);
    const double offset = scenes.Between(-1000, 1000);
    const double above = scenes.Between(-1000, 1000);
    CoordPt point;
    CoordPt foot;
    ASSERT_EQ(STATUS_OK, KavoCogoOffsetToCoord(&line.p1, &line.p2, along, offset, &point));
    ASSERT_EQ(STATUS_OK, KavoCogoOffsetToCoord(&line.p1, &line.p2, along, 0, &foot));
    point.elev += above;
    for (const bool back : {false, true}) {
      RefLineResult out;
      ASSERT_EQ(STATUS_OK,
                KavoREFSetBaseLine(back ? &line.p2 : &line.p1, back ? &line.p1 : &line.p2));
      ASSERT_EQ(STATUS_OK, KavoREFCalc(&point, &out));
      ASSERT_NEAR(back ? length - along : along, out.along, 1e-9);
      ASSERT_NEAR(back ? -offset : offset, out.offset, 1e-9);
      ASSERT_NEAR(above, out.dElev, 1e-6);  // steep where the base points are close
      ASSERT_TRUE(Near(foot, out.foot, 1e-9));
    }
  }
}

// A curve by its own equation: the azimuth grows by 1 / R per metre, and the place is its integral.
struct Curve {
  CoordPt start;
  double azimuth;
  double radius;

  // A point at a distance along the curve, or on its tangent there, and an offset to the right.
  [[nodiscard]] CoordPt At(double along, double onTangent, double offset) const {
    const double there = azimuth + along / radius;
    return Pt(start.north + radius * (std::sin(there) - std::sin(azimuth)) +
                  onTangent * std::cos(there) - offset * std::sin(there),
              start.east + radius * (std::cos(azimuth) - std::cos(there)) +
                  onTangent * std::sin(there) + offset * std::cos(there));
  }
};

// Defines the arc in one of the three ways. The given end need only lie on the end tangent.
std::int32_t Define(const Curve& curve, IntAngle startTangent, IntAngle turn, int way) {
  const double length = std::fabs(curve.radius) * turn * kRadPerUnit;
  const IntAngle endTangent = startTangent + (curve.radius > 0 ? turn : -turn);
  const CoordPt end = curve.At(length, way, 0);
  switch (way % 3) {
    case 0:
      return KavoREFSetArcByCoord(&curve.start, &end, startTangent, endTangent);
    case 1:
      return KavoREFSetArcByRadiusHAngle(&curve.start, startTangent, curve.radius, endTangent);
    default:
      return KavoREFSetArcByRadiusArcLen(&curve.start, startTangent, curve.radius, length);
  }
}

void ExpectOnArc(const CoordPt& point, double along, double offset, double reach) {
  RefLineResult out;
  EXPECT_EQ(STATUS_OK, KavoREFCalcArc(&point, &out));
  EXPECT_NEAR(along, out.along, reach);
  EXPECT_NEAR(offset, out.offset, reach);
}

// Anywhere, in either sense, and however it is defined.
TEST(RefArc, FindsThePointThatWasPutThere) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const IntAngle startTangent = scenes.Angle(0, ANGLE_FULL_CIRCLE - 1);
    const IntAngle turn =
        i % 7 == 0 ? ANGLE_HALF_CIRCLE : 2 * scenes.Angle(5 * kDegree, 85 * kDegree);
    const double size = scenes.Between(20, 220);
    const Curve curve{scenes.Point(), startTangent * kRadPerUnit, i % 2 == 0 ? size : -size};
    ASSERT_EQ(STATUS_OK, Define(curve, startTangent, turn, i % 12));
    const double length = size * turn * kRadPerUnit;
    const double offset = size * scenes.Between(-0.8, 0.8);
    const double along = length * scenes.Between(0.01, 0.99);
    // No further on the end tangent than half a circle on from the start.
    const double beyond = size * scenes.Between(0.0015, 0.15);
    const double reach = 6.1e-7 * 2 * size + 1e-9;  // two units of direction, and the last digits
    ExpectOnArc(curve.At(along, 0, offset), along, offset, reach);
    ExpectOnArc(curve.At(0, -beyond, offset), -beyond, offset, reach);
    if (curve.radius > 0 || turn == ANGLE_HALF_CIRCLE || turn < 130 * kDegree) {
      ExpectOnArc(curve.At(length, beyond, offset), length + beyond, offset, reach);
    }
  }
}

struct Pierced {
  std::int32_t status;
  CoordPt point;
  double along;
  double height;  // or distance across
};

std::string Text(const Pierced& p) {
  return kavo_test::Text(p.status) + kavo_test::Text(p.point) + kavo_test::Text(p.along) +
         kavo_test::Text(p.height);
}

// The sight from a station, its instrument 1.6 m above it, to a point of a plane: it is pierced in
// that point, to within `reach`, and on face 2 in just the same one.
template <class Calc>
void ExpectPierced(Calc calc, const CoordPt& station, const Pierced& want, double reach) {
  const CoordPt axis = Pt(station.north, station.east, station.elev + 1.6, kFull);
  AngDistRec sight;
  ASSERT_EQ(STATUS_OK, KavoCogoCoordToAngDist(&axis, &want.point, &sight));
  const auto pierced = [&](const AngDistRec& s) {
    Pierced out{};
    out.status = calc(s.azimuth, s.zenith, &station, 1.6, &out.point, &out.along, &out.height);
    return out;
  };
  const Pierced got = pierced(sight);
  EXPECT_EQ(want.status, got.status);
  EXPECT_TRUE(Near(want.point, got.point, reach));
  EXPECT_NEAR(want.point.elev, got.point.elev, reach);
  EXPECT_NEAR(want.along, got.along, reach);
  EXPECT_NEAR(want.height, got.height, reach);
  EXPECT_EQ(Text(got), Text(pierced(OnFace2(sight))));
}

// From either side, with a base elevation and without, and from the other end of the base.
TEST(TwoPointPlane, FindsThePointThatWasPutThere) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const LineDef base = scenes.Line();
    const auto& [p1, p2] = std::pair(base.p1, base.p2);
    const CoordPt p1InPlan = Pt(p1.north, p1.east);
    const CoordPt station = scenes.Point();
    const double along = scenes.Between(-100, 100);
    const double height = scenes.Between(-100, 100);
    const double length = Distance(p1, p2);
    CoordPt point;
    ASSERT_EQ(STATUS_OK, KavoCogoOffsetToCoord(&p1, &p2, along, 0, &point));
    point.elev = p1.elev + height;
    const double dist = Distance(station, point);
    const double rise = (point.elev - station.elev) / dist;
    const double apart = std::fabs(Offset(p1, p2, station));
    if (apart < 1) {
      continue;  // along the wall: half a unit of direction moves the point by metres
    }
    // Half a unit of direction moves the point by its distance over the sine of the angle of
    // incidence, one of zenith by the square of the slope distance over the horizontal one.
    const double reach =
        1e-9 + 3e-7 * dist * (dist / apart + 1 + rise * rise) * (1 + std::fabs(rise));
    ASSERT_EQ(STATUS_OK, KavoREFSet2PtBasePlane(&p1, &p2));
    ExpectPierced(KavoREFCalc2PtPlane, station, {STATUS_OK, point, along, height}, reach);
    ASSERT_EQ(STATUS_OK, KavoREFSet2PtBasePlane(&p2, &p1));
    ExpectPierced(KavoREFCalc2PtPlane, station,
                  {STATUS_OK, point, length - along, point.elev - p2.elev}, reach);
    ASSERT_EQ(WARN_NO_ELEVATION, KavoREFSet2PtBasePlane(&p1InPlan, &p2));
    ExpectPierced(KavoREFCalc2PtPlane, station, {WARN_NO_ELEVATION, point, along, 0}, reach);
  }
}

using Vector = CoordPt;

Vector Mix(const Vector& v, double a, const Vector& w, double b) {
  return Pt(a * v.north + b * w.north, a * v.east + b * w.east, a * v.elev + b * w.elev, kFull);
}

double Dot(const Vector& v, const Vector& w) {
  return v.north * w.north + v.east * w.east + v.elev * w.elev;
}

Vector Unit(const Vector& v) { return Mix(v, 1 / std::sqrt(Dot(v, v)), v, 0); }

// Positive when w lies to the right of v for one who looks against u.
double RightHand(const Vector& v, const Vector& w, const Vector& u) {
  return v.north * (w.east * u.elev - w.elev * u.east) -
         v.east * (w.north * u.elev - w.elev * u.north) +
         v.elev * (w.north * u.east - w.east * u.north);
}

// A plane in any attitude, by two perpendicular directions, and an instrument on either side.
TEST(ThreePointPlane, FindsThePointThatWasPutThere) {
  Scenes scenes;
  for (int i = 0; i < kScenes; ++i) {
    const CoordPt p1 = scenes.Point();
    const Vector ahead = Unit(scenes.Point());
    const Vector some = scenes.Point();
    const Vector aside = Unit(Mix(some, 1, ahead, -Dot(some, ahead)));
    const auto inPlane = [&](double along, double left) {
      return Mix(Mix(p1, 1, ahead, along), 1, aside, left);
    };
    const CoordPt p2 = inPlane(30, 0);
    const CoordPt p3 = inPlane(scenes.Between(-50, 50), 20);
    ASSERT_EQ(STATUS_OK, KavoREFSet3PtBasePlane(&p1, &p2, &p3));
    const double along = scenes.Between(-50, 50);
    const double left = scenes.Between(-50, 50);
    const CoordPt point = inPlane(along, left);
    const Vector back = Unit(scenes.Point());  // from the point to the instrument
    const double side = RightHand(ahead, aside, back);
    if (std::fabs(side) < 0.1) {
      continue;  // too slant for the tolerance below
    }
    CoordPt station = Mix(point, 1, back, 60);
    station.elev -= 1.6;
    // Half a unit of both angles over 60 m, stretched by the slant.
    ExpectPierced(KavoREFCalc3PtPlane, station, {STATUS_OK, point, along, side > 0 ? left : -left},
                  2e-4);
  }
}

}  // namespace
