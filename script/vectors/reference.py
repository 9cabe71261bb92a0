"""Reference line and reference arc, and points against them.

Each function performs the operations of its formula in their order. Lengths are metres, integer
angles 1/16 arc-second, other angles radians.
"""

import copy
import math
from collections.abc import Callable
from dataclasses import dataclass, field
from typing import Any

from cogo import intersect_lines_2pt, plan_line
from frame import (PI, apply_azimuth_reference, has_elev, has_ne, same_plan, truncated_angle,
                   unwrapped_rad, wrap)
from ieee import add32, atan2, cos, divide, hypot, quotient, remainder, sin, sub32, tan
from records import (ANGLE_INVALID, ERR_INDETERMINATE, ERR_NO_BASE, ERR_NO_DIRECTION,
                     ERR_POINT_INVALID, ERR_REFUSED, F64, FULL_CIRCLE, HALF_CIRCLE, HAS_ELEV,
                     HAS_NE, I32, QUARTER_CIRCLE, STATUS_OK, CoordPt, LineDef, RefArcParams,
                     RefLineResult, untouched)

# --- Reference line -------------------------------------------------------------------------------


@dataclass
class BaseLine:
    """Both ends with their elevations completed, length and unit vector."""

    is_set: bool = False
    start: CoordPt = field(default_factory=CoordPt)
    end: CoordPt = field(default_factory=CoordPt)
    length: float = 0.0
    un: float = 0.0
    ue: float = 0.0


LINE = BaseLine()


def set_base_line(start: CoordPt, end: CoordPt) -> I32:
    """Stores the base line."""
    LINE.is_set = False
    if not has_ne(start) or not has_ne(end):
        return ERR_POINT_INVALID
    if same_plan(start, end):
        return ERR_NO_DIRECTION
    with_elev = has_elev(start) or has_elev(end)
    start_elev = end_elev = 0.0
    if with_elev:
        start_elev = start.elev if has_elev(start) else end.elev
        end_elev = end.elev if has_elev(end) else start.elev
    flags = HAS_NE | HAS_ELEV if with_elev else HAS_NE
    LINE.start = CoordPt(start.north, start.east, start_elev, flags)
    LINE.end = CoordPt(end.north, end.east, end_elev, flags)
    dn = end.north - start.north
    de = end.east - start.east
    LINE.length = hypot(dn, de)
    k = divide(1.0, LINE.length)
    LINE.un = k * dn
    LINE.ue = k * de
    LINE.is_set = True
    return STATUS_OK


def calc(point: CoordPt, out: RefLineResult) -> I32:
    """A point against the base line."""
    if not LINE.is_set:
        return ERR_NO_BASE
    if not has_ne(point):
        return ERR_POINT_INVALID
    start, end, foot = LINE.start, LINE.end, out.foot
    dn = point.north - start.north
    de = point.east - start.east
    out.along = LINE.ue * de + LINE.un * dn
    out.offset = -(LINE.ue * dn - LINE.un * de)
    foot.north = out.along * LINE.un + start.north
    foot.east = out.along * LINE.ue + start.east
    if has_elev(point) and has_elev(start):
        foot.elev = divide(end.elev - start.elev, LINE.length) * out.along + start.elev
        foot.flags = HAS_NE | HAS_ELEV
        out.d_elev = point.elev - foot.elev
        return STATUS_OK
    foot.flags = HAS_NE
    foot.elev = 0.0
    out.d_elev = 0.0
    return STATUS_OK


# --- Reference arc: definition --------------------------------------------------------------------

TWO_PI = float.fromhex("0x1.921fb54442d18p+2")
CIRCLES_PER_UNIT = float.fromhex("0x1.9e409340f4581p-25")  # 1 / 20736000
HALF_CIRCLE_UNITS = 10368000.0
ONE_OVER_PI = float.fromhex("0x1.45f306dc9c883p-2")
END_TOLERANCE = 0.05


@dataclass
class ArcBase:
    """The arc in plan, and what its heights hang on; there is always one, at first of zeros."""

    start: CoordPt = field(default_factory=CoordPt)
    end: CoordPt = field(default_factory=CoordPt)
    start_dir: int = 0
    end_dir: int = 0
    radius: float = 0.0
    arc_length: float = 0.0
    centre: CoordPt = field(default_factory=CoordPt)
    central_angle: int = 0
    centre_to_start: int = 0
    end_consistent: bool = False


ARC = ArcBase()


def central_angle(length: float, radius: float) -> int:
    """Angle that an arc subtends, with the sign of the radius."""
    return truncated_angle((divide(length, radius) * HALF_CIRCLE_UNITS) * ONE_OVER_PI)


def length_between(s: int, e: int, radius: float) -> float:
    """Length of the arc that turns from one direction to the other."""
    turn = wrap(sub32(e, s)) if radius >= 0.0 else wrap(sub32(s, e))
    return turn * (abs(radius) * TWO_PI) * CIRCLES_PER_UNIT


def aim_at_start() -> None:
    """Direction from the centre to the start."""
    quarter = QUARTER_CIRCLE if ARC.radius < 0.0 else -QUARTER_CIRCLE
    ARC.centre_to_start = wrap(add32(ARC.start_dir, quarter))


