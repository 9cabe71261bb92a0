"""Station set-up by least squares: the resection from many points, and the known line.

Each function performs the operations of its formula in their order. Lengths are metres, integer
angles 1/16 arc-second, other angles radians.
"""

from collections.abc import Callable
from dataclasses import replace
from typing import Any

from cogo import coord_to_ang_dist
from frame import (apply_azimuth_reference, has_elev, normalize_angle, truncated_angle,
                   unwrapped_rad)
from ieee import cos, sin, sub32
from lsq import ENGINE_OK, VALUE_ABSENT, Observed
from measure import rdm_calc_by_coord
from records import (ERR_INDETERMINATE, ERR_NO_MEMORY, ERR_REFUSED, FULL_CIRCLE, HALF_CIRCLE,
                     HAS_ELEV, HAS_NE, I16, I32, STATUS_OK, AngDistRec, CoordPt, MultiResectInput,
                     MultiResectResidual, MultiResectResult, RdmResult, untouched)
from resect import NOT_CONVERGED, lsq_resect
from station import sea_level_calc_by_bm, stn_elev_from_sight

UNITS_PER_HALF_CIRCLE = 1.0368e7
HALF_CIRCLES_PER_RADIAN = float.fromhex("0x1.45f306dc9c883p-2")  # 1 / pi
AZIMUTH_FROM_POINTS = 0x7FFFFFFF
NO_ELEVATION = float.fromhex("0x1.1039d428a8b8fp-123")  # 1e-37

# --- Many points ----------------------------------------------------------------------------------


def is_face_2(va: int) -> bool:
    """The zenith reading is one of face 2, as the resection from many points has it."""
    return va < 0 or va >= HALF_CIRCLE


def turned_reading(ha: int) -> int:
    """Half a circle off and normalised: 45 degrees beyond the reading of the other face."""
    return normalize_angle(sub32(ha, HALF_CIRCLE))


def observed(sight: MultiResectInput) -> Observed:
    """The sight as the adjustment takes it."""
    face_2 = is_face_2(sight.va)
    hz = unwrapped_rad(turned_reading(sight.ha) if face_2 else sight.ha)
    zenith = unwrapped_rad(sub32(FULL_CIRCLE, sight.va) if face_2 else sight.va)
    distances = (sight.slope_dist, sight.horiz_dist, sight.height_diff)
    if sight.slope_dist == 0.0:
        distances = (VALUE_ABSENT,) * 3
    return Observed(sight.point.north, sight.point.east, hz, zenith, *distances)


def has_height(sight: MultiResectInput) -> bool:
    """The sight has a distance, and its point an elevation."""
    return has_elev(sight.point) and sight.slope_dist != 0.0


def truncated_units(r: float) -> int:
    """Radians as an integer angle, not rounded."""
    return truncated_angle(r * UNITS_PER_HALF_CIRCLE * HALF_CIRCLES_PER_RADIAN)


def station_elevations(sights: list[MultiResectInput], north: float, east: float) -> list[float]:
    """From the height differences; only if there is none at all, from the zenith readings."""
    if any(has_height(sight) for sight in sights):
        return [sea_level_calc_by_bm(sight.point.elev, sight.height_term, sight.height_diff)
                for sight in sights if has_height(sight)]
    return [stn_elev_from_sight(north, east, sight.point, sight.va, sight.height_term)
            for sight in sights if has_elev(sight.point)]


def write_elevation(elevations: list[float], result: MultiResectResult) -> None:
    """Mean and spread of the elevations."""
    total = 0.0
    largest, smallest = -1e20, 1e20
    for e in elevations:
        if e > largest:
            largest = e
        if e < smallest:
            smallest = e
        total += e
    n = len(elevations)
    result.station.elev = total / n if n > 0 else 0.0
    result.elev_spread = largest - smallest if n > 0 else 0.0
    result.station.flags = HAS_NE | HAS_ELEV if n > 0 else HAS_NE


def multi_resect(count: I16, sights: list[MultiResectInput], result: MultiResectResult,
                 residuals: list[MultiResectResidual]) -> I32:
    """Station from any number of sights, by least squares."""
    if count < 0:
        return ERR_NO_MEMORY
    work = [observed(sight) for sight in sights]
    code, adjusted = lsq_resect(work)
    if code == NOT_CONVERGED:
        return ERR_INDETERMINATE
    if code != ENGINE_OK:
        return ERR_REFUSED
    result.station.north = adjusted.north
    result.station.east = adjusted.east
    result.sd_north = adjusted.sd_north
    result.sd_east = adjusted.sd_east
    result.orient = truncated_units(adjusted.orient)
    write_elevation(station_elevations(sights, adjusted.north, adjusted.east), result)
    for sight, seen, residual in zip(sights, work, residuals):
        residual.hz_resid = truncated_units(seen.res_hz)
        residual.dist_resid = residual.elev_resid = 0.0
        if has_height(sight):
            e = sea_level_calc_by_bm(sight.point.elev, sight.height_term, sight.height_diff)
            residual.dist_resid = seen.res_horiz_dist
            residual.elev_resid = e - result.station.elev
    return STATUS_OK


# --- Known line -----------------------------------------------------------------------------------


def local_position(sight: MultiResectInput, ha: int) -> CoordPt:
    """The sighted point in the instrument's own frame."""
    a = unwrapped_rad(ha)
    return CoordPt(sight.horiz_dist * cos(a), sight.horiz_dist * sin(a), sight.height_diff,
                   HAS_NE | HAS_ELEV)


def known_line(sight1: MultiResectInput, sight2: MultiResectInput, line_azimuth: I32,
               result: MultiResectResult, _beyond: MultiResectResult,
               accuracy1: MultiResectResidual, accuracy2: MultiResectResidual) -> I32:
    """Station from a point and a second one on a line through it; nothing beyond the result."""
    ha2 = turned_reading(sight2.ha) if is_face_2(sight2.va) else sight2.ha
    measured = untouched(RdmResult)
    status = rdm_calc_by_coord(local_position(sight1, sight1.ha), local_position(sight2, ha2),
                               measured)
    if status != STATUS_OK:
        return status
    azimuth = line_azimuth
    if line_azimuth == AZIMUTH_FROM_POINTS:
        inverse = untouched(AngDistRec)
        status = coord_to_ang_dist(sight1.point, sight2.point, inverse)
        if status != STATUS_OK:
            return status
        azimuth = inverse.azimuth
    t = unwrapped_rad(apply_azimuth_reference(azimuth))
    start = sight1.point
    laid = replace(sight2.point, north=cos(t) * measured.horiz_dist + start.north,
                   east=sin(t) * measured.horiz_dist + start.east)
    status = multi_resect(2, [sight1, replace(sight2, point=laid)], result, [accuracy1, accuracy2])
    if status != STATUS_OK:
        return status
    result.station.elev = NO_ELEVATION
    if has_elev(start):
        result.station.elev = (start.elev - sight1.height_diff) + sight1.height_term
    if line_azimuth != AZIMUTH_FROM_POINTS:
        return STATUS_OK
    known = untouched(RdmResult)
    status = rdm_calc_by_coord(start, sight2.point, known)
    if status != STATUS_OK:
        return status
    accuracy1.dist_resid = measured.horiz_dist - known.horiz_dist
    result.elev_spread = measured.d_elev - known.d_elev
    return STATUS_OK


EXPORTS: dict[str, Callable[..., Any]] = {
    "KavoSTNMultiResect": multi_resect,
    "KavoSTNKnownLine": known_line,
}
