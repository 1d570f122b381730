"""Finds everything that is wrong with a statement."""
from __future__ import annotations

from typing import Any, NamedTuple

from ._native import ffi, lib
from ._text import spellings, text, token_name

_SEVERITIES = {1: "error", 2: "warning", 3: "hint"}
_NOTHING = 0xFFFFFFFF


class Related(NamedTuple):
    """Another place that a diagnostic refers to."""

    offset: int
    length: int
    message: str


class Edit(NamedTuple):
    """Replaces `length` characters at `offset` by `text`."""

    offset: int
    length: int
    text: str


class Fix(NamedTuple):
    """A fix for a mistake."""

    title: str
    safe: bool
    """It cannot change what an accepted part of the statement means."""
    placeholder: bool
    """An edit holds text that the user must replace."""
    edits: tuple[Edit, ...]

    def apply(self, statement: str) -> str:
        """Returns the statement with the fix applied."""
        for edit in reversed(self.edits):
            statement = statement[:edit.offset] + edit.text + statement[edit.offset + edit.length:]
        return statement


class Diagnostic(NamedTuple):
    """One mistake, warning or hint."""

    rule: str
    """Its stable name, such as "unknown-option"."""
    severity: str
    """ "error", "warning" or "hint"."""
    number: int
    """The error number; 0 for a warning or a hint."""
    message: str
    """Never quotes a free-text value."""
    offset: int
    length: int
    line: int
    column: int
    recorded: bool
    """Whether this is the error that the library records."""
    expected: tuple[str, ...]
    """The expected set: spellings of keywords, names of other tokens."""
    related: tuple[Related, ...]
    fixes: tuple[Fix, ...]


def _expected(diagnostic: Any) -> tuple[str, ...]:
    found: list[str] = []
    for i in range(diagnostic.expected):
        token = lib.TAVODiagnostic_GetExpected(diagnostic, i)
        if token != _NOTHING:
            found.extend(spellings(token) or [token_name(token)])
    return tuple(found)


def _related(diagnostic: Any) -> tuple[Related, ...]:
    place = ffi.new("TAVORelatedRange*")
    found = []
    for i in range(diagnostic.related):
        if lib.TAVODiagnostic_GetRelated(diagnostic, i, place) == 0:
            found.append(Related(place.offset, place.length, text(place.message)))
    return tuple(found)


def _fixes(diagnostic: Any) -> tuple[Fix, ...]:
    record, edit = ffi.new("TAVOFix*"), ffi.new("TAVOEdit*")
    found = []
    for i in range(diagnostic.fixes):
        if lib.TAVODiagnostic_GetFix(diagnostic, i, record) != 0:
            continue
        edits = []
        for k in range(record.edits):
            if lib.TAVODiagnostic_GetEdit(diagnostic, i, k, edit) == 0:
                edits.append(Edit(edit.offset, edit.length,
                                  ffi.unpack(edit.replacement, edit.characters)))
        found.append(Fix(text(record.title), bool(record.safe), bool(record.placeholder),
                         tuple(edits)))
    return tuple(found)


class _Visit:
    """Collects the diagnostics of one visit; the library passes its handle back."""

    def __init__(self, statement: str) -> None:
        self.statement = statement
        self.found: list[Diagnostic] = []
        self.error: BaseException | None = None
        self.handle: Any = None

    def add(self, diagnostic: Any) -> None:
        before = self.statement[:diagnostic.offset]
        self.found.append(Diagnostic(
            text(diagnostic.ruleName), _SEVERITIES.get(diagnostic.severity, "hint"),
            diagnostic.number, text(diagnostic.message), diagnostic.offset, diagnostic.length,
            before.count("\n") + 1, len(before) - (before.rfind("\n") + 1) + 1,
            bool(diagnostic.recorded), _expected(diagnostic), _related(diagnostic),
            _fixes(diagnostic)))


@ffi.def_extern()  # type: ignore[misc]
def tavo_visit(diagnostic: Any, context: Any) -> int:
    visit: _Visit = ffi.from_handle(context)
    try:
        visit.add(diagnostic)
        return 0
    except BaseException as error:  # noqa: B902 - it must not cross the C frames; raised again below
        visit.error = error
        return 1


def diagnose(statement: str | bytes, *, code_page: int | None = None) -> list[Diagnostic]:
    """All diagnostics of a statement, in order of place; empty if nothing is wrong.

    Raises ValueError if the text is empty or not valid Unicode, and MemoryError.
    """
    with _library:
        if isinstance(statement, str):
            visit = _Visit(statement)
            wide = ffi.from_buffer(statement.encode("utf-32-le", "surrogatepass") or bytes(4))
            status = lib.TAVOParser_Diagnose(ffi.cast("wchar_t*", wide), len(statement),
                                             lib.tavo_visit, _keep(visit))
        else:
            data = bytes(statement)
            visit = _Visit(data.decode("latin-1" if code_page else "utf-8", "replace"))
            status = lib.TAVOParser_DiagnoseBytes(ffi.from_buffer(data), len(data), 0,
                                                  code_page or 0, lib.tavo_visit, _keep(visit))
    if visit.error is not None:
        raise visit.error
    if status == 7089:
        raise MemoryError("no memory for the diagnostics")
    if status != 0:
        raise ValueError("error %d: %s" % (status, "the statement is empty" if status == 7090
                                           else "the text is no valid Unicode"))
    return visit.found


def _keep(visit: _Visit) -> Any:
    # The handle lives as long as the visit, which the caller holds until the library returns.
    visit.handle = ffi.new_handle(visit)
    return visit.handle


class _Library:
    """Pairs Parser_Init with Parser_Term, which diagnostics of numbers need. Calls are counted."""

    def __enter__(self) -> None:
        status = lib.Parser_Init()
        if status != 0:
            raise RuntimeError("the library does not start: %d" % status)

    def __exit__(self, *_: object) -> None:
        lib.Parser_Term()


_library = _Library()
