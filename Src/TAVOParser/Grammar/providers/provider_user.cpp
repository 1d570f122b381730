// A user-written provider: its library, field definitions, and pairs that the parser does not
// interpret.
#include "Grammar/providers/common_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {
namespace {

// Keys and values keep their token types: a keyword in their place is an error.
constexpr OptionRule userprovider_opt_parm_kvpair = {
    .name = "userprovider_opt_parm_kvpair",
    .keywords = {{TAVO_PARSER_STRING_WITHOUT_QUOTES}},
    .key_type = TAVO_PARSER_USER_PROVIDER_KEY,
    .values = {{{
        {INTEGER},
        {TAVO_PARSER_STRING_WITHOUT_QUOTES},
        {TAVO_PARSER_STRING_WITH_QUOTES},
    }}},
};

// clang-format off
constexpr const OptionRule* kOptions[] = {
    &cmn_opt_parm_flddef,
    &userprovider_opt_parm_kvpair,
};
// clang-format on
constexpr OptionIndex kIndex = index_options(kOptions);

}  // namespace

constexpr StatementRule tavo_user_service_provider = {
    .name = "tavo_user_service_provider",
    .head =
        {
            .name = "user_provider",
            .keywords = {{TAVO_PARSER_TOKEN_LIB, TAVO_PARSER_TOKEN_LIBRARY}},
            .key_type = TAVO_PARSER_USER_PROVIDER_LIB,
            .values = {{{{TAVO_PARSER_STRING_WITHOUT_QUOTES, kNoType}}}},
        },
    .list_rule = "userprovider_opt_parm_list",
    .option_rule = "userprovider_opt_parm",
    .options = kOptions,
    .index = &kIndex,
};

}  // namespace tavo
