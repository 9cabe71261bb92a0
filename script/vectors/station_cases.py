"""What the resections from three points and from two are asked, and the benchmark."""

import dataclasses
from collections.abc import Iterator

from cases import ALL_FLAGS, ORDINARY, WILD, Case, Source, at, high, single
from ieee import wrap32
from records import (FULL_CIRCLE, HALF_CIRCLE, HAS_ELEV, QUARTER_CIRCLE, CoordPt, StnAngleObs,
                     StnDistObs)
from rng import HUGE, INF, NAN, SPECIAL_ANGLES, SPECIAL_NUMBERS, TINY, Rng
from sights import random_setup


def sea_level_calc_by_bm() -> Iterator[Case]:
    """Elevation, height term and difference."""
    yield 100.0, 1.5, 2.0
    yield 2.0**53, 1.0, 2.0**53
    yield 0.1, 0.2, 0.3
    for number in SPECIAL_NUMBERS:
        yield number, 0.1, 0.2
        yield 0.1, number, number
        yield 12.3, 1.5, number
        yield number, -number, -0.0
    rng = Rng()
    for _ in range(ORDINARY):
        yield rng.metres(), rng.metres(2), rng.metres(50)


# --- Three points ---------------------------------------------------------------------------------


def seen(point: CoordPt, ha: int, va: int = 5000000, height_term: float = 1.6) -> StnAngleObs:
    """A sight by its readings."""
    return StnAngleObs(point, ha, va, height_term)


def resect_3pt() -> Iterator[Case]:
    """Three sights."""
    p0, p1, p2 = at(100.0, 0.0), at(0.0, 100.0), at(-100.0, 0.0)
    square = (0, QUARTER_CIRCLE, HALF_CIRCLE)
    for turn in SPECIAL_ANGLES:
        yield tuple(seen(p, wrap32(ha + turn)) for p, ha in zip((p0, p1, p2), square))
    # One after the other lacks its position; that is asked before the readings are compared.
    for flags in ALL_FLAGS:
        yield seen(at(100.0, 0.0, 7.0, flags), 1), seen(p1, 1), seen(p2, 1)
        yield seen(p0, 1), seen(at(0.0, 100.0, 7.0, flags), 3000000), seen(p2, 9000000)
        yield seen(p0, 1), seen(p1, 3000000), seen(at(-100.0, 0.0, 7.0, flags), 9000000)
    # Equal readings, also once the faces are reduced; a circle apart they are not equal.
    for h0, h1, h2 in ((4, 4, 9), (4, 9, 4), (9, 4, 4), (0, FULL_CIRCLE, 9),
                       (4, 9, FULL_CIRCLE + 4)):
        yield seen(p0, h0), seen(p1, h1), seen(p2, h2)
    yield seen(p0, 4), seen(p1, HALF_CIRCLE + 4, 19000000), seen(p2, 3000000)
    # Angles of a quarter and three quarters, also negative ones, and of a half.
    for alpha in (QUARTER_CIRCLE, -QUARTER_CIRCLE, 3 * QUARTER_CIRCLE, -3 * QUARTER_CIRCLE,
                  HALF_CIRCLE, QUARTER_CIRCLE + 1, QUARTER_CIRCLE - 1, FULL_CIRCLE, 1, -1):
        yield seen(p0, 0), seen(p1, alpha), seen(p2, alpha + 3000000)
        yield seen(p0, 3000000), seen(p1, 0), seen(p2, alpha)
    # All on one circle: the centres coincide, to the bit or nearly.
    for step in (QUARTER_CIRCLE, 3 * QUARTER_CIRCLE, 2592000, -2592000):
        yield seen(p0, 0), seen(at(0.0, 0.0), step), seen(p0, 2 * step)
        yield seen(p0, 0), seen(p1, step), seen(p0, 2 * step)
    yield seen(p0, 0), seen(at(0.0, 50.0), 2592000), seen(p2, QUARTER_CIRCLE)
    yield seen(at(3.0, 4.0), 0), seen(at(3.0, 4.0), 100), seen(at(3.0, 4.0), 200)
    # The zenith reading: vertical within a minute, level, either face, outside a circle.
    tops = high(100.0, 0.0, 7.0), high(0.0, 100.0, 9.0), at(-100.0, 0.0, 20.0)
    for va in SPECIAL_ANGLES + (960, 959, 961, HALF_CIRCLE - 960, HALF_CIRCLE - 959, 19000000):
        yield seen(tops[0], 0, va), seen(tops[1], 5000000), seen(tops[2], 9000000)
        yield seen(tops[2], 0, va), seen(tops[1], 5000000, 5100000), seen(tops[0], 9000000, va)
    for number in SPECIAL_NUMBERS:
        yield seen(high(number, 0.0, 1.0), 0), seen(p1, 5000000), seen(p2, 9000000)
        yield seen(p0, 0), seen(at(0.0, number), 5000000), seen(p2, 9000000)
        yield seen(p0, 0), seen(p1, 5000000), seen(high(number, number, number), 9000000)
        yield seen(tops[0], 0, 5000000, number), seen(p1, 5000000), seen(p2, 9000000)
    for scale in (TINY, 1e-170, 1e170, HUGE):
        yield (seen(at(scale, 0.0), 0), seen(at(0.0, scale), 5000000),
               seen(at(-scale, 0.0), 9000000))
    rng = Rng()
    for i in range(2 * ORDINARY):
        setup, points = random_setup(rng, errors=i % 3 != 0)
        yield tuple(setup.angle_obs(point, 1 + rng.below(2)) for point in points[:3])
    for _ in range(WILD):
        yield tuple(StnAngleObs(rng.wild_point(), rng.wild_angle(), rng.wild_angle(),
                                rng.wild_number()) for _ in range(3))


