"""Converts strings for the library and from it."""
from __future__ import annotations

from typing import Any, cast

from ._native import ffi, lib


def utf8(statement: str) -> bytes:
    """UTF-8; lone surrogates become bytes that the library rejects rather than other text."""
    return statement.encode("utf-8", "surrogatepass")


def text(pointer: Any, size: int | None = None) -> str:
    """A string of the library; empty for a null pointer."""
    if pointer == ffi.NULL:
        return ""
    data = ffi.string(pointer) if size is None else bytes(ffi.buffer(pointer, size))
    return cast(bytes, data).decode("utf-8", "replace")


def token_name(token_type: int) -> str:
    """The name of a token type, such as "TAVO_PARSER_PROVIDER", or ""."""
    info = ffi.new("TAVOTokenInfo*")
    return text(info.name) if lib.TAVOLanguage_GetToken(token_type, info) == 0 else ""


def spellings(token_type: int) -> list[str]:
    """The spellings of a keyword, in upper case."""
    found: list[str] = []
    while True:
        spelling = lib.TAVOLanguage_GetSpelling(token_type, len(found))
        if spelling == ffi.NULL:
            return found
        found.append(text(spelling))
