"""Tokens to pairs: the statement rules, one table of options for each provider.

The parse does not know whether it measures or fills. It writes down in order what it was asked to store and
which trace levels it was asked to set; `recogniser` decides what becomes of them in either run.
"""

from typing import NamedTuple, Optional, Union

from lexer import Token, end_token
from vocabulary import END_OF_INPUT, T

# --- what a parse writes down ---


class Store(NamedTuple):
    key_type: int
    key_text: str
    value_type: int
    token_text: str  # quotes and escapes still in it


class SetTraceLevel(NamedTuple):
    level: str


class Unacceptable(Exception):
    """The token that does not fit."""

    def __init__(self, token: Token, no_viable_alternative: bool):
        super().__init__(token)
        self.token = token
        self.no_viable_alternative = no_viable_alternative


class BadSeparator(Exception):
    """A separator that is no comma."""


# --- options ---

STRING_VALUE = "string value"  # any single token; see `string_value`


class Option(NamedTuple):
    """keyword "=" value, stored under `key_type` unless the value itself chooses another one."""
    key_type: int
    values: Union[dict[int, int], str]  # value token type -> value type stored
    key_type_by_value: dict[int, int] = {}
    sets_trace_level: bool = False


class ListOption(NamedTuple):
    """keyword "=" "(" item { "," item } ")"; the items are stored with the keyword as prefix."""
    items: dict[int, Option]


def as_typed(*types: int) -> dict[int, int]:
    return {number: number for number in types}


INTEGER = as_typed(T.INTEGER)
QUOTED = as_typed(T.STRING_WITH_QUOTES)
YES_OR_NO = as_typed(T.PARAMVAL_YES, T.PARAMVAL_NO)

RANDOM = {T.TOKEN_RAN: T.METHOD_RANDOM, T.TOKEN_RANDOM: T.METHOD_RANDOM}
REPEATABLE = {T.TOKEN_REP: T.METHOD_MASK, T.TOKEN_REPEATABLE: T.METHOD_MASK}
HASHED = {T.TOKEN_HASH: T.METHOD_HASH}

SEED_FROM_VARIABLE = {T.ENV_VAR: T.SEED_ENVVAR}
SEED_FROM_FIELD = {T.SEED_FLDNAME: T.SEED_FLDNAME}
SEED_LITERAL = {T.STRING_WITH_QUOTES: T.SEED_LITERAL}
SEED_HMAC = {T.TOKEN_HMAC: T.SEED_HMAC}
SEED_RANDOM = {T.TOKEN_RAN: T.SEED_RANDOM, T.TOKEN_RANDOM: T.SEED_RANDOM}

DBMS_TYPES = {
    T.DBMSTYPE_ANY: 141,
    T.DBMSTYPE_QUARTELO: 145,
    T.DBMSTYPE_BRAMOLT: 146,
    T.DBMSTYPE_NONE: 147,
    T.DBMSTYPE_ODBC: 148,
    T.DBMSTYPE_SYBASE: 151,
    T.DBMSTYPE_TERADATA: 152,
    T.TOKEN_KV8: T.DBMSTYPE_KV8LUW,
    T.TOKEN_KV8LUW: T.DBMSTYPE_KV8LUW,
    T.TOKEN_KV8HRM: T.DBMSTYPE_KV8HRM,
    T.TOKEN_KVH: T.DBMSTYPE_KV8HRM,
    T.TOKEN_KV8HRM_SQL: T.DBMSTYPE_KV8HRM_SQL,
    T.TOKEN_ORA: T.DBMSTYPE_ORACLE,
    T.TOKEN_ORACLE: T.DBMSTYPE_ORACLE,
    # Deliberate: these two keep their own types; DBMSTYPE_SQLSERVER is not used.
    T.TOKEN_MSS: 291,
    T.TOKEN_SQLSERVER: 317,
}

