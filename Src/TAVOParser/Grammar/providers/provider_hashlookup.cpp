// HASHLOOKUP: a hash of the input picks the row of the lookup table.
#include "Grammar/providers/lookup_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

// Deliberate: only a quoted literal or HMAC; kept for callers, which know no other seed here.
constexpr OptionRule lookup_opt_parm_seed = {
    .name = "lookup_opt_parm_seed",
    .keywords = {{TAVO_PARSER_CMN_PARM_SEED}},
    .key_type = TAVO_PARSER_CMN_PARM_SEED,
    .values = {{{
        {TAVO_PARSER_STRING_WITH_QUOTES, TAVO_PARSER_SEED_LITERAL},
        {TAVO_PARSER_TOKEN_HMAC, TAVO_PARSER_SEED_HMAC},
    }}},
};
// Deliberate: the source keywords store the search columns here; kept for callers, which read them
// under that type.
constexpr OptionRule hashlookup_parm_source = {
    .name = "hashlookup_parm_source",
    .keywords = {{TAVO_PARSER_TOKEN_SEARCH, TAVO_PARSER_TOKEN_SRCH, TAVO_PARSER_TOKEN_SOURCE,
                  TAVO_PARSER_TOKEN_SRC}},
    .key_type = TAVO_PARSER_LKP_PARM_SEARCH,
    .values = kQuotedString,
};
constexpr OptionRule lkp_opt_parm_hashfld = {
    .name = "lkp_opt_parm_hashfld",
    .keywords = {{TAVO_PARSER_CMN_PARM_HASHFLD}},
    .key_type = TAVO_PARSER_CMN_PARM_HASHFLD,
    .syntax = ValueSyntax::kString,
};

// clang-format off
constexpr const OptionRule* kOptions[] = {
    &lookup_opt_parm_replace,
    &lookup_opt_parm_destination,
    &lookup_opt_parm_seed,
    &cmn_opt_parm_remove,
    &cmn_opt_parm_case_upper,
    &lkp_opt_parm_hashfld,
    &cmn_opt_parm_whennull,
    &cmn_opt_parm_whenspace,
    &cmn_opt_parm_whenzerolen,
    &cmn_opt_parm_whenmixed,
    &lookup_opt_parm_cache,
    &lookup_opt_parm_cachesize,
    &cmn_opt_parm_tmpdir,
    &cmn_opt_parm_whennotfound,
    &cmn_opt_parm_preserve_null,
    &cmn_opt_parm_preserve_spaces,
    &cmn_opt_parm_preserve_zerolength,
    &hashlookup_parm_source,
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
    &cmn_opt_parm_hash_algorithm,
    &cmn_opt_parm_trclevel,
};
// clang-format on
constexpr OptionIndex kIndex = index_options(kOptions);

}  // namespace

constexpr StatementRule tavo_service_provider_hashlookup = {
    .name = "tavo_service_provider_hashlookup",
    .head = provider_head(TAVO_PARSER_PROVIDER_HASHLOOKUP, TAVO_PARSER_PROVIDER_HASHLOOKUP),
    .list_rule = "hashlookup_opt_parm_list",
    .option_rule = "hashlookup_opt_parm",
    .options = kOptions,
    .index = &kIndex,
};

}  // namespace tavo
