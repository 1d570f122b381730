// Key types and value types as the language's tables know them, in the form that statements by the
// million are looked at: one look-up a pair, nothing allocated.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavo::cli {

// How two values under one key are compared.
enum class ValueClass : uint8_t {
  kText,     // exactly, by value type and text
  kFolded,   // by value type and text, in either case: patterns such as 6C
  kKeyword,  // by the value type alone: spellings of one meaning share it
  kInteger,  // by value type and text; greater and less compare numbers
};

struct KeyInfo {
  std::string name;          // shortest spelling; empty for key types that no option stores
  bool in_group = false;     // stored inside parentheses, with the option's keyword as prefix
  bool is_user_key = false;  // of a user's own provider: the key text is the name

  ValueClass classify(uint32_t value_type) const;

  std::vector<uint32_t> keyword_types;  // sorted value types that stand for keywords
  std::vector<uint32_t> folded_types;   // sorted
};

// Of a key type; an empty one for numbers that are none. Made once.
const KeyInfo& key_info(uint32_t key_type);

// A way to write a value: what `spelling` under `key_type` stores as its value type.
struct KeywordValue {
  uint32_t key_type = 0;
  uint32_t value_type = 0;
};

// The key types that options of this spelling store, in any statement; in any case.
std::vector<uint32_t> key_types_of(std::string_view spelling);
// The value types that this spelling of a value stands for, under each key type.
std::vector<KeywordValue> keyword_values_of(std::string_view spelling);
// The first spelling in the tables of what a value type stands for under a key type, or "".
std::string value_name(uint32_t key_type, uint32_t value_type);
// All spellings of options, for "did you mean".
const std::vector<std::string>& option_spellings();
// Whether it is an option with parameters, such as FLDDEF or FLDDEF7; the bare keyword, upper case,
// in its shortest spelling, else "".
std::string group_of(std::string_view word);

}  // namespace tavo::cli
