#include "Grammar/lexer/vocabulary.h"

#include <array>

#include "Grammar/lexer/character_class.h"
#include "Grammar/lexer/word_hash.h"
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
  size_t words = 0;  // spellings without punctuation and blanks
};

consteval Extent measure() {
  Extent extent;
  for (const Row& r : make_rows()) {
    for (std::string_view s : r.spellings) {
      if (s.empty()) break;
      ++extent.spellings;
      extent.characters += s.size() + 1;
      const bool has_blank = s.find(' ') != std::string_view::npos;
      extent.with_blanks += has_blank ? 1 : 0;
      extent.words += !has_blank && r.kind != TokenKind::kPunctuation ? 1 : 0;
    }
  }
  return extent;
}
constexpr Extent kExtent = measure();

struct Spelling {
  uint16_t offset;  // into the characters
  uint16_t type;
  uint8_t length;
};

// ---- tables ------------------------------------------------------------------------------------

struct Tables {
  std::array<TokenInfo, kTokenTypeCount> tokens{};
  std::array<Spelling, kExtent.spellings> spellings{};
  std::array<char, kExtent.characters> characters{};  // each spelling terminated
  std::array<uint16_t, kExtent.with_blanks> with_blanks{};
};

// Not constexpr, so that calling them while the tables are built is a compile error.
void a_token_number_occurs_twice() {}
void a_token_number_is_missing() {}
void a_keyword_begins_with_a_digit() {}  // it could be the beginning of a value with blanks

consteval Tables make_tables() {
  Tables t;
  size_t spelling = 0, character = 0, blank = 0;
  for (const Row& r : make_rows()) {
    TokenInfo& info = t.tokens[r.type];
    if (info.kind != TokenKind::kReserved) a_token_number_occurs_twice();
    info = {r.kind, static_cast<uint16_t>(spelling), 0};
    for (std::string_view s : r.spellings) {
      if (s.empty()) break;
      t.spellings[spelling] = {static_cast<uint16_t>(character), r.type,
                               static_cast<uint8_t>(s.size())};
      for (char c : s) t.characters[character++] = c;
      ++character;
      const bool has_blank = s.find(' ') != std::string_view::npos;
      if (has_blank) t.with_blanks[blank++] = static_cast<uint16_t>(spelling);
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

// ---- words -------------------------------------------------------------------------------------

constexpr uint64_t pack(const char* text, size_t count) {
  uint64_t packed = 0;
  for (size_t i = 0; i < count; ++i) {
    packed |= uint64_t{static_cast<uint8_t>(text[i])} << (8 * i);
  }
  return packed;
}

constexpr uint64_t head_of(std::string_view s) {
  return pack(s.data(), s.size() < 8 ? s.size() : 8);
}
constexpr uint64_t tail_of(std::string_view s) {
  return s.size() < 8 ? head_of(s) : pack(s.data() + s.size() - 8, 8);
}

consteval auto make_words() {
  std::array<Word, kExtent.words> words{};
  size_t count = 0;
  for (size_t i = 0; i < kTables.spellings.size(); ++i) {
    const Spelling& s = kTables.spellings[i];
    const std::string_view text(kTables.characters.data() + s.offset, s.length);
    const TokenKind kind = kTables.tokens[s.type].kind;
    if (kind == TokenKind::kKeyword && is_digit(static_cast<unsigned char>(text[0]))) {
      a_keyword_begins_with_a_digit();
    }
    if (kind == TokenKind::kPunctuation || text.find(' ') != std::string_view::npos) continue;
    const bool plain = kind == TokenKind::kKeyword && !is_affix(s.type) && s.length <= 16;
    words[count++] = {.head = head_of(text),
                      .tail = tail_of(text),
                      .spelling = static_cast<uint16_t>(i),
                      .type = s.type,
                      .length = s.length,
                      .kind = kind,
                      .plain_length = plain ? s.length : uint8_t{0}};
  }
  return words;
}

consteval WordTable make_word_table() {
  constexpr auto kWords = make_words();
  std::array<WordHash, kWords.size()> hashes{};
  for (size_t i = 0; i < kWords.size(); ++i) {
    hashes[i] = WordHash(kWords[i].head, kWords[i].tail, kWords[i].length);
  }
  WordTable table{find_displacements(hashes), {}};
  for (size_t i = 0; i < kWords.size(); ++i) {
    table.words[hashes[i].slot(table.displacements[hashes[i].bucket()])] = kWords[i];
  }
  return table;
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

constexpr WordTable detail::kWordTable = make_word_table();

bool is_spelled(const Word& word, uint64_t head, uint64_t tail, const uint16_t* text,
                size_t length) {
  if (word.head != head || word.tail != tail || word.length != length) return false;
  const std::string_view characters = spelling(word.spelling);
  for (size_t i = 8; i + 8 < length; ++i) {  // the characters in neither head nor tail
    if (folded_word(text[i]) != characters[i]) return false;
  }
  return true;
}

static_assert(kTables.spellings[kTables.tokens[TAVO_PARSER_CMN_PARM_FLDDEF].first_spelling]
                  .length == detail::kNumberedStem.size());

}  // namespace tavo
