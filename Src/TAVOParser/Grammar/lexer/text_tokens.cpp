// The tokens of a text, and single lexer rules, without the recognizer's objects.
#include "Grammar/lexer/lexer_rule.h"
#include "Grammar/lexer/line_cursor.h"
#include "Grammar/lexer/scanner.h"
#include "Grammar/lexer/vocabulary.h"
#include "TAVOLanguage.h"
#include "text/utf16_characters.h"
#include "text/utf16_text.h"

namespace tavo {
namespace {

// Iterates over a text and tracks offset, line and column in characters.
class TokenWalk {
 public:
  TokenWalk(const uint16_t* begin, const uint16_t* end) : place_(begin), end_(end) {
    cursor_.line_start = begin;
    if (begin != end && *begin == 0xFEFF) move_to(begin + 1);  // a byte-order mark
  }

  bool next(TAVOTextToken* token) {
    if (place_ == end_) return false;
    const Lexeme lexeme = scan(place_, end_);
    *token = {};
    token->offset = offset_;
    token->line = cursor_.line;
    token->column = cursor_.column(place_);
    if (lexeme.type == 0) {
      token->offending = offset_ + count_characters(place_, lexeme.stop);
      move_to(lexeme.stop == end_ ? end_ : next_character(lexeme.stop, end_));
    } else {
      token->type = lexeme.type;
      token->hidden = lexeme.hidden() ? 1 : 0;
      move_to(lexeme.stop);
    }
    token->length = offset_ - token->offset;
    return true;
  }

 private:
  void move_to(const uint16_t* place) {
    const uint32_t pairs = cursor_.pairs;
    cursor_.advance(place_, place);
    offset_ += static_cast<uint32_t>(place - place_) - (cursor_.pairs - pairs);
    place_ = place;
  }

  const uint16_t* place_;
  const uint16_t* end_;
  LineCursor cursor_;
  uint32_t offset_ = 0;
};

}  // namespace
}  // namespace tavo

extern "C" {

uint32_t TAVOLanguage_ReadTokens(const wchar_t* text, uint32_t characters, TAVOTokenVisitor visitor,
                                 void* context) noexcept {
  if (text == nullptr || visitor == nullptr) return TAVO_LANGUAGE_END;
  tavo::Utf16Text utf16;
  const uint32_t status = utf16.convert(text, characters);
  if (status != 0) return status;
  tavo::TokenWalk walk(utf16.units(), utf16.units() + utf16.count());
  for (TAVOTextToken token; walk.next(&token);) {
    const uint32_t stop = visitor(&token, context);
    if (stop != 0) return stop;
  }
  return 0;
}

uint32_t TAVOLanguage_MatchRule(uint32_t tokenType, const wchar_t* text, uint32_t characters,
                                TAVORuleMatch* match) noexcept {
  if (text == nullptr || match == nullptr || tokenType < 4 || tokenType >= tavo::kTokenTypeCount) {
    return TAVO_LANGUAGE_END;
  }
  tavo::Utf16Text utf16;
  const uint32_t status = utf16.convert(text, characters);
  if (status != 0) return status;
  const uint16_t* begin = utf16.units();
  const tavo::Match found = tavo::match_rule(tokenType, begin, begin + utf16.count());
  *match = {found.ok() ? 1u : 0u, tavo::count_characters(begin, found.stop),
            static_cast<uint32_t>(found.error)};
  return 0;
}

}  // extern "C"
