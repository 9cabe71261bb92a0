"""What the measurement programs are asked: corners chosen by hand, then random cases."""

from collections.abc import Iterator

from cases import ALL_FLAGS, NO_POSITION, ORIGIN, Call, Case, Source, Vector, at, high, single
from records import (FULL_CIRCLE, HALF_CIRCLE, HAS_ELEV, HAS_NE, QUARTER_CIRCLE, AngDistRec,
                     AngleDistObs, CoordPt)
from rng import (HUGE, INF, NAN, NEAR_UNDERFLOW, REGIONS, SPECIAL_ANGLES, SPECIAL_NUMBERS, TINY,
                 Rng)

ORDINARY = 70
WILD = 30

# --- Remote elevation -----------------------------------------------------------------------------

# A sight is vertical up to 16 units from the zenith, and to 15 from the nadir.
STEEP_ZENITHS = (0, 1, 16, 17, HALF_CIRCLE - 16, HALF_CIRCLE - 15, HALF_CIRCLE - 1, HALF_CIRCLE,
                 HALF_CIRCLE + 1, HALF_CIRCLE + 15, HALF_CIRCLE + 16, FULL_CIRCLE - 17,
                 FULL_CIRCLE - 16, FULL_CIRCLE - 1, FULL_CIRCLE)

# A sight is too far off the base sight from 15 units before a quarter circle on.
FAR_OFF_SIGHTS = tuple(sign * (QUARTER_CIRCLE + d) for d in (-47, -17, -16, -15, -14, 0, 17)
                       for sign in (1, -1)) + (HALF_CIRCLE, HALF_CIRCLE - 1, HALF_CIRCLE + 1)


def base_sight(ha: int, zenith: int, dist: float = 10.0) -> Call:
    """Sets the base of the remote elevation; the other fields mean nothing."""
    return "KavoREMSetBase", AngDistRec(ha, zenith, dist, NAN, INF)


def remote_sight(ha: int, zenith: int) -> Call:
    """Measures against it."""
    return "KavoREMCalc", ha, zenith


def remote_elevation() -> Iterator[Vector]:
    """Height of a point straight above or below the base."""
    level = base_sight(0, QUARTER_CIRCLE)
    for zenith in STEEP_ZENITHS:
        yield level, remote_sight(0, zenith), remote_sight(HALF_CIRCLE, zenith)
        yield base_sight(777, zenith), remote_sight(777, QUARTER_CIRCLE - 5)
    for ha in FAR_OFF_SIGHTS:
        yield level, remote_sight(ha, 4000000)
        yield base_sight(3000000, 4500000), remote_sight(3000000 + ha, 2592000)
        yield (base_sight(HALF_CIRCLE + 5, FULL_CIRCLE - 4500000),
               remote_sight(HALF_CIRCLE + 5 + ha, FULL_CIRCLE - 6000000), remote_sight(5, 4500000))
    for angle in SPECIAL_ANGLES:
        yield base_sight(angle, 5000000), remote_sight(angle, 4000000)
        yield base_sight(2000000, angle), remote_sight(2000000, 3000000)
        yield base_sight(2000000, 5000000), remote_sight(2000000, angle)
        yield base_sight(-2000000, 5000000), remote_sight(angle, 6000000)
    for number in SPECIAL_NUMBERS:
        yield base_sight(1, 5000000, number), remote_sight(2592000, 3000000)
    # A refused base removes the one before; the next one counts again.
    yield (level, base_sight(0, 0), remote_sight(0, 0), level, remote_sight(0, 2592000),
           base_sight(0, HALF_CIRCLE, NAN), remote_sight(0, QUARTER_CIRCLE))
    rng = Rng()
    for _ in range(ORDINARY):
        ha = rng.angle()
        zenith = QUARTER_CIRCLE + rng.below(2000000) - 1000000
        near = ha + rng.below(1000000) - 500000
        yield (base_sight(ha, zenith, abs(rng.metres(200))),
               remote_sight(near, 1 + rng.below(HALF_CIRCLE - 1)),
               remote_sight(near + HALF_CIRCLE, FULL_CIRCLE - zenith + 300000))
    for _ in range(WILD):
        yield (base_sight(rng.wild_angle(), rng.wild_angle(), rng.wild_number()),
               remote_sight(rng.wild_angle(), rng.wild_angle()))


