// The tokens that a parse may still read. The grammar has one token of lookahead and never
// backtracks, so a few slots that are filled on demand and reused are equivalent to a token stream
// that keeps every token, without its memory.
#pragma once

#include <antlr3.h>

#include <cstddef>

#include "Grammar/lexer/lexer.h"

namespace tavo {

class TokenWindow {
 public:
  using Token = pANTLR3_COMMON_TOKEN;

  // Starts reading from this lexer.
  void open(LexerObject& lexer);

  // The next visible token; at the end of the input, the end-of-input token.
  pANTLR3_COMMON_TOKEN current();
  // The same, and advances past it.
  pANTLR3_COMMON_TOKEN take();
  // Never: callers of the two runs can see which tokens are made, so only signs before a value are
  // left out.
  static constexpr bool skip(Sign) {
    return false;
  }
  // Skips a sign without creating a token for it and takes the token after it, if the next token is
  // this sign and has not been read yet. Null means only that it has to be read.
  pANTLR3_COMMON_TOKEN take_after(Sign sign);

 private:
  // A token stays valid until this many more have been read: a rule needs its keyword, the sign
  // after it and the value.
  static constexpr size_t kSlots = 3;
  struct Slot {
    ANTLR3_COMMON_TOKEN token;
    Slot* next;  // circular
  };

  pANTLR3_COMMON_TOKEN read();

  pANTLR3_COMMON_TOKEN current_ = nullptr;  // null: not read yet
  LexerObject* lexer_ = nullptr;
  Slot* free_ = slots_;  // for the next token
  Slot slots_[kSlots];
};

}  // namespace tavo
