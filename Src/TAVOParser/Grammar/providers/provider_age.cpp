// AGE: moves dates by an amount, or sets them to a specific year.
#include "Grammar/providers/common_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

constexpr OptionRule cmn_opt_parm_dst_date_format = {
    .name = "cmn_opt_parm_dst_date_format",
    .keywords = {{TAVO_PARSER_CMN_PARM_DST_DATE_FORMAT}},
    .key_type = TAVO_PARSER_CMN_PARM_DST_DATE_FORMAT,
    .values = kQuotedString,
};
// The kind of value determines the key type: a number of years, or a specific year.
constexpr OptionRule age_opt_parm_year = {
    .name = "age_opt_parm_year",
    .keywords = {{TAVO_PARSER_TOKEN_YEAR}},
    .key_type = TAVO_PARSER_AGE_PARM_YEAR,
    .values = {{{
        {INTEGER, kAsTyped, TAVO_PARSER_AGE_PARM_YEAR},
        {TAVO_PARSER_STRING_WITH_QUOTES, kAsTyped, TAVO_PARSER_AGE_PARM_SPECIFIC_YEAR},
    }}},
};
// Deliberate: month, week and pivot are stored without a value type, year and day with one; callers
// read them so.
constexpr OptionRule age_opt_parm_month = {
    .name = "age_opt_parm_month",
    .keywords = {{TAVO_PARSER_TOKEN_MONTH}},
    .key_type = TAVO_PARSER_AGE_PARM_MONTH,
    .values = {{{{INTEGER, kNoType}}}},
};
constexpr OptionRule age_opt_parm_week = {
    .name = "age_opt_parm_week",
    .keywords = {{TAVO_PARSER_TOKEN_WEEK}},
    .key_type = TAVO_PARSER_AGE_PARM_WEEK,
    .values = {{{{INTEGER, kNoType}}}},
};
// Deliberate: the keyword for any day is that of the DBMS type, since a spelling belongs to one
// token.
constexpr OptionRule age_opt_parm_day = {
    .name = "age_opt_parm_day",
    .keywords = {{TAVO_PARSER_TOKEN_DAY}},
    .key_type = TAVO_PARSER_AGE_PARM_DAY,
    .values = {{{
        {INTEGER, kAsTyped, TAVO_PARSER_AGE_PARM_DAY},
        {TAVO_PARSER_DBMSTYPE_ANY, kAsTyped, TAVO_PARSER_AGE_PARM_DAY_ANY},
    }}},
};
// Deliberate: RAND is not accepted as a method, only RAN and RANDOM; kept as callers document it.
constexpr OptionRule age_opt_parm_method = {
    .name = "age_opt_parm_method",
    .keywords = {{TAVO_PARSER_CMN_PARM_METHOD}},
    .key_type = TAVO_PARSER_CMN_PARM_METHOD,
    .values = {{{
        {TAVO_PARSER_TOKEN_CONSTRANDOM, TAVO_PARSER_METHOD_CONSTRANDOM},
        {TAVO_PARSER_TOKEN_RAN, TAVO_PARSER_METHOD_RANDOM},
        {TAVO_PARSER_TOKEN_RANDOM, TAVO_PARSER_METHOD_RANDOM},
        {TAVO_PARSER_TOKEN_REP, TAVO_PARSER_METHOD_MASK},
        {TAVO_PARSER_TOKEN_REPEATABLE, TAVO_PARSER_METHOD_MASK},
    }}},
};
constexpr OptionRule age_opt_parm_pivot = {
    .name = "age_opt_parm_pivot",
    .keywords = {{TAVO_PARSER_AGE_PARM_PIVOT}},
    .key_type = TAVO_PARSER_AGE_PARM_PIVOT,
    .values = {{{{INTEGER, kNoType}}}},
};
// Deliberate: only preserve, no error choice; kept for callers, which know no other.
constexpr OptionRule age_opt_parm_when_result_invalid = {
    .name = "age_opt_parm_when_result_invalid",
    .keywords = {{TAVO_PARSER_AGE_PARM_WHENRESULTINVALID}},
    .key_type = TAVO_PARSER_AGE_PARM_WHENRESULTINVALID,
    .values = {{{
        {TAVO_PARSER_TOKEN_PRE, TAVO_PARSER_AGE_WHENRESULTINVALID_PRESERVE},
        {TAVO_PARSER_TOKEN_PRESERVE, TAVO_PARSER_AGE_WHENRESULTINVALID_PRESERVE},
    }}},
};

// clang-format off
constexpr const OptionRule* kOptions[] = {
    &cmn_opt_parm_src_date_format,
    &cmn_opt_parm_dst_date_format,
    &age_opt_parm_year,
    &age_opt_parm_month,
    &age_opt_parm_week,
    &age_opt_parm_day,
    &age_opt_parm_method,
    &age_opt_parm_pivot,
    &age_opt_parm_when_result_invalid,
    &cmn_opt_parm_source,
    &cmn_opt_parm_flddef,
    &cmn_opt_parm_codepage,
    &cmn_opt_parm_dbmstype,
    &cmn_opt_parm_discardlimit,
    &cmn_opt_parm_trclevel,
};
// clang-format on
constexpr OptionIndex kIndex = index_options(kOptions);

}  // namespace

constexpr StatementRule tavo_service_provider_age = {
    .name = "tavo_service_provider_age",
    .head = provider_head(TAVO_PARSER_PROVIDER_AGE, TAVO_PARSER_PROVIDER_AGE),
    .list_rule = "age_opt_parm_list",
    .option_rule = "age_opt_parm",
    .options = kOptions,
    .index = &kIndex,
};

}  // namespace tavo
