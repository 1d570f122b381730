"""The words of the parameter language, a second time.

Every row is (token name, token type number, spellings). Nothing here is taken from the library's
own tables: the two lists are deliberately separate, so that a mistake in one of them shows as a
difference.
"""

from types import SimpleNamespace

# Word keywords match in either case, ASCII letters only.

# Provider statement and provider names: 14 tokens.
PROVIDER_STATEMENT_AND_PROVIDER_NAMES = [
    ("TAVO_PARSER_TOKEN_USER",            321, ["USER"]),
    ("TAVO_PARSER_PROVIDER",              230, ["PRO", "PROVIDER"]),
    ("TAVO_PARSER_PROVIDER_NID",          241, ["NID"]),
    ("TAVO_PARSER_PROVIDER_CCN",          232, ["CCN"]),
    ("TAVO_PARSER_PROVIDER_EML",          237, ["EML"]),
    ("TAVO_PARSER_PROVIDER_COL",          234, ["AFF", "AFFINITY"]),
    ("TAVO_PARSER_PROVIDER_AGE",          231, ["AGE"]),
    ("TAVO_PARSER_TOKEN_HASH",            277, ["HASH"]),
    ("TAVO_PARSER_PROVIDER_LOOKUP",       240, ["LOOKUP", "LKP"]),
    ("TAVO_PARSER_PROVIDER_HASHLOOKUP",   239, ["HASH_LOOKUP", "HASH_LKP"]),
    ("TAVO_PARSER_PROVIDER_RANDOMLOOKUP", 242, ["RANDOM_LOOKUP", "RAN_LKP"]),
    ("TAVO_PARSER_TOKEN_DS",              273, ["DS"]),
    ("TAVO_PARSER_TOKEN_CDS",             255, ["CDS"]),
    ("TAVO_PARSER_TOKEN_DDS",             268, ["DDS"]),
]

# Common option names: 45 tokens.
COMMON_OPTION_NAMES = [
    ("TAVO_PARSER_CMN_PARM_PATTERN",                         69, ["PAT", "PATTERN"]),
    ("TAVO_PARSER_CMN_PARM_PARTS",                           68, ["PARTS"]),
    ("TAVO_PARSER_CMN_PARM_RULE",                            77, ["RULE"]),
    ("TAVO_PARSER_CMN_PARM_SWITCH",                          92, ["SWI", "SWITCH"]),
    ("TAVO_PARSER_CMN_PARM_METHOD",                          67, ["MTD", "METHOD"]),
    ("TAVO_PARSER_CMN_PARM_FLDDEF",                          64, ["FLDDEF"]),
    ("TAVO_PARSER_CMN_PARM_PRECISION",                       70, ["PRECISION"]),
    ("TAVO_PARSER_CMN_PARM_SCALE",                           78, ["SCALE"]),
    ("TAVO_PARSER_CMN_PARM_CODEPAGE",                        57, ["CP", "CODEPAGE"]),
    ("TAVO_PARSER_CMN_PARM_DBMSTYPE",                        59, ["CPT", "CPTYPE"]),
    ("TAVO_PARSER_CMN_PARM_DATATYPE",                        58, ["DT", "DATATYPE"]),
    ("TAVO_PARSER_CMN_PARM_FLDNAME",                         65, ["NAME"]),
    ("TAVO_PARSER_CMN_PARM_VALIDATE",                        96, ["VAL", "VALIDATE"]),
    ("TAVO_PARSER_CMN_PARM_WHENINVALID",                     97, ["WHENINV", "WHENINVALID"]),
    ("TAVO_PARSER_CMN_PARM_DISCARDLIMIT",                    61, ["DLIM", "DISCARDLIMIT"]),
    ("TAVO_PARSER_CMN_PARM_WHENNULL",                       101, ["WHENNULL"]),
    ("TAVO_PARSER_CMN_PARM_WHENSPACE",                      102, ["WHENSPACE"]),
    ("TAVO_PARSER_CMN_PARM_WHENZEROLEN",                    103, ["WHENZEROLEN"]),
    ("TAVO_PARSER_CMN_PARM_WHENMIXED",                       99, ["WHENMIXED"]),
    ("TAVO_PARSER_CMN_PARM_WHENMATCH",                       98, ["WHENMATCH"]),
    ("TAVO_PARSER_CMN_PARM_WHENNOTFOUND",                   100, ["WHENNF", "WHENNOTFOUND"]),
    ("TAVO_PARSER_CMN_PARM_PRESERVE_NULL",                   71, ["PRENULL", "PRESERVENULL"]),
    ("TAVO_PARSER_CMN_PARM_PRESERVE_SPACES",                 72, ["PRESPACES", "PRESERVESPACES"]),
    ("TAVO_PARSER_CMN_PARM_PRESERVE_ZEROLENGTH",             73, ["PREZL", "PRESERVEZEROLENGTH"]),
    ("TAVO_PARSER_CMN_PARM_TMPDIR",                          93, ["TMPDIR"]),
    ("TAVO_PARSER_CMN_PARM_SEPARATOR",                       81, ["SEP", "SEPARATOR"]),
    ("TAVO_PARSER_CMN_PARM_CASE",                            56, ["CASE"]),
    ("TAVO_PARSER_CMN_PARM_SEED",                            79, ["SEED"]),
    ("TAVO_PARSER_CMN_PARM_SEEDFLD",                         80, ["SEEDFLD", "SEEDFIELD"]),
    ("TAVO_PARSER_CMN_PARM_HASHFLD",                         66, ["HASHFLD", "HASHFIELD"]),
    ("TAVO_PARSER_CMN_PARM_DSTFLD",                          62, ["DSTFLD"]),
    ("TAVO_PARSER_CMN_PARM_SPECIALVALUE_SINGLECOL_NULL",     88, ["SVNULL"]),
    ("TAVO_PARSER_CMN_PARM_SPECIALVALUE_SINGLECOL_SPACES",   89, ["SVSPACES"]),
    ("TAVO_PARSER_CMN_PARM_SPECIALVALUE_SINGLECOL_ZEROLEN",  90, ["SVZEROLEN"]),
    ("TAVO_PARSER_CMN_PARM_SPECIALVALUE_MULTICOL_NULL",      85, ["MVNULL"]),
    ("TAVO_PARSER_CMN_PARM_SPECIALVALUE_MULTICOL_SPACES",    86, ["MVSPACES"]),
    ("TAVO_PARSER_CMN_PARM_SPECIALVALUE_MULTICOL_ZEROLEN",   87, ["MVZEROLEN"]),
    ("TAVO_PARSER_CMN_PARM_SPECIALVALUE_MULTICOL_MIXED",     84, ["MVMIXED"]),
    ("TAVO_PARSER_CMN_PARM_ALGORITHM",                       55, ["ALGO", "ALGORITHM"]),
    ("TAVO_PARSER_CMN_PARM_TRIM",                            95, ["TRIM"]),
    ("TAVO_PARSER_CMN_PARM_REMOVE",                          75, ["REMOVE"]),
    ("TAVO_PARSER_CMN_PARM_REPLACE",                         76, ["REPLACE"]),
    ("TAVO_PARSER_CMN_PARM_SRC_DATE_FORMAT",                 91, ["SRCDF", "SRC_DATE_FORMAT"]),
    ("TAVO_PARSER_CMN_PARM_DST_DATE_FORMAT",                 63, ["DSTDF", "DST_DATE_FORMAT"]),
    ("TAVO_PARSER_CMN_PARM_TRCLEVEL",                        94, ["TRCLEVEL"]),
]

