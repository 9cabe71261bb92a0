"""Coordinate geometry: inverse and forward, intersections, points and lines, area.

Each function performs the operations of its formula in their order. Lengths are metres, integer
angles 1/16 arc-second, other angles radians.
"""

import copy
import dataclasses
from collections.abc import Callable
from typing import Any

from frame import (apply_azimuth_reference, azimuth_between, distances_between, has_elev, has_ne,
                   int_angle_to_rad, normalize_angle, same_plan, unwrapped_rad, zenith_between)
from ieee import add32, cos, divide, hypot, sin, sqrt, square, tan
from records import (ANGLE_INVALID, ERR_NO_DIRECTION, ERR_PARALLEL, ERR_POINT_INVALID, ERR_REFUSED,
                     F64, HALF_CIRCLE, HAS_ELEV, HAS_NE, I16, I32, QUARTER_CIRCLE, SLOPE_VERTICAL,
                     STATUS_OK, TWO_POINTS, VALUE_INVALID, AngDistRec, CoordPt, LineDef, SlopeRec)

PARALLEL_SLOPES = float.fromhex("0x1.4f8b588e368f1p-17")  # 1e-5

# --- Inverse and forward --------------------------------------------------------------------------


def coord_to_ang_dist(station: CoordPt, point: CoordPt, out: AngDistRec) -> I32:
    """Direction and distances from the station to the point."""
    if not has_ne(station) or not has_ne(point):
        return ERR_POINT_INVALID
    out.slope_dist, out.horiz_dist, out.d_elev = distances_between(station, point)
    out.zenith = zenith_between(station, point)
    out.azimuth = azimuth_between(station, point)
    if ANGLE_INVALID in (out.azimuth, out.zenith):
        return ERR_NO_DIRECTION
    return STATUS_OK


def ang_dist_to_coord(station: CoordPt, polar: AngDistRec, out: CoordPt) -> I32:
    """The point at the azimuth and horizontal distance from the station."""
    if not has_ne(station):
        return ERR_POINT_INVALID
    azimuth = apply_azimuth_reference(polar.azimuth)
    dist = polar.horiz_dist
    if dist < 0.0:
        dist = -dist
        azimuth = add32(azimuth, HALF_CIRCLE)
    r = int_angle_to_rad(azimuth)
    out.north = cos(r) * dist + station.north
    out.east = sin(r) * dist + station.east
    with_elev = has_elev(station)
    out.elev = station.elev + polar.d_elev if with_elev else 0.0
    out.flags = HAS_NE | HAS_ELEV if with_elev else HAS_NE
    return STATUS_OK


def calc_slope_by_dist(horiz_dist: F64, d_elev: F64, out: SlopeRec) -> None:
    """Grade of a height difference over a horizontal distance."""
    out.percent = SLOPE_VERTICAL if horiz_dist == 0.0 else divide(d_elev, horiz_dist) * 100.0
    out.ratio = SLOPE_VERTICAL if d_elev == 0.0 else divide(horiz_dist, d_elev)


# --- Intersections --------------------------------------------------------------------------------


def write_no_solution(out: CoordPt) -> None:
    """Marks a record that holds no point of intersection."""
    out.north = VALUE_INVALID
    out.east = VALUE_INVALID
    out.elev = 0.0
    out.flags = HAS_NE


def line_slope_intercept(line: LineDef) -> tuple[int, float, float]:
    """Status, slope and intercept (metres) of east = slope * north + intercept."""
    p1, p2 = line.p1, line.p2
    if not has_ne(p1):
        return ERR_POINT_INVALID, 0.0, 0.0
    if line.mode != TWO_POINTS:
        a = apply_azimuth_reference(add32(line.direction, HALF_CIRCLE))
        slope = tan(unwrapped_rad(a))
        intercept = p1.east - p1.north * slope
    elif not has_ne(p2):
        return ERR_POINT_INVALID, 0.0, 0.0
    elif same_plan(p1, p2):
        return ERR_NO_DIRECTION, 0.0, 0.0
    elif p1.north == p2.north:
        return STATUS_OK, SLOPE_VERTICAL, SLOPE_VERTICAL
    elif p1.east == p2.east:
        slope = 0.0
        intercept = p1.east
    else:
        d_north = p2.north - p1.north
        slope = divide(p2.east - p1.east, d_north)
        intercept = divide(p1.east * p2.north - p2.east * p1.north, d_north)
    if slope > SLOPE_VERTICAL:
        slope = SLOPE_VERTICAL
    return STATUS_OK, slope, intercept