# The value types are data-type codes. GRAPHIC and VARGRAPHIC are no data types here.
DATA_TYPES = {
    T.DATATYPE_CHAR: 1,
    T.DATATYPE_DATETIME_CHAR: 25,
    T.DATATYPE_DATETIME_SZ: 17,
    T.DATATYPE_DATETIME_VARCHAR: 26,
    T.DATATYPE_DATETIME_WCHAR: 27,
    T.DATATYPE_DATETIME_WSZ: 18,
    T.DATATYPE_DATETIME_WVARCHAR: 28,
    T.DATATYPE_DECIMAL_K48: 13,
    T.DATATYPE_DOUBLE: 19,
    T.DATATYPE_FLOAT: 20,
    T.DATATYPE_INTEGER: 9,
    T.DATATYPE_LONG_LONG: 7,
    T.DATATYPE_WCHAR: 4,
    T.DATATYPE_WVARCHAR_SZ: 6,
    T.DATATYPE_ODBC_DATE: 14,
    T.DATATYPE_ODBC_TIME: 15,
    T.DATATYPE_ODBC_TIMESTAMP: 16,
    T.DATATYPE_ORA_VARNUM: 101,
    T.DATATYPE_SMALLINT: 21,
    T.DATATYPE_TINYINT: 23,
    T.DATATYPE_U_INTEGER: 10,
    T.DATATYPE_U_LONG_LONG: 8,
    T.DATATYPE_U_SMALLINT: 22,
    T.DATATYPE_U_TINYINT: 24,
    T.DATATYPE_VARCHAR: 2,
    T.DATATYPE_VARCHAR_SZ: 3,
    T.DATATYPE_WVARCHAR: 5,
}

# Parameters inside a field definition.
PRECISION = Option(T.PARAM_FLDDEF_PRECISION, INTEGER)
SCALE = Option(T.PARAM_FLDDEF_SCALE, INTEGER)
FIELD_DEFINITION = ListOption({
    T.CMN_PARM_PRECISION: PRECISION,
    T.TOKEN_PRE: PRECISION,
    T.CMN_PARM_SCALE: SCALE,
    T.TOKEN_SCA: SCALE,
    T.TOKEN_LENGTH: Option(T.PARAM_FLDDEF_LENGTH, INTEGER),
    T.CMN_PARM_CODEPAGE: Option(T.PARAM_FLDDEF_CODEPAGE, INTEGER),
    T.CMN_PARM_DBMSTYPE: Option(T.PARAM_FLDDEF_DBMSTYPE, DBMS_TYPES),
    T.CMN_PARM_DATATYPE: Option(T.PARAM_FLDDEF_DATATYPE, DATA_TYPES),
    T.CMN_PARM_FLDNAME: Option(T.PARAM_FLDDEF_NAME, STRING_VALUE),
})

# Formats of national identifiers; their value type is always 0.
NATIONAL_FORMATS = ListOption({
    T.NID_CTRY_US: Option(T.PARAM_FMT_US, {T.NINE_X: 0, T.NID_FORMAT_US_VALUES: 0, T.THREE_C_SIX_X: 0}),
    T.NID_CTRY_CA: Option(T.PARAM_FMT_CA, {T.NINE_X: 0, T.NID_FORMAT_CA_VALUES: 0, T.THREE_C_SIX_X: 0}),
    T.NID_CTRY_UK: Option(T.PARAM_FMT_UK, {T.NINE_X: 0, T.NID_FORMAT_UK_VALUES: 0}),
    T.NID_CTRY_FR: Option(T.PARAM_FMT_FR, {T.NID_FORMAT_FR_VALUES: 0}),
    T.NID_CTRY_IT: Option(T.PARAM_FMT_IT, {T.NID_FORMAT_IT_VALUES: 0}),
    T.NID_CTRY_ES: Option(T.PARAM_FMT_ES, {T.NID_FORMAT_ES_VALUES: 0}),
})

# --- options that several providers share ---

METHOD = Option(T.CMN_PARM_METHOD, {**RANDOM, **REPEATABLE})
WHENINVALID = Option(T.CMN_PARM_WHENINVALID,
                     {T.TOKEN_PRE: T.WHENINVALID_PRESERVE, T.TOKEN_PRESERVE: T.WHENINVALID_PRESERVE})
SOURCE = Option(T.CMN_PARM_SOURCE, QUOTED)
CASE_EITHER = Option(T.CMN_PARM_CASE, as_typed(T.CASE_LOWER, T.CASE_UPPER))
CASE_UPPER = Option(T.CMN_PARM_CASE, as_typed(T.CASE_UPPER))
SEED = Option(T.CMN_PARM_SEED,
              {**SEED_FROM_VARIABLE, **SEED_FROM_FIELD, **SEED_LITERAL, **SEED_HMAC, **SEED_RANDOM})
