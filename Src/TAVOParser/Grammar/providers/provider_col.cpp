// COL: a column keeps the character classes of its values, by the affinity algorithm or by
// format-preserving encryption.
#include "Grammar/providers/common_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

// Deliberate: no random choice; kept for callers, which know no other.
constexpr OptionRule col_opt_parm_method = {
    .name = "col_opt_parm_method",
    .keywords = {{TAVO_PARSER_CMN_PARM_METHOD}},
    .key_type = TAVO_PARSER_CMN_PARM_METHOD,
    .values = {{{
        {TAVO_PARSER_TOKEN_HASH, TAVO_PARSER_METHOD_HASH},
        {TAVO_PARSER_TOKEN_REP, TAVO_PARSER_METHOD_MASK},
        {TAVO_PARSER_TOKEN_REPEATABLE, TAVO_PARSER_METHOD_MASK},
    }}},
};
// Deliberate: the default is the affinity algorithm here, the native hash elsewhere; kept for
// callers, since another default would change masked values.
constexpr OptionRule col_opt_parm_algorithm = {
    .name = "col_opt_parm_algorithm",
    .keywords = {{TAVO_PARSER_CMN_PARM_ALGORITHM}},
    .key_type = TAVO_PARSER_CMN_PARM_ALGORITHM,
    .values = {{{
        {TAVO_PARSER_TOKEN_DEF, TAVO_PARSER_AFF_ALGO_NATIVE},
        {TAVO_PARSER_TOKEN_DEFAULT, TAVO_PARSER_AFF_ALGO_NATIVE},
        {TAVO_PARSER_TOKEN_FPE, TAVO_PARSER_AFF_ALGO_FPE},
    }}},
};
constexpr OptionRule col_opt_parm_key = {
    .name = "col_opt_parm_key",
    .keywords = {{TAVO_PARSER_AFF_PARM_KEY}},
    .key_type = TAVO_PARSER_AFF_PARM_KEY,
    .values = {{{
        {TAVO_PARSER_ENV_VAR, TAVO_PARSER_KEY_ENVVAR},
        {TAVO_PARSER_STRING_WITH_QUOTES, TAVO_PARSER_KEY_LITERAL},
    }}},
};
constexpr OptionRule col_opt_parm_tweaks = {
    .name = "col_opt_parm_tweaks",
    .keywords = {{TAVO_PARSER_AFF_PARM_TWEAKS}},
    .key_type = TAVO_PARSER_AFF_PARM_TWEAKS,
    .values = kYesOrNo,
};
constexpr OptionRule col_opt_parm_iterations = {
    .name = "col_opt_parm_iterations",
    .keywords = {{TAVO_PARSER_AFF_PARM_ITERATIONS}},
    .key_type = TAVO_PARSER_AFF_PARM_ITERATIONS,
    .values = kInteger,
};
constexpr OptionRule col_opt_parm_whenmatch = {
    .name = "col_opt_parm_whenmatch",
    .keywords = {{TAVO_PARSER_CMN_PARM_WHENMATCH}},
    .key_type = TAVO_PARSER_CMN_PARM_WHENMATCH,
    .values = {{{
        {TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX},
        {TAVO_PARSER_TOKEN_REVERSE},
        {TAVO_PARSER_TOKEN_SHUFFLE},
    }}},
};
constexpr OptionRule col_opt_parm_collen = {
    .name = "col_opt_parm_collen",
    .keywords = {{TAVO_PARSER_TOKEN_LENGTH}},
    .key_type = TAVO_PARSER_COL_PARM_COLLEN,
    .values = {{{{INTEGER}, {TAVO_PARSER_COLLEN_MAX}}}},
};
// Deliberate: no HMAC and no field name; kept for callers, which know neither here.
constexpr OptionRule col_opt_parm_seed = {
    .name = "col_opt_parm_seed",
    .keywords = {{TAVO_PARSER_CMN_PARM_SEED}},
    .key_type = TAVO_PARSER_CMN_PARM_SEED,
    .values = {{{
        {TAVO_PARSER_ENV_VAR, TAVO_PARSER_SEED_ENVVAR},
        {TAVO_PARSER_STRING_WITH_QUOTES, TAVO_PARSER_SEED_LITERAL},
        {TAVO_PARSER_TOKEN_RAN, TAVO_PARSER_SEED_RANDOM},
        {TAVO_PARSER_TOKEN_RANDOM, TAVO_PARSER_SEED_RANDOM},
    }}},
};
constexpr OptionRule col_opt_parm_rule = {
    .name = "col_opt_parm_rule",
    .keywords = {{TAVO_PARSER_CMN_PARM_RULE}},
    .key_type = TAVO_PARSER_CMN_PARM_RULE,
    .values = {{{
        {TAVO_PARSER_TOKEN_BIN, TAVO_PARSER_COL_PARM_COLBIN},
        {TAVO_PARSER_TOKEN_BINARY, TAVO_PARSER_COL_PARM_COLBIN},
        {TAVO_PARSER_TOKEN_NUM, TAVO_PARSER_COL_PARM_COLNUM},
        {TAVO_PARSER_TOKEN_NUMERIC, TAVO_PARSER_COL_PARM_COLNUM},
        {TAVO_PARSER_TOKEN_SCA, TAVO_PARSER_COLBIN_SCALED},
        {TAVO_PARSER_TOKEN_SCALED, TAVO_PARSER_COLBIN_SCALED},
    }}},
};
// Deliberate: value type 0; callers read the structure from the text.
constexpr OptionRule col_opt_parm_copy = {
    .name = "col_opt_parm_copy",
    .keywords = {{TAVO_PARSER_COL_PARM_COPY}},
    .key_type = TAVO_PARSER_COL_PARM_COPY,
    .values = {{{{TAVO_PARSER_COPY_COL_SYNTAX, kNoType}}}},
};
// May repeat: every class is kept.
constexpr OptionRule col_opt_parm_class = {
    .name = "col_opt_parm_class",
    .keywords = {{TAVO_PARSER_TOKEN_CLASS}},
    .key_type = TAVO_PARSER_AFF_PARM_CLASS,
    .values = kQuotedString,
};
constexpr OptionRule col_opt_parm_language = {
    .name = "col_opt_parm_language",
    .keywords = {{TAVO_PARSER_TOKEN_LANG, TAVO_PARSER_TOKEN_LANGUAGE}},
    .key_type = TAVO_PARSER_AFF_PARM_LANGUAGE,
    .values = kQuotedString,
};

