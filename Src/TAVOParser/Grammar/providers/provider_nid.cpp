// NID: national identification numbers of six countries.
#include "Grammar/providers/common_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

constexpr OptionRule nid_parm_switch = {
    .name = "nid_parm_switch",
    .keywords = {{TAVO_PARSER_CMN_PARM_SWITCH}},
    .key_type = TAVO_PARSER_CMN_PARM_SWITCH,
    .values = {{{
        {TAVO_PARSER_NID_CTRY_CA},
        {TAVO_PARSER_NID_CTRY_ES},
        {TAVO_PARSER_NID_CTRY_FR},
        {TAVO_PARSER_NID_CTRY_IT},
        {TAVO_PARSER_NID_CTRY_UK},
        {TAVO_PARSER_NID_CTRY_US},
    }}},
};
constexpr OptionRule nid_opt_parm_validate = {
    .name = "nid_opt_parm_validate",
    .keywords = {{TAVO_PARSER_CMN_PARM_VALIDATE}},
    .key_type = TAVO_PARSER_CMN_PARM_VALIDATE,
    .values = kYesOrNo,
};
constexpr OptionRule nid_opt_parm_table = {
    .name = "nid_opt_parm_table",
    .keywords = {{TAVO_PARSER_NID_PARM_AREATABLE}},
    .key_type = TAVO_PARSER_NID_PARM_AREATABLE,
    .values = {{{
        {TAVO_PARSER_AREATABLE_DIST},
        {TAVO_PARSER_AREATABLE_MAXGROUP},
        {TAVO_PARSER_AREATABLE_HRM},
    }}},
};

// ---- formats: value type 0, deliberately; callers read the key type -----------------------------

constexpr OptionRule nid_opt_parm_format_us = {
    .name = "nid_opt_parm_format_us",
    .keywords = {{TAVO_PARSER_NID_CTRY_US}},
    .key_type = TAVO_PARSER_PARAM_FMT_US,
    .values = {{{
        {NINE_X, kNoType},
        {TAVO_PARSER_NID_FORMAT_US_VALUES, kNoType},
        {THREE_C_SIX_X, kNoType},
    }}},
};
constexpr OptionRule nid_opt_parm_format_fr = {
    .name = "nid_opt_parm_format_fr",
    .keywords = {{TAVO_PARSER_NID_CTRY_FR}},
    .key_type = TAVO_PARSER_PARAM_FMT_FR,
    .values = {{{{TAVO_PARSER_NID_FORMAT_FR_VALUES, kNoType}}}},
};
constexpr OptionRule nid_opt_parm_format_ca = {
    .name = "nid_opt_parm_format_ca",
    .keywords = {{TAVO_PARSER_NID_CTRY_CA}},
    .key_type = TAVO_PARSER_PARAM_FMT_CA,
    .values = {{{
        {NINE_X, kNoType},
        {TAVO_PARSER_NID_FORMAT_CA_VALUES, kNoType},
        {THREE_C_SIX_X, kNoType},
    }}},
};
constexpr OptionRule nid_opt_parm_format_it = {
    .name = "nid_opt_parm_format_it",
    .keywords = {{TAVO_PARSER_NID_CTRY_IT}},
    .key_type = TAVO_PARSER_PARAM_FMT_IT,
    .values = {{{{TAVO_PARSER_NID_FORMAT_IT_VALUES, kNoType}}}},
};
constexpr OptionRule nid_opt_parm_format_uk = {
    .name = "nid_opt_parm_format_uk",
    .keywords = {{TAVO_PARSER_NID_CTRY_UK}},
    .key_type = TAVO_PARSER_PARAM_FMT_UK,
    .values = {{{{NINE_X, kNoType}, {TAVO_PARSER_NID_FORMAT_UK_VALUES, kNoType}}}},
};
constexpr OptionRule nid_opt_parm_format_es = {
    .name = "nid_opt_parm_format_es",
    .keywords = {{TAVO_PARSER_NID_CTRY_ES}},
    .key_type = TAVO_PARSER_PARAM_FMT_ES,
    .values = {{{{TAVO_PARSER_NID_FORMAT_ES_VALUES, kNoType}}}},
};

constexpr const OptionRule* kFormats[] = {
    &nid_opt_parm_format_us, &nid_opt_parm_format_fr, &nid_opt_parm_format_ca,
    &nid_opt_parm_format_it, &nid_opt_parm_format_uk, &nid_opt_parm_format_es,
};

constexpr OptionIndex kFormatIndex = index_options(kFormats);

constexpr OptionRule nid_opt_parm_format = {
    .name = "nid_opt_parm_format",
    .keywords = {{TAVO_PARSER_NID_PARM_FORMAT}},
    .key_type = TAVO_PARSER_NID_PARM_FORMAT,
    .syntax = ValueSyntax::kParameters,
    .parameters = kFormats,
    .parameter_index = &kFormatIndex,
    .parameter_rule = "nid_parm_fmt_val",
};

// clang-format off
constexpr const OptionRule* kOptions[] = {
    &nid_parm_switch,
    &nid_opt_parm_validate,
    &cmn_opt_parm_wheninvalid,
    &nid_opt_parm_format,
    &cmn_opt_parm_method,
    &cmn_opt_parm_source,
    &nid_opt_parm_table,
    &cmn_opt_parm_flddef,
    &cmn_opt_parm_codepage,
    &cmn_opt_parm_dbmstype,
    &cmn_opt_parm_discardlimit,
    &cmn_opt_parm_trclevel,
};
// clang-format on
constexpr OptionIndex kIndex = index_options(kOptions);

}  // namespace

constexpr StatementRule tavo_service_provider_nid = {
    .name = "tavo_service_provider_nid",
    .head = provider_head(TAVO_PARSER_PROVIDER_NID, TAVO_PARSER_PROVIDER_NID),
    .list_rule = "nid_opt_parm_list",
    .option_rule = "nid_opt_parm",
    .options = kOptions,
    .index = &kIndex,
};

}  // namespace tavo