# Provider-specific option names: 20 tokens.
PROVIDER_SPECIFIC_OPTION_NAMES = [
    ("TAVO_PARSER_NID_PARM_FORMAT",             212, ["FMT", "FORMAT"]),
    ("TAVO_PARSER_NID_PARM_AREATABLE",          211, ["ATAB", "AREATABLE"]),
    ("TAVO_PARSER_EML_PARM_NAME1COL_FIRSTCHAR", 159, ["FCPART1"]),
    ("TAVO_PARSER_EML_PARM_HASHDOMAIN",         157, ["HASHDOM", "HASHDOMAIN"]),
    ("TAVO_PARSER_EML_PARM_LITDOMAIN",          158, ["DOM", "DOMAIN"]),
    ("TAVO_PARSER_EML_PARM_USERPREFIX",         160, ["USERPFX", "USERPREFIX"]),
    ("TAVO_PARSER_AFF_PARM_KEY",                 37, ["KEY"]),
    ("TAVO_PARSER_AFF_PARM_ITERATIONS",          36, ["ITERATIONS"]),
    ("TAVO_PARSER_AFF_PARM_TWEAKS",              39, ["TWEAKS"]),
    ("TAVO_PARSER_HASH_PARM_HASHMAX",           167, ["HASHMAX"]),
    ("TAVO_PARSER_COL_PARM_COLLEN",             107, ["COLLEN"]),
    ("TAVO_PARSER_COL_PARM_COPY",               109, ["COPY"]),
    ("TAVO_PARSER_DS_PARM_SWAP_FIELD",          156, ["SWAPFIELD", "SFLD"]),
    ("TAVO_PARSER_LKP_PARM_HASHLOOKUP",         190, ["HASHLKP"]),
    ("TAVO_PARSER_LKP_PARM_LIMIT",              191, ["LIM", "LIMIT"]),
    ("TAVO_PARSER_LKP_PARM_CACHE",              188, ["CACHE"]),
    ("TAVO_PARSER_LKP_PARM_CACHESIZE",          189, ["CACHESIZE"]),
    ("TAVO_PARSER_LKP_PARM_OPERATOR",           192, ["OP", "OPERATOR"]),
    ("TAVO_PARSER_AGE_PARM_PIVOT",               44, ["PIV", "PIVOT"]),
    ("TAVO_PARSER_AGE_PARM_WHENRESULTINVALID",   47, ["WHENRESULTINVALID"]),
]

