// Options that the three lookup providers share.
#pragma once

#include "Grammar/providers/common_options.h"

namespace tavo {

inline constexpr OptionRule lookup_opt_parm_replace = {
    .name = "lookup_opt_parm_replace",
    .keywords = {{TAVO_PARSER_CMN_PARM_REPLACE, TAVO_PARSER_TOKEN_REP}},
    .key_type = TAVO_PARSER_CMN_PARM_REPLACE,
    .values = kQuotedString,
};
inline constexpr OptionRule lookup_opt_parm_destination = {
    .name = "lookup_opt_parm_destination",
    .keywords = {{TAVO_PARSER_TOKEN_DEST, TAVO_PARSER_TOKEN_DESTINATION}},
    .key_type = TAVO_PARSER_CMN_PARM_DESTINATION,
    .values = kQuotedString,
};
inline constexpr OptionRule lookup_opt_parm_cache = {
    .name = "lookup_opt_parm_cache",
    .keywords = {{TAVO_PARSER_LKP_PARM_CACHE}},
    .key_type = TAVO_PARSER_LKP_PARM_CACHE,
    .values = {{{
        {TAVO_PARSER_PARAMVAL_NO},
        {TAVO_PARSER_TOKEN_MEM, TAVO_PARSER_LKP_CACHE_MEMORY},
        {TAVO_PARSER_TOKEN_MEMORY, TAVO_PARSER_LKP_CACHE_MEMORY},
        {TAVO_PARSER_TOKEN_MEMFILE, TAVO_PARSER_LKP_CACHE_MEMFILE},
    }}},
};
inline constexpr OptionRule lookup_opt_parm_cachesize = {
    .name = "lookup_opt_parm_cachesize",
    .keywords = {{TAVO_PARSER_LKP_PARM_CACHESIZE}},
    .key_type = TAVO_PARSER_LKP_PARM_CACHESIZE,
    .values = kInteger,
};
inline constexpr OptionRule cmn_opt_parm_tmpdir = {
    .name = "cmn_opt_parm_tmpdir",
    .keywords = {{TAVO_PARSER_CMN_PARM_TMPDIR}},
    .key_type = TAVO_PARSER_CMN_PARM_TMPDIR,
    .values = kQuotedString,
};
inline constexpr OptionRule cmn_opt_parm_whennotfound = {
    .name = "cmn_opt_parm_whennotfound",
    .keywords = {{TAVO_PARSER_CMN_PARM_WHENNOTFOUND}},
    .key_type = TAVO_PARSER_CMN_PARM_WHENNOTFOUND,
    .values = {{{
        {TAVO_PARSER_TOKEN_ERR, TAVO_PARSER_WHENNOTFOUND_ERROR},
        {TAVO_PARSER_TOKEN_ERROR, TAVO_PARSER_WHENNOTFOUND_ERROR},
        {TAVO_PARSER_TOKEN_PRE, TAVO_PARSER_WHENNOTFOUND_PRESERVE},
        {TAVO_PARSER_TOKEN_PRESERVE, TAVO_PARSER_WHENNOTFOUND_PRESERVE},
    }}},
};
inline constexpr OptionRule cmn_opt_parm_preserve_null = {
    .name = "cmn_opt_parm_preserve_null",
    .keywords = {{TAVO_PARSER_CMN_PARM_PRESERVE_NULL}},
    .key_type = TAVO_PARSER_CMN_PARM_PRESERVE_NULL,
    .values = kQuotedString,
};
inline constexpr OptionRule cmn_opt_parm_preserve_spaces = {
    .name = "cmn_opt_parm_preserve_spaces",
    .keywords = {{TAVO_PARSER_CMN_PARM_PRESERVE_SPACES}},
    .key_type = TAVO_PARSER_CMN_PARM_PRESERVE_SPACES,
    .values = kQuotedString,
};
inline constexpr OptionRule cmn_opt_parm_preserve_zerolength = {
    .name = "cmn_opt_parm_preserve_zerolength",
    .keywords = {{TAVO_PARSER_CMN_PARM_PRESERVE_ZEROLENGTH}},
    .key_type = TAVO_PARSER_CMN_PARM_PRESERVE_ZEROLENGTH,
    .values = kQuotedString,
};

// ---- lookup data source ------------------------------------------------------------------------

inline constexpr OptionRule lds_opt_parm_id = {
    .name = "lds_opt_parm_id",
    .keywords = {{TAVO_PARSER_TOKEN_ID}},
    .key_type = TAVO_PARSER_LDS_PARM_ID,
    .syntax = ValueSyntax::kString,
};
// Deliberate: ODBC selects the library of MSS; kept for callers, which load that one for both.
// Short and long spellings of the other products are not library names.
inline constexpr OptionRule lds_opt_parm_library = {
    .name = "lds_opt_parm_library",
    .keywords = {{TAVO_PARSER_TOKEN_LIB}},
    .key_type = TAVO_PARSER_LDS_PARM_LIBRARY,
    .values = {{{
        {TAVO_PARSER_TOKEN_KV8LUW, TAVO_PARSER_LDS_LIB_KV8LUW},
        {TAVO_PARSER_TOKEN_KV8HRM, TAVO_PARSER_LDS_LIB_KV8HRM},
        {TAVO_PARSER_TOKEN_KV8HRM_SQL, TAVO_PARSER_LDS_LIB_KV8HRM_SQL},
        {TAVO_PARSER_TOKEN_ORACLE, TAVO_PARSER_LDS_LIB_ORACLE},
        {TAVO_PARSER_TOKEN_MSS, TAVO_PARSER_LDS_LIB_MSS},
        {TAVO_PARSER_DBMSTYPE_ODBC, TAVO_PARSER_LDS_LIB_MSS},
        {TAVO_PARSER_STRING_WITHOUT_QUOTES, kNoType},
    }}},
};
inline constexpr OptionRule lds_opt_parm_username = {
    .name = "lds_opt_parm_username",
    .keywords = {{TAVO_PARSER_TOKEN_USER}},
    .key_type = TAVO_PARSER_LDS_PARM_USERNAME,
    .syntax = ValueSyntax::kString,
};
inline constexpr OptionRule lds_opt_parm_password = {
    .name = "lds_opt_parm_password",
    .keywords = {{TAVO_PARSER_TOKEN_PASS}},
    .key_type = TAVO_PARSER_LDS_PARM_PASSWORD,
    .syntax = ValueSyntax::kString,
};
inline constexpr OptionRule lds_opt_parm_connection_string = {
    .name = "lds_opt_parm_connection_string",
    .keywords = {{TAVO_PARSER_TOKEN_CONN}},
    .key_type = TAVO_PARSER_LDS_PARM_CONNECTION_STRING,
    .syntax = ValueSyntax::kString,
};

}  // namespace tavo