# --- Remote distance ------------------------------------------------------------------------------


def remote_distance() -> Iterator[Case]:
    """Two points; a height counts only beside another."""
    for flags in ALL_FLAGS:
        yield at(0.0, 0.0, 5.0, flags), high(3.0, 4.0, 17.0)
        yield high(0.0, 0.0, 5.0), at(3.0, 4.0, 17.0, flags)
        yield at(1.0, 2.0, 5.0, flags), high(1.0, 2.0, 17.0)
    for elev in (0.0, -0.0, 5.0, NAN, INF, HUGE):
        for flags in (HAS_NE, HAS_NE | HAS_ELEV):
            yield at(1.0, 2.0, elev, flags), high(1.0, 2.0, 0.0)
            yield high(-0.0, 0.0, 0.0), at(0.0, -0.0, elev, flags)
    for number in SPECIAL_NUMBERS:
        yield high(0.0, 0.0, 0.0), high(number, 1.0, 2.0)
        yield high(0.0, number, number), high(1.0, 0.0, 2.0)
        yield high(number, number, 1.0), high(number, number, number)
    # Distances that the squares lose.
    yield high(0.0, 0.0, 1.0), high(TINY, -TINY, 1.0)
    yield high(0.0, 0.0, 0.0), high(NEAR_UNDERFLOW, 1e-170, 1e-165)
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        yield rng.point(region), rng.point(region, rng.pick((1, 50, 1000)))
    for _ in range(WILD):
        yield rng.wild_point(), rng.wild_point()


# --- Slope staking --------------------------------------------------------------------------------

# Elevation and offset of two points: rising and falling on either side, from and to the reference
# line, vertical, level, one point, across the line.
SLOPES = ((10.0, 5.0, 0.0, 15.0), (0.0, -5.0, 10.0, -15.0), (2.0, 0.0, 7.0, 10.0),
          (2.0, -0.0, 7.0, -10.0), (7.0, 10.0, 2.0, 0.0), (1.0, 4.0, 9.0, 4.0),
          (1.0, -4.0, 9.0, -4.0), (1.0, 0.0, 9.0, -0.0), (3.0, 2.0, 3.0, 8.0),
          (3.0, -2.0, 3.0, -8.0), (0.0, 1.0, -0.0, 2.0), (3.0, 2.0, 3.0, 2.0),
          (0.0, 0.0, -0.0, -0.0), (1.0, -5.0, 2.0, 5.0), (1.0, 5.0, 2.0, -5.0),
          (1.0, TINY, 2.0, -TINY), (1.0, -5.0, 1.0, 5.0))


def stake(reference: CoordPt, point: CoordPt) -> Call:
    """Compares a point with the slope."""
    return "KavoBRCalc", reference, point


def slope_staking() -> Iterator[Vector]:
    """A point against a slope in cross-section."""
    fill = "KavoBRSetSlope", *SLOPES[0]
    one_point = "KavoBRSetSlope", 3.0, 2.0, 3.0, 2.0
    for slope in SLOPES:
        yield (("KavoBRSetSlope", *slope), stake(ORIGIN, high(0.0, 10.0, 6.0)),
               stake(at(3.0, -4.0, NAN), high(0.0, 0.0, 2.5)))
        yield fill, ("KavoBRSetSlope", *slope), stake(ORIGIN, high(-3.0, 4.0, 5.0))
    for flags in ALL_FLAGS:
        yield fill, stake(at(0.0, 0.0, 7.0, flags), high(0.0, 10.0, 5.0))
        yield fill, stake(ORIGIN, at(0.0, 10.0, 5.0, flags))
        yield fill, stake(at(1.0, 2.0, 7.0, flags), at(1.0, 2.0, 5.0, flags))
    for number in SPECIAL_NUMBERS:
        for slope in ((number, 5.0, 0.0, 15.0), (1.0, number, 2.0, 3.0), (1.0, -3.0, 2.0, number),
                      (4.0, 5.0, number, 15.0), (number, 1.0, number, 2.0),
                      (1.0, number, 2.0, number)):
            yield ("KavoBRSetSlope", *slope), stake(ORIGIN, high(0.0, 10.0, 6.0))
        yield fill, stake(ORIGIN, high(number, 1.0, 6.0)), stake(ORIGIN, high(1.0, 1.0, number))
    # A refusal removes the slope before, whatever the points.
    yield fill, one_point, stake(NO_POSITION, ORIGIN), fill, stake(NO_POSITION, ORIGIN)
    rng = Rng()
    for _ in range(ORDINARY):
        side = rng.pick((1.0, -1.0))
        offsets = [side * abs(rng.metres(40)) for _ in range(2)]
        region = rng.region()
        yield (("KavoBRSetSlope", rng.metres(50), offsets[0], rng.metres(50), offsets[1]),
               stake(rng.point(region, 40), rng.point(region, 40)),
               stake(rng.point(region, 40), high(region[0], region[1], rng.metres(50))))
    for _ in range(WILD):
        yield (("KavoBRSetSlope", *(rng.wild_number() for _ in range(4))),
               stake(rng.wild_point(), rng.wild_point()))