def calc_cross_line(line1: LineDef, line2: LineDef, out: CoordPt) -> I32:
    """Intersection of two lines."""
    write_no_solution(out)
    status, m1, b1 = line_slope_intercept(line1)
    if status != STATUS_OK:
        return status
    status, m2, b2 = line_slope_intercept(line2)
    if status != STATUS_OK:
        return status
    d = m1 - m2
    if abs(d) < PARALLEL_SLOPES:
        return ERR_PARALLEL
    if m1 == SLOPE_VERTICAL:
        out.north = line1.p1.north
        out.east = line1.p1.north * m2 + b2
    elif m2 == SLOPE_VERTICAL:
        out.north = line2.p1.north
        out.east = line2.p1.north * m1 + b1
    else:
        out.north = divide(b2 - b1, d)
        out.east = divide(b2 * m1 - m2 * b1, d)
    return STATUS_OK


def plan_line(a: CoordPt, b: CoordPt) -> LineDef:
    """The line through the plane positions of two points, whatever their flags say."""
    return LineDef(CoordPt(a.north, a.east, 0.0, HAS_NE), CoordPt(b.north, b.east, 0.0, HAS_NE), 0,
                   TWO_POINTS)


def intersect_lines_2pt(line1: LineDef, line2: LineDef, out: CoordPt) -> int:
    """Intersection of two lines by two points each, parallel only when exactly so."""
    write_no_solution(out)
    status, m1, b1 = line_slope_intercept(line1)
    if status != STATUS_OK:
        return status
    status, m2, b2 = line_slope_intercept(line2)
    if status != STATUS_OK:
        return status
    constant_north1 = line1.p1.north == line1.p2.north
    constant_north2 = line2.p1.north == line2.p2.north
    if constant_north1 and not constant_north2:
        out.north = line1.p1.north
        out.east = line1.p1.north * m2 + b2
    elif constant_north2 and not constant_north1:
        out.north = line2.p1.north
        out.east = line2.p1.north * m1 + b1
    elif m1 == m2:
        return ERR_PARALLEL
    else:
        out.north = divide(b2 - b1, m1 - m2)
        out.east = divide(b2 * m1 - m2 * b1, m1 - m2)
    return STATUS_OK


def calc_cross_line_circle(line: LineDef, centre: CoordPt, radius: F64, first: CoordPt,
                           second: CoordPt) -> I32:
    """Intersections of a line and a circle; answers how many."""
    if radius < 0.0:
        return ERR_REFUSED
    write_no_solution(first)
    write_no_solution(second)
    r2 = radius * radius
    status, m, b = line_slope_intercept(line)
    if status != STATUS_OK:
        return status
    if m == SLOPE_VERTICAL:
        return cross_constant_north(line.p1.north, centre, r2, first, second)
    return cross_sloping(m, b, centre, r2, first, second)


def cross_constant_north(north: float, centre: CoordPt, r2: float, first: CoordPt,
                         second: CoordPt) -> int:
    """The circle's points at the north coordinate, the smaller east first."""
    first.north = north
    second.north = north
    b = 2.0 * centre.east
    dn = north - centre.north
    disc = b * b - 4.0 * ((dn * dn + centre.east * centre.east) - r2)
    if disc < 0.0:
        return 0
    s = sqrt(disc)
    first.east = (b - s) * 0.5
    second.east = (s + b) * 0.5
    return 1 if s == 0.0 else 2


