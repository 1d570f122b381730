"""The canonical layout of a statement."""
from __future__ import annotations

from ._native import ffi, lib
from ._parse import parse
from ._text import text, utf8

_SPELLINGS = {"keep": 0, "long": 1, "short": 2}


def format(statement: str, *, spelling: str = "keep", option_a_line: bool = False) -> str:
    """Lays out an accepted statement as `tavo fmt` does, without changing what it stores.

    spelling: of keywords: "keep", "long" or "short". Raises ParseError for a rejected statement.
    """
    if spelling not in _SPELLINGS:
        raise ValueError("spelling is keep, long or short")
    data = utf8(statement)
    out = ffi.new("char**")
    size = lib.tavo_lay_out(ffi.from_buffer(data), len(data), _SPELLINGS[spelling], option_a_line,
                            out)
    if out[0] == ffi.NULL:
        parse(statement)  # raises, with the reason
        raise MemoryError("no memory for the layout")
    try:
        return text(out[0], size)
    finally:
        lib.tavo_free_layout(out[0])
