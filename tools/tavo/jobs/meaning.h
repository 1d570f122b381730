// What a statement means: the pairs that the library stores for it, regardless of spelling, case,
// order of options and layout. Results are views into the pairs of a ParseResult.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "TAVOParserCpp.hpp"

namespace tavo::cli {

// The option with parameters that a pair belongs to, as typed ("FLDDEF1"), or empty.
std::wstring_view group_of(const Pair& pair);
// The key text after the group: the keyword as typed.
std::wstring_view keyword_of(const Pair& pair);
// NAME, FLDDEF1.NAME, or the key of a user-written provider; for display and for grouping.
std::wstring key_name(const Pair& pair);

// Whether two pairs of the same name have the same value.
bool same_value(const Pair& a, const Pair& b);

// Whether a text equals an ASCII text, ignoring case.
bool equal_folded(std::wstring_view a, std::wstring_view b);

// The provider's name in its first spelling, "LIB=name" for a user provider, or "".
std::wstring provider_of(const ParseResult& result);

// The fields that a statement names: destination, else source, else the names of its field
// definitions. Empty when it names none.
std::wstring field_of(const ParseResult& result);

// Equal for equal meanings. Seeded per process, so that collisions cannot be prepared; never stored
// or shown, because it depends on secrets.
struct MeaningHash {
  uint64_t high = 0;
  uint64_t low = 0;

  friend bool operator==(const MeaningHash&, const MeaningHash&) = default;
  friend auto operator<=>(const MeaningHash&, const MeaningHash&) = default;
};

// Hash of a pair's key, without its value.
MeaningHash hash_of_key(const Pair& pair);
MeaningHash hash_of(const Pair& pair);
// Hash of all pairs, independent of their order, except for pairs of one key.
MeaningHash hash_of(const ParseResult& result);
// Hash of a text, for rejected statements.
MeaningHash hash_of(std::wstring_view text);

}  // namespace tavo::cli
