#include "Grammar/token_window.h"

namespace tavo {

// At the end this is the end-of-input token, which has a place of its own, again and again.
pANTLR3_COMMON_TOKEN TokenWindow::read() {
  pANTLR3_COMMON_TOKEN token = &slots_[(last_ + 1) % kSlots].token;
  if (!lexer_->next_visible(token)) return lexer_->end_of_input();
  ++last_;
  return token;
}

pANTLR3_COMMON_TOKEN TokenWindow::look(uint32_t k) {
  if (k == 1 || current_->type == ANTLR3_TOKEN_EOF) return current_;
  while (ahead_ < k - 1) {
    pANTLR3_COMMON_TOKEN token = read();
    if (token->type == ANTLR3_TOKEN_EOF) return token;
    ++ahead_;
  }
  return token_before_last(ahead_ - (k - 1));
}

TokenWindow* TokenWindow::of(pANTLR3_INT_STREAM stream) {
  auto* tokens = static_cast<pANTLR3_TOKEN_STREAM>(stream->super);
  return static_cast<TokenWindow*>(static_cast<pANTLR3_COMMON_TOKEN_STREAM>(tokens->super)->super);
}

pANTLR3_COMMON_TOKEN TokenWindow::look_ahead_of(pANTLR3_TOKEN_STREAM stream, ANTLR3_INT32 k) {
  return k < 1 ? nullptr : of(stream->istream)->look(static_cast<uint32_t>(k));
}

ANTLR3_UINT32 TokenWindow::type_ahead_of(pANTLR3_INT_STREAM stream, ANTLR3_INT32 k) {
  return k < 1 ? ANTLR3_TOKEN_INVALID : of(stream)->look(static_cast<uint32_t>(k))->type;
}

void TokenWindow::consume_of(pANTLR3_INT_STREAM stream) {
  of(stream)->consume();
}

void TokenWindow::attach(pANTLR3_COMMON_TOKEN_STREAM stream, LexerObject& lexer) {
  lexer_ = &lexer;
  stream->super = this;
  stream->tstream->_LT = look_ahead_of;
  stream->tstream->istream->_LA = type_ahead_of;
  stream->tstream->istream->consume = consume_of;
  for (Slot& slot : slots_) lexer.prepare(&slot.token);
  current_ = read();
}

}  // namespace tavo
