// The keys and values of pairs, and the trace levels, in UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>

#include "reading/result.h"

namespace tavo {

// What a pass stored.
struct StoredTexts {
  const wchar_t* wide;  // the statement's text after the pass
  const KeyValueEntry* pairs;
  uint32_t pair_count;
  TraceLevel* levels;
  uint32_t level_count;
};

// For an ASCII statement: narrows the wide text and the keys after it, including the terminators of
// keys and values, and sets the text of the trace levels. bytes: space for one byte per character.
void narrow_texts(const StoredTexts& stored, const wchar_t* end, char* bytes);

// For any statement: writes keys and values one after the other. texts: receives one entry per
// pair; bytes: space for the statement in UTF-8 and a terminator; keys: space for the prefixed
// keys.
void write_texts(const StoredTexts& stored, OptionText* texts, char* bytes, char* keys);

}  // namespace tavo
