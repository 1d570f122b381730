// LOOKUP: a value found in a lookup table replaces the source value.
#include "Grammar/providers/lookup_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

constexpr OptionRule lookup_opt_parm_operator = {
    .name = "lookup_opt_parm_operator",
    .keywords = {{TAVO_PARSER_LKP_PARM_OPERATOR}},
    .key_type = TAVO_PARSER_LKP_PARM_OPERATOR,
    .values = {{{{TAVO_PARSER_OPERATOR_AND}, {TAVO_PARSER_OPERATOR_OR}}}},
};
constexpr OptionRule lookup_opt_parm_search = {
    .name = "lookup_opt_parm_search",
    .keywords = {{TAVO_PARSER_TOKEN_SEARCH, TAVO_PARSER_TOKEN_SRCH}},
    .key_type = TAVO_PARSER_LKP_PARM_SEARCH,
    .values = kQuotedString,
};

// clang-format off
constexpr const OptionRule* kOptions[] = {
    &lookup_opt_parm_replace,
    &lookup_opt_parm_destination,
    &lookup_opt_parm_cache,
    &lookup_opt_parm_cachesize,
    &cmn_opt_parm_tmpdir,
    &lookup_opt_parm_operator,
    &cmn_opt_parm_whennotfound,
    &cmn_opt_parm_preserve_null,
    &cmn_opt_parm_preserve_spaces,
    &cmn_opt_parm_preserve_zerolength,
    &lookup_opt_parm_search,
    &cmn_opt_parm_source,
    &lds_opt_parm_id,
    &lds_opt_parm_library,
    &lds_opt_parm_username,
    &lds_opt_parm_password,
    &lds_opt_parm_connection_string,
    &cmn_opt_parm_flddef,
    &cmn_opt_parm_codepage,
    &cmn_opt_parm_dbmstype,
    &cmn_opt_parm_discardlimit,
    &cmn_opt_parm_src_date_format,
    &cmn_opt_parm_trclevel,
};
// clang-format on
constexpr OptionIndex kIndex = index_options(kOptions);

}  // namespace

constexpr StatementRule tavo_service_provider_lookup = {
    .name = "tavo_service_provider_lookup",
    .head = provider_head(TAVO_PARSER_PROVIDER_LOOKUP, TAVO_PARSER_PROVIDER_LOOKUP),
    .list_rule = "lookup_opt_parm_list",
    .option_rule = "lookup_opt_parm",
    .options = kOptions,
    .index = &kIndex,
};

}  // namespace tavo
