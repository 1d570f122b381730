#include "validation/rules.h"

namespace tavo {
namespace {

// A seed from an environment variable is not checked.
constexpr ValidationRule kRules[] = {
    {7163, {TAVO_PARSER_CMN_PARM_CASE}, case_is_not_upper},
    {7144,
     {TAVO_PARSER_CMN_PARM_DSTFLD},
     [](const StoredPairs& p) { return !p.has(TAVO_PARSER_CMN_PARM_DSTFLD); }},
    {7164,
     {TAVO_PARSER_HASH_PARM_HASHMAX},
     [](const StoredPairs& p) {
       return p.has(TAVO_PARSER_HASH_PARM_HASHMAX) &&
              !in_range(to_long_long(p.text(TAVO_PARSER_HASH_PARM_HASHMAX)), int64_t{0},
                        int64_t{4294967295});
     }},
    {7156,
     {TAVO_PARSER_CMN_PARM_SEED, TAVO_PARSER_CMN_PARM_ALGORITHM},
     [](const StoredPairs& p) { return has_seed(p, TAVO_PARSER_SEED_FLDNAME) && is_sha256(p); }},
    {7155,
     {TAVO_PARSER_CMN_PARM_SEED, TAVO_PARSER_CMN_PARM_ALGORITHM},
     [](const StoredPairs& p) { return has_seed(p, TAVO_PARSER_SEED_HMAC) && !is_sha256(p); }},
    {7136, {TAVO_PARSER_CMN_PARM_SEED}, literal_seed_is_no_number},
    {7156,
     {TAVO_PARSER_CMN_PARM_SEED, TAVO_PARSER_CMN_PARM_ALGORITHM},
     [](const StoredPairs& p) { return has_seed(p, TAVO_PARSER_SEED_RANDOM) && is_sha256(p); }},
};

}  // namespace

constexpr ProviderRules kHashRules = {TAVO_PARSER_PROVIDER_HASH, {}, kRules};

}  // namespace tavo