# Option values: 26 tokens.
OPTION_VALUES = [
    ("TAVO_PARSER_COLLEN_MAX",              105, ["MAX"]),
    ("TAVO_PARSER_AREATABLE_MAXGROUP",       51, ["MAXGROUP"]),
    ("TAVO_PARSER_AREATABLE_DIST",           50, ["DIST"]),
    ("TAVO_PARSER_AREATABLE_HRM",            52, ["HRM"]),
    ("TAVO_PARSER_HASHDOMAIN_KEEP",         162, ["KEEP"]),
    ("TAVO_PARSER_HASHDOMAIN_REGISTERED",   163, ["REG", "REGISTERED"]),
    ("TAVO_PARSER_HASHDOMAIN_UNREGISTERED", 164, ["UNREG", "UNREGISTERED"]),
    ("TAVO_PARSER_CASE_UPPER",               54, ["UP", "UPPER"]),
    ("TAVO_PARSER_CASE_LOWER",               53, ["LOW", "LOWER"]),
    ("TAVO_PARSER_DBMSTYPE_SYBASE",         151, ["SYB", "SYBASE"]),
    ("TAVO_PARSER_DBMSTYPE_ODBC",           148, ["ODBC"]),
    ("TAVO_PARSER_DBMSTYPE_QUARTELO",       145, ["QTL", "QUARTELO"]),
    ("TAVO_PARSER_DBMSTYPE_TERADATA",       152, ["TD", "TERADATA"]),
    ("TAVO_PARSER_DBMSTYPE_BRAMOLT",        146, ["QJ", "BRAMOLT"]),
    ("TAVO_PARSER_DBMSTYPE_ANY",            141, ["ANY"]),
    ("TAVO_PARSER_DBMSTYPE_NONE",           147, ["NONE"]),
    ("TAVO_PARSER_NID_CTRY_US",             204, ["US"]),
    ("TAVO_PARSER_NID_CTRY_CA",             199, ["CA"]),
    ("TAVO_PARSER_NID_CTRY_UK",             203, ["UK"]),
    ("TAVO_PARSER_NID_CTRY_FR",             201, ["FR"]),
    ("TAVO_PARSER_NID_CTRY_IT",             202, ["IT"]),
    ("TAVO_PARSER_NID_CTRY_ES",             200, ["ES"]),
    ("TAVO_PARSER_PARAMVAL_YES",            216, ["Y", "YES"]),
    ("TAVO_PARSER_PARAMVAL_NO",             215, ["N", "NO"]),
    ("TAVO_PARSER_OPERATOR_AND",            213, ["AND"]),
    ("TAVO_PARSER_OPERATOR_OR",             214, ["OR"]),
]

# Data types: 29 tokens.
DATA_TYPES = [
    ("TAVO_PARSER_DATATYPE_CHAR",              112, ["CHAR"]),
    ("TAVO_PARSER_DATATYPE_VARCHAR",           135, ["VARCHAR"]),
    ("TAVO_PARSER_DATATYPE_VARCHAR_SZ",        136, ["VARCHAR_SZ"]),
    ("TAVO_PARSER_DATATYPE_WCHAR",             138, ["WCHAR"]),
    ("TAVO_PARSER_DATATYPE_WVARCHAR",          139, ["WVARCHAR"]),
    ("TAVO_PARSER_DATATYPE_WVARCHAR_SZ",       140, ["WVARCHAR_SZ"]),
    ("TAVO_PARSER_DATATYPE_LONG_LONG",         124, ["LONG_LONG"]),
    ("TAVO_PARSER_DATATYPE_U_LONG_LONG",       132, ["U_LONG_LONG"]),
    ("TAVO_PARSER_DATATYPE_INTEGER",           123, ["INT", "INTEGER"]),
    ("TAVO_PARSER_DATATYPE_U_INTEGER",         131, ["U_INT", "U_INTEGER"]),
    ("TAVO_PARSER_DATATYPE_DECIMAL_K48",       119, ["DECIMAL_K48", "DECK48"]),
    ("TAVO_PARSER_DATATYPE_ODBC_DATE",         125, ["DATE"]),
    ("TAVO_PARSER_DATATYPE_ODBC_TIME",         126, ["TIME"]),
    ("TAVO_PARSER_DATATYPE_ODBC_TIMESTAMP",    127, ["TIMESTAMP"]),
    ("TAVO_PARSER_DATATYPE_DATETIME_SZ",       114, ["DATETIME_SZ"]),
    ("TAVO_PARSER_DATATYPE_DATETIME_WSZ",      117, ["DATETIME_WSZ"]),
    ("TAVO_PARSER_DATATYPE_DOUBLE",            120, ["DOUBLE"]),
    ("TAVO_PARSER_DATATYPE_FLOAT",             121, ["FLOAT"]),
    ("TAVO_PARSER_DATATYPE_SMALLINT",          129, ["SMALLINT"]),
    ("TAVO_PARSER_DATATYPE_U_SMALLINT",        133, ["U_SMALLINT"]),
    ("TAVO_PARSER_DATATYPE_TINYINT",           130, ["TINYINT"]),
    ("TAVO_PARSER_DATATYPE_U_TINYINT",         134, ["U_TINYINT"]),
    ("TAVO_PARSER_DATATYPE_DATETIME_CHAR",     113, ["DATETIME_CHAR"]),
    ("TAVO_PARSER_DATATYPE_DATETIME_VARCHAR",  115, ["DATETIME_VARCHAR"]),
    ("TAVO_PARSER_DATATYPE_DATETIME_WCHAR",    116, ["DATETIME_WCHAR"]),
    ("TAVO_PARSER_DATATYPE_DATETIME_WVARCHAR", 118, ["DATETIME_WVARCHAR"]),
    ("TAVO_PARSER_DATATYPE_ORA_VARNUM",        128, ["ORA_VARNUM"]),
    ("TAVO_PARSER_DATATYPE_GRAPHIC",           122, ["GRAPHIC"]),
    ("TAVO_PARSER_DATATYPE_VARGRAPHIC",        137, ["VARGRAPHIC"]),
]

