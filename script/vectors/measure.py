"""Measurement programs: remote elevation and distance, slope staking, two-point target, offsets.

Each function performs the operations of its formula in their order. Lengths are metres, integer
angles 1/16 arc-second, other angles radians.
"""

from collections.abc import Callable
from dataclasses import dataclass
from typing import Any

from cogo import intersect_lines_2pt, plan_line
from frame import (apply_azimuth_reference, azimuth_between, distances_between, has_both,
                   has_elev, has_ne, int_angle_to_rad, into_circle, same_plan, turn_half_circle,
                   unwrapped_rad, wrap)
from ieee import add32, cos, divide, remainder, sin, sqrt, square, sub32, tan
from planes import calc_2pt_plane, set_2pt_base_plane
from records import (ANGLE_INVALID, ERR_INDETERMINATE, ERR_NO_BASE, ERR_NO_DIRECTION,
                     ERR_POINT_INVALID, ERR_REFUSED, ERR_SIGHT_OFF_BASE, ERR_SIGHT_VERTICAL, F64,
                     FULL_CIRCLE, HALF_CIRCLE, HAS_ELEV, HAS_NE, I32, QUARTER_CIRCLE, STATUS_OK,
                     VALUE_INVALID, WARN_NO_ELEVATION, WARN_SLOPE_LEVEL, WARN_SLOPE_VERTICAL,
                     AngDistRec, AngleDistObs, CoordPt, Number, RdmResult, SlopeStakeResult,
                     untouched)

# --- Remote elevation -----------------------------------------------------------------------------


@dataclass
class RemoteBase:
    """The sight to the base reflector, reduced to face 1."""

    is_set: bool = False
    ha: int = 0
    height: float = 0.0
    horiz: float = 0.0


REMOTE = RemoteBase()


def reduce_face(zenith: int, ha: int) -> tuple[int, int]:
    """Zenith and horizontal angle as face 1 reads them."""
    z = wrap(zenith)
    if z >= HALF_CIRCLE:
        return FULL_CIRCLE - z, turn_half_circle(ha)
    return z, ha


def without_low_bits(a: int) -> int:
    """The angle down to a multiple of 32 units."""
    return a & ~31


def is_vertical(z: int) -> bool:
    """Straight up or down to about an arc-second."""
    return without_low_bits(z + 20736015) % HALF_CIRCLE == 0


def rem_set_base(base: AngDistRec) -> I32:
    """Stores the sight to the base."""
    REMOTE.is_set = False
    z, REMOTE.ha = reduce_face(base.zenith, base.azimuth)
    if is_vertical(z):
        return ERR_SIGHT_VERTICAL
    REMOTE.horiz = base.slope_dist * sin(int_angle_to_rad(z))
    REMOTE.height = REMOTE.horiz * tan(int_angle_to_rad(QUARTER_CIRCLE - z))
    REMOTE.is_set = True
    return STATUS_OK


def rem_calc(ha: I32, zenith: I32, out: CoordPt) -> I32:
    """Height over the base reflector, and sideways offset from the base sight."""
    out.east = 0.0
    out.flags = HAS_NE | HAS_ELEV
    if not REMOTE.is_set:
        out.north = VALUE_INVALID
        out.elev = VALUE_INVALID
        return ERR_NO_BASE
    z, ha = reduce_face(zenith, ha)
    if is_vertical(z):
        out.elev = VALUE_INVALID
        return ERR_SIGHT_VERTICAL
    out.elev = REMOTE.horiz * tan(int_angle_to_rad(QUARTER_CIRCLE - z)) - REMOTE.height
    d = remainder(add32(sub32(ha, REMOTE.ha), FULL_CIRCLE), FULL_CIRCLE)
    folded = d if d <= HALF_CIRCLE else FULL_CIRCLE - d
    if without_low_bits(folded + 15) < QUARTER_CIRCLE:
        out.north = REMOTE.horiz * tan(int_angle_to_rad(d))
        return STATUS_OK
    out.north = VALUE_INVALID
    return ERR_SIGHT_OFF_BASE


# --- Remote distance ------------------------------------------------------------------------------


def rdm_calc_by_coord(first: CoordPt, second: CoordPt, out: RdmResult) -> I32:
    """Distances and direction between two points; heights only when both have them."""
    if not has_ne(first) or not has_ne(second):
        return ERR_POINT_INVALID
    with_elev = has_elev(first) and has_elev(second)
    a, b = (CoordPt(p.north, p.east, p.elev, p.flags) if with_elev else
            CoordPt(p.north, p.east, 0.0, HAS_NE) for p in (first, second))
    coincide = same_plan(first, second) and a.elev == a.elev  # itself: false for a NaN alone
    out.slope_dist, out.horiz_dist, out.d_elev = distances_between(a, b)
    out.azimuth = azimuth_between(a, b) if out.horiz_dist != 0.0 else ANGLE_INVALID
    return ERR_NO_DIRECTION if coincide else STATUS_OK


