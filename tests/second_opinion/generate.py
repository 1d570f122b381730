"""Seeded statements: valid ones, ones with one thing wrong, ones at the limits, and noise.

    python3 generate.py --count 20 --seed 1        prints class and statement, one JSON pair a line

The same seed gives the same statements. No statement is empty, none holds a NUL or a lone surrogate.
"""

import argparse
import json
import random
from typing import Iterator

from grammar import FIELD_DEFINITION, PROVIDERS, STRING_VALUE, ListOption, Option
from vocabulary import (ISSUER_PATTERNS, KEY_LITERALS, KEYWORDS, NATIONAL_IDENTIFIER_VALUES, SEPARATOR_CHARACTERS, T)

# Type -> every spelling of the fixed tokens.
SPELLINGS: dict[int, list[str]] = {}
for _spelling, _number in [*KEYWORDS.items(), *SEPARATOR_CHARACTERS.items(), *KEY_LITERALS.items()]:
    SPELLINGS.setdefault(_number, []).append(_spelling)
for _, _number, _values in ISSUER_PATTERNS + NATIONAL_IDENTIFIER_VALUES:
    SPELLINGS[_number] = list(_values)

EVERY_WORD = [word for words in SPELLINGS.values() for word in words]

STRING_CHARACTERS = "abcXYZ019 \t\n,=()'/*#@%:._-+\u00e9\u00df\u017f\u4e2d\ud7ff\uffff\\"
WORD_CHARACTERS = "abzABZ019_-.:"
NOISE = ('PROCNFLDEXTRSUM0123456789=,,=,"" ()#@/*+-._:\\\'\t\n\r\f\x0b\x01\x1f\x7f%&;!<>[]{}|~^`$?'
         "\u00a0\u00d3\u00e9\u0130\u0131\u017f\u212a\u2028\u3000\ufeff\ufffd\uffff\U00010000\U0001f600\U0010ffff")
BAD_SEPARATORS = [";", "%", "#", "@", "+", "|", "\u00e9", "\x01", "/", "*", ":", "and"]
NOT_OFTEN = {T.CMN_PARM_TRCLEVEL}
TRACE_LEVELS = ["OFF", "error", "Calls", "DETAIL", "0", "1", "2", "3"]

# Option keywords without which a provider's statement never passes its checks.
NEEDED = {
    T.TOKEN_HASH: [T.CMN_PARM_DSTFLD],
    T.PROVIDER_NID: [T.CMN_PARM_SWITCH],
    T.PROVIDER_COL: [T.CMN_PARM_METHOD],
    T.PROVIDER_LOOKUP: [T.TOKEN_SEARCH, T.CMN_PARM_REPLACE],
    T.PROVIDER_HASHLOOKUP: [T.TOKEN_SRCH, T.TOKEN_REP],
    T.PROVIDER_RANDOMLOOKUP: [T.CMN_PARM_REPLACE],
    T.TOKEN_DS: [T.DS_PARM_SWAP_FIELD],
    T.TOKEN_CDS: [T.DS_PARM_SWAP_FIELD, T.TOKEN_CTL],
    T.TOKEN_DDS: [T.DS_PARM_SWAP_FIELD, T.TOKEN_SIZE],
}

