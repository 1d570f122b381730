// The lexer as the runtime sees it: a lexer base, a token source that returns the runtime's common
// tokens, and our own token pool. The runtime's pool would clear a quarter of a megabyte per lexer,
// most of the cost of a short parse.
#pragma once

#include <antlr3.h>

#include <cstddef>
#include <cstdint>

#include "Grammar/lexer/line_cursor.h"
#include "Grammar/lexer/scanner.h"
#include "TAVOGrammar.h"

namespace tavo {

// The location of a recognition error of the lexer, and the offending character.
struct BrokenPlace {
  RecognitionError error = RecognitionError::kNone;
  const uint16_t* text = nullptr;  // the offending character, or the end of the text
};

// Allocates tokens from a first chunk inside the object, then from growing chunks on the heap.
class TokenPool {
 public:
  TokenPool() = default;
  TokenPool(const TokenPool&) = delete;
  TokenPool& operator=(const TokenPool&) = delete;
  ~TokenPool();

  // An uninitialized token; null when memory cannot be allocated.
  ANTLR3_COMMON_TOKEN* take() {
    if (next_ == limit_) return take_from_new_chunk();
    return next_++;
  }

 private:
  static constexpr size_t kFirstChunk = 40;  // enough for statements of about 130 characters
  struct Chunk {
    Chunk* previous;
    ANTLR3_COMMON_TOKEN tokens[1];
  };

  ANTLR3_COMMON_TOKEN* take_from_new_chunk();

  ANTLR3_COMMON_TOKEN first_[kFirstChunk];
  ANTLR3_COMMON_TOKEN* next_ = first_;
  ANTLR3_COMMON_TOKEN* limit_ = first_ + kFirstChunk;
  Chunk* chunks_ = nullptr;
  size_t next_size_ = kFirstChunk * 2;
};

class LexerObject {
 public:
  // Builds the object in place over a UTF-16 stream; `state` is the caller's state or null;
  // zeros_after: the number of zero units after the stream's text. Returns false when memory
  // cannot be allocated or the stream is not UTF-16.
  bool open(pANTLR3_INPUT_STREAM input, pANTLR3_RECOGNIZER_SHARED_STATE state,
            size_t zeros_after = 0);
  // Frees what the runtime allocated for the object, but not the object.
  void close();

  pTAVOLexer context() {
    return &context_;
  }
  pANTLR3_BASE_RECOGNIZER recognizer() {
    return context_.pLexer->rec;
  }
  pANTLR3_TOKEN_SOURCE token_source() {
    return context_.pLexer->rec->state->tokSource;
  }

  // ---- without the token source and its pool: tokens that the caller allocates -----------------

  // Sets the fields that are the same in all tokens of this lexer.
  void prepare(pANTLR3_COMMON_TOKEN token) const;
  // Reads the next visible token into a prepared one. Returns false at the end of the input.
  bool next_visible(pANTLR3_COMMON_TOKEN token);
  // Skips this sign if it is the next token.
  bool step_over(Sign sign);
  // The end-of-input token; call when everything is read.
  pANTLR3_COMMON_TOKEN end_of_input();
  // Reads to the end, to find lexical errors there.
  void read_to_end();

  const BrokenPlace& first_broken() const {
    return first_broken_;
  }
  bool out_of_memory() const {
    return out_of_memory_;
  }

  // The object of a lexer context or of one of its token sources; null for a foreign one.
  static LexerObject* from_context(pTAVOLexer context);
  static LexerObject* from_token_source(pANTLR3_TOKEN_SOURCE source);

 private:
  pANTLR3_COMMON_TOKEN next_token();
  pANTLR3_COMMON_TOKEN make_token(const uint16_t* start, const Lexeme& lexeme);
  void describe(pANTLR3_COMMON_TOKEN token, const uint16_t* start, const uint16_t* stop,
                uint32_t type) const;
  // Continues from a lexeme that has been read, passed in parts that fit in registers.
  bool next_visible_from(const uint16_t* place, const uint16_t* stop, uint32_t type,
                         uint32_t traits, pANTLR3_COMMON_TOKEN token);
  void drop_broken(const uint16_t* start, Lexeme lexeme);
  void record_first_broken(const uint16_t* offending, RecognitionError error);
  int32_t end_position() const;
  void match_one_token();
  void synchronize_input();
  // The next place that is not a space; spaces are the most frequent hidden token.
  const uint16_t* skip_spaces() const {
    const uint16_t* place = next_;
    while (place != end_ && *place == ' ') ++place;
    return place;
  }

  static pANTLR3_COMMON_TOKEN next_token_of(pANTLR3_TOKEN_SOURCE source);
  static pANTLR3_COMMON_TOKEN new_token_of(pANTLR3_TOKEN_FACTORY factory);

  TAVOLexer context_{};  // first: the object is found through its context
  ANTLR3_RECOGNIZER_SHARED_STATE own_state_;
  ANTLR3_TOKEN_SOURCE source_;
  ANTLR3_TOKEN_FACTORY factory_;
  pANTLR3_INPUT_STREAM input_;
  const uint16_t* begin_;
  const uint16_t* end_;
  const uint16_t* readable_;  // end of readable memory: the text and the zeros after it
  const uint16_t* next_;
  LineCursor cursor_;
  BrokenPlace first_broken_;
  bool out_of_memory_ = false;
  TokenPool pool_;
};

// Inline, since it runs for every token of a statement.
inline void LexerObject::describe(pANTLR3_COMMON_TOKEN token, const uint16_t* start,
                                  const uint16_t* stop, uint32_t type) const {
  token->type = type;
  token->line = cursor_.line;
  token->lineStart = const_cast<uint16_t*>(cursor_.line_start);
  token->charPosition = cursor_.character_position(start);
  // As in the runtime's tokens: the addresses of the first and of the last byte.
  token->start = static_cast<ANTLR3_MARKER>(reinterpret_cast<intptr_t>(start));
  token->stop = static_cast<ANTLR3_MARKER>(reinterpret_cast<intptr_t>(stop) - 1);
}

inline bool LexerObject::next_visible(pANTLR3_COMMON_TOKEN token) {
  const uint16_t* place = skip_spaces();
  if (place == end_) [[unlikely]] {
    next_ = end_;
    return false;
  }
  const Lexeme lexeme = scan(place, end_, readable_);
  // Nearly all visible tokens are plain: without errors and line ends.
  if (lexeme.traits != 0) [[unlikely]] {
    return next_visible_from(place, lexeme.stop, lexeme.type, lexeme.traits, token);
  }
  describe(token, place, lexeme.stop, lexeme.type);
  next_ = lexeme.stop;
  return true;
}

inline bool LexerObject::step_over(Sign sign) {
  const uint16_t* place = skip_spaces();
  if (place == end_ || *place != static_cast<uint16_t>(sign)) [[unlikely]] {
    return false;
  }
  next_ = place + 1;
  return true;
}

}  // namespace tavo
