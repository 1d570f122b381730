"""Characters to tokens.

At each position the first row of `next_token` that applies decides, and every row consumes at least
one character. A committed rule raises `Broken` at a character that it does not accept: the
characters it consumed and the offending one are dropped, and lexing continues after them.

Offsets count characters of the statement; a character above U+FFFF is one character.
"""

import re
from functools import lru_cache
from typing import NamedTuple, Optional

from vocabulary import (END_OF_INPUT, END_OF_INPUT_TEXT, KEY_LITERALS, KEYWORDS, PATTERNS_WITH_BLANKS,
                        PATTERNS_WITHOUT_BLANKS, SEPARATOR_CHARACTERS, T)

BYTE_ORDER_MARK = "\ufeff"
HIGHEST_CHARACTER = "\uffff"

HIDDEN_TYPES = {T.WHITESPACE, T.COMMENT}

SINGLE_CHARACTERS = {
    ",": T.COMMA,
    "=": T.EQUAL,
    ")": T.RIGHT_PARENTHESIS,
    "'": T.SINGLE_QUOTE,
    "\\": T.BACKSLASH,
}

AFFIX_WORDS = {"PREFIX", "SUFFIX", "OVERLAY"}

WHITESPACE = re.compile(r"[\t\n\f\r ]+")
LINE_COMMENT = re.compile(r"//[^\r\n]*")
RUN = re.compile(r"[-.:_0-9A-Za-z]+")
INTEGER = re.compile(r"[+-]?[0-9]+")
WHOLE_INTEGER = re.compile(r"-?[0-9]+\Z")
SIGN_AND_DIGIT = re.compile(r"[+-]?[0-9]")
# The items of a quoted string: backslash-quote is always an escape, so the group may not give it back.
STRING_ITEMS = re.compile(r'(?:\\"|[^"\U00010000-\U0010ffff])*+')
VALUE_WITH_BLANKS = re.compile(
    "|".join(re.escape(value) for value in sorted(PATTERNS_WITH_BLANKS, key=len, reverse=True)),
    re.IGNORECASE | re.ASCII)


class Token(NamedTuple):
    type: int
    start: int
    text: str
    hidden: bool = False


class Broken(Exception):
    """The offset of the character that a committed rule could not take; the text's length at its end."""

    def __init__(self, offset: int, no_viable_alternative: bool = False):
        super().__init__(offset)
        self.offset = offset
        self.no_viable_alternative = no_viable_alternative


# --- the pieces of the structured tokens; each takes an offset and returns the offset after the
# piece ---


def take(text: str, at: int, expected: str) -> int:
    """Exactly these characters, letters in either case."""
    for character in expected:
        if at >= len(text) or not text[at].isascii() or text[at].upper() != character:
            raise Broken(at)
        at += 1
    return at


def take_integer(text: str, at: int) -> int:
    found = INTEGER.match(text, at)
    if found:
        return found.end()
    if text[at:at + 1] in ("+", "-"):
        at += 1
    raise Broken(at)


def take_string(text: str, at: int) -> int:
    at = take(text, at, '"')
    at = STRING_ITEMS.match(text, at).end()
    return take(text, at, '"')  # end of input or a character above U+FFFF: broken there


def take_copy_ranges(text: str, at: int) -> int:
    """One or more groups back to back; a "(" right after a group commits to another one."""
    while True:
        at = take(text, at, "(")
        at = take_integer(text, at)
        at = take(text, at, ",")
        at = take_integer(text, at)
        if text[at:at + 1] == ",":
            at = take_string(text, at + 1)
        at = take(text, at, ")")
        if text[at:at + 1] != "(":
            return at


def take_affix(text: str, at: int, word: str) -> int:
    """What follows the word PREFIX, SUFFIX or OVERLAY."""
    at = take(text, at, "(")
    if word == "OVERLAY":
        at = take_integer(text, at)
        at = take(text, at, ",")
        at = take_integer(text, at)
        at = take(text, at, ",")
        at = take_string(text, at)
        return take(text, at, ")")
    first = text[at:at + 1]
    if first == '"':
        at = take_string(text, at)
    elif first in ("S", "s", "R", "r"):
        at = take(text, at, "SEQ" if first in "Ss" else "RAND")
        at = take(text, at, "(")
        at = take_integer(text, at)
        at = take(text, at, ",")
        at = take_integer(text, at)
        at = take(text, at, ")")
    else:
        raise Broken(at, no_viable_alternative=True)
    return take(text, at, ")")


