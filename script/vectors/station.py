"""Station set-up: benchmark, resections from three points and from two.

Each function performs the operations of its formula in their order. Lengths are metres, integer
angles 1/16 arc-second, other angles radians. Settings are those of the library as shipped, so that
no correction of a sight is switched on.
"""

from collections.abc import Callable
from typing import Any

from frame import (PI, azimuth_between, has_elev, has_ne, int_angle_to_rad, same_plan,
                   turn_half_circle, unwrapped_rad, wrap)
from ieee import add32, atan2, cos, divide, hypot, remainder, sin, sqrt, square, sub32, tan
from records import (ERR_INDETERMINATE, ERR_NO_DIRECTION, ERR_NO_DISTANCE, ERR_POINT_INVALID,
                     ERR_SAME_DIRECTION, F64, FULL_CIRCLE, HALF_CIRCLE, HAS_ELEV, HAS_NE, I32,
                     QUARTER_CIRCLE, STATUS_OK, CoordPt, StnAngleObs, StnDistObs, StnSetupResult)

ARC_MINUTE = float.fromhex("0x1.3104b57cf96a3p-12")
NADIR_LESS_MINUTE = float.fromhex("0x1.92162d1e96e9bp+1")

# --- What the resections share --------------------------------------------------------------------


def sea_level_calc_by_bm(bm_elev: F64, height_term: F64, vert_diff: F64) -> F64:
    """Station elevation from a sight to a benchmark."""
    return (bm_elev + height_term) - vert_diff


def face_1_reading(ha: int, va: int) -> int:
    """The horizontal reading as of face 1; one that is, is taken as it stands."""
    return ha if wrap(va) < HALF_CIRCLE else turn_half_circle(ha)


def relative_direction(a: CoordPt, b: CoordPt, reference: int) -> int:
    """Direction to b seen from a reference direction; an invalid one goes through the sum."""
    t = remainder(add32(sub32(azimuth_between(a, b), reference), FULL_CIRCLE), FULL_CIRCLE)
    return sub32(t, FULL_CIRCLE) if t >= HALF_CIRCLE else t


def stn_elev_from_sight(north: float, east: float, point: CoordPt, va: int,
                        height_term: float) -> float:
    """Elevation of the station at the plan position from the zenith reading to the point."""
    if not has_elev(point):
        return 0.0
    z = unwrapped_rad(va if va < HALF_CIRCLE else sub32(FULL_CIRCLE, va))
    if z < ARC_MINUTE:
        z = ARC_MINUTE
    elif z > NADIR_LESS_MINUTE:
        z = NADIR_LESS_MINUTE
    horiz = hypot(point.north - north, point.east - east)
    return (point.elev + height_term) - divide(horiz, tan(z))


# --- Three points ---------------------------------------------------------------------------------


def circle_centre(p: CoordPt, q: CoordPt, angle: int) -> tuple[float, float]:
    """Centre of the circle from whose points p and q are seen at the angle."""
    north = (q.north + p.north) * 0.5
    east = (q.east + p.east) * 0.5
    if angle in (QUARTER_CIRCLE, 3 * QUARTER_CIRCLE):
        return north, east
    t = tan(int_angle_to_rad(angle)) * 2.0
    return north - divide(q.east - p.east, t), divide(q.north - p.north, t) + east


def resect_3pt(obs0: StnAngleObs, obs1: StnAngleObs, obs2: StnAngleObs,
               result: StnSetupResult) -> I32:
    """Station from the angles between three points."""
    sights = obs0, obs1, obs2
    if not all(has_ne(sight.point) for sight in sights):
        return ERR_POINT_INVALID
    h0, h1, h2 = (face_1_reading(sight.ha, sight.va) for sight in sights)
    if h1 == h0 or h2 == h0 or h2 == h1:
        return ERR_SAME_DIRECTION
    north1, east1 = circle_centre(obs0.point, obs1.point, sub32(h1, h0))
    north2, east2 = circle_centre(obs1.point, obs2.point, sub32(h2, h1))
    dn = north2 - north1
    de = east2 - east1
    d2 = square(de) + square(dn)
    if d2 == 0.0:
        return ERR_INDETERMINATE
    p1 = obs1.point
    k = divide(((p1.east - east1) * dn - (p1.north - north1) * de) * 2.0, d2)
    station = result.station
    station.north = k * de + p1.north
    station.east = p1.east - k * dn
    total = 0.0
    count = 0
    for sight in sights:
        if has_elev(sight.point):
            total += stn_elev_from_sight(station.north, station.east, sight.point, sight.va,
                                         sight.height_term)
            count += 1
    station.elev = total / count if count != 0 else 0.0
    station.flags = HAS_NE | HAS_ELEV if count != 0 else HAS_NE
    result.orient = relative_direction(station, obs0.point, h0)
    return STATUS_OK


