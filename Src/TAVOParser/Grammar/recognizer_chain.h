// The recognizer of one parse: stream, lexer, token stream and parser of the runtime, made together
// and freed together. The lexer and parser objects, their first tokens and the token list live
// inside the chain, so that a short statement asks for little memory.
#pragma once

#include <antlr3.h>

#include <cstdint>

#include "Grammar/lexer.h"
#include "Grammar/parser.h"

namespace tavo {

// The list of a token stream's tokens, filled here instead of by the runtime: its own list starts
// with 16 places and does not notice when memory for more is refused.
class TokenList {
 public:
  // Reads all tokens of the lexer into the stream, as the stream itself would at its first
  // look-ahead. Returns false when memory is refused.
  bool fill(pANTLR3_COMMON_TOKEN_STREAM stream, LexerObject& lexer);
  // Gives the stream's list back in a state in which the runtime can free it.
  void detach();

 private:
  bool grow();

  static constexpr uint32_t kFirst = 48;
  pANTLR3_VECTOR vector_ = nullptr;
  ANTLR3_VECTOR_ELEMENT first_[kFirst];
};

class RecognizerChain {
 public:
  RecognizerChain() = default;
  RecognizerChain(const RecognizerChain&) = delete;
  RecognizerChain& operator=(const RecognizerChain&) = delete;
  ~RecognizerChain();

  // Builds the chain over UTF-16 text, which must outlive it, and reads all tokens. Returns false
  // when memory is refused.
  bool open(uint16_t* text, uint32_t units);
  // Runs the top rule.
  void parse(RequestRecord* request);

 private:
  pANTLR3_INPUT_STREAM stream_ = nullptr;
  pANTLR3_COMMON_TOKEN_STREAM tokens_ = nullptr;
  bool lexer_open_ = false;
  bool parser_open_ = false;
  LexerObject lexer_;
  ParserObject parser_;
  TokenList list_;
};

}  // namespace tavo
