// Meaning of the values that an option accepts. Rows without a rule mean the same wherever the
// token is accepted and has no row for its option.
#include "Grammar/lexer/vocabulary.h"
#include "Grammar/meaning/meaning.h"
#include "TAVOParser.h"

namespace tavo {
namespace {

// clang-format off
constexpr ValueMeaning kValues[] = {
    // ---- numbers and texts, by option --------------------------------------------------------
    {"flddef_opt_parm_precision", {INTEGER}, "Number of digits, stored as typed."},
    {"flddef_opt_parm_scale", {INTEGER}, "Number of digits, stored as typed."},
    {"flddef_opt_parm_length", {INTEGER}, "Number of characters, stored as typed."},
    {"flddef_opt_parm_codepage", {INTEGER}, "Number of a code page, stored as typed."},
    {"cmn_opt_parm_codepage", {INTEGER}, "Number of a code page, stored as typed."},
    {"cmn_opt_parm_discardlimit", {INTEGER}, "Number of rows, stored as typed."},
    {"col_opt_parm_iterations", {INTEGER}, "Number of iterations, 1 to 99."},
    {"col_opt_parm_collen", {INTEGER}, "Number of characters."},
    {"hash_opt_parm_hashmax", {INTEGER}, "Number from 0 to 4294967295."},
    {"lookup_opt_parm_cachesize", {INTEGER}, "Number that is not negative."},
    {"lookup_opt_parm_rowlimit", {INTEGER}, "Number of rows, 0 to 2000000000."},
    {"age_opt_parm_year", {INTEGER}, "Number of years, -2500 to 1581; a negative one goes back."},
    {"age_opt_parm_year", {TAVO_PARSER_STRING_WITH_QUOTES},
     "A specific year, 1582 to 3999, stored under a key type of its own; excludes amounts and random "
     "methods."},
    {"age_opt_parm_month", {INTEGER}, "Number of months; a negative one goes back."},
    {"age_opt_parm_week", {INTEGER}, "Number of weeks; a negative one goes back."},
    {"age_opt_parm_day", {INTEGER}, "Number of days; a negative one goes back."},
    {"age_opt_parm_day", {TAVO_PARSER_DBMSTYPE_ANY},
     "Any day, stored under a key type of its own; only with a random method."},
    {"age_opt_parm_pivot", {INTEGER}, "Two-digit year, 0 to 99."},
    {"cmn_opt_parm_rate", {INTEGER}, "Rate, stored as typed."},
    {"cmn_opt_parm_size", {INTEGER}, "Number of rows, stored as typed."},
    {"ds_opt_parm_seed", {INTEGER}, "Seed, stored as typed."},
    {"userprovider_opt_parm_kvpair", {INTEGER}, "Number, stored as typed."},
    {"userprovider_opt_parm_kvpair", {TAVO_PARSER_STRING_WITHOUT_QUOTES},
     "Word that is no keyword, stored as typed."},
    {"col_opt_parm_key", {TAVO_PARSER_STRING_WITH_QUOTES},
     "The key itself, 1 to 32 characters, stored without its quotes."},
    {"cmn_opt_parm_seed", {TAVO_PARSER_STRING_WITH_QUOTES},
     "The seed itself, a number from 0 to 2000000000, stored without its quotes."},
    {"col_opt_parm_seed", {TAVO_PARSER_STRING_WITH_QUOTES},
     "The seed itself, stored without its quotes."},
    {"eml_opt_parm_seed", {TAVO_PARSER_STRING_WITH_QUOTES},
     "The seed itself, fewer than 32 characters, stored without its quotes; only with METHOD=HASH."},
    {"lookup_opt_parm_seed", {TAVO_PARSER_STRING_WITH_QUOTES},
     "The seed itself, a number from 0 to 2000000000, stored without its quotes."},
    {"cmn_opt_parm_trclevel", {TAVO_PARSER_STRING_WITH_QUOTES},
     "A trace level; the platform defines which levels exist."},
    {nullptr, {INTEGER}, "Number, stored as typed; its meaning is defined by the masking "
     "provider."},
    {nullptr, {TAVO_PARSER_STRING_WITH_QUOTES}, "Text, stored without its quotes."},
    {nullptr, {TAVO_PARSER_ENV_VAR},
     "Name of an environment variable that holds the value; the name is stored, not the value."},
    {nullptr, {TAVO_PARSER_SEED_FLDNAME}, "Name of the field that holds the seed, stored as typed."},

    // ---- methods, seeds, algorithms ----------------------------------------------------------
    {"age_opt_parm_method", {TAVO_PARSER_TOKEN_RAN, TAVO_PARSER_TOKEN_RANDOM},
     "Amounts are random."},
    {"age_opt_parm_method", {TAVO_PARSER_TOKEN_REP, TAVO_PARSER_TOKEN_REPEATABLE},
     "Amounts are the given ones."},
    {"age_opt_parm_method", {TAVO_PARSER_TOKEN_CONSTRANDOM},
     "A constant random method; what stays constant is defined by the masking provider."},
    {"eml_opt_parm_method", {TAVO_PARSER_TOKEN_HASH}, "The address is a hash of the source value."},
    {"col_opt_parm_method", {TAVO_PARSER_TOKEN_HASH}, "The masked value is a hash of the source value."},
    {"cmn_opt_parm_seed", {TAVO_PARSER_TOKEN_RAN, TAVO_PARSER_TOKEN_RANDOM},
     "A random seed; not together with SHA256."},
    {"cmn_opt_parm_seed", {TAVO_PARSER_SEED_FLDNAME},
     "Name of the field that holds the seed, stored as typed; not together with SHA256."},
    {"col_opt_parm_seed", {TAVO_PARSER_TOKEN_RAN, TAVO_PARSER_TOKEN_RANDOM}, "A random seed."},
    {nullptr, {TAVO_PARSER_TOKEN_RAN, TAVO_PARSER_TOKEN_RANDOM},
     "The masked value is random; excludes the options that need a source value to be kept or "
     "checked."},
    {nullptr, {TAVO_PARSER_TOKEN_REP, TAVO_PARSER_TOKEN_REPEATABLE},
     "The same source value always gets the same masked value."},
    {nullptr, {TAVO_PARSER_TOKEN_HMAC}, "Keyed hash; only together with SHA256."},
    {"col_opt_parm_algorithm", {TAVO_PARSER_TOKEN_DEF, TAVO_PARSER_TOKEN_DEFAULT},
     "The native affinity algorithm."},
    {"col_opt_parm_algorithm", {TAVO_PARSER_TOKEN_FPE},
     "Format-preserving encryption; needs KEY and METHOD=REPEATABLE."},
    {nullptr, {TAVO_PARSER_TOKEN_DEF, TAVO_PARSER_TOKEN_DEFAULT}, "The native hash algorithm."},
    {nullptr, {TAVO_PARSER_TOKEN_SHA256}, "The hash algorithm SHA-256."},

    // ---- yes and no --------------------------------------------------------------------------
    {"nid_opt_parm_validate", {TAVO_PARSER_PARAMVAL_NO}, "The source number is not validated."},
    {"nid_opt_parm_validate", {TAVO_PARSER_PARAMVAL_YES},
     "The source number is validated; not together with a random method."},
    {"eml_opt_parm_name1col_firstchar", {TAVO_PARSER_PARAMVAL_NO},
     "The whole first name column is used."},
    {"eml_opt_parm_name1col_firstchar", {TAVO_PARSER_PARAMVAL_YES},
     "Only the first character of the first name column is used."},
    {"col_opt_parm_tweaks", {TAVO_PARSER_PARAMVAL_NO}, "No tweaks."},
    {"col_opt_parm_tweaks", {TAVO_PARSER_PARAMVAL_YES}, "Tweaks are used."},
    {"ds_opt_parm_locked", {TAVO_PARSER_PARAMVAL_NO}, "Not locked."},
    {"ds_opt_parm_locked", {TAVO_PARSER_PARAMVAL_YES}, "Locked."},

    // ---- what to do when ---------------------------------------------------------------------
    {nullptr, {TAVO_PARSER_TOKEN_PRE, TAVO_PARSER_TOKEN_PRESERVE}, "The source value is kept."},
    {nullptr, {TAVO_PARSER_TOKEN_ERR, TAVO_PARSER_TOKEN_ERROR}, "An error is reported."},
    {"col_opt_parm_whenmatch", {TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX},
     "A prefix or suffix, as a text, a sequence or random, or an overlay at a start and of a length, "
     "stored as typed."},
    {"col_opt_parm_whenmatch", {TAVO_PARSER_TOKEN_REVERSE}, "The characters are reversed."},
    {"col_opt_parm_whenmatch", {TAVO_PARSER_TOKEN_SHUFFLE}, "The characters are shuffled."},

    // ---- case, trim, column rules ------------------------------------------------------------
    {nullptr, {TAVO_PARSER_CASE_LOWER}, "Letters become lower case."},
    {nullptr, {TAVO_PARSER_CASE_UPPER}, "Letters become upper case."},
    {nullptr, {TAVO_PARSER_TOKEN_RIGHT}, "Blanks at the right end are trimmed."},
    {"col_opt_parm_collen", {TAVO_PARSER_COLLEN_MAX}, "The largest length of the column."},
    {"col_opt_parm_rule", {TAVO_PARSER_TOKEN_BIN, TAVO_PARSER_TOKEN_BINARY},
     "The column is binary; excludes LENGTH, COPY, TRIM, REMOVE and CASE."},
    {"col_opt_parm_rule", {TAVO_PARSER_TOKEN_NUM, TAVO_PARSER_TOKEN_NUMERIC},
     "The column is numeric; excludes LENGTH and COPY."},
    {"col_opt_parm_rule", {TAVO_PARSER_TOKEN_SCA, TAVO_PARSER_TOKEN_SCALED},
     "The column is scaled; excludes LENGTH, COPY, TRIM, REMOVE and CASE."},
    {"col_opt_parm_copy", {TAVO_PARSER_COPY_COL_SYNTAX},
     "Groups written without blanks between them, stored as typed."},

    // ---- card numbers, addresses, identifiers ------------------------------------------------
    {"ccn_opt_parm_pattern", {SIX_C}, "The first 6 digits are kept."},
    {"ccn_opt_parm_pattern", {EIGHT_C}, "The first 8 digits are kept."},
    {"ccn_opt_parm_pattern", {FOUR_C_TWO_R}, "The first 4 digits are kept, with a random suffix of 2."},
    {"ccn_opt_parm_pattern", {FOUR_C_FOUR_R}, "The first 4 digits are kept, with a random suffix of 4."},
    {"ccn_opt_parm_pattern", {SIX_C_TWO_R}, "The first 6 digits are kept, with a random suffix of 2."},
    {nullptr, {TAVO_PARSER_SEPARATOR_DOT}, "A dot."},
    {nullptr, {TAVO_PARSER_SEPARATOR_UNDERSCORE}, "An underscore."},
    {nullptr, {TAVO_PARSER_HASHDOMAIN_KEEP}, "The domain of the source address is kept."},
    {nullptr, {TAVO_PARSER_HASHDOMAIN_REGISTERED}, "A registered domain is chosen."},
    {nullptr, {TAVO_PARSER_HASHDOMAIN_UNREGISTERED}, "An unregistered domain is chosen."},
    {nullptr, {TAVO_PARSER_NID_CTRY_CA}, "Canada."},
    {nullptr, {TAVO_PARSER_NID_CTRY_ES}, "Spain."},
    {nullptr, {TAVO_PARSER_NID_CTRY_FR}, "France."},
    {nullptr, {TAVO_PARSER_NID_CTRY_IT}, "Italy."},
    {nullptr, {TAVO_PARSER_NID_CTRY_UK}, "The United Kingdom."},
    {nullptr, {TAVO_PARSER_NID_CTRY_US}, "The United States."},
    {nullptr, {TAVO_PARSER_AREATABLE_DIST},
     "The table DIST; its content is defined by the masking provider."},
    {nullptr, {TAVO_PARSER_AREATABLE_MAXGROUP},
     "The table MAXGROUP; its content is defined by the masking provider."},
    {nullptr, {TAVO_PARSER_AREATABLE_HRM},
     "The table HRM; its content is defined by the masking provider."},
    {nullptr, {NINE_X, THREE_C_SIX_X},
     "Groups without separators; what X and C do is defined by the masking provider, and the "
     "text is stored as typed."},
    {nullptr, {TAVO_PARSER_NID_FORMAT_US_VALUES, TAVO_PARSER_NID_FORMAT_CA_VALUES,
               TAVO_PARSER_NID_FORMAT_UK_VALUES, TAVO_PARSER_NID_FORMAT_FR_VALUES},
     "Groups of a count and X or C, with the separators of the number; what X and C do is "
     "defined by the masking provider, and the text is stored as typed."},
    {nullptr, {TAVO_PARSER_NID_FORMAT_IT_VALUES, TAVO_PARSER_NID_FORMAT_ES_VALUES},
     "Groups of a count and X or C, with the separators of the number; what X and C do is "
     "defined by the masking provider, and the text is stored as typed."},

    // ---- lookups -----------------------------------------------------------------------------
    {"lookup_opt_parm_cache", {TAVO_PARSER_PARAMVAL_NO},
     "Rows are not cached; excludes CACHESIZE and TMPDIR."},
    {nullptr, {TAVO_PARSER_TOKEN_MEM, TAVO_PARSER_TOKEN_MEMORY}, "Rows are cached in memory."},
    {nullptr, {TAVO_PARSER_TOKEN_MEMFILE}, "Rows are cached in a memory file; how it is kept is "
     "defined by the masking provider."},
    {nullptr, {TAVO_PARSER_OPERATOR_AND}, "Every search column must match."},
    {nullptr, {TAVO_PARSER_OPERATOR_OR}, "One matching search column is enough."},
    {"lds_opt_parm_library", {TAVO_PARSER_TOKEN_KV8LUW}, "The connection library of KV8LUW."},
    {"lds_opt_parm_library", {TAVO_PARSER_TOKEN_KV8HRM}, "The connection library of KV8HRM."},
    {"lds_opt_parm_library", {TAVO_PARSER_TOKEN_KV8HRM_SQL},
     "The connection library of KV8HRM with SQL."},
    {"lds_opt_parm_library", {TAVO_PARSER_TOKEN_ORACLE}, "The connection library of ORACLE."},
    {"lds_opt_parm_library", {TAVO_PARSER_TOKEN_MSS}, "The connection library of SQL Server."},
    {"lds_opt_parm_library", {TAVO_PARSER_DBMSTYPE_ODBC},
     "The same connection library as MSS."},
    {"lds_opt_parm_library", {TAVO_PARSER_STRING_WITHOUT_QUOTES},
     "Name of a library of your own, stored as typed."},

    // ---- database products -------------------------------------------------------------------
    {nullptr, {TAVO_PARSER_DBMSTYPE_ANY}, "Any product."},
    {nullptr, {TAVO_PARSER_DBMSTYPE_NONE}, "No database product."},
    {nullptr, {TAVO_PARSER_DBMSTYPE_QUARTELO}, "The product QUARTELO."},
    {nullptr, {TAVO_PARSER_DBMSTYPE_BRAMOLT}, "The product BRAMOLT."},
    {nullptr, {TAVO_PARSER_DBMSTYPE_ODBC}, "Any product that is reached through ODBC."},
    {nullptr, {TAVO_PARSER_DBMSTYPE_SYBASE}, "The product SYBASE."},
    {nullptr, {TAVO_PARSER_DBMSTYPE_TERADATA}, "The product TERADATA."},
    {nullptr, {TAVO_PARSER_TOKEN_KV8, TAVO_PARSER_TOKEN_KV8LUW}, "The product KV8LUW."},
    {nullptr, {TAVO_PARSER_TOKEN_KV8HRM, TAVO_PARSER_TOKEN_KVH}, "The product KV8HRM."},
    {nullptr, {TAVO_PARSER_TOKEN_KV8HRM_SQL}, "The product KV8HRM with SQL."},
    {nullptr, {TAVO_PARSER_TOKEN_ORA, TAVO_PARSER_TOKEN_ORACLE}, "The product ORACLE."},
    {nullptr, {TAVO_PARSER_TOKEN_MSS, TAVO_PARSER_TOKEN_SQLSERVER},
     "The product SQL Server; stored as the type of the word that is typed."},

    // ---- data types --------------------------------------------------------------------------
    {nullptr, {TAVO_PARSER_DATATYPE_CHAR}, "8-bit text of fixed length."},
    {nullptr, {TAVO_PARSER_DATATYPE_VARCHAR}, "8-bit text that its length precedes."},
    {nullptr, {TAVO_PARSER_DATATYPE_VARCHAR_SZ}, "8-bit text that ends at a zero."},
    {nullptr, {TAVO_PARSER_DATATYPE_WCHAR}, "Wide text of fixed length, 4 bytes a character."},
    {nullptr, {TAVO_PARSER_DATATYPE_WVARCHAR},
     "Wide text that its length precedes, 4 bytes a character."},
    {nullptr, {TAVO_PARSER_DATATYPE_WVARCHAR_SZ},
     "Wide text that ends at a zero, 4 bytes a character."},
    {nullptr, {TAVO_PARSER_DATATYPE_TINYINT}, "Signed integer of 1 byte."},
    {nullptr, {TAVO_PARSER_DATATYPE_U_TINYINT}, "Unsigned integer of 1 byte."},
    {nullptr, {TAVO_PARSER_DATATYPE_SMALLINT}, "Signed integer of 2 bytes."},
    {nullptr, {TAVO_PARSER_DATATYPE_U_SMALLINT}, "Unsigned integer of 2 bytes."},
    {nullptr, {TAVO_PARSER_DATATYPE_INTEGER}, "Signed integer of 4 bytes."},
    {nullptr, {TAVO_PARSER_DATATYPE_U_INTEGER}, "Unsigned integer of 4 bytes."},
    {nullptr, {TAVO_PARSER_DATATYPE_LONG_LONG}, "Signed integer of 8 bytes."},
    {nullptr, {TAVO_PARSER_DATATYPE_U_LONG_LONG}, "Unsigned integer of 8 bytes."},
    {nullptr, {TAVO_PARSER_DATATYPE_FLOAT}, "Floating-point number of 4 bytes."},
    {nullptr, {TAVO_PARSER_DATATYPE_DOUBLE}, "Floating-point number of 8 bytes."},
    {nullptr, {TAVO_PARSER_DATATYPE_DECIMAL_K48}, "Decimal number of 16 bytes."},
    {nullptr, {TAVO_PARSER_DATATYPE_ORA_VARNUM}, "Number of ORACLE, of variable length."},
    {nullptr, {TAVO_PARSER_DATATYPE_ODBC_DATE}, "Date."},
    {nullptr, {TAVO_PARSER_DATATYPE_ODBC_TIME}, "Time of day."},
    {nullptr, {TAVO_PARSER_DATATYPE_ODBC_TIMESTAMP}, "Date and time of day."},
    {nullptr, {TAVO_PARSER_DATATYPE_DATETIME_CHAR}, "Date as 8-bit text of fixed length."},
    {nullptr, {TAVO_PARSER_DATATYPE_DATETIME_VARCHAR}, "Date as 8-bit text that its length precedes."},
    {nullptr, {TAVO_PARSER_DATATYPE_DATETIME_SZ}, "Date as 8-bit text that ends at a zero."},
    {nullptr, {TAVO_PARSER_DATATYPE_DATETIME_WCHAR}, "Date as wide text of fixed length."},
    {nullptr, {TAVO_PARSER_DATATYPE_DATETIME_WVARCHAR}, "Date as wide text that its length precedes."},
    {nullptr, {TAVO_PARSER_DATATYPE_DATETIME_WSZ}, "Date as wide text that ends at a zero."},
};
// clang-format on

}  // namespace

std::span<const ValueMeaning> value_meanings() {
  return kValues;
}

}  // namespace tavo
