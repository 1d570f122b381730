// The tokens that a parse may still look at. The grammar never goes back and never looks further
// than three tokens ahead, so a token stream that reads on demand into a few places that are used
// again and again does the same as one that keeps every token, and costs a long statement no
// memory.
#pragma once

#include <antlr3.h>

#include <cstdint>

#include "Grammar/lexer.h"

namespace tavo {

class TokenWindow {
 public:
  // Puts the window behind a token stream of the runtime and reads the first token: from here on
  // the stream reads the lexer through it. The window has to outlive every use of the stream but
  // its freeing.
  void attach(pANTLR3_COMMON_TOKEN_STREAM stream, LexerObject& lexer);

  // The next token, hidden ones left out; the end-of-input token from the end on.
  pANTLR3_COMMON_TOKEN current() const {
    return current_;
  }
  // The k-th token ahead, from 1, which is the current one.
  pANTLR3_COMMON_TOKEN look(uint32_t k);
  void consume() {
    if (ahead_ == 0) {
      current_ = read();
    } else {
      --ahead_;
      current_ = token_before_last(ahead_);
    }
  }

 private:
  // A token stays as it is until this many have been read behind it: a rule holds its keyword and
  // its value while the token behind them is the current one.
  static constexpr uint32_t kSlots = 4;
  // Of a size that places are found by without a multiplication.
  struct alignas(256) Slot {
    ANTLR3_COMMON_TOKEN token;
  };

  pANTLR3_COMMON_TOKEN read();
  pANTLR3_COMMON_TOKEN token_before_last(uint32_t tokens) {
    return &slots_[(last_ - tokens) % kSlots].token;
  }

  static TokenWindow* of(pANTLR3_INT_STREAM stream);
  static pANTLR3_COMMON_TOKEN look_ahead_of(pANTLR3_TOKEN_STREAM stream, ANTLR3_INT32 k);
  static ANTLR3_UINT32 type_ahead_of(pANTLR3_INT_STREAM stream, ANTLR3_INT32 k);
  static void consume_of(pANTLR3_INT_STREAM stream);

  pANTLR3_COMMON_TOKEN current_ = nullptr;
  LexerObject* lexer_ = nullptr;
  uint32_t last_ = 0;   // place of the token that was read last, not wrapped
  uint32_t ahead_ = 0;  // tokens read behind the current one
  Slot slots_[kSlots];
};

}  // namespace tavo