def place_centre() -> None:
    """The centre, square to the start tangent."""
    aim_at_start()
    r = unwrapped_rad(ARC.centre_to_start)
    ARC.centre.north = ARC.start.north - cos(r) * abs(ARC.radius)
    ARC.centre.east = ARC.start.east - sin(r) * abs(ARC.radius)


def set_arc_by_radius_h_angle(start: CoordPt, start_tangent: I32, radius: F64,
                              end_tangent: I32) -> I32:
    """Arc by radius and both tangents."""
    if not has_ne(start):
        return ERR_POINT_INVALID
    s, e = wrap(start_tangent), wrap(end_tangent)
    if s == e:
        return ERR_INDETERMINATE
    if radius == 0.0:
        return ERR_REFUSED
    ARC.start = copy.copy(start)
    ARC.end_consistent = False
    ARC.start_dir = apply_azimuth_reference(s)
    ARC.end_dir = apply_azimuth_reference(e)
    ARC.radius = radius
    ARC.arc_length = length_between(ARC.start_dir, ARC.end_dir, radius)
    ARC.central_angle = central_angle(ARC.arc_length, radius)
    place_centre()
    return STATUS_OK


def set_arc_by_radius_arc_len(start: CoordPt, start_tangent: I32, radius: F64,
                              arc_length: F64) -> I32:
    """Arc by radius, start tangent and length, which is cut at the full circle."""
    if not has_ne(start):
        return ERR_POINT_INVALID
    if radius == 0.0 or arc_length <= 0.0:
        return ERR_REFUSED
    ARC.start = copy.copy(start)
    ARC.end_consistent = False
    ARC.start_dir = apply_azimuth_reference(wrap(start_tangent))
    ARC.radius = radius
    full_circle = abs(radius) * TWO_PI
    ARC.arc_length = full_circle if arc_length > full_circle else arc_length
    ARC.central_angle = central_angle(ARC.arc_length, radius)
    ARC.end_dir = ANGLE_INVALID
    if ARC.central_angle != ANGLE_INVALID:
        ARC.end_dir = ARC.central_angle + ARC.start_dir  # deliberately not brought into one circle
    place_centre()
    return STATUS_OK


def set_arc_by_coord(start: CoordPt, end: CoordPt, start_tangent: I32, end_tangent: I32) -> I32:
    """Arc by both ends and both tangents."""
    if not has_ne(start) or not has_ne(end):
        return ERR_POINT_INVALID
    if same_plan(start, end):
        return ERR_NO_DIRECTION
    s, e = wrap(start_tangent), wrap(end_tangent)
    if s == e:
        return ERR_INDETERMINATE
    ARC.start = copy.copy(start)
    ARC.end = copy.copy(end)
    ARC.start_dir = apply_azimuth_reference(s)
    ARC.end_dir = apply_azimuth_reference(e)
    opposite = abs(ARC.start_dir - ARC.end_dir) == HALF_CIRCLE
    computed_end = half_circle_arc() if opposite else tangent_arc()
    gap = hypot(end.north - computed_end[0], end.east - computed_end[1])
    ARC.end_consistent = has_elev(start) and gap < END_TOLERANCE
    return STATUS_OK


def ray(p: CoordPt, r: float) -> LineDef:
    """The line from the point in the direction (radians)."""
    return plan_line(p, CoordPt(p.north + cos(r), p.east + sin(r), 0.0, HAS_NE))


def tangent_arc() -> tuple[float, float]:
    """Arc between two tangents that are not opposite; gives its computed end."""
    start, s, e = ARC.start, ARC.start_dir, ARC.end_dir
    meeting = untouched(CoordPt)
    intersect_lines_2pt(ray(start, unwrapped_rad(s)), ray(ARC.end, unwrapped_rad(e)), meeting)
    tangent_length = hypot(meeting.north - start.north, meeting.east - start.east)
    turn = wrap(sub32(e, s))
    half = quotient(sub32(HALF_CIRCLE, turn), 2)
    ARC.radius = tan(unwrapped_rad(half)) * tangent_length
    ARC.arc_length = length_between(s, e, ARC.radius)
    ARC.central_angle = central_angle(ARC.arc_length, ARC.radius)
    place_centre()
    r = unwrapped_rad(add32(ARC.centre_to_start, ARC.central_angle))
    return (ARC.centre.north + abs(ARC.radius) * cos(r),
            ARC.centre.east + abs(ARC.radius) * sin(r))


def half_circle_arc() -> tuple[float, float]:
    """Arc between opposite tangents; gives its computed end."""
    start, end = ARC.start, ARC.end
    r = unwrapped_rad(add32(ARC.start_dir, QUARTER_CIRCLE))
    x = untouched(CoordPt)
    intersect_lines_2pt(ray(start, r), ray(end, unwrapped_rad(ARC.end_dir)), x)
    g = (end.north - start.north) * cos(r) + (end.east - start.east) * sin(r)
    diameter = hypot(x.north - start.north, x.east - start.east)
    ARC.radius = divide(g, abs(g)) * (diameter * 0.5)
    ARC.centre.north = (x.north + start.north) * 0.5
    ARC.centre.east = (x.east + start.east) * 0.5
    ARC.arc_length = abs(ARC.radius * PI)
    ARC.central_angle = -HALF_CIRCLE if ARC.radius < 0.0 else HALF_CIRCLE
    aim_at_start()
    return x.north, x.east