# Options that the checks look at, for dense combinations.
CHECKED = {
    T.PROVIDER_CCN: [T.CMN_PARM_METHOD, T.CMN_PARM_WHENINVALID, T.CMN_PARM_PATTERN],
    T.PROVIDER_EML: [T.CMN_PARM_METHOD, T.CMN_PARM_ALGORITHM, T.CMN_PARM_WHENINVALID, T.EML_PARM_LITDOMAIN, T.CMN_PARM_SEED,
                     T.EML_PARM_HASHDOMAIN, T.EML_PARM_USERPREFIX, T.CMN_PARM_PARTS, T.CMN_PARM_CASE,
                     T.EML_PARM_NAME1COL_FIRSTCHAR, T.CMN_PARM_SEPARATOR],
    T.PROVIDER_NID: [T.CMN_PARM_SWITCH, T.NID_PARM_AREATABLE, T.CMN_PARM_METHOD, T.CMN_PARM_WHENINVALID, T.CMN_PARM_VALIDATE,
                     T.NID_PARM_FORMAT],
    T.PROVIDER_COL: [T.CMN_PARM_METHOD, T.CMN_PARM_ALGORITHM, T.AFF_PARM_KEY, T.AFF_PARM_ITERATIONS, T.AFF_PARM_TWEAKS,
                     T.CMN_PARM_SEED, T.TOKEN_LENGTH, T.CMN_PARM_RULE, T.COL_PARM_COPY, T.CMN_PARM_TRIM, T.CMN_PARM_REMOVE,
                     T.CMN_PARM_CASE],
    T.TOKEN_HASH: [T.CMN_PARM_CASE, T.CMN_PARM_DSTFLD, T.HASH_PARM_HASHMAX, T.CMN_PARM_SEED, T.CMN_PARM_ALGORITHM],
    T.PROVIDER_LOOKUP: [T.TOKEN_SEARCH, T.CMN_PARM_REPLACE, T.LKP_PARM_CACHE, T.LKP_PARM_CACHESIZE, T.CMN_PARM_TMPDIR],
    T.PROVIDER_HASHLOOKUP: [T.CMN_PARM_CASE, T.TOKEN_SEARCH, T.CMN_PARM_REPLACE, T.LKP_PARM_CACHE, T.LKP_PARM_CACHESIZE,
                            T.CMN_PARM_TMPDIR, T.CMN_PARM_SEED, T.CMN_PARM_ALGORITHM],
    T.PROVIDER_RANDOMLOOKUP: [T.CMN_PARM_REPLACE, T.LKP_PARM_LIMIT],
    T.PROVIDER_AGE: [T.TOKEN_YEAR, T.TOKEN_MONTH, T.TOKEN_WEEK, T.TOKEN_DAY, T.AGE_PARM_PIVOT, T.CMN_PARM_METHOD],
    T.TOKEN_DS: [T.DS_PARM_SWAP_FIELD],
    T.TOKEN_CDS: [T.DS_PARM_SWAP_FIELD, T.TOKEN_CONTROL, T.TOKEN_CLASS],
    T.TOKEN_DDS: [T.DS_PARM_SWAP_FIELD, T.TOKEN_SIZE],
}

# Beginnings that lead to the rules which only some combination reaches.
BEGINNINGS = {
    T.PROVIDER_COL: [[",", "MTD", "=", "REP", ",", "ALGO", "=", "FPE"],
                     [",", "ALGO", "=", "FPE", ",", "MTD", "=", "REP", ",", "KEY", "=", "@K"],
                     [",", "MTD", "=", "HASH"],
                     [",", "MTD", "=", "HASH", ",", "RULE", "=", "SCA"],
                     [",", "RULE", "=", "NUM", ",", "MTD", "=", "HASH"]],
    T.PROVIDER_EML: [[",", "MTD", "=", "HASH", ",", "ALGO", "=", "SHA256"], [",", "MTD", "=", "HASH"], [",", "MTD", "=", "RAN"]],
    T.PROVIDER_AGE: [[",", "MTD", "=", "CONSTRANDOM"], [",", "YR", "=", '"2000"']],
    T.PROVIDER_LOOKUP: [[",", "SEARCH", "=", '"a"', ",", "REP", "=", '"b"', ",", "CACHE", "=", "NO"]],
    T.TOKEN_HASH: [[",", "DSTFLD", "=", "A", ",", "ALGO", "=", "SHA256"], [",", "DSTFLD", "=", "A"]],
    T.PROVIDER_NID: [[",", "SWI", "=", "US", ",", "MTD", "=", "RAN"]],
}

