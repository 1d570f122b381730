#include "Grammar/recognizer_chain.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace tavo {
namespace {

constexpr ANTLR3_UINT32 kTokenStreamSizeHint = 1025;
constexpr char kStreamName[] = "TAVO_PARAMETER_SYNTAX";

// The runtime takes texts it only reads as pointers to what it could change.
pANTLR3_UINT8 as_bytes(const void* text) {
  return static_cast<pANTLR3_UINT8>(const_cast<void*>(text));
}

}  // namespace

// ---- token list --------------------------------------------------------------------------------

bool TokenList::grow() {
  const size_t bytes = size_t{vector_->elementsSize} * sizeof(ANTLR3_VECTOR_ELEMENT);
  const bool inside = vector_->elements == first_;
  void* larger = std::realloc(inside ? nullptr : vector_->elements, bytes * 2);
  if (larger == nullptr) return false;
  if (inside) std::memcpy(larger, first_, bytes);
  vector_->elements = static_cast<pANTLR3_VECTOR_ELEMENT>(larger);
  vector_->elementsSize *= 2;
  return true;
}

bool TokenList::fill(pANTLR3_COMMON_TOKEN_STREAM stream, LexerObject& lexer) {
  vector_ = stream->tokens;
  vector_->elements = first_;
  vector_->elementsSize = kFirst;
  pANTLR3_TOKEN_SOURCE source = lexer.token_source();
  ANTLR3_INT32 first_visible = -1;
  ANTLR3_UINT32 count = 0;
  for (;; ++count) {
    pANTLR3_COMMON_TOKEN token = source->nextToken(source);
    if (token->type == ANTLR3_TOKEN_EOF) break;
    if (count == vector_->elementsSize && !grow()) return false;
    token->index = count;
    vector_->elements[count] = {token, nullptr};
    if (first_visible < 0 && token->channel == stream->channel) {
      first_visible = static_cast<ANTLR3_INT32>(count);
    }
  }
  vector_->count = count;
  stream->tstream->istream->cachedSize = count;
  stream->p = first_visible < 0 ? static_cast<ANTLR3_INT32>(count) : first_visible;
  return !lexer.out_of_memory();
}

void TokenList::detach() {
  if (vector_ == nullptr || vector_->elements != first_) return;
  vector_->elements = vector_->internal;
  vector_->elementsSize = ANTLR3_VECTOR_INTERNAL_SIZE;
  vector_->count = 0;
}

// ---- chain -------------------------------------------------------------------------------------

bool RecognizerChain::open(uint16_t* text, uint32_t units) {
  stream_ = antlr3StringStreamNew(as_bytes(text), ANTLR3_ENC_UTF16,
                                  units * uint32_t{sizeof(uint16_t)}, as_bytes(kStreamName));
  if (stream_ == nullptr) return false;
  lexer_open_ = lexer_.open(stream_, nullptr);
  if (!lexer_open_) return false;
  tokens_ = antlr3CommonTokenStreamSourceNew(kTokenStreamSizeHint, lexer_.token_source());
  if (tokens_ == nullptr || !list_.fill(tokens_, lexer_)) return false;
  parser_open_ = parser_.open(tokens_, nullptr);
  return parser_open_;
}

void RecognizerChain::parse(RequestRecord* request) {
  parser_.context()->parse_tavo_provider_syntax(parser_.context(), request);
}

RecognizerChain::~RecognizerChain() {
  if (parser_open_) parser_.close();
  list_.detach();
  if (tokens_ != nullptr) tokens_->free(tokens_);
  if (lexer_open_) lexer_.close();
  if (stream_ != nullptr) stream_->close(stream_);
}

}  // namespace tavo