LITERAL_OR_HMAC_SEED = Option(T.CMN_PARM_SEED, {**SEED_LITERAL, **SEED_HMAC})
INTEGER_SEED = Option(T.CMN_PARM_SEED, INTEGER)
HASH_ALGORITHM = Option(T.CMN_PARM_ALGORITHM, {T.TOKEN_DEF: T.HASH_ALGO_NATIVE,
                                               T.TOKEN_DEFAULT: T.HASH_ALGO_NATIVE,
                                               T.TOKEN_SHA256: T.HASH_ALGO_SHA256})
REMOVE = Option(T.CMN_PARM_REMOVE, QUOTED)
TRIM = Option(T.CMN_PARM_TRIM, {T.TOKEN_RIGHT: T.TRIM_RIGHT})  # deliberate: not LEFT, BOTH
WHENNULL = Option(T.CMN_PARM_WHENNULL, INTEGER)
WHENSPACE = Option(T.CMN_PARM_WHENSPACE, INTEGER)
WHENZEROLEN = Option(T.CMN_PARM_WHENZEROLEN, INTEGER)
WHENMIXED = Option(T.CMN_PARM_WHENMIXED, INTEGER)
SOURCE_DATE_FORMAT = Option(T.CMN_PARM_SRC_DATE_FORMAT, QUOTED)

FLDDEF = {T.CMN_PARM_FLDDEF: FIELD_DEFINITION}
CODE_PAGE_AND_DBMS = {
    T.CMN_PARM_CODEPAGE: Option(T.CMN_PARM_CODEPAGE, INTEGER),
    T.CMN_PARM_DBMSTYPE: Option(T.CMN_PARM_DBMSTYPE, DBMS_TYPES),
}
DISCARD_LIMIT = {T.CMN_PARM_DISCARDLIMIT: Option(T.CMN_PARM_DISCARDLIMIT, INTEGER)}
TRACE_LEVEL = {T.CMN_PARM_TRCLEVEL: Option(T.CMN_PARM_TRCLEVEL, QUOTED, sets_trace_level=True)}
SOURCE_OPTION = {T.TOKEN_SOURCE: SOURCE, T.TOKEN_SRC: SOURCE}

# The options of every provider; the swap providers do not have the discard limit.
EVERYWHERE = {**FLDDEF, **CODE_PAGE_AND_DBMS, **DISCARD_LIMIT, **TRACE_LEVEL}

# --- the providers ---

CCN = {
    T.CMN_PARM_WHENINVALID: WHENINVALID,
    T.CMN_PARM_METHOD: METHOD,
    **SOURCE_OPTION,
    T.CMN_PARM_PATTERN: Option(T.CMN_PARM_PATTERN, {
        T.SIX_C: T.ISSUER_COPYSOURCE,
        T.EIGHT_C: T.ISSUER_COPYSOURCE8,
        T.FOUR_C_TWO_R: T.ISSUER_RANDOMSUFFIX,
        T.FOUR_C_FOUR_R: T.ISSUER_RANDOMSUFFIX_4C4R,
        T.SIX_C_TWO_R: T.ISSUER_RANDOMSUFFIX_6C2R,
    }),
    **EVERYWHERE,
}

EML = {
    T.CMN_PARM_WHENINVALID: WHENINVALID,
    T.CMN_PARM_METHOD: Option(T.CMN_PARM_METHOD, {**HASHED, **RANDOM, **REPEATABLE}),
    T.CMN_PARM_SEPARATOR: Option(T.CMN_PARM_SEPARATOR, as_typed(T.SEPARATOR_DOT, T.SEPARATOR_UNDERSCORE)),
    T.CMN_PARM_PARTS: Option(T.CMN_PARM_PARTS, QUOTED),
    **SOURCE_OPTION,
    T.EML_PARM_NAME1COL_FIRSTCHAR: Option(T.EML_PARM_NAME1COL_FIRSTCHAR, YES_OR_NO),
    T.EML_PARM_HASHDOMAIN: Option(T.EML_PARM_HASHDOMAIN, as_typed(
        T.HASHDOMAIN_KEEP, T.HASHDOMAIN_REGISTERED, T.HASHDOMAIN_UNREGISTERED)),
    T.EML_PARM_LITDOMAIN: Option(T.EML_PARM_LITDOMAIN, STRING_VALUE),
    T.EML_PARM_USERPREFIX: Option(T.EML_PARM_USERPREFIX, STRING_VALUE),
    T.CMN_PARM_CASE: CASE_EITHER,
    T.CMN_PARM_SEED: LITERAL_OR_HMAC_SEED,
    T.CMN_PARM_ALGORITHM: HASH_ALGORITHM,
    **EVERYWHERE,
}

