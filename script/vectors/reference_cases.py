"""What the reference line and arc are asked: corners chosen by hand, then random cases."""

import math
from collections.abc import Iterator

import reference
from cases import ALL_FLAGS, NO_POSITION, ORIGIN, Call, Source, Vector, at, high
from records import FULL_CIRCLE, HALF_CIRCLE, HAS_NE, QUARTER_CIRCLE, STATUS_OK, CoordPt
from rng import HUGE, INF, NAN, NEAR_UNDERFLOW, SPECIAL_ANGLES, SPECIAL_NUMBERS, TINY, Rng

ORDINARY = 60
WILD = 30

# --- Reference line -------------------------------------------------------------------------------


def base_line(start: CoordPt, end: CoordPt) -> Call:
    """Sets the reference line."""
    return "KavoREFSetBaseLine", start, end


def against_line(point: CoordPt) -> Call:
    """Measures against it."""
    return "KavoREFCalc", point


def reference_line() -> Iterator[Vector]:
    """Points against a line by two points."""
    level = base_line(at(0.0, 0.0), at(10.0, 0.0))
    point = against_line(high(4.0, 3.0, 107.0))
    for flags1 in (0, 1, 2, 3, 0xFFFD, 0xFFFF):
        for flags2 in (0, 1, 2, 3, 0xFFFD, 0xFFFF):
            yield (base_line(at(0.0, 0.0, 100.0, flags1), at(6.0, 8.0, 110.0, flags2)), point,
                   against_line(at(-2.0, -1.0, 50.0)))
    graded = base_line(high(1.0, 2.0, 100.0), high(7.0, -6.0, 110.0))
    for flags in ALL_FLAGS:
        yield graded, against_line(at(4.0, 3.0, 107.0, flags))
        yield level, against_line(at(-4.0, -3.0, 107.0, flags))
    for number in SPECIAL_NUMBERS:
        yield graded, against_line(high(number, 3.0, number)), against_line(high(1.0, number, 2.0))
        yield base_line(high(0.0, 1.0, number), high(3.0, 5.0, 1.0)), point
        yield base_line(high(number, 0.0, 1.0), high(1.0, number, -number)), point
        yield base_line(at(number, number), at(number, number)), point
    for step in (TINY, NEAR_UNDERFLOW, 1e-310, HUGE):
        yield base_line(high(0.0, 0.0, 1.0), high(step, -step, 2.0)), point
    for north in (-1.0, -0.0, 0.0, 1.0):
        for east in (-1.0, -0.0, 0.0, 1.0):
            yield base_line(high(0.0, 0.0, 5.0), high(north, east, 6.0)), against_line(ORIGIN)
    # A refusal removes the line before, whatever the point.
    yield level, base_line(at(1.0, 2.0), at(1.0, 2.0)), against_line(NO_POSITION), point
    yield level, base_line(NO_POSITION, ORIGIN), point, level, against_line(NO_POSITION), point
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        yield (base_line(rng.point(region, 300), rng.point(region, 300)),
               against_line(rng.point(region, 400)), against_line(rng.point(region, 400)))
    for _ in range(WILD):
        yield base_line(rng.wild_point(), rng.wild_point()), against_line(rng.wild_point())


# --- Reference arc --------------------------------------------------------------------------------

PARAMS = ("KavoREFGetArcParams",)

START = high(100.0, 200.0, 50.0)


def by_coord(start: CoordPt, end: CoordPt, s: int, e: int) -> Call:
    """Sets the arc by its ends and tangents."""
    return "KavoREFSetArcByCoord", start, end, s, e


def by_tangents(start: CoordPt, s: int, radius: float, e: int) -> Call:
    """Sets the arc by its radius and tangents."""
    return "KavoREFSetArcByRadiusHAngle", start, s, radius, e


def by_length(start: CoordPt, s: int, radius: float, length: float) -> Call:
    """Sets the arc by its radius and length."""
    return "KavoREFSetArcByRadiusArcLen", start, s, radius, length


