"""The start of an adjustment: three closed forms of a station, and the one that fits best.

A reading hz stands for the azimuth hz + w; a and b are cosine and sine of w. Coordinates are metres
from the centroid of the sighted points, angles radians. Any start near enough would do; these forms
and the order of their operations are the library's choice, and are followed here because the last
bits of a result may hang on those of the start.
"""

import math
from collections.abc import Iterable
from dataclasses import dataclass

from frame import PI
from ieee import atan2, cos, divide, hypot, sin, sqrt, square
from lsq import SPACING, Observed, has_distance

TWO_PI = 2.0 * PI


@dataclass
class Ray:
    """A sight: its point, its reading with cosine and sine, and the distance if there is one."""

    north: float
    east: float
    hz: float
    cos_hz: float
    sin_hz: float
    dist: float | None


Rays = list[Ray]
Fix = tuple[float, float, float, float]  # north, east, a, b


def turned_back(angle: float) -> float:
    """The angle less the nearest number of circles."""
    x = divide(angle, TWO_PI) + 0.5
    return angle - TWO_PI * math.floor(x) if math.isfinite(x) else math.nan


def mean(values: Iterable[float]) -> float:
    """Arithmetic mean, summed in order."""
    total = count = 0.0
    for value in values:
        total += value
        count += 1.0
    return divide(total, count)


def pinned(a: float, b: float, local: tuple[float, float], north: float,
           east: float) -> Fix | None:
    """The instrument's frame turned to cos : sin = a : b, its local position laid on the point."""
    length = hypot(a, b)
    if not length >= SPACING:
        return None
    a, b = divide(a, length), divide(b, length)
    u, v = local
    return north - (a * u - b * v), east - (b * u + a * v), a, b


def rigid_fit(rays: Rays) -> Fix | None:
    """The polygon of the sights with distances, turned and shifted onto its points."""
    polar = [(ray.dist * ray.cos_hz, ray.dist * ray.sin_hz, ray.north, ray.east)
             for ray in rays if ray.dist is not None]
    if len(polar) < 2:
        return None
    mean_u, mean_v, mean_n, mean_e = (mean(column) for column in zip(*polar))
    a = b = 0.0
    for u, v, n, e in polar:
        u, v, n, e = u - mean_u, v - mean_v, n - mean_n, e - mean_e
        a += u * n + v * e
        b += u * e - v * n
    return pinned(a, b, (mean_u, mean_v), mean_n, mean_e)


Condition = tuple[float, float, float, float]  # z and t of z (a, b) + t (p, q) = 0


def eliminated(conditions: list[Condition]) -> tuple[float, float, float, float] | None:
    """K = (sum z t^T) (sum t t^T)^-1; None where the rays are parallel."""
    t11 = t12 = t22 = k11 = k12 = k21 = k22 = 0.0
    for z1, z2, t1, t2 in conditions:
        t11, t12, t22 = t11 + t1 * t1, t12 + t1 * t2, t22 + t2 * t2
        k11, k12, k21, k22 = k11 + z1 * t1, k12 + z1 * t2, k21 + z2 * t1, k22 + z2 * t2
    det = t11 * t22 - t12 * t12
    if not square(divide(det, square(t11 + t22))) >= SPACING:
        return None
    return (divide(k11 * t22 - k12 * t12, det), divide(k12 * t11 - k11 * t12, det),
            divide(k21 * t22 - k22 * t12, det), divide(k22 * t11 - k21 * t12, det))