NID = {
    T.CMN_PARM_SWITCH: Option(T.CMN_PARM_SWITCH, as_typed(
        T.NID_CTRY_CA, T.NID_CTRY_ES, T.NID_CTRY_FR, T.NID_CTRY_IT, T.NID_CTRY_UK, T.NID_CTRY_US)),
    T.CMN_PARM_VALIDATE: Option(T.CMN_PARM_VALIDATE, YES_OR_NO),
    T.CMN_PARM_WHENINVALID: WHENINVALID,
    T.NID_PARM_FORMAT: NATIONAL_FORMATS,
    T.CMN_PARM_METHOD: METHOD,
    **SOURCE_OPTION,
    T.NID_PARM_AREATABLE: Option(T.NID_PARM_AREATABLE, as_typed(
        T.AREATABLE_DIST, T.AREATABLE_MAXGROUP, T.AREATABLE_HRM)),
    **EVERYWHERE,
}

LANGUAGE = Option(T.AFF_PARM_LANGUAGE, QUOTED)
COL = {
    T.CMN_PARM_METHOD: Option(T.CMN_PARM_METHOD, {**HASHED, **REPEATABLE}),
    T.CMN_PARM_ALGORITHM: Option(T.CMN_PARM_ALGORITHM, {
        T.TOKEN_DEF: T.AFF_ALGO_NATIVE, T.TOKEN_DEFAULT: T.AFF_ALGO_NATIVE, T.TOKEN_FPE: T.AFF_ALGO_FPE}),
    T.AFF_PARM_KEY: Option(T.AFF_PARM_KEY, {
        T.ENV_VAR: T.KEY_ENVVAR, T.STRING_WITH_QUOTES: T.KEY_LITERAL}),
    T.AFF_PARM_TWEAKS: Option(T.AFF_PARM_TWEAKS, YES_OR_NO),
    T.AFF_PARM_ITERATIONS: Option(T.AFF_PARM_ITERATIONS, INTEGER),
    T.CMN_PARM_WHENMATCH: Option(T.CMN_PARM_WHENMATCH, as_typed(
        T.AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX, T.TOKEN_REVERSE, T.TOKEN_SHUFFLE)),
    **SOURCE_OPTION,
    T.TOKEN_LENGTH: Option(T.COL_PARM_COLLEN, as_typed(T.INTEGER, T.COLLEN_MAX)),
    T.CMN_PARM_SEED: Option(T.CMN_PARM_SEED, {**SEED_FROM_VARIABLE, **SEED_LITERAL, **SEED_RANDOM}),
    T.CMN_PARM_RULE: Option(T.CMN_PARM_RULE, {
        T.TOKEN_BIN: T.COL_PARM_COLBIN, T.TOKEN_BINARY: T.COL_PARM_COLBIN,
        T.TOKEN_NUM: T.COL_PARM_COLNUM, T.TOKEN_NUMERIC: T.COL_PARM_COLNUM,
        T.TOKEN_SCA: T.COLBIN_SCALED, T.TOKEN_SCALED: T.COLBIN_SCALED}),
    T.CMN_PARM_TRIM: TRIM,
    T.COL_PARM_COPY: Option(T.COL_PARM_COPY, {T.COPY_COL_SYNTAX: 0}),
    T.CMN_PARM_REMOVE: REMOVE,
    T.CMN_PARM_CASE: CASE_UPPER,
    T.TOKEN_CLASS: Option(T.AFF_PARM_CLASS, QUOTED),
    T.TOKEN_LANG: LANGUAGE,
    T.TOKEN_LANGUAGE: LANGUAGE,
    **EVERYWHERE,
}

