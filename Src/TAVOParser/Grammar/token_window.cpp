#include "Grammar/token_window.h"

namespace tavo {

// At the end this is the end-of-input token, which has a place of its own, again and again.
// Always inline, so that the place in the text stays in a register from a sign to the token behind.
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

pANTLR3_COMMON_TOKEN TokenWindow::take_behind(Sign sign, uint32_t type_of_sign) {
  if (current_ == nullptr && lexer_->step_over(sign)) [[likely]] {
    return read();
  }
  return take_behind_token(type_of_sign);
}

pANTLR3_COMMON_TOKEN TokenWindow::take_behind_token(uint32_t type) {
  if (current()->type != type) return nullptr;
  take();
  return take();
}

TokenWindow* TokenWindow::of(pANTLR3_INT_STREAM stream) {
  auto* tokens = static_cast<pANTLR3_TOKEN_STREAM>(stream->super);
  return static_cast<TokenWindow*>(static_cast<pANTLR3_COMMON_TOKEN_STREAM>(tokens->super)->super);
}

// Nobody looks further ahead than at the next token.
pANTLR3_COMMON_TOKEN TokenWindow::look_ahead_of(pANTLR3_TOKEN_STREAM stream, ANTLR3_INT32 k) {
  return k == 1 ? of(stream->istream)->current() : nullptr;
}

ANTLR3_UINT32 TokenWindow::type_ahead_of(pANTLR3_INT_STREAM stream, ANTLR3_INT32 k) {
  return k == 1 ? of(stream)->current()->type : ANTLR3_TOKEN_INVALID;
}

void TokenWindow::consume_of(pANTLR3_INT_STREAM stream) {
  of(stream)->take();
}

void TokenWindow::attach(pANTLR3_COMMON_TOKEN_STREAM stream, LexerObject& lexer) {
  lexer_ = &lexer;
  stream->super = this;
  stream->tstream->_LT = look_ahead_of;
  stream->tstream->istream->_LA = type_ahead_of;
  stream->tstream->istream->consume = consume_of;
  for (size_t i = 0; i < kSlots; ++i) {
    lexer.prepare(&slots_[i].token);
    slots_[i].next = &slots_[(i + 1) % kSlots];
  }
}

}  // namespace tavo
