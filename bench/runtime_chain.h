// The cost of the runtime alone: creates and frees the objects of one parse, without parsing.
#pragma once

#include <antlr3.h>

#include <cstdint>
#include <cstdlib>

namespace bench {

// Which chain to create.
enum class ChainKind {
  kBare,  // by the runtime's constructors, without a token pool
  kLean,  // minimal: the lexer's state, token source and factory in the caller's memory
  kPool,  // as in generated recognizers, with the runtime's pool of 1,024 tokens
};

// The caller's token source and factory in the caller's recognizer state.
class OwnTokens {
 public:
  OwnTokens() {
    source_.nextToken = [](pANTLR3_TOKEN_SOURCE source) { return &source->eofToken; };
    source_.eofToken.type = ANTLR3_TOKEN_EOF;
    factory_.setInputStream = [](pANTLR3_TOKEN_FACTORY factory, pANTLR3_INPUT_STREAM input) {
      factory->input = input;
    };
  }
  // The state, for a lexer that would free it; take it back with release().
  pANTLR3_RECOGNIZER_SHARED_STATE make_state() {
    state_ = {};
    state_.lastErrorIndex = -1;
    state_.tokSource = &source_;
    state_.tokFactory = &factory_;
    return &state_;
  }
  static void release(pANTLR3_LEXER lexer) {
    lexer->rec->state = nullptr;
  }

 private:
  ANTLR3_TOKEN_SOURCE source_{};
  ANTLR3_TOKEN_FACTORY factory_{};
  ANTLR3_RECOGNIZER_SHARED_STATE state_{};
};

// Creates and frees the chain over UTF-16 text. Returns false when the runtime failed.
inline bool make_and_free_chain(ChainKind kind, uint16_t* text, uint32_t units, OwnTokens& own) {
  constexpr ANTLR3_UINT32 kHint = 1025;
  static char name[] = "TAVO_PARAMETER_SYNTAX";
  auto bytes = [](void* p) { return static_cast<pANTLR3_UINT8>(p); };
  pANTLR3_INPUT_STREAM stream =
      antlr3StringStreamNew(bytes(text), ANTLR3_ENC_UTF16, units * 2, bytes(name));
  pANTLR3_LEXER lexer = nullptr;
  if (kind == ChainKind::kBare) {
    lexer = antlr3LexerNew(kHint, nullptr);
    lexer->input = stream;  // setCharStream would create the pool
  } else {
    lexer =
        antlr3LexerNewStream(kHint, stream, kind == ChainKind::kLean ? own.make_state() : nullptr);
  }
  pANTLR3_COMMON_TOKEN_STREAM tokens =
      antlr3CommonTokenStreamSourceNew(kHint, lexer->rec->state->tokSource);
  pANTLR3_PARSER parser = antlr3ParserNewStream(kHint, tokens->tstream, nullptr);
  const bool made = parser != nullptr;
  parser->free(parser);
  tokens->free(tokens);
  if (kind == ChainKind::kLean) OwnTokens::release(lexer);
  lexer->free(lexer);
  stream->close(stream);
  return made;
}

}  // namespace bench
