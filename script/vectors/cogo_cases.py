"""What coordinate geometry is asked: corners chosen by hand, then random cases.

Each function yields the argument tuples of one export.
"""

import math
from collections.abc import Iterator

from cases import ALL_FLAGS, NO_POSITION, ORDINARY, ORIGIN, WILD, Case, Source, at, high, single
from records import (ANGLE_INVALID, FULL_CIRCLE, HALF_CIRCLE, QUARTER_CIRCLE, SLOPE_VERTICAL,
                     TWO_POINTS, AngDistRec, CoordPt, LineDef)
from rng import (HUGE, INF, INT32_MIN, NAN, NEAR_UNDERFLOW, REGIONS, SPECIAL_ANGLES,
                 SPECIAL_NUMBERS, TINY, Rng)

PARALLEL_SLOPES = 1e-5  # slopes closer than this are parallel


def through(p1: CoordPt, p2: CoordPt) -> LineDef:
    """Line by two points; its direction means nothing."""
    return LineDef(p1, p2, -1, TWO_POINTS)


def towards(p1: CoordPt, direction: int, mode: int = 1) -> LineDef:
    """Line by point and direction; its second point means nothing."""
    return LineDef(p1, at(7.0, 8.0, 9.0, 0), direction, mode)


def rising(slope: float) -> LineDef:
    """Line through the origin with this slope, east per north, to the bit."""
    return through(at(0.0, 0.0), at(1.0, slope))


ODD_LINES = (
    through(NO_POSITION, ORIGIN),
    through(ORIGIN, NO_POSITION),
    through(NO_POSITION, NO_POSITION),
    towards(NO_POSITION, 0),
    through(at(1.0, 2.0), at(1.0, 2.0)),
    through(at(0.0, 0.0), at(-0.0, -0.0)),
    through(at(NAN, 0.0), at(1.0, 1.0)),
    through(at(0.0, NAN), at(1.0, 1.0)),
    through(at(0.0, 0.0), at(INF, 1.0)),
    through(at(INF, 0.0), at(INF, 1.0)),
    through(at(0.0, 0.0), at(1.0, -INF)),
    through(at(0.0, 0.0), at(HUGE, -HUGE)),
    through(at(0.0, 0.0), at(TINY, 1.0)),
    through(at(0.0, 0.0), at(-TINY, 1.0)),
    through(at(0.0, 0.0), at(TINY, TINY)),
    towards(at(NAN, 1.0), 2592000),
    towards(at(1.0, INF), 2592000),
    through(at(1.0, 2.0, 0.0, 0xFFFD), at(4.0, 6.0, 0.0, 0x8001)),
    towards(at(1.0, 2.0, 0.0, 0x0101), 2592000, 0),
    towards(at(1.0, 2.0), 2592000, 3),
    towards(at(1.0, 2.0), 2592000, 0x0102),
)

# Slopes on either side of the bound above which a line counts as one of constant north.
CLAMPED_SLOPES = tuple(
    rising(sign * slope)
    for sign in (1.0, -1.0)
    for slope in (SLOPE_VERTICAL - 0.5, math.nextafter(SLOPE_VERTICAL, 0.0), SLOPE_VERTICAL,
                  math.nextafter(SLOPE_VERTICAL, INF), SLOPE_VERTICAL + 0.5, 1e12))

CONSTANT_NORTH = through(at(3.0, -4.0), at(3.0, 9.0))
CONSTANT_EAST = through(at(-2.0, 6.0), at(8.0, 6.0))
NATIONAL = through(at(5412345.678, 3512345.678), at(5412445.123, 3512401.321))


