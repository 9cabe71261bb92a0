"""What the resection from many points and the known line are asked."""

from collections.abc import Iterator
from dataclasses import replace

from cases import ALL_FLAGS, WILD, Case, Source, at, high, single
from ieee import wrap32
from multi import AZIMUTH_FROM_POINTS
from records import HALF_CIRCLE, QUARTER_CIRCLE, CoordPt, MultiResectInput
from rng import HUGE, INF, NAN, SPECIAL_ANGLES, SPECIAL_NUMBERS, TINY, Rng
from sights import Setup, random_setup

SETS = 50  # of sights in each way of measuring


def counted(*sights: MultiResectInput) -> Case:
    """The sights after their number."""
    return len(sights), list(sights)


def level(point: CoordPt, ha: int, dist: float = 0.0) -> MultiResectInput:
    """A level sight by its reading, with a distance or without one."""
    return MultiResectInput(point, ha, QUARTER_CIRCLE, dist, dist, 0.0, 0.0)


# --- Many points ----------------------------------------------------------------------------------

NORTH, EAST, SOUTH = at(100.0, 0.0), at(0.0, 50.0), high(-80.0, 0.0, 4.0)
KNEE = high(30.0, 40.0, 2.0)
TO_ALL = (level(NORTH, 0, 100.0), level(EAST, QUARTER_CIRCLE, 50.0),
          level(SOUTH, HALF_CIRCLE, 80.0), level(KNEE, 3060645, 50.0))


def degenerate() -> Iterator[Case]:
    """Too little to go by, or just enough."""
    yield 0, []
    yield -1, []
    yield -32768, []
    for n in (1, 2, 3, 4):
        yield counted(*TO_ALL[:n])
        yield counted(*(replace(sight, slope_dist=0.0) for sight in TO_ALL[:n]))
        yield counted(*(TO_ALL[0],) * n)
    yield counted(TO_ALL[0], TO_ALL[0], replace(TO_ALL[1], slope_dist=0.0))
    for dist in (111.0, 111.8, 111.803398874989, 111.9, 40.0, 1e-3):  # the points are 111.8 apart
        yield counted(level(NORTH, 0, dist), level(EAST, 5000000))
        yield counted(level(NORTH, 0), level(EAST, 5000000), level(EAST, 5000000, dist))
    # In line, on one circle, at one place.
    yield counted(*(level(at(10.0 * i, 0.0), 0) for i in (1, 2, 3, 4)))
    yield counted(*(level(at(10.0 * i, 0.0), 0, 10.0 * i) for i in (1, 2, 3, 4)))
    yield counted(*(level(at(10.0 * i, 10.0), HALF_CIRCLE * (i > 0)) for i in (-2, -1, 1, 2)))
    corners = at(1.0, 1.0), at(-1.0, 1.0), at(-1.0, -1.0)
    yield counted(*(level(p, 2592000 * i) for i, p in enumerate(corners)))
    yield counted(level(NORTH, 0, 5.0), level(NORTH, 9, 6.0), level(NORTH, 18))
    yield counted(level(at(0.0, 0.0), 0, 0.01), level(NORTH, 0, 100.0), level(EAST, 5184000, 50.0))


def extreme() -> Iterator[Case]:
    """Numbers that no instrument gives, in every field."""
    first, *others = TO_ALL
    for number in SPECIAL_NUMBERS:
        yield counted(replace(first, point=at(number, 0.0)), *others)
        yield counted(*others, replace(first, point=high(100.0, number, number)))
        yield counted(*others, replace(first, point=high(100.0, 0.0, number)))
        yield counted(replace(first, slope_dist=number), *others)
        yield counted(replace(first, horiz_dist=number), *others)
        yield counted(replace(first, point=KNEE, ha=3060645, height_diff=number), *others)
        yield counted(*others, replace(others[2], height_term=number))
        yield counted(level(NORTH, 0, number), level(EAST, QUARTER_CIRCLE))
    for angle in SPECIAL_ANGLES:
        yield counted(replace(first, ha=angle), *others)
        yield counted(replace(first, va=angle), *others)
        yield counted(*(replace(sight, va=angle) for sight in TO_ALL))
        yield counted(*(replace(sight, va=angle, slope_dist=0.0) for sight in TO_ALL))
        yield counted(*(replace(sight, ha=wrap32(sight.ha + angle))
                        for sight in TO_ALL))
    for flags in ALL_FLAGS:
        yield counted(*(replace(s, point=replace(s.point, flags=flags)) for s in TO_ALL))
        yield counted(replace(first, point=at(100.0, 0.0, 3.0, flags)),
                      *(replace(sight, slope_dist=0.0) for sight in others))
    for scale in (TINY, 1e-160, 1e-3, 1e6, 1e100, 1e160, HUGE):
        yield counted(*(replace(s, point=replace(s.point, north=s.point.north * scale,
                                                 east=s.point.east * scale),
                                horiz_dist=s.horiz_dist * scale) for s in TO_ALL))


