// The key-value array of a request: the work of the exports, without trace frames.
#pragma once

#include <cstdint>

#include "TAVOParser.h"

namespace tavo {

// The value types whose texts are stored without their quotes.
constexpr bool is_quoted(uint32_t value_id) {
  return value_id == TAVO_PARSER_STRING_WITH_QUOTES || value_id == TAVO_PARSER_SEED_LITERAL ||
         value_id == TAVO_PARSER_KEY_LITERAL;
}

// The keys that may repeat. Of any other key only the first pair is stored; repeats are dropped
// silently.
constexpr bool is_repeatable(uint32_t key_id) {
  switch (key_id) {
    case TAVO_PARSER_AFF_PARM_CLASS:
    case TAVO_PARSER_PARAM_FLDDEF_CODEPAGE:
    case TAVO_PARSER_PARAM_FLDDEF_DATATYPE:
    case TAVO_PARSER_PARAM_FLDDEF_DBMSTYPE:
    case TAVO_PARSER_PARAM_FLDDEF_LENGTH:
    case TAVO_PARSER_PARAM_FLDDEF_NAME:
    case TAVO_PARSER_PARAM_FLDDEF_PRECISION:
    case TAVO_PARSER_PARAM_FLDDEF_SCALE:
    case TAVO_PARSER_USER_PROVIDER_KEY: return true;
    default: return false;
  }
}

// Index of the first stored pair with this key, or TAVO_NO_KEY_INDEX.
uint32_t find_key(const RequestRecord* request, uint32_t key_id);

// Turns backslash-quote pairs into quotes, see ReplaceEscapedQuoteWithQuoteW.
void unescape_quotes(wchar_t* buffer, uint32_t* length_in_bytes);

}  // namespace tavo