# --- Two-point target -----------------------------------------------------------------------------


def two_point_target() -> Iterator[Case]:
    """A pole with two reflectors."""
    first, second = high(1.0, 2.0, 3.0), high(3.0, 5.0, 9.0)
    for flags in ALL_FLAGS:
        yield at(1.0, 2.0, 3.0, flags), second, 7.0, 1.0
        yield first, at(3.0, 5.0, 9.0, flags), 0.0, 0.0
        yield at(1.0, 2.0, 3.0, flags), first, -1.0, -1.0
    for number in SPECIAL_NUMBERS:
        yield first, second, number, 1.5
        yield first, second, 0.0, number
        yield first, second, number, number
        yield high(number, 0.0, 0.0), second, 0.0, 2.0
        yield first, high(1.0, number, 3.0), 3.5, 2.0
        yield first, high(1.0, 2.0, number), 0.0, 0.5
    for nominal in (0.0, 1.0, 7.0, 14.0):
        for target in (-0.0, 7.0, 0.5):
            yield first, second, nominal, target
    yield first, first, 1.0, 1.0
    yield high(0.0, -0.0, 0.0), high(-0.0, 0.0, -0.0), 0.0, 0.0
    yield high(0.0, 0.0, 0.0), high(TINY, TINY, TINY), 0.0, 1.0  # lost in the squares
    yield high(0.0, 0.0, 0.0), high(NEAR_UNDERFLOW, 0.0, 0.0), 0.0, 1.0
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.pick((REGIONS[0], rng.region()))
        poles = [rng.point(region, 3) for _ in range(2)]
        for pole in poles:
            pole.flags |= HAS_NE | HAS_ELEV
        yield (*poles, rng.pick((0.0, 0.5, abs(rng.metres(2)))), abs(rng.metres(3)))
    for _ in range(WILD):
        yield rng.wild_point(), rng.wild_point(), abs(rng.wild_number()), rng.wild_number()


# --- Offset measurements --------------------------------------------------------------------------

UNREAD = NAN  # for the parameters that no formula reads
HOOK = 1.5


def corner_3pt() -> Iterator[Case]:
    """A wall and a point on the other one."""
    a, b, p = NO_POSITION, at(4.0, 6.0, NAN, 0), high(7.0, -3.0, 5.0)
    for flags in ALL_FLAGS:
        yield a, b, at(7.0, -3.0, 5.0, flags), UNREAD, HOOK
        yield a, a, at(7.0, -3.0, 5.0, flags), UNREAD, HOOK
    for number in SPECIAL_NUMBERS:
        yield a, high(1.0, number, 0.0), p, number, HOOK
        yield at(1.0, number), at(1.0, number), p, 0.0, number
        yield a, b, high(number, 1.0, number), 0.0, number
    for step in (TINY, NEAR_UNDERFLOW, 1e-162, HUGE):
        yield ORIGIN, at(step, -step), p, 0.0, HOOK
    rng = Rng()
    for _ in range(WILD):
        region = rng.region()
        yield (*(rng.point(region) for _ in range(3)), rng.metres(), rng.metres())
    for _ in range(WILD):
        yield (*(rng.wild_point() for _ in range(3)), rng.wild_number(), rng.wild_number())


