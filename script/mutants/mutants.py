"""Single faults to be put into the library: each is one edit of one source file."""

import re
from collections import Counter
from collections.abc import Iterator
from dataclasses import dataclass, replace
from pathlib import Path

from source import KEYWORDS, Source, Span

ROOT = Path(__file__).resolve().parents[2]

OPERATORS = {
    "<": ("<=", ">="),
    "<=": ("<", ">"),
    ">": (">=", "<="),
    ">=": (">", "<"),
    "==": ("!=",),
    "!=": ("==",),
    "&&": ("||",),
    "||": ("&&",),
    "&": ("|",),
    "|": ("&",),
    "+": ("-",),
    "-": ("+",),
    "*": ("/",),
    "/": ("*",),
    "%": ("/",),
    "+=": ("-=",),
    "-=": ("+=",),
}
NAMES = {
    "true": "false",
    "false": "true",
    "ANGLE_FULL_CIRCLE": "ANGLE_HALF_CIRCLE",
    "ANGLE_HALF_CIRCLE": "ANGLE_FULL_CIRCLE",
    "ANGLE_QUARTER_CIRCLE": "ANGLE_HALF_CIRCLE",
    "ANGLE_450_DEGREES": "ANGLE_FULL_CIRCLE",
    "ANGLE_INVALID": "0",
    "VALUE_INVALID": "0.0",
    "SLOPE_VERTICAL": "0.0",
    "NO_ELEVATION": "0.0",
    "COORD_HAS_NE": "COORD_HAS_ELEV",
    "COORD_HAS_ELEV": "COORD_HAS_NE",
    "LINE_MODE_TWO_POINTS": "LINE_MODE_DIRECTION",
    "LINE_MODE_DIRECTION": "LINE_MODE_TWO_POINTS",
    "STATUS_OK": "ERR_REFUSED",
    "kEngineOk": "kEngineSingular",
}
# Their arguments may be exchanged without anything changing.
SYMMETRIC = {"std::hypot", "std::max", "std::min", "kavo::SamePlace", "SamePlace", "Same", "Dot"}
SYMMETRIC |= {"kavo::WrapAdd", "WrapAdd", "std::swap", "PointDistance"}
# They look at their first argument alone.
UNREAD = {"MatFree", "VecFree", "IVecFree"}
OTHERS = KEYWORDS | SYMMETRIC | UNREAD
# The sign of what they are given is lost.
EVEN = {"std::abs", "std::fabs", "std::hypot", "std::cos", "Square", "kavo::Square"}
# What is returned, and either is nothing already or is exchanged as a name.
NOTHING = re.compile(r"\{\}|0|0\.0|false|nullptr|\*this|STATUS_OK|kEngine\w+|ERR_\w+")
DECLARATION = re.compile(r"\bconst\b|[\w>][&*]? \w|^\w+[&*]*$(?<=[&*])")


@dataclass(frozen=True)
class Mutant:
    path: Path
    start: int
    end: int
    new: str
    source: str
    nth: int = 1  # of the edits of this file that look the same

    def text(self) -> str:
        return self.source[: self.start] + self.new + self.source[self.end :]

    def name(self) -> str:
        """The file, and the line with the edit in brackets: independent of line numbers."""
        begin = self.source.rfind("\n", 0, self.start) + 1
        end = self.source.find("\n", self.end)
        edit = f"[{self.source[self.start : self.end]} => {self.new}]"
        line = self.source[begin : self.start] + edit + self.source[self.end : end]
        nth = f" #{self.nth}" if self.nth > 1 else ""
        return f"{self.path.relative_to(ROOT)}: {' '.join(line.split())}{nth}"

    def place(self) -> str:
        return f"{self.path.relative_to(ROOT)}:{self.source.count(chr(10), 0, self.start) + 1}"


def sources() -> list[Path]:
    """The files of the library that compute; layout_check.cpp is checked as it is compiled."""
    found = sorted([*ROOT.glob("src/*/*.cpp"), *ROOT.glob("src/*/*.hpp")])
    return [path for path in found if path.name != "layout_check.cpp"]


def mutants_of(path: Path) -> list[Mutant]:
    source = Source(path)
    edits = {
        (source.tokens[span.first].start, source.tokens[span.last].end, new)
        for span, new in all_edits(source)
        if source.cut(span) != new
    }
    mutants, seen = [], Counter()
    for start, end, new in sorted(edits):
        mutant = Mutant(path, start, end, new, source.text)
        seen[mutant.name()] += 1
        mutants.append(replace(mutant, nth=seen[mutant.name()]))
    return mutants


