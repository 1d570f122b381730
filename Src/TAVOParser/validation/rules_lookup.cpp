#include "validation/rules.h"

namespace tavo {
namespace {

bool is_cached(const StoredPairs& p) {
  return !p.is(TAVO_PARSER_LKP_PARM_CACHE, TAVO_PARSER_PARAMVAL_NO);
}

bool replace_is_missing(const StoredPairs& p) {
  return !p.has(TAVO_PARSER_CMN_PARM_REPLACE);
}
bool search_is_missing(const StoredPairs& p) {
  return !p.has(TAVO_PARSER_LKP_PARM_SEARCH);
}
bool cachesize_is_no_size(const StoredPairs& p) {
  if (!p.has(TAVO_PARSER_LKP_PARM_CACHESIZE) || !is_cached(p)) return false;
  const StoredText text = p.text(TAVO_PARSER_LKP_PARM_CACHESIZE);
  return text.length >= 12 || !in_range(to_int(text), 0, INT32_MAX);
}
bool cachesize_without_cache(const StoredPairs& p) {
  return p.has(TAVO_PARSER_LKP_PARM_CACHESIZE) && !is_cached(p);
}
bool tmpdir_without_cache(const StoredPairs& p) {
  return p.has(TAVO_PARSER_CMN_PARM_TMPDIR) && !is_cached(p);
}
bool limit_out_of_range(const StoredPairs& p) {
  if (!p.has(TAVO_PARSER_LKP_PARM_LIMIT)) return false;
  const StoredText text = p.text(TAVO_PARSER_LKP_PARM_LIMIT);
  return text.length >= 12 || !in_range(to_int(text), 0, 2000000000);
}

// ---- rules of both LOOKUP and HASHLOOKUP -------------------------------------------------------

constexpr ValidationRule kReplace = {7138, {TAVO_PARSER_CMN_PARM_REPLACE}, replace_is_missing};
constexpr ValidationRule kCacheSize = {
    7142, {TAVO_PARSER_LKP_PARM_CACHESIZE, TAVO_PARSER_LKP_PARM_CACHE}, cachesize_is_no_size};
constexpr ValidationRule kCacheSizeWithoutCache = {
    7141,
    {TAVO_PARSER_LKP_PARM_CACHESIZE, TAVO_PARSER_LKP_PARM_CACHE},
    cachesize_without_cache,
    TAVO_PARSER_LKP_PARM_CACHESIZE};
constexpr ValidationRule kTmpdirWithoutCache = {
    7141,
    {TAVO_PARSER_CMN_PARM_TMPDIR, TAVO_PARSER_LKP_PARM_CACHE},
    tmpdir_without_cache,
    TAVO_PARSER_CMN_PARM_TMPDIR};

constexpr ValidationRule kLookup[] = {
    {7149, {TAVO_PARSER_LKP_PARM_SEARCH}, search_is_missing},
    kReplace,
    kCacheSize,
    kCacheSizeWithoutCache,
    kTmpdirWithoutCache,
};

constexpr ValidationRule kHashLookup[] = {
    {7162, {TAVO_PARSER_CMN_PARM_CASE}, case_is_not_upper},
    {7150, {TAVO_PARSER_LKP_PARM_SEARCH}, search_is_missing},
    kReplace,
    kCacheSize,
    kCacheSizeWithoutCache,
    kTmpdirWithoutCache,
    {7155,
     {TAVO_PARSER_CMN_PARM_SEED, TAVO_PARSER_CMN_PARM_ALGORITHM},
     [](const StoredPairs& p) { return has_seed(p, TAVO_PARSER_SEED_HMAC) && !is_sha256(p); }},
    {7136, {TAVO_PARSER_CMN_PARM_SEED}, literal_seed_is_no_number},
};

constexpr ValidationRule kRandomLookup[] = {
    kReplace,
    {7137, {TAVO_PARSER_LKP_PARM_LIMIT}, limit_out_of_range},
};

}  // namespace

constexpr ProviderRules kLookupRules = {TAVO_PARSER_PROVIDER_LOOKUP, kStringPlaceholders, kLookup};
constexpr ProviderRules kHashLookupRules = {TAVO_PARSER_PROVIDER_HASHLOOKUP, kStringPlaceholders,
                                            kHashLookup};
constexpr ProviderRules kRandomLookupRules = {TAVO_PARSER_PROVIDER_RANDOMLOOKUP,
                                              kStringPlaceholders, kRandomLookup};

}  // namespace tavo
