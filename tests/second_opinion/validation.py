"""The validation rules of stored pairs; the result is the first violation."""

import re
from typing import NamedTuple, Optional

from vocabulary import T


class Pair(NamedTuple):
    key_type: int
    key_text: str
    value_type: int
    value_text: str


class Violation(NamedTuple):
    number: int
    key_text: Optional[str] = None  # the key named in the message, where it names one


NUMBER = re.compile(r"[+-]?[0-9]+\Z")

INT_32 = (-2**31, 2**31 - 1)
INT_64 = (-2**63, 2**63 - 1)
UNSIGNED_32 = (0, 2**32 - 1)


def convert(text: str, limits: tuple[int, int], minus_allowed: bool = True) -> Optional[int]:
    """The platform's conversion: an optional sign and digits, nothing else; None when refused."""
    if not NUMBER.match(text) or (text.startswith("-") and not minus_allowed):
        return None
    value = int(text)
    return value if limits[0] <= value <= limits[1] else None


def in_range(text: str, lowest: int, highest: int, limits: tuple[int, int] = INT_32) -> bool:
    value = convert(text, limits)
    return value is not None and lowest <= value <= highest


def trimmed(text: str) -> str:
    return text.strip(" \t")


def short_number(text: str, lowest: int, highest: int) -> bool:
    """1 to 11 characters that are a number of the range."""
    return 1 <= len(text) <= 11 and in_range(text, lowest, highest)


def age_number(text: str) -> Optional[int]:
    """At most 11 characters; one leading plus sign is skipped after they have been counted."""
    if len(text) > 11:
        return None
    return convert(text.removeprefix("+"), INT_32)


def age_number_in_range(text: str, lowest: int, highest: int) -> bool:
    value = age_number(text)
    return value is not None and lowest <= value <= highest


class Pairs:
    """Stored pairs, found by key type; the first of a type counts."""

    def __init__(self, pairs: list[Pair]):
        self.all = pairs
        self.first: dict[int, Pair] = {}
        for pair in pairs:
            self.first.setdefault(pair.key_type, pair)

    def has(self, key_type: int) -> bool:
        return key_type in self.first

    def text(self, key_type: int) -> str:
        return self.first[key_type].value_text

    def key_text(self, key_type: int) -> str:
        return self.first[key_type].key_text

    def value_type(self, key_type: int) -> Optional[int]:
        return self.first[key_type].value_type if key_type in self.first else None


# --- the providers; each returns the first broken rule, or None ---


def age(p: Pairs) -> Optional[Violation]:
    random = p.value_type(T.CMN_PARM_METHOD) in (T.METHOD_RANDOM, T.METHOD_CONSTRANDOM)
    negative_year = False
    if p.has(T.AGE_PARM_YEAR):
        if not age_number_in_range(p.text(T.AGE_PARM_YEAR), -2500, 1581):
            return Violation(7126)
        negative_year = age_number(p.text(T.AGE_PARM_YEAR)) < 0
    for key_type, number in ((T.AGE_PARM_MONTH, 7127), (T.AGE_PARM_WEEK, 7128), (T.AGE_PARM_DAY, 7129)):
        if p.has(key_type) and not age_number_in_range(p.text(key_type), -30000, 30000):
            return Violation(number)
    if p.has(T.AGE_PARM_DAY_ANY) and not random:
        return Violation(7183)
    if p.has(T.AGE_PARM_SPECIFIC_YEAR):
        year = trimmed(p.text(T.AGE_PARM_SPECIFIC_YEAR))
        if len(year) < 1 or not age_number_in_range(year, 1582, 3999):
            return Violation(7130)
    if p.has(T.AGE_PARM_PIVOT) and not age_number_in_range(p.text(T.AGE_PARM_PIVOT), 0, 99):
        return Violation(7131)
    if p.has(T.AGE_PARM_SPECIFIC_YEAR):
        if p.has(T.AGE_PARM_YEAR):
            return Violation(7132)
        if p.has(T.AGE_PARM_MONTH):
            return Violation(7133)
        if p.has(T.AGE_PARM_WEEK):
            return Violation(7134)
        if p.has(T.AGE_PARM_DAY) or p.has(T.AGE_PARM_DAY_ANY):
            return Violation(7135)
        if random:
            return Violation(7186)
    if random and negative_year:
        return Violation(7184)
    return None


def ccn(p: Pairs) -> Optional[Violation]:
    if p.value_type(T.CMN_PARM_METHOD) == T.METHOD_RANDOM:
        if p.has(T.CMN_PARM_WHENINVALID):
            return Violation(7096)
        if p.has(T.CMN_PARM_PATTERN):
            return Violation(7106)
    return None


