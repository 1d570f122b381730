#include "Grammar/token_window.h"

namespace tavo {

void TokenWindow::read() {
  if (lexer_->next_visible(&slots_[read_ % kSlots].token)) {
    ++read_;
  } else {
    end_ = lexer_->end_of_input();
  }
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
  for (Slot& slot : slots_) lexer.prepare(&slot.token);
  stream->super = this;
  stream->tstream->_LT = look_ahead_of;
  stream->tstream->istream->_LA = type_ahead_of;
  stream->tstream->istream->consume = consume_of;
}

}  // namespace tavo
