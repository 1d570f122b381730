#include "diagnostics/code_points.h"

#include <algorithm>
#include <iterator>

namespace tavo::diagnostics {
namespace {

struct KnownCharacter {
  uint32_t first;
  uint32_t last;
  Lookalike kind;
  char sign;
  const char* name;
};

// In order of the code points.
constexpr KnownCharacter kKnown[] = {
    {0x0000, 0x0008, Lookalike::kInvisible, 0, "control character"},
    {0x000B, 0x000B, Lookalike::kBlank, 0, "vertical tab"},
    {0x000E, 0x001F, Lookalike::kInvisible, 0, "control character"},
    {0x0027, 0x0027, Lookalike::kSingleQuote, 0, "single quote"},
    {0x0060, 0x0060, Lookalike::kSingleQuote, 0, "grave accent"},
    {0x007F, 0x0084, Lookalike::kInvisible, 0, "control character"},
    {0x0085, 0x0085, Lookalike::kBlank, 0, "next line"},
    {0x0086, 0x009F, Lookalike::kInvisible, 0, "control character"},
    {0x00A0, 0x00A0, Lookalike::kBlank, 0, "no-break space"},
    {0x00AB, 0x00AB, Lookalike::kDoubleQuote, 0, "typographic quote"},
    {0x00AD, 0x00AD, Lookalike::kInvisible, 0, "soft hyphen"},
    {0x00B4, 0x00B4, Lookalike::kSingleQuote, 0, "acute accent"},
    {0x00BB, 0x00BB, Lookalike::kDoubleQuote, 0, "typographic quote"},
    {0x061C, 0x061C, Lookalike::kInvisible, 0, "direction mark"},
    {0x1680, 0x1680, Lookalike::kBlank, 0, "ogham space mark"},
    {0x180E, 0x180E, Lookalike::kInvisible, 0, "vowel separator"},
    {0x2000, 0x200A, Lookalike::kBlank, 0, "typographic space"},
    {0x200B, 0x200B, Lookalike::kInvisible, 0, "zero-width space"},
    {0x200C, 0x200D, Lookalike::kInvisible, 0, "zero-width joiner"},
    {0x200E, 0x200F, Lookalike::kInvisible, 0, "direction mark"},
    {0x2018, 0x201B, Lookalike::kSingleQuote, 0, "typographic single quote"},
    {0x201C, 0x201F, Lookalike::kDoubleQuote, 0, "typographic quote"},
    {0x2028, 0x2028, Lookalike::kBlank, 0, "line separator"},
    {0x2029, 0x2029, Lookalike::kBlank, 0, "paragraph separator"},
    {0x202A, 0x202E, Lookalike::kInvisible, 0, "direction mark"},
    {0x202F, 0x202F, Lookalike::kBlank, 0, "narrow no-break space"},
    {0x2032, 0x2032, Lookalike::kSingleQuote, 0, "prime"},
    {0x2033, 0x2033, Lookalike::kDoubleQuote, 0, "double prime"},
    {0x2039, 0x203A, Lookalike::kSingleQuote, 0, "typographic single quote"},
    {0x205F, 0x205F, Lookalike::kBlank, 0, "mathematical space"},
    {0x2060, 0x2064, Lookalike::kInvisible, 0, "word joiner"},
    {0x2066, 0x206F, Lookalike::kInvisible, 0, "direction mark"},
    {0x3000, 0x3000, Lookalike::kBlank, 0, "ideographic space"},
    {0x3001, 0x3001, Lookalike::kSign, ',', "ideographic comma"},
    {0xFEFF, 0xFEFF, Lookalike::kInvisible, 0, "byte-order mark"},
    {0xFF02, 0xFF02, Lookalike::kDoubleQuote, 0, "wide quote"},
    {0xFF07, 0xFF07, Lookalike::kSingleQuote, 0, "wide apostrophe"},
    {0xFF08, 0xFF08, Lookalike::kSign, '(', "wide parenthesis"},
    {0xFF09, 0xFF09, Lookalike::kSign, ')', "wide parenthesis"},
    {0xFF0C, 0xFF0C, Lookalike::kSign, ',', "wide comma"},
    {0xFF1D, 0xFF1D, Lookalike::kSign, '=', "wide equals sign"},
};

const KnownCharacter* find(uint32_t character) {
  const auto* found = std::upper_bound(
      std::begin(kKnown), std::end(kKnown), character,
      [](uint32_t wanted, const KnownCharacter& known) { return wanted < known.first; });
  if (found == std::begin(kKnown)) return nullptr;
  --found;
  return character <= found->last ? found : nullptr;
}

}  // namespace

Lookalike lookalike_of(uint32_t character) {
  const KnownCharacter* known = find(character);
  return known == nullptr ? Lookalike::kNone : known->kind;
}

char sign_of(uint32_t character) {
  const KnownCharacter* known = find(character);
  return known == nullptr ? '\0' : known->sign;
}

const char* name_of_character(uint32_t character) {
  const KnownCharacter* known = find(character);
  return known == nullptr ? nullptr : known->name;
}

}  // namespace tavo::diagnostics