def all_edits(source: Source) -> Iterator[tuple[Span, str]]:
    for i, token in enumerate(source.tokens):
        one = Span(i, i)
        if source.at(source.call_of(i)) in UNREAD:
            continue
        if token.kind == "number" and not is_array_size(source, i):
            yield one, other_number(token.text)
        elif token.kind == "name":
            if token.text in NAMES:
                yield one, NAMES[token.text]
            elif token.text.startswith("ERR_"):
                yield one, "STATUS_OK"
            elif token.text.startswith("kEngine"):
                yield one, "kEngineOk"
        elif token.text in OPERATORS and source.is_spaced(i):
            for new in OPERATORS[token.text]:
                yield one, new
            left, right = source.operand_before(i), source.operand_after(i)
            if token.text in "/%" or (token.text == "-" and not is_even(source, left, right)):
                yield swapped(source, left, right)
        elif token.text in ("-", "!") and source.text[token.end] not in " =":
            yield one, ""
        elif token.text == "++":
            yield one, "--"
    yield from conditions(source)
    yield from orders(source)
    yield from statements(source)
    yield from returns(source)


def is_even(source: Source, left: Span, right: Span) -> bool:
    """A difference that is all of an argument whose sign is lost."""
    alone = source.at(left.first - 1) in ("(", ",") and source.at(right.last + 1) in (")", ",")
    return alone and source.at(source.call_of(left.first)) in EVEN


def is_array_size(source: Source, i: int) -> bool:
    in_type = source.at(i + 1) == ">" and not source.is_spaced(i + 1)
    in_declaration = source.at(i - 1) == "[" and source.at(i + 2) in (")", ",", ";", "{")
    return in_type or in_declaration


def other_number(text: str) -> str:
    """The last digit of a hexadecimal fraction; one more, of any other."""
    number, suffix = re.fullmatch(r"(.*?)([uUlL]*)", text).groups()
    if fraction := re.fullmatch(r"(0x1\.\w*?)(\w)(p[+-]\d+)", number):
        last = "123456789abcdef0"[int(fraction[2], 16)]
        return f"{fraction[1]}{last}{fraction[3]}"
    if number.startswith("0x1p"):
        return f"0x2p{number[4:]}"
    if number.startswith("0x"):
        return hex(int(number, 16) + 1) + suffix
    whole = re.match(r"\d+", number)[0]
    return str(int(whole) + 1) + text[len(whole) :]


def swapped(source: Source, left: Span, right: Span) -> tuple[Span, str]:
    between = source.text[source.tokens[left.last].end : source.tokens[right.first].start]
    return Span(left.first, right.last), source.cut(right) + between + source.cut(left)


def conditions(source: Source) -> Iterator[tuple[Span, str]]:
    """The other way round, where no operator shows which way it is."""
    for i, token in enumerate(source.tokens):
        if token.text == "if" and source.at(i + 1) == "(":
            span = Span(i + 2, source.partner[i + 1] - 1)
            if not re.search(r"[<>=!;&|]", source.cut(span)):
                yield span, f"!({source.cut(span)})"
        elif token.text == "?":
            span = source.operand_before(i)
            if source.at(span.first - 1) in ("=", "return", "("):
                yield span, f"!{source.cut(span)}"


def orders(source: Source) -> Iterator[tuple[Span, str]]:
    """Arguments of a call, and values in braces, exchanged with their neighbours."""
    for i in range(1, len(source.tokens)):
        before = source.at(i - 1)
        call = source.at(i) == "(" and source.is_name(i - 1) and before not in OTHERS
        values = source.at(i) == "{" and before in ("return", "=", "(", ",")
        if call or values:
            arguments = source.arguments(i)
            if not any(DECLARATION.search(source.cut(a)) for a in arguments):
                for left, right in zip(arguments, arguments[1:]):
                    yield swapped(source, left, right)


def statements(source: Source) -> Iterator[tuple[Span, str]]:
    """Deleted; or exchanged with the next one where that uses what this one sets, or the reverse."""
    found = source.statements()
    for span in found:
        yield span, ";"
    for one, two in zip(found, found[1:]):
        if one.last + 1 == two.first and are_tied(source.cut(one), source.cut(two)):
            yield swapped(source, one, two)


def are_tied(one: str, two: str) -> bool:
    def target(statement: str) -> str:
        return re.split(r" [-+*/]?= |;", statement)[0].strip("+-*")

    return target(one) in two or target(two) in one


def returns(source: Source) -> Iterator[tuple[Span, str]]:
    """Nothing, in place of what is returned."""
    for i, token in enumerate(source.tokens):
        if token.text == "return" and source.at(i + 1) != ";":
            last = i
            while source.at(last + 1) != ";":
                last = source.partner.get(last + 1, last + 1)
            span = Span(i + 1, last)
            if not NOTHING.fullmatch(source.cut(span)):
                yield span, "{}"
