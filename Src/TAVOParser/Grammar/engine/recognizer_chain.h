// The recognizer of one parse: stream, lexer, token stream and parser of the runtime, created and
// freed together. The lexer and parser objects and the tokens are members of the chain, so that a
// statement of any length needs little memory.
#pragma once

#include <antlr3.h>

#include <cstddef>
#include <cstdint>

#include "Grammar/engine/parser.h"
#include "Grammar/engine/token_window.h"
#include "Grammar/lexer/lexer.h"

namespace tavo {

class RecognizerChain {
 public:
  RecognizerChain() = default;
  RecognizerChain(const RecognizerChain&) = delete;
  RecognizerChain& operator=(const RecognizerChain&) = delete;
  ~RecognizerChain();

  // Builds the chain over UTF-16 text, which must outlive it and is followed by that many zero
  // units. Returns false when memory cannot be allocated.
  bool open(uint16_t* text, uint32_t units, size_t zeros_after);
  // Runs the top rule.
  void parse(RequestRecord* request);

 private:
  pANTLR3_INPUT_STREAM stream_ = nullptr;
  pANTLR3_COMMON_TOKEN_STREAM tokens_ = nullptr;
  LexerObject lexer_;
  ParserObject parser_;
  TokenWindow window_;
};

}  // namespace tavo