# Walls in plan: along the axes, aslant, parallel to each other or but one bit off, of no length.
WALLS = ((at(3.0, -4.0), at(3.0, 9.0)), (at(8.0, 1.0), at(8.0, 2.0)), (at(-2.0, 6.0), at(8.0, 6.0)),
         (at(0.0, 0.0), at(4.0, 2.0)), (at(1.0, 9.0), at(-3.0, 7.0)),
         (at(0.0, 0.0), at(1.0, 0.5 + 2.0**-53)), (at(1.0, 2.0), at(1.0, 2.0)),
         (at(0.0, 0.0), at(1.0, 1e12)))
TINY_WALL = high(0.0, 0.0, 1.0), high(1e-170, 2e-170, 1.0)  # its length is lost in the squares


def corner_4pt() -> Iterator[Case]:
    """Two walls; without an elevation of the last point the plan intersection stays."""
    for wall in WALLS:
        for other in WALLS:
            yield *wall, *other, UNREAD, HOOK
        yield *wall, *TINY_WALL, UNREAD, HOOK
        yield *TINY_WALL, wall[0], high(wall[1].north, wall[1].east, 5.0), UNREAD, HOOK
    slanting = at(0.0, 0.0, NAN, 0), at(4.0, 2.0, NAN, HAS_ELEV)
    for flags in ALL_FLAGS:
        yield *slanting, at(9.0, 8.0, 7.0, flags), at(1.0, 8.0, 7.0, flags), UNREAD, HOOK
    for number in SPECIAL_NUMBERS:
        yield *slanting, at(9.0, 8.0), at(number, 1.0), number, HOOK
        yield at(1.0, 0.0), at(1.0, number), *slanting, HOOK, number
    rng = Rng()
    for _ in range(ORDINARY):
        region = rng.region()
        points = [rng.point(region) for _ in range(4)]
        points[3].flags = rng.pick((0, HAS_NE, HAS_NE | HAS_ELEV))
        yield (*points, rng.metres(), rng.metres())
    for _ in range(WILD):
        yield (*(rng.wild_point() for _ in range(4)), rng.wild_number(), rng.wild_number())


def inclined_line(a: CoordPt, b: CoordPt, ha: int = 777777, va: int = 5000000,
                  station: CoordPt = NO_POSITION) -> Call:
    """The offset to a point of an inclined line."""
    return "KavoCalcOfsLineHA", a, b, ha, va, station, 1.5, HOOK


# Measures against whatever two-point plane an offset left.
FACADE_SIGHT = "KavoREFCalc2PtPlane", 1000000, 5000000, at(-50.0, 7.0, 1.0), 1.5