def coord_to_ang_dist() -> Iterator[Case]:
    """Inverse."""
    for north in (-1.0, -0.0, 0.0, 1.0):
        for east in (-1.0, -0.0, 0.0, 1.0):
            yield high(0.0, 0.0, 0.0), high(north, east, 1.0)
    for elev in (-1.0, 1.0, 0.0, -0.0, INF, NAN, TINY):
        yield high(0.0, 0.0, 0.0), high(0.0, 0.0, elev)
        yield high(0.0, 0.0, 0.0), high(3.0, 4.0, elev)
    for flags in ALL_FLAGS:
        yield at(1.0, 2.0, 3.0, flags), at(4.0, 6.0, 15.0, 3)
        yield at(1.0, 2.0, 3.0, 3), at(4.0, 6.0, 15.0, flags)
    for number in SPECIAL_NUMBERS:
        yield high(0.0, 0.0, 0.0), high(number, 1.0, 2.0)
        yield high(0.0, number, 0.0), high(1.0, 0.0, 2.0)
        yield high(number, number, number), high(number, number, 1.0)
    yield at(NEAR_UNDERFLOW, NEAR_UNDERFLOW), at(0.0, 0.0)
    yield at(INF, 1.0), at(-INF, NAN)
    yield high(5412345.678, 3512345.678, 412.345), high(5412445.123, 3512401.321, 398.765)
    # Directions within half a unit of north, from either side.
    for east in (1e-7, 1.5e-7, 1.6e-7, 4.6e-7, -1e-7, -1.5e-7, -1.6e-7, -4.6e-7):
        yield high(0.0, 0.0, 0.0), high(1.0, east, east)
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        yield rng.point(region), rng.point(region, rng.pick((1, 50, 1000)))
    for _ in range(WILD):
        yield rng.wild_point(), rng.wild_point()


def ang_dist_to_coord() -> Iterator[Case]:
    """Forward. Zenith and slope distance mean nothing."""

    def polar(azimuth: int, dist: float, d_elev: float = 0.5) -> AngDistRec:
        return AngDistRec(azimuth, 77, NAN, dist, d_elev)

    for azimuth in SPECIAL_ANGLES:
        yield high(1.0, 2.0, 3.0), polar(azimuth, 5.0)
        yield high(1.0, 2.0, 3.0), polar(azimuth, -5.0)
        yield high(1000.0, 2000.0, 3.0), polar(azimuth, 5.0)
    for flags in ALL_FLAGS:
        yield at(1.0, 2.0, 3.0, flags), polar(2592000, 10.0)
    for number in SPECIAL_NUMBERS:
        yield high(1.0, 2.0, 3.0), polar(2592000, number, number)
        yield high(number, 2.0, number), polar(2592000, 10.0)
        yield at(1.0, number, number), polar(2592000, 10.0, number)
    for azimuth in (0, HALF_CIRCLE, -QUARTER_CIRCLE):
        for dist in (0.0, -0.0):
            yield high(-0.0, -0.0, -0.0), polar(azimuth, dist, dist)
    yield high(5412345.678, 3512345.678, 412.345), polar(7777777, 123.456)
    rng = Rng()
    for _ in range(ORDINARY):
        yield rng.point(rng.region()), polar(rng.angle(), rng.metres(), rng.metres(20))
    for _ in range(WILD):
        yield rng.wild_point(), polar(rng.wild_angle(), rng.wild_number(), rng.wild_number())


def calc_slope_by_dist() -> Iterator[Case]:
    """Grade of a slope."""
    for number in SPECIAL_NUMBERS:
        for other in (0.0, -0.0, 3.0, -INF, NAN, TINY):
            yield number, other
    yield 3.0, HUGE
    yield HUGE, 1e-300
    rng = Rng()
    for _ in range(ORDINARY):
        yield abs(rng.metres()), rng.metres(50)
    for _ in range(WILD):
        yield rng.wild_number(), rng.wild_number()


def calc_cross_line() -> Iterator[Case]:
    """Two lines."""
    for odd in ODD_LINES:
        yield odd, CONSTANT_EAST
        yield rising(1.0), odd
    yield through(NO_POSITION, ORIGIN), through(ORIGIN, ORIGIN)
    yield through(ORIGIN, ORIGIN), through(NO_POSITION, ORIGIN)
    for steep in CLAMPED_SLOPES:
        yield steep, through(at(0.0, 5.0), at(1.0, 6.0))
        yield through(at(0.0, 5.0), at(1.0, 6.0)), steep
        yield steep, CONSTANT_NORTH
    for direction in SPECIAL_ANGLES:
        yield towards(at(3.0, 4.0), direction), rising(0.5)
    for line in (CONSTANT_NORTH, CONSTANT_EAST, NATIONAL):
        for other in (CONSTANT_NORTH, CONSTANT_EAST, rising(1.0), towards(ORIGIN, 0)):
            yield line, other
    for d in (PARALLEL_SLOPES, math.nextafter(PARALLEL_SLOPES, 0.0),
              math.nextafter(PARALLEL_SLOPES, 1.0), 0.0, TINY, 9e-6):
        yield rising(d), rising(0.0)
        yield rising(0.0), rising(d)
        yield rising(2.0 + d), rising(2.0)
        yield rising(-d), towards(ORIGIN, HALF_CIRCLE)
    for units in (0, 1, 30, 31, 32, 33, 34, 35, -32, -33, -34, HALF_CIRCLE, FULL_CIRCLE):
        yield towards(at(1.0, 2.0), 0), towards(at(3.0, 5.0), units)
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        yield rng.line(region), rng.line(region)
    for _ in range(WILD):
        yield rng.wild_line(), rng.wild_line()


