"""Reads, checks, formats and builds the parameter statements of the masking suite.

    >>> import tavoparser
    >>> statement = tavoparser.parse("PRO=CCN, PAT=6C")
    >>> statement["PAT"]
    '6C'

All functions are thread-safe; the interpreter lock is released while the library works.
"""
from ._build import BuildError, build
from ._diagnose import Diagnostic, Edit, Fix, Related, diagnose
from ._language import Language, Meaning, Option, Provider, Rule, Value, explain, language
from ._layout import format
from ._parse import Error, Pair, ParseError, Place, Range, Statement, parse

__all__ = [
    "BuildError", "Diagnostic", "Edit", "Error", "Fix", "Language", "Meaning", "Option", "Pair",
    "ParseError", "Place", "Provider", "Range", "Related", "Rule", "Statement", "Value", "build",
    "diagnose", "explain", "format", "language", "parse",
]
