#include "Grammar/vocabulary.h"

#include <array>
#include <bit>

#include "Grammar/character_class.h"
#include "TAVOParser.h"

namespace tavo {
namespace {

// ---- rows --------------------------------------------------------------------------------------

struct Row {
  uint16_t type;
  TokenKind kind;
  std::array<std::string_view, 72> spellings;  // ends at the first empty one
};

template <typename... Spelling>
constexpr Row row(unsigned type, TokenKind kind, Spelling... spellings) {
  return {static_cast<uint16_t>(type), kind, {std::string_view(spellings)...}};
}

consteval auto make_rows() {
  return std::to_array<Row>({
#define TAVO_PUNCTUATION(number, name, text) row(number, TokenKind::kPunctuation, text),
#define TAVO_PATTERN(number, name, description) row(number, TokenKind::kPattern),
#define TAVO_KEYWORD(number, name, ...) row(number, TokenKind::kKeyword, __VA_ARGS__),
#define TAVO_NUMBERED_KEYWORD(number, name, word) row(number, TokenKind::kNumberedKeyword, word),
#define TAVO_VALUE(number, name, ...) row(number, TokenKind::kValue, __VA_ARGS__),
#define TAVO_KEY_LITERAL(number, name, text) row(number, TokenKind::kKeyLiteral, text),
#define TAVO_FRAGMENT(number, name) row(number, TokenKind::kFragment),
#include "TAVOVocabulary.def"
  });
}

struct Extent {
  size_t spellings = 0;
  size_t characters = 0;
  size_t with_blanks = 0;
};

consteval Extent measure() {
  Extent extent;
  for (const Row& r : make_rows()) {
    for (std::string_view s : r.spellings) {
      if (s.empty()) break;
      ++extent.spellings;
      extent.characters += s.size() + 1;
      if (s.find(' ') != std::string_view::npos) ++extent.with_blanks;
    }
  }
  return extent;
}
constexpr Extent kExtent = measure();

struct Spelling {
  uint64_t head;  // as in FoldedWord
  uint64_t tail;
  uint16_t offset;  // into the characters
  uint16_t type;
  uint8_t length;
  TokenKind kind;
};

// ---- hashing -----------------------------------------------------------------------------------

constexpr uint64_t pack(const char* text, size_t count) {
  uint64_t packed = 0;
  for (size_t i = 0; i < count; ++i) {
    packed |= uint64_t{static_cast<uint8_t>(text[i])} << (8 * i);
  }
  return packed;
}

inline constexpr unsigned kSlotBits = 11;

// First eight and last eight characters and the length tell nearly all spellings apart.
constexpr uint32_t mix(uint64_t head, uint64_t tail, size_t length) {
  const uint64_t h = (head ^ std::rotl(tail, 29)) + length * 0xC2B2AE3D27D4EB4Fu;
  return static_cast<uint32_t>((h * 0x9E3779B97F4A7C15u) >> (64 - kSlotBits));
}

constexpr uint64_t head_of(std::string_view s) {
  return pack(s.data(), s.size() < 8 ? s.size() : 8);
}
constexpr uint64_t tail_of(std::string_view s) {
  return s.size() < 8 ? head_of(s) : pack(s.data() + s.size() - 8, 8);
}

// ---- tables ------------------------------------------------------------------------------------

struct Tables {
  std::array<TokenInfo, kTokenTypeCount> tokens{};
  std::array<Spelling, kExtent.spellings> spellings{};
  std::array<char, kExtent.characters> characters{};  // each spelling terminated
  std::array<uint16_t, kExtent.with_blanks> with_blanks{};
  std::array<uint16_t, 1u << kSlotBits> slots{};  // index of a spelling + 1, or 0
};

// Not constant, so that calling them while the tables are made stops the compiler.
void a_token_number_stands_twice() {}
void a_token_number_is_missing() {}

consteval Tables make_tables() {
  Tables t;
  size_t spelling = 0, character = 0, blank = 0;
  for (const Row& r : make_rows()) {
    TokenInfo& info = t.tokens[r.type];
    if (info.kind != TokenKind::kReserved) a_token_number_stands_twice();
    info = {r.kind, static_cast<uint16_t>(spelling), 0};
    for (std::string_view s : r.spellings) {
      if (s.empty()) break;
      t.spellings[spelling] = {head_of(s),
                               tail_of(s),
                               static_cast<uint16_t>(character),
                               r.type,
                               static_cast<uint8_t>(s.size()),
                               r.kind};
      for (char c : s) t.characters[character++] = c;
      ++character;
      const bool has_blank = s.find(' ') != std::string_view::npos;
      if (has_blank) t.with_blanks[blank++] = static_cast<uint16_t>(spelling);
      if (!has_blank && r.kind != TokenKind::kPunctuation) {
        uint32_t slot = mix(head_of(s), tail_of(s), s.size());
        while (t.slots[slot] != 0) slot = (slot + 1) % t.slots.size();
        t.slots[slot] = static_cast<uint16_t>(spelling + 1);
      }
      ++spelling;
      ++info.spelling_count;
    }
  }
  for (size_t type = 4; type < kTokenTypeCount; ++type) {
    if (t.tokens[type].kind == TokenKind::kReserved) a_token_number_is_missing();
  }
  return t;
}
constexpr Tables kTables = make_tables();

// The characters that neither the head nor the tail holds.
bool same_middle(const uint16_t* text, const char* characters, size_t length) {
  for (size_t i = 8; i + 8 < length; ++i) {
    if (folded_word(text[i]) != characters[i]) return false;
  }
  return true;
}

// FLDDEF1 to FLDDEF99: one keyword with a number behind it, no spelling of its own for each.
bool is_numbered_keyword(uint64_t head, size_t length) {
  constexpr std::string_view kStem = "FLDDEF";
  static_assert(
      kTables.spellings[kTables.tokens[TAVO_PARSER_CMN_PARM_FLDDEF].first_spelling].head ==
      pack(kStem.data(), kStem.size()));
  constexpr unsigned kStemBits = 8 * kStem.size();
  if (length <= kStem.size() || length > kStem.size() + 2) return false;
  if ((head & ((uint64_t{1} << kStemBits) - 1)) != pack(kStem.data(), kStem.size())) return false;
  const uint64_t first = head >> kStemBits & 0xFF;
  const uint64_t second = head >> (kStemBits + 8);
  return first - '1' < 9u && (length == kStem.size() + 1 || second - '0' < 10u);
}

}  // namespace

TokenInfo token_info(uint32_t type) {
  return type < kTokenTypeCount ? kTables.tokens[type] : TokenInfo{TokenKind::kReserved, 0, 0};
}

std::string_view spelling(size_t index) {
  const Spelling& s = kTables.spellings[index];
  return {kTables.characters.data() + s.offset, s.length};
}

uint16_t type_of_spelling(size_t index) {
  return kTables.spellings[index].type;
}

std::span<const uint16_t> spellings_with_blanks() {
  return kTables.with_blanks;
}

WordMatch find_word(uint64_t head, uint64_t tail, const uint16_t* text, size_t length) {
  uint32_t slot = mix(head, tail, length);
  while (const uint16_t entry = kTables.slots[slot]) {
    const Spelling& s = kTables.spellings[entry - 1u];
    if (s.head == head && s.tail == tail && s.length == length &&
        same_middle(text, kTables.characters.data() + s.offset, length)) {
      return {s.type, s.kind};
    }
    slot = (slot + 1) % kTables.slots.size();
  }
  if (is_numbered_keyword(head, length)) {
    return {TAVO_PARSER_CMN_PARM_FLDDEF, TokenKind::kNumberedKeyword};
  }
  return {0, TokenKind::kReserved};
}

}  // namespace tavo
