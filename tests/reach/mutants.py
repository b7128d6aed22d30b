"""Small mistakes put into C++ source text: each mutant is one edit of one place.

The lexer knows comments, preprocessor lines, literals and operators, and relies on the project's
format where the language is ambiguous: a comparison, an addition or a logical operator has a blank
on both sides, a template's bracket or a reference's sign has not.

What only reserves room or says how much is no place for a mistake, as it changes time and memory and
nothing that a test may depend on: calls of `reserve`, and constants whose name ends in a word of
`ROOM`.
"""

from __future__ import annotations

import re
from collections.abc import Iterator
from dataclasses import dataclass
from itertools import count

ROOM = r"(?:BlockSize|Chunk|FirstBits|FirstItems|Padding|Room)"
TOKEN = re.compile(
    r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/|^\#(?:[^\n\\]|\\.)*|\bstatic_assert\b[^;]*;
              |[A-Za-z_][\w.>-]*(?:\.|->)reserve\([^;]*;
              |\b(?:(?:inline|static)\s+)*constexpr\s[\w:\s]*\bk\w*"""
    + ROOM
    + r"""\s=[^;]*;)
      | (?P<raw>R"\(.*?\)")
      | (?P<string>"(?:[^"\\\n]|\\.)*")
      | (?P<char>'(?:[^'\\\n]|\\.)+')
      | (?P<number>\d(?:'?\w)*)
      | (?P<word>[A-Za-z_]\w*)
      | (?P<sign><<=|>>=|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|::|.)""",
    re.DOTALL | re.MULTILINE | re.VERBOSE,
)
BETWEEN_BLANKS = {
    "==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="],
    ">=": [">", "<"], "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"],
    "%": ["/"], "+=": ["-="], "-=": ["+="], "<<": [">>"], ">>": ["<<"], "|": ["&"], "^": ["&"],
}  # fmt: skip
WORDS = {"true": "false", "false": "true", "min": "max", "max": "min", "break": "", "continue": ""}
NOT_EXPRESSIONS = set(
    "auto break case class const constexpr continue default do else enum explicit for friend if "
    "inline namespace operator private public return static struct switch template try typedef "
    "using virtual while".split()
)
OPENING = {"(": ")", "[": "]", "{": "}"}
CLOSING = set(OPENING.values())
CONDITIONS = {"if", "while", "for", "switch", "catch"}


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int

    @property
    def end(self) -> int:
        return self.start + len(self.text)


@dataclass(frozen=True)
class Mutant:
    start: int
    end: int
    replacement: str

    def apply(self, source: str) -> str:
        return source[: self.start] + self.replacement + source[self.end :]

    def describe(self, source: str) -> str:
        """The lines before and after, blanks condensed: the same wherever in the file they are."""
        first = source.rfind("\n", 0, self.start) + 1
        last = source.find("\n", self.end)
        before = source[first:last]
        after = source[first : self.start] + self.replacement + source[self.end : last]
        return f"{' '.join(before.split())} => {' '.join(after.split())}"


def tokens_of(source: str) -> list[Token]:
    tokens = [Token(m.lastgroup or "", m.group(), m.start()) for m in TOKEN.finditer(source)]
    return [token for token in tokens if token.kind != "skip"]


def pairs_of(tokens: list[Token]) -> dict[int, int]:
    """The index of each bracket's partner, both ways."""
    pairs: dict[int, int] = {}
    open_ones: list[int] = []
    for index, token in enumerate(tokens):
        if token.text in OPENING:
            open_ones.append(index)
        elif token.text in CLOSING and open_ones:
            partner = open_ones.pop()
            pairs[partner], pairs[index] = index, partner
    return pairs


def number_mutants(token: Token) -> Iterator[str]:
    match = re.fullmatch(r"(0[xX][0-9A-Fa-f]+|0|[1-9]\d*)([uUlL]*)", token.text)
    if match:
        value, suffix = int(match[1], 0), match[2]
        yield from (f"{other}{suffix}" for other in {value + 1, max(value - 1, 0), 0} - {value})


def literal_mutants(token: Token) -> Iterator[str]:
    """One character left out, another one changed; the backslash and what it escapes stay."""
    body_start = token.text.index("(" if token.kind == "raw" else '"') + 1
    body_end = len(token.text) - body_start + token.text.index('"')
    body = token.text[body_start:body_end]
    plain = [i for i, c in enumerate(body) if c.isalnum() and body[max(i - 1, 0)] != "\\"]
    if not body:
        yield '"x"'
    if plain:
        middle = body_start + plain[len(plain) // 2]
        yield token.text[:middle] + token.text[middle + 1 :]
        last = body_start + plain[-1]
        changed = "x" if token.text[last] != "x" else "y"
        yield token.text[:last] + changed + token.text[last + 1 :]


def token_mutants(source: str, token: Token) -> Iterator[str]:
    if token.kind == "number":
        yield from number_mutants(token)
    elif token.kind in ("string", "raw"):
        yield from literal_mutants(token)
    elif token.kind == "char" and len(token.text) == 3 and token.text[1].isascii():
        yield f"'{chr(ord(token.text[1]) + 1)}'" if token.text[1] not in "&[~" else "'x'"
    elif token.text in WORDS:
        yield WORDS[token.text]
    elif token.text in ("++", "--"):
        yield "--" if token.text == "++" else "++"
    elif token.text == "!":
        yield ""
    elif source[token.start - 1].isspace() and source[token.end].isspace():
        yield from BETWEEN_BLANKS.get(token.text, [])


def condition_mutants(source: str, tokens: list[Token], pairs: dict[int, int]) -> Iterator[Mutant]:
    """The condition of an `if` or a `while` negated, unless its only operator is mutated anyway."""
    for index, token in enumerate(tokens[:-1]):
        if token.text in ("if", "while") and tokens[index + 1].text == "(":
            start, end = tokens[index + 1].end, tokens[pairs[index + 1]].start
            start = max(start, source.rfind(";", start, end) + 1)
            condition = source[start:end]
            flipped = len(re.findall(r"[=!]=| [<>]=? |!", condition)) == 1
            if condition != "true" and not (flipped and not re.search(r"&&|\|\|", condition)):
                yield Mutant(start, end, f"!({condition.strip()})")


def begins_statement(tokens: list[Token], pairs: dict[int, int], index: int) -> bool:
    before = tokens[index - 1].text if index else ""
    if before == ")":
        return tokens[pairs[index - 1] - 1].text in CONDITIONS
    if before == ":":
        return "case" in (tokens[index - 3].text, tokens[index - 4].text, tokens[index - 5].text)
    return before in {";", "{", "}", "else"}


def is_early(tokens: list[Token], pairs: dict[int, int], index: int) -> bool:
    """Whether what encloses the place is a branch or a loop, and not a function."""
    for opening in range(index - 1, -1, -1):
        if tokens[opening].text == "{" and pairs.get(opening, 0) > index:
            before = tokens[opening - 1].text
            if before == ")":
                return tokens[pairs[opening - 1] - 1].text in CONDITIONS
            return before in {"else", "try"}
    return False


def is_expression(tokens: list[Token], index: int) -> bool:
    """Whether a call or an assignment begins there: names joined by "::", "." or "->", and then an
    operator, where a declaration has a second name."""
    for position in count(index):
        token = tokens[position]
        if (position - index) % 2 == 0:
            if token.kind != "word" or token.text in NOT_EXPRESSIONS:
                return False
        elif token.text not in ("::", ".", "->"):
            return token.text in {"(", "[", "=", "+=", "-=", "++", "--", "<<"}
    return False


def statement_end(tokens: list[Token], pairs: dict[int, int], index: int) -> int | None:
    while index < len(tokens) and tokens[index].text != ";":
        body = tokens[index].text == "{" and tokens[index - 1].text == ")"
        if body or tokens[index].text in CLOSING:
            return None
        index = pairs.get(index, index) + 1
    return index if index < len(tokens) else None


def statement_mutants(tokens: list[Token], pairs: dict[int, int]) -> Iterator[Mutant]:
    """Calls, assignments, throws and early returns left out."""
    for index, token in enumerate(tokens):
        if not begins_statement(tokens, pairs, index):
            continue
        leaves = token.text == "throw" or token.text == "return" and is_early(tokens, pairs, index)
        steps = token.text in ("++", "--")
        if leaves or is_expression(tokens, index + steps):
            end = statement_end(tokens, pairs, index)
            if end is not None and tokens[end - 1].text not in ("delete", "default"):
                yield Mutant(token.start, tokens[end].start, "")


def mutants_of(source: str) -> list[Mutant]:
    tokens = tokens_of(source)
    pairs = pairs_of(tokens)
    found = [
        Mutant(token.start, token.end, replacement)
        for token in tokens
        for replacement in token_mutants(source, token)
    ]
    found += condition_mutants(source, tokens, pairs)
    found += statement_mutants(tokens, pairs)
    return sorted(set(found), key=lambda mutant: (mutant.start, mutant.end, mutant.replacement))
