"""Builds statements that are valid by construction from a provider and its options."""
from __future__ import annotations

from collections.abc import Iterable, Mapping
from typing import Any

from ._native import ffi, lib
from ._text import text


class BuildError(ValueError):
    """An option or value that cannot be part of a valid statement. Never quotes a value."""

    def __init__(self, problem: str, number: int) -> None:
        super().__init__(problem)
        self.number = number
        """The number of the violated rule, or 0."""


Options = Mapping[str, "str | int"] | Iterable["tuple[str, str | int]"]


def _problem(builder: Any) -> BuildError:
    return BuildError(text(lib.TAVOBuilder_GetProblem(builder)),
                      lib.TAVOBuilder_GetProblemNumber(builder))


def _terminated(value: str) -> bytes:
    data = value.encode("utf-8", "surrogatepass")
    if b"\0" in data:
        raise BuildError("value-not-accepted: no statement can hold a zero character", 0)
    return data


def _add(builder: Any, key: str, value: str | int) -> None:
    if isinstance(value, bool) or not isinstance(value, (str, int)):
        raise TypeError("a value is a text or a whole number")
    name = _terminated(key)
    if isinstance(value, int):
        if not -2 ** 63 <= value < 2 ** 63:
            raise BuildError("value-not-accepted: the number is too large", 0)
        status = lib.TAVOBuilder_AddNumber(builder, name, value)
    else:
        status = lib.TAVOBuilder_Add(builder, name, _terminated(value))
    if status == lib.TAVO_BUILD_NO_MEMORY:
        raise MemoryError("no memory for the statement")
    if status != 0:
        raise _problem(builder)


def build(provider: str, options: Options = (), *, library: bool = False) -> str:
    """Builds a statement of a provider with these options.

    provider: its name, such as "HASH", or with library=True the library of a user provider.
    options: keys in any spelling ("FLDDEF1:NAME" inside a definition) and values without the
    language's quotes and escapes. Raises BuildError for what cannot be part of a valid statement.
    """
    out = ffi.new("TAVOBuilder**")
    begin = lib.TAVOBuilder_NewLibrary if library else lib.TAVOBuilder_New
    status = begin(_terminated(provider), out)
    builder = out[0]
    try:
        if status == lib.TAVO_BUILD_NO_MEMORY:
            raise MemoryError("no memory for the statement")
        if status != 0:
            what = "unknown-provider: no provider is called that" if not library else \
                "value-not-accepted: no library can be called that"
            raise BuildError(text(lib.TAVOBuilder_GetProblem(builder)) or what, 0)
        pairs = options.items() if isinstance(options, Mapping) else options
        for key, value in pairs:
            _add(builder, key, value)
        size = lib.TAVOBuilder_GetStatement(builder, ffi.NULL, 0)
        if size == 0:
            raise _problem(builder)
        buffer = ffi.new("char[]", size)
        lib.TAVOBuilder_GetStatement(builder, buffer, size)
        return text(buffer)
    finally:
        lib.TAVOBuilder_Free(builder)