def calc_cross_line_circle() -> Iterator[Case]:
    """A line and a circle."""
    no_flags = at(1.0, 2.0, 3.0, 0)
    for odd in ODD_LINES:
        yield odd, ORIGIN, 10.0
        yield odd, ORIGIN, -1.0
    for radius in SPECIAL_NUMBERS:
        yield rising(0.5), no_flags, radius
        yield CONSTANT_NORTH, no_flags, radius
    for steep in CLAMPED_SLOPES:
        yield steep, at(1.0, 2.0), 5.0
    # Lines that touch, miss by the last digit and cross by it, in the three ways a line can run.
    for radius in (5.0, math.nextafter(5.0, 0.0), math.nextafter(5.0, 9.0), 4.9, 5.1):
        yield through(at(5.0, -1.0), at(5.0, 3.0)), ORIGIN, radius
        yield through(at(-1.0, -5.0), at(3.0, -5.0)), ORIGIN, radius
        yield through(at(0.0, 6.25), at(4.0, 3.25)), ORIGIN, radius
        yield through(at(105.0, 20.0), at(105.0, 3.0)), at(100.0, 30.0), radius
        yield towards(at(5.0, 0.0), QUARTER_CIRCLE), ORIGIN, radius
        yield towards(at(5.0, 0.0), 3 * QUARTER_CIRCLE), ORIGIN, radius
    for radius in (0.0, -0.0, TINY, NEAR_UNDERFLOW):
        yield rising(1.0), at(2.0, 2.0), radius
        yield rising(1.0), at(2.0, 3.0), radius
        yield CONSTANT_NORTH, at(3.0, 8.0), radius
    for direction in SPECIAL_ANGLES:
        yield towards(at(3.0, 4.0), direction), ORIGIN, 6.0
    for number in SPECIAL_NUMBERS:
        yield rising(0.75), at(number, 1.0), 10.0
        yield CONSTANT_NORTH, at(1.0, number), 10.0
    yield NATIONAL, at(5412400.0, 3512370.0), 100.0
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        yield rng.line(region), rng.point(region, 300), abs(rng.metres())
    for _ in range(WILD):
        yield rng.wild_line(), rng.wild_point(), rng.wild_number()


def calc_cross_circle() -> Iterator[Case]:
    """Two circles."""
    no_flags = at(1.0, 2.0, 3.0, 0)
    for radius in SPECIAL_NUMBERS:
        yield ORIGIN, radius, at(3.0, 4.0), 4.0
        yield ORIGIN, 4.0, at(3.0, 4.0), radius
        yield no_flags, radius, no_flags, radius
        yield no_flags, radius, no_flags, 4.0
        yield at(radius, 0.0), 4.0, at(1.0, radius), 5.0
    yield at(0.0, -0.0), 2.0, at(-0.0, 0.0), 2.0
    # Circles that touch from outside and from inside, and those that nearly do.
    for radius in (5.0, math.nextafter(5.0, 0.0), math.nextafter(5.0, 9.0), 4.9, 5.1):
        for centre in (at(10.0, 0.0), at(0.0, -10.0), at(6.0, 8.0), at(-8.0, 6.0)):
            yield ORIGIN, 5.0, centre, radius
            yield centre, 15.0, ORIGIN, radius
    for step in (TINY, NEAR_UNDERFLOW, 1e-9, 1e150, HUGE):
        yield ORIGIN, 1.0, at(step, step), 1.0
        yield ORIGIN, step, at(0.0, step), step
    yield at(5412345.678, 3512345.678), 100.0, at(5412445.123, 3512401.321), 57.5
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        centre1, centre2 = rng.point(region, 300), rng.point(region, 300)
        yield centre1, abs(rng.metres(600)), centre2, abs(rng.metres(600))
    for _ in range(WILD):
        yield rng.wild_point(), abs(rng.wild_number()), rng.wild_point(), abs(rng.wild_number())


