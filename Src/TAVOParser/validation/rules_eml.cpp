#include "validation/rules.h"

namespace tavo {
namespace {

bool is_hash(const StoredPairs& p) {
  return p.is(TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_METHOD_HASH);
}
bool has_literal_seed(const StoredPairs& p) {
  return has_seed(p, TAVO_PARSER_SEED_LITERAL);
}

constexpr ValidationRule kRules[] = {
    {7161,
     {TAVO_PARSER_CMN_PARM_ALGORITHM, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return p.has(TAVO_PARSER_CMN_PARM_ALGORITHM) && is_random(p); }},
    {7154,
     {TAVO_PARSER_CMN_PARM_ALGORITHM, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return is_sha256(p) && !is_hash(p); }},
    {7096,
     {TAVO_PARSER_CMN_PARM_WHENINVALID, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return p.has(TAVO_PARSER_CMN_PARM_WHENINVALID) && is_random(p); }},
    {7159,
     {TAVO_PARSER_EML_PARM_LITDOMAIN, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return p.has(TAVO_PARSER_EML_PARM_LITDOMAIN) && is_random(p); }},
    {7114,
     {TAVO_PARSER_EML_PARM_LITDOMAIN},
     [](const StoredPairs& p) { return p.text(TAVO_PARSER_EML_PARM_LITDOMAIN).length > 31; }},
    {7160,
     {TAVO_PARSER_CMN_PARM_SEED, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return p.has(TAVO_PARSER_CMN_PARM_SEED) && is_random(p); }},
    {7155,
     {TAVO_PARSER_CMN_PARM_SEED, TAVO_PARSER_CMN_PARM_ALGORITHM},
     [](const StoredPairs& p) { return has_seed(p, TAVO_PARSER_SEED_HMAC) && !is_sha256(p); }},
    {7116,
     {TAVO_PARSER_CMN_PARM_SEED},
     [](const StoredPairs& p) {
       return has_literal_seed(p) && p.text(TAVO_PARSER_CMN_PARM_SEED).length >= 32;
     }},
    {7154,
     {TAVO_PARSER_CMN_PARM_SEED, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return has_literal_seed(p) && !is_hash(p); }},
    {7157,
     {TAVO_PARSER_CMN_PARM_SEED, TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_CMN_PARM_ALGORITHM},
     [](const StoredPairs& p) {
       return has_literal_seed(p) && is_hash(p) && is_sha256(p) &&
              !in_range(to_unsigned(p.text(TAVO_PARSER_CMN_PARM_SEED)), 0u, 2000000000u);
     }},
    {7158,
     {TAVO_PARSER_EML_PARM_HASHDOMAIN, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return p.has(TAVO_PARSER_EML_PARM_HASHDOMAIN) && is_random(p); }},
    {7154,
     {TAVO_PARSER_EML_PARM_HASHDOMAIN, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return p.has(TAVO_PARSER_EML_PARM_HASHDOMAIN) && !is_hash(p); }},
    {7115,
     {TAVO_PARSER_EML_PARM_USERPREFIX},
     [](const StoredPairs& p) { return p.text(TAVO_PARSER_EML_PARM_USERPREFIX).length > 512; }},
    {7108,
     {TAVO_PARSER_EML_PARM_USERPREFIX, TAVO_PARSER_CMN_PARM_METHOD},
     [](const StoredPairs& p) { return p.has(TAVO_PARSER_EML_PARM_USERPREFIX) && is_hash(p); }},
    {7107,
     {TAVO_PARSER_EML_PARM_USERPREFIX, TAVO_PARSER_CMN_PARM_PARTS},
     [](const StoredPairs& p) {
       return p.has(TAVO_PARSER_EML_PARM_USERPREFIX) && p.has(TAVO_PARSER_CMN_PARM_PARTS);
     }},
    {7109,
     {TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_CMN_PARM_PARTS},
     [](const StoredPairs& p) { return is_hash(p) && p.has(TAVO_PARSER_CMN_PARM_PARTS); }},
    {7112,
     {TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_EML_PARM_LITDOMAIN},
     [](const StoredPairs& p) { return is_hash(p) && p.has(TAVO_PARSER_EML_PARM_LITDOMAIN); }},
    {7110,
     {TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_CMN_PARM_CASE},
     [](const StoredPairs& p) { return is_hash(p) && p.has(TAVO_PARSER_CMN_PARM_CASE); }},
    {7111,
     {TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_EML_PARM_NAME1COL_FIRSTCHAR},
     [](const StoredPairs& p) {
       return is_hash(p) && p.has(TAVO_PARSER_EML_PARM_NAME1COL_FIRSTCHAR);
     }},
    {7113,
     {TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_CMN_PARM_SEPARATOR},
     [](const StoredPairs& p) { return is_hash(p) && p.has(TAVO_PARSER_CMN_PARM_SEPARATOR); }},
};

}  // namespace

constexpr ProviderRules kEmlRules = {TAVO_PARSER_PROVIDER_EML, {}, kRules};

}  // namespace tavo