# --- the dispatch ---


@lru_cache(maxsize=65536)
def type_of_run(run: str) -> int:
    """The token type of a whole run of unquoted-string characters (ASCII by its nature)."""
    if run in SEPARATOR_CHARACTERS:
        return SEPARATOR_CHARACTERS[run]
    if run in KEY_LITERALS:
        return KEY_LITERALS[run]
    upper = run.upper()
    if upper in KEYWORDS:
        return KEYWORDS[upper]
    if upper in PATTERNS_WITHOUT_BLANKS:
        return PATTERNS_WITHOUT_BLANKS[upper]
    if WHOLE_INTEGER.match(run):
        return T.INTEGER
    return T.STRING_WITHOUT_QUOTES


def next_token(text: str, at: int) -> Token:
    character = text[at]

    # Words come first here only for speed: no other row begins with a character of the set.
    found = RUN.match(text, at)
    if found:
        run = found.group()
        with_blanks = VALUE_WITH_BLANKS.match(text, at)
        if with_blanks and len(with_blanks.group()) > len(run):
            value = with_blanks.group()
            return Token(PATTERNS_WITH_BLANKS[value.upper()], at, value)
        end = found.end()
        if text[end:end + 1] == "(" and run.upper() in AFFIX_WORDS:
            end = take_affix(text, end, run.upper())
            return Token(T.AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX, at, text[at:end])
        return Token(type_of_run(run), at, run)

    found = WHITESPACE.match(text, at)
    if found:
        return Token(T.WHITESPACE, at, found.group(), hidden=True)

    if character in SINGLE_CHARACTERS:
        return Token(SINGLE_CHARACTERS[character], at, character)

    if character == "/":
        found = LINE_COMMENT.match(text, at)
        if found:
            return Token(T.COMMENT, at, found.group(), hidden=True)
        if text.startswith("/*", at):
            close = text.find("*/", at + 2)
            if close < 0:
                raise Broken(len(text))
            return Token(T.COMMENT, at, text[at:close + 2], hidden=True)

    if character == '"':
        if at + 1 == len(text):
            return Token(T.QUOTE, at, character)
        return Token(T.STRING_WITH_QUOTES, at, text[at:take_string(text, at)])

    if character == "#":
        if text.startswith('"', at + 1):
            return Token(T.SEED_FLDNAME, at, text[at:take_string(text, at + 1)])
        found = RUN.match(text, at + 1)
        if found:
            return Token(T.SEED_FLDNAME, at, text[at:found.end()])

    if character == "@":
        found = RUN.match(text, at + 1)
        if found:
            return Token(T.ENV_VAR, at, text[at:found.end()])

    if character == "(":
        if SIGN_AND_DIGIT.match(text, at + 1):
            return Token(T.COPY_COL_SYNTAX, at, text[at:take_copy_ranges(text, at)])
        return Token(T.LEFT_PARENTHESIS, at, character)

    if character == "+":
        found = INTEGER.match(text, at)
        if found:
            return Token(T.INTEGER, at, found.group())

    if character > HIGHEST_CHARACTER:
        raise Broken(at)  # the catch-all's set of characters ends at U+FFFF

    return Token(T.BAD_SEP, at, character)


def tokenise(text: str) -> tuple[list[Token], Optional[Broken]]:
    """Every token, hidden ones included, without the end-of-input token; and the first broken place."""
    found: list[Token] = []
    first_broken: Optional[Broken] = None
    at = 1 if text.startswith(BYTE_ORDER_MARK) else 0
    length = len(text)
    while at < length:
        try:
            token = next_token(text, at)
            found.append(token)
            at += len(token.text)
        except Broken as broken:
            first_broken = first_broken or broken
            at = broken.offset + 1
    return found, first_broken


def end_token(text: str) -> Token:
    return Token(END_OF_INPUT, len(text), END_OF_INPUT_TEXT)
