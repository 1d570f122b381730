#include "Grammar/engine/parser.h"

#include <cstddef>
#include <cstring>
#include <new>

#include "Grammar/engine/engine.h"
#include "Grammar/engine/table_engine.h"
#include "Grammar/lexer/lexer.h"
#include "Grammar/lexer/runtime_parts.h"

namespace tavo {
namespace {

constexpr ANTLR3_UINT32 kSizeHint = 1025;

void* exception_name(uint32_t kind) {
  const char* name = kind == ANTLR3_NO_VIABLE_ALT_EXCEPTION    ? ANTLR3_NO_VIABLE_ALT_NAME
                     : kind == ANTLR3_MISMATCHED_SET_EXCEPTION ? ANTLR3_MISMATCHED_SET_NAME
                                                               : ANTLR3_MISMATCHED_EX_NAME;
  return const_cast<char*>(name);
}

}  // namespace

// ---- errors ------------------------------------------------------------------------------------

// Raises one of the runtime's exceptions for a token. If the exception cannot be allocated, the
// error is still set, without a position.
bool ParserObject::raise(uint32_t kind, pANTLR3_COMMON_TOKEN misfit) {
  pANTLR3_RECOGNIZER_SHARED_STATE state = recognizer()->state;
  state->error = ANTLR3_TRUE;
  state->errorCount++;
  pANTLR3_EXCEPTION exception = antlr3ExceptionNew(
      kind, exception_name(kind), const_cast<char*>("Unexpected token"), ANTLR3_FALSE);
  if (exception == nullptr) return false;
  exception->token = misfit;
  exception->line = misfit->line;
  exception->charPositionInLine = misfit->charPosition;
  exception->index = misfit->index;
  exception->input = tokens_->tstream->istream;
  exception->nextException = state->exception;
  state->exception = exception;
  return false;
}

// Called when a rule exits with an error; the innermost rule records it, once.
void ParserObject::report() {
  pANTLR3_EXCEPTION exception = recognizer()->state->exception;
  if (exception != nullptr && exception->type == 0) return;
  TAVO_SetErrMsg(request_, TAVO_STATUS_SYNTAX_ERROR, recognizer());
  request_->errorFlag = 1;  // even when recording failed: a wrong statement must never pass
  if (exception != nullptr) exception->type = 0;
}

bool ParserObject::raise_mismatch(uint32_t expected, pANTLR3_COMMON_TOKEN misfit) {
  raise(ANTLR3_MISMATCHED_TOKEN_EXCEPTION, misfit);
  pANTLR3_EXCEPTION exception = recognizer()->state->exception;
  if (exception != nullptr) exception->expecting = expected;
  return false;
}

// Replaces the runtime's recovery, which would silently insert or delete a token.
void* ParserObject::mismatched_token(pANTLR3_BASE_RECOGNIZER recognizer, ANTLR3_UINT32 type,
                                     pANTLR3_BITSET_LIST) {
  auto* parser = static_cast<pANTLR3_PARSER>(recognizer->super);
  auto* object = static_cast<ParserObject*>(parser->super);
  pANTLR3_TOKEN_STREAM tokens = object->tokens_->tstream;
  object->raise_mismatch(type, tokens->_LT(tokens, 1));
  return nullptr;
}

// Called after a statement without a syntax error.
void ParserObject::finish_statement() {
  LexerObject* lexer = LexerObject::from_token_source(tokens_->tstream->tokenSource);
  // A lexer that keeps all its tokens ends its input early when memory runs out.
  if (lexer != nullptr && lexer->out_of_memory()) {
    TAVO_SetErrMsg(request_, TAVO_STATUS_NO_MEMORY_FOR_TEXT, nullptr);
    request_->errorFlag = 1;
    return;
  }
  if (lexer != nullptr) lexer->read_to_end();
  if (lexer != nullptr && lexer->first_broken().error != RecognitionError::kNone) {
    TAVO_SetErrMsg(request_, TAVO_STATUS_SYNTAX_ERROR, lexer->recognizer());
    request_->errorFlag = 1;
    pANTLR3_EXCEPTION exception = lexer->recognizer()->state->exception;
    if (exception != nullptr) exception->type = 0;
    return;
  }
  // A validation that could not run has not passed.
  if (Provider_Validate(request_) != 0) request_->errorFlag = 1;
}

void ParserObject::parse_tavo_provider_syntax(RequestRecord* request) {
  if (request == nullptr) return;
  request_ = request;
  const bool accepted = window_ != nullptr ? run_grammar(*window_, *this, request)
                                           : run_grammar(tokens_->tstream, *this, request);
  if (!accepted) return report();
  finish_statement();
}

// ---- construction and destruction --------------------------------------------------------------

namespace {

void free_parser(pTAVOParser context) {
  ParserObject* object = ParserObject::from_context(context);
  object->close();
  delete object;
}

const char* grammar_file_name() {
  return "TAVOParser";
}

void report_nothing(pANTLR3_BASE_RECOGNIZER) {}

}  // namespace

bool ParserObject::open(pANTLR3_COMMON_TOKEN_STREAM tokens, pANTLR3_RECOGNIZER_SHARED_STATE state) {
  if (tokens == nullptr) return false;
  tokens_ = tokens;
  request_ = nullptr;
  std::memset(&own_state_, 0, sizeof own_state_);
  own_state_.lastErrorIndex = -1;
  context_.parse_tavo_provider_syntax = [](pTAVOParser ctx, RequestRecord* request) {
    from_context(ctx)->parse_tavo_provider_syntax(request);
  };
  context_.getGrammarFileName = grammar_file_name;
  context_.free = free_parser;
  // Needs no stack of follow sets, which only the runtime's recovery reads.
  context_.pParser = antlr3ParserNew(kSizeHint, state != nullptr ? state : &own_state_);
  if (!is_whole(context_.pParser)) return false;
  context_.pParser->super = this;
  context_.pParser->tstream = tokens->tstream;
  recognizer()->recoverFromMismatchedToken = mismatched_token;
  recognizer()->reportError = report_nothing;
  recognizer()->displayRecognitionError = TAVO_RecognitionError;
  return true;
}

void ParserObject::close() {
  if (context_.pParser == nullptr) return;
  pANTLR3_RECOGNIZER_SHARED_STATE state = recognizer()->state;
  if (state == &own_state_) {  // part of this object; the runtime would call free() on it
    if (state->exception != nullptr) state->exception->freeEx(state->exception);
    recognizer()->state = nullptr;
  }
  context_.pParser->free(context_.pParser);
  context_.pParser = nullptr;
}

ParserObject* ParserObject::from_context(pTAVOParser context) {
  static_assert(offsetof(ParserObject, context_) == 0);
  return static_cast<ParserObject*>(static_cast<void*>(context));
}

}  // namespace tavo

extern "C" {

pTAVOParser TAVOParserNew(pANTLR3_COMMON_TOKEN_STREAM instream) noexcept {
  return TAVOParserNewSSD(instream, nullptr);
}

pTAVOParser TAVOParserNewSSD(pANTLR3_COMMON_TOKEN_STREAM instream,
                             pANTLR3_RECOGNIZER_SHARED_STATE state) noexcept {
  auto* object = new (std::nothrow) tavo::ParserObject;
  if (object == nullptr) return nullptr;
  if (!object->open(instream, state)) {
    delete object;
    return nullptr;
  }
  return object->context();
}

void TAVO_HandlePossibleStringTokenMatch(pTAVOParser ctx) noexcept {
  if (ctx == nullptr) return;
  pANTLR3_TOKEN_STREAM stream = ctx->pParser->tstream;
  tavo::take_as_string(stream->_LT(stream, 1));
}

}  // extern "C"
