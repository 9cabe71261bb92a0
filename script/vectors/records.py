"""The records and constants of the public header, and how the vector files spell them.

A token is the big-endian value in lowercase hex, so that its length tells its type: 16 digits are a
double, 8 a 32-bit integer, 4 a 16-bit one.
"""

import dataclasses
import math
import struct
from dataclasses import dataclass
from typing import Annotated, Any, ClassVar, get_args, get_origin

F64 = Annotated[float, "d"]
I32 = Annotated[int, "i"]
I16 = Annotated[int, "h"]
U16 = Annotated[int, "H"]

FULL_CIRCLE = 20736000
HALF_CIRCLE = 10368000
QUARTER_CIRCLE = 5184000
DEGREES_450 = 25920000
ANGLE_INVALID = 134217728

VALUE_INVALID = 134217728.0
SLOPE_VERTICAL = 134217728.0

STATUS_OK = 0
ERR_REFUSED = -1
ERR_NO_MEMORY = -3
ERR_NO_BASE = -5
ERR_NO_DIRECTION = -1200
ERR_POINT_INVALID = -1201
ERR_SIGHT_VERTICAL = -1202
ERR_SIGHT_OFF_BASE = -1203
ERR_NO_DISTANCE = -1204
ERR_INDETERMINATE = -1205
ERR_PARALLEL = -1206
ERR_SAME_DIRECTION = -1207
WARN_NO_ELEVATION = -1208
WARN_SLOPE_VERTICAL = -1208
WARN_SLOPE_LEVEL = -1209

HAS_NE = 1
HAS_ELEV = 2

TWO_POINTS = 2

UNTOUCHED_BYTE = 0xA5
CANONICAL_NAN = "7ff8000000000000"


class Record:
    """A record of the header, and the fields that fill it up, which no call writes."""

    RESERVED: ClassVar[tuple[Any, ...]] = ()


@dataclass
class CoordPt(Record):
    """A point: coordinates and elevation in metres, validity flags."""

    RESERVED = (U16, U16, U16)
    north: F64 = 0.0
    east: F64 = 0.0
    elev: F64 = 0.0
    flags: U16 = 0


@dataclass
class LineDef(Record):
    """A line by two points, or by a point and a direction (an integer angle)."""

    RESERVED = (U16,)
    p1: CoordPt
    p2: CoordPt
    direction: I32
    mode: U16


@dataclass
class AngDistRec(Record):
    """One sight: integer angles, distances and height difference in metres."""

    azimuth: I32
    zenith: I32
    slope_dist: F64
    horiz_dist: F64
    d_elev: F64


@dataclass
class SlopeRec(Record):
    """A grade: per cent, and horizontal distance per unit of height."""

    percent: F64
    ratio: F64


@dataclass
class RdmResult(Record):
    """Distances (metres) and direction between two points."""

    RESERVED = (I32,)
    slope_dist: F64
    horiz_dist: F64
    d_elev: F64
    azimuth: I32


@dataclass
class SlopeStakeResult(Record):
    """A point against a design slope, metres."""

    horiz_diff: F64
    vert_diff: F64
    horiz_dist: F64


@dataclass
class AngleDistObs(Record):
    """Readings and a distance in metres."""

    ha: I32
    va: I32
    dist: F64


@dataclass
class RefLineResult(Record):
    """A point against the reference line or arc."""

    foot: CoordPt
    along: F64
    offset: F64
    d_elev: F64


@dataclass
class RefArcParams(Record):
    """The parameters of the reference arc."""

    start_dir: I32
    end_dir: I32
    radius: F64
    arc_length: F64
    central_angle: I32


@dataclass
class StnAngleObs(Record):
    """Readings to a known point, height term in metres."""

    point: CoordPt
    ha: I32
    va: I32
    height_term: F64


@dataclass
class StnDistObs(Record):
    """Readings and distances to a known point, metres; exactly 0.0 for no distance."""

    point: CoordPt
    local: CoordPt
    ha: I32
    va: I32
    hd: F64
    vd: F64
    height_term: F64


@dataclass
class StnSetupResult(Record):
    """A station from three points, or from two with the checks."""

    station: CoordPt
    orient: I32
    reserved: I32  # not the last field, so that it stands among the others
    dist_check: F64
    dist_resid1: F64
    dist_resid2: F64
    elev_diff: F64


@dataclass
class MultiResectInput(Record):
    """Readings and distances to a known point, metres; exactly 0.0 for no slope distance."""

    point: CoordPt
    ha: I32
    va: I32
    slope_dist: F64
    horiz_dist: F64
    height_diff: F64
    height_term: F64


@dataclass
class MultiResectResult(Record):
    """An adjusted station, with its standard deviations."""

    station: CoordPt
    orient: I32
    reserved: I32  # not the last field, so that it stands among the others
    sd_north: F64
    sd_east: F64
    elev_spread: F64


@dataclass
class MultiResectResidual(Record):
    """What one sight misses by."""

    hz_resid: I32
    reserved: I32
    dist_resid: F64
    elev_resid: F64


@dataclass
class Number(Record):
    """What an output pointer to a single double points to."""

    value: F64


def untouched(kind: Any, count: int = 0) -> Any:
    """A value of the kind as it looks before the call: every byte the same; a list has so many."""
    if get_origin(kind) is list:
        (record,) = get_args(kind)
        return [untouched(record) for _ in range(count)]
    if dataclasses.is_dataclass(kind):
        return kind(*(untouched(field.type) for field in dataclasses.fields(kind)))
    (code,) = kind.__metadata__
    filler = bytes([UNTOUCHED_BYTE] * struct.calcsize(code))
    return struct.unpack(">" + code, filler)[0]


def input_tokens(kind: Any, value: Any) -> list[str]:
    """The value without reserved fields; a list one record after the other; None a null pointer."""
    if value is None:
        return ["null"]
    if get_origin(kind) is list:
        (record,) = get_args(kind)
        return [token for item in value for token in input_tokens(record, item)]
    if dataclasses.is_dataclass(value):
        kind = type(value)  # of one that may be null
    return _tokens(kind, value, with_reserved=False)


def output_tokens(kind: Any, value: Any) -> list[str]:
    """The value with its reserved fields, which no call writes; a list one record after another."""
    if get_origin(kind) is list:
        (record,) = get_args(kind)
        return [token for item in value for token in output_tokens(record, item)]
    return _tokens(kind, value, with_reserved=True)


def _tokens(kind: Any, value: Any, with_reserved: bool) -> list[str]:
    if not dataclasses.is_dataclass(kind):
        return [_scalar(kind, value)]
    tokens = []
    for field in dataclasses.fields(kind):
        tokens += _tokens(field.type, getattr(value, field.name), with_reserved)
    if with_reserved:
        tokens += [_scalar(filler, untouched(filler)) for filler in kind.RESERVED]
    return tokens


def _scalar(kind: Any, value: float) -> str:
    """Sign and payload of a NaN promise nothing, so that all of them are spelled alike."""
    if math.isnan(value):
        return CANONICAL_NAN
    (code,) = kind.__metadata__
    return struct.pack(">" + code, value).hex()
