"""Arithmetic as a C program has it: IEEE doubles, wrapping 32-bit integers, C's mathematics.

Python raises where C carries on (division by zero, a root of -1), floors where C truncates, and has
a hypot of its own. Everything here closes one of those gaps.
"""

import contextlib
import ctypes
import ctypes.util
import math
from collections.abc import Callable, Iterator

from rounding import other_answer

_LIBM = ctypes.CDLL(ctypes.util.find_library("m"))

# Which of two answers that libraries may give is taken: the lower (-1), the higher (+1), or the one
# that this machine's library gives.
_bias = 0


@contextlib.contextmanager
def biased(bias: int) -> Iterator[None]:
    """Lets the mathematics library round down (-1) or up (+1) wherever it or another one might."""
    global _bias
    _bias = bias
    try:
        yield
    finally:
        _bias = 0


def _function(name: str, arity: int) -> Callable[..., float]:
    """A function of the C mathematics library that takes and returns doubles."""
    function = getattr(_LIBM, name)
    function.argtypes = [ctypes.c_double] * arity
    function.restype = ctypes.c_double
    return function


def _biasable(name: str, arity: int) -> Callable[..., float]:
    """The same for a function whose last bit libraries may disagree about."""
    function = _function(name, arity)

    def call(*arguments: float) -> float:
        value = function(*arguments)
        if _bias == 0:
            return value
        other = other_answer(name, arguments, value)
        return min(value, other) if _bias < 0 else max(value, other)

    return call


sqrt = _function("sqrt", 1)  # rounded rightly everywhere
sin = _biasable("sin", 1)
cos = _biasable("cos", 1)
tan = _biasable("tan", 1)
atan2 = _biasable("atan2", 2)
hypot = _biasable("hypot", 2)


def divide(x: float, y: float) -> float:
    """x / y, where a zero divisor gives an infinity or not-a-number."""
    if y != 0.0:
        return x / y
    if x == 0.0 or math.isnan(x):
        return math.nan
    return math.copysign(math.inf, x) * math.copysign(1.0, y)


def square(x: float) -> float:
    """x times x: one rounding. The power operator would take another road to the last bit."""
    return x * x


def wrap32(n: int) -> int:
    """n brought into the signed 32-bit range as two's complement does it."""
    return (n + 2**31) % 2**32 - 2**31


def add32(a: int, b: int) -> int:
    """Sum of two signed 32-bit integers, wrapping."""
    return wrap32(a + b)


def sub32(a: int, b: int) -> int:
    """Difference of two signed 32-bit integers, wrapping."""
    return wrap32(a - b)


def quotient(a: int, b: int) -> int:
    """a / b truncated towards zero, for a positive b."""
    return a // b if a >= 0 else -(-a // b)


def remainder(a: int, b: int) -> int:
    """Remainder of the truncating division; takes the sign of a."""
    return a - quotient(a, b) * b


def to_int32(x: float) -> int | None:
    """x truncated towards zero, or None where no 32-bit integer holds it."""
    if not math.isfinite(x):
        return None
    n = math.trunc(x)
    return n if -(2**31) <= n < 2**31 else None
