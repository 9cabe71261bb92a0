#include "core/int_angle.hpp"

#include "core/numeric.hpp"

namespace kavo {

IntAngle WrapCircle(IntAngle a) noexcept {
  return WrapAdd(a, ANGLE_FULL_CIRCLE) % ANGLE_FULL_CIRCLE;
}

IntAngle TurnHalfCircle(IntAngle a) noexcept {
  return WrapAdd(a, ANGLE_HALF_CIRCLE) % ANGLE_FULL_CIRCLE;
}

double IntAngleToRad(IntAngle a) noexcept {
  return static_cast<double>(WrapCircle(a)) * kRadPerUnit;
}

double IntAngleToRadUnwrapped(IntAngle a) noexcept {
  return static_cast<double>(a) * kPi * kPerHalfCircle;
}

IntAngle RadToIntAngle(double radians) noexcept {
  const double halfUnits = radians * kHalfUnitsPerRad;
  if (!FitsInt32(halfUnits)) {
    return ANGLE_INVALID;
  }
  const auto truncated = static_cast<std::int32_t>(halfUnits);
  const IntAngle rounded = (truncated >= 0 ? WrapAdd(truncated, 1) : WrapSub(truncated, 1)) / 2;
  return WrapCircle(rounded);
}

// Meant as it stands, although it is not the usual wrap: full circles are subtracted until the
// angle exceeds one. From below that happens only when the subtraction passes the most negative
// integer and wraps to a large positive one; what exceeds a full circle at the start is left alone.
// The loop's hundred steps in closed form: counted from -2^31, it ends with the remainder of the
// division by a full circle less one full circle, which as a 32-bit number stands 2^32 higher.
int NormalizeAngle(IntAngle& a) noexcept {
  constexpr std::uint32_t kFull = ANGLE_FULL_CIRCLE;
  constexpr std::uint32_t kTwoTo31 = 0x80000000U;
  auto bits = static_cast<std::uint32_t>(a);
  if (a < 0) {
    bits += (~bits / kFull + 1) * kFull;
  } else if (a > ANGLE_FULL_CIRCLE) {
    return 0;
  }
  a = static_cast<IntAngle>(kTwoTo31 - kFull + (bits + kTwoTo31) % kFull);
  return 0;
}

}  // namespace kavo
