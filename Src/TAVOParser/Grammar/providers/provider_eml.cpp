// EML: e-mail addresses.
#include "Grammar/providers/common_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

// The common choices and HASH.
constexpr OptionRule eml_opt_parm_method = {
    .name = "eml_opt_parm_method",
    .keywords = {{TAVO_PARSER_CMN_PARM_METHOD}},
    .key_type = TAVO_PARSER_CMN_PARM_METHOD,
    .values = {{{
        {TAVO_PARSER_TOKEN_HASH, TAVO_PARSER_METHOD_HASH},
        {TAVO_PARSER_TOKEN_RAN, TAVO_PARSER_METHOD_RANDOM},
        {TAVO_PARSER_TOKEN_RANDOM, TAVO_PARSER_METHOD_RANDOM},
        {TAVO_PARSER_TOKEN_REP, TAVO_PARSER_METHOD_MASK},
        {TAVO_PARSER_TOKEN_REPEATABLE, TAVO_PARSER_METHOD_MASK},
    }}},
};
constexpr OptionRule eml_opt_parm_separator = {
    .name = "eml_opt_parm_separator",
    .keywords = {{TAVO_PARSER_CMN_PARM_SEPARATOR}},
    .key_type = TAVO_PARSER_CMN_PARM_SEPARATOR,
    .values = {{{{TAVO_PARSER_SEPARATOR_DOT}, {TAVO_PARSER_SEPARATOR_UNDERSCORE}}}},
};
constexpr OptionRule eml_opt_parm_parts = {
    .name = "eml_opt_parm_parts",
    .keywords = {{TAVO_PARSER_CMN_PARM_PARTS}},
    .key_type = TAVO_PARSER_CMN_PARM_PARTS,
    .values = kQuotedString,
};
constexpr OptionRule eml_opt_parm_name1col_firstchar = {
    .name = "eml_opt_parm_name1col_firstchar",
    .keywords = {{TAVO_PARSER_EML_PARM_NAME1COL_FIRSTCHAR}},
    .key_type = TAVO_PARSER_EML_PARM_NAME1COL_FIRSTCHAR,
    .values = kYesOrNo,
};
constexpr OptionRule eml_opt_parm_hashdomain = {
    .name = "eml_opt_parm_hashdomain",
    .keywords = {{TAVO_PARSER_EML_PARM_HASHDOMAIN}},
    .key_type = TAVO_PARSER_EML_PARM_HASHDOMAIN,
    .values = {{{
        {TAVO_PARSER_HASHDOMAIN_KEEP},
        {TAVO_PARSER_HASHDOMAIN_REGISTERED},
        {TAVO_PARSER_HASHDOMAIN_UNREGISTERED},
    }}},
};
constexpr OptionRule eml_opt_parm_domain = {
    .name = "eml_opt_parm_domain",
    .keywords = {{TAVO_PARSER_EML_PARM_LITDOMAIN}},
    .key_type = TAVO_PARSER_EML_PARM_LITDOMAIN,
    .syntax = ValueSyntax::kString,
};
constexpr OptionRule eml_opt_parm_userprefix = {
    .name = "eml_opt_parm_userprefix",
    .keywords = {{TAVO_PARSER_EML_PARM_USERPREFIX}},
    .key_type = TAVO_PARSER_EML_PARM_USERPREFIX,
    .syntax = ValueSyntax::kString,
};
// Deliberate: no environment variable, field name or random seed; kept for callers, which know none
// of them here.
constexpr OptionRule eml_opt_parm_seed = {
    .name = "eml_opt_parm_seed",
    .keywords = {{TAVO_PARSER_CMN_PARM_SEED}},
    .key_type = TAVO_PARSER_CMN_PARM_SEED,
    .values = {{{
        {TAVO_PARSER_STRING_WITH_QUOTES, TAVO_PARSER_SEED_LITERAL},
        {TAVO_PARSER_TOKEN_HMAC, TAVO_PARSER_SEED_HMAC},
    }}},
};

// clang-format off
constexpr const OptionRule* kOptions[] = {
    &cmn_opt_parm_wheninvalid,
    &eml_opt_parm_method,
    &eml_opt_parm_separator,
    &eml_opt_parm_parts,
    &cmn_opt_parm_source,
    &eml_opt_parm_name1col_firstchar,
    &eml_opt_parm_hashdomain,
    &eml_opt_parm_domain,
    &eml_opt_parm_userprefix,
    &cmn_opt_parm_case,
    &eml_opt_parm_seed,
    &cmn_opt_parm_flddef,
    &cmn_opt_parm_codepage,
    &cmn_opt_parm_dbmstype,
    &cmn_opt_parm_discardlimit,
    &cmn_opt_parm_hash_algorithm,
    &cmn_opt_parm_trclevel,
};
// clang-format on
constexpr OptionIndex kIndex = index_options(kOptions);

}  // namespace

constexpr StatementRule tavo_service_provider_eml = {
    .name = "tavo_service_provider_eml",
    .head = provider_head(TAVO_PARSER_PROVIDER_EML, TAVO_PARSER_PROVIDER_EML),
    .list_rule = "eml_opt_parm_list",
    .option_rule = "eml_opt_parm",
    .options = kOptions,
    .index = &kIndex,
};

}  // namespace tavo