# General words: 67 tokens.
GENERAL_WORDS = [
    ("TAVO_PARSER_TOKEN_ID",          279, ["ID"]),
    ("TAVO_PARSER_TOKEN_LIB",         284, ["LIB"]),
    ("TAVO_PARSER_TOKEN_LIBRARY",     285, ["LIBRARY"]),
    ("TAVO_PARSER_TOKEN_PASS",        297, ["PASS"]),
    ("TAVO_PARSER_TOKEN_CONN",        258, ["CONN"]),
    ("TAVO_PARSER_TOKEN_PRE",         298, ["PRE"]),
    ("TAVO_PARSER_TOKEN_PRESERVE",    300, ["PRESERVE"]),
    ("TAVO_PARSER_TOKEN_ERR",         274, ["ERR"]),
    ("TAVO_PARSER_TOKEN_ERROR",       275, ["ERROR"]),
    ("TAVO_PARSER_TOKEN_SCA",         309, ["SCA"]),
    ("TAVO_PARSER_TOKEN_LEFT",        282, ["LEFT"]),
    ("TAVO_PARSER_TOKEN_RIGHT",       308, ["RIGHT"]),
    ("TAVO_PARSER_TOKEN_BOTH",        254, ["BOTH"]),
    ("TAVO_PARSER_TOKEN_NUM",         292, ["NUM"]),
    ("TAVO_PARSER_TOKEN_NUMERIC",     293, ["NUMERIC"]),
    ("TAVO_PARSER_TOKEN_BIN",         252, ["BIN"]),
    ("TAVO_PARSER_TOKEN_BINARY",      253, ["BINARY"]),
    ("TAVO_PARSER_TOKEN_SCALED",      310, ["SCALED"]),
    ("TAVO_PARSER_TOKEN_MEM",         287, ["MEM"]),
    ("TAVO_PARSER_TOKEN_MEMORY",      289, ["MEMORY"]),
    ("TAVO_PARSER_TOKEN_MEMFILE",     288, ["MEMFILE"]),
    ("TAVO_PARSER_TOKEN_SHA256",      313, ["SHA256"]),
    ("TAVO_PARSER_TOKEN_FPE",         276, ["FPE"]),
    ("TAVO_PARSER_TOKEN_DEF",         269, ["DEF"]),
    ("TAVO_PARSER_TOKEN_DEFAULT",     270, ["DEFAULT"]),
    ("TAVO_PARSER_TOKEN_HMAC",        278, ["HMAC"]),
    ("TAVO_PARSER_TOKEN_REVERSE",     307, ["REVERSE"]),
    ("TAVO_PARSER_TOKEN_SHUFFLE",     314, ["SHUFFLE"]),
    ("TAVO_PARSER_TOKEN_PREFIX",      299, ["PREFIX"]),
    ("TAVO_PARSER_TOKEN_SUFFIX",      320, ["SUFFIX"]),
    ("TAVO_PARSER_TOKEN_SEQ",         312, ["SEQ"]),
    ("TAVO_PARSER_TOKEN_RAND",        302, ["RAND"]),
    ("TAVO_PARSER_TOKEN_OVERLAY",     296, ["OVERLAY"]),
    ("TAVO_PARSER_TOKEN_LENGTH",      283, ["LEN", "LENGTH"]),
    ("TAVO_PARSER_TOKEN_SRC",         318, ["SRC"]),
    ("TAVO_PARSER_TOKEN_SOURCE",      316, ["SOURCE"]),
    ("TAVO_PARSER_TOKEN_LOCKED",      286, ["LOCKED"]),
    ("TAVO_PARSER_TOKEN_RATE",        304, ["RATE"]),
    ("TAVO_PARSER_TOKEN_CTL",         261, ["CTL"]),
    ("TAVO_PARSER_TOKEN_CONTROL",     260, ["CONTROL"]),
    ("TAVO_PARSER_TOKEN_CLASSIFIER",  257, ["CLASSIFIER"]),
    ("TAVO_PARSER_TOKEN_CLASS",       256, ["CLASS"]),
    ("TAVO_PARSER_TOKEN_LANG",        280, ["LANG"]),
    ("TAVO_PARSER_TOKEN_LANGUAGE",    281, ["LANGUAGE"]),
    ("TAVO_PARSER_TOKEN_SIZE",        315, ["SIZE"]),
    ("TAVO_PARSER_TOKEN_DEST",        271, ["DEST"]),
    ("TAVO_PARSER_TOKEN_DESTINATION", 272, ["DESTINATION"]),
    ("TAVO_PARSER_TOKEN_SRCH",        319, ["SRCH"]),
    ("TAVO_PARSER_TOKEN_SEARCH",      311, ["SEARCH"]),
    ("TAVO_PARSER_TOKEN_YEAR",        323, ["YR", "YEAR"]),
    ("TAVO_PARSER_TOKEN_MONTH",       290, ["MON", "MONTH"]),
    ("TAVO_PARSER_TOKEN_WEEK",        322, ["WK", "WEEK"]),
    ("TAVO_PARSER_TOKEN_DAY",         262, ["DAY"]),
    ("TAVO_PARSER_TOKEN_KV8",         263, ["KV8"]),
    ("TAVO_PARSER_TOKEN_KV8LUW",      264, ["KV8LUW"]),
    ("TAVO_PARSER_TOKEN_KVH",         267, ["KVH"]),
    ("TAVO_PARSER_TOKEN_KV8HRM",      265, ["KV8HRM"]),
    ("TAVO_PARSER_TOKEN_KV8HRM_SQL",  266, ["KV8HRMSQL"]),
    ("TAVO_PARSER_TOKEN_ORA",         294, ["ORA"]),
    ("TAVO_PARSER_TOKEN_ORACLE",      295, ["ORACLE"]),
    ("TAVO_PARSER_TOKEN_MSS",         291, ["MSS"]),
    ("TAVO_PARSER_TOKEN_SQLSERVER",   317, ["SQLSERVER"]),
    ("TAVO_PARSER_TOKEN_REP",         305, ["REP"]),
    ("TAVO_PARSER_TOKEN_REPEATABLE",  306, ["REPEATABLE"]),
    ("TAVO_PARSER_TOKEN_RAN",         301, ["RAN"]),
    ("TAVO_PARSER_TOKEN_RANDOM",      303, ["RANDOM"]),
    ("TAVO_PARSER_TOKEN_CONSTRANDOM", 259, ["CONSTRANDOM"]),
]

