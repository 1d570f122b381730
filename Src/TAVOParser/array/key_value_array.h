// The key-value array of a request: the work of the exports, without trace frames.
#pragma once

#include <cstdint>

#include "TAVOParser.h"

namespace tavo {

// Index of the first stored pair with this key, or TAVO_NO_KEY_INDEX.
uint32_t find_key(const RequestRecord* request, uint32_t key_id);

// Turns backslash-quote pairs into quotes, see ReplaceEscapedQuoteWithQuoteW.
void unescape_quotes(wchar_t* buffer, uint32_t* length_in_bytes);

}  // namespace tavo
