// RANDOMLOOKUP: a row of the lookup table picked at random replaces the source value.
#include "Grammar/providers/lookup_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

constexpr OptionRule lookup_opt_parm_rowlimit = {
    .name = "lookup_opt_parm_rowlimit",
    .keywords = {{TAVO_PARSER_LKP_PARM_LIMIT}},
    .key_type = TAVO_PARSER_LKP_PARM_LIMIT,
    .values = kInteger,
};

// clang-format off
constexpr const OptionRule* kOptions[] = {
    &lookup_opt_parm_replace,
    &lookup_opt_parm_destination,
    &lookup_opt_parm_rowlimit,
    &cmn_opt_parm_tmpdir,
    &cmn_opt_parm_preserve_null,
    &cmn_opt_parm_preserve_spaces,
    &cmn_opt_parm_preserve_zerolength,
    &lds_opt_parm_id,
    &lds_opt_parm_library,
    &lds_opt_parm_username,
    &lds_opt_parm_password,
    &lds_opt_parm_connection_string,
    &cmn_opt_parm_flddef,
    &cmn_opt_parm_codepage,
    &cmn_opt_parm_dbmstype,
    &cmn_opt_parm_discardlimit,
    &cmn_opt_parm_trclevel,
};
// clang-format on
constexpr OptionIndex kIndex = index_options(kOptions);

}  // namespace

constexpr StatementRule tavo_service_provider_randomlookup = {
    .name = "tavo_service_provider_randomlookup",
    .head = provider_head(TAVO_PARSER_PROVIDER_RANDOMLOOKUP, TAVO_PARSER_PROVIDER_RANDOMLOOKUP),
    .list_rule = "randomlookup_opt_parm_list",
    .option_rule = "randomlookup_opt_parm",
    .options = kOptions,
    .index = &kIndex,
};

}  // namespace tavo