# --- Two points -----------------------------------------------------------------------------------


def one_distance(first: StnDistObs, second: StnDistObs, station: CoordPt) -> int:
    """Triangle of the station and the two points; the first sight has the distance."""
    h1 = face_1_reading(first.ha, first.va)
    h2 = face_1_reading(second.ha, second.va)
    gamma = int_angle_to_rad(sub32(h2, h1))
    s, c = sin(gamma), cos(gamma)
    d_north = second.point.north - first.point.north
    d_east = second.point.east - first.point.east
    d = hypot(d_north, d_east)
    if first.hd > d:
        return ERR_INDETERMINATE
    x = sqrt(1.0 - square(divide(first.hd, d) * s)) * d + first.hd * c
    if h2 == h1:
        phi = PI
    elif sub32(h2, h1) == HALF_CIRCLE:
        phi = 0.0
    else:
        phi = atan2(x * s, first.hd - x * c)
    omega = phi - atan2(d_north, d_east)
    station.north = first.point.north - sin(omega) * first.hd
    station.east = cos(omega) * first.hd + first.point.east
    return STATUS_OK


def two_distances(a: StnDistObs, b: StnDistObs, station: CoordPt) -> int:
    """Similarity transformation of the local positions onto the known points."""
    dln = b.local.north - a.local.north
    dn = b.point.north - a.point.north
    dle = b.local.east - a.local.east
    de = b.point.east - a.point.east
    q = square(dle) + square(dln)
    if q == 0.0:
        return ERR_NO_DIRECTION
    r = divide(1.0, q)
    along = (de * dle + dn * dln) * r
    across = (dle * dn - de * dln) * r
    station.north = (a.point.north - along * a.local.north) - across * a.local.east
    station.east = (across * a.local.north + a.point.east) - along * a.local.east
    return STATUS_OK


def plan_separation(p: CoordPt, q: CoordPt) -> float:
    """Horizontal distance of two positions, from the second less the first."""
    return hypot(q.north - p.north, q.east - p.east)


def resect_2pt(obs_a: StnDistObs, obs_b: StnDistObs, result: StnSetupResult) -> I32:
    """Station from two points with one distance or two; the checks are formed in any case."""
    if not has_ne(obs_a.point) or not has_ne(obs_b.point):
        return ERR_POINT_INVALID
    if same_plan(obs_a.point, obs_b.point):
        return ERR_NO_DIRECTION
    with_a, with_b = obs_a.hd != 0.0, obs_b.hd != 0.0
    if not with_a and not with_b:
        return ERR_NO_DISTANCE
    station = result.station
    if with_a and with_b:
        status = two_distances(obs_a, obs_b, station)
    elif with_a:
        status = one_distance(obs_a, obs_b, station)
    else:
        status = one_distance(obs_b, obs_a, station)
    if status == STATUS_OK:
        station.flags = HAS_NE
        result.orient = relative_direction(station, obs_a.point,
                                           face_1_reading(obs_a.ha, obs_a.va))
    elev_a = elev_b = 0.0
    count = 0
    if with_a and has_elev(obs_a.point):
        elev_a = (obs_a.point.elev - obs_a.vd) + obs_a.height_term
        count += 1
    if with_b and has_elev(obs_b.point):
        elev_b = (obs_b.point.elev - obs_b.vd) + obs_b.height_term
        count += 1
    station.elev = (elev_b + elev_a) / count if count != 0 else 0.0
    station.flags = HAS_NE | HAS_ELEV if count != 0 else HAS_NE
    result.elev_diff = elev_a - elev_b if count == 2 else 0.0
    result.dist_check = result.dist_resid1 = result.dist_resid2 = 0.0
    if with_a and with_b:
        result.dist_check = (plan_separation(obs_a.point, obs_b.point)
                             - plan_separation(obs_a.local, obs_b.local))
    if with_a:
        result.dist_resid1 = obs_a.hd - plan_separation(station, obs_a.point)
    if with_b:
        result.dist_resid2 = obs_b.hd - plan_separation(station, obs_b.point)
    return status


EXPORTS: dict[str, Callable[..., Any]] = {
    "KavoSTNSeaLevelCalcByBM": sea_level_calc_by_bm,
    "KavoSTN3PtResect": resect_3pt,
    "KavoSTN2PtResect": resect_2pt,
}