# Key-literal tokens: 84 tokens.
KEY_LITERAL_TOKENS = [
    ("TAVO_PARSER_PROVIDER_HASH",                  238, ["PROVIDER:HASH"]),
    ("TAVO_PARSER_PROVIDER_DSWAP",                 236, ["PROVIDER:VKT:DSWAP"]),
    ("TAVO_PARSER_PROVIDER_CDSWAP",                233, ["PROVIDER:VKT:CDSWAP"]),
    ("TAVO_PARSER_PROVIDER_DDSWAP",                235, ["PROVIDER:VKT:DDSWAP"]),
    ("TAVO_PARSER_USER_PROVIDER_LIB",              328, ["TAVO:USER_PROVIDER:LIBRARY"]),
    ("TAVO_PARSER_USER_PROVIDER_KEY",              327, ["TAVO:USER_PROVIDER:KEY"]),
    ("TAVO_PARSER_CMN_PARM_SOURCE",                 83, ["TAVO:CMN:PARM:SOURCE"]),
    ("TAVO_PARSER_KEY_LITERAL",                    175, ["TAVO:KEY:LITERAL"]),
    ("TAVO_PARSER_KEY_ENVVAR",                     174, ["TAVO:KEY:ENVVAR"]),
    ("TAVO_PARSER_SEED_LITERAL",                   246, ["TAVO:SEED:LITERAL"]),
    ("TAVO_PARSER_SEED_ENVVAR",                    243, ["TAVO:SEED:ENVVAR"]),
    ("TAVO_PARSER_SEED_RANDOM",                    247, ["TAVO:SEED:RANDOM"]),
    ("TAVO_PARSER_SEED_HMAC",                      245, ["TAVO:SEED:HMAC"]),
    ("TAVO_PARSER_HASH_ALGO_SHA256",               166, ["TAVO:HASH:ALGO:SHA256"]),
    ("TAVO_PARSER_HASH_ALGO_NATIVE",               165, ["TAVO:HASH:ALGO:NATIVE"]),
    ("TAVO_PARSER_AFF_ALGO_NATIVE",                 34, ["TAVO:AFF:ALGO:NATIVE"]),
    ("TAVO_PARSER_AFF_ALGO_FPE",                    33, ["TAVO:AFF:ALGO:FPE"]),
    ("TAVO_PARSER_COL_PARM_COLNUM",                108, ["TAVO:VAR:COLNUM"]),
    ("TAVO_PARSER_COL_PARM_COLBIN",                106, ["TAVO:VAR:COLBIN"]),
    ("TAVO_PARSER_TRIM_LEFT",                      325, ["TAVO:TRIM:LEFT"]),
    ("TAVO_PARSER_TRIM_RIGHT",                     326, ["TAVO:TRIM:RIGHT"]),
    ("TAVO_PARSER_TRIM_BOTH",                      324, ["TAVO:TRIM:BOTH"]),
    ("TAVO_PARSER_DS_PARM_LOCKED",                 155, ["PROVIDER:VKT:DS:PARM:LOCKED"]),
    ("TAVO_PARSER_CMN_PARM_RATE",                   74, ["PROVIDER:CMN:PARM:RATE"]),
    ("TAVO_PARSER_DS_PARM_CONTROL",                154, ["PROVIDER:VKT:DS:PARM:CONTROL"]),
    ("TAVO_PARSER_DS_PARM_CLASSIFIER",             153, ["PROVIDER:VKT:DS:PARM:CLASSIFIER"]),
    ("TAVO_PARSER_AFF_PARM_CLASS",                  35, ["PROVIDER:AFF:PARM:CUSTOMCLASS"]),
    ("TAVO_PARSER_AFF_PARM_LANGUAGE",               38, ["PROVIDER:AFF:PARM:LANGUAGE"]),
    ("TAVO_PARSER_CMN_PARM_SIZE",                   82, ["PROVIDER:CMN:PARM:SIZE"]),
    ("TAVO_PARSER_CMN_PARM_DESTINATION",            60, ["PROVIDER:CMN:PARM:DESTINATION"]),
    ("TAVO_PARSER_LKP_CACHE_MEMORY",               187, ["TAVO:LKP:CACHE:MEMORY"]),
    ("TAVO_PARSER_LKP_CACHE_MEMFILE",              186, ["TAVO:LKP:CACHE:MEMFILE"]),
    ("TAVO_PARSER_LKP_PARM_SEARCH",                193, ["TAVO:LKP:SEARCH"]),
    ("TAVO_PARSER_LDS_PARM_ID",                    182, ["TAVO:LKP:LDS:ID"]),
    ("TAVO_PARSER_LDS_PARM_LIBRARY",               183, ["TAVO:LKP:LDS:LIBRARY"]),
    ("TAVO_PARSER_LDS_PARM_USERNAME",              185, ["TAVO:LKP:LDS:USERNAME"]),
    ("TAVO_PARSER_LDS_PARM_PASSWORD",              184, ["TAVO:LKP:LDS:PASSWORD"]),
    ("TAVO_PARSER_LDS_PARM_CONNECTION_STRING",     181, ["TAVO:LKP:LDS:CONNECTION_STRING"]),
    ("TAVO_PARSER_AGE_PARM_YEAR",                   48, ["TAVO:AGE:YEAR"]),
    ("TAVO_PARSER_AGE_PARM_MONTH",                  43, ["TAVO:AGE:MONTH"]),
    ("TAVO_PARSER_AGE_PARM_WEEK",                   46, ["TAVO:AGE:WEEK"]),
    ("TAVO_PARSER_AGE_PARM_DAY",                    41, ["TAVO:AGE:DAY"]),
    ("TAVO_PARSER_AGE_PARM_DAY_ANY",                42, ["TAVO:AGE:DAYANY"]),
    ("TAVO_PARSER_AGE_WHENRESULTINVALID_PRESERVE",  49, ["TAVO:AGE:WHENRESULTINVALID_PRESERVE"]),
    ("TAVO_PARSER_AGE_PARM_SPECIFIC_YEAR",          45, ["TAVO:AGE:SPECIFIC_YEAR"]),
    ("TAVO_PARSER_WHENINVALID_PRESERVE",           329, ["TAVO:WHENINVALID_PRESERVE"]),
    ("TAVO_PARSER_WHENNOTFOUND_PRESERVE",          331, ["TAVO:WHENNOTFOUND_PRESERVE"]),
    ("TAVO_PARSER_WHENNOTFOUND_ERROR",             330, ["TAVO:WHENNOTFOUND_ERROR"]),
    ("TAVO_PARSER_COLBIN_SCALED",                  104, ["TAVO:COLBIN:SCALED"]),
    ("TAVO_PARSER_DBMSTYPE_KV8HRM",                143, ["TAVO:DBMSTYPE:KV8HRM"]),
    ("TAVO_PARSER_DBMSTYPE_KV8HRM_SQL",            144, ["TAVO:DBMSTYPE:KV8HRMSQL"]),
    ("TAVO_PARSER_DBMSTYPE_KV8LUW",                142, ["TAVO:DBMSTYPE:KV8LUW"]),
    ("TAVO_PARSER_DBMSTYPE_ORACLE",                149, ["TAVO:DBMSTYPE:ORACLE"]),
    ("TAVO_PARSER_DBMSTYPE_SQLSERVER",             150, ["TAVO:DBMSTYPE:SQLSERVER"]),
    ("TAVO_PARSER_LDS_LIB_KV8LUW",                 176, ["TAVO:LDS:LIB:KV8LUW"]),
    ("TAVO_PARSER_LDS_LIB_KV8HRM",                 177, ["TAVO:LDS:LIB:KV8HRM"]),
    ("TAVO_PARSER_LDS_LIB_KV8HRM_SQL",             178, ["TAVO:LDS:LIB:KV8HRMSQL"]),
    ("TAVO_PARSER_LDS_LIB_ORACLE",                 180, ["TAVO:LDS:LIB:ORACLE"]),
    ("TAVO_PARSER_LDS_LIB_MSS",                    179, ["TAVO:LDS:LIB:SQLSERVER"]),
    ("TAVO_PARSER_METHOD_MASK",                    197, ["TAVO:METHOD:MASK"]),
    ("TAVO_PARSER_METHOD_RANDOM",                  198, ["TAVO:METHOD:RANDOM"]),
    ("TAVO_PARSER_METHOD_CONSTRANDOM",             195, ["TAVO:METHOD:CONSTRANDOM"]),
    ("TAVO_PARSER_METHOD_HASH",                    196, ["TAVO:METHOD:HASH"]),
    ("TAVO_PARSER_ISSUER_RANDOMSUFFIX",            171, ["TAVO:ISSUER:RNDSFX"]),
    ("TAVO_PARSER_ISSUER_COPYSOURCE",              169, ["TAVO:ISSUER:CPYSRC"]),
    ("TAVO_PARSER_ISSUER_COPYSOURCE8",             170, ["TAVO:ISSUER:CPYSRC8"]),
    ("TAVO_PARSER_ISSUER_RANDOMSUFFIX_4C4R",       172, ["TAVO:ISSUER:RNDSFX4C4R"]),
    ("TAVO_PARSER_ISSUER_RANDOMSUFFIX_6C2R",       173, ["TAVO:ISSUER:RNDSFX6C2R"]),
    ("TAVO_PARSER_PARAM_FMT_US",                   229, ["TAVO:FMT:US"]),
    ("TAVO_PARSER_PARAM_FMT_FR",                   226, ["TAVO:FMT:FR"]),
    ("TAVO_PARSER_PARAM_FMT_ES",                   225, ["TAVO:FMT:ES"]),
    ("TAVO_PARSER_PARAM_FMT_IT",                   227, ["TAVO:FMT:IT"]),
    ("TAVO_PARSER_PARAM_FMT_UK",                   228, ["TAVO:FMT:UK"]),
    ("TAVO_PARSER_PARAM_FMT_CA",                   224, ["TAVO:FMT:CA"]),
    ("TAVO_PARSER_PARAM_FLDDEF_PRECISION",         222, ["TAVO:FLDDEF:PRECISION"]),
    ("TAVO_PARSER_PARAM_FLDDEF_SCALE",             223, ["TAVO:FLDDEF:SCALE"]),
    ("TAVO_PARSER_PARAM_FLDDEF_LENGTH",            220, ["TAVO:FLDDEF:LENGTH"]),
    ("TAVO_PARSER_PARAM_FLDDEF_CODEPAGE",          217, ["TAVO:FLDDEF:CODEPAGE"]),
    ("TAVO_PARSER_PARAM_FLDDEF_DBMSTYPE",          219, ["TAVO:FLDDEF:DBMSTYPE"]),
    ("TAVO_PARSER_PARAM_FLDDEF_DATATYPE",          218, ["TAVO:FLDDEF:DATATYPE"]),
    ("TAVO_PARSER_PARAM_FLDDEF_NAME",              221, ["TAVO:FLDDEF:NAME"]),
    ("TAVO_PARSER_COL_PARM_TRIM",                  110, ["TAVO:COL:TRIM"]),
    ("TAVO_PARSER_HASH_PARM_TRIM",                 168, ["TAVO:HASH:TRIM"]),
    ("TAVO_PARSER_LKP_PARM_TRIM",                  194, ["TAVO:LKP:TRIM"]),
]

