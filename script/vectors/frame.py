"""What every formula stands on: integer angles, directions and distances.

Integer angles are 1/16 arc-second, other angles radians. Settings are those of the library as
shipped.
"""

from ieee import (add32, atan2, hypot, quotient, remainder, sqrt, square, sub32, to_int32,
                  wrap32)
from records import (ANGLE_INVALID, DEGREES_450, FULL_CIRCLE, HALF_CIRCLE, HAS_ELEV, HAS_NE,
                     CoordPt)

PI = float.fromhex("0x1.921fb54442d18p+1")
HALF_CIRCLES_PER_UNIT = float.fromhex("0x1.9e409340f4581p-24")  # 1 / 10368000
RADIANS_PER_UNIT = float.fromhex("0x1.455a5b2ff8f9dp-22")  # pi / 10368000
HALF_UNITS_PER_RADIAN = float.fromhex("0x1.92dc67331ad7bp+22")  # 20736000 / pi

SETTING_AZIMUTH_REFERENCE = 0xC103

# --- Angles ---------------------------------------------------------------------------------------


def get_setting_int(_setting: int) -> int:
    """The library as shipped answers 0 to every question."""
    return 0


def wrap(a: int) -> int:
    """One circle added, then the truncating remainder: reaches no deeper than one circle."""
    return remainder(add32(a, FULL_CIRCLE), FULL_CIRCLE)


def int_angle_to_rad(a: int) -> float:
    """Radians of an integer angle brought into one circle."""
    return float(wrap(a)) * RADIANS_PER_UNIT


def unwrapped_rad(a: int) -> float:
    """Radians of an integer angle as it is; other last bits than int_angle_to_rad."""
    return float(a) * PI * HALF_CIRCLES_PER_UNIT


def truncated_angle(x: float) -> int:
    """A number of units truncated to the integer angle; invalid where no integer holds it."""
    n = to_int32(x)
    return ANGLE_INVALID if n is None else n


def turn_half_circle(a: int) -> int:
    """The opposite direction: half a circle added, then the truncating remainder."""
    return remainder(add32(a, HALF_CIRCLE), FULL_CIRCLE)


def into_circle(a: int) -> int:
    """A negative angle raised by as many circles as it takes, not further."""
    if a >= 0:
        return a
    k = (~a & 0xFFFFFFFF) // FULL_CIRCLE
    return wrap32(a + (k + 1) * FULL_CIRCLE)


def rad_to_int_angle(r: float) -> int:
    """Nearest integer angle, halves away from zero; invalid where there is no number to round."""
    n = to_int32(r * HALF_UNITS_PER_RADIAN)
    if n is None:
        return ANGLE_INVALID
    m = quotient(add32(n, 1), 2) if n >= 0 else quotient(sub32(n, 1), 2)
    return wrap(m)


def normalize_angle(a: int) -> int:
    """The in-place normalisation: only what is above a full circle comes back as it was."""
    a = into_circle(a)
    if a > FULL_CIRCLE:
        return a
    while True:
        a = sub32(a, FULL_CIRCLE)
        if a > FULL_CIRCLE:
            return a


# --- Directions and distances ---------------------------------------------------------------------


def has_ne(point: CoordPt) -> bool:
    """The plane position is valid."""
    return point.flags & HAS_NE != 0


def has_elev(point: CoordPt) -> bool:
    """The elevation is valid."""
    return point.flags & HAS_ELEV != 0


def has_both(point: CoordPt) -> bool:
    """Plane position and elevation are valid."""
    return has_ne(point) and has_elev(point)


def same_plan(a: CoordPt, b: CoordPt) -> bool:
    """The plane positions are exactly equal."""
    return a.north == b.north and a.east == b.east


def apply_azimuth_reference(a: int) -> int:
    """The direction as the instrument counts it: from north, or from south."""
    if get_setting_int(SETTING_AZIMUTH_REFERENCE) != 1:
        return a
    return turn_half_circle(a)


def azimuth_between(a: CoordPt, b: CoordPt) -> int:
    """Direction from a to b."""
    if not has_ne(a) or not has_ne(b):
        return ANGLE_INVALID
    d_north = b.north - a.north
    d_east = b.east - a.east
    if d_north == 0.0 and d_east == 0.0:
        return ANGLE_INVALID
    azimuth = rad_to_int_angle(atan2(d_east, d_north))
    return azimuth if azimuth == ANGLE_INVALID else apply_azimuth_reference(azimuth)


def zenith_between(a: CoordPt, b: CoordPt) -> int:
    """Zenith angle of the sight from a to b, whatever the flags say."""
    d_elev = b.elev - a.elev
    horiz = hypot(b.east - a.east, b.north - a.north)
    if horiz == 0.0 and d_elev == 0.0:
        return ANGLE_INVALID
    elevation = rad_to_int_angle(atan2(d_elev, horiz))
    if elevation == ANGLE_INVALID:
        return ANGLE_INVALID
    return remainder(sub32(DEGREES_450, elevation), FULL_CIRCLE)


def distances_between(a: CoordPt, b: CoordPt) -> tuple[float, float, float]:
    """Slope distance, horizontal distance and height difference of points with plane positions."""
    north_term = square(b.north - a.north)
    east_term = square(b.east - a.east)
    horiz = sqrt(east_term + north_term)
    if not has_elev(a):
        return horiz, horiz, 0.0
    slope = sqrt(square(b.elev - a.elev) + east_term + north_term)
    return slope, horiz, b.elev - a.elev
