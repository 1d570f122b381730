// The types of the validation tables: for each provider an ordered list of conditions, each with
// the error number of its violation. The first violation ends validation.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "validation/stored_pairs.h"

namespace tavo {

struct ValidationRule {
  uint16_t number;
  std::array<uint16_t, 4> keys;  // key types that the rule reads; unused ones 0
  bool (*violated)(const StoredPairs& pairs);
  uint16_t insert_key = 0;  // key type whose key text is the message's insert, or none
};

// A text that the recognizer leaves for a missing value, and the keys whose values are checked for
// it.
struct PlaceholderRule {
  uint16_t number;
  uint16_t key;
  std::wstring_view text;
};

struct ProviderRules {
  uint16_t provider;  // value type of the provider pair
  std::span<const PlaceholderRule> placeholders;
  std::span<const ValidationRule> rules;
};

extern const ProviderRules kAgeRules;
extern const ProviderRules kCcnRules;
extern const ProviderRules kColRules;
extern const ProviderRules kEmlRules;
extern const ProviderRules kHashRules;
extern const ProviderRules kLookupRules;
extern const ProviderRules kHashLookupRules;
extern const ProviderRules kRandomLookupRules;
extern const ProviderRules kNidRules;
extern const ProviderRules kDswapRules;
extern const ProviderRules kCdswapRules;
extern const ProviderRules kDdswapRules;

// The rules of one provider, by the value type of the provider pair; null for any other type.
const ProviderRules* rules_of(uint32_t provider);

// ---- conditions that several providers share ---------------------------------------------------

inline bool is_sha256(const StoredPairs& p) {
  return p.is(TAVO_PARSER_CMN_PARM_ALGORITHM, TAVO_PARSER_HASH_ALGO_SHA256);
}
inline bool is_random(const StoredPairs& p) {
  return p.is(TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_METHOD_RANDOM);
}
inline bool has_seed(const StoredPairs& p, uint32_t type) {
  return p.is(TAVO_PARSER_CMN_PARM_SEED, type);
}
// A CASE pair whose value is not uppercase.
inline bool case_is_not_upper(const StoredPairs& p) {
  const StoredText text = p.text(TAVO_PARSER_CMN_PARM_CASE);
  return p.has(TAVO_PARSER_CMN_PARM_CASE) && !text.equals(L"UP") && !text.equals(L"UPPER");
}
// A literal seed that is not a number from 0 to 2000000000 with 1 to 11 characters.
inline bool literal_seed_is_no_number(const StoredPairs& p) {
  if (!has_seed(p, TAVO_PARSER_SEED_LITERAL)) return false;
  const StoredText text = p.text(TAVO_PARSER_CMN_PARM_SEED).trimmed();
  return text.length < 1 || text.length > 11 || !in_range(to_int(text), 0, 2000000000);
}

inline constexpr std::wstring_view kMissingInteger = L"<missing INTEGER";
inline constexpr std::wstring_view kMissingCopyColumns = L"<missing TAVO_PARSER_COPY_COL_SYNTAX";
// Deliberate: without the leading "<" of the others; kept, since it decides which values are
// refused.
inline constexpr std::wstring_view kMissingQuotedString = L"missing TAVO_PARSER_STRING_WITH_QUOTES";
inline constexpr std::wstring_view kMissingFormat = L"<missing TAVO_PARSER_NID_FORMAT_";

// Nearly every value differs from all of them in its first character.
constexpr bool begins_placeholder(wchar_t character) {
  return character == L'<' || ascii_lower(character) == L'm';
}
static_assert(begins_placeholder(kMissingInteger.front()) &&
              begins_placeholder(kMissingCopyColumns.front()) &&
              begins_placeholder(kMissingQuotedString.front()) &&
              begins_placeholder(kMissingFormat.front()));

// Of the lookup and swap statements.
inline constexpr PlaceholderRule kStringPlaceholders[] = {
    {7176, TAVO_PARSER_LKP_PARM_SEARCH, kMissingQuotedString},
    {7177, TAVO_PARSER_CMN_PARM_REPLACE, kMissingQuotedString},
    {7178, TAVO_PARSER_CMN_PARM_SOURCE, kMissingQuotedString},
    {7179, TAVO_PARSER_CMN_PARM_PRESERVE_NULL, kMissingQuotedString},
    {7180, TAVO_PARSER_CMN_PARM_PRESERVE_SPACES, kMissingQuotedString},
    {7181, TAVO_PARSER_CMN_PARM_PRESERVE_ZEROLENGTH, kMissingQuotedString},
    {7182, TAVO_PARSER_CMN_PARM_TMPDIR, kMissingQuotedString},
};

}  // namespace tavo
