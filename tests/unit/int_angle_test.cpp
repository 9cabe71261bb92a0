#include "core/int_angle.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/numeric.hpp"

namespace {

using namespace kavo;

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(WrapCircle, AddsOneCircleAndTakesTheTruncatingRemainder) {
  const struct {
    IntAngle angle;
    IntAngle wrapped;
    IntAngle turned;
  } rows[] = {
      {0, 0, ANGLE_HALF_CIRCLE},
      {-1, ANGLE_FULL_CIRCLE - 1, ANGLE_HALF_CIRCLE - 1},
      {ANGLE_FULL_CIRCLE, 0, ANGLE_HALF_CIRCLE},
      {-ANGLE_FULL_CIRCLE, 0, -ANGLE_HALF_CIRCLE},
      {-ANGLE_FULL_CIRCLE - 1, -1, -ANGLE_HALF_CIRCLE - 1},
      // Beyond 32 bits the sum wraps before the remainder is taken.
      {kMax, -11675649, -1307649},
      {kMin, -11675648, -1307648},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.angle);
    EXPECT_EQ(row.wrapped, WrapCircle(row.angle));
    EXPECT_EQ(row.turned, TurnHalfCircle(row.angle));
  }
}

TEST(IntAngleToRad, WrapsOnceAndMultipliesOnce) {
  EXPECT_EQ(0.0, IntAngleToRad(-ANGLE_FULL_CIRCLE));
  EXPECT_EQ(0.0, IntAngleToRad(ANGLE_FULL_CIRCLE));
  EXPECT_EQ(-kRadPerUnit, IntAngleToRad(-ANGLE_FULL_CIRCLE - 1));
  EXPECT_EQ(kPi / 2, IntAngleToRad(ANGLE_QUARTER_CIRCLE));
  EXPECT_EQ(kPi / 2, IntAngleToRad(ANGLE_QUARTER_CIRCLE - ANGLE_FULL_CIRCLE));
}

TEST(IntAngleToRad, IsNotTheUnwrappedProduct) {
  EXPECT_EQ(-kPi / 2, IntAngleToRadUnwrapped(-ANGLE_QUARTER_CIRCLE));
  EXPECT_EQ(2 * kPi, IntAngleToRadUnwrapped(ANGLE_FULL_CIRCLE));
  int different = 0;
  for (IntAngle a = 0; a < 1000; ++a) {
    different += IntAngleToRad(a) != IntAngleToRadUnwrapped(a) ? 1 : 0;
  }
  EXPECT_GT(different, 100);
}

TEST(RadToIntAngle, RoundsHalfUnitsAwayFromZero) {
  const double halfUnit = 1.0 / kHalfUnitsPerRad;
  const struct {
    const char* name;
    double radians;
    IntAngle angle;
  } rows[] = {
      {"nothing", 0.0, 0},
      {"less than half a unit", 0.9 * halfUnit, 0},
      {"half a unit", 1.1 * halfUnit, 1},
      {"one unit", 2.1 * halfUnit, 1},
      {"one and a half", 3.1 * halfUnit, 2},
      {"minus half a unit", -1.1 * halfUnit, ANGLE_FULL_CIRCLE - 1},
      {"minus one and a half", -3.1 * halfUnit, ANGLE_FULL_CIRCLE - 2},
      {"pi", kPi, ANGLE_HALF_CIRCLE},
      {"minus pi / 2", -kPi / 2, 15552000},
      {"the last that fits", 2147483647.5 / kHalfUnitsPerRad, -16205824},
      {"the first that does not fit", 2147483648.0 / kHalfUnitsPerRad, ANGLE_INVALID},
      {"the first too far below", -2147483649.0 / kHalfUnitsPerRad, ANGLE_INVALID},
      {"infinity", kInf, ANGLE_INVALID},
      {"minus infinity", -kInf, ANGLE_INVALID},
      {"not a number", std::nan(""), ANGLE_INVALID},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.angle, RadToIntAngle(row.radians));
  }
}

TEST(RadToIntAngle, UndoesIntAngleToRad) {
  for (IntAngle a = 0; a < ANGLE_FULL_CIRCLE; a += 97) {
    ASSERT_EQ(a, RadToIntAngle(IntAngleToRad(a)));
  }
}

// The behaviour that the closed form stands for.
IntAngle SubtractCircles(IntAngle a) {
  constexpr std::uint32_t kFull = ANGLE_FULL_CIRCLE;
  auto bits = static_cast<std::uint32_t>(a);
  if (a < 0) {
    bits += (~bits / kFull + 1) * kFull;
  }
  while (true) {
    if (static_cast<IntAngle>(bits) > ANGLE_FULL_CIRCLE) {
      return static_cast<IntAngle>(bits);
    }
    bits -= kFull;
  }
}

TEST(NormalizeAngle, KeepsItsRecordedValues) {
  const IntAngle rows[][2] = {{0, 2138423296},
                              {1, 2138423297},
                              {-1, 2138423295},
                              {ANGLE_FULL_CIRCLE, 2138423296},
                              {ANGLE_FULL_CIRCLE + 1, ANGLE_FULL_CIRCLE + 1},
                              {62208000, 62208000}};
  for (const auto& [given, expected] : rows) {
    IntAngle a = given;
    EXPECT_EQ(0, NormalizeAngle(a));
    EXPECT_EQ(expected, a) << given;
  }
}

// All 2^32 inputs were compared once; a stride that shares no factor with 2^32 or with a circle
// keeps watch, together with both sides of every edge.
TEST(NormalizeAngle, EqualsTheLoopThatItReplaces) {
  const auto check = [](std::uint32_t bits) {
    auto a = static_cast<IntAngle>(bits);
    const IntAngle expected = SubtractCircles(a);
    NormalizeAngle(a);
    ASSERT_EQ(expected, a) << bits;
  };
  for (std::uint64_t bits = 0; bits <= 0xFFFFFFFFU; bits += 100003) {
    check(static_cast<std::uint32_t>(bits));
  }
  for (std::int64_t edge = -104; edge <= 103; ++edge) {
    for (std::int64_t side = -2; side <= 2; ++side) {
      check(static_cast<std::uint32_t>(edge * ANGLE_FULL_CIRCLE + side));
    }
  }
}

}  // namespace