# Issuer patterns and the two national-identifier values that several countries share.
ISSUER_PATTERNS = [
    ("FOUR_C_TWO_R",   20, ["4C2R"]),
    ("SIX_C",         339, ["6C"]),
    ("EIGHT_C",        16, ["8C"]),
    ("FOUR_C_FOUR_R",  19, ["4C4R"]),
    ("SIX_C_TWO_R",   340, ["6C2R"]),
    ("NINE_X",         31, ["9X"]),
    ("THREE_C_SIX_X", 342, ["3C6X"]),
]

# National-identifier values, each country's complete list.
NATIONAL_IDENTIFIER_VALUES = [
    ("TAVO_PARSER_NID_FORMAT_US_VALUES", 210, [
        "3X-2X-4X", "3X 2X 4X", "3X.2X.4X", "3C-2X-4X", "3C 2X 4X", "3C.2X.4X",
    ]),
    ("TAVO_PARSER_NID_FORMAT_CA_VALUES", 205, [
        "3X-3X-3X", "3X 3X 3X", "3X.3X.3X", "3C-3X-3X", "3C 3X 3X", "3C.3X.3X",
    ]),
    ("TAVO_PARSER_NID_FORMAT_ES_VALUES", 206, [
        "7X-1X", "7X 1X", "8X",
    ]),
    ("TAVO_PARSER_NID_FORMAT_UK_VALUES", 209, [
        "8X1C", "2C6X1C", "2C-6X-1C", "2X-6X-1C", "2C.6X.1C", "2X.6X.1C",
        "2C 6X 1C", "2X 6X 1C", "2C-2X-2X-2X-1C", "2X-2X-2X-2X-1C", "2C.2X.2X.2X.1C", "2X.2X.2X.2X.1C",
        "2C 2X 2X 2X 1C", "2X 2X 2X 2X 1C", "2X-6X-1X", "2X.6X.1X", "2X 6X 1X", "2X-2X-2X-2X-1X",
        "2X.2X.2X.2X.1X", "2X 2X 2X 2X 1X",
    ]),
    ("TAVO_PARSER_NID_FORMAT_IT_VALUES", 208, [
        "16X", "6C10X", "6X5C5X", "11X4C1X", "6X9C1X", "6C5X4C1X",
        "11C5X", "3X 3X 5X 5X", "3C 3C 5X 5X", "3X 3X 5C 5X", "3X 3X 5X 4C1X", "3X 3X 5C 4C1X",
        "3C 3C 5X 4C1X", "3C 3C 5C 5X", "3X-3X-5X-5X", "3C-3C-5X-5X", "3X-3X-5C-5X", "3X-3X-5X-4C1X",
        "3X-3X-5C-4C1X", "3C-3C-5X-4C1X", "3C-3C-5C-5X",
    ]),
    ("TAVO_PARSER_NID_FORMAT_FR_VALUES", 207, [
        "5X2C8X", "5X2C6X-2X", "5X2C6X 2X",
        "1X9C5X", "1X9C3X-2X", "1X9C3X 2X",
        "3X7C5X", "3X7C3X-2X", "3X7C3X 2X",
        "1X2C2X5C5X", "1X2C2X5C3X-2X", "1X2C2X5C3X 2X",
        "1X6C8X", "1X6C6X-2X", "1X6C6X 2X",
        "1X4C10X", "1X4C8X-2X", "1X4C8X 2X",
        "5X5C5X", "5X5C3X-2X", "5X5C3X 2X",
        "3X4C8X", "3X4C6X-2X", "3X4C6X 2X",
        "3X2C10X", "3X2C8X-2X", "3X2C8X 2X",
        "1X2C2X2C8X", "1X2C2X2C6X-2X", "1X2C2X2C6X 2X",
        "1X2C12X", "1X2C10X-2X", "1X2C10X 2X",
        "15X", "13X-2X", "13X 2X",
        "1C2X7C5X", "1C2X7C3X-2X", "1C2X7C3X 2X",
        "1C4X5C5X", "1C4X5C3X-2X", "1C4X5C3X 2X",
        "1C2X4C8X", "1C2X4C6X-2X", "1C2X4C6X 2X",
        "1C2X2C10X", "1C2X2C8X-2X", "1C2X2C8X 2X",
        "1C4X2C8X", "1C4X2C6X-2X", "1C4X2C6X 2X",
        "1C14X", "1C12X-2X", "1C12X 2X",
        "3C2X5C5X", "3C2X5C3X-2X", "3C2X5C3X 2X",
        "3C2X2C8X", "3C2X2C6X-2X", "3C2X2C6X 2X",
        "3C12X", "3C10X-2X", "3C10X 2X",
        "7C8X", "7C6X-2X", "7C6X 2X",
        "5C10X", "5C8X-2X", "5C8X 2X",
    ]),
]

