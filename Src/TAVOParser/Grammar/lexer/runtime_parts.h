// Parts of the runtime's objects that were refused memory. The runtime leaves null or the number of
// its error in their place, and would later call through either.
#pragma once

#include <antlr3.h>

namespace tavo {

// Whether a public member of a runtime object is there. Otherwise null takes its place, so that the
// rest of the object can be freed.
template <typename Part>
bool is_there(Part*& part) {
  if (part != nullptr && part != static_cast<Part*>(ANTLR3_FUNC_PTR(ANTLR3_ERR_NOMEM))) return true;
  part = nullptr;
  return false;
}

// Each of the following tells whether an object of the runtime is there and whole. One that is not
// whole can be freed by the runtime, or is null when the part through which that is done is
// missing.

inline bool is_whole(pANTLR3_INPUT_STREAM& stream) {
  if (stream == nullptr) return false;
  const bool has_markers = is_there(stream->markers);
  const bool has_texts = is_there(stream->strFactory);
  if (is_there(stream->istream)) return has_markers && has_texts;
  if (has_markers) stream->markers->free(stream->markers);
  if (has_texts) stream->strFactory->close(stream->strFactory);
  ANTLR3_FREE(stream);
  stream = nullptr;
  return false;
}

inline bool is_whole(pANTLR3_COMMON_TOKEN_STREAM& stream) {
  if (stream == nullptr) return false;
  const bool has_tokens = is_there(stream->tokens);
  if (is_there(stream->tstream)) return has_tokens;
  if (has_tokens) stream->tokens->free(stream->tokens);
  ANTLR3_FREE(stream);
  stream = nullptr;
  return false;
}

// A lexer or parser base.
template <typename Base>
bool is_whole(Base*& base) {
  if (base == nullptr) return false;
  if (is_there(base->rec)) return true;
  ANTLR3_FREE(base);
  base = nullptr;
  return false;
}

}  // namespace tavo
