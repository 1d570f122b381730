// The tokens that a parse may still look at. The grammar never goes back and never looks further
// than at the next token, so reading on demand into a few places that are used again and again does
// the same as a token stream that keeps every token, and costs a long statement no memory.
#pragma once

#include <antlr3.h>

#include <cstddef>

#include "Grammar/lexer/lexer.h"

namespace tavo {

class TokenWindow {
 public:
  using Token = pANTLR3_COMMON_TOKEN;

  // Reads this lexer from now on.
  void open(LexerObject& lexer);

  // The next token, hidden ones left out; the end-of-input token from the end on.
  pANTLR3_COMMON_TOKEN current();
  // The same, and goes on behind it.
  pANTLR3_COMMON_TOKEN take();
  // Takes the token behind a sign without making a token of the sign, if the next token has not
  // been read yet and is this sign. Null says only that it has to be read.
  pANTLR3_COMMON_TOKEN take_behind(Sign sign);

 private:
  // A token stays as it is until this many have been read behind it: a rule holds its keyword, the
  // sign behind it and the value.
  static constexpr size_t kSlots = 3;
  struct Slot {
    ANTLR3_COMMON_TOKEN token;
    Slot* next;  // round and round
  };

  pANTLR3_COMMON_TOKEN read();

  pANTLR3_COMMON_TOKEN current_ = nullptr;  // null: not read yet
  LexerObject* lexer_ = nullptr;
  Slot* free_ = slots_;  // for the next token
  Slot slots_[kSlots];
};

}  // namespace tavo
