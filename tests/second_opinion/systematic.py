"""Every word in every place: statements that leave no cell of the tables to chance.

    python3 systematic.py | wc -l         how many there are

An option that a provider does not have gets one value only, for it fails at its keyword whatever follows.
"""

import json
from typing import Iterator

from generate import SPELLINGS
from grammar import FIELD_DEFINITION, NATIONAL_FORMATS, PROVIDERS, USER_LIBRARY_WORDS, ListOption

WORDS = sorted({word for words in SPELLINGS.values() for word in words} - {f"FLDDEF{number}" for number in range(3, 99)})

# One of every token that is no fixed word.
OTHER_TOKENS = ["1", "-1", "+1", "0001", "free", "a.b", '"quoted"', '"a\\"b"', '""', "@ENV", "#field", '#"a b"', "(1,2)",
                '(1,2,"x")(3,4)', 'PREFIX("x")', "SUFFIX(SEQ(1,2))", 'OVERLAY(1,2,"x")', "PREFIX(RAND(1,2))", ",", "=", "(", ")",
                "'", "\\", '"', "%", "/", "*", "+", "#", "@", ""]
VALUES = WORDS + OTHER_TOKENS
NAMES = {number: SPELLINGS[number][0] for number in PROVIDERS}
SAMPLE_FIELD = "FLDDEF1"


def tops() -> Iterator[str]:
    """The first three tokens."""
    for value in VALUES:
        yield value + "=CCN"
        yield "PRO" + (value if value in OTHER_TOKENS else " " + value) + "CCN"
        yield "PRO=" + value
        yield "PROVIDER=" + value + ","
        for library in USER_LIBRARY_WORDS:
            yield SPELLINGS[library][0] + "=" + value
        yield "TRCLEVEL=" + value


def options() -> Iterator[str]:
    """Every option keyword after every provider, each with every value where the provider has it."""
    for name, provider in PROVIDERS.items():
        start = f"PRO={NAMES[name]},"
        for value in OTHER_TOKENS:
            yield start + value + "=1"
        for number, spellings in SPELLINGS.items():
            for spelling in spellings:
                if spelling not in WORDS:
                    continue
                if number not in provider.options:
                    yield start + spelling + "=1"
                elif not isinstance(provider.options[number], ListOption):
                    for value in VALUES:
                        yield f"{start}{spelling}={value}"
                    yield f"{start}{spelling} 1"
                else:
                    for value in OTHER_TOKENS:
                        yield f"{start}{spelling}={value}"


def lists() -> Iterator[str]:
    """Every item of the two kinds of list with every value, and every other word in an item's place."""
    for start, items in ((f"PRO=CCN,{SAMPLE_FIELD}=(", FIELD_DEFINITION.items), ("PRO=NID,FMT=(", NATIONAL_FORMATS.items)):
        for word in WORDS:
            yield start + word + "=1)"
        for number in items:
            for spelling in SPELLINGS[number]:
                for value in VALUES:
                    yield f"{start}{spelling}={value})"
                    yield f"{start}{spelling}={value}"
                for separator in OTHER_TOKENS:
                    yield f"{start}LEN=1{separator}{spelling}=1)"
    for number in range(0, 130):
        yield f"PRO=CCN,FLDDEF{number}=(LEN=1)"
        yield f"PRO=CCN,FLDDEF0{number}=(LEN=1)"


def user_pairs() -> Iterator[str]:
    for value in VALUES:
        yield f"LIB=own,{value}=1"
        yield f"LIB=own,key={value}"
        yield f"LIB=own,key{value}1"
        yield f"LIB=own{value}key=1"


def separators() -> Iterator[str]:
    """Every token in a separator's place, at the first option and at a later one."""
    for name in NAMES.values():
        for value in OTHER_TOKENS:
            yield f"PRO={name} {value} CP=1"
            yield f"PRO={name},CP=1 {value} CP=2"
    for value in WORDS:
        yield f"PRO=CCN {value} CP=1"
        yield f"PRO=CCN,CP=1 {value} CP=2"


def words() -> Iterator[str]:
    """Every word cut short, lengthened, in lower case, and before every character that may follow it."""
    for word in WORDS:
        yield word.lower()
        yield word.swapcase() + "=" + word.title()
        for end in range(1, len(word)):
            yield word[:end]
            yield word[:end] + "X" + word[end:]
        for character in '-.:_0A ,=()"#@/*+%\'\\\t\n\u00e9\U0001f600':
            yield word + character
            yield word + character + "1"


def characters() -> Iterator[str]:
    """Every character of the lowest plane but NUL, in a string, in a comment, as a value and between options."""
    for code in range(1, 0x10000):
        if not 0xD800 <= code < 0xE000:
            character = chr(code)
            yield f'PRO=EML,SRC="{character}"/*{character}*/,DOM={character},CP=1{character}CP=2'
    for character in "\U00010000\U0001f600\U0010ffff":
        for text in ("PRO=CCN{}", "{}PRO=CCN", "PRO={}CCN", 'PRO=CCN,SRC="{}"', "PRO=CCN//{}", "PRO=CCN\n{}", "#{}", "@{}", "({}",
                     "(1,2{}", '#"{}"'):
            yield text.format(character)


PARTS = {"tops": tops, "options": options, "lists": lists, "user": user_pairs, "seps": separators, "words": words,
         "chars": characters}


def statements() -> Iterator[tuple[str, str]]:
    """(class, text)"""
    for name, part in PARTS.items():
        for text in part():
            if text and not text.startswith("\ufffe"):
                yield name, text


if __name__ == "__main__":
    for pair in statements():
        print(json.dumps(pair, ensure_ascii=False))