# --- Two points -----------------------------------------------------------------------------------


def ranged(point: CoordPt, ha: int, hd: float, local: CoordPt = at(0.0, 0.0, 0.0, 0),
           va: int = QUARTER_CIRCLE) -> StnDistObs:
    """A sight by its readings and its distance."""
    return StnDistObs(point, local, ha, va, hd, 2.25, 1.6)


def resect_2pt() -> Iterator[Case]:
    """Two sights, with a distance to either or to both."""
    p, q = high(10.0, 23.0, 5.0), at(6.0, 20.0, 8.0)
    far = at(10.0, 0.0)
    home = at(0.0, 0.0, 3.0)
    for flags in ALL_FLAGS:
        for other in (0.0, 2.0):
            yield ranged(at(10.0, 23.0, 5.0, flags), 1, 3.0), ranged(q, 4000000, other, home)
            yield ranged(p, 1, other, at(1.0, 1.0)), ranged(at(6.0, 20.0, 8.0, flags), 4000000, 3.0)
    yield ranged(p, 1, 3.0), ranged(p, 4000000, 3.0, at(1.0, 1.0))
    yield ranged(p, 1, 3.0), ranged(at(10.0, 23.0, 0.0, HAS_ELEV), 4000000, 0.0)
    yield ranged(p, 1, 0.0), ranged(q, 4000000, -0.0)
    yield ranged(p, 1, 3.0, at(2.0, 3.0)), ranged(q, 4000000, 3.0, at(2.0, 3.0))
    # A distance up to that between the points, and longer; also a negative one.
    for hd in (5.0, 4.999999999999999, 5.000000000000001, 7.0, -3.0, -5.0, -7.0, TINY, 1e-9):
        yield ranged(p, 0, hd), ranged(q, QUARTER_CIRCLE, 0.0)
        yield ranged(p, 0, 0.0), ranged(q, 3000000, hd)
    # In line: on one side, between the points either way round, and a circle apart.
    for angle in SPECIAL_ANGLES:
        yield ranged(home, 0, 4.0), ranged(far, angle, 0.0)
        yield ranged(home, angle, 0.0), ranged(at(0.0, 7.0), 0, 4.0)
        yield ranged(p, angle, 3.0, home), ranged(q, 77, 4.0, at(3.0, 4.0))
        yield (ranged(p, 33, 3.0, home, angle),
               ranged(q, 4000000, 0.0, home, wrap32(angle - 1)))
    for local in (at(1e-170, 0.0), at(0.0, TINY), at(HUGE, HUGE), at(NAN, 0.0), at(INF, 1.0)):
        yield ranged(p, 33, 3.0, home), ranged(q, 4000000, 3.0, local)
    for number in SPECIAL_NUMBERS:
        yield ranged(p, 33, number), ranged(q, 4000000, 0.0)
        yield ranged(p, 33, number, home), ranged(q, 4000000, 4.0, at(number, 1.0))
        yield ranged(high(number, 0.0, number), 33, 3.0), ranged(q, 4000000, 0.0)
        yield (ranged(p, 33, 3.0, home),
               ranged(high(1.0, number, number), 4000000, 4.0, at(3.0, 4.0)))
        yield (dataclasses.replace(ranged(p, 33, 3.0), vd=number, height_term=-number),
               ranged(q, 4000000, 0.0))
    rng = Rng()
    for i in range(2 * ORDINARY):
        setup, points = random_setup(rng, errors=i % 3 != 0)
        with_a, with_b = ((True, False), (False, True), (True, True))[i // 3 % 3]
        yield (setup.dist_obs(points[0], with_a, 1 + rng.below(2)),
               setup.dist_obs(points[1], with_b, 1 + rng.below(2)))
    for _ in range(WILD):
        yield tuple(StnDistObs(rng.wild_point(), rng.wild_point(), rng.wild_angle(),
                               rng.wild_angle(), rng.pick((0.0, rng.wild_number())),
                               rng.wild_number(), rng.wild_number()) for _ in range(2))


FILES: dict[str, tuple[Source, ...]] = {
    "benchmark": (single("KavoSTNSeaLevelCalcByBM", sea_level_calc_by_bm),),
    "station_3pt": (single("KavoSTN3PtResect", resect_3pt),),
    "station_2pt": (single("KavoSTN2PtResect", resect_2pt),),
}
