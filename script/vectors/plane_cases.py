"""What the reference planes are asked: corners chosen by hand, then random cases."""

import math
from collections.abc import Iterator

from cases import ALL_FLAGS, NO_POSITION, ORIGIN, Call, Source, Vector, at, high
from planes import TOLERANCE
from records import FULL_CIRCLE, HALF_CIRCLE, HAS_ELEV, HAS_NE, QUARTER_CIRCLE, CoordPt
from rng import HUGE, NEAR_UNDERFLOW, SPECIAL_ANGLES, SPECIAL_NUMBERS, TINY, Rng

ORDINARY = 70
WILD = 40

# --- Vertical plane through two points ------------------------------------------------------------

STATION = at(-50.0, 7.0, 1.0, 0)


def facade(p1: CoordPt, p2: CoordPt) -> Call:
    """Sets the vertical plane."""
    return "KavoREFSet2PtBasePlane", p1, p2


def at_facade(ha: int, va: int, station: CoordPt = STATION, height: float = 1.5) -> Call:
    """Aims at it."""
    return "KavoREFCalc2PtPlane", ha, va, station, height


def vertical_plane() -> Iterator[Vector]:
    """Sights at a facade, with and without an elevation to count from."""
    sight = at_facade(1000000, 5000000)
    p1, p2 = high(10.0, 20.0, 3.0), at(40.0, -20.0)
    low = at(10.0, 20.0, 3.0)
    for flags in ALL_FLAGS:
        yield facade(p1, p2), facade(at(10.0, 20.0, 3.0, flags), p2), sight
        yield facade(p1, p2), facade(p1, at(40.0, -20.0, 3.0, flags)), sight
        yield facade(p1, p2), facade(at(1.0, 2.0, 3.0, flags), high(1.0, 2.0, 9.0)), sight
    # Face 1 and face 2; before and behind the station; vertical, level and in between.
    for base in (p1, low):
        for va in (5000000, QUARTER_CIRCLE, 1, HALF_CIRCLE - 1, 8000000):
            for ha in (1000000, 1000000 + HALF_CIRCLE):
                yield (facade(base, p2), at_facade(ha, va),
                       at_facade(ha + HALF_CIRCLE, FULL_CIRCLE - va))
        for angle in SPECIAL_ANGLES:
            yield facade(base, p2), at_facade(700000, angle)
            yield facade(base, p2), at_facade(angle, 4000000)
    # The plane runs north from the origin: stations to either side of the tolerance, which grows
    # with the length of the base, and sights that are parallel up to one unit or two.
    for length in (1.0, 16.0):
        for across in (0.0, TOLERANCE / 2, math.nextafter(TOLERANCE, 0.0), TOLERANCE,
                       math.nextafter(TOLERANCE, 1.0), TOLERANCE * 2):
            for side in (1.0, -1.0):
                yield (facade(high(0.0, 0.0, 1.0), at(length, 0.0)),
                       at_facade(QUARTER_CIRCLE, 4000000, at(3.0, side * across)))
    for ha in (0, 1, -1, 2, -2, HALF_CIRCLE, HALF_CIRCLE + 1, HALF_CIRCLE - 2, QUARTER_CIRCLE):
        yield facade(high(0.0, 0.0, 1.0), at(9.0, 0.0)), at_facade(ha, 5000000)
        yield facade(at(0.0, 0.0), at(9.0, 0.0)), at_facade(ha, 5000000, at(3.0, -0.4))
    for number in SPECIAL_NUMBERS:
        yield facade(high(number, 0.0, 1.0), at(1.0, number)), sight
        yield facade(high(0.0, 0.0, number), at(1.0, 1.0, number)), sight
        yield facade(low, p2), at_facade(1000000, 5000000, at(number, 1.0, number))
        yield facade(p1, p2), at_facade(1000000, QUARTER_CIRCLE, at(-5.0, number), number)
    for step in (TINY, NEAR_UNDERFLOW, 1e-310, HUGE):
        yield facade(high(0.0, 0.0, 1.0), at(step, -step)), sight
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        sights = (at_facade(rng.angle(), rng.pick((rng.angle(), QUARTER_CIRCLE + rng.below(99999))),
                            rng.point(region, 100), abs(rng.metres(2))) for _ in range(2))
        yield facade(rng.point(region, 100), rng.point(region, 100)), *sights
    for _ in range(WILD):
        yield (facade(rng.wild_point(), rng.wild_point()),
               at_facade(rng.wild_angle(), rng.wild_angle(), rng.wild_point(), rng.wild_number()))


# --- Plane through three points -------------------------------------------------------------------


ORIGIN_3D = high(0.0, 0.0, 0.0)


def plane(p1: CoordPt, p2: CoordPt, p3: CoordPt | None) -> Call:
    """Sets the plane; without a third point the vertical one."""
    return "KavoREFSet3PtBasePlane", p1, p2, p3


def at_plane(ha: int, va: int, station: CoordPt = STATION, height: float = 1.5) -> Call:
    """Aims at it."""
    return "KavoREFCalc3PtPlane", ha, va, station, height


