// The texts of pairs and trace levels in UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>

#include "reading/result.h"

namespace tavo {

// What a pass stored.
struct StoredTexts {
  const wchar_t* wide;  // the text of the statement after the pass
  const KeyValueEntry* pairs;
  uint32_t pair_count;
  TraceLevel* levels;
  uint32_t level_count;
};

// Of a statement of ASCII: narrows the wide text and the keys after it, in which the texts of the
// pairs are terminated, and sets the texts of the trace levels. bytes: room for a byte for each.
void narrow_texts(const StoredTexts& stored, const wchar_t* end, char* bytes);

// Of any statement: writes the texts one after the other. texts: out, one for each pair; bytes:
// room for the statement's text in UTF-8 and a terminator; keys: room for the keys with a prefix.
void write_texts(const StoredTexts& stored, OptionText* texts, char* bytes, char* keys);

}  // namespace tavo
