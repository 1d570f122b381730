// The parser as the runtime sees it. The engine does the work on a statement.
#pragma once

#include <antlr3.h>

#include "Grammar/engine/token_window.h"
#include "TAVOGrammar.h"

namespace tavo {

class ParserObject {
 public:
  // Builds the object in place over a token stream; `state` is the caller's state or null. Returns
  // false when memory cannot be allocated.
  bool open(pANTLR3_COMMON_TOKEN_STREAM tokens, pANTLR3_RECOGNIZER_SHARED_STATE state);
  // Frees what the runtime allocated for the object, but not the object.
  void close();
  // Reads tokens from this window over the same lexer instead of from the stream.
  void read_through(TokenWindow* window) {
    window_ = window;
  }

  pTAVOParser context() {
    return &context_;
  }
  static ParserObject* from_context(pTAVOParser context);

  // Raises one of the runtime's exceptions for a token. Always returns false.
  bool raise(uint32_t kind, pANTLR3_COMMON_TOKEN misfit);
  // Raises a mismatch: a token of another type is expected. Always returns false.
  bool raise_mismatch(uint32_t expected, pANTLR3_COMMON_TOKEN misfit);

 private:
  void parse_tavo_provider_syntax(RequestRecord* request);
  void finish_statement();
  void report();

  pANTLR3_BASE_RECOGNIZER recognizer() {
    return context_.pParser->rec;
  }

  static void* mismatched_token(pANTLR3_BASE_RECOGNIZER recognizer, ANTLR3_UINT32 type,
                                pANTLR3_BITSET_LIST follow);

  TAVOParser context_{};  // first: the object is found through its context
  ANTLR3_RECOGNIZER_SHARED_STATE own_state_;
  pANTLR3_COMMON_TOKEN_STREAM tokens_;
  TokenWindow* window_ = nullptr;
  RequestRecord* request_;
};

}  // namespace tavo