def dswap(p: Pairs) -> Optional[Violation]:
    return None if p.has(T.DS_PARM_SWAP_FIELD) else Violation(7151)


def cdswap(p: Pairs) -> Optional[Violation]:
    if not p.has(T.DS_PARM_SWAP_FIELD):
        return Violation(7151)
    return None if p.has(T.DS_PARM_CONTROL) else Violation(7152)


def ddswap(p: Pairs) -> Optional[Violation]:
    if not p.has(T.DS_PARM_SWAP_FIELD):
        return Violation(7151)
    return None if p.has(T.CMN_PARM_SIZE) else Violation(7153)


def col_key_is_usable(text: str) -> bool:
    """1 to 32 characters and no more than 32 bytes; 32 characters always fit the conversion's 193 bytes."""
    return 1 <= len(text) <= 32 and len(text.encode("utf-8")) < 33


def col(p: Pairs) -> Optional[Violation]:
    mask = p.value_type(T.CMN_PARM_METHOD) == T.METHOD_MASK
    fpe = p.value_type(T.CMN_PARM_ALGORITHM) == T.AFF_ALGO_FPE
    binary = p.value_type(T.CMN_PARM_RULE) in (T.COL_PARM_COLBIN, T.COLBIN_SCALED)
    numeric = p.value_type(T.CMN_PARM_RULE) == T.COL_PARM_COLNUM
    has_key, has_iterations = p.has(T.AFF_PARM_KEY), p.has(T.AFF_PARM_ITERATIONS)
    has_length, has_copy = p.has(T.COL_PARM_COLLEN), p.has(T.COL_PARM_COPY)
    rules = (
        (not p.has(T.CMN_PARM_METHOD), 7117),
        (not fpe and has_key, 7165),
        (not fpe and has_iterations, 7166),
        (not fpe and p.has(T.AFF_PARM_TWEAKS), 7167),
        (fpe and not mask, 7172),
        (fpe and mask and p.has(T.CMN_PARM_SEED), 7168),
        (fpe and mask and not has_key, 7169),
        (has_key and not col_key_is_usable(p.text(T.AFF_PARM_KEY)), 7171),
        (has_iterations and not in_range(p.text(T.AFF_PARM_ITERATIONS), 1, 99, INT_64), 7170),
        (has_length and mask and not fpe, 7118),
        (has_length and binary, 7119),
        (has_length and numeric, 7120),
        (binary and has_copy, 7121),
        (binary and p.has(T.CMN_PARM_TRIM), 7124),
        (binary and p.has(T.CMN_PARM_REMOVE), 7122),
        (binary and p.has(T.CMN_PARM_CASE), 7123),
        (numeric and has_copy, 7125),
    )
    return first_broken(rules)


def first_broken(rules) -> Optional[Violation]:
    for broken, number in rules:
        if broken:
            return Violation(number)
    return None


def eml(p: Pairs) -> Optional[Violation]:
    hashed = p.value_type(T.CMN_PARM_METHOD) == T.METHOD_HASH
    random = p.value_type(T.CMN_PARM_METHOD) == T.METHOD_RANDOM
    sha256 = p.value_type(T.CMN_PARM_ALGORITHM) == T.HASH_ALGO_SHA256
    has_domain, has_prefix = p.has(T.EML_PARM_LITDOMAIN), p.has(T.EML_PARM_USERPREFIX)
    literal = p.value_type(T.CMN_PARM_SEED) == T.SEED_LITERAL
    seed = p.text(T.CMN_PARM_SEED) if literal else ""
    seed_number = convert(seed, UNSIGNED_32, minus_allowed=False)
    rules = (
        (p.has(T.CMN_PARM_ALGORITHM) and random, 7161),
        (sha256 and not hashed, 7154),
        (p.has(T.CMN_PARM_WHENINVALID) and random, 7096),
        (has_domain and random, 7159),
        (has_domain and len(p.text(T.EML_PARM_LITDOMAIN)) > 31, 7114),
        (p.has(T.CMN_PARM_SEED) and random, 7160),
        (p.value_type(T.CMN_PARM_SEED) == T.SEED_HMAC and not sha256, 7155),
        (literal and len(seed) >= 32, 7116),
        (literal and not hashed, 7154),
        (literal and hashed and sha256 and (seed_number is None or seed_number > 2000000000), 7157),
        (p.has(T.EML_PARM_HASHDOMAIN) and random, 7158),
        (p.has(T.EML_PARM_HASHDOMAIN) and not hashed, 7154),
        (has_prefix and len(p.text(T.EML_PARM_USERPREFIX)) > 512, 7115),
        (has_prefix and hashed, 7108),
        (has_prefix and p.has(T.CMN_PARM_PARTS), 7107),
        (hashed and p.has(T.CMN_PARM_PARTS), 7109),
        (hashed and has_domain, 7112),
        (hashed and p.has(T.CMN_PARM_CASE), 7110),
        (hashed and p.has(T.EML_PARM_NAME1COL_FIRSTCHAR), 7111),
        (hashed and p.has(T.CMN_PARM_SEPARATOR), 7113),
    )
    return first_broken(rules)


