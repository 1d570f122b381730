#include "Grammar/token_window.h"

namespace tavo {

// At the end this is the end-of-input token, which has a place of its own, again and again.
pANTLR3_COMMON_TOKEN TokenWindow::read() {
  pANTLR3_COMMON_TOKEN token = &slots_[++last_ % kSlots].token;
  if (lexer_->next_visible(token)) [[likely]]
    return token;
  --last_;
  return lexer_->end_of_input();
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
  for (Slot& slot : slots_) lexer.prepare(&slot.token);
}

}  // namespace tavo