def get_arc_params(out: RefArcParams) -> I32:
    """The parameters, whether an arc was defined or not."""
    out.start_dir = apply_azimuth_reference(ARC.start_dir)
    out.end_dir = apply_azimuth_reference(ARC.end_dir)
    out.radius = ARC.radius
    out.arc_length = ARC.arc_length
    out.central_angle = ARC.central_angle
    return STATUS_OK


# --- Reference arc: measurement -------------------------------------------------------------------


def direction_from_centre(dn: float, de: float) -> int:
    """Azimuth of the difference, truncated to the unit; invalid where it is no number."""
    if dn == 0.0:
        return QUARTER_CIRCLE if de >= 0.0 else 3 * QUARTER_CIRCLE
    if de == 0.0:
        return 0 if dn >= 0.0 else HALF_CIRCLE
    t = truncated_angle(atan2(de, dn) * HALF_CIRCLE_UNITS * -ONE_OVER_PI)
    return t if t == ANGLE_INVALID else remainder(FULL_CIRCLE - t, FULL_CIRCLE)


def length_of_angle(a: int) -> float:
    """Length on the arc of an angle at the centre."""
    return a * CIRCLES_PER_UNIT * abs(ARC.radius) * TWO_PI


def clockwise(rel: int, d: float) -> tuple[float, float]:
    """Along and offset at the angle from the start and the distance from the centre."""
    if -5183999 <= rel < 0:
        x = unwrapped_rad(rel)
        along = sin(x) * d
        return along, ARC.radius - divide(along, tan(x))
    if -QUARTER_CIRCLE <= rel <= ARC.central_angle:
        return length_of_angle(rel), ARC.radius - d
    w = rel - ARC.central_angle
    if rel < -QUARTER_CIRCLE:
        w += FULL_CIRCLE
    x = unwrapped_rad(abs(w))
    return sin(x) * d + ARC.arc_length, ARC.radius - cos(x) * d


def anticlockwise(rel: int, d: float) -> tuple[float, float]:
    """The mirror image of clockwise."""
    if 1 <= rel < QUARTER_CIRCLE:
        x = unwrapped_rad(rel)
        along = -(sin(x) * d)
        return along, ARC.radius - divide(along, tan(x))
    if rel >= ARC.central_angle and (rel <= QUARTER_CIRCLE or rel >= HALF_CIRCLE):
        return length_of_angle(-rel), ARC.radius + d
    if rel <= QUARTER_CIRCLE:
        w = rel - ARC.central_angle
    else:
        w = FULL_CIRCLE - ARC.central_angle - rel
    x = unwrapped_rad(abs(w))
    return sin(x) * d + ARC.arc_length, ARC.radius + cos(x) * d


def calc_arc(point: CoordPt, out: RefLineResult) -> I32:
    """A point against the arc, whether one was defined or not."""
    if not has_ne(point):
        return ERR_POINT_INVALID
    if same_plan(point, ARC.centre):
        return ERR_NO_DIRECTION
    out.foot = CoordPt()
    dn = point.north - ARC.centre.north
    de = point.east - ARC.centre.east
    d = hypot(dn, de)
    az = direction_from_centre(dn, de)
    if ANGLE_INVALID in (az, ARC.central_angle) or math.isnan(ARC.radius):
        out.along = out.offset = math.nan  # no angle to place the point by, or no sense of turning
    else:
        rel = az - ARC.centre_to_start
        if rel <= -HALF_CIRCLE:
            rel += FULL_CIRCLE
        elif rel > HALF_CIRCLE:
            rel -= FULL_CIRCLE
        branch = anticlockwise if ARC.radius < 0.0 else clockwise
        out.along, out.offset = branch(rel, d)
    out.d_elev = height_above_arc(point, out.along)
    return STATUS_OK


def height_above_arc(point: CoordPt, along: float) -> float:
    """Height difference to the arc, which is graded only when its given end is its end."""
    start, end = ARC.start, ARC.end
    if not has_elev(start):
        return 0.0
    if not ARC.end_consistent:
        return point.elev - start.elev
    t = divide(along, ARC.arc_length)
    return point.elev - (t * (end.elev - start.elev) + start.elev)


EXPORTS: dict[str, Callable[..., Any]] = {
    "KavoREFSetBaseLine": set_base_line,
    "KavoREFCalc": calc,
    "KavoREFSetArcByCoord": set_arc_by_coord,
    "KavoREFSetArcByRadiusHAngle": set_arc_by_radius_h_angle,
    "KavoREFSetArcByRadiusArcLen": set_arc_by_radius_arc_len,
    "KavoREFGetArcParams": get_arc_params,
    "KavoREFCalcArc": calc_arc,
}
