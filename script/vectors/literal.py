#!/usr/bin/env python3
"""A second road to every result: the exports written down formula by formula.

Nothing is arranged for speed or for reuse. The modules cogo, measure, reference, planes, station
and multi perform the operations of each formula in their order, in IEEE doubles and wrapping 32-bit
integers, so that the library can be compared with them to the bit; below multi lies the adjustment,
in resect, approx and lsq. The modules named ..._cases say what is asked.

Run as a program this writes the files in tests/vectors; with --check it only compares them.
"""

import argparse
import sys
from collections.abc import Callable
from pathlib import Path
from typing import Any, get_type_hints

import cogo
import cogo_cases
import ieee
import measure
import measure_cases
import multi
import multi_cases
import plane_cases
import planes
import reference
import reference_cases
import station
import station_cases
from cases import Call, Source, Vector
from records import input_tokens, output_tokens, untouched

VECTORS = Path(__file__).resolve().parents[2] / "tests" / "vectors"

EXPORTS: dict[str, Callable[..., Any]] = (
    cogo.EXPORTS | measure.EXPORTS | reference.EXPORTS | planes.EXPORTS
    | station.EXPORTS | multi.EXPORTS)

FILES: dict[str, tuple[Source, ...]] = (
    cogo_cases.FILES | measure_cases.FILES | reference_cases.FILES | plane_cases.FILES
    | station_cases.FILES | multi_cases.FILES)

HEADER = """\
# Inputs and results, to the bit, of
#   {exports}.
#
# Written by script/vectors/literal.py from the bare formulas, not by the library; do not edit.
# Corners chosen by hand come first, then random cases from a fixed seed. check_vectors compares the
# library with it.
# Cases whose result hangs on a sine, cosine, tangent, arctangent or hypotenuse that good
# mathematics libraries may round differently are left out.
#
# One vector per line: export, inputs, "=", outputs; further calls after ";", which find the state
# that those before them left. No vector rests on the state that another one left. A token is the
# big-endian value in hex: 16 digits a double, 8 a 32-bit integer, 4 a 16-bit one. Inputs stand in
# the order of the parameters, records in that of their fields, without reserved fields; before an
# array stands its count; "null" is a null pointer. Outputs are the returned value, if any, then
# every output with its reserved fields. All bytes of an output are a5 before the call, so that
# a5a5... is a field that must stay untouched. 7ff8000000000000 stands for any NaN.

"""


def call_text(call: Call) -> str:
    """One call of a vector. Inputs come before outputs, also where the parameters do not."""
    name, *inputs = call
    compute = EXPORTS[name]
    kinds = get_type_hints(compute, include_extras=True)
    result_kind = kinds.pop("return")
    input_kinds = list(kinds.values())[: len(inputs)]
    output_kinds = list(kinds.values())[len(inputs) :]
    records = sum(len(value) for value in inputs if isinstance(value, list))
    outputs = [untouched(kind, records) for kind in output_kinds]
    result = compute(*inputs, *outputs)

    tokens = [name]
    for kind, value in zip(input_kinds, inputs):
        tokens += input_tokens(kind, value)
    tokens.append("=")
    if result is not None:
        tokens += output_tokens(result_kind, result)
    for kind, value in zip(output_kinds, outputs):
        tokens += output_tokens(kind, value)
    return " ".join(tokens)


def vector_text(vector: Vector, bias: int = 0) -> str:
    """A line of a file, as a mathematics library with other doubtful last bits would have it."""
    with ieee.biased(bias):
        return " ; ".join(map(call_text, vector))


def text_of(family: str) -> str:
    """The whole file of a family, without the vectors that hang on a doubtful last bit."""
    exports: dict[str, None] = {}
    lines = []
    for source in FILES[family]:
        for vector in source():
            line = vector_text(vector)
            if all(vector_text(vector, bias) == line for bias in (-1, 1)):
                lines.append(line)
                exports |= dict.fromkeys(name for name, *_ in vector)
    return HEADER.format(exports=",\n#   ".join(exports)) + "\n".join(lines) + "\n"


def main() -> int:
    """Writes the vector files, or compares them with what would be written."""
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--check", action="store_true", help="compare, write nothing")
    check = parser.parse_args().check
    failures = 0
    for family in FILES:
        path = VECTORS / (family + ".vec")
        text = text_of(family)
        if not check:
            path.write_text(text, encoding="ascii")
        elif not path.exists() or path.read_text(encoding="ascii") != text:
            print(f"{path.name} is not what literal.py writes")
            failures += 1
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
