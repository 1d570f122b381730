// HASH: one or more source columns become a hash value in a destination field.
#include "Grammar/providers/common_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

constexpr OptionRule hash_opt_parm_hashmax = {
    .name = "hash_opt_parm_hashmax",
    .keywords = {{TAVO_PARSER_HASH_PARM_HASHMAX}},
    .key_type = TAVO_PARSER_HASH_PARM_HASHMAX,
    .values = kInteger,
};
// Deliberate: a quoted string here, a keyword in EML; kept for statements in use.
constexpr OptionRule hash_opt_parm_field_separator = {
    .name = "hash_opt_parm_field_separator",
    .keywords = {{TAVO_PARSER_CMN_PARM_SEPARATOR}},
    .key_type = TAVO_PARSER_CMN_PARM_SEPARATOR,
    .values = kQuotedString,
};

// clang-format off
constexpr const OptionRule* kOptions[] = {
    &cmn_opt_parm_seed,
    &cmn_opt_parm_dstfld,
    &hash_opt_parm_hashmax,
    &cmn_opt_parm_remove,
    &hash_opt_parm_field_separator,
    &cmn_opt_parm_case_upper,
    &cmn_opt_parm_whennull,
    &cmn_opt_parm_whenspace,
    &cmn_opt_parm_whenzerolen,
    &cmn_opt_parm_whenmixed,
    &cmn_opt_parm_source,
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

// Deliberate: named by a general word, but stored with the provider's own type; kept for callers,
// which select the provider by it.
constexpr StatementRule tavo_service_provider_hash = {
    .name = "tavo_service_provider_hash",
    .head = provider_head(TAVO_PARSER_TOKEN_HASH, TAVO_PARSER_PROVIDER_HASH),
    .list_rule = "hash_opt_parm_list",
    .option_rule = "hash_opt_parm",
    .options = kOptions,
    .index = &kIndex,
};

}  // namespace tavo
