// The texts of the options of a statement in UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>

#include "reading/result.h"

namespace tavo {

struct OptionTable {
  const KeyValueEntry* pairs;
  const StoredOption* options;
  OptionText* texts;  // out: one for each option
  uint32_t count;
};

// The wide text of a statement after a pass: each stored text is terminated in it.
struct StoredWideText {
  const wchar_t* text;
  uint32_t characters;
  bool is_ascii;
};

// bytes: room for the text in UTF-8 and a terminator; keys: room for the keys with a prefix.
void write_texts(const OptionTable& table, const StoredWideText& wide, char* bytes, char* keys);

}  // namespace tavo
