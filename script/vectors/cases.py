"""What all cases share: vectors of calls, and points written shortly."""

from collections.abc import Callable, Iterator
from typing import Any

from records import HAS_ELEV, HAS_NE, CoordPt

Case = tuple[Any, ...]  # the inputs of one call
Call = tuple[Any, ...]  # the export's name, then its inputs
Vector = tuple[Call, ...]  # calls in their order; the first sets what the others rest on
Source = Callable[[], Iterator[Vector]]

ORDINARY = 110
WILD = 60

ALL_FLAGS = (0, 1, 2, 3, 4, 5, 0xFFFC, 0xFFFD, 0xFFFE, 0xFFFF)


def single(export: str, cases: Callable[[], Iterator[Case]]) -> Source:
    """One vector for each case of an export that needs no call before it."""
    return lambda: (((export, *inputs),) for inputs in cases())


def at(north: float, east: float, elev: float = 0.0, flags: int = HAS_NE) -> CoordPt:
    """A point without a valid elevation, unless the flags say otherwise."""
    return CoordPt(north, east, elev, flags)


def high(north: float, east: float, elev: float) -> CoordPt:
    """A point with an elevation."""
    return CoordPt(north, east, elev, HAS_NE | HAS_ELEV)


ORIGIN = at(0.0, 0.0)
NO_POSITION = at(1.0, 2.0, 3.0, HAS_ELEV)
