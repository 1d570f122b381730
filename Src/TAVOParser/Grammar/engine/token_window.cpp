#include "Grammar/engine/token_window.h"

namespace tavo {

// At the end of the input, every call returns the end-of-input token, which has its own slot.
// Always inline, so that the text position stays in a register from a sign to the token after it.
[[gnu::always_inline]] inline pANTLR3_COMMON_TOKEN TokenWindow::read() {
  Slot* slot = free_;
  if (!lexer_->next_visible(&slot->token)) [[unlikely]] {
    return lexer_->end_of_input();
  }
  free_ = slot->next;
  return &slot->token;
}

pANTLR3_COMMON_TOKEN TokenWindow::current() {
  if (current_ == nullptr) current_ = read();
  return current_;
}

pANTLR3_COMMON_TOKEN TokenWindow::take() {
  pANTLR3_COMMON_TOKEN token = current();
  current_ = nullptr;
  return token;
}

pANTLR3_COMMON_TOKEN TokenWindow::take_after(Sign sign) {
  if (current_ == nullptr && lexer_->step_over(sign)) [[likely]] {
    return read();
  }
  return nullptr;
}

void TokenWindow::open(LexerObject& lexer) {
  lexer_ = &lexer;
  for (size_t i = 0; i < kSlots; ++i) {
    lexer.prepare(&slots_[i].token);
    slots_[i].next = &slots_[(i + 1) % kSlots];
  }
}

}  // namespace tavo