def calc_pt_line() -> Iterator[Case]:
    """Foot of the perpendicular."""
    point = at(5.0, 5.0, 6.0, 0)
    for odd in ODD_LINES:
        yield odd, point
    for steep in CLAMPED_SLOPES:
        yield steep, point
    for line in (CONSTANT_NORTH, CONSTANT_EAST, NATIONAL, rising(1.0), rising(TINY)):
        yield line, point
    for flags1 in (0, 1, 2, 3, 0xFFFD, 0xFFFF):
        for flags2 in (0, 1, 2, 3, 0xFFFD, 0xFFFF):
            p1 = at(0.0, 0.0, 100.0, flags1)
            yield through(p1, at(10.0, 0.0, 110.0, flags2)), point
            yield through(p1, at(0.0, 10.0, 110.0, flags2)), point
            yield LineDef(p1, at(10.0, 5.0, 110.0, flags2), 2592000, 1), point
    for direction in SPECIAL_ANGLES:
        yield towards(high(3.0, 4.0, 5.0), direction), point
    for number in SPECIAL_NUMBERS:
        yield through(high(0.0, 0.0, 1.0), high(8.0, 6.0, number)), at(number, 1.0)
        yield CONSTANT_NORTH, at(1.0, number)
        yield CONSTANT_EAST, at(number, number)
    yield through(high(0.0, 0.0, 7.0), high(0.0, 9.0, 7.0)), point
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        yield rng.line(region), rng.point(region)
    for _ in range(WILD):
        yield rng.wild_line(), rng.wild_point()


def offset_to_coord() -> Iterator[Case]:
    """Along a line and across it."""
    for flags1 in (0, 1, 2, 3, 0xFFFD, 0xFFFF):
        for flags2 in (0, 1, 2, 3, 0xFFFD, 0xFFFF):
            yield at(0.0, 0.0, 100.0, flags1), at(10.0, 0.0, 110.0, flags2), 3.0, 2.0
            yield at(1.0, 2.0, 100.0, flags1), at(1.0, 2.0, 110.0, flags2), 3.0, 2.0
    a, b = high(1.0, 2.0, 30.0), high(4.0, 6.0, 31.0)
    for number in SPECIAL_NUMBERS:
        yield a, b, number, 2.0
        yield a, b, 3.0, number
        yield at(number, 0.0), b, 3.0, 2.0
        yield a, high(number, number, number), 3.0, 2.0
    for along in (-5.0, 0.0, -0.0, 5.0, 12.5):
        for offset in (-2.0, 0.0, -0.0, 2.0):
            yield a, b, along, offset
    yield at(0.0, 0.0), at(-0.0, -0.0), 1.0, 1.0
    for step in (TINY, NEAR_UNDERFLOW, HUGE):
        yield at(0.0, 0.0), at(step, -step), 1.0, 1.0
    yield high(5412345.678, 3512345.678, 412.3), high(5412445.1, 3512401.3, 398.7), 55.5, -3.25
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        yield rng.point(region), rng.point(region), rng.metres(), rng.metres(20)
    for _ in range(WILD):
        yield rng.wild_point(), rng.wild_point(), rng.wild_number(), rng.wild_number()


def calc_trans_line() -> Iterator[Case]:
    """A line turned and shifted."""
    for odd in ODD_LINES:
        yield odd, 0, 0.0
        yield odd, 4321000, 2.0
    for angle in SPECIAL_ANGLES:
        yield towards(high(1.0, 2.0, 3.0), angle), 0, 1.5
        yield towards(high(1000.0, 2000.0, 3.0), angle), 7, -1.5
        yield towards(high(1.0, 2.0, 3.0), angle), -1, 0.0
        yield towards(high(1.0, 2.0, 3.0), 3000000), angle, 1.5
        yield through(high(1.0, 2.0, 3.0), at(5.0, 5.0)), angle, 1.5
        yield through(high(1000.0, 2000.0, 3.0), at(1000.5, 2000.5)), angle, 1.5
    # The turned direction is the very number that stands for no direction.
    yield towards(at(1.0, 2.0), ANGLE_INVALID - 5), 5, 1.5
    for flags1 in (1, 3, 0xFFFD, 0xFFFF):
        for flags2 in (1, 3, 0xFFFD, 0xFFFF):
            line = through(at(1.0, 2.0, 30.0, flags1), at(4.0, 6.0, 40.0, flags2))
            yield line, 777777, 0.0
            yield line, 0, -0.5
    for number in SPECIAL_NUMBERS:
        yield through(high(1.0, 2.0, 3.0), high(4.0, 6.0, 8.0)), 1000, number
        yield through(high(1.0, 2.0, 3.0), high(number, number, number)), 1000, 1.0
        yield towards(at(1.0, number), 22222222), 1000, number
    # The turned second point falls on the first one: nothing is left to shift across.
    yield through(at(HUGE, 0.0), at(HUGE, 1.0)), QUARTER_CIRCLE, 1.0
    yield through(at(2.0**53, 2.0**53), at(2.0**53 + 2.0, 2.0**53)), 2592000, 1.0
    for line in (CONSTANT_NORTH, CONSTANT_EAST, NATIONAL):
        for rotation in (0, 2592000, -QUARTER_CIRCLE, HALF_CIRCLE, INT32_MIN):
            yield line, rotation, 12.5
    rng = Rng()
    for _ in range(ORDINARY):
        line = rng.line(rng.region())
        line.direction += rng.pick((0, FULL_CIRCLE))
        rotation = rng.pick((0, rng.angle(), -rng.angle()))
        yield line, rotation, rng.pick((0.0, rng.metres(20), rng.metres(20)))
    for _ in range(WILD):
        yield rng.wild_line(), rng.wild_angle(), rng.wild_number()


