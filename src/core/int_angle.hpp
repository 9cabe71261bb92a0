// Integer angles (1/16 arc-second), their radians and their wraps.
#pragma once

#include "kavostdlib.h"

namespace kavo {

/// (a + full circle) rem full circle, with the remainder that takes the sign of the dividend and a
/// sum that wraps at 32 bits.
/// @param a  angle, 1/16 arc-second.
/// @return [0, full circle) for a >= -full circle; a negative angle below that.
IntAngle WrapCircle(IntAngle a) noexcept;

/// (a + half circle) rem full circle: turns a horizontal reading to the other face.
/// @param a  angle, 1/16 arc-second.
/// @return [0, full circle) for a >= -half circle; a negative angle below that.
IntAngle TurnHalfCircle(IntAngle a) noexcept;

/// Radians of an angle that is first wrapped into one circle; one multiplication.
/// @param a  angle, 1/16 arc-second.
/// @return radians in [0, 2 pi) for a >= -full circle.
double IntAngleToRad(IntAngle a) noexcept;

/// Radians of an angle as it stands, (a * pi) * (1 / half circle): no wrap, and other last bits
/// than IntAngleToRad. Each formula says which of the two it uses; they are not interchangeable.
/// @param a  angle, 1/16 arc-second.
/// @return radians, of either sign.
double IntAngleToRadUnwrapped(IntAngle a) noexcept;

/// The angle nearest to `radians`, half a unit rounded away from zero.
/// @param radians  at most pi in magnitude for a result inside one circle.
/// @return [0, full circle); ANGLE_INVALID when `radians` is not finite or beyond 32 bits.
IntAngle RadToIntAngle(double radians) noexcept;

/// Normalises an angle in place, in the library's own way: what lies above a full circle stays, and
/// anything else ends up above 2,000,000,000, congruent modulo 2^32 and not modulo a circle.
/// @param[in,out] a  angle, 1/16 arc-second.
/// @return always 0.
int NormalizeAngle(IntAngle& a) noexcept;

}  // namespace kavo