HASH = {
    T.CMN_PARM_SEED: SEED,
    T.CMN_PARM_DSTFLD: Option(T.CMN_PARM_DSTFLD, STRING_VALUE),
    T.HASH_PARM_HASHMAX: Option(T.HASH_PARM_HASHMAX, INTEGER),
    T.CMN_PARM_REMOVE: REMOVE,
    T.CMN_PARM_SEPARATOR: Option(T.CMN_PARM_SEPARATOR, QUOTED),
    T.CMN_PARM_CASE: CASE_UPPER,
    T.CMN_PARM_WHENNULL: WHENNULL,
    T.CMN_PARM_WHENSPACE: WHENSPACE,
    T.CMN_PARM_WHENZEROLEN: WHENZEROLEN,
    T.CMN_PARM_WHENMIXED: WHENMIXED,
    **SOURCE_OPTION,
    T.CMN_PARM_SRC_DATE_FORMAT: SOURCE_DATE_FORMAT,
    T.CMN_PARM_ALGORITHM: HASH_ALGORITHM,
    **EVERYWHERE,
}

REPLACE = Option(T.CMN_PARM_REPLACE, QUOTED)
DESTINATION = Option(T.CMN_PARM_DESTINATION, QUOTED)
SEARCH = Option(T.LKP_PARM_SEARCH, QUOTED)
LIBRARY = Option(T.LDS_PARM_LIBRARY, {
    T.TOKEN_KV8LUW: T.LDS_LIB_KV8LUW,
    T.TOKEN_KV8HRM: T.LDS_LIB_KV8HRM,
    T.TOKEN_KV8HRM_SQL: T.LDS_LIB_KV8HRM_SQL,
    T.TOKEN_ORACLE: T.LDS_LIB_ORACLE,
    T.TOKEN_MSS: T.LDS_LIB_MSS,
    T.DBMSTYPE_ODBC: T.LDS_LIB_MSS,  # deliberate: the same library as MSS
    T.STRING_WITHOUT_QUOTES: 0,
})

REPLACE_AND_DESTINATION = {
    T.CMN_PARM_REPLACE: REPLACE,
    T.TOKEN_REP: REPLACE,
    T.TOKEN_DEST: DESTINATION,
    T.TOKEN_DESTINATION: DESTINATION,
}
TEMPORARY_DIRECTORY = {T.CMN_PARM_TMPDIR: Option(T.CMN_PARM_TMPDIR, QUOTED)}
CACHE = {
    T.LKP_PARM_CACHE: Option(T.LKP_PARM_CACHE, {
        T.PARAMVAL_NO: T.PARAMVAL_NO,
        T.TOKEN_MEM: T.LKP_CACHE_MEMORY,
        T.TOKEN_MEMORY: T.LKP_CACHE_MEMORY,
        T.TOKEN_MEMFILE: T.LKP_CACHE_MEMFILE}),
    T.LKP_PARM_CACHESIZE: Option(T.LKP_PARM_CACHESIZE, INTEGER),
}
WHEN_NOT_FOUND = {
    T.CMN_PARM_WHENNOTFOUND: Option(T.CMN_PARM_WHENNOTFOUND, {
        T.TOKEN_ERR: T.WHENNOTFOUND_ERROR,
        T.TOKEN_ERROR: T.WHENNOTFOUND_ERROR,
        T.TOKEN_PRE: T.WHENNOTFOUND_PRESERVE,
        T.TOKEN_PRESERVE: T.WHENNOTFOUND_PRESERVE}),
}
PRESERVE = {
    T.CMN_PARM_PRESERVE_NULL: Option(T.CMN_PARM_PRESERVE_NULL, QUOTED),
    T.CMN_PARM_PRESERVE_SPACES: Option(T.CMN_PARM_PRESERVE_SPACES, QUOTED),
    T.CMN_PARM_PRESERVE_ZEROLENGTH: Option(T.CMN_PARM_PRESERVE_ZEROLENGTH, QUOTED),
}
DATA_SOURCE = {
    T.TOKEN_ID: Option(T.LDS_PARM_ID, STRING_VALUE),
    T.TOKEN_LIB: LIBRARY,
    T.TOKEN_USER: Option(T.LDS_PARM_USERNAME, STRING_VALUE),
    T.TOKEN_PASS: Option(T.LDS_PARM_PASSWORD, STRING_VALUE),
    T.TOKEN_CONN: Option(T.LDS_PARM_CONNECTION_STRING, STRING_VALUE),
}

