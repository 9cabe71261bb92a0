"""Approximate station and orientation of a resection: three closed forms, and the one that fits best.

A direction hz stands for the azimuth hz + w; C and S are its cosine and sine, (a, b) are those of w.
Coordinates are metres from the centroid of the sighted points, angles radians.
"""

import math
from dataclasses import dataclass

from frame import PI
from ieee import atan2, cos, divide, hypot, sin, sqrt, square
from lsq import SPACING, Observed, has_distance

TWO_PI = 2.0 * PI


@dataclass
class Ray:
    """A sight: its point, its reading with cosine and sine, and the distance or None."""

    north: float
    east: float
    hz: float
    cos_hz: float
    sin_hz: float
    dist: float | None


Station = tuple[float, float, float]  # north, east, w


def turned_back(angle: float) -> float:
    """The angle less the nearest number of circles."""
    x = divide(angle, TWO_PI) + 0.5
    return angle - TWO_PI * math.floor(x) if math.isfinite(x) else math.nan


def mean(values: list[float]) -> float:
    """Arithmetic mean, summed in order."""
    total = 0.0
    for value in values:
        total += value
    return divide(total, len(values))


def rigid_fit(rays: list[Ray]) -> Station | None:
    """The polygon of the sights with distances, turned and shifted onto its points."""
    polar = [(ray.north, ray.east, ray.dist * ray.cos_hz, ray.dist * ray.sin_hz)
             for ray in rays if ray.dist is not None]
    if len(polar) < 2:
        return None
    mean_n, mean_e, mean_u, mean_v = (mean(list(column)) for column in zip(*polar))
    a = b = 0.0
    for n, e, u, v in polar:
        n, e, u, v = n - mean_n, e - mean_e, u - mean_u, v - mean_v
        a += u * n + v * e
        b += u * e - v * n
    length = hypot(a, b)
    if length < SPACING:
        return None
    a, b = divide(a, length), divide(b, length)
    return (mean_n - (a * mean_u - b * mean_v), mean_e - (b * mean_u + a * mean_v), atan2(b, a))


def all_directions(rays: list[Ray]) -> Station | None:
    """Least squares in all conditions that a point lies on its ray."""
    rows = [((r.cos_hz * r.east - r.sin_hz * r.north, -(r.sin_hz * r.east + r.cos_hz * r.north)),
             (r.sin_hz, -r.cos_hz)) for r in rays]
    t11 = t12 = t22 = k11 = k12 = k21 = k22 = zz = 0.0
    for (z1, z2), (t1, t2) in rows:
        t11, t12, t22 = t11 + t1 * t1, t12 + t1 * t2, t22 + t2 * t2
        k11, k12, k21, k22 = k11 + z1 * t1, k12 + z1 * t2, k21 + z2 * t1, k22 + z2 * t2
        zz += z1 * z1 + z2 * z2
    det = t11 * t22 - t12 * t12
    if square(divide(det, square(t11 + t22))) < SPACING:
        return None
    k11, k12 = (divide(k11 * t22 - k12 * t12, det), divide(k12 * t11 - k11 * t12, det))
    k21, k22 = (divide(k21 * t22 - k22 * t12, det), divide(k22 * t11 - k21 * t12, det))
    m11 = m12 = m22 = 0.0
    for (z1, z2), (t1, t2) in rows:
        y1 = z1 - (k11 * t1 + k12 * t2)
        y2 = z2 - (k21 * t1 + k22 * t2)
        m11, m12, m22 = m11 + y1 * y1, m12 + y1 * y2, m22 + y2 * y2
    if square(divide(hypot(m11 - m22, 2.0 * m12), zz)) < SPACING:
        return None
    theta = 0.5 * atan2(2.0 * m12, m11 - m22)
    a, b = -sin(theta), cos(theta)
    p = -(k11 * a + k21 * b)
    q = -(k12 * a + k22 * b)
    north, east = a * p - b * q, b * p + a * q
    ahead = 0.0
    for ray in rays:
        dn, de = ray.north - north, ray.east - east
        along = (a * ray.cos_hz - b * ray.sin_hz) * dn + (a * ray.sin_hz + b * ray.cos_hz) * de
        ahead += divide(along, hypot(dn, de))
    if ahead < 0.0:
        a, b = -a, -b
    return north, east, atan2(b, a)


def triangle(rays: list[Ray], root: float) -> Station | None:
    """The point with the shortest distance, the one farthest from it, and the angle between."""
    near: Ray | None = None
    for ray in rays:
        if ray.dist is not None and (near is None or ray.dist < near.dist):
            near = ray
    if near is None:
        return None
    far, c = near, 0.0
    for ray in rays:
        apart = hypot(ray.north - near.north, ray.east - near.east)
        if apart > c:
            far, c = ray, apart
    gamma = far.hz - near.hz
    d = near.dist
    inside = square(c) - square(d * sin(gamma))
    y = d * cos(gamma) + root * sqrt(inside if inside > 0.0 else 0.0)
    if not y > 0.0 or (d > c and distinct_points(rays) == 2):
        return None
    u, v = d * near.cos_hz, d * near.sin_hz
    local = atan2(y * far.sin_hz - v, y * far.cos_hz - u)
    w = atan2(far.east - near.east, far.north - near.north) - local
    a, b = cos(w), sin(w)
    return near.north - (a * u - b * v), near.east - (b * u + a * v), w


def misfit(rays: list[Ray], station: Station) -> float:
    """Squares of the angles and of the relative lengths by which the sights miss."""
    north, east, w = station
    total = 0.0
    for ray in rays:
        dn, de = ray.north - north, ray.east - east
        total += square(turned_back(ray.hz - (atan2(de, dn) - w)))
        if ray.dist is not None:
            length = hypot(dn, de)
            total += square(divide(ray.dist - length, length))
    return total


def distinct_points(rays: list[Ray]) -> int:
    """How many different points were sighted."""
    return len({(ray.north, ray.east) for ray in rays})


def lsq_approx_values(sights: list[Observed]) -> Station | None:
    """The candidate that misses least; None where there is none."""
    if not sights:
        return None
    mean_n, mean_e = mean([s.north for s in sights]), mean([s.east for s in sights])
    rays = [Ray(s.north - mean_n, s.east - mean_e, s.hz, cos(s.hz), sin(s.hz),
                s.horiz_dist if has_distance(s) else None) for s in sights]
    if any(ray.dist is not None and not ray.dist > 0.0 for ray in rays):
        return None
    points = distinct_points(rays)
    if points < 2:
        return None
    rigid = rigid_fit(rays)
    candidates = [rigid]
    if points >= 3:
        candidates += [all_directions(rays), triangle(rays, 1.0), triangle(rays, -1.0)]
    elif rigid is None:
        candidates.append(triangle(rays, 1.0))
    best, least = None, math.inf
    for candidate in candidates:
        if candidate is not None and misfit(rays, candidate) < least:
            best, least = candidate, misfit(rays, candidate)
    if best is None:
        return None
    w = turned_back(best[2])
    return best[0] + mean_n, best[1] + mean_e, w