def cross_sloping(m: float, b: float, centre: CoordPt, r2: float, first: CoordPt,
                  second: CoordPt) -> int:
    """The circle's points on east = m * north + b, the smaller north first."""
    qa = m * m + 1.0
    qb = ((centre.east * m + centre.north) - m * b) * 2.0
    qc = ((square(centre.north) + square(b)) - (centre.east * b) * 2.0 + square(centre.east)) - r2
    disc = qb * qb - (qc * qa) * 4.0
    if disc < 0.0:
        return 0
    s = sqrt(disc)
    q = divide(1.0, qa)
    root1 = ((qb - s) * q) * 0.5
    root2 = ((s + qb) * q) * 0.5
    first.north = root1
    first.east = root1 * m + b
    second.north = root2
    second.east = root2 * m + b
    return 1 if s == 0.0 else 2


def calc_cross_circle(centre1: CoordPt, radius1: F64, centre2: CoordPt, radius2: F64,
                      right: CoordPt, left: CoordPt) -> I32:
    """Intersections of two circles; answers how many."""
    if not (radius1 > 0.0 and radius2 > 0.0):
        return ERR_REFUSED
    if same_plan(centre1, centre2):
        return 0 if radius1 != radius2 else ERR_REFUSED
    write_no_solution(right)
    write_no_solution(left)
    dn = centre2.north - centre1.north
    de = centre2.east - centre1.east
    d2 = de * de + dn * dn
    k = divide(1.0, sqrt(d2))
    un = k * dn
    ue = k * de
    a = (((square(radius1) + d2) - square(radius2)) * k) * 0.5
    h2 = square(radius1) - a * a
    if h2 < 0.0:
        return 0
    h = sqrt(h2)
    right.north = (a * un + centre1.north) - h * ue
    right.east = (centre1.east + h * un) + a * ue
    left.north = (centre1.north + h * ue) + a * un
    left.east = (centre1.east + a * ue) - h * un
    if right.north != left.north:
        return 2
    return 2 if right.east != left.east else 1


# --- Points and lines -----------------------------------------------------------------------------


def calc_pt_line(line: LineDef, point: CoordPt, foot: CoordPt) -> I32:
    """Foot of the perpendicular from the point to the line."""
    write_no_solution(foot)
    status, m, b = line_slope_intercept(line)
    if status != STATUS_OK:
        return status
    if m == SLOPE_VERTICAL:
        foot.north = line.p1.north
        foot.east = point.east
    elif m == 0.0:
        foot.north = point.north
        foot.east = line.p1.east
    else:
        k = divide(-1.0, m)
        c = point.east - point.north * k
        den = m - k
        foot.north = divide(c - b, den)
        foot.east = divide(c * m - k * b, den)
    take_elevation(line, foot)
    return STATUS_OK


def take_elevation(line: LineDef, foot: CoordPt) -> None:
    """Elevation of the line at the foot; interpolated by north difference between two."""
    p1, p2 = line.p1, line.p2
    if has_elev(p1):
        foot.flags |= HAS_ELEV
        foot.elev = p1.elev
    if line.mode != TWO_POINTS or not has_elev(p2):
        return
    foot.flags |= HAS_ELEV
    if has_elev(p1):
        rise = (foot.north - p1.north) * (p2.elev - p1.elev)
        foot.elev = divide(rise, p2.north - p1.north) + p1.elev
    else:
        foot.elev = p2.elev


def offset_to_coord(a: CoordPt, b: CoordPt, along: F64, offset: F64, out: CoordPt) -> I32:
    """The point at a distance along the line from a to b and an offset to its right."""
    if not has_ne(a) or not has_ne(b):
        return ERR_POINT_INVALID
    if same_plan(a, b):
        return ERR_NO_DIRECTION
    za = a.elev if has_elev(a) else b.elev
    zb = b.elev if has_elev(b) else a.elev
    with_elev = has_elev(a) or has_elev(b)
    dn = b.north - a.north
    de = b.east - a.east
    k = divide(1.0, hypot(dn, de))
    un = k * dn
    ue = k * de
    out.north = (un * along + a.north) - ue * offset
    out.east = (ue * along + un * offset) + a.east
    out.elev = ((zb - za) * k) * along + za if with_elev else 0.0
    out.flags = HAS_NE | HAS_ELEV if with_elev else HAS_NE
    return STATUS_OK


