// Numeric helpers that make every corner of the arithmetic defined: integers wrap, floating-point
// numbers become integers only when they fit, and squares are products.
#pragma once

#include <cstdint>

#include "kavostdlib.h"

namespace kavo {

/// pi / ANGLE_HALF_CIRCLE: radians in one unit of IntAngle, 3.0300855069346e-7.
inline constexpr double kRadPerUnit = 0x1.455a5b2ff8f9dp-22;

/// pi rounded to double, 3.141592653589793.
inline constexpr double kPi = 0x1.921fb54442d18p+1;

/// 1 / ANGLE_HALF_CIRCLE, 9.645061728395061e-8.
inline constexpr double kPerHalfCircle = 0x1.9e409340f4581p-24;

/// ANGLE_FULL_CIRCLE / pi: half units of IntAngle in one radian, 6600473.799907084.
inline constexpr double kHalfUnitsPerRad = 0x1.92dc67331ad7bp+22;

/// Sum of two 32-bit integers, wrapping modulo 2^32.
constexpr std::int32_t WrapAdd(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

/// Difference a - b of two 32-bit integers, wrapping modulo 2^32.
constexpr std::int32_t WrapSub(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

/// True when `value`, truncated towards zero, is a 32-bit integer; false for a NaN.
constexpr bool FitsInt32(double value) noexcept {
  return value > -2147483649.0 && value < 2147483648.0;
}

/// `value` truncated towards zero; ANGLE_INVALID when it does not fit 32 bits or is not a number,
/// so that an impossible number never becomes a plausible direction.
constexpr IntAngle TruncateToAngle(double value) noexcept {
  return FitsInt32(value) ? static_cast<IntAngle>(value) : ANGLE_INVALID;
}

/// value * value. Not pow(value, 2.0), which differs in the last bit in about one of 1,000 values.
constexpr double Square(double value) noexcept { return value * value; }

}  // namespace kavo