def line_ha() -> Iterator[Vector]:
    """A sight at an inclined line; the plane that it leaves shows in a sight at that."""
    facade = "KavoREFSet2PtBasePlane", high(100.0, 0.0, 2.0), high(100.0, 9.0, 2.0)
    a, b = high(10.0, 20.0, 3.0), high(16.0, 29.0, 4.0)
    for flags in ALL_FLAGS:
        yield facade, inclined_line(at(10.0, 20.0, 3.0, flags), b), FACADE_SIGHT
        yield facade, inclined_line(a, at(16.0, 29.0, 4.0, flags)), FACADE_SIGHT
        yield facade, inclined_line(a, at(10.0, 20.0, 9.0, flags)), FACADE_SIGHT
    for va in SPECIAL_ANGLES:
        yield (inclined_line(a, b, 2592000, va),)
    for number in SPECIAL_NUMBERS:
        yield facade, inclined_line(a, high(number, 29.0, number)), FACADE_SIGHT
        yield (inclined_line(a, b, 2592000, 5000000, at(number, 0.0, number)),)
    # Vertical as far as the numbers tell; parallel sights; stations on the line's trace and near.
    yield facade, inclined_line(at(0.0, 0.0), high(1e-170, 0.0, 1.0)), FACADE_SIGHT
    yield facade, inclined_line(at(0.0, 0.0), high(1e-150, 0.0, 1.0)), FACADE_SIGHT
    yield facade, inclined_line(at(0.0, 0.0, 1e15), high(0.0, 1e-150, 1e15 + 1.0)), FACADE_SIGHT
    yield facade, inclined_line(at(0.0, 0.0, -1e15), high(0.0, 1e-150, 1e15)), FACADE_SIGHT
    for ha in (0, HALF_CIRCLE, FULL_CIRCLE, 1, QUARTER_CIRCLE):
        yield (inclined_line(ORIGIN, high(5.0, 0.0, 1.0), ha),)
    for east in (0.0, 4.9e-7, 5e-7, 5.1e-7, -4.9e-7, -5e-7, -5.1e-7):
        station = at(3.0, east)
        yield inclined_line(ORIGIN, high(1.0, 0.0, 1.0), 9, 9, station), FACADE_SIGHT
    rng = Rng()
    for _ in range(ORDINARY // 2):
        region = rng.region()
        line = rng.point(region, 40), rng.point(region, 40)
        yield (inclined_line(*line, rng.angle(), rng.angle(), rng.point(region, 40)),)
    for _ in range(WILD):
        yield (inclined_line(rng.wild_point(), rng.wild_point(), rng.wild_angle(),
                             rng.wild_angle(), rng.wild_point()),)


def circle_case(surface: AngleDistObs, edge2: tuple[int, int], edge3: tuple[int, int],
                station: CoordPt = NO_POSITION) -> Case:
    """A round object by its surface and its two edges."""
    return surface, HOOK, *edge2, *edge3, station, UNREAD


def circle() -> Iterator[Case]:
    """A round object, whose radius is told."""
    level = QUARTER_CIRCLE
    middle = AngleDistObs(3000000, level, 10.0)
    left, right = (2900000, level), (3100000, level)
    for edges in ((left, right), (right, left)):
        yield circle_case(middle, *edges)
        yield circle_case(middle, (edges[0][0] + HALF_CIRCLE, 3 * level), edges[1])
        yield circle_case(AngleDistObs(3000000 - HALF_CIRCLE, 3 * level, 10.0), *edges)
        yield circle_case(AngleDistObs(3000000 + FULL_CIRCLE, level, 10.0), *edges)
        yield circle_case(AngleDistObs(3000000 + HALF_CIRCLE, level, 10.0), *edges)
        for ha in (2900000, 3100000, 3050000, 2899999, 3100001, 3400000, -3000000):
            yield circle_case(AngleDistObs(ha, level, 10.0), *edges)
    for apart in (0, 1, -1, HALF_CIRCLE, HALF_CIRCLE - 1, HALF_CIRCLE + 1, FULL_CIRCLE,
                  -HALF_CIRCLE, -FULL_CIRCLE, FULL_CIRCLE + 1, 3 * HALF_CIRCLE):
        yield circle_case(middle, left, (2900000 + apart, level))
        yield circle_case(AngleDistObs(apart // 2, level, 10.0), (0, level), (apart, level))
    for angle in SPECIAL_ANGLES:
        yield circle_case(AngleDistObs(3000000, angle, 10.0), (2900000, angle), right)
        yield circle_case(AngleDistObs(angle, level, 10.0), left, (3100000, angle))
        yield circle_case(AngleDistObs(angle // 3, level, 5.0), (angle // 2, level),
                          (angle // 4, level))
    for number in SPECIAL_NUMBERS:
        yield circle_case(AngleDistObs(3000000, level, number), left, right,
                          high(number, number, number))
    rng = Rng()
    for _ in range(ORDINARY):
        ha = rng.angle()
        edges = tuple((ha + sign * (1 + rng.below(1500000)), level + rng.below(99999))
                      for sign in (-1, 1))
        surface = AngleDistObs(ha + rng.below(200001) - 100000, level, abs(rng.metres(60)))
        yield circle_case(surface, *edges, rng.point(rng.pick(REGIONS)))
    for _ in range(WILD):
        surface = AngleDistObs(rng.wild_angle(), rng.wild_angle(), rng.wild_number())
        yield circle_case(surface, (rng.wild_angle(), rng.wild_angle()),
                          (rng.wild_angle(), rng.wild_angle()), rng.wild_point())


FILES: dict[str, tuple[Source, ...]] = {
    "remote": (remote_elevation, single("KavoRDMCalcByCoord", remote_distance)),
    "slope": (slope_staking,),
    "target": (single("KavoCalc2PtTarget", two_point_target),),
    "offset": (
        single("KavoCalcOfsCorner3Pt", corner_3pt),
        single("KavoCalcOfsCorner4Pt", corner_4pt),
        line_ha,
        single("KavoCalcOfsCircle", circle),
    ),
}
