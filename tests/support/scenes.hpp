// Random scenes, and what holds of every one of them wherever it lies on the map.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <random>

#include "points.hpp"

namespace kavo_test {

/// How many scenes a law is held against.
constexpr int kScenes = 5000;

const double kRadPerUnit = std::acos(-1.0) / ANGLE_HALF_CIRCLE;

/// A scene is mirrored or not, then turned clockwise about the origin, then shifted.
struct Motion {
  double side;  // 1, or -1 for east and west exchanged
  double radians;
  double dNorth;
  double dEast;

  CoordPt operator()(CoordPt p) const {
    const double north = p.north;
    const double east = side * p.east;
    p.north = std::cos(radians) * north - std::sin(radians) * east + dNorth;
    p.east = std::sin(radians) * north + std::cos(radians) * east + dEast;
    return p;
  }

  LineDef operator()(LineDef line) const {
    line.p1 = (*this)(line.p1);
    line.p2 = (*this)(line.p2);
    return line;
  }
};

/// Source of scenes about a kilometre wide. Every one starts from the same seed, which is printed,
/// and which KAVO_TEST_SEED replaces.
class Scenes {
 public:
  double Between(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random_);
  }

  CoordPt Point() { return Pt(Between(-500, 500), Between(-500, 500), Between(-100, 100), kFull); }

  /// A line of at least ten metres.
  LineDef Line() {
    const CoordPt p1 = Point();
    const double length = Between(10, 500);
    const double radians = Between(-4, 4);
    return TwoPoints(p1, Pt(p1.north + length * std::cos(radians),
                            p1.east + length * std::sin(radians), Between(-100, 100), kFull));
  }

  IntAngle Angle(IntAngle low, IntAngle high) {
    return std::uniform_int_distribution<IntAngle>(low, high)(random_);
  }

  Motion AnyMotion() {
    return {Between(-1, 1) < 0 ? -1.0 : 1.0, Between(-4, 4), Between(-1e3, 1e3),
            Between(-1e3, 1e3)};
  }

 private:
  static std::uint64_t Seed() {
    const char* given = std::getenv("KAVO_TEST_SEED");
    const std::uint64_t seed = given != nullptr ? std::strtoull(given, nullptr, 10) : 20261121;
    std::cout << "KAVO_TEST_SEED=" << seed << '\n';
    return seed;
  }

  std::mt19937_64 random_{Seed()};
};

inline double Distance(const CoordPt& a, const CoordPt& b) {
  return std::hypot(b.north - a.north, b.east - a.east);
}

/// How far `p` lies along the direction from `a` to `b`, by the scalar product; metres.
inline double Along(const CoordPt& a, const CoordPt& b, const CoordPt& p) {
  return ((p.north - a.north) * (b.north - a.north) + (p.east - a.east) * (b.east - a.east)) /
         Distance(a, b);
}

/// How far `p` lies to the right of the direction from `a` to `b`, by the cross product; metres.
inline double Offset(const CoordPt& a, const CoordPt& b, const CoordPt& p) {
  return ((p.east - a.east) * (b.north - a.north) - (p.north - a.north) * (b.east - a.east)) /
         Distance(a, b);
}

/// The readings of a sight as they are taken on face 2.
inline AngDistRec OnFace2(AngDistRec sight) {
  sight.azimuth = (sight.azimuth + ANGLE_HALF_CIRCLE) % ANGLE_FULL_CIRCLE;
  sight.zenith = ANGLE_FULL_CIRCLE - sight.zenith;
  return sight;
}

/// True when the points are the same place to within `metres`.
inline ::testing::AssertionResult Near(const CoordPt& want, const CoordPt& got, double metres) {
  if (Distance(want, got) <= metres) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << Text(got) << "\n is not near " << Text(want);
}

}  // namespace kavo_test
