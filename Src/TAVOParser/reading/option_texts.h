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

// Writes the texts one after the other. wide: the text of the statement after a pass; bytes: room
// for that text in UTF-8 and a terminator; keys: room for the keys with a prefix.
void write_texts(const OptionTable& table, const wchar_t* wide, char* bytes, char* keys);

// The texts of an option as the wide text has them; not terminated in it when no pair has them.
struct WideOption {
  const wchar_t* key;
  const wchar_t* value;
  uint32_t key_length;
  uint32_t value_length;
};
WideOption wide_option(const KeyValueEntry* pairs, const StoredOption& option, const wchar_t* wide);

}  // namespace tavo
