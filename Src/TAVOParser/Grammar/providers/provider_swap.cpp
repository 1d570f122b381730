// DSWAP, CDSWAP and DDSWAP: values are swapped between rows, within classes or within blocks.
#include "Grammar/providers/common_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

constexpr OptionRule ds_opt_parm_swap_field = {
    .name = "ds_opt_parm_swap_field",
    .keywords = {{TAVO_PARSER_DS_PARM_SWAP_FIELD}},
    .key_type = TAVO_PARSER_DS_PARM_SWAP_FIELD,
    .values = kQuotedString,
};
constexpr OptionRule ds_opt_parm_locked = {
    .name = "ds_opt_parm_locked",
    .keywords = {{TAVO_PARSER_TOKEN_LOCKED}},
    .key_type = TAVO_PARSER_DS_PARM_LOCKED,
    .values = kYesOrNo,
};
constexpr OptionRule cmn_opt_parm_rate = {
    .name = "cmn_opt_parm_rate",
    .keywords = {{TAVO_PARSER_TOKEN_RATE}},
    .key_type = TAVO_PARSER_CMN_PARM_RATE,
    .values = kInteger,
};
constexpr OptionRule ds_opt_parm_control = {
    .name = "ds_opt_parm_control",
    .keywords = {{TAVO_PARSER_TOKEN_CONTROL, TAVO_PARSER_TOKEN_CTL}},
    .key_type = TAVO_PARSER_DS_PARM_CONTROL,
    .values = kQuotedString,
};
constexpr OptionRule ds_opt_parm_classifier = {
    .name = "ds_opt_parm_classifier",
    .keywords = {{TAVO_PARSER_TOKEN_CLASS, TAVO_PARSER_TOKEN_CLASSIFIER}},
    .key_type = TAVO_PARSER_DS_PARM_CLASSIFIER,
    .values = kQuotedString,
};
constexpr OptionRule cmn_opt_parm_size = {
    .name = "cmn_opt_parm_size",
    .keywords = {{TAVO_PARSER_TOKEN_SIZE}},
    .key_type = TAVO_PARSER_CMN_PARM_SIZE,
    .values = kInteger,
};
// Deliberate: only an integer, unlike every other seed; kept for callers, which read a number.
constexpr OptionRule ds_opt_parm_seed = {
    .name = "ds_opt_parm_seed",
    .keywords = {{TAVO_PARSER_CMN_PARM_SEED}},
    .key_type = TAVO_PARSER_CMN_PARM_SEED,
    .values = kInteger,
};

// clang-format off
constexpr const OptionRule* kDswapOptions[] = {
    &ds_opt_parm_swap_field,
    &ds_opt_parm_locked,
    &cmn_opt_parm_rate,
    &ds_opt_parm_seed,
    &cmn_opt_parm_method,
    &cmn_opt_parm_flddef,
    &cmn_opt_parm_codepage,
    &cmn_opt_parm_dbmstype,
    &cmn_opt_parm_trclevel,
};
constexpr const OptionRule* kCdswapOptions[] = {
    &ds_opt_parm_swap_field,
    &ds_opt_parm_locked,
    &ds_opt_parm_control,
    &ds_opt_parm_classifier,
    &ds_opt_parm_seed,
    &cmn_opt_parm_method,
    &cmn_opt_parm_flddef,
    &cmn_opt_parm_codepage,
    &cmn_opt_parm_dbmstype,
    &cmn_opt_parm_trclevel,
};
constexpr const OptionRule* kDdswapOptions[] = {
    &ds_opt_parm_swap_field,
    &ds_opt_parm_locked,
    &cmn_opt_parm_size,
    &ds_opt_parm_seed,
    &cmn_opt_parm_method,
    &cmn_opt_parm_flddef,
    &cmn_opt_parm_codepage,
    &cmn_opt_parm_dbmstype,
    &cmn_opt_parm_trclevel,
};
// clang-format on
constexpr OptionIndex kDswapIndex = index_options(kDswapOptions);
constexpr OptionIndex kCdswapIndex = index_options(kCdswapOptions);
constexpr OptionIndex kDdswapIndex = index_options(kDdswapOptions);

}  // namespace

// Deliberate: named by general words, but stored with the providers' own types; kept for callers,
// which select the provider by them.
constexpr StatementRule tavo_service_provider_dswap = {
    .name = "tavo_service_provider_dswap",
    .head = provider_head(TAVO_PARSER_TOKEN_DS, TAVO_PARSER_PROVIDER_DSWAP),
    .list_rule = "ds_opt_parm_list",
    .option_rule = "ds_opt_parm",
    .options = kDswapOptions,
    .index = &kDswapIndex,
};
constexpr StatementRule tavo_service_provider_cdswap = {
    .name = "tavo_service_provider_cdswap",
    .head = provider_head(TAVO_PARSER_TOKEN_CDS, TAVO_PARSER_PROVIDER_CDSWAP),
    .list_rule = "cds_opt_parm_list",
    .option_rule = "cds_opt_parm",
    .options = kCdswapOptions,
    .index = &kCdswapIndex,
};
constexpr StatementRule tavo_service_provider_ddswap = {
    .name = "tavo_service_provider_ddswap",
    .head = provider_head(TAVO_PARSER_TOKEN_DDS, TAVO_PARSER_PROVIDER_DDSWAP),
    .list_rule = "dds_opt_parm_list",
    .option_rule = "dds_opt_parm",
    .options = kDdswapOptions,
    .index = &kDdswapIndex,
};

}  // namespace tavo