# Ends of ranges: what is inside, on and outside them.
EDGES = {
    T.TOKEN_YEAR: [-2500, 1581, 1582, 0, 1],
    T.TOKEN_MONTH: [-30000, 30000, 0],
    T.TOKEN_WEEK: [-30000, 30000, 0],
    T.TOKEN_DAY: [-30000, 30000, 0],
    T.AGE_PARM_PIVOT: [0, 99],
    T.HASH_PARM_HASHMAX: [0, 4294967295, 9223372036854775807],
    T.LKP_PARM_CACHESIZE: [0, 2147483647, 99999999999],
    T.LKP_PARM_LIMIT: [0, 2000000000, 2147483647],
    T.AFF_PARM_ITERATIONS: [1, 99, 9223372036854775807],
    T.CMN_PARM_SEED: [0, 2000000000, 2147483647, 4294967295],
}
SPECIFIC_YEARS = [1582, 3999, 2000]
LENGTH_EDGES = {
    T.EML_PARM_LITDOMAIN: 31,
    T.EML_PARM_USERPREFIX: 512,
    T.AFF_PARM_KEY: 32,
}
PLACEHOLDERS = ["missing TAVO_PARSER_STRING_WITH_QUOTES", "<missing TAVO_PARSER_STRING_WITH_QUOTES",
                "missing TAVO_PARSER_STRING_WITH_QUOTE", "MISSING tavo_parser_string_with_quotes>",
                "<missing TAVO_PARSER_COPY_COL_SYNTAX", "<missing INTEGER>"]


def takes_quotes(option) -> bool:
    if isinstance(option, ListOption):
        return False
    return option.values == STRING_VALUE or T.STRING_WITH_QUOTES in option.values