# --- Slope staking --------------------------------------------------------------------------------


@dataclass
class DesignSlope:
    """A slope in cross-section by two points."""

    is_set: bool = False
    kind: int = STATUS_OK
    left_side: bool = False
    elev1: float = 0.0
    offset1: float = 0.0
    elev2: float = 0.0
    offset2: float = 0.0


SLOPE = DesignSlope()


def br_set_slope(elev1: F64, offset1: F64, elev2: F64, offset2: F64) -> I32:
    """Stores the design slope."""
    SLOPE.is_set = False
    if elev1 == elev2 and offset1 == offset2:
        return ERR_REFUSED
    if offset1 < 0.0 and offset2 > 0.0:
        return ERR_REFUSED
    if offset2 < 0.0 and offset1 > 0.0:
        return ERR_REFUSED
    SLOPE.left_side = not (offset1 >= 0.0 and offset2 >= 0.0)
    SLOPE.elev1, SLOPE.offset1, SLOPE.elev2, SLOPE.offset2 = elev1, offset1, elev2, offset2
    if elev1 == elev2:
        SLOPE.kind = WARN_SLOPE_LEVEL
    elif offset1 != offset2:
        SLOPE.kind = STATUS_OK
    else:
        SLOPE.kind = WARN_SLOPE_VERTICAL
    SLOPE.is_set = True
    return SLOPE.kind


def br_calc(reference: CoordPt, point: CoordPt, out: SlopeStakeResult) -> I32:
    """How far the point lies from the slope."""
    if not SLOPE.is_set:
        return ERR_NO_BASE
    if not has_ne(reference) or not has_both(point):
        return ERR_POINT_INVALID
    if same_plan(reference, point):
        return ERR_NO_DIRECTION
    _, h, _ = distances_between(reference, point)
    out.horiz_dist = h
    x = -h if SLOPE.left_side else h
    d_elev = SLOPE.elev2 - SLOPE.elev1
    d_offset = SLOPE.offset2 - SLOPE.offset1
    out.vert_diff = VALUE_INVALID
    if SLOPE.kind != WARN_SLOPE_VERTICAL:
        rise = divide(d_elev * (x - SLOPE.offset1), d_offset)
        out.vert_diff = (point.elev - rise) - SLOPE.elev1
    if SLOPE.kind == WARN_SLOPE_LEVEL:
        out.horiz_diff = VALUE_INVALID
        return WARN_SLOPE_LEVEL
    diff = divide(d_offset, d_elev) * (point.elev - SLOPE.elev1) - x + SLOPE.offset1
    out.horiz_diff = diff if SLOPE.left_side else -diff
    return SLOPE.kind


# --- Two-point target -----------------------------------------------------------------------------


def calc_2pt_target(first: CoordPt, second: CoordPt, nominal: F64, target: F64,
                    separation: Number, out: CoordPt) -> I32:
    """The point on the axis of a pole with two reflectors, beyond the second."""
    if not has_both(first) or not has_both(second):
        return ERR_POINT_INVALID
    if not nominal >= 0.0 or not target >= 0.0:
        return ERR_REFUSED
    dn = second.north - first.north
    de = second.east - first.east
    dz = second.elev - first.elev
    measured = sqrt((square(dz) + square(de)) + square(dn))
    if measured == 0.0:
        return ERR_NO_DIRECTION
    length = measured if nominal == 0.0 else nominal
    out.north, out.east, out.elev = second.north, second.east, second.elev
    if target != 0.0:
        r = divide(1.0, length)
        out.north = (r * dn) * target + second.north
        out.east = (r * de) * target + second.east
        out.elev = dz * (r * target) + second.elev
    out.flags = HAS_NE | HAS_ELEV
    separation.value = measured
    return STATUS_OK


# --- Offset measurements --------------------------------------------------------------------------

HOST_STATUS = ERR_REFUSED  # as shipped there is no model of an instrument to observe with


def report(obs_out: AngleDistObs, pt_out: CoordPt) -> None:
    """What the host makes of the computed point: as shipped zeros, so the point is not worked out.
    """
    obs_out.ha = obs_out.va = 0
    obs_out.dist = 0.0
    pt_out.north = pt_out.east = pt_out.elev = 0.0
    pt_out.flags = HAS_NE | HAS_ELEV


def plan_length(a: CoordPt, b: CoordPt) -> float:
    """Length in plan, 0 where the squares are lost."""
    return sqrt(square(b.east - a.east) + square(b.north - a.north))


def calc_ofs_corner_3pt(a: CoordPt, b: CoordPt, p: CoordPt, _unused: F64, _hook_value: F64,
                        obs_out: AngleDistObs, pt_out: CoordPt) -> I32:
    """Foot of the perpendicular from p to the wall."""
    if not has_both(p):
        return ERR_POINT_INVALID
    if plan_length(a, b) == 0.0:
        return ERR_NO_DIRECTION
    report(obs_out, pt_out)
    return STATUS_OK


