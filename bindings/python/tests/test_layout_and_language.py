"""format(), language() and explain()."""
from __future__ import annotations

import pytest

import tavoparser
from corpus import all_cases


def test_format_is_the_command_line_s() -> None:
    assert tavoparser.format("provider=hash ,dstfld=x/*c*/, seed=hmac,algo=sha256",
                             spelling="short") == \
        "PRO=hash, DSTFLD=x /*c*/, SEED=hmac, ALGO=sha256"
    assert tavoparser.format("PRO=CCN,PAT=6C", option_a_line=True) == "PRO=CCN,\n  PAT=6C"


def test_format_keeps_what_is_stored() -> None:
    for case in all_cases()[::7]:
        if case.status != 0 or case.code_page is not None:
            continue
        laid_out = tavoparser.format(case.text)
        stored = [(p.key_type, p.value_type, p.value) for p in tavoparser.parse(laid_out).pairs]
        assert stored == [(key, kind, value) for key, _, kind, value in case.pairs], case.title
        assert tavoparser.format(laid_out) == laid_out, case.title


def test_format_refuses_what_is_wrong() -> None:
    with pytest.raises(tavoparser.ParseError):
        tavoparser.format("PRO=NOPE")
    with pytest.raises(ValueError):
        tavoparser.format("PRO=CCN", spelling="medium")


def test_the_tables_are_the_library_s() -> None:
    language = tavoparser.language()
    assert len(language.providers) == 14
    hashes = language.provider("hash")
    assert hashes is not None
    seed = hashes.option("seed")
    assert seed is not None and seed.key_type == 79
    assert any("HMAC" in value.spellings for value in seed.values)
    definition = hashes.option("FLDDEF")
    assert definition is not None
    assert any("NAME" in one.spellings for one in definition.parameters)


def test_every_example_is_right() -> None:
    for provider in tavoparser.language().providers:
        tavoparser.parse(provider.meaning.example)
        assert provider.meaning.text


def test_explain() -> None:
    assert "SHA256" in tavoparser.explain("HASH", "ALGO")
    assert "SEED" in tavoparser.explain("hash")
    with pytest.raises(KeyError):
        tavoparser.explain("NOPE")
    with pytest.raises(KeyError):
        tavoparser.explain("HASH", "NOPE")