class Generator:

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.pick = self.random.choice

    def chance(self, probability: float) -> bool:
        return self.random.random() < probability

    def characters(self, alphabet: str, shortest: int, longest: int) -> str:
        return "".join(self.random.choices(alphabet, k=self.random.randint(shortest, longest)))

    # --- single tokens ---

    def in_some_case(self, word: str) -> str:
        how = self.random.random()
        if how < 0.5:
            return word
        if how < 0.7:
            return word.lower()
        if how < 0.8:
            return word.capitalize()
        return "".join(self.pick((letter.lower(), letter)) for letter in word)

    def word(self, number: int) -> str:
        spelling = self.pick(SPELLINGS[number])
        if number == T.CMN_PARM_FLDDEF and self.chance(0.7):
            spelling = self.pick(["FLDDEF", "FLDDEF1", "FLDDEF2"])
        return spelling if ":" in spelling else self.in_some_case(spelling)

    def integer(self) -> str:
        number = self.pick([0, 1, 2, 10, 42, 99, 1000, self.random.randint(0, 10**self.random.randint(1, 12))])
        return self.pick(["", "", "", "", "-", "+"]) + self.pick(["", "", "", "0", "000"]) + str(number)

    def quoted(self, inner: str = None) -> str:
        if inner is None:
            inner = self.characters(STRING_CHARACTERS, 0, self.pick([3, 8, 20]))
        inner = inner.rstrip("\\")  # a backslash before the closing quote would escape it
        if self.chance(0.15):
            at = self.random.randint(0, len(inner))
            inner = inner[:at] + '\\"' + inner[at:]
        return '"' + inner + '"'

    def unquoted(self) -> str:
        while True:
            word = self.characters(WORD_CHARACTERS, 1, self.pick([2, 6, 12]))
            if word.upper() not in KEYWORDS and not word.lstrip("-").isdigit() and word not in "._":
                return word

    def affix(self) -> str:
        numbers = self.integer() + "," + self.integer()
        kind = self.random.randrange(3)
        if kind == 0:
            return f"{self.in_some_case('OVERLAY')}({numbers},{self.quoted()})"
        word = self.in_some_case(self.pick(["PREFIX", "SUFFIX"]))
        if kind == 1:
            return f"{word}({self.quoted()})"
        return f"{word}({self.in_some_case(self.pick(['SEQ', 'RAND']))}({numbers}))"

    def copy_ranges(self) -> str:
        groups = self.random.choices([1, 2, 3], weights=[6, 3, 1])[0]
        return "".join(f"({self.integer()},{self.integer()}{',' + self.quoted() if self.chance(0.3) else ''})"
                       for _ in range(groups))

    def token(self, number: int) -> str:
        if number == T.INTEGER:
            return self.integer()
        if number == T.STRING_WITH_QUOTES:
            return self.quoted()
        if number == T.STRING_WITHOUT_QUOTES:
            return self.unquoted()
        if number == T.ENV_VAR:
            return "@" + self.unquoted()
        if number == T.SEED_FLDNAME:
            return "#" + self.pick([self.unquoted, self.quoted])()
        if number == T.AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX:
            return self.affix()
        if number == T.COPY_COL_SYNTAX:
            return self.copy_ranges()
        return self.word(number)

    def string_value(self) -> str:
        return self.pick([self.unquoted, self.unquoted, self.quoted, self.quoted, self.integer,
                          lambda: self.pick(EVERY_WORD), lambda: self.pick([",", ")", "(", "=", "%", "'", "\\", "#a", "@a"])])()

    # --- options and statements, as lists of pieces ---

    def value(self, keyword: int, option: Option) -> str:
        if option.sets_trace_level:
            return '"' + self.pick(TRACE_LEVELS) + '"' if self.chance(0.7) else '"loud"'
        if option.values == STRING_VALUE:
            return self.string_value()
        return self.token(self.pick(list(option.values)))

    def option(self, keyword: int, option) -> list[str]:
        pieces = [self.word(keyword), "="]
        if not isinstance(option, ListOption):
            return pieces + [self.value(keyword, option)]
        pieces.append("(")
        for number in range(self.random.choices([1, 2, 3, 5], weights=[4, 4, 2, 1])[0]):
            if number:
                pieces.append(",")
            item = self.pick(list(option.items))
            pieces += [self.word(item), "=", self.value(item, option.items[item])]
        return pieces + [")"]

    def provider_statement(self) -> list[str]:
        name = self.pick(list(PROVIDERS))
        options = PROVIDERS[name].options
        keywords = [keyword for keyword in options if keyword not in NOT_OFTEN or self.chance(0.1)]
        chosen = [self.pick(keywords) for _ in range(self.random.choices([0, 1, 2, 3, 5, 12], weights=[2, 6, 6, 4, 2, 1])[0])]
        if self.chance(0.85):
            chosen += NEEDED.get(name, [])
        self.random.shuffle(chosen)
        pieces = [self.word(T.PROVIDER), "=", self.word(name)]
        for keyword in chosen:
            pieces += [",", *self.option(keyword, options[keyword])]
        return pieces

    def user_statement(self) -> list[str]:
        pieces = [self.word(self.pick([T.TOKEN_LIB, T.TOKEN_LIBRARY])), "=", self.unquoted()]
        for _ in range(self.random.choices([0, 1, 2, 4], weights=[2, 3, 2, 1])[0]):
            if self.chance(0.3):
                pieces += [",", *self.option(T.CMN_PARM_FLDDEF, FIELD_DEFINITION)]
            else:
                pieces += [",", self.unquoted(), "=", self.pick([self.integer, self.unquoted, self.quoted])()]
        return pieces

    def pieces(self) -> list[str]:
        kind = self.random.random()
        if kind < 0.9:
            return self.provider_statement()
        if kind < 0.98:
            return self.user_statement()
        return [self.word(T.CMN_PARM_TRCLEVEL), "=", '"' + self.pick(TRACE_LEVELS) + '"']

    # --- pieces to text ---

    def gap(self) -> str:
        kind = self.random.random()
        if kind < 0.5:
            return ""
        if kind < 0.8:
            return " "
        if kind < 0.95:
            return self.characters(" \t\n\r\f", 1, 3)
        if kind < 0.975:
            return "/*" + self.characters('ab,="*\n\u00e9\U0001f600 ', 0, 6).replace("*/", "") + "*/"
        return "//" + self.characters('ab,="/*\u00e9\U0001f600 ', 0, 6) + self.pick("\n\r")

    def join(self, pieces: list[str]) -> str:
        if self.chance(0.3):
            text = "".join(piece + (" " if piece == "," else "") for piece in pieces)
        else:
            text = "".join(self.gap() + piece for piece in pieces) + self.gap()
        if self.chance(0.01):
            text = "\ufeff" + text
        return text

    # --- the classes ---

    def valid(self) -> str:
        text = self.join(self.pieces())
        if self.chance(0.05):
            text += " " + self.characters(WORD_CHARACTERS + " =)(", 1, 8)
        return text

    def one_piece_wrong(self, pieces: list[str]) -> str:
        at = self.random.randrange(len(pieces))
        kind = self.random.randrange(7)
        if kind == 0:
            del pieces[at]
        elif kind == 1:
            pieces.insert(at, pieces[at])
        elif kind == 2:
            other = self.random.randrange(len(pieces))
            pieces[at], pieces[other] = pieces[other], pieces[at]
        elif kind == 3:
            pieces[at] = self.pick(EVERY_WORD)
        elif kind == 4:
            pieces[at] = self.pick([self.quoted, self.unquoted, self.integer, self.affix, self.copy_ranges,
                                    lambda: "@" + self.unquoted(), lambda: "#" + self.unquoted()])()
        elif kind == 5:
            commas = [index for index, piece in enumerate(pieces) if piece == ","]
            if commas:
                pieces[self.pick(commas)] = self.pick(BAD_SEPARATORS)
            else:
                pieces.append(self.pick(BAD_SEPARATORS))
        else:  # an option that another provider may have
            options = PROVIDERS[self.pick(list(PROVIDERS))].options
            keyword = self.pick(list(options))
            pieces += [",", *self.option(keyword, options[keyword])]
        return self.join(pieces)

    def one_character_wrong(self, text: str) -> str:
        at = self.random.randrange(len(text))
        kind = self.random.randrange(4)
        if kind == 0:
            return text[:at] + text[at + 1:]
        if kind == 1:
            return text[:at] + self.pick(NOISE) + text[at:]
        if kind == 2:
            return text[:at] + self.pick(NOISE) + text[at + 1:]
        return text[:at]  # cut short

    def wrong(self) -> str:
        pieces = self.pieces()
        return self.one_piece_wrong(pieces) if self.chance(0.5) else self.one_character_wrong(self.join(pieces))

    def number_at_an_edge(self, edges: list[int]) -> str:
        number = self.pick(edges) + self.pick([-1, 0, 0, 1])
        sign = "-" if number < 0 else self.pick(["", "", "", "+", "-"])
        digits = str(abs(number))
        if self.chance(0.2):
            digits = digits.zfill(self.pick([10, 11, 12]) - len(sign))
        return sign + digits

    def quoted_number(self, edges: list[int]) -> str:
        text = self.number_at_an_edge(edges)
        if self.chance(0.3):
            text = self.characters(" \t", 0, 3) + text + self.characters(" \t", 0, 3)
        if self.chance(0.1):
            text = self.pick(["", " ", "+", "-", "++5", "+-5", "++2000", "+-2000", "1 2", "x", "0x1", "\u00a01", "1\n", "\u0661"])
        return '"' + text + '"'

    def text_at_an_edge(self, length: int) -> str:
        length += self.pick([-1, 0, 0, 1])
        alphabet = self.pick(["abc", "abc", "ab\u00e9", "\u00e9", "\u4e2d", '\\"'])
        if alphabet == '\\"':
            return '"' + '\\"' * length + '"'
        if alphabet != "abc":
            length = self.pick([length, length // 2, length // 3])
            return '"' + "".join(self.random.choices(alphabet, k=length)) + '"'
        word = "".join(self.random.choices(alphabet, k=length))
        return self.pick(['"' + word + '"', word])

    def limit_value(self, keyword: int, option) -> list[str]:
        if keyword in LENGTH_EDGES and self.chance(0.6):
            text = self.text_at_an_edge(LENGTH_EDGES[keyword])
            if keyword == T.AFF_PARM_KEY and not text.startswith('"'):
                text = "@" + text[self.pick([0, 1, 2]):]
            return [self.word(keyword), "=", text]
        if keyword in EDGES and self.chance(0.8):
            if keyword == T.TOKEN_YEAR and self.chance(0.5):
                return [self.word(keyword), "=", self.quoted_number(SPECIFIC_YEARS)]
            if keyword == T.CMN_PARM_SEED:
                text = self.quoted_number(EDGES[keyword])
                if self.chance(0.2):
                    text = self.text_at_an_edge(31)
                    text = text if text.startswith('"') else '"' + text + '"'
                return [self.word(keyword), "=", text]
            return [self.word(keyword), "=", self.number_at_an_edge(EDGES[keyword])]
        if takes_quotes(option) and self.chance(0.15):
            return [self.word(keyword), "=", self.quoted(self.pick(PLACEHOLDERS) + self.pick(["", ">", " x"]))]
        return self.option(keyword, option)

    def field_definitions(self) -> list[str]:
        pieces = []
        for _ in range(self.random.randint(1, 3)):
            pieces += [",", self.in_some_case(self.pick(["FLDDEF", "FLDDEF1", "FLDDEF1", "FLDDEF2"])), "=", "("]
            for number in range(self.random.randint(1, 3)):
                item = self.pick([["NAME", "=", self.pick(["A", "B", "a", '"A"'])],
                                  ["DT", "=", self.pick(["INT", "INTEGER", "CHAR"])],
                                  ["LEN", "=", "1"]])
                pieces += ([","] if number else []) + item
            pieces.append(")")
        return pieces

    def limits(self) -> str:
        name = self.pick(list(CHECKED))
        options = PROVIDERS[name].options
        share = self.pick([0.1, 0.2, 0.4, 0.7])
        chosen = [keyword for keyword in CHECKED[name] if self.chance(share)]
        if self.chance(0.6):
            chosen += [keyword for keyword in NEEDED.get(name, []) if keyword not in chosen]
        if name == T.PROVIDER_AGE and self.chance(0.3):
            chosen.append(T.TOKEN_YEAR)  # perhaps both kinds of year
        self.random.shuffle(chosen)
        pieces = [self.word(T.PROVIDER), "=", self.word(name)]
        if name in BEGINNINGS and self.chance(0.4):
            pieces += self.pick(BEGINNINGS[name])
        for keyword in chosen:
            pieces += [",", *self.limit_value(keyword, options[keyword])]
        if self.chance(0.15):  # a text that reads like the placeholder of a missing value
            keyword = self.pick([number for number, option in options.items() if takes_quotes(option)])
            pieces += [",", self.word(keyword), "=", self.quoted(self.pick(PLACEHOLDERS))]
        if self.chance(0.15):
            pieces += self.field_definitions()
        return self.join(pieces)

    def noise(self) -> str:
        text = self.characters(NOISE, 1, self.pick([2, 6, 20, 60]))
        if self.chance(0.5):
            return text
        before = self.join(self.pieces())
        return before + text if self.chance(0.6) else before[:self.random.randrange(len(before) + 1)] + text

    def words(self) -> str:
        """Any tokens in any order, with or without something between them."""
        makers = [lambda: self.pick(EVERY_WORD), lambda: self.in_some_case(self.pick(EVERY_WORD)), self.integer, self.quoted,
                  self.unquoted, self.affix, self.copy_ranges, lambda: self.pick('=,()"#@\'\\+%'), lambda: self.pick("=,()"),
                  lambda: "#" + self.quoted(), lambda: "@" + self.unquoted()]
        tokens = [self.pick(makers)() for _ in range(self.random.randint(1, 10))]
        before = self.random.random()
        if before < 0.3:
            tokens[:0] = [self.word(T.PROVIDER), "=", self.word(self.pick(list(PROVIDERS))), ","]
        elif before < 0.6:  # after a complete statement they are ignored
            tokens[:0] = [*self.pieces(), " "]
        return "".join(token + self.gap() for token in tokens)

    CLASSES = {"valid": 40, "wrong": 30, "limits": 18, "words": 6, "noise": 6}

    def statement(self) -> tuple[str, str]:
        """(class, text)"""
        kind = self.random.choices(list(self.CLASSES), weights=list(self.CLASSES.values()))[0]
        text = getattr(self, kind)().replace("\ufffe", "")
        return kind, text or " "


def statements(seed, count: int) -> Iterator[tuple[str, str]]:
    generator = Generator(seed)
    for _ in range(count):
        yield generator.statement()


if __name__ == "__main__":
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--count", type=int, default=20)
    arguments.add_argument("--seed", default="1")
    options = arguments.parse_args()
    for pair in statements(options.seed, options.count):
        print(json.dumps(pair, ensure_ascii=False))
