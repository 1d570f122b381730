#include "validation/rules.h"

namespace tavo {
namespace {

constexpr ValidationRule kRules[] = {
    {7096,
     {TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_CMN_PARM_WHENINVALID},
     [](const StoredPairs& p) { return is_random(p) && p.has(TAVO_PARSER_CMN_PARM_WHENINVALID); }},
    {7106,
     {TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_CMN_PARM_PATTERN},
     [](const StoredPairs& p) { return is_random(p) && p.has(TAVO_PARSER_CMN_PARM_PATTERN); }},
};

}  // namespace

constexpr ProviderRules kCcnRules = {TAVO_PARSER_PROVIDER_CCN, {}, kRules};

}  // namespace tavo
