// The tokens that a parse may still look at. The grammar never goes back and never looks further
// than at the next token, so a token stream that reads on demand into a few places that are used
// again and again does the same as one that keeps every token, and costs a long statement no
// memory.
#pragma once

#include <antlr3.h>

#include <cstdint>

#include "Grammar/lexer.h"

namespace tavo {

class TokenWindow {
 public:
  // Puts the window behind a token stream of the runtime: from here on the stream reads the lexer
  // through it. The window has to outlive every use of the stream but its freeing.
  void attach(pANTLR3_COMMON_TOKEN_STREAM stream, LexerObject& lexer);

  // The next token, hidden ones left out; the end-of-input token from the end on.
  pANTLR3_COMMON_TOKEN current() {
    if (current_ == nullptr) current_ = read();
    return current_;
  }
  // The same, and goes on behind it.
  pANTLR3_COMMON_TOKEN take() {
    if (current_ == nullptr) [[likely]]
      return read();
    pANTLR3_COMMON_TOKEN token = current_;
    current_ = nullptr;
    return token;
  }
  // Takes the next token without making it, if it has not been read yet and is this sign. False
  // says only that it has to be read.
  bool step_over(Sign sign) {
    return current_ == nullptr && lexer_->step_over(sign);
  }

 private:
  // A token stays as it is until this many have been read behind it: a rule holds its keyword, the
  // sign behind it and the value.
  static constexpr uint32_t kSlots = 4;
  // Of a size that places are found by without a multiplication.
  struct alignas(256) Slot {
    ANTLR3_COMMON_TOKEN token;
  };

  pANTLR3_COMMON_TOKEN read();

  static TokenWindow* of(pANTLR3_INT_STREAM stream);
  static pANTLR3_COMMON_TOKEN look_ahead_of(pANTLR3_TOKEN_STREAM stream, ANTLR3_INT32 k);
  static ANTLR3_UINT32 type_ahead_of(pANTLR3_INT_STREAM stream, ANTLR3_INT32 k);
  static void consume_of(pANTLR3_INT_STREAM stream);

  pANTLR3_COMMON_TOKEN current_ = nullptr;  // null: not read yet
  LexerObject* lexer_ = nullptr;
  uint32_t last_ = 0;  // place of the token that was read last, not wrapped
  Slot slots_[kSlots];
};

}  // namespace tavo