def calc_ofs_corner_4pt(a1: CoordPt, b1: CoordPt, a2: CoordPt, b2: CoordPt, _unused: F64,
                        _hook_value: F64, obs_out: AngleDistObs, pt_out: CoordPt) -> I32:
    """Intersection of two walls; what the plan intersection wrote stays after a refusal."""
    if intersect_lines_2pt(plan_line(a1, b1), plan_line(a2, b2), pt_out) != STATUS_OK:
        return ERR_INDETERMINATE
    if not has_both(b2):
        return ERR_POINT_INVALID
    if plan_length(a1, b1) == 0.0 or plan_length(a2, b2) == 0.0:
        return ERR_NO_DIRECTION
    report(obs_out, pt_out)
    return STATUS_OK


def calc_ofs_line_ha(a: CoordPt, b: CoordPt, ha: I32, va: I32, station: CoordPt,
                     instrument_height: F64, _hook_value: F64, obs_out: AngleDistObs,
                     pt_out: CoordPt) -> I32:
    """Point of the inclined line where a sight crosses its vertical plane; replaces the plane."""
    if not has_ne(a) or not has_ne(b):
        return ERR_POINT_INVALID
    if same_plan(a, b):
        return ERR_NO_DIRECTION
    if not has_both(b):
        return ERR_POINT_INVALID
    dn, de, dz = b.north - a.north, b.east - a.east, b.elev - a.elev
    length = sqrt((square(dz) + square(de)) + square(dn))
    if square(divide(de, length)) + square(divide(dn, length)) == 0.0:
        return ERR_INDETERMINATE
    status = set_2pt_base_plane(a, b)
    if status not in (STATUS_OK, WARN_NO_ELEVATION):
        return status
    pierced, along, height = untouched(CoordPt), untouched(Number), untouched(Number)
    status = calc_2pt_plane(ha, va, station, instrument_height, pierced, along, height)
    if status in (ERR_NO_BASE, ERR_INDETERMINATE):
        return ERR_INDETERMINATE
    report(obs_out, pt_out)
    return HOST_STATUS


def calc_ofs_circle(surface: AngleDistObs, _hook_value: F64, ha2: I32, va2: I32, ha3: I32,
                    va3: I32, _station: CoordPt, _unused: F64, obs_out: AngleDistObs,
                    pt_out: CoordPt, radius: Number) -> I32:
    """Centre and radius of a round object from a distance and its two edges."""
    directions = [apply_azimuth_reference(ha) for ha in (surface.ha, ha2, ha3)]
    zeniths = [wrap(va) for va in (surface.va, va2, va3)]
    if any(z in (0, HALF_CIRCLE) for z in zeniths):
        return ERR_POINT_INVALID
    ha1, ha2, ha3 = (turn_half_circle(ha) if z > HALF_CIRCLE else ha
                     for ha, z in zip(directions, zeniths))
    ha2 = remainder(into_circle(ha2), FULL_CIRCLE)
    ha3 = remainder(into_circle(ha3), FULL_CIRCLE)
    d = abs(ha2 - ha3)
    if d > HALF_CIRCLE:
        d = FULL_CIRCLE - d
    if d % HALF_CIRCLE == 0:
        return ERR_INDETERMINATE
    left, right = ha2, ha3
    if sin(unwrapped_rad(ha3) - unwrapped_rad(ha2)) < 0.0:
        left, right = ha3, ha2
    a = sin(unwrapped_rad(ha1) - unwrapped_rad(left))
    b = sin(unwrapped_rad(right) - unwrapped_rad(ha1))
    w = unwrapped_rad(right) - unwrapped_rad(left)
    c = sin(w)
    q = square(b + a) - square(c)
    if q < 0.0:
        return ERR_POINT_INVALID
    tangent = (sqrt(q) + b + a) * (divide(1.0, c) * surface.dist)
    radius.value = ((1.0 - cos(w)) * divide(1.0, c)) * tangent
    report(obs_out, pt_out)
    return STATUS_OK


EXPORTS: dict[str, Callable[..., Any]] = {
    "KavoREMSetBase": rem_set_base,
    "KavoREMCalc": rem_calc,
    "KavoRDMCalcByCoord": rdm_calc_by_coord,
    "KavoBRSetSlope": br_set_slope,
    "KavoBRCalc": br_calc,
    "KavoCalc2PtTarget": calc_2pt_target,
    "KavoCalcOfsCorner3Pt": calc_ofs_corner_3pt,
    "KavoCalcOfsCorner4Pt": calc_ofs_corner_4pt,
    "KavoCalcOfsLineHA": calc_ofs_line_ha,
    "KavoCalcOfsCircle": calc_ofs_circle,
}