def against_arc(*points: CoordPt) -> Vector:
    """Measures against the arc."""
    return tuple(("KavoREFCalcArc", point) for point in points)


def around(centre: CoordPt, angle: int, dist: float, elev: float = 51.0) -> CoordPt:
    """A point (to 0.1 mm) in the direction and distance from a centre."""
    r = angle * math.pi / HALF_CIRCLE
    return high(round(centre.north + dist * math.cos(r), 4),
                round(centre.east + dist * math.sin(r), 4), elev)


BEFORE = by_coord(high(1.0, 2.0, 3.0), high(10.0, 11.0, 4.0), 0, QUARTER_CIRCLE)
NEAR_ARC = against_arc(high(103.0, 207.0, 51.0), at(90.0, 195.0, 7.0))


def arc_by_coord() -> Iterator[Vector]:
    """Two ends and two tangents."""
    eastward, northward = QUARTER_CIRCLE, 0
    for flags in ALL_FLAGS:
        yield by_coord(at(100.0, 200.0, 50.0, flags), at(110.0, 210.0, 52.0), 0, eastward), PARAMS
        yield by_coord(START, at(110.0, 210.0, 52.0, flags), 0, eastward), *NEAR_ARC
        yield by_coord(START, at(100.0, 200.0, 52.0, flags), 0, 0), PARAMS, *NEAR_ARC
    # The given end is that of the arc, to the tolerance, or it is not: then the arc is level.
    for off in (0.0, 0.0499, 0.05, 0.0501, -0.0499, -0.05, -0.0501, 9.0):
        yield by_coord(START, high(110.0, 210.0 + off, 52.0), northward, eastward), *NEAR_ARC
        yield by_coord(START, at(100.0 + off, 220.0, 52.0), northward, HALF_CIRCLE), *NEAR_ARC
        yield (by_coord(at(100.0, 200.0, 50.0), at(100.0 + off, 180.0, 52.0), 0, -HALF_CIRCLE),
               PARAMS, *NEAR_ARC)
    # The slopes of the tangents put this half circle's end at (20 / 2^27, 20): off by just so much.
    for off in (math.nextafter(0.05, 0.0), 0.05):
        half = by_coord(high(0.0, 0.0, 50.0), at(20.0 / 2**27 + off, 20.0, 52.0), 0, HALF_CIRCLE)
        for north in (5.0, 9.0, 11.0):
            yield half, *against_arc(high(north, 8.0, 51.0))
    for s in (0, 1, 2592000, QUARTER_CIRCLE, -QUARTER_CIRCLE, 19000000, -FULL_CIRCLE):
        for turn in (0, 1, -1, 5000000, -5000000, HALF_CIRCLE - 1, HALF_CIRCLE, HALF_CIRCLE + 1,
                     -HALF_CIRCLE, FULL_CIRCLE):
            yield by_coord(START, high(130.0, 207.0, 52.0), s, s + turn), PARAMS
        for side in (QUARTER_CIRCLE, -QUARTER_CIRCLE, 3000000, 0):
            end = around(START, s + side, 30.0)
            yield by_coord(START, end, s, s + HALF_CIRCLE), PARAMS, *NEAR_ARC
    for angle in SPECIAL_ANGLES:
        yield by_coord(START, high(130.0, 207.0, 52.0), angle, 3000000), PARAMS
        yield by_coord(START, high(130.0, 207.0, 52.0), 3000000, angle), PARAMS
    for number in SPECIAL_NUMBERS:
        yield by_coord(high(0.0, 0.0, 1.0), high(number, 1.0, 2.0), 0, eastward), PARAMS
        yield by_coord(high(number, 3.0, 1.0), high(0.0, 9.0, number), 5, 5 + HALF_CIRCLE), PARAMS
    # A half circle to an end straight ahead, at the limit of numbers: a radius that is none.
    yield (by_coord(ORIGIN, at(TINY, 0.0), 0, HALF_CIRCLE), PARAMS,
           *against_arc(at(-1.0, -2.0), at(1.0, -2.0), at(1.0, 0.0), at(0.0, 0.0)))
    rng = Rng()
    for _ in range(ORDINARY):
        start, s = high(rng.metres(), rng.metres(), rng.metres(50)), rng.below(FULL_CIRCLE)
        turn = rng.pick((1, -1)) * (300000 + rng.below(9000000))
        chord = around(start, s + turn // 2, abs(rng.metres(200)), rng.metres(50))
        beside = around(chord, rng.angle(), 20.0, rng.metres(50))
        yield by_coord(start, chord, s, s + turn), PARAMS, *against_arc(beside)
    for _ in range(WILD):
        yield (by_coord(rng.wild_point(), rng.wild_point(), rng.wild_angle(), rng.wild_angle()),
               PARAMS, *against_arc(rng.wild_point()))


def arc_by_tangents() -> Iterator[Vector]:
    """A radius and two tangents."""
    for flags in ALL_FLAGS:
        yield by_tangents(at(1.0, 2.0, 3.0, flags), 9, 5.0, 2592000), PARAMS, *NEAR_ARC
    for s in SPECIAL_ANGLES:
        yield by_tangents(START, s, 25.0, 3000000), PARAMS
        yield by_tangents(START, 3000000, -25.0, s), PARAMS, *NEAR_ARC
    for number in SPECIAL_NUMBERS:
        yield by_tangents(START, 0, number, QUARTER_CIRCLE), PARAMS, *NEAR_ARC
        yield by_tangents(START, 7, number, 7 + FULL_CIRCLE), PARAMS
        yield by_tangents(high(number, 0.0, number), 5, 7.0, 3), *NEAR_ARC
    rng = Rng()
    for _ in range(ORDINARY // 2):
        start, s, radius = rng.point(rng.region()), rng.angle(), rng.metres(300)
        yield (by_tangents(start, s, radius, rng.angle()), PARAMS,
               *against_arc(around(start, s + rng.below(QUARTER_CIRCLE), 30.0)))
    for _ in range(WILD):
        yield (by_tangents(rng.wild_point(), rng.wild_angle(), rng.wild_number(), rng.wild_angle()),
               PARAMS, *against_arc(rng.wild_point()))


def arc_by_length() -> Iterator[Vector]:
    """A radius and a length."""
    for flags in ALL_FLAGS:
        yield by_length(at(1.0, 2.0, 3.0, flags), 9, 5.0, 3.0), PARAMS, *NEAR_ARC
    for s in SPECIAL_ANGLES:
        yield by_length(START, s, -25.0, 70.0), PARAMS
    full = 2.0 * math.pi * 10.0
    for radius in (10.0, -10.0):
        for length in (full, math.nextafter(full, 0.0), math.nextafter(full, 99.0), 63.0, 62.0,
                       full / 2.0, TINY, 1e-7, 2e-6, HUGE):
            yield by_length(START, 19000000, radius, length), PARAMS, *NEAR_ARC
    for number in SPECIAL_NUMBERS:
        yield by_length(START, 0, number, 5.0), PARAMS, *NEAR_ARC
        yield by_length(START, 0, -7.0, number), PARAMS, *NEAR_ARC
    rng = Rng()
    for _ in range(ORDINARY // 2):
        start, s, radius = rng.point(rng.region()), rng.angle(), rng.metres(300)
        yield (by_length(start, s, radius, abs(rng.metres(800))), PARAMS,
               *against_arc(around(start, s + rng.below(QUARTER_CIRCLE), 30.0)))
    for _ in range(WILD):
        yield (by_length(rng.wild_point(), rng.wild_angle(), rng.wild_number(), rng.wild_number()),
               PARAMS, *against_arc(rng.wild_point()))


# Angles at the centre of arcs, and of points from the start, around every change of branch.
CENTRAL_ANGLES = (1, 2000000, QUARTER_CIRCLE, HALF_CIRCLE, 15000000, FULL_CIRCLE - 1)
FROM_START = (0, 1, -1, 2, -2, 1000000, QUARTER_CIRCLE - 1, QUARTER_CIRCLE, QUARTER_CIRCLE + 1,
              -QUARTER_CIRCLE + 1, -QUARTER_CIRCLE, -QUARTER_CIRCLE - 1, HALF_CIRCLE - 1,
              HALF_CIRCLE, HALF_CIRCLE + 1, 12000000)


def on_the_unit(angle: int, dist: float, central: int, sense: int) -> Vector:
    """An arc, and a point so far on from its start (to the unit): due east of the centre.

    Coordinates are so large that no last bit of a sine reaches the centre. The sense is 1 or -1.
    """
    far = high(2.0**30, 2.0**30, 50.0)
    s = QUARTER_CIRCLE - sense * (angle - QUARTER_CIRCLE)
    arc = by_tangents(far, s, sense * 64.0, s + sense * central)
    reference.EXPORTS[arc[0]](*arc[1:])
    centre = reference.ARC.centre
    return arc, *against_arc(at(centre.north, centre.east + dist, 51.0))


def measured_arc() -> Iterator[Vector]:
    """Points around arcs of either sense: before the start, on the arc, past the end."""
    for central in CENTRAL_ANGLES:
        for sense in (1, -1):
            for angle in dict.fromkeys((*FROM_START, central - 1, central, central + 1)):
                yield on_the_unit(angle, 64.0, central, sense)
                yield on_the_unit(angle, 66.0, central, sense)
    # Every axis and diagonal from the centre (75, 200), on arcs of either sense.
    for arc in (by_tangents(at(100.0, 200.0), QUARTER_CIRCLE, 25.0, HALF_CIRCLE),
                by_tangents(at(75.0, 225.0), HALF_CIRCLE, 25.0, HALF_CIRCLE - 1),
                by_tangents(at(75.0, 225.0), 0, -25.0, QUARTER_CIRCLE)):
        for north in (-30.0, 0.0, 0.5):
            for east in (-30.0, 0.0, 0.5, 30.0):
                yield arc, *against_arc(at(75.0 + north, 200.0 + east))
        yield arc, *against_arc(at(math.nextafter(75.0, 0.0), 200.0))
        for number in (NAN, INF, -INF):
            yield arc, *against_arc(at(number, 199.0), at(80.0, number), at(number, number))
            yield arc, *against_arc(at(number, 200.0), at(75.0, number))
    for flags in ALL_FLAGS:
        yield arc, *against_arc(at(101.0, 207.0, 8.0, flags), at(75.0, 200.0, 8.0, flags))
    for number in SPECIAL_NUMBERS:
        yield arc, *against_arc(at(number, 199.0), at(80.0, number), at(number, number))
    rng = Rng()
    for _ in range(ORDINARY):
        region, radius = rng.region(), 5.0 + abs(rng.metres(200))
        start, s, sense = rng.point(region), rng.below(FULL_CIRCLE), rng.pick((1, -1))
        start.flags |= HAS_NE
        centre = around(start, s + sense * QUARTER_CIRCLE, radius)
        points = (around(centre, rng.angle(), radius * rng.pick((0.5, 1.0, 1.0, 1.5)))
                  for _ in range(2))
        yield (by_tangents(start, s, sense * radius, s + sense * (1 + rng.below(FULL_CIRCLE - 1))),
               *against_arc(*points))


def after_an_arc(source: Source) -> Source:
    """Begins with another arc where the first is refused, for that leaves the one before."""

    def vectors() -> Iterator[Vector]:
        for vector in source():
            name, *inputs = vector[0]
            refused = reference.EXPORTS[name](*inputs) != STATUS_OK
            yield (BEFORE, *vector) if refused else vector

    return vectors


FILES: dict[str, tuple[Source, ...]] = {
    "ref_line": (reference_line,),
    "ref_arc_define": tuple(map(after_an_arc, (arc_by_coord, arc_by_tangents, arc_by_length))),
    "ref_arc_measure": (measured_arc,),
}