def all_directions(rays: Rays) -> Fix | None:
    """Least squares in the conditions that every point lies on its ray."""
    conditions = [(r.cos_hz * r.east - r.sin_hz * r.north,
                   -(r.sin_hz * r.east + r.cos_hz * r.north), r.sin_hz, -r.cos_hz) for r in rays]
    k = eliminated(conditions)
    if k is None:
        return None
    k11, k12, k21, k22 = k
    m11 = m12 = m22 = spread = 0.0
    for z1, z2, t1, t2 in conditions:
        y1 = z1 - (k11 * t1 + k12 * t2)
        y2 = z2 - (k21 * t1 + k22 * t2)
        m11, m12, m22 = m11 + y1 * y1, m12 + y1 * y2, m22 + y2 * y2
        spread += z1 * z1 + z2 * z2
    if not square(divide(hypot(m11 - m22, 2.0 * m12), spread)) >= SPACING:
        return None
    theta = 0.5 * atan2(2.0 * m12, m11 - m22)
    a, b = -sin(theta), cos(theta)
    p = -(k11 * a + k21 * b)
    q = -(k12 * a + k22 * b)
    north, east = a * p - b * q, b * p + a * q
    ahead = 0.0
    for ray in rays:
        dn, de = ray.north - north, ray.east - east
        along = (a * ray.cos_hz - b * ray.sin_hz) * dn + (b * ray.cos_hz + a * ray.sin_hz) * de
        ahead += divide(along, hypot(dn, de))
    return (north, east, -a, -b) if ahead < 0.0 else (north, east, a, b)


def triangles(sights: list[Observed], rays: Rays, only_two: bool) -> list[Fix | None]:
    """Both triangles on the shortest distance and the point farthest from its end."""
    ranged = [i for i, ray in enumerate(rays) if ray.dist is not None]
    if not ranged:
        return []
    near = min(ranged, key=lambda i: sights[i].horiz_dist)
    start = sights[near]
    apart = [hypot(s.north - start.north, s.east - start.east) for s in sights]
    far = near
    for i, c in enumerate(apart):
        if c > apart[far]:
            far = i
    d, end = start.horiz_dist, sights[far]
    if only_two and d > apart[far]:
        return []
    gamma = end.hz - start.hz
    inside = square(apart[far]) - square(d * sin(gamma))
    half = sqrt(inside) if inside > 0.0 else 0.0
    local = d * rays[near].cos_hz, d * rays[near].sin_hz
    n, e = end.north - start.north, end.east - start.east
    found = []
    for y in (d * cos(gamma) + half, d * cos(gamma) - half)[:1 if only_two else 2]:
        u, v = y * rays[far].cos_hz - local[0], y * rays[far].sin_hz - local[1]
        if y > 0.0:
            found.append(pinned(u * n + v * e, u * e - v * n, local, rays[near].north,
                                rays[near].east))
    return found


def misfit(rays: Rays, fix: Fix) -> float:
    """Squares of the angles and of the relative lengths by which the sights miss."""
    north, east, a, b = fix
    w = atan2(b, a)
    total = 0.0
    for ray in rays:
        dn, de = ray.north - north, ray.east - east
        dist = hypot(dn, de)
        if not dist > 0.0 or (ray.dist is not None and not ray.dist > 0.0):
            return math.inf
        total += square(turned_back(ray.hz + w - atan2(de, dn)))
        if ray.dist is not None:
            total += square(divide(ray.dist - dist, dist))
    return total


def lsq_approx_values(sights: list[Observed]) -> tuple[float, float, float] | None:
    """North, east and w of the candidate that misses least; None where there is none."""
    points = len({(s.north, s.east) for s in sights})
    if points < 2:
        return None
    mean_n, mean_e = mean(s.north for s in sights), mean(s.east for s in sights)
    rays = [Ray(s.north - mean_n, s.east - mean_e, s.hz, cos(s.hz), sin(s.hz),
                s.horiz_dist if has_distance(s) else None) for s in sights]
    rigid = rigid_fit(rays)
    candidates = [rigid]
    if points >= 3:
        candidates.append(all_directions(rays))
    if points >= 3 or rigid is None:
        candidates += triangles(sights, rays, points == 2)
    best, least = None, math.inf
    for fix in candidates:
        missed = math.inf if fix is None else misfit(rays, fix)
        if missed < least:
            best, least = fix, missed
    if best is None:
        return None
    north, east, a, b = best
    return mean_n + north, mean_e + east, atan2(b, a)
