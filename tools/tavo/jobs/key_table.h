// Key types and value types of the language's tables, prepared for millions of statements: one
// lookup per pair, no allocation.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavo::cli {

// How two values of one key are compared.
enum class ValueClass : uint8_t {
  kText,     // exactly, by value type and text
  kFolded,   // by value type and text, ignoring case: patterns such as 6C
  kKeyword,  // only by value type, which synonyms share
  kInteger,  // by value type and text; greater and less compare numbers
};

struct KeyInfo {
  std::string name;          // shortest spelling; empty for key types that no option stores
  bool in_group = false;     // stored inside parentheses, with the option's keyword as prefix
  bool is_user_key = false;  // of a user-written provider: the key text is the name

  ValueClass classify(uint32_t value_type) const;

  std::vector<uint32_t> keyword_types;  // sorted value types that stand for keywords
  std::vector<uint32_t> folded_types;   // sorted
};

// Describes a key type; empty for other numbers. Built once.
const KeyInfo& key_info(uint32_t key_type);

// A spelling of a value: the value type that `spelling` stores under `key_type`.
struct KeywordValue {
  uint32_t key_type = 0;
  uint32_t value_type = 0;
};

// The key types that options of this spelling store in any statement; ignores case.
std::vector<uint32_t> key_types_of(std::string_view spelling);
// The value types of this spelling of a value, for each key type.
std::vector<KeywordValue> keyword_values_of(std::string_view spelling);
// The first spelling in the tables of a value type under a key type, or "".
std::string value_name(uint32_t key_type, uint32_t value_type);
// All spellings of options, for "did you mean".
const std::vector<std::string>& option_spellings();
// For an option with parameters, such as FLDDEF or FLDDEF7: the keyword without number, in
// uppercase and its shortest spelling; else "".
std::string group_of(std::string_view word);

}  // namespace tavo::cli