def case_is_upper(p: Pairs) -> bool:
    return not p.has(T.CMN_PARM_CASE) or p.text(T.CMN_PARM_CASE).upper() in ("UP", "UPPER")


def hash_(p: Pairs) -> Optional[Violation]:
    sha256 = p.value_type(T.CMN_PARM_ALGORITHM) == T.HASH_ALGO_SHA256
    seed_type = p.value_type(T.CMN_PARM_SEED)
    rules = (
        (not case_is_upper(p), 7163),
        (not p.has(T.CMN_PARM_DSTFLD), 7144),
        (p.has(T.HASH_PARM_HASHMAX)
         and not in_range(p.text(T.HASH_PARM_HASHMAX), 0, 4294967295, INT_64), 7164),
        (seed_type == T.SEED_FLDNAME and sha256, 7156),
        (seed_type == T.SEED_HMAC and not sha256, 7155),
        (seed_type == T.SEED_LITERAL
         and not short_number(trimmed(p.text(T.CMN_PARM_SEED)), 0, 2000000000), 7136),
        (seed_type == T.SEED_RANDOM and sha256, 7156),
    )
    return first_broken(rules)


def lookup_cache(p: Pairs) -> Optional[Violation]:
    """What LOOKUP and HASHLOOKUP share: the replacement and the cache."""
    cache = p.value_type(T.LKP_PARM_CACHE) != T.PARAMVAL_NO
    if not p.has(T.CMN_PARM_REPLACE):
        return Violation(7138)
    if p.has(T.LKP_PARM_CACHESIZE) and cache:
        text = p.text(T.LKP_PARM_CACHESIZE)
        if len(text) >= 12 or not in_range(text, 0, INT_32[1]):
            return Violation(7142)
    if p.has(T.LKP_PARM_CACHESIZE) and not cache:
        return Violation(7141, p.key_text(T.LKP_PARM_CACHESIZE))
    if p.has(T.CMN_PARM_TMPDIR) and not cache:
        return Violation(7141, p.key_text(T.CMN_PARM_TMPDIR))
    return None


def lookup(p: Pairs) -> Optional[Violation]:
    if not p.has(T.LKP_PARM_SEARCH):
        return Violation(7149)
    return lookup_cache(p)


def hashlookup(p: Pairs) -> Optional[Violation]:
    if not case_is_upper(p):
        return Violation(7162)
    if not p.has(T.LKP_PARM_SEARCH):
        return Violation(7150)
    violation = lookup_cache(p)
    if violation:
        return violation
    sha256 = p.value_type(T.CMN_PARM_ALGORITHM) == T.HASH_ALGO_SHA256
    seed_type = p.value_type(T.CMN_PARM_SEED)
    if seed_type == T.SEED_HMAC and not sha256:
        return Violation(7155)
    if seed_type == T.SEED_LITERAL and not short_number(trimmed(p.text(T.CMN_PARM_SEED)), 0, 2000000000):
        return Violation(7136)
    return None


def randomlookup(p: Pairs) -> Optional[Violation]:
    if not p.has(T.CMN_PARM_REPLACE):
        return Violation(7138)
    if p.has(T.LKP_PARM_LIMIT) and not short_number(p.text(T.LKP_PARM_LIMIT), 0, 2000000000):
        return Violation(7137)
    return None


NATIONAL_FORMAT_KEYS = {T.PARAM_FMT_CA, T.PARAM_FMT_ES, T.PARAM_FMT_FR, T.PARAM_FMT_IT, T.PARAM_FMT_UK,
                        T.PARAM_FMT_US}


def nid(p: Pairs) -> Optional[Violation]:
    if not p.has(T.CMN_PARM_SWITCH):
        return Violation(7104)
    if p.value_type(T.CMN_PARM_SWITCH) != T.NID_CTRY_US and p.has(T.NID_PARM_AREATABLE):
        return Violation(7105)
    for pair in p.all[1:]:
        if pair.key_type in NATIONAL_FORMAT_KEYS and begins(pair.value_text, "<missing TAVO_PARSER_NID_FORMAT_"):
            return Violation(7173)
    if p.value_type(T.CMN_PARM_METHOD) == T.METHOD_RANDOM:
        if p.has(T.CMN_PARM_WHENINVALID):
            return Violation(7096)
        if p.value_type(T.CMN_PARM_VALIDATE) == T.PARAMVAL_YES:
            return Violation(7097)
    return None


