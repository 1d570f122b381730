#include "Grammar/engine/recognizer_chain.h"

#include <cstdint>

#include "Grammar/lexer/runtime_parts.h"

namespace tavo {
namespace {

constexpr ANTLR3_UINT32 kTokenStreamSizeHint = 1025;
constexpr char kStreamName[] = "TAVO_PARAMETER_SYNTAX";

// The runtime declares text that it only reads as pointers to non-const.
pANTLR3_UINT8 as_bytes(const void* text) {
  return static_cast<pANTLR3_UINT8>(const_cast<void*>(text));
}

}  // namespace

bool RecognizerChain::open(uint16_t* text, uint32_t units, size_t zeros_after) {
  stream_ = antlr3StringStreamNew(as_bytes(text), ANTLR3_ENC_UTF16,
                                  units * uint32_t{sizeof(uint16_t)}, as_bytes(kStreamName));
  if (!is_whole(stream_)) return false;
  if (!lexer_.open(stream_, nullptr, zeros_after)) return false;
  tokens_ = antlr3CommonTokenStreamSourceNew(kTokenStreamSizeHint, lexer_.token_source());
  if (!is_whole(tokens_)) return false;
  window_.open(lexer_);
  parser_.read_through(&window_);
  return parser_.open(tokens_, nullptr);
}

void RecognizerChain::parse(RequestRecord* request) {
  parser_.context()->parse_tavo_provider_syntax(parser_.context(), request);
}

RecognizerChain::~RecognizerChain() {
  parser_.close();
  if (tokens_ != nullptr) tokens_->free(tokens_);
  lexer_.close();
  if (stream_ != nullptr) stream_->close(stream_);
}

}  // namespace tavo
