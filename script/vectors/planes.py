"""Reference planes: the vertical one through two points, the one through three, and sights at them.

Each function performs the operations of its formula in their order. Lengths are metres, integer
angles 1/16 arc-second, other angles radians. Vectors and points in space are (north, east, elev).
"""

import copy
from collections.abc import Callable
from dataclasses import dataclass, field
from typing import Any

from frame import (apply_azimuth_reference, has_both, has_elev, has_ne, int_angle_to_rad,
                   same_plan, turn_half_circle, wrap)
from ieee import cos, divide, hypot, sin, sqrt, square, tan
from records import (ERR_INDETERMINATE, ERR_NO_BASE, ERR_NO_DIRECTION, ERR_POINT_INVALID, F64,
                     FULL_CIRCLE, HALF_CIRCLE, HAS_ELEV, HAS_NE, I32, QUARTER_CIRCLE, STATUS_OK,
                     VALUE_INVALID, WARN_NO_ELEVATION, CoordPt, Number)

TOLERANCE = float.fromhex("0x1.0c6f7a0b5ed8dp-21")  # 5e-7

Vector = tuple[float, float, float]


def preset(result: CoordPt, along: Number, other: Number) -> None:
    """What the outputs hold when no point is found."""
    result.north = result.east = result.elev = VALUE_INVALID
    result.flags = HAS_NE | HAS_ELEV
    along.value = other.value = VALUE_INVALID


# --- Vertical plane through two points ------------------------------------------------------------


@dataclass
class VerticalPlane:
    """First point, vector to the second, its length and unit vector."""

    is_set: bool = False
    base: CoordPt = field(default_factory=CoordPt)
    length: float = 0.0
    dn: float = 0.0
    de: float = 0.0
    un: float = 0.0
    ue: float = 0.0


FACADE = VerticalPlane()


def set_2pt_base_plane(p1: CoordPt, p2: CoordPt) -> I32:
    """Stores the plane."""
    FACADE.is_set = False
    if not has_ne(p1) or not has_ne(p2):
        return ERR_POINT_INVALID
    if same_plan(p1, p2):
        return ERR_NO_DIRECTION
    FACADE.base = copy.copy(p1)
    FACADE.dn = p2.north - p1.north
    FACADE.de = p2.east - p1.east
    FACADE.length = hypot(FACADE.dn, FACADE.de)
    r = divide(1.0, FACADE.length)
    FACADE.un = r * FACADE.dn
    FACADE.ue = r * FACADE.de
    FACADE.is_set = True
    return STATUS_OK if has_elev(p1) else WARN_NO_ELEVATION


def calc_2pt_plane(ha: I32, va: I32, station: CoordPt, instrument_height: F64, result: CoordPt,
                   along_plane: Number, height_on_plane: Number) -> I32:
    """Where the sight pierces the plane."""
    preset(result, along_plane, height_on_plane)
    if not FACADE.is_set:
        return ERR_NO_BASE
    base = FACADE.base
    status = STATUS_OK if has_elev(base) else WARN_NO_ELEVATION
    z0 = station.elev + instrument_height
    a = station.north - base.north
    b = station.east - base.east
    if abs(FACADE.de * a - FACADE.dn * b) < TOLERANCE:
        return ERR_INDETERMINATE
    h = apply_azimuth_reference(ha)
    z = wrap(va)
    if z in (0, HALF_CIRCLE):
        return status
    if z > HALF_CIRCLE:
        h = turn_half_circle(h)
        z = FULL_CIRCLE - z
    sin_h = sin(int_angle_to_rad(h))
    cos_h = cos(int_angle_to_rad(h))
    d = FACADE.un * sin_h - FACADE.ue * cos_h
    if abs(d) < TOLERANCE:
        return status
    t = divide(sin_h * a - cos_h * b, d)
    along_plane.value = t
    height_on_plane.value = 0.0
    if has_elev(base):
        dz0 = z0 - base.elev
        height_on_plane.value = dz0
        if z != QUARTER_CIRCLE:
            rise = divide(FACADE.ue * a - FACADE.un * b, d * tan(int_angle_to_rad(z)))
            height_on_plane.value = rise + dz0
    result.north = divide(t, FACADE.length) * FACADE.dn + base.north
    result.east = divide(t, FACADE.length) * FACADE.de + base.east
    if has_elev(base):
        result.elev = height_on_plane.value + base.elev
    else:
        result.elev = elevation_of_sight(z, z0, sin_h, cos_h, station, result)
    return status


def elevation_of_sight(z: int, z0: float, sin_h: float, cos_h: float, station: CoordPt,
                       pierced: CoordPt) -> float:
    """Elevation of the sight at the pierced point, when the plane has none to count from."""
    if z == QUARTER_CIRCLE:
        return z0
    e = pierced.north - station.north
    f = pierced.east - station.east
    y = hypot(e, f) * divide(-1.0, tan(int_angle_to_rad(z)))
    return z0 + y if e * cos_h + f * sin_h < 0.0 else z0 - y


# --- Plane through three points -------------------------------------------------------------------


def minus(p: Vector, q: Vector) -> Vector:
    """The vector from q to p."""
    return p[0] - q[0], p[1] - q[1], p[2] - q[2]