def surveyed() -> Iterator[Case]:
    """Stations among points, three to twelve of them, measured in every way."""
    rng = Rng()
    for i in range(5 * SETS):
        setup, points = random_setup(rng, errors=i % 4 != 0)
        count = 3 + (rng.below(10) if i % 3 == 0 else rng.below(3))
        dist_percent = (0, 0, 50, 100, 100)[i % 5]
        face = 2 if rng.chance(8) else 1
        sights = [setup.sight(point, rng.chance(dist_percent), face) for point in points[:count]]
        if rng.chance(6):  # the other face among them
            sights[0] = setup.sight(points[0], face=3 - face)
        if rng.chance(10):  # a point twice
            sights[1] = setup.sight(points[0])
        yield counted(*sights)
    for i in range(SETS):
        setup, points = random_setup(rng, errors=i % 4 != 0)
        yield counted(setup.sight(points[0], True), setup.sight(points[1], i % 2 == 0))
    # Points mistaken for each other, and readings that err by much.
    for i in range(SETS):
        setup, points = random_setup(rng)
        sights = [setup.sight(point, rng.chance(50)) for point in points[:3 + rng.below(3)]]
        if i % 2 == 0:
            sights[0], sights[1] = (replace(sights[0], point=points[1]),
                                    replace(sights[1], point=points[0]))
        else:
            sights[0] = replace(sights[0], ha=rng.angle())
        yield counted(*sights)


def near_circle() -> Iterator[Case]:
    """A station on the circle through its points, or a little inside or outside it."""
    corners = high(30.0, 40.0, 1.0), at(-50.0, 0.0), high(-14.0, -48.0, 2.0), at(40.0, -30.0)
    for off in (0.0, 1e-3, -1e-3, 0.05, -0.05, 1.0, -5.0):
        setup = Setup(at(50.0 + off, 0.0), 1234567)
        for count in (3, 4):
            yield counted(*(setup.sight(p, False) for p in corners[:count]))
            yield counted(*(setup.sight(p, p is corners[0]) for p in corners[:count]))
    # Again, but the one distance goes past the point farthest from its end.
    corners = high(-60.0, 25.0, 1.0), at(63.0, 16.0), high(25.0, 60.0, 2.0), at(-25.0, 60.0)
    for off in (0.0, 1e-3, -1e-3, 0.05, -0.05, 1.0, -5.0):
        setup = Setup(at(65.0 + off, 0.0), 20000000)
        for count in (2, 3, 4):
            yield counted(*(setup.sight(p, p is corners[0]) for p in corners[:count]))


def wild() -> Iterator[Case]:
    """Any numbers at all."""
    rng = Rng()
    for _ in range(WILD):
        yield counted(*(MultiResectInput(rng.wild_point(), rng.wild_angle(), rng.wild_angle(),
                                         rng.wild_number(), abs(rng.wild_number()),
                                         rng.wild_number(), rng.wild_number())
                        for _ in range(2 + rng.below(4))))
    for _ in range(WILD):
        setup, points = random_setup(rng)
        sights = [setup.sight(point) for point in points[:4]]
        sights[rng.below(4)].horiz_dist = rng.wild_number()
        sights[rng.below(4)].height_diff = rng.wild_number()
        sights[rng.below(4)].va = rng.wild_angle()
        yield counted(*sights)


# --- Known line -----------------------------------------------------------------------------------


def known_line() -> Iterator[Case]:
    """Two sights, and an azimuth or none."""
    measured = 42.5, 42.4264, 1.5, 0.2
    first = MultiResectInput(high(30.0, -30.0, 5.0), 16416000, QUARTER_CIRCLE, *measured)
    second = MultiResectInput(high(30.0, 30.0, 6.0), 864000, 5100000, *measured)
    for azimuth in SPECIAL_ANGLES:
        yield first, second, azimuth
        yield replace(first, ha=azimuth), second, QUARTER_CIRCLE
        yield first, replace(second, ha=azimuth), AZIMUTH_FROM_POINTS
        yield replace(first, va=azimuth), second, AZIMUTH_FROM_POINTS
        yield first, replace(second, va=azimuth), QUARTER_CIRCLE
    for azimuth in (QUARTER_CIRCLE, AZIMUTH_FROM_POINTS):
        for flags in ALL_FLAGS:
            yield replace(first, point=at(30.0, -30.0, 5.0, flags)), second, azimuth
            yield first, replace(second, point=at(30.0, 30.0, 6.0, flags)), azimuth
        for number in SPECIAL_NUMBERS:
            yield replace(first, point=high(number, -30.0, number)), second, azimuth
            yield first, replace(second, point=high(30.0, number, number)), azimuth
            yield replace(first, slope_dist=number), second, azimuth
            yield first, replace(second, slope_dist=number), azimuth
            yield replace(first, horiz_dist=number), second, azimuth
            yield first, replace(second, height_diff=number, height_term=number), azimuth
        yield replace(first, slope_dist=0.0), replace(second, slope_dist=0.0), azimuth
        yield first, replace(first, point=second.point), azimuth
        yield first, replace(second, point=first.point), azimuth
    rng = Rng()
    for i in range(2 * SETS):
        setup, points = random_setup(rng, errors=i % 4 != 0)
        sights = [setup.sight(p, rng.chance(85), 2 if rng.chance(8) else 1) for p in points[:2]]
        azimuth = rng.angle() if i % 3 == 0 else AZIMUTH_FROM_POINTS
        if i % 3 == 0 and rng.chance(50):
            sights[1].point = at(NAN, INF)
        yield *sights, azimuth
    for _ in range(WILD):
        sights = [MultiResectInput(rng.wild_point(), rng.wild_angle(), rng.wild_angle(),
                                   *(rng.wild_number() for _ in range(4))) for _ in range(2)]
        yield *sights, rng.pick((AZIMUTH_FROM_POINTS, rng.wild_angle()))


FILES: dict[str, tuple[Source, ...]] = {
    "multi_resect": tuple(single("KavoSTNMultiResect", source)
                          for source in (degenerate, extreme, surveyed, near_circle, wild)),
    "known_line": (single("KavoSTNKnownLine", known_line),),
}
