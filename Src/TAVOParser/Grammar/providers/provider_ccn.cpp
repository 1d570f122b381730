// CCN: credit-card numbers.
#include "Grammar/providers/common_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

// Deliberate: 4C2R is stored with the general random-suffix type; kept for callers.
constexpr OptionRule ccn_opt_parm_pattern = {
    .name = "ccn_opt_parm_pattern",
    .keywords = {{TAVO_PARSER_CMN_PARM_PATTERN}},
    .key_type = TAVO_PARSER_CMN_PARM_PATTERN,
    .values = {{{
        {SIX_C, TAVO_PARSER_ISSUER_COPYSOURCE},
        {EIGHT_C, TAVO_PARSER_ISSUER_COPYSOURCE8},
        {FOUR_C_TWO_R, TAVO_PARSER_ISSUER_RANDOMSUFFIX},
        {FOUR_C_FOUR_R, TAVO_PARSER_ISSUER_RANDOMSUFFIX_4C4R},
        {SIX_C_TWO_R, TAVO_PARSER_ISSUER_RANDOMSUFFIX_6C2R},
    }}},
};

// clang-format off
constexpr const OptionRule* kOptions[] = {
    &cmn_opt_parm_wheninvalid,
    &cmn_opt_parm_method,
    &cmn_opt_parm_source,
    &ccn_opt_parm_pattern,
    &cmn_opt_parm_flddef,
    &cmn_opt_parm_codepage,
    &cmn_opt_parm_dbmstype,
    &cmn_opt_parm_discardlimit,
    &cmn_opt_parm_trclevel,
};
// clang-format on
constexpr OptionIndex kIndex = index_options(kOptions);

}  // namespace

constexpr StatementRule tavo_service_provider_ccn = {
    .name = "tavo_service_provider_ccn",
    .head = provider_head(TAVO_PARSER_PROVIDER_CCN, TAVO_PARSER_PROVIDER_CCN),
    .list_rule = "ccn_opt_parm_list",
    .option_rule = "ccn_opt_parm",
    .options = kOptions,
    .index = &kIndex,
};

}  // namespace tavo