LOOKUP = {
    **REPLACE_AND_DESTINATION,
    **CACHE,
    **TEMPORARY_DIRECTORY,
    T.LKP_PARM_OPERATOR: Option(T.LKP_PARM_OPERATOR, as_typed(T.OPERATOR_AND, T.OPERATOR_OR)),
    **WHEN_NOT_FOUND,
    **PRESERVE,
    T.TOKEN_SEARCH: SEARCH,
    T.TOKEN_SRCH: SEARCH,
    **SOURCE_OPTION,
    **DATA_SOURCE,
    T.CMN_PARM_SRC_DATE_FORMAT: SOURCE_DATE_FORMAT,
    **EVERYWHERE,
}

HASHLOOKUP = {
    **REPLACE_AND_DESTINATION,
    T.CMN_PARM_SEED: LITERAL_OR_HMAC_SEED,
    T.CMN_PARM_REMOVE: REMOVE,
    T.CMN_PARM_CASE: CASE_UPPER,
    T.CMN_PARM_HASHFLD: Option(T.CMN_PARM_HASHFLD, STRING_VALUE),
    T.CMN_PARM_WHENNULL: WHENNULL,
    T.CMN_PARM_WHENSPACE: WHENSPACE,
    T.CMN_PARM_WHENZEROLEN: WHENZEROLEN,
    T.CMN_PARM_WHENMIXED: WHENMIXED,
    **CACHE,
    **TEMPORARY_DIRECTORY,
    **WHEN_NOT_FOUND,
    **PRESERVE,
    # Deliberate: all four words store the search columns here.
    T.TOKEN_SEARCH: SEARCH,
    T.TOKEN_SRCH: SEARCH,
    T.TOKEN_SOURCE: SEARCH,
    T.TOKEN_SRC: SEARCH,
    **DATA_SOURCE,
    T.CMN_PARM_SRC_DATE_FORMAT: SOURCE_DATE_FORMAT,
    T.CMN_PARM_ALGORITHM: HASH_ALGORITHM,
    **EVERYWHERE,
}

RANDOMLOOKUP = {
    **REPLACE_AND_DESTINATION,
    T.LKP_PARM_LIMIT: Option(T.LKP_PARM_LIMIT, INTEGER),
    **TEMPORARY_DIRECTORY,
    **PRESERVE,
    **DATA_SOURCE,
    **EVERYWHERE,
}

AGE = {
    T.CMN_PARM_SRC_DATE_FORMAT: SOURCE_DATE_FORMAT,
    T.CMN_PARM_DST_DATE_FORMAT: Option(T.CMN_PARM_DST_DATE_FORMAT, QUOTED),
    T.TOKEN_YEAR: Option(T.AGE_PARM_YEAR, as_typed(T.INTEGER, T.STRING_WITH_QUOTES),
                         key_type_by_value={T.STRING_WITH_QUOTES: T.AGE_PARM_SPECIFIC_YEAR}),
    T.TOKEN_MONTH: Option(T.AGE_PARM_MONTH, {T.INTEGER: 0}),
    T.TOKEN_WEEK: Option(T.AGE_PARM_WEEK, {T.INTEGER: 0}),
    T.TOKEN_DAY: Option(T.AGE_PARM_DAY, as_typed(T.INTEGER, T.DBMSTYPE_ANY),
                        key_type_by_value={T.DBMSTYPE_ANY: T.AGE_PARM_DAY_ANY}),
    T.CMN_PARM_METHOD: Option(T.CMN_PARM_METHOD, {
        T.TOKEN_CONSTRANDOM: T.METHOD_CONSTRANDOM, **RANDOM, **REPEATABLE}),
    T.AGE_PARM_PIVOT: Option(T.AGE_PARM_PIVOT, {T.INTEGER: 0}),
    T.AGE_PARM_WHENRESULTINVALID: Option(T.AGE_PARM_WHENRESULTINVALID, {
        T.TOKEN_PRE: T.AGE_WHENRESULTINVALID_PRESERVE,
        T.TOKEN_PRESERVE: T.AGE_WHENRESULTINVALID_PRESERVE}),
    **SOURCE_OPTION,
    **EVERYWHERE,
}