RULES = {
    T.PROVIDER_AGE: age,
    T.PROVIDER_CCN: ccn,
    T.PROVIDER_CDSWAP: cdswap,
    T.PROVIDER_COL: col,
    T.PROVIDER_DDSWAP: ddswap,
    T.PROVIDER_DSWAP: dswap,
    T.PROVIDER_EML: eml,
    T.PROVIDER_HASH: hash_,
    T.PROVIDER_HASHLOOKUP: hashlookup,
    T.PROVIDER_LOOKUP: lookup,
    T.PROVIDER_NID: nid,
    T.PROVIDER_RANDOMLOOKUP: randomlookup,
}

# --- placeholders, before the provider's rules ---

MISSING_STRING = "missing TAVO_PARSER_STRING_WITH_QUOTES"  # deliberate: without the leading "<"
MISSING_COPY = "<missing TAVO_PARSER_COPY_COL_SYNTAX"
MISSING_INTEGER = "<missing INTEGER"

STRING_PLACEHOLDERS = {
    T.LKP_PARM_SEARCH: (MISSING_STRING, 7176),
    T.CMN_PARM_REPLACE: (MISSING_STRING, 7177),
    T.CMN_PARM_SOURCE: (MISSING_STRING, 7178),
    T.CMN_PARM_PRESERVE_NULL: (MISSING_STRING, 7179),
    T.CMN_PARM_PRESERVE_SPACES: (MISSING_STRING, 7180),
    T.CMN_PARM_PRESERVE_ZEROLENGTH: (MISSING_STRING, 7181),
    T.CMN_PARM_TMPDIR: (MISSING_STRING, 7182),
}
PLACEHOLDERS = {
    T.PROVIDER_LOOKUP: STRING_PLACEHOLDERS,
    T.PROVIDER_HASHLOOKUP: STRING_PLACEHOLDERS,
    T.PROVIDER_RANDOMLOOKUP: STRING_PLACEHOLDERS,
    T.PROVIDER_DSWAP: STRING_PLACEHOLDERS,
    T.PROVIDER_CDSWAP: STRING_PLACEHOLDERS,
    T.PROVIDER_DDSWAP: STRING_PLACEHOLDERS,
    T.PROVIDER_COL: {T.COL_PARM_COPY: (MISSING_COPY, 7145)},
    T.PROVIDER_AGE: {T.AGE_PARM_MONTH: (MISSING_INTEGER, 7127), T.AGE_PARM_WEEK: (MISSING_INTEGER, 7128)},
}


def begins(text: str, beginning: str) -> bool:
    return re.match(re.escape(beginning), text, re.IGNORECASE | re.ASCII) is not None


def placeholder(provider: int, pairs: list[Pair]) -> Optional[Violation]:
    looked_for = PLACEHOLDERS.get(provider)
    if not looked_for:
        return None
    for pair in pairs:
        if pair.key_type in looked_for:
            text, number = looked_for[pair.key_type]
            if begins(pair.value_text, text):
                return Violation(number, pair.key_text)
    return None


# --- field definitions, after everything else ---


def prefix_of(key_text: str) -> str:
    return key_text[:key_text.find(":") + 1].upper()


def differing(pairs: list[Pair], key_type: int, what, number: int) -> Optional[Violation]:
    """The first pair that says something else than an earlier one under the same prefix."""
    said = {}
    for pair in pairs:
        if pair.key_type == key_type:
            if said.setdefault(prefix_of(pair.key_text), what(pair)) != what(pair):
                return Violation(number, pair.key_text)
    return None


def field_definitions(pairs: list[Pair]) -> Optional[Violation]:
    return (differing(pairs, T.PARAM_FLDDEF_DATATYPE, lambda pair: pair.value_type, 7146)
            or differing(pairs, T.PARAM_FLDDEF_NAME, lambda pair: pair.value_text, 7147))


def validate(pairs: list[Pair]) -> Optional[Violation]:
    stored = Pairs(pairs)
    provider = stored.value_type(T.PROVIDER)
    if provider not in RULES:  # a user provider or a trace level: nothing is checked
        return None
    return placeholder(provider, pairs) or RULES[provider](stored) or field_definitions(pairs)