def calc_area() -> Iterator[Case]:
    """Corners of a parcel, after their count."""

    def parcel(*corners: CoordPt) -> Case:
        return len(corners), list(corners)

    def moved(corners: tuple[CoordPt, ...], north: float, east: float) -> Case:
        return parcel(*(at(p.north + north, p.east + east) for p in corners))

    for count in (0, -1, -32768):
        yield count, []
    square = at(0.0, 0.0), at(0.0, 1.0), at(1.0, 1.0), at(1.0, 0.0)
    for count in range(1, 5):
        yield parcel(*square[:count])
    yield parcel(*reversed(square))
    for skipped in range(5):
        yield parcel(*square[:skipped], NO_POSITION, *square[skipped:])
        yield parcel(*square[:skipped], at(NAN, INF, 0.0, 0xFFFE), *square[skipped:])
    yield parcel(*(at(p.north, p.east, NAN, 0xFFFD) for p in square))
    yield parcel(NO_POSITION, NO_POSITION, NO_POSITION)
    yield parcel(square[0], NO_POSITION, square[1], NO_POSITION)
    yield parcel(*(at(x, 2.0 * x) for x in (0.0, 1.0, 3.0, 7.0)))
    yield parcel(*(at(0.1 * x, 0.3 * x) for x in (1.0, 2.0, 3.0, 4.0, 5.0)))
    yield parcel(at(0.0, 0.0), at(1.0, 1.0), at(0.0, 1.0), at(1.0, 0.0))
    yield parcel(at(-0.0, -0.0), at(-0.0, 0.0), at(0.0, -0.0))
    for number in SPECIAL_NUMBERS:
        yield parcel(at(number, 0.0), at(0.0, 1.0), at(1.0, 1.0))
        yield parcel(at(0.0, 0.0), at(number, number), at(1.0, 1.0), at(0.0, 5.0))
        yield parcel(at(0.0, 0.0), at(2.0, 0.0), at(0.0, number))
    detail = at(0.0001, 0.0002), at(12.3456, 0.7891), at(10.1112, 13.1415), at(0.1617, 18.1920)
    for north, east in REGIONS:
        yield moved(square, north, east)
        yield moved(detail, north, east)
        yield moved(tuple(reversed(detail)), north, east)
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        yield parcel(*(rng.point(region, 200) for _ in range(3 + rng.below(12))))
    yield parcel(*(rng.point(REGIONS[2], 200) for _ in range(400)))
    for _ in range(WILD):
        yield parcel(*(rng.wild_point() for _ in range(1 + rng.below(6))))


FILES: dict[str, tuple[Source, ...]] = {
    "cogo_inverse": (
        single("KavoCogoCoordToAngDist", coord_to_ang_dist),
        single("KavoCogoAngDistToCoord", ang_dist_to_coord),
        single("KavoCogoCalcSlopeByDist", calc_slope_by_dist),
    ),
    "cogo_intersect": (
        single("KavoCogoCalcCrossLine", calc_cross_line),
        single("KavoCogoCalcCrossLineCircle", calc_cross_line_circle),
        single("KavoCogoCalcCrossCircle", calc_cross_circle),
    ),
    "cogo_line": (
        single("KavoCogoCalcPtLine", calc_pt_line),
        single("KavoCogoOffsetToCoord", offset_to_coord),
        single("KavoCogoCalcTransLine", calc_trans_line),
    ),
    "cogo_area": (single("KavoCogoCalcArea", calc_area),),
}
