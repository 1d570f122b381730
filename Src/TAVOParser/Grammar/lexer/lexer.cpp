#include "Grammar/lexer/lexer.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "Grammar/lexer/runtime_parts.h"
#include "text/utf16_characters.h"

namespace tavo {
namespace {

constexpr ANTLR3_UINT32 kSizeHint = 1025;

void* as_name(RecognitionError error) {
  const char* name = error == RecognitionError::kNoViableAlternative ? ANTLR3_NO_VIABLE_ALT_NAME
                     : error == RecognitionError::kEarlyExit         ? ANTLR3_EARLY_EXIT_NAME
                     : error == RecognitionError::kMismatchedSet     ? ANTLR3_MISMATCHED_SET_NAME
                                                                     : ANTLR3_MISMATCHED_EX_NAME;
  return const_cast<char*>(name);
}

bool is_utf16(const ANTLR3_INPUT_STREAM& input) {
  return input.encoding == ANTLR3_ENC_UTF16 || input.encoding == (ANTLR3_ENC_UTF16LE);
}

void free_lexer(pTAVOLexer context) {
  LexerObject* object = LexerObject::from_context(context);
  object->close();
  delete object;
}

const char* grammar_file_name() {
  return "TAVOParser";
}

// Replace the runtime's versions, which print, or skip input that is already skipped.
void report_nothing(pANTLR3_BASE_RECOGNIZER) {}
void recover_nothing(pANTLR3_LEXER) {}
void ignore_factory(pANTLR3_TOKEN_FACTORY) {}
void set_factory_input(pANTLR3_TOKEN_FACTORY factory, pANTLR3_INPUT_STREAM input) {
  factory->input = input;
}

}  // namespace

// ---- tokens ------------------------------------------------------------------------------------

TokenPool::~TokenPool() {
  while (chunks_ != nullptr) {
    Chunk* previous = chunks_->previous;
    std::free(chunks_);
    chunks_ = previous;
  }
}

ANTLR3_COMMON_TOKEN* TokenPool::take_from_new_chunk() {
  const size_t bytes = sizeof(Chunk) + (next_size_ - 1) * sizeof(ANTLR3_COMMON_TOKEN);
  auto* chunk = static_cast<Chunk*>(std::malloc(bytes));
  if (chunk == nullptr) return nullptr;
  chunk->previous = chunks_;
  chunks_ = chunk;
  next_ = chunk->tokens;
  limit_ = chunk->tokens + next_size_;
  constexpr size_t kLargestChunk = 4096;
  if (next_size_ < kLargestChunk) next_size_ *= 2;
  return next_++;
}

pANTLR3_COMMON_TOKEN LexerObject::make_token(const uint16_t* start, const Lexeme& lexeme) {
  pANTLR3_COMMON_TOKEN token = pool_.take();
  if (token == nullptr) {
    out_of_memory_ = true;
    return nullptr;
  }
  prepare(token);
  describe(token, start, lexeme.stop, lexeme.type);
  token->channel = lexeme.hidden() ? HIDDEN : ANTLR3_TOKEN_DEFAULT_CHANNEL;
  return token;
}

void LexerObject::prepare(pANTLR3_COMMON_TOKEN token) const {
  *token = factory_.unTruc;
  token->channel = ANTLR3_TOKEN_DEFAULT_CHANNEL;
}

// ---- lexical errors ----------------------------------------------------------------------------

// The position of the end of the input, such that an error there is reported at the string's
// length.
int32_t LexerObject::end_position() const {
  const auto characters = static_cast<int32_t>(end_ - begin_) - static_cast<int32_t>(cursor_.pairs);
  return characters > 2 ? characters - 2 : 0;
}

void LexerObject::record_first_broken(const uint16_t* offending, RecognitionError error) {
  first_broken_ = {error, offending};
  pANTLR3_EXCEPTION exception =
      antlr3ExceptionNew(static_cast<ANTLR3_UINT32>(error), as_name(error),
                         const_cast<char*>("Unexpected character"), ANTLR3_FALSE);
  if (exception == nullptr) return;  // the error has no position then
  exception->c = offending == end_ ? ANTLR3_CHARSTREAM_EOF : *offending;
  exception->line = cursor_.line;
  exception->charPositionInLine =
      offending == end_ ? end_position() : cursor_.character_position(offending);
  exception->index = static_cast<ANTLR3_MARKER>(reinterpret_cast<intptr_t>(offending));
  exception->streamName = input_->fileName;
  exception->input = input_->istream;
  recognizer()->state->exception = exception;
}

// Drops the characters that the failed rule consumed and the offending character.
void LexerObject::drop_broken(const uint16_t* start, Lexeme lexeme) {
  cursor_.advance(start, lexeme.stop);
  if (first_broken_.error == RecognitionError::kNone) {
    record_first_broken(lexeme.stop, lexeme.error());
  }
  recognizer()->state->errorCount++;
  next_ = lexeme.stop == end_ ? end_ : next_character(lexeme.stop, end_);
  cursor_.advance(lexeme.stop, next_);
}

// ---- token source ------------------------------------------------------------------------------

pANTLR3_COMMON_TOKEN LexerObject::end_of_input() {
  synchronize_input();
  pANTLR3_COMMON_TOKEN token = &token_source()->eofToken;
  token->strFactory = input_->strFactory;
  token->input = input_;
  token->line = cursor_.line;
  token->charPosition = end_position();
  token->start = token->stop = static_cast<ANTLR3_MARKER>(reinterpret_cast<intptr_t>(end_));
  return token;
}

pANTLR3_COMMON_TOKEN LexerObject::next_token() {
  while (next_ != end_) {
    const uint16_t* start = next_;
    const Lexeme lexeme = scan(start, end_);
    if (lexeme.type == 0) {
      drop_broken(start, lexeme);
      continue;
    }
    pANTLR3_COMMON_TOKEN token = make_token(start, lexeme);
    if (token == nullptr) break;
    next_ = lexeme.stop;
    if (lexeme.multi_line()) cursor_.advance(start, next_);
    return token;
  }
  return end_of_input();
}

bool LexerObject::next_visible_from(const uint16_t* place, const uint16_t* stop, uint32_t type,
                                    uint32_t traits, pANTLR3_COMMON_TOKEN token) {
  for (Lexeme lexeme = {stop, type, traits};; lexeme = scan(place, end_)) {
    if (lexeme.type == 0) {
      drop_broken(place, lexeme);
    } else {
      if (!lexeme.hidden()) describe(token, place, lexeme.stop, lexeme.type);
      if (lexeme.multi_line()) cursor_.advance(place, lexeme.stop);
      next_ = lexeme.stop;
      if (!lexeme.hidden()) return true;
    }
    place = next_;
    if (place == end_) return false;
  }
}

void LexerObject::read_to_end() {
  ANTLR3_COMMON_TOKEN unused;
  while (next_visible(&unused)) {
  }
}

pANTLR3_COMMON_TOKEN LexerObject::next_token_of(pANTLR3_TOKEN_SOURCE source) {
  return from_token_source(source)->next_token();
}

// For the runtime's own token source, which calls mTokens at the stream's position.
void LexerObject::match_one_token() {
  pANTLR3_RECOGNIZER_SHARED_STATE state = recognizer()->state;
  next_ = static_cast<const uint16_t*>(static_cast<const void*>(input_->nextChar));
  if (next_ == end_) return;
  const uint16_t* start = next_;
  const Lexeme lexeme = scan(start, end_);
  if (lexeme.type == 0) {
    drop_broken(start, lexeme);
    state->error = ANTLR3_TRUE;
  } else {
    state->token = make_token(start, lexeme);
    if (state->token == nullptr) state->token = &token_source()->eofToken;
    state->type = lexeme.type;
    next_ = lexeme.stop;
    cursor_.advance(start, next_);
  }
  synchronize_input();
}

void LexerObject::synchronize_input() {
  input_->nextChar = const_cast<uint16_t*>(next_);
  input_->line = cursor_.line;
  input_->charPositionInLine = cursor_.character_position(next_);
}

pANTLR3_COMMON_TOKEN LexerObject::new_token_of(pANTLR3_TOKEN_FACTORY factory) {
  auto* address = static_cast<char*>(static_cast<void*>(factory)) - offsetof(LexerObject, factory_);
  auto* object = static_cast<LexerObject*>(static_cast<void*>(address));
  pANTLR3_COMMON_TOKEN token = object->pool_.take();
  if (token != nullptr) *token = factory->unTruc;
  return token;
}

// ---- construction and destruction --------------------------------------------------------------

bool LexerObject::open(pANTLR3_INPUT_STREAM input, pANTLR3_RECOGNIZER_SHARED_STATE state,
                       size_t zeros_after) {
  if (input == nullptr || !is_utf16(*input)) return false;
  std::memset(&own_state_, 0, sizeof own_state_);
  std::memset(&source_, 0, sizeof source_);
  std::memset(&factory_, 0, sizeof factory_);
  antlr3SetTokenAPI(&factory_.unTruc);
  factory_.unTruc.factoryMade = ANTLR3_TRUE;
  factory_.unTruc.strFactory = input->strFactory;
  factory_.unTruc.input = input;
  factory_.newToken = new_token_of;
  factory_.reset = ignore_factory;
  factory_.close = ignore_factory;
  factory_.setInputStream = set_factory_input;
  source_.nextToken = next_token_of;

  pANTLR3_RECOGNIZER_SHARED_STATE used = state != nullptr ? state : &own_state_;
  if (state == nullptr) own_state_.lastErrorIndex = -1;
  if (used->tokSource == nullptr) used->tokSource = &source_;
  if (used->tokFactory == nullptr) used->tokFactory = &factory_;

  context_ = {nullptr, nullptr, grammar_file_name, free_lexer};
  context_.pLexer = antlr3LexerNewStream(kSizeHint, input, used);
  if (!is_whole(context_.pLexer)) return false;
  used->tokSource->super = context_.pLexer;
  context_.mTokens = [](pTAVOLexer ctx) { from_context(ctx)->match_one_token(); };
  context_.pLexer->ctx = &context_;
  context_.pLexer->mTokens = [](void* ctx) {
    from_context(static_cast<pTAVOLexer>(ctx))->match_one_token();
  };
  context_.pLexer->recover = recover_nothing;
  context_.pLexer->rec->reportError = report_nothing;
  context_.pLexer->rec->displayRecognitionError = TAVO_RecognitionError;

  input_ = input;
  begin_ = static_cast<const uint16_t*>(input->data);
  end_ = begin_ + input->sizeBuf / sizeof(uint16_t);
  readable_ = end_ + zeros_after;
  next_ = begin_ != end_ && *begin_ == 0xFEFF ? begin_ + 1 : begin_;  // a byte-order mark
  cursor_ = {};
  cursor_.line_start = begin_;
  synchronize_input();
  return true;
}

void LexerObject::close() {
  if (context_.pLexer == nullptr) return;
  pANTLR3_RECOGNIZER_SHARED_STATE state = recognizer()->state;
  // The runtime calls free() on the members of a state; ours is part of this object.
  if (state->tokSource == &source_) state->tokSource = nullptr;
  if (state->tokFactory == &factory_) state->tokFactory = nullptr;
  if (state == &own_state_) {
    if (state->exception != nullptr) state->exception->freeEx(state->exception);
    if (state->streams != nullptr) state->streams->free(state->streams);
    recognizer()->state = nullptr;
  }
  context_.pLexer->free(context_.pLexer);
  context_.pLexer = nullptr;
}

LexerObject* LexerObject::from_context(pTAVOLexer context) {
  static_assert(offsetof(LexerObject, context_) == 0);
  return static_cast<LexerObject*>(static_cast<void*>(context));
}

LexerObject* LexerObject::from_token_source(pANTLR3_TOKEN_SOURCE source) {
  if (source == nullptr || source->nextToken != next_token_of) return nullptr;
  auto* lexer = static_cast<pANTLR3_LEXER>(source->super);
  return from_context(static_cast<pTAVOLexer>(lexer->ctx));
}

}  // namespace tavo

extern "C" {

pTAVOLexer TAVOLexerNew(pANTLR3_INPUT_STREAM instream) noexcept {
  return TAVOLexerNewSSD(instream, nullptr);
}

pTAVOLexer TAVOLexerNewSSD(pANTLR3_INPUT_STREAM instream,
                           pANTLR3_RECOGNIZER_SHARED_STATE state) noexcept {
  auto* object = new (std::nothrow) tavo::LexerObject;
  if (object == nullptr) return nullptr;
  if (!object->open(instream, state)) {
    delete object;
    return nullptr;
  }
  return object->context();
}

}  // extern "C"
