"""What one statement comes to: the two runs put together from tokens, rules and checks.

    python3 recogniser.py 'PRO=HASH, DSTFLD=A'      shows tokens, pairs and errors of a statement
"""

import json
import sys
from typing import NamedTuple, Optional

from grammar import BadSeparator, Parse, SetTraceLevel, Unacceptable, parse
from lexer import tokenise
from validation import Pair, validate
from vocabulary import NAME_BY_TYPE, T

REJECTED = 7148
NO_TEXT = 7090
SYNTAX_ERROR = 7139
BAD_SEPARATOR = 7140

QUOTED_VALUE_TYPES = {T.STRING_WITH_QUOTES, T.SEED_LITERAL, T.KEY_LITERAL}
REPEATABLE_KEY_TYPES = {T.AFF_PARM_CLASS, *range(217, 224), T.USER_PROVIDER_KEY}

# The level names that the platform knows, in upper case. TRCLEVEL: the statement hands on its own keyword.
TRACE_LEVELS = frozenset({"OFF", "ERROR", "CALLS", "DETAIL", "0", "1", "2", "3", "TRCLEVEL"})


class Error(NamedTuple):
    number: Optional[int]  # None: some number of the platform's own
    position: Optional[int] = None
    excerpt: Optional[str] = None
    key_text: Optional[str] = None


class Result(NamedTuple):
    status: int
    count: int  # stored pairs: in the sizing run every store, in the filling run what was kept
    pairs: list[Pair]
    errors: list[Error]

    @property
    def error(self) -> Optional[Error]:
        """The one that ended the statement (a refused trace level does not end it)."""
        return self.errors[-1] if self.errors else None


# --- positions ---


def reported_position(text: str, offset: int, no_viable_alternative: bool) -> int:
    """First line: the column counted from 1. Later lines: the column counted from 0, plus 2. End: the length."""
    if offset >= len(text):
        in_line = max(len(text) - 2, 0)
    else:
        line_start = text.rfind("\n", 0, offset) + 1
        in_line = max(offset - 1, 0) if line_start == 0 else offset - line_start
    position = in_line + 2
    if no_viable_alternative and position == 2:
        position = len(text)
    return position


def syntax_error(text: str, offset: int, no_viable_alternative: bool) -> Error:
    position = reported_position(text, offset, no_viable_alternative)
    return Error(SYNTAX_ERROR, position, text[:position])


# --- the store ---


def value_text(value_type: int, token_text: str) -> str:
    if value_type in QUOTED_VALUE_TYPES:
        return token_text[1:-1].replace('\\"', '"')
    return token_text


def kept_pairs(parsed: Parse) -> list[Pair]:
    """The first pair of a key type is kept, later ones are dropped, but for the types that may repeat."""
    kept = []
    seen = set()
    for action in parsed.actions:
        if isinstance(action, SetTraceLevel):
            continue
        if action.key_type in seen and action.key_type not in REPEATABLE_KEY_TYPES:
            continue
        seen.add(action.key_type)
        kept.append(Pair(action.key_type, action.key_text, action.value_type,
                         value_text(action.value_type, action.token_text)))
    return kept


# --- the runs ---


def judge_syntax(text: str, parsed: Parse, broken) -> Optional[Error]:
    """The one syntax record of a parse. What the parser says stands; the lexer speaks only if it was content."""
    if isinstance(parsed.error, BadSeparator):
        return Error(BAD_SEPARATOR)
    if isinstance(parsed.error, Unacceptable):
        return syntax_error(text, parsed.error.token.start, parsed.error.no_viable_alternative)
    if broken:
        return syntax_error(text, broken.offset, broken.no_viable_alternative)
    return None


def level_is_known(level: str, trace_levels: frozenset) -> bool:
    return level.isascii() and level.upper() in trace_levels


def recognise_both(text: str, trace_levels: frozenset = TRACE_LEVELS) -> tuple[Result, Result]:
    """The sizing run and the filling run."""
    if not text:
        refused = Result(NO_TEXT, 0, [], [Error(NO_TEXT)])
        return refused, refused
    found, broken = tokenise(text)
    parsed = parse(text, found)
    syntax = judge_syntax(text, parsed, broken)

    stores = sum(not isinstance(action, SetTraceLevel) for action in parsed.actions)
    sizing = Result(REJECTED if syntax else 0, stores, [], [syntax] if syntax else [])

    pairs = kept_pairs(parsed)
    errors = [Error(None) for action in parsed.actions
              if isinstance(action, SetTraceLevel) and not level_is_known(action.level, trace_levels)]
    if syntax:
        errors.append(syntax)
    else:
        violation = validate(pairs)
        if violation:
            errors.append(Error(violation.number, key_text=violation.key_text))
    filling = Result(REJECTED if errors else 0, len(pairs), pairs, errors)
    return sizing, filling


def recognise(text: str, fill: bool, trace_levels: frozenset = TRACE_LEVELS) -> Result:
    return recognise_both(text, trace_levels)[1 if fill else 0]


def tokens(text: str) -> tuple[list[tuple[int, int, int, bool]], Optional[int]]:
    """(type, start, length, hidden) of every token, and the offset of the first broken place."""
    found, broken = tokenise(text)
    return ([(token.type, token.start, len(token.text), token.hidden) for token in found],
            broken.offset if broken else None)


def show(text: str) -> None:
    found, broken = tokenise(text)
    for token in found:
        if not token.hidden:
            print(f"token {token.start:4} {NAME_BY_TYPE[token.type]} {token.text!r}")
    if broken:
        print(f"broken at {broken.offset}")
    sizing, filling = recognise_both(text)
    print(f"sizing run: status {sizing.status}, {sizing.count} pairs")
    print(f"filling run: status {filling.status}")
    for pair in filling.pairs:
        print("pair", json.dumps(list(pair), ensure_ascii=False))
    for error in filling.errors:
        print("error", error)


if __name__ == "__main__":
    for statement in sys.argv[1:]:
        show(statement)
