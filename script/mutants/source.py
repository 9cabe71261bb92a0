"""C++ source cut into tokens, and what stands between them: operands, arguments, statements.

It need not understand the language, only this repository: clang-format leaves blanks around binary
operators and none around pointers, references and template brackets.
"""

import re
from dataclasses import dataclass
from pathlib import Path

TOKEN = re.compile(
    r"""(?P<gap>\s+|//[^\n]*|^\s*\#[^\n]*)
      |(?P<string>"(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])*')
      |(?P<number>(?:0x[\da-f]+(?:\.[\da-f]+)?(?:p[+-]?\d+)?|\d+(?:\.\d+)?(?:e[+-]?\d+)?)[uUlL]*)
      |(?P<name>[A-Za-z_]\w*(?:::\w+)*)
      |(?P<mark>->|\+\+|--|<<|[-+*/%&|<>=!]=|&&|\|\||.)""",
    re.MULTILINE | re.VERBOSE,
)
OPENING = {")": "(", "]": "[", "}": "{"}
# Neither expressions nor assignments begin with these.
KEYWORDS = set(
    "auto break case class const consteval constexpr constinit do else enum explicit extern for friend"
    " if inline namespace private public return static static_assert struct switch template typedef"
    " using while".split()
)


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


@dataclass(frozen=True)
class Span:
    """Tokens first..last of a file."""

    first: int
    last: int


class Source:
    """A file, its tokens, and which bracket belongs to which."""

    def __init__(self, path: Path) -> None:
        self.path = path
        self.text = path.read_text()
        found = TOKEN.finditer(without_what_never_runs(self.text))
        self.tokens = [
            Token(m.lastgroup, m.group(), m.start(), m.end()) for m in found if m.lastgroup != "gap"
        ]
        self.partner: dict[int, int] = {}
        opened: list[int] = []
        for i, token in enumerate(self.tokens):
            if token.text in OPENING.values():
                opened.append(i)
            elif token.text in OPENING:
                self.partner[i] = opened.pop()
                self.partner[self.partner[i]] = i

    def at(self, i: int) -> str:
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def is_name(self, i: int) -> bool:
        return 0 <= i < len(self.tokens) and self.tokens[i].kind == "name"

    def cut(self, span: Span) -> str:
        return self.text[self.tokens[span.first].start : self.tokens[span.last].end]

    def is_spaced(self, i: int) -> bool:
        """A binary operator is; a sign, a pointer and a template bracket are not."""
        token = self.tokens[i]
        return self.text[token.start - 1].isspace() and self.text[token.end].isspace()

    def operand_before(self, i: int) -> Span:
        """The primary expression that ends before token i: name, number, call, element, member."""
        first = i - 1
        while True:
            if self.at(first) in (")", "]"):
                first = self.partner[first]
                if self.is_name(first - 1) or self.at(first - 1) in (")", "]"):
                    first -= 1
                    continue
            if self.at(first - 1) in (".", "->"):
                first -= 2
                continue
            return Span(first, i - 1)

    def operand_after(self, i: int) -> Span:
        last = i + 1
        while self.at(last) in ("-", "!", "*", "&"):
            last += 1
        last = self.partner.get(last, last)
        while True:
            if self.at(last + 1) in ("(", "["):
                last = self.partner[last + 1]
            elif self.at(last + 1) in (".", "->"):
                last += 2
            else:
                return Span(i + 1, last)

    def call_of(self, i: int) -> int:
        """The name of the function in whose arguments token i stands; -1 when there is none."""
        while self.at(i - 1) not in ("(", "[", "{", ";", ""):
            i = self.partner[i - 1] if self.at(i - 1) in OPENING else i - 1
        return i - 2 if self.at(i - 1) == "(" else -1

    def arguments(self, i: int) -> list[Span]:
        """What stands between the bracket at token i and its partner, parted by commas."""
        spans, first, j = [], i + 1, i + 1
        while j <= self.partner[i]:
            if self.at(j) == "," or j == self.partner[i]:
                spans.append(Span(first, j - 1))
                first = j + 1
            elif self.at(j) in OPENING.values():
                j = self.partner[j]
            j += 1
        return [span for span in spans if span.first <= span.last]

    def statements(self) -> list[Span]:
        """Assignments, steps and calls that stand for themselves, each with its semicolon."""
        found, first = [], 0
        for i, token in enumerate(self.tokens):
            if token.text in ("{", "}", ";"):
                if token.text == ";" and self.is_action(Span(first, i)):
                    found.append(Span(first, i))
                first = i + 1
        return found

    def is_action(self, span: Span) -> bool:
        first = span.first + (self.at(span.first) in ("++", "--", "*"))
        if not self.is_name(first) or self.at(first) in KEYWORDS:
            return False
        target = self.operand_after(first - 1).last
        after = self.at(target + 1)
        if self.at(target + 2) == "delete":
            return False
        return after in ("=", "+=", "-=", "*=", "/=") or (
            after == ";" and (first != span.first or self.at(target) == ")")
        )


def without_what_never_runs(text: str) -> str:
    """Blanks in place of what is checked at compile time or is marked as out of reach."""
    never = (
        r"// GCOVR_EXCL_START.*?// GCOVR_EXCL_STOP"
        r"|\bstatic_assert\(.*?\);"
        r"|^template <.*?>$"
        r"|\boperator ?[^\s(]*"
    )
    return re.sub(never, blank, text, flags=re.DOTALL | re.MULTILINE)


def blank(match: re.Match[str]) -> str:
    """As many blanks, and the same lines."""
    return re.sub(r"[^\n]", " ", match.group())