def calc_trans_line(line: LineDef, rotation: I32, offset: F64, out: LineDef) -> I32:
    """The line turned about its first point, then shifted to the right."""
    p1, p2 = line.p1, line.p2
    two_points = line.mode == TWO_POINTS
    if not has_ne(p1) or (two_points and not has_ne(p2)):
        return ERR_POINT_INVALID
    if two_points and same_plan(p1, p2):
        return ERR_NO_DIRECTION
    t = copy.deepcopy(line)
    d = reported_direction(line)
    if d != ANGLE_INVALID:
        d = normalize_angle(add32(d, rotation))
        t.direction = d
    if rotation != 0 and two_points:
        turn_second_point(line, rotation, t)
    if offset != 0.0:
        if two_points:
            shift_two_points(line, offset, t)
            d = t.direction
        else:
            shift_first_point(line, d, offset, t)
    if d != ANGLE_INVALID:
        t.direction = apply_azimuth_reference(d)
    for field in dataclasses.fields(t):
        setattr(out, field.name, getattr(t, field.name))
    return STATUS_OK


def reported_direction(line: LineDef) -> int:
    """Azimuth of the line before it is turned."""
    if line.mode == TWO_POINTS:
        return azimuth_between(line.p1, line.p2)
    if line.direction == ANGLE_INVALID:
        return ANGLE_INVALID
    return apply_azimuth_reference(line.direction)


def turn_second_point(line: LineDef, rotation: int, t: LineDef) -> None:
    """Turns the second point about the first, clockwise for a positive rotation."""
    dn = line.p2.north - line.p1.north
    de = line.p2.east - line.p1.east
    r = unwrapped_rad(rotation)
    t.p2.north = (cos(r) * dn - sin(r) * de) + line.p1.north
    t.p2.east = (cos(r) * de + sin(r) * dn) + line.p1.east


def shift_first_point(line: LineDef, d: int, offset: float, t: LineDef) -> None:
    """Moves the first point a quarter circle to the right of the direction."""
    r = unwrapped_rad(add32(d, QUARTER_CIRCLE))
    t.p1.north = cos(r) * offset + line.p1.north
    t.p1.east = sin(r) * offset + line.p1.east


def shift_two_points(line: LineDef, offset: float, t: LineDef) -> None:
    """Moves both points to the right; each is laid out from the old first point."""
    offset_to_coord(line.p1, t.p2, 0.0, offset, t.p1)
    length = hypot(t.p2.north - line.p1.north, t.p2.east - line.p1.east)
    offset_to_coord(line.p1, copy.copy(t.p2), length, offset, t.p2)


# --- Area -----------------------------------------------------------------------------------------


def calc_area(count: I16, points: list[CoordPt]) -> F64:
    """Plane area in square metres; points without a plane position are passed over."""
    corners = [points[i] for i in range(count) if has_ne(points[i])]
    if len(corners) < 3:
        return 0.0
    compensation = 0.0
    total = 0.0
    for previous, corner in zip(corners, corners[1:]):
        term = corner.east * previous.north - corner.north * previous.east
        y = term + compensation
        t = total + y
        compensation = (total - t) + y
        total = t
    first, last = corners[0], corners[-1]
    closing = first.east * last.north - first.north * last.east
    return abs((closing + compensation) + total) * 0.5


EXPORTS: dict[str, Callable[..., Any]] = {
    "KavoCogoCoordToAngDist": coord_to_ang_dist,
    "KavoCogoAngDistToCoord": ang_dist_to_coord,
    "KavoCogoCalcSlopeByDist": calc_slope_by_dist,
    "KavoCogoCalcCrossLine": calc_cross_line,
    "KavoCogoCalcCrossLineCircle": calc_cross_line_circle,
    "KavoCogoCalcCrossCircle": calc_cross_circle,
    "KavoCogoCalcPtLine": calc_pt_line,
    "KavoCogoOffsetToCoord": offset_to_coord,
    "KavoCogoCalcTransLine": calc_trans_line,
    "KavoCogoCalcArea": calc_area,
}
