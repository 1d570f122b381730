#include "validation/rules.h"

namespace tavo {
namespace {

bool is_format_key(uint32_t key) {
  switch (key) {
    case TAVO_PARSER_PARAM_FMT_CA:
    case TAVO_PARSER_PARAM_FMT_ES:
    case TAVO_PARSER_PARAM_FMT_FR:
    case TAVO_PARSER_PARAM_FMT_IT:
    case TAVO_PARSER_PARAM_FMT_UK:
    case TAVO_PARSER_PARAM_FMT_US: return true;
    default: return false;
  }
}

// Any pair but the first one, which names the provider.
bool a_format_is_missing(const StoredPairs& p) {
  for (const KeyValueEntry* entry = p.begin() + 1; entry < p.end(); ++entry) {
    if (is_format_key(entry->keyId) && value_text(*entry).begins_with(kMissingFormat)) {
      return true;
    }
  }
  return false;
}

constexpr ValidationRule kRules[] = {
    {7104,
     {TAVO_PARSER_CMN_PARM_SWITCH},
     [](const StoredPairs& p) { return !p.has(TAVO_PARSER_CMN_PARM_SWITCH); }},
    {7105,
     {TAVO_PARSER_CMN_PARM_SWITCH, TAVO_PARSER_NID_PARM_AREATABLE},
     [](const StoredPairs& p) {
       return !p.is(TAVO_PARSER_CMN_PARM_SWITCH, TAVO_PARSER_NID_CTRY_US) &&
              p.has(TAVO_PARSER_NID_PARM_AREATABLE);
     }},
    {7173, {TAVO_PARSER_NID_PARM_FORMAT}, a_format_is_missing},
    {7096,
     {TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_CMN_PARM_WHENINVALID},
     [](const StoredPairs& p) { return is_random(p) && p.has(TAVO_PARSER_CMN_PARM_WHENINVALID); }},
    {7097,
     {TAVO_PARSER_CMN_PARM_METHOD, TAVO_PARSER_CMN_PARM_VALIDATE},
     [](const StoredPairs& p) {
       return is_random(p) && p.is(TAVO_PARSER_CMN_PARM_VALIDATE, TAVO_PARSER_PARAMVAL_YES);
     }},
};

}  // namespace

constexpr ProviderRules kNidRules = {TAVO_PARSER_PROVIDER_NID, {}, kRules};

}  // namespace tavo
