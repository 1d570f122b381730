"""diagnose(): places, fixes, and agreement with parse()."""
from __future__ import annotations

import pytest
from hypothesis import given, settings
from hypothesis import strategies as st

import tavoparser
from corpus import all_cases

TEXTS = [case.text for case in all_cases() if case.code_page is None and case.text]


def accepted(text: str) -> bool:
    try:
        tavoparser.parse(text)
    except tavoparser.ParseError:
        return False
    return True


def test_a_slip_has_a_place_and_a_fix() -> None:
    text = "PRO=HASH, DSTFLD=ü,\n  AGLO=SHA256"
    found = tavoparser.diagnose("PRO=HASH, DSTFLD=X,\n  SEED=HMAC, AGLO=SHA256")
    assert [(d.rule, d.line, d.column) for d in found if d.severity == "error"] == [
        ("unknown-option", 2, 14)]
    assert "ALGO" in found[0].expected
    fixed = found[0].fixes[0].apply("PRO=HASH, DSTFLD=X,\n  SEED=HMAC, AGLO=SHA256")
    assert accepted(fixed)
    assert not accepted(text)


def test_a_right_statement_has_no_errors() -> None:
    assert tavoparser.diagnose("PRO=CCN, PAT=6C") == []


def test_no_text_is_an_error_of_the_call() -> None:
    with pytest.raises(ValueError):
        tavoparser.diagnose("")
    with pytest.raises(ValueError):
        tavoparser.diagnose(b"PRO=\xff")


@settings(max_examples=300, deadline=None)
@given(st.sampled_from(TEXTS), st.integers(0, 200), st.sampled_from(['', ',', '"', '(', 'ü', '=']))
def test_an_error_exactly_where_parse_rejects(text: str, at: int, put: str) -> None:
    damaged = text[:at] + put + text[at + 1:]
    if not damaged:
        return
    errors = [d for d in tavoparser.diagnose(damaged) if d.severity == "error"]
    assert bool(errors) != accepted(damaged)
    assert sum(d.recorded for d in errors) == (1 if errors else 0)
