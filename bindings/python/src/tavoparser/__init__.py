"""The parameter statements of the masking suite: read, checked, formatted, built.

    >>> import tavoparser
    >>> statement = tavoparser.parse("PRO=CCN, PAT=6C")
    >>> statement["PAT"]
    '6C'

Everything here may be called from any thread; the interpreter lock is released while the library
works.
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