# Tokens that the lexer recognises by their form rather than by a list of words.
FORMS = [
    ("BACKSLASH",                        6),
    ("BAD_SEP",                          7),
    ("COMMA",                           10),
    ("COMMENT",                         11),
    ("EQUAL",                           17),
    ("INTEGER",                         24),
    ("LEFT_PARENTHESIS",                28),
    ("QUOTE",                          334),
    ("RIGHT_PARENTHESIS",              336),
    ("SINGLE_QUOTE",                   338),
    ("WHITESPACE",                     347),
    ("TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX", 40),
    ("TAVO_PARSER_COPY_COL_SYNTAX",    111),
    ("TAVO_PARSER_ENV_VAR",            161),
    ("TAVO_PARSER_SEED_FLDNAME",       244),
    ("TAVO_PARSER_STRING_WITHOUT_QUOTES", 250),
    ("TAVO_PARSER_STRING_WITH_QUOTES", 251),
]

# Separator words: the word in either case, or the single character.
SEPARATORS = [
    ("TAVO_PARSER_SEPARATOR_DOT",        248, ["DOT"], "."),
    ("TAVO_PARSER_SEPARATOR_UNDERSCORE", 249, ["UNDERSCORE"], "_"),
]

END_OF_INPUT = 0xFFFFFFFF  # the type of the token after the last one
END_OF_INPUT_TEXT = "<EOF>"

