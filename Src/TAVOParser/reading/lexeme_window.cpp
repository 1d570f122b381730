#include "reading/lexeme_window.h"

#include "text/utf16_characters.h"

namespace tavo {
namespace {

uint32_t count_pairs(const uint16_t* from, const uint16_t* to) {
  const auto units = static_cast<uint32_t>(to - from);
  return units - count_characters(from, to);
}

}  // namespace

LexemeToken* LexemeWindow::read_from(const uint16_t* place, const uint16_t* stop, uint32_t type,
                                     uint32_t traits) {
  for (Lexeme lexeme = {stop, type, traits};; lexeme = scan(place, end_)) {
    const uint16_t* next = lexeme.stop;
    LexemeToken* token = nullptr;
    if (lexeme.type == 0) {
      // Drops the characters that the failed rule consumed and the offending character.
      if (first_broken_.error == RecognitionError::kNone) {
        first_broken_ = {lexeme.error(), lexeme.stop};
      }
      if (next != end_) next = next_character(next, end_);
    } else if (!lexeme.hidden()) {
      token = keep(place, lexeme.stop, lexeme.type, true);
    }
    if (lexeme.type == 0 || lexeme.multi_line()) pairs_ += count_pairs(place, next);
    next_ = next;
    if (token != nullptr) return token;
    place = next;
    if (place == end_) return &end_of_input_;
  }
}

}  // namespace tavo