SWAP = {
    T.DS_PARM_SWAP_FIELD: Option(T.DS_PARM_SWAP_FIELD, QUOTED),
    T.TOKEN_LOCKED: Option(T.DS_PARM_LOCKED, YES_OR_NO),
    T.CMN_PARM_SEED: INTEGER_SEED,
    T.CMN_PARM_METHOD: METHOD,
    **FLDDEF,
    **CODE_PAGE_AND_DBMS,
    **TRACE_LEVEL,
}
CONTROL = Option(T.DS_PARM_CONTROL, QUOTED)
CLASSIFIER = Option(T.DS_PARM_CLASSIFIER, QUOTED)
DSWAP = {**SWAP, T.TOKEN_RATE: Option(T.CMN_PARM_RATE, INTEGER)}
CDSWAP = {
    **SWAP,
    T.TOKEN_CONTROL: CONTROL,
    T.TOKEN_CTL: CONTROL,
    T.TOKEN_CLASS: CLASSIFIER,
    T.TOKEN_CLASSIFIER: CLASSIFIER,
}
DDSWAP = {**SWAP, T.TOKEN_SIZE: Option(T.CMN_PARM_SIZE, INTEGER)}


class Provider(NamedTuple):
    value_type: int
    options: dict[int, Union[Option, ListOption]]


# Name token -> provider.
PROVIDERS = {
    T.PROVIDER_NID: Provider(T.PROVIDER_NID, NID),
    T.PROVIDER_CCN: Provider(T.PROVIDER_CCN, CCN),
    T.PROVIDER_EML: Provider(T.PROVIDER_EML, EML),
    T.PROVIDER_COL: Provider(T.PROVIDER_COL, COL),
    T.TOKEN_HASH: Provider(T.PROVIDER_HASH, HASH),
    T.PROVIDER_AGE: Provider(T.PROVIDER_AGE, AGE),
    T.PROVIDER_LOOKUP: Provider(T.PROVIDER_LOOKUP, LOOKUP),
    T.PROVIDER_HASHLOOKUP: Provider(T.PROVIDER_HASHLOOKUP, HASHLOOKUP),
    T.PROVIDER_RANDOMLOOKUP: Provider(T.PROVIDER_RANDOMLOOKUP, RANDOMLOOKUP),
    T.TOKEN_DS: Provider(T.PROVIDER_DSWAP, DSWAP),
    T.TOKEN_CDS: Provider(T.PROVIDER_CDSWAP, CDSWAP),
    T.TOKEN_DDS: Provider(T.PROVIDER_DDSWAP, DDSWAP),
}

SEPARATORS = {T.COMMA, T.BAD_SEP}
USER_LIBRARY_WORDS = {T.TOKEN_LIB, T.TOKEN_LIBRARY}
USER_VALUES = as_typed(T.INTEGER, T.STRING_WITHOUT_QUOTES, T.STRING_WITH_QUOTES)