WORD_TABLES = [
    PROVIDER_STATEMENT_AND_PROVIDER_NAMES,
    COMMON_OPTION_NAMES,
    PROVIDER_SPECIFIC_OPTION_NAMES,
    OPTION_VALUES,
    DATA_TYPES,
    GENERAL_WORDS,
]


def _lookup(tables):
    """Spelling -> type; no spelling may stand for two tokens."""
    found = {}
    for table in tables:
        for _, number, spellings, *_ in table:
            for spelling in spellings:
                assert spelling not in found, spelling
                found[spelling] = number
    return found


# Upper-case spelling -> type. FLDDEF is accepted bare and with a number from 1 to 99.
KEYWORDS = _lookup(WORD_TABLES + [SEPARATORS])
KEYWORDS.update({f"FLDDEF{number}": KEYWORDS["FLDDEF"] for number in range(1, 100)})

# Exact text -> type.
KEY_LITERALS = _lookup([KEY_LITERAL_TOKENS])
SEPARATOR_CHARACTERS = {character: number for _, number, _, character in SEPARATORS}

# Upper-case text -> type, split by whether a blank stands inside.
_PATTERNS = _lookup([ISSUER_PATTERNS, NATIONAL_IDENTIFIER_VALUES])
PATTERNS_WITHOUT_BLANKS = {text: number for text, number in _PATTERNS.items() if " " not in text}
PATTERNS_WITH_BLANKS = {text: number for text, number in _PATTERNS.items() if " " in text}


def _names():
    """Token name without the TAVO_PARSER_ prefix -> type, for use as T.NAME."""
    names = {}
    tables = WORD_TABLES + [KEY_LITERAL_TOKENS, ISSUER_PATTERNS, NATIONAL_IDENTIFIER_VALUES, FORMS, SEPARATORS]
    for table in tables:
        for name, number, *_ in table:
            short = name.removeprefix("TAVO_PARSER_")
            assert short not in names, short
            names[short] = number
    assert len(set(names.values())) == len(names), "two tokens share a number"
    return names


TYPE_BY_NAME = _names()
NAME_BY_TYPE = {number: name for name, number in TYPE_BY_NAME.items()}
T = SimpleNamespace(**TYPE_BY_NAME)
