// Options that several providers share. An option that shares only its keyword (method, seed,
// separator, case) has its own rule in its provider's table.
#pragma once

#include "Grammar/engine/option_table.h"

namespace tavo {

// ---- shared value lists ------------------------------------------------------------------------

inline constexpr ValueList kInteger = {{{{INTEGER}}}};
inline constexpr ValueList kQuotedString = {{{{TAVO_PARSER_STRING_WITH_QUOTES}}}};
inline constexpr ValueList kYesOrNo = {{{{TAVO_PARSER_PARAMVAL_NO}, {TAVO_PARSER_PARAMVAL_YES}}}};

// Deliberate: the SQL Server spellings are stored as typed, unlike those of the other products;
// kept for callers, which tell them apart by these types.
inline constexpr ValueList kDbmsTypes = {{{
    {TAVO_PARSER_DBMSTYPE_ANY},
    {TAVO_PARSER_DBMSTYPE_QUARTELO},
    {TAVO_PARSER_DBMSTYPE_BRAMOLT},
    {TAVO_PARSER_DBMSTYPE_NONE},
    {TAVO_PARSER_DBMSTYPE_ODBC},
    {TAVO_PARSER_DBMSTYPE_SYBASE},
    {TAVO_PARSER_DBMSTYPE_TERADATA},
    {TAVO_PARSER_TOKEN_KV8, TAVO_PARSER_DBMSTYPE_KV8LUW},
    {TAVO_PARSER_TOKEN_KV8LUW, TAVO_PARSER_DBMSTYPE_KV8LUW},
    {TAVO_PARSER_TOKEN_KV8HRM, TAVO_PARSER_DBMSTYPE_KV8HRM},
    {TAVO_PARSER_TOKEN_KVH, TAVO_PARSER_DBMSTYPE_KV8HRM},
    {TAVO_PARSER_TOKEN_KV8HRM_SQL, TAVO_PARSER_DBMSTYPE_KV8HRM_SQL},
    {TAVO_PARSER_TOKEN_ORA, TAVO_PARSER_DBMSTYPE_ORACLE},
    {TAVO_PARSER_TOKEN_ORACLE, TAVO_PARSER_DBMSTYPE_ORACLE},
    {TAVO_PARSER_TOKEN_MSS},
    {TAVO_PARSER_TOKEN_SQLSERVER},
}}};

// Stored value types are data-type codes. Deliberate: GRAPHIC and VARGRAPHIC are keywords but not
// accepted, since the suite has no codes for them.
inline constexpr ValueList kDataTypes = {{{
    {TAVO_PARSER_DATATYPE_CHAR, 1},
    {TAVO_PARSER_DATATYPE_DATETIME_CHAR, 25},
    {TAVO_PARSER_DATATYPE_DATETIME_SZ, 17},
    {TAVO_PARSER_DATATYPE_DATETIME_VARCHAR, 26},
    {TAVO_PARSER_DATATYPE_DATETIME_WCHAR, 27},
    {TAVO_PARSER_DATATYPE_DATETIME_WSZ, 18},
    {TAVO_PARSER_DATATYPE_DATETIME_WVARCHAR, 28},
    {TAVO_PARSER_DATATYPE_DECIMAL_K48, 13},
    {TAVO_PARSER_DATATYPE_DOUBLE, 19},
    {TAVO_PARSER_DATATYPE_FLOAT, 20},
    {TAVO_PARSER_DATATYPE_INTEGER, 9},
    {TAVO_PARSER_DATATYPE_LONG_LONG, 7},
    {TAVO_PARSER_DATATYPE_ODBC_DATE, 14},
    {TAVO_PARSER_DATATYPE_ODBC_TIME, 15},
    {TAVO_PARSER_DATATYPE_ODBC_TIMESTAMP, 16},
    {TAVO_PARSER_DATATYPE_ORA_VARNUM, 101},
    {TAVO_PARSER_DATATYPE_SMALLINT, 21},
    {TAVO_PARSER_DATATYPE_TINYINT, 23},
    {TAVO_PARSER_DATATYPE_U_INTEGER, 10},
    {TAVO_PARSER_DATATYPE_U_LONG_LONG, 8},
    {TAVO_PARSER_DATATYPE_U_SMALLINT, 22},
    {TAVO_PARSER_DATATYPE_U_TINYINT, 24},
    {TAVO_PARSER_DATATYPE_VARCHAR, 2},
    {TAVO_PARSER_DATATYPE_VARCHAR_SZ, 3},
    {TAVO_PARSER_DATATYPE_WCHAR, 4},
    {TAVO_PARSER_DATATYPE_WVARCHAR, 5},
    {TAVO_PARSER_DATATYPE_WVARCHAR_SZ, 6},
}}};

// ---- field definition --------------------------------------------------------------------------

inline constexpr OptionRule flddef_opt_parm_precision = {
    .name = "flddef_opt_parm_precision",
    .keywords = {{TAVO_PARSER_CMN_PARM_PRECISION, TAVO_PARSER_TOKEN_PRE}},
    .key_type = TAVO_PARSER_PARAM_FLDDEF_PRECISION,
    .values = kInteger,
};
inline constexpr OptionRule flddef_opt_parm_scale = {
    .name = "flddef_opt_parm_scale",
    .keywords = {{TAVO_PARSER_CMN_PARM_SCALE, TAVO_PARSER_TOKEN_SCA}},
    .key_type = TAVO_PARSER_PARAM_FLDDEF_SCALE,
    .values = kInteger,
};
inline constexpr OptionRule flddef_opt_parm_length = {
    .name = "flddef_opt_parm_length",
    .keywords = {{TAVO_PARSER_TOKEN_LENGTH}},
    .key_type = TAVO_PARSER_PARAM_FLDDEF_LENGTH,
    .values = kInteger,
};
inline constexpr OptionRule flddef_opt_parm_codepage = {
    .name = "flddef_opt_parm_codepage",
    .keywords = {{TAVO_PARSER_CMN_PARM_CODEPAGE}},
    .key_type = TAVO_PARSER_PARAM_FLDDEF_CODEPAGE,
    .values = kInteger,
};
inline constexpr OptionRule flddef_opt_parm_dbmstype = {
    .name = "flddef_opt_parm_dbmstype",
    .keywords = {{TAVO_PARSER_CMN_PARM_DBMSTYPE}},
    .key_type = TAVO_PARSER_PARAM_FLDDEF_DBMSTYPE,
    .values = kDbmsTypes,
};
inline constexpr OptionRule flddef_opt_parm_datatype = {
    .name = "flddef_opt_parm_datatype",
    .keywords = {{TAVO_PARSER_CMN_PARM_DATATYPE}},
    .key_type = TAVO_PARSER_PARAM_FLDDEF_DATATYPE,
    .values = kDataTypes,
};
inline constexpr OptionRule flddef_opt_parm_name = {
    .name = "flddef_opt_parm_name",
    .keywords = {{TAVO_PARSER_CMN_PARM_FLDNAME}},
    .key_type = TAVO_PARSER_PARAM_FLDDEF_NAME,
    .syntax = ValueSyntax::kString,
};

inline constexpr const OptionRule* kFieldDefinitionParameters[] = {
    &flddef_opt_parm_precision, &flddef_opt_parm_scale,    &flddef_opt_parm_length,
    &flddef_opt_parm_codepage,  &flddef_opt_parm_dbmstype, &flddef_opt_parm_datatype,
    &flddef_opt_parm_name,
};

inline constexpr OptionIndex kFieldDefinitionIndex = index_options(kFieldDefinitionParameters);

inline constexpr OptionRule cmn_opt_parm_flddef = {
    .name = "cmn_opt_parm_flddef",
    .keywords = {{TAVO_PARSER_CMN_PARM_FLDDEF}},
    .key_type = TAVO_PARSER_CMN_PARM_FLDDEF,
    .syntax = ValueSyntax::kParameters,
    .parameters = kFieldDefinitionParameters,
    .parameter_index = &kFieldDefinitionIndex,
    .parameter_rule = "flddef_opt_parm",
};

// ---- options of most providers -----------------------------------------------------------------

inline constexpr OptionRule cmn_opt_parm_codepage = {
    .name = "cmn_opt_parm_codepage",
    .keywords = {{TAVO_PARSER_CMN_PARM_CODEPAGE}},
    .key_type = TAVO_PARSER_CMN_PARM_CODEPAGE,
    .values = kInteger,
};
inline constexpr OptionRule cmn_opt_parm_dbmstype = {
    .name = "cmn_opt_parm_dbmstype",
    .keywords = {{TAVO_PARSER_CMN_PARM_DBMSTYPE}},
    .key_type = TAVO_PARSER_CMN_PARM_DBMSTYPE,
    .values = kDbmsTypes,
};
inline constexpr OptionRule cmn_opt_parm_discardlimit = {
    .name = "cmn_opt_parm_discardlimit",
    .keywords = {{TAVO_PARSER_CMN_PARM_DISCARDLIMIT}},
    .key_type = TAVO_PARSER_CMN_PARM_DISCARDLIMIT,
    .values = kInteger,
};
inline constexpr OptionRule cmn_opt_parm_trclevel = {
    .name = "cmn_opt_parm_trclevel",
    .keywords = {{TAVO_PARSER_CMN_PARM_TRCLEVEL}},
    .key_type = TAVO_PARSER_CMN_PARM_TRCLEVEL,
    .values = kQuotedString,
    .sets_trace_level = true,
};
inline constexpr OptionRule cmn_opt_parm_source = {
    .name = "cmn_opt_parm_source",
    .keywords = {{TAVO_PARSER_TOKEN_SOURCE, TAVO_PARSER_TOKEN_SRC}},
    .key_type = TAVO_PARSER_CMN_PARM_SOURCE,
    .values = kQuotedString,
};
inline constexpr OptionRule cmn_opt_parm_method = {
    .name = "cmn_opt_parm_method",
    .keywords = {{TAVO_PARSER_CMN_PARM_METHOD}},
    .key_type = TAVO_PARSER_CMN_PARM_METHOD,
    .values = {{{
        {TAVO_PARSER_TOKEN_RAN, TAVO_PARSER_METHOD_RANDOM},
        {TAVO_PARSER_TOKEN_RANDOM, TAVO_PARSER_METHOD_RANDOM},
        {TAVO_PARSER_TOKEN_REP, TAVO_PARSER_METHOD_MASK},
        {TAVO_PARSER_TOKEN_REPEATABLE, TAVO_PARSER_METHOD_MASK},
    }}},
};
inline constexpr OptionRule cmn_opt_parm_wheninvalid = {
    .name = "cmn_opt_parm_wheninvalid",
    .keywords = {{TAVO_PARSER_CMN_PARM_WHENINVALID}},
    .key_type = TAVO_PARSER_CMN_PARM_WHENINVALID,
    .values = {{{
        {TAVO_PARSER_TOKEN_PRE, TAVO_PARSER_WHENINVALID_PRESERVE},
        {TAVO_PARSER_TOKEN_PRESERVE, TAVO_PARSER_WHENINVALID_PRESERVE},
    }}},
};

// ---- case, seed, algorithm ---------------------------------------------------------------------

inline constexpr OptionRule cmn_opt_parm_case = {
    .name = "cmn_opt_parm_case",
    .keywords = {{TAVO_PARSER_CMN_PARM_CASE}},
    .key_type = TAVO_PARSER_CMN_PARM_CASE,
    .values = {{{{TAVO_PARSER_CASE_LOWER}, {TAVO_PARSER_CASE_UPPER}}}},
};
inline constexpr OptionRule cmn_opt_parm_case_upper = {
    .name = "cmn_opt_parm_case_upper",
    .keywords = {{TAVO_PARSER_CMN_PARM_CASE}},
    .key_type = TAVO_PARSER_CMN_PARM_CASE,
    .values = {{{{TAVO_PARSER_CASE_UPPER}}}},
};
inline constexpr OptionRule cmn_opt_parm_seed = {
    .name = "cmn_opt_parm_seed",
    .keywords = {{TAVO_PARSER_CMN_PARM_SEED}},
    .key_type = TAVO_PARSER_CMN_PARM_SEED,
    .values = {{{
        {TAVO_PARSER_ENV_VAR, TAVO_PARSER_SEED_ENVVAR},
        {TAVO_PARSER_SEED_FLDNAME},
        {TAVO_PARSER_STRING_WITH_QUOTES, TAVO_PARSER_SEED_LITERAL},
        {TAVO_PARSER_TOKEN_HMAC, TAVO_PARSER_SEED_HMAC},
        {TAVO_PARSER_TOKEN_RAN, TAVO_PARSER_SEED_RANDOM},
        {TAVO_PARSER_TOKEN_RANDOM, TAVO_PARSER_SEED_RANDOM},
    }}},
};
inline constexpr OptionRule cmn_opt_parm_hash_algorithm = {
    .name = "cmn_opt_parm_hash_algorithm",
    .keywords = {{TAVO_PARSER_CMN_PARM_ALGORITHM}},
    .key_type = TAVO_PARSER_CMN_PARM_ALGORITHM,
    .values = {{{
        {TAVO_PARSER_TOKEN_DEF, TAVO_PARSER_HASH_ALGO_NATIVE},
        {TAVO_PARSER_TOKEN_DEFAULT, TAVO_PARSER_HASH_ALGO_NATIVE},
        {TAVO_PARSER_TOKEN_SHA256, TAVO_PARSER_HASH_ALGO_SHA256},
    }}},
};

// ---- fields, text, dates -----------------------------------------------------------------------

inline constexpr OptionRule cmn_opt_parm_dstfld = {
    .name = "cmn_opt_parm_dstfld",
    .keywords = {{TAVO_PARSER_CMN_PARM_DSTFLD}},
    .key_type = TAVO_PARSER_CMN_PARM_DSTFLD,
    .syntax = ValueSyntax::kString,
};
inline constexpr OptionRule cmn_opt_parm_remove = {
    .name = "cmn_opt_parm_remove",
    .keywords = {{TAVO_PARSER_CMN_PARM_REMOVE}},
    .key_type = TAVO_PARSER_CMN_PARM_REMOVE,
    .values = kQuotedString,
};
// Deliberate: LEFT and BOTH have stored types, but only RIGHT is accepted; the types are kept for
// callers that name them.
inline constexpr OptionRule cmn_opt_parm_trim = {
    .name = "cmn_opt_parm_trim",
    .keywords = {{TAVO_PARSER_CMN_PARM_TRIM}},
    .key_type = TAVO_PARSER_CMN_PARM_TRIM,
    .values = {{{{TAVO_PARSER_TOKEN_RIGHT, TAVO_PARSER_TRIM_RIGHT}}}},
};
inline constexpr OptionRule cmn_opt_parm_whennull = {
    .name = "cmn_opt_parm_whennull",
    .keywords = {{TAVO_PARSER_CMN_PARM_WHENNULL}},
    .key_type = TAVO_PARSER_CMN_PARM_WHENNULL,
    .values = kInteger,
};
inline constexpr OptionRule cmn_opt_parm_whenspace = {
    .name = "cmn_opt_parm_whenspace",
    .keywords = {{TAVO_PARSER_CMN_PARM_WHENSPACE}},
    .key_type = TAVO_PARSER_CMN_PARM_WHENSPACE,
    .values = kInteger,
};
inline constexpr OptionRule cmn_opt_parm_whenzerolen = {
    .name = "cmn_opt_parm_whenzerolen",
    .keywords = {{TAVO_PARSER_CMN_PARM_WHENZEROLEN}},
    .key_type = TAVO_PARSER_CMN_PARM_WHENZEROLEN,
    .values = kInteger,
};
inline constexpr OptionRule cmn_opt_parm_whenmixed = {
    .name = "cmn_opt_parm_whenmixed",
    .keywords = {{TAVO_PARSER_CMN_PARM_WHENMIXED}},
    .key_type = TAVO_PARSER_CMN_PARM_WHENMIXED,
    .values = kInteger,
};
inline constexpr OptionRule cmn_opt_parm_src_date_format = {
    .name = "cmn_opt_parm_src_date_format",
    .keywords = {{TAVO_PARSER_CMN_PARM_SRC_DATE_FORMAT}},
    .key_type = TAVO_PARSER_CMN_PARM_SRC_DATE_FORMAT,
    .values = kQuotedString,
};

}  // namespace tavo
