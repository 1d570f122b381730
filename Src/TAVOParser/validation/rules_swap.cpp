#include "validation/rules.h"

namespace tavo {
namespace {

constexpr ValidationRule kSwapField = {
    7151, {TAVO_PARSER_DS_PARM_SWAP_FIELD}, [](const StoredPairs& p) {
      return !p.has(TAVO_PARSER_DS_PARM_SWAP_FIELD);
    }};

constexpr ValidationRule kDswap[] = {kSwapField};
constexpr ValidationRule kCdswap[] = {
    kSwapField,
    {7152,
     {TAVO_PARSER_DS_PARM_CONTROL},
     [](const StoredPairs& p) { return !p.has(TAVO_PARSER_DS_PARM_CONTROL); }},
};
constexpr ValidationRule kDdswap[] = {
    kSwapField,
    {7153,
     {TAVO_PARSER_CMN_PARM_SIZE},
     [](const StoredPairs& p) { return !p.has(TAVO_PARSER_CMN_PARM_SIZE); }},
};

}  // namespace

constexpr ProviderRules kDswapRules = {TAVO_PARSER_PROVIDER_DSWAP, kStringPlaceholders, kDswap};
constexpr ProviderRules kCdswapRules = {TAVO_PARSER_PROVIDER_CDSWAP, kStringPlaceholders, kCdswap};
constexpr ProviderRules kDdswapRules = {TAVO_PARSER_PROVIDER_DDSWAP, kStringPlaceholders, kDdswap};

}  // namespace tavo
