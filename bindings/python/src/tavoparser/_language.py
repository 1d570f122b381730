"""The parameter language as data, from the tables that the library runs on."""
from __future__ import annotations

from functools import lru_cache
from typing import Any, NamedTuple

from ._native import ffi, lib
from ._text import spellings, text, token_name

_NO_PARAMETER = 0xFFFFFFFF


class Meaning(NamedTuple):
    """What something is for, and an example."""

    text: str
    example: str


class Value(NamedTuple):
    """A value that an option accepts."""

    spellings: tuple[str, ...]
    """A keyword's spellings; empty for numbers, strings and other patterns."""
    token: str
    """Its token's name, such as "INTEGER"."""
    value_type: int
    meaning: str


class Option(NamedTuple):
    """An option of a provider, or a parameter in its parentheses."""

    spellings: tuple[str, ...]
    key_type: int
    syntax: str
    """ "token": one of the values; "string": any text; "parameters": a list in parentheses."""
    values: tuple[Value, ...]
    parameters: tuple[Option, ...]
    meaning: Meaning


class Rule(NamedTuple):
    """A rule that a statement of the provider must obey."""

    number: int
    key_types: tuple[int, ...]


class Provider(NamedTuple):
    """A provider, or another kind of statement."""

    names: tuple[str, ...]
    """As written after the first keyword; for a statement without a fixed name, its keywords."""
    options: tuple[Option, ...]
    rules: tuple[Rule, ...]
    meaning: Meaning

    def option(self, name: str) -> Option | None:
        """The option with this spelling, ignoring case, or None."""
        for option in self.options:
            if name.upper() in option.spellings:
                return option
        return None


class Language(NamedTuple):
    """The whole language."""

    providers: tuple[Provider, ...]

    def provider(self, name: str) -> Provider | None:
        """The provider with this name, ignoring case, or None."""
        for provider in self.providers:
            if name.upper() in provider.names:
                return provider
        return None


_SYNTAXES = {0: "token", 1: "string", 2: "parameters"}


def _words(types: Any) -> tuple[str, ...]:
    return tuple(word for token in types if token for word in spellings(token))


def _values(statement: int, option: int, parameter: int) -> tuple[Value, ...]:
    info = ffi.new("TAVOValueInfo*")
    found: list[Value] = []
    while lib.TAVOLanguage_GetValue(statement, option, parameter, len(found), info) == 0:
        meaning = lib.TAVOLanguage_GetValueMeaning(statement, option, parameter, len(found))
        found.append(Value(tuple(spellings(info.tokenType)), token_name(info.tokenType),
                           info.valueType, text(meaning)))
    return tuple(found)


def _option(statement: int, option: int, parameter: int) -> Option | None:
    info = ffi.new("TAVOOptionInfo*")
    if lib.TAVOLanguage_GetOption(statement, option, parameter, info) != 0:
        return None
    parameters: list[Option] = []
    if parameter == _NO_PARAMETER:
        while (inner := _option(statement, option, len(parameters))) is not None:
            parameters.append(inner)
    meaning = ffi.new("TAVOMeaning*")
    known = lib.TAVOLanguage_GetOptionMeaning(statement, option, parameter, meaning) == 0
    return Option(_words(info.keywords), info.keyType, _SYNTAXES[info.syntax],
                  _values(statement, option, parameter), tuple(parameters),
                  Meaning(text(meaning.meaning), text(meaning.example)) if known
                  else Meaning("", ""))


def _rules(statement: int) -> tuple[Rule, ...]:
    info = ffi.new("TAVORuleInfo*")
    found: list[Rule] = []
    while lib.TAVOLanguage_GetRule(statement, len(found), info) == 0:
        found.append(Rule(info.number, tuple(key for key in info.keys if key)))
    return tuple(found)


@lru_cache(maxsize=1)
def language() -> Language:
    """The language's tables, read once."""
    info = ffi.new("TAVOStatementInfo*")
    providers: list[Provider] = []
    while lib.TAVOLanguage_GetStatement(len(providers), info) == 0:
        index = len(providers)
        options: list[Option] = []
        while (option := _option(index, len(options), _NO_PARAMETER)) is not None:
            options.append(option)
        meaning = ffi.new("TAVOMeaning*")
        lib.TAVOLanguage_GetStatementMeaning(index, meaning)
        providers.append(Provider(
            tuple(spellings(info.nameToken)) or _words(info.keywords), tuple(options),
            _rules(index), Meaning(text(meaning.meaning), text(meaning.example))))
    return Language(tuple(providers))


def _describe(option: Option) -> str:
    lines = [" | ".join(option.spellings) or option.syntax, "  " + option.meaning.text]
    for value in option.values:
        lines.append("  = %s  %s" % (" | ".join(value.spellings) or value.token, value.meaning))
    for parameter in option.parameters:
        lines.append("  (%s)  %s" % (" | ".join(parameter.spellings), parameter.meaning.text))
    if option.meaning.example:
        lines.append("  for example %s" % option.meaning.example)
    return "\n".join(lines)


def explain(provider: str, option: str | None = None) -> str:
    """Explains a provider or one of its options to people. Raises KeyError for unknown names."""
    found = language().provider(provider)
    if found is None:
        raise KeyError(provider)
    if option is None:
        return "\n".join([" | ".join(found.names), "  " + found.meaning.text]
                         + [_describe(one) for one in found.options])
    inner = found.option(option)
    if inner is None:
        raise KeyError(option)
    return _describe(inner)