class Parser:
    """Recursive descent over the visible tokens. The first error ends the statement by its exception."""

    def __init__(self, text: str, tokens: list[Token]):
        self.tokens = [token for token in tokens if not token.hidden]
        self.end = end_token(text)
        self.at = 0
        self.actions: list[Union[Store, SetTraceLevel]] = []

    # --- the stream ---

    def look(self, ahead: int = 0) -> Token:
        position = self.at + ahead
        return self.tokens[position] if position < len(self.tokens) else self.end

    def match(self, *types: int) -> Token:
        token = self.look()
        if token.type not in types:
            raise Unacceptable(token, no_viable_alternative=False)
        self.at += 1
        return token

    def store(self, key: Token, key_type: int, value: Token, value_type: int, prefix: str = "") -> None:
        self.actions.append(Store(key_type, prefix + key.text, value_type, value.text))

    # --- the statements ---

    def statement(self) -> None:
        first = self.look()
        if first.type == T.PROVIDER:
            if self.look(1).type != T.EQUAL:
                raise Unacceptable(self.look(1), no_viable_alternative=True)
            if self.look(2).type not in PROVIDERS:
                raise Unacceptable(self.look(2), no_viable_alternative=True)
            self.provider_statement()
        elif first.type in USER_LIBRARY_WORDS:
            self.user_provider_statement()
        elif first.type == T.CMN_PARM_TRCLEVEL:
            self.trace_level_statement()
        else:
            raise Unacceptable(first, no_viable_alternative=True)

    def provider_statement(self) -> None:
        keyword = self.match(T.PROVIDER)
        self.match(T.EQUAL)
        name = self.match(*PROVIDERS)
        provider = PROVIDERS[name.type]
        self.store(keyword, T.PROVIDER, name, provider.value_type)
        self.separated(lambda: self.option(provider.options))

    def user_provider_statement(self) -> None:
        keyword = self.match(*USER_LIBRARY_WORDS)
        self.match(T.EQUAL)
        library = self.match(T.STRING_WITHOUT_QUOTES)
        self.store(keyword, T.USER_PROVIDER_LIB, library, 0)
        self.separated(self.user_option)

    def trace_level_statement(self) -> None:
        keyword = self.match(T.CMN_PARM_TRCLEVEL)
        self.match(T.EQUAL)
        self.match(T.STRING_WITH_QUOTES)
        # Deliberate: the level passed on is the keyword, not the string.
        self.actions.append(SetTraceLevel(keyword.text))

    def separated(self, item) -> None:
        """End of input, or separators and items; what follows a complete item is left alone."""
        token = self.look()
        if token.type == END_OF_INPUT:
            return
        if token.type not in SEPARATORS:
            raise Unacceptable(token, no_viable_alternative=True)
        while self.look().type in SEPARATORS:
            separator = self.match(*SEPARATORS)
            if separator.type == T.BAD_SEP:
                raise BadSeparator
            item()

    # --- the options ---

    def option(self, options: dict[int, Union[Option, ListOption]]) -> None:
        token = self.look()
        if token.type not in options:
            raise Unacceptable(token, no_viable_alternative=True)
        option = options[token.type]
        if isinstance(option, ListOption):
            self.list_option(option)
        else:
            self.plain_option(option, prefix="")

    def user_option(self) -> None:
        token = self.look()
        if token.type == T.CMN_PARM_FLDDEF:
            self.list_option(FIELD_DEFINITION)
        elif token.type == T.STRING_WITHOUT_QUOTES:
            self.plain_option(Option(T.USER_PROVIDER_KEY, USER_VALUES), prefix="")
        else:
            raise Unacceptable(token, no_viable_alternative=True)

    def plain_option(self, option: Option, prefix: str) -> None:
        key = self.match(self.look().type)
        self.match(T.EQUAL)
        if option.values == STRING_VALUE:
            self.string_value(key, option.key_type, prefix)
            return
        value = self.match(*option.values)
        key_type = option.key_type_by_value.get(value.type, option.key_type)
        self.store(key, key_type, value, option.values[value.type], prefix)
        if option.sets_trace_level:
            self.actions.append(SetTraceLevel(value.text[1:-1]))  # quotes dropped, escapes left alone

    def list_option(self, option: ListOption) -> None:
        keyword = self.match(self.look().type)
        prefix = keyword.text + ":"
        self.match(T.EQUAL)
        self.match(T.LEFT_PARENTHESIS)
        while True:
            token = self.look()
            if token.type not in option.items:
                raise Unacceptable(token, no_viable_alternative=True)
            self.plain_option(option.items[token.type], prefix)
            if self.look().type != T.COMMA:
                break
            self.match(T.COMMA)
        self.match(T.RIGHT_PARENTHESIS)

    def string_value(self, key: Token, key_type: int, prefix: str) -> None:
        """Any real token but a quoted string counts as an unquoted one; stored first, matched second."""
        value_type = self.look().type
        if 3 < value_type < 351 and value_type != T.STRING_WITH_QUOTES:
            value_type = T.STRING_WITHOUT_QUOTES
        self.store(key, key_type, self.look(), value_type, prefix)
        if value_type not in (T.STRING_WITHOUT_QUOTES, T.STRING_WITH_QUOTES):
            raise Unacceptable(self.look(), no_viable_alternative=False)
        self.at += 1


class Parse(NamedTuple):
    actions: list[Union[Store, SetTraceLevel]]
    error: Optional[Union[Unacceptable, BadSeparator]]


def parse(text: str, tokens: list[Token]) -> Parse:
    parser = Parser(text, tokens)
    try:
        parser.statement()
    except (Unacceptable, BadSeparator) as error:
        return Parse(parser.actions, error)
    return Parse(parser.actions, None)
