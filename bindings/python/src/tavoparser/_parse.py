"""Reads one statement."""
from __future__ import annotations

import struct
import threading
from collections.abc import Callable, Iterator, Mapping
from functools import lru_cache, partial
from typing import Any, NamedTuple, cast

from ._native import ffi, lib
from ._text import text, token_name


_REJECTED = 7148  # read, but not valid
_NO_OPTIONS = ffi.NULL


class Range(NamedTuple):
    """A part of a statement, in characters from 0."""

    offset: int
    length: int


class Place(NamedTuple):
    """A part of a statement and where it begins; line and column count from 1."""

    offset: int
    length: int
    line: int
    column: int


class Pair(NamedTuple):
    """One stored option."""

    key: str
    """As typed; inside a field definition with the definition's keyword: "FLDDEF1:NAME"."""
    key_type: int
    """The token type that identifies the option, whatever its spelling."""
    value: str
    """Without the quotes of a quoted string."""
    value_type: int
    """The token type that classifies the value, a data-type code, or 0."""
    key_offset: int
    key_length: int
    value_offset: int
    value_length: int

    @property
    def key_range(self) -> Range:
        """The keyword's range in the text."""
        return Range(self.key_offset, self.key_length)

    @property
    def value_range(self) -> Range:
        """The value's range in the text, with its quotes."""
        return Range(self.value_offset, self.value_length)

    @property
    def key_name(self) -> str:
        """The name of the key type, such as "TAVO_PARSER_PROVIDER"."""
        return token_name(self.key_type)


class Error(NamedTuple):
    """One error that the library records."""

    number: int
    message: str
    """May quote the statement, secrets included."""
    place: Place | None


class ParseError(ValueError):
    """A rejected statement. Its text holds numbers and messages that quote no values."""

    def __init__(self, status: int, errors: tuple[Error, ...], statement: bytes | str,
                 code_page: int | None) -> None:
        self.status = status
        self.errors = errors
        self._statement = statement
        self._code_page = code_page
        super().__init__(self._describe())

    @property
    def diagnostics(self) -> list[Any]:
        """Every mistake with its place, expected set and fixes; see diagnose().

        Empty if the text could not be read at all.
        """
        if self.status != _REJECTED:
            return []
        from ._diagnose import diagnose
        return diagnose(self._statement, code_page=self._code_page)

    def _describe(self) -> str:
        found = [d for d in self.diagnostics if d.severity == "error"]
        if found:
            return "; ".join("%d:%d: %s" % (d.line, d.column, d.message) for d in found)
        numbers = [error.number for error in self.errors] or [self.status]
        return ", ".join("error %d" % number for number in numbers)


class Statement(Mapping[str, str]):
    """The pairs of an accepted statement, in their order.

    As a mapping it gives values by key, ignoring case; for a repeated key, the first value. `pairs`
    has them all.
    """

    __slots__ = ("_block", "_pairs", "_by_key")

    _pairs: tuple[Pair, ...]
    _by_key: dict[str, str]

    def __init__(self, block: bytes) -> None:
        # Decoded on first use; threads that race get equal pairs.
        self._block = block

    @property
    def pairs(self) -> tuple[Pair, ...]:
        try:
            return self._pairs
        except AttributeError:
            self._pairs = _pairs_of(self._block)
            return self._pairs

    @property
    def entries(self) -> list[tuple[int, str, int, str]]:
        """All pairs in short: key type, key, value type, value. The quickest way to read them all."""
        block = self._block
        _, _, n, levels, zeros = _read_head(block)
        types = _numbers(2 * n)(block, _HEAD_SIZE)
        texts = block[_HEAD_SIZE + 4 * (8 * n + levels):].decode()
        parts = _cut(texts, block, n) if zeros else texts.split("\0", 2 * n)
        return list(zip(types, parts, types[n:], parts[n:]))

    @property
    def provider_type(self) -> int:
        """The value type of the provider, or 0 if there is none."""
        return cast(int, _HEAD.unpack_from(self._block)[1])

    @property
    def trace_levels(self) -> tuple[str, ...]:
        """The trace levels that a masking run would set; nothing sets them here."""
        _, _, count, levels, _ = _HEAD.unpack_from(self._block)
        lengths = struct.unpack_from("=%dI" % levels, self._block, _HEAD.size + 4 * 8 * count)
        end = len(self._block)
        found = []
        for length in reversed(lengths):
            found.append(self._block[end - length - 1:end - 1].decode())
            end -= length + 1
        return tuple(reversed(found))

    def _index(self) -> dict[str, str]:
        try:
            return self._by_key
        except AttributeError:
            self._by_key = {key.upper(): value for _, key, _, value in reversed(self.entries)}
            return self._by_key

    def __getitem__(self, key: str) -> str:
        if not isinstance(key, str):
            raise KeyError(key)
        return self._index()[key.upper()]

    def __iter__(self) -> Iterator[str]:
        return iter(dict.fromkeys(key.upper() for _, key, _, _ in self.entries))

    def __len__(self) -> int:
        return len(self._index())

    def find(self, key_type: int) -> Pair | None:
        """The first pair with a key type."""
        for pair in self.pairs:
            if pair.key_type == key_type:
                return pair
        return None

    def __repr__(self) -> str:
        # Without values: they may be secret, and a repr ends up in logs.
        return "<tavoparser.Statement %s>" % ", ".join(key for _, key, _, _ in self.entries)