def three_point_plane() -> Iterator[Vector]:
    """Sights at a plane in any attitude, from either side."""
    p1, p2, p3 = high(10.0, 20.0, 3.0), high(40.0, -20.0, 4.0), high(25.0, 0.0, 30.0)
    sight = at_plane(19000000, 4800000)
    behind = at_plane(8000000, 4800000, at(200.0, 100.0, 1.0))
    for flags in ALL_FLAGS:
        yield plane(p1, p2, p3), plane(at(10.0, 20.0, 3.0, flags), p2, p3), sight
        yield plane(p1, p2, p3), plane(p1, at(40.0, -20.0, 4.0, flags), None), sight
        yield plane(p1, p2, p3), plane(p1, p2, at(25.0, 0.0, 30.0, flags)), sight
    # Two equal points; three in line, or but for the tolerance; no third point above the second.
    for q1, q2, q3 in ((p1, p1, p3), (p1, p2, p2), (p1, p2, p1), (p1, p1, p1), (p1, p1, None)):
        yield plane(p1, p2, p3), plane(q1, q2, q3), sight
    for off in (0.0, 4.9e-7, math.nextafter(TOLERANCE, 0.0), TOLERANCE, 5.1e-7, 1e-3):
        yield plane(ORIGIN_3D, high(1.0, 0.0, 0.0), high(2.0, off, 0.0)), sight
        yield plane(ORIGIN_3D, high(off, 0.0, 0.0), high(0.0, 0.0, 1e9)), sight
    for below in (-2.0, -1.0, 0.0, 1.0, 5.0):
        yield plane(high(10.0, 20.0, 3.0), high(10.0, 20.0, 3.0 + below), None), sight
    # The plane turns to the instrument and stays so, for the instrument on the other side too.
    for third in (p3, None, high(25.0, 0.0, -30.0)):
        yield plane(p1, p2, third), sight, behind, sight, sight
        yield plane(p2, p1, third), behind, sight, behind
    yield plane(p1, p2, None), *(at_plane(19000000, va) for va in (1, 0, QUARTER_CIRCLE, 3000000))
    floor = plane(high(0.0, 0.0, 5.0), high(9.0, 0.0, 5.0), high(0.0, 9.0, 5.0))
    for va in (0, 1, QUARTER_CIRCLE - 2, QUARTER_CIRCLE - 1, QUARTER_CIRCLE, QUARTER_CIRCLE + 1,
               QUARTER_CIRCLE + 2, HALF_CIRCLE - 1, HALF_CIRCLE, HALF_CIRCLE + 1,
               3 * QUARTER_CIRCLE):
        yield floor, at_plane(700000, va), at_plane(700000, va, STATION, 99.0)
    # The instrument in the plane, and to either side of the tolerance.
    ground = plane(ORIGIN_3D, high(9.0, 0.0, 0.0), high(0.0, 9.0, 0.0))
    for height in (0.0, math.nextafter(TOLERANCE, 0.0), TOLERANCE, 5.1e-7):
        for sign in (1.0, -1.0):
            yield ground, at_plane(5, 7000000, high(1.0, 2.0, 0.0), sign * height)
            yield floor, at_plane(5, 3000000, high(1.0, 2.0, 5.0), sign * height)
    for angle in SPECIAL_ANGLES:
        yield plane(p1, p2, p3), at_plane(19000000, angle), at_plane(8000000 + HALF_CIRCLE, angle)
        yield plane(p1, p2, p3), at_plane(angle, 5000000), at_plane(angle, 15000000)
    for number in SPECIAL_NUMBERS:
        yield plane(high(number, 1.0, 2.0), high(3.0, number, 5.0), p3), sight
        yield plane(p1, p2, high(1.0, 2.0, number)), sight
        yield plane(p1, p2, p3), at_plane(19000000, 4800000, at(number, -60.0, number))
        yield plane(p1, p2, p3), at_plane(19000000, 4800000, STATION, number), sight
    for step in (TINY, NEAR_UNDERFLOW, HUGE):
        yield plane(ORIGIN_3D, high(step, 0.0, 0.0), high(0.0, step, 1.0)), sight
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        points = [rng.point(region, 100) for _ in range(3)]
        for point in points:
            point.flags |= HAS_NE | HAS_ELEV
        sights = (at_plane(rng.angle(), 1000000 + rng.below(8000000), rng.point(region, 100))
                  for _ in range(2))
        yield plane(*points[:2], rng.pick((*points[2:], points[2], None))), *sights
    for _ in range(WILD):
        points = [rng.wild_point() for _ in range(3)]
        for point in points:
            point.flags |= rng.pick((0, HAS_NE | HAS_ELEV, HAS_NE | HAS_ELEV))
        yield (plane(*points),
               at_plane(rng.wild_angle(), rng.wild_angle(), rng.wild_point(), rng.wild_number()))
    yield plane(NO_POSITION, ORIGIN, None), plane(p1, p2, None), sight


FILES: dict[str, tuple[Source, ...]] = {
    "plane_2pt": (vertical_plane,),
    "plane_3pt": (three_point_plane,),
}
