"""build(): parse(build(x)) is x, and what cannot be written is refused."""
from __future__ import annotations

import pytest
from hypothesis import given, settings
from hypothesis import strategies as st

import tavoparser


def test_a_statement() -> None:
    text = tavoparser.build("hash", {"SEED": "HMAC", "DSTFLD": "a b", "algorithm": "SHA256"})
    statement = tavoparser.parse(text)
    assert statement["DSTFLD"] == "a b"
    assert statement.provider_type == tavoparser.parse("PRO=HASH, DSTFLD=x, SEED=RAN").provider_type


def test_field_definitions_and_numbers() -> None:
    text = tavoparser.build("mine", [("FLDDEF1:NAME", "X"), ("FLDDEF1:LEN", 4), ("Colour", "red")],
                            library=True)
    statement = tavoparser.parse(text)
    assert (statement["FLDDEF1:NAME"], statement["FLDDEF1:LEN"], statement["COLOUR"]) == (
        "X", "4", "red")


@pytest.mark.parametrize("provider, options", [
    ("NOPE", {}), ("HASH", {"AGLO": "SHA256"}), ("HASH", {"ALGO": "SHA1"}),
    ("HASH", {"SEED": "HMAC"}), ("HASH", {"DSTFLD": "\U0001F600", "SEED": "RAN"}),
    ("HASH", {"DSTFLD": "a\0b"}), ("HASH", {"HASHMAX": 2 ** 70}),
])
def test_what_is_refused(provider: str, options: dict[str, str | int]) -> None:
    with pytest.raises(tavoparser.BuildError) as caught:
        tavoparser.build(provider, options)
    assert str(caught.value)


def test_a_refusal_never_quotes_a_value() -> None:
    with pytest.raises(tavoparser.BuildError) as caught:
        tavoparser.build("HASH", {"DSTFLD": "X", "SEED": "hunter2\U0001F600"})
    assert "hunter2" not in str(caught.value)


@settings(max_examples=300, deadline=None)
@given(st.text(st.characters(max_codepoint=0xFFFF, blacklist_categories=("Cs",),
                             blacklist_characters="\0"), max_size=30))
def test_texts_come_back(value: str) -> None:
    try:
        text = tavoparser.build("HASH", {"DSTFLD": value, "SEED": "RAN"})
    except tavoparser.BuildError:
        return
    assert tavoparser.parse(text)["DSTFLD"] == value


def test_plain_texts_are_never_refused() -> None:
    for value in ("x", "a b", 'a"b', "ü", "=,()", "PRO", "12"):
        assert tavoparser.parse(tavoparser.build(
            "HASH", {"DSTFLD": value, "SEED": "RAN"}))["DSTFLD"] == value