class _Block(threading.local):
    """A thread's own buffer for results; grows with the longest result."""

    def __init__(self) -> None:
        self.memory = ffi.new("char[]", 8192)
        self.room = 8192


_block = _Block()
_read_flat = lib.tavo_read_flat
_buffer = ffi.buffer
_ACCEPTED = bytes(4)
_HEAD = struct.Struct("=5I")
_HEAD_SIZE = _HEAD.size
_read_head = _HEAD.unpack_from
# Quicker than Pair(...), and it is done for every pair of every statement.
_new_pair = cast("Callable[[tuple[Any, ...]], Pair]", partial(tuple.__new__, Pair))


@lru_cache(64)
def _numbers(count: int) -> Callable[[bytes, int], tuple[int, ...]]:
    return struct.Struct("=%dI" % count).unpack_from


def _pairs_of(block: bytes) -> tuple[Pair, ...]:
    """See build_native.py for the block."""
    _, _, n, levels, zeros = _read_head(block)
    numbers = _numbers(6 * n)(block, _HEAD_SIZE)
    texts = block[_HEAD_SIZE + 4 * (8 * n + levels):].decode()
    parts = _cut(texts, block, n) if zeros else texts.split("\0", 2 * n)
    return tuple(map(_new_pair, zip(parts, numbers, parts[n:], numbers[n:2 * n],
                                    numbers[2 * n:], numbers[3 * n:], numbers[4 * n:],
                                    numbers[5 * n:])))


def _cut(texts: str, block: bytes, n: int) -> list[str]:
    """The texts of pairs when they have zeros of their own: by their lengths."""
    parts, begin = [], 0
    for length in struct.unpack_from("%dI" % (2 * n), block, _HEAD.size + 4 * 6 * n):
        parts.append(texts[begin:begin + length])
        begin += length + 1
    return parts


def _read_errors(result: Any) -> tuple[Error, ...]:
    errors = []
    for i in range(lib.TAVOResult_CountErrors(result)):
        size = lib.TAVOResult_GetErrorMessage(result, i, ffi.NULL, 0)
        buffer = ffi.new("char[]", max(size, 1))
        lib.TAVOResult_GetErrorMessage(result, i, buffer, size)
        place = ffi.new("TAVOPlace*")
        known = lib.TAVOResult_GetErrorPlace(result, i, place) == 0
        errors.append(Error(
            lib.TAVOResult_GetErrorNumber(result, i), text(buffer),
            Place(place.offset, place.length, place.line, place.column) if known else None))
    return tuple(errors)


def parse(statement: str | bytes, *, code_page: int | None = None) -> Statement:
    """Reads a statement and returns its pairs.

    statement: a string, or bytes in UTF-8 or in code_page. Raises ParseError if it is rejected and
    MemoryError if there is no memory.
    """
    if isinstance(statement, str):
        if code_page is not None:
            raise TypeError("a code page is for bytes")
        data = statement.encode("utf-8", "surrogatepass")  # as utf8() does
    else:
        data = bytes(statement)
    options = _NO_OPTIONS
    if code_page is not None:
        options = ffi.new("TAVOReadOptions*", {
            "size": ffi.sizeof("TAVOReadOptions"), "encoding": lib.TAVO_TEXT_CODE_PAGE,
            "codePage": code_page})
    memory, room = _block.memory, _block.room
    size = _read_flat(data, len(data), options, memory, room)
    if size > room:
        _block.memory, _block.room = memory, _ = ffi.new("char[]", size), size
        size = _read_flat(data, len(data), options, memory, size)
    if size == 0:
        raise MemoryError("no memory for the result")
    block = _buffer(memory, size)[:]
    if block[:4] != _ACCEPTED:
        raise _parse_error(data, options, statement, code_page)
    return Statement(block)


def _parse_error(data: bytes, options: Any, statement: str | bytes,
                 code_page: int | None) -> ParseError:
    out = ffi.new("TAVOReadResult**")
    status = lib.TAVOParser_Read(data, len(data), options, out)
    if out[0] == ffi.NULL:
        raise MemoryError("no memory for the result")
    try:
        return ParseError(status, _read_errors(out[0]), statement, code_page)
    finally:
        lib.TAVOParser_FreeResult(out[0])
