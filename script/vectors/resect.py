"""The iterated adjustment of a station in the plane: north, east and orientation.

Each function performs the operations of its formula in their order. Lengths are metres, angles
radians.
"""

import math
from dataclasses import dataclass

from approx import TWO_PI, lsq_approx_values, turned_back
from ieee import atan2, divide, hypot, sqrt
from lsq import (ENGINE_OK, ENGINE_SINGULAR, SPACING, Column, Matrix, Observed, build_weights,
                 has_direction, has_distance, mat_vec_add, normal_inverse, quadratic_form,
                 scatter_residuals, solution_vector, vec_add)

SIGMA_ANGLE = 2.0  # arc-seconds
SIGMA_CONST = 0.002
SIGMA_PROP = 2e-6

ITERATION_LIMIT = 10
SETTLED = 0.001
NOT_CONVERGED = 1
UNKNOWNS = 3
MOST_BEND = 0.001  # radians, or of the distance


@dataclass
class Adjusted:
    """What the adjustment found; orientation in [0, 2 pi)."""

    north: float = 0.0
    east: float = 0.0
    orient: float = 0.0
    sd_north: float = 0.0
    sd_east: float = 0.0


def design_matrix(sights: list[Observed], observations: Column,
                  x: Column) -> tuple[Matrix, Column]:
    """Observed minus computed, and its derivative by the unknowns."""
    a: Matrix = []
    l: Column = []
    for sight in sights:
        dn, de = sight.north - x[0], sight.east - x[1]
        d2 = dn * dn + de * de
        d = sqrt(d2)
        if has_direction(sight):
            computed = atan2(de, dn) - x[2]
            a.append([divide(-de, d2), divide(dn, d2), 1.0])
            l.append(turned_back(observations[len(l)] - computed))
        if has_distance(sight):
            a.append([divide(dn, d), divide(de, d), 0.0])
            l.append(observations[len(l)] - d)
    return a, l


def holds(sight: Observed, found: Adjusted) -> bool:
    """What the last pass left of the sight is what is left of it at the station."""
    dn, de = sight.north - found.north, sight.east - found.east
    dist = hypot(dn, de)
    turn = turned_back(atan2(de, dn) - found.orient - sight.hz - sight.res_hz)
    shift = dist - sight.horiz_dist - sight.res_horiz_dist if has_distance(sight) else 0.0
    return abs(turn) < MOST_BEND and abs(shift) < MOST_BEND * dist


def is_station(sights: list[Observed], found: Adjusted) -> bool:
    """The passes have not gone where their linear model does not reach."""
    return (math.isfinite(found.sd_north) and math.isfinite(found.sd_east)
            and 0.0 <= found.orient < TWO_PI and all(holds(sight, found) for sight in sights))


def lsq_resect(sights: list[Observed]) -> tuple[int, Adjusted]:
    """The whole adjustment; writes the residuals into the sights."""
    observations, p = build_weights(sights, SIGMA_ANGLE, SIGMA_CONST, SIGMA_PROP)
    approximate = lsq_approx_values(sights)
    if approximate is None:
        return ENGINE_SINGULAR, Adjusted()
    x = list(approximate)
    r = len(observations) - UNKNOWNS
    k = 1
    omega = previous = 0.0
    while k <= ITERATION_LIMIT:
        a, l = design_matrix(sights, observations, x)
        code, qxx = normal_inverse(a, p)
        if code != ENGINE_OK:
            return code, Adjusted()
        dx = solution_vector(a, qxx, p, l)
        x = vec_add(x, dx)
        v = mat_vec_add(a, l, dx)
        omega = quadratic_form(p, v)
        if omega < SPACING:
            break
        if k != 1:
            change = abs(divide(omega - previous, previous))
            if change < SETTLED or change != change:
                break
        previous = omega
        k += 1
    s0_squared = divide(omega, r) if r > 0 else omega
    orient = x[2]
    if orient < 0.0:
        orient += TWO_PI
    if orient >= TWO_PI:
        orient -= TWO_PI
    scatter_residuals(sights, v)
    found = Adjusted(x[0], x[1], orient, sqrt(qxx[0][0] * s0_squared),
                     sqrt(qxx[1][1] * s0_squared))
    if k > ITERATION_LIMIT or not is_station(sights, found):
        return NOT_CONVERGED, found
    return ENGINE_OK, found
