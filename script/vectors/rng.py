"""Random cases of a survey, and the numbers that no survey brings but a caller may.

The generator is written out here, so that no version of Python changes the cases.
"""

import math
import struct
from typing import Any

from records import (ANGLE_INVALID, DEGREES_450, FULL_CIRCLE, HALF_CIRCLE, QUARTER_CIRCLE,
                     SLOPE_VERTICAL, TWO_POINTS, CoordPt, LineDef)

SEED = 20736000
NAN = math.nan
INF = math.inf
TINY = 5e-324  # the smallest denormal number
HUGE = 1e300
NEAR_UNDERFLOW = 1e-160  # its square is denormal

INT32_MAX = 2**31 - 1
INT32_MIN = -(2**31)

SPECIAL_NUMBERS = (0.0, -0.0, 1.0, -1.0, 0.1, NAN, INF, -INF, HUGE, -HUGE, TINY, -TINY,
                   NEAR_UNDERFLOW, 1e20, 2.0**53, SLOPE_VERTICAL, -SLOPE_VERTICAL)

CIRCLE_ANGLES = (0, 1, -1, 2, -3, QUARTER_CIRCLE - 3, QUARTER_CIRCLE - 1, QUARTER_CIRCLE,
                 QUARTER_CIRCLE + 1, -QUARTER_CIRCLE, 2592000, HALF_CIRCLE - 1, HALF_CIRCLE,
                 HALF_CIRCLE + 1, -HALF_CIRCLE, 3 * QUARTER_CIRCLE, FULL_CIRCLE - 1, FULL_CIRCLE)

SPECIAL_ANGLES = CIRCLE_ANGLES + (
    FULL_CIRCLE + 1, -FULL_CIRCLE + 1, -FULL_CIRCLE, -FULL_CIRCLE - 1, -FULL_CIRCLE - 2,
    DEGREES_450, 2 * FULL_CIRCLE, ANGLE_INVALID - 1, ANGLE_INVALID, ANGLE_INVALID + 1,
    -ANGLE_INVALID, INT32_MAX, INT32_MAX - FULL_CIRCLE, INT32_MAX - FULL_CIRCLE + 1, INT32_MIN,
    INT32_MIN + FULL_CIRCLE)

# Corners of a site: a local system, and two places of national grids (metres).
REGIONS = ((0.0, 0.0), (1000.0, 2000.0), (5412345.678, 3512345.678), (-1234567.891, 412345.678))


class Rng:
    """SplitMix64, and the few distributions that a survey needs."""

    def __init__(self, seed: int = SEED) -> None:
        self.state = seed

    def bits(self) -> int:
        """64 random bits."""
        self.state = (self.state + 0x9E3779B97F4A7C15) % 2**64
        z = self.state
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9 % 2**64
        z = (z ^ z >> 27) * 0x94D049BB133111EB % 2**64
        return z ^ z >> 31

    def below(self, n: int) -> int:
        """An integer in [0, n)."""
        return self.bits() % n

    def chance(self, percent: int) -> bool:
        """True so many times in a hundred."""
        return self.below(100) < percent

    def pick(self, choices: tuple[Any, ...]) -> Any:
        """One of the choices."""
        return choices[self.below(len(choices))]

    def metres(self, limit: int = 1000) -> float:
        """A length in [-limit, limit], mostly in whole millimetres as an instrument gives it."""
        millimetres = self.below(2000 * limit + 1) - 1000 * limit
        fraction = 0.0 if self.chance(70) else (self.bits() >> 11) * 2.0**-53
        return (millimetres + fraction) / 1000.0

    def wild_number(self) -> float:
        """Any double at all: a special one, any bits, or an ordinary length."""
        kind = self.below(3)
        if kind == 0:
            return self.pick(SPECIAL_NUMBERS)
        if kind == 1:
            return struct.unpack(">d", struct.pack(">Q", self.bits()))[0]
        return self.metres()

    def angle(self) -> int:
        """A direction in one circle, sometimes an exact one."""
        if self.chance(15):
            return self.pick(CIRCLE_ANGLES)
        return self.below(FULL_CIRCLE)

    def wild_angle(self) -> int:
        """Any 32-bit integer."""
        return self.pick(SPECIAL_ANGLES) if self.chance(40) else self.below(2**32) - 2**31

    def flags(self) -> int:
        """Validity flags, nearly always with a plane position."""
        return self.pick((3, 3, 3, 3, 3, 3, 1, 1, 1, 1, 7, 0xFFFD)) if self.chance(96) else 2

    def point(self, region: tuple[float, float], limit: int = 1000) -> CoordPt:
        """A point within the limit (metres) of the region's corner."""
        return CoordPt(region[0] + self.metres(limit), region[1] + self.metres(limit),
                       self.metres(), self.flags())

    def wild_point(self) -> CoordPt:
        """A point of wild and ordinary numbers."""
        numbers = [self.wild_number() if self.chance(45) else self.metres() for _ in range(3)]
        return CoordPt(*numbers, self.below(2**16) if self.chance(30) else self.flags())

    def region(self) -> tuple[float, float]:
        """Local or national grid."""
        return self.pick(REGIONS)

    def line(self, region: tuple[float, float]) -> LineDef:
        """A line near the region's corner; some run exactly along an axis."""
        p1, p2 = self.point(region), self.point(region)
        if self.chance(8):
            p2.north = p1.north
        if self.chance(8):
            p2.east = p1.east
        mode = TWO_POINTS if self.chance(60) else self.pick((1, 1, 1, 0, 3, 0xFFFF))
        return LineDef(p1, p2, self.angle(), mode)

    def wild_line(self) -> LineDef:
        """A line of wild points and any direction."""
        mode = TWO_POINTS if self.chance(60) else self.below(2**16)
        return LineDef(self.wild_point(), self.wild_point(), self.wild_angle(), mode)