def cross(v: Vector, w: Vector) -> Vector:
    """Cross product."""
    return (v[1] * w[2] - v[2] * w[1], v[2] * w[0] - v[0] * w[2], v[0] * w[1] - v[1] * w[0])


def unit(c: Vector) -> Vector | None:
    """The vector at length 1, or None if it is too short for that."""
    length = sqrt((square(c[2]) + square(c[1])) + square(c[0]))
    if length < TOLERANCE:
        return None
    r = divide(1.0, length)
    return c[0] * r, c[1] * r, c[2] * r


@dataclass
class PlaneForm:
    """A unit vector and the constant that makes the form zero at a point."""

    u: Vector = (0.0, 0.0, 0.0)
    k: float = 0.0

    @classmethod
    def through(cls, u: Vector, p: Vector) -> "PlaneForm":
        """The form that is zero at p."""
        return cls(u, -(u[2] * p[2] + u[1] * p[1] + u[0] * p[0]))

    def value(self, x: Vector) -> float:
        """The form at x."""
        return self.u[2] * x[2] + self.u[1] * x[1] + self.u[0] * x[0] + self.k


@dataclass
class Plane:
    """First point, vector to the second, and the forms of the three directions."""

    is_set: bool = False
    base: Vector = (0.0, 0.0, 0.0)
    a: Vector = (0.0, 0.0, 0.0)
    normal: PlaneForm = field(default_factory=PlaneForm)
    across: PlaneForm = field(default_factory=PlaneForm)
    along: PlaneForm = field(default_factory=PlaneForm)


PLANE = Plane()


def set_3pt_base_plane(p1: CoordPt, p2: CoordPt, p3: CoordPt | None) -> I32:
    """Stores the plane; without a third point the vertical one."""
    PLANE.is_set = False
    if not has_both(p1) or not has_both(p2):
        return ERR_POINT_INVALID
    if p3 is not None and not has_both(p3):
        return ERR_POINT_INVALID
    x1, x2 = (p1.north, p1.east, p1.elev), (p2.north, p2.east, p2.elev)
    x3 = (p2.north, p2.east, p2.elev + 1.0) if p3 is None else (p3.north, p3.east, p3.elev)
    if any(all(s == t for s, t in zip(p, q)) for p, q in ((x1, x2), (x2, x3), (x3, x1))):
        return ERR_NO_DIRECTION
    PLANE.a = minus(x2, x1)
    normal = unit(cross(PLANE.a, minus(x3, x2)))
    if normal is None:
        return ERR_INDETERMINATE
    across = unit(cross(normal, PLANE.a))
    if across is None:
        return ERR_INDETERMINATE
    along = unit(cross(across, normal))
    if along is None:
        return ERR_INDETERMINATE
    PLANE.base = x1
    PLANE.normal = PlaneForm.through(normal, x1)
    PLANE.across = PlaneForm.through(across, x1)
    PLANE.along = PlaneForm.through(along, x1)
    if PLANE.along.value(x1) < 0.0:
        PLANE.along = PlaneForm.through((-along[0], -along[1], -along[2]), x1)
    PLANE.is_set = True
    return STATUS_OK


def turn_plane() -> None:
    """Lets normal and across face the other way, until they are turned again."""
    n = PLANE.normal.u
    turned = n[0] * -1.0, n[1] * -1.0, n[2] * -1.0
    PLANE.normal = PlaneForm.through(turned, PLANE.base)
    across = unit(cross(turned, PLANE.a))
    assert across is not None  # as long as it was before
    PLANE.across = PlaneForm.through(across, PLANE.base)


def calc_3pt_plane(ha: I32, va: I32, station: CoordPt, instrument_height: F64, result: CoordPt,
                   along_plane: Number, across_plane: Number) -> I32:
    """Where the sight pierces the plane."""
    preset(result, along_plane, across_plane)
    if not PLANE.is_set:
        return ERR_NO_BASE
    p0 = station.north, station.east, station.elev + instrument_height
    s = PLANE.normal.value(p0)
    if abs(s) < TOLERANCE:
        return ERR_INDETERMINATE
    if s < 0.0:
        turn_plane()
    h = apply_azimuth_reference(ha)
    z = wrap(va)
    if z >= HALF_CIRCLE:
        z = FULL_CIRCLE - z
        h = turn_half_circle(h)
    sin_z = sin(int_angle_to_rad(z))
    d = (sin_z * cos(int_angle_to_rad(h)), sin_z * sin(int_angle_to_rad(h)),
         cos(int_angle_to_rad(z)))
    n = PLANE.normal.u
    den = n[1] * d[1] + n[2] * d[2] + n[0] * d[0]
    if den > -TOLERANCE:
        return STATUS_OK
    t = divide(PLANE.normal.value(p0), -den)
    x = p0[0] + t * d[0], p0[1] + t * d[1], p0[2] + t * d[2]
    result.north, result.east, result.elev = x
    along_plane.value = PLANE.along.value(x)
    across_plane.value = PLANE.across.value(x)
    return STATUS_OK


EXPORTS: dict[str, Callable[..., Any]] = {
    "KavoREFSet2PtBasePlane": set_2pt_base_plane,
    "KavoREFCalc2PtPlane": calc_2pt_plane,
    "KavoREFSet3PtBasePlane": set_3pt_base_plane,
    "KavoREFCalc3PtPlane": calc_3pt_plane,
}
