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
  // Puts the window behind a token stream of the runtime: from here on the stream reads the lexer
  // through it. The window has to outlive every use of the stream but its freeing.
  void attach(pANTLR3_COMMON_TOKEN_STREAM stream, LexerObject& lexer);

  // The k-th token ahead, from 1, hidden ones left out; the end-of-input token from the end on.
  pANTLR3_COMMON_TOKEN look(uint32_t k) {
    while (read_ - next_ < k) {
      if (end_ != nullptr) return end_;
      read();
    }
    return &slots_[(next_ + k - 1) % kSlots].token;
  }
  void consume() {
    if (look(1) != end_) ++next_;
  }

 private:
  // A token stays as it is until this many have been read behind it: more than a rule looks back
  // (to its keyword) and ahead together.
  static constexpr uint32_t kSlots = 4;
  // Of a size that places are found by without a multiplication.
  struct alignas(256) Slot {
    ANTLR3_COMMON_TOKEN token;
  };

  void read();

  static TokenWindow* of(pANTLR3_INT_STREAM stream);
  static pANTLR3_COMMON_TOKEN look_ahead_of(pANTLR3_TOKEN_STREAM stream, ANTLR3_INT32 k);
  static ANTLR3_UINT32 type_ahead_of(pANTLR3_INT_STREAM stream, ANTLR3_INT32 k);
  static void consume_of(pANTLR3_INT_STREAM stream);

  LexerObject* lexer_ = nullptr;
  pANTLR3_COMMON_TOKEN end_ = nullptr;  // the end-of-input token, when it has been reached
  uint32_t next_ = 0;                   // tokens consumed
  uint32_t read_ = 0;                   // tokens read
  Slot slots_[kSlots];
};

}  // namespace tavo
