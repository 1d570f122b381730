// The vocabulary as tables: which word is which token, and how each token is spelled. Everything is
// derived from TAVOVocabulary.def at compile time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "Grammar/lexer/word_hash.h"
#include "TAVOParserTokens.h"

namespace tavo {

enum class TokenKind : uint8_t {
  kReserved,         // the recognizer's numbers 0 to 3
  kPunctuation,      // one character
  kPattern,          // described by a rule
  kKeyword,          // a word in either case
  kNumberedKeyword,  // a word, ignoring case, alone or with a number from 1 to 99
  kValue,            // a structured value in either case
  kKeyLiteral,       // a word in exactly this case
  kFragment,         // never a token by itself
};

struct TokenInfo {
  TokenKind kind;
  uint16_t first_spelling;  // index into the spellings
  uint16_t spelling_count;
};

inline constexpr uint32_t kTokenTypeCount = TAVO_TOKEN_NAME_COUNT;

// Describes a token type; numbers out of range are kReserved.
TokenInfo token_info(uint32_t type);
// The index-th of all spellings, in uppercase; static, terminated text.
std::string_view spelling(size_t index);

// A slot of the perfect hash.
struct Word {
  uint64_t head = 0;  // as in WordRun
  uint64_t tail = 0;
  uint16_t spelling = 0;
  uint16_t type = 0;
  uint8_t length = 0;  // 0: empty slot
  TokenKind kind = TokenKind::kReserved;
  // Length of a keyword that head and tail contain completely and that is a keyword in any case and
  // whatever follows it; else 0.
  uint8_t plain_length = 0;
};

struct WordTable {
  Displacements displacements{};
  std::array<Word, WordHash::kSlots> words{};
};

namespace detail {

extern const WordTable kWordTable;

// The only word that a run of characters can be.
inline const Word& word_at_place_of(uint64_t head, uint64_t tail, size_t length) {
  const WordHash hash(head, tail, length);
  return kWordTable.words[hash.slot(kWordTable.displacements[hash.bucket()])];
}

}  // namespace detail

// PREFIX, SUFFIX or OVERLAY: with a parenthesis after it, the beginning of a longer token.
constexpr bool is_affix(uint32_t type) {
  return type == TAVO_PARSER_TOKEN_PREFIX || type == TAVO_PARSER_TOKEN_SUFFIX ||
         type == TAVO_PARSER_TOKEN_OVERLAY;
}

// Whether a run of non-blank characters is this word. The caller checks the case of key literals:
// this function sees only folded text. head, tail: as in WordRun; text: the run as typed; length in
// characters.
bool is_spelled(const Word& word, uint64_t head, uint64_t tail, const uint16_t* text,
                size_t length);

namespace detail {

inline constexpr std::string_view kNumberedStem = "FLDDEF";

constexpr uint64_t pack_stem() {
  uint64_t packed = 0;
  for (size_t i = 0; i < kNumberedStem.size(); ++i) {
    packed |= uint64_t{static_cast<unsigned char>(kNumberedStem[i])} << (8 * i);
  }
  return packed;
}

}  // namespace detail

// Whether a word is FLDDEF1 to FLDDEF99: one keyword with a number, without a spelling for each.
// head: as in WordRun.
inline bool is_numbered_keyword(uint64_t head, size_t length) {
  constexpr size_t kStem = detail::kNumberedStem.size();
  constexpr unsigned kStemBits = 8 * kStem;
  if ((head & ((uint64_t{1} << kStemBits) - 1)) != detail::pack_stem()) return false;
  if (length <= kStem || length > kStem + 2) return false;
  const uint64_t first = head >> kStemBits & 0xFF;
  const uint64_t second = head >> (kStemBits + 8);
  return first - '1' < 9u && (length == kStem + 1 || second - '0' < 10u);
}

// Indices of the spellings that contain blanks.
std::span<const uint16_t> spellings_with_blanks();
// Type of the token that the index-th spelling belongs to.
uint16_t type_of_spelling(size_t index);

}  // namespace tavo
