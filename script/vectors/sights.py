"""Readings as an instrument takes them: sights from a station at known points, and their errors.

Readings come in whole units and distances in tenths of a millimetre, so that no machine's
mathematics library can change a case.
"""

import math
from collections.abc import Sequence

from records import (FULL_CIRCLE, HALF_CIRCLE, HAS_ELEV, HAS_NE, CoordPt, MultiResectInput,
                     StnAngleObs, StnDistObs)
from rng import Rng

UNITS_PER_RADIAN = HALF_CIRCLE / math.pi
TARGET_HEIGHT = 1.6
Points = Sequence[CoordPt]


class Setup:
    """An instrument at a station, its circle zeroed at the azimuth `zero`, with errors or none."""

    def __init__(self, station: CoordPt, zero: int, rng: Rng | None = None) -> None:
        self.station = station
        self.zero = zero
        self.rng = rng

    def error(self, size: int) -> int:
        """Up to the size to either side; nothing without a source of chance."""
        return 0 if self.rng is None else self.rng.below(2 * size + 1) - size

    def horiz_dist(self, point: CoordPt) -> float:
        """Horizontal distance, erring by up to 3 mm."""
        dn, de = point.north - self.station.north, point.east - self.station.east
        return (round(math.sqrt(dn * dn + de * de) * 1e4) + self.error(30)) / 1e4

    def height_diff(self, point: CoordPt) -> float:
        """Height difference from the instrument to the target above the point."""
        rise = point.elev + TARGET_HEIGHT - self.station.elev
        return (round(rise * 1e4) + self.error(30)) / 1e4

    def reading(self, point: CoordPt) -> int:
        """Horizontal reading on face 1."""
        azimuth = math.atan2(point.east - self.station.east, point.north - self.station.north)
        return (round(azimuth * UNITS_PER_RADIAN) - self.zero + self.error(60)) % FULL_CIRCLE

    def zenith(self, point: CoordPt) -> int:
        """Zenith reading on face 1."""
        return round(math.atan2(self.horiz_dist(point), self.height_diff(point)) * UNITS_PER_RADIAN)

    def angles(self, point: CoordPt, face: int = 1) -> tuple[int, int]:
        """Both readings on a face."""
        ha, va = self.reading(point), self.zenith(point)
        return (ha, va) if face == 1 else ((ha + HALF_CIRCLE) % FULL_CIRCLE, FULL_CIRCLE - va)

    def angle_obs(self, point: CoordPt, face: int = 1) -> StnAngleObs:
        """For the resection from three points."""
        return StnAngleObs(point, *self.angles(point, face), TARGET_HEIGHT)

    def dist_obs(self, point: CoordPt, with_dist: bool = True, face: int = 1) -> StnDistObs:
        """For the resection from two points."""
        ha, va = self.angles(point, face)
        dist = self.horiz_dist(point)
        direction = self.reading(point) / UNITS_PER_RADIAN
        local = CoordPt(round(dist * math.cos(direction) * 1e4) / 1e4,
                        round(dist * math.sin(direction) * 1e4) / 1e4)
        return StnDistObs(point, local, ha, va, dist if with_dist else 0.0,
                          self.height_diff(point), TARGET_HEIGHT)

    def sight(self, point: CoordPt, with_dist: bool = True, face: int = 1) -> MultiResectInput:
        """For the resection from many points and the known line."""
        ha, va = self.angles(point, face)
        dist, rise = self.horiz_dist(point), self.height_diff(point)
        slope = round(math.sqrt(dist * dist + rise * rise) * 1e4) / 1e4
        measured = (slope, dist, rise) if with_dist else (0.0, 0.0, 0.0)
        return MultiResectInput(point, ha, va, *measured, TARGET_HEIGHT)


def random_setup(rng: Rng, errors: bool = True) -> tuple[Setup, list[CoordPt]]:
    """A station somewhere, and twelve points around it, some of them without an elevation."""
    north, east = rng.region()
    station = CoordPt(north + rng.metres(50), east + rng.metres(50), rng.metres(20))
    points = [CoordPt(north + rng.metres(300), east + rng.metres(300), rng.metres(30),
                      HAS_NE | HAS_ELEV if rng.chance(75) else HAS_NE) for _ in range(12)]
    return Setup(station, rng.angle(), rng if errors else None), points