// clang-format off
constexpr const OptionRule* kOptions[] = {
    &col_opt_parm_method,
    &col_opt_parm_algorithm,
    &col_opt_parm_key,
    &col_opt_parm_tweaks,
    &col_opt_parm_iterations,
    &col_opt_parm_whenmatch,
    &cmn_opt_parm_source,
    &col_opt_parm_collen,
    &col_opt_parm_seed,
    &col_opt_parm_rule,
    &cmn_opt_parm_trim,
    &col_opt_parm_copy,
    &cmn_opt_parm_remove,
    &cmn_opt_parm_case_upper,
    &col_opt_parm_class,
    &col_opt_parm_language,
    &cmn_opt_parm_flddef,
    &cmn_opt_parm_codepage,
    &cmn_opt_parm_dbmstype,
    &cmn_opt_parm_discardlimit,
    &cmn_opt_parm_trclevel,
};
// clang-format on
constexpr OptionIndex kIndex = index_options(kOptions);

}  // namespace

constexpr StatementRule tavo_service_provider_col = {
    .name = "tavo_service_provider_col",
    .head = provider_head(TAVO_PARSER_PROVIDER_COL, TAVO_PARSER_PROVIDER_COL),
    .list_rule = "col_opt_parm_list",
    .option_rule = "col_opt_parm",
    .options = kOptions,
    .index = &kIndex,
};

}  // namespace tavo
