// The vocabulary as tables: which word is which token, and how each token is spelled. Everything is
// derived from TAVOVocabulary.def at compile time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace tavo {

enum class TokenKind : uint8_t {
  kReserved,         // the recognizer's numbers 0 to 3
  kPunctuation,      // one character
  kPattern,          // described by a rule
  kKeyword,          // a word in either case
  kNumberedKeyword,  // a word in either case, bare or with a number from 1 to 99
  kValue,            // a structured value in either case
  kKeyLiteral,       // a word in exactly this case
  kFragment,         // never a token itself
};

struct TokenInfo {
  TokenKind kind;
  uint16_t first_spelling;  // index into the spellings
  uint16_t spelling_count;
};

inline constexpr uint32_t kTokenTypeCount = 351;

// What kind of token a type number is; numbers out of range are kReserved.
TokenInfo token_info(uint32_t type);
// The index-th spelling of all, upper case, static and terminated text.
std::string_view spelling(size_t index);

struct WordMatch {
  uint16_t type;  // 0: no word of the vocabulary
  TokenKind kind;
};

// Finds a word without blanks. The caller checks the case of key literals: the look-up sees folded
// text only.
// head, tail: the word's first and last eight characters (all of them when there are no more than
// eight) in upper case, packed with the first one lowest; text: the word as typed.
WordMatch find_word(uint64_t head, uint64_t tail, const uint16_t* text, size_t length);

// Indices of the spellings that contain blanks.
std::span<const uint16_t> spellings_with_blanks();
// Type of the token that the index-th spelling belongs to.
uint16_t type_of_spelling(size_t index);

}  // namespace tavo
