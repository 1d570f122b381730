#include "Grammar/parser.h"

#include <cstddef>
#include <cstring>
#include <cwchar>
#include <new>

#include "Grammar/lexer.h"
#include "Grammar/providers.h"

extern "C" {
// The key prefix that was built last, by any thread. Process-wide as it always was; parses use
// copies of their own, so that they never mix their keys.
wchar_t Work1[50] = {};
}

namespace tavo {
namespace {

constexpr ANTLR3_UINT32 kSizeHint = 1025;

void* exception_name(uint32_t kind) {
  const char* name = kind == ANTLR3_NO_VIABLE_ALT_EXCEPTION    ? ANTLR3_NO_VIABLE_ALT_NAME
                     : kind == ANTLR3_MISMATCHED_SET_EXCEPTION ? ANTLR3_MISMATCHED_SET_NAME
                                                               : ANTLR3_MISMATCHED_EX_NAME;
  return const_cast<char*>(name);
}

bool is_separator(uint32_t type) {
  return type == COMMA || type == BAD_SEP;
}

// The result of an action does not stop the grammar. But an action that the platform refused, so
// that it could not even record why, must not leave a statement that looks accepted: its pair is
// missing. A full array alone is no failure, and that is meant.
void note_result(RequestRecord* request, uint32_t status) {
  if (status != 0 && status != TAVO_STATUS_ARRAY_FULL) request->errorFlag = 1;
}

void store(RequestRecord* request, pANTLR3_COMMON_TOKEN key, uint32_t key_type,
           pANTLR3_COMMON_TOKEN value, uint32_t value_type, const wchar_t* prefix) {
  const TAVOStoreRoutine routine = __atomic_load_n(&SetKeyValuePair, __ATOMIC_RELAXED);
  note_result(request, routine(request, key, key_type, value, value_type, prefix));
}

const AcceptedValue* find_value(const ValueList& values, uint32_t type) {
  for (const AcceptedValue& value : values.entries) {
    if (value.token == 0) break;
    if (value.token == type) return &value;
  }
  return nullptr;
}

void publish_prefix(const wchar_t* prefix) {
  size_t i = 0;
  do {
    if (__atomic_load_n(&Work1[i], __ATOMIC_RELAXED) != prefix[i]) {  // see Parser_Service
      __atomic_store_n(&Work1[i], prefix[i], __ATOMIC_RELAXED);
    }
  } while (prefix[i++] != 0);
}

}  // namespace

// ---- errors ------------------------------------------------------------------------------------

// Raises one of the runtime's exceptions over a token. Without memory for it the error stands all
// the same, and counts as one without a position.
void ParserObject::raise(uint32_t kind, pANTLR3_COMMON_TOKEN misfit) {
  pANTLR3_RECOGNIZER_SHARED_STATE state = recognizer()->state;
  state->error = ANTLR3_TRUE;
  state->errorCount++;
  pANTLR3_EXCEPTION exception = antlr3ExceptionNew(
      kind, exception_name(kind), const_cast<char*>("Unexpected token"), ANTLR3_FALSE);
  if (exception == nullptr) return;
  exception->token = misfit;
  exception->line = misfit->line;
  exception->charPositionInLine = misfit->charPosition;
  exception->index = misfit->index;
  exception->input = tokens_->tstream->istream;
  exception->nextException = state->exception;
  state->exception = exception;
}

// What a rule does on leaving with an error: the innermost one records it, once.
void ParserObject::report() {
  pANTLR3_EXCEPTION exception = recognizer()->state->exception;
  if (exception != nullptr && exception->type == 0) return;
  TAVO_SetErrMsg(request_, TAVO_STATUS_SYNTAX_ERROR, recognizer());
  request_->errorFlag = 1;  // also when it could not be recorded: a wrong statement never passes
  if (exception != nullptr) exception->type = 0;
}

// In place of the runtime's recovery, which would insert or delete a token without a word.
void* ParserObject::mismatched_token(pANTLR3_BASE_RECOGNIZER recognizer, ANTLR3_UINT32 type,
                                     pANTLR3_BITSET_LIST) {
  auto* parser = static_cast<pANTLR3_PARSER>(recognizer->super);
  auto* object = static_cast<ParserObject*>(parser->super);
  object->raise_here(ANTLR3_MISMATCHED_TOKEN_EXCEPTION);
  if (recognizer->state->exception != nullptr) recognizer->state->exception->expecting = type;
  return nullptr;
}

pANTLR3_COMMON_TOKEN ParserObject::match(uint32_t type) {
  pANTLR3_COMMON_TOKEN token = next();
  if (token->type == type) {
    consume();
    return token;
  }
  return static_cast<pANTLR3_COMMON_TOKEN>(recognizer()->match(recognizer(), type, nullptr));
}

// ---- values ------------------------------------------------------------------------------------

void ParserObject::run_token_value(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword,
                                   const wchar_t* prefix) {
  pANTLR3_COMMON_TOKEN token = next();
  const AcceptedValue* value = find_value(option.values, token->type);
  if (value == nullptr) {
    // One accepted token is matched as a token, several as a set.
    if (option.values.size() == 1) {
      match(option.values.entries[0].token);
    } else {
      raise(ANTLR3_MISMATCHED_SET_EXCEPTION, token);
    }
    return;
  }
  consume();
  const uint32_t key_type = value->key_type == kKeyOfOption ? option.key_type : value->key_type;
  const uint32_t value_type = value->value_type == kAsTyped ? token->type : value->value_type;
  store(request_, keyword, key_type, token, value_type, prefix);
  if (option.sets_trace_level) {
    note_result(request_, SetTraceLevel(request_, keyword, key_type, token, value_type, prefix));
  }
}

void ParserObject::tavo_string_value(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword,
                                     const wchar_t* prefix) {
  TAVO_HandlePossibleStringTokenMatch(&context_);
  pANTLR3_COMMON_TOKEN token = next();
  // Stored before it is matched, and that is meant: at the end of the input a pair with the
  // end-of-input token is stored, then the error is raised.
  store(request_, keyword, option.key_type, token, token->type, prefix);
  if (token->type == TAVO_PARSER_STRING_WITHOUT_QUOTES ||
      token->type == TAVO_PARSER_STRING_WITH_QUOTES) {
    consume();
  } else {
    raise(ANTLR3_MISMATCHED_SET_EXCEPTION, token);
  }
}

// The keyword as typed and ":", for the keys inside the parentheses.
const wchar_t* ParserObject::make_prefix(pANTLR3_COMMON_TOKEN keyword) {
  uint32_t length = 0;
  note_result(request_,
              TAVO_CnvANTLRTokenUtf16ToUtf32(request_, keyword, prefix_, sizeof prefix_, &length));
  constexpr uint32_t kLongest = kPrefixCharacters - 2;
  if (length > kLongest) length = kLongest;
  prefix_[length] = L':';
  prefix_[length + 1] = 0;
  publish_prefix(prefix_);
  return prefix_;
}

void ParserObject::run_parameters(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword) {
  const wchar_t* prefix = make_prefix(keyword);
  match(EQUAL);
  if (failed()) return;
  match(LEFT_PARENTHESIS);
  if (failed()) return;
  for (;;) {
    const OptionRule* parameter =
        option_beginning_with(option.parameters, *option.parameter_index, next_type());
    if (parameter == nullptr) return raise_here(ANTLR3_NO_VIABLE_ALT_EXCEPTION);
    run_option(*parameter, prefix);
    if (failed()) return;
    if (next_type() != COMMA) break;
    consume();
  }
  match(RIGHT_PARENTHESIS);
}

// ---- options -----------------------------------------------------------------------------------

void ParserObject::run_option(const OptionRule& option, const wchar_t* prefix) {
  pANTLR3_COMMON_TOKEN keyword = next();
  consume();
  if (option.syntax == ValueSyntax::kParameters) return run_parameters(option, keyword);
  match(EQUAL);
  if (failed()) return;
  if (option.syntax == ValueSyntax::kString) return tavo_string_value(option, keyword, prefix);
  run_token_value(option, keyword, prefix);
}

// One or more separators, each with an option behind it. The list ends at the first token that is
// no separator; text after that is ignored, and that is meant.
void ParserObject::run_option_list(const StatementRule& statement) {
  for (pANTLR3_COMMON_TOKEN separator = next(); is_separator(separator->type); separator = next()) {
    consume();
    if (separator->type == BAD_SEP) return raise(TAVO_STATUS_BAD_SEPARATOR, separator);
    const OptionRule* option =
        option_beginning_with(statement.options, *statement.index, next_type());
    if (option == nullptr) return raise_here(ANTLR3_NO_VIABLE_ALT_EXCEPTION);
    run_option(*option, nullptr);
    if (failed()) return;
  }
}

// ---- statements --------------------------------------------------------------------------------

void ParserObject::run_statement(const StatementRule& statement) {
  run_option(statement.head, nullptr);
  if (failed()) return;
  const uint32_t type = next_type();
  if (is_separator(type)) return run_option_list(statement);
  if (type == TAVO_TOKEN_END_OF_INPUT) return consume();
  raise_here(ANTLR3_NO_VIABLE_ALT_EXCEPTION);
}

// The quoted string must stand there, but it is the keyword that is handed on, twice; that is
// meant.
void ParserObject::run_trace_statement(const StatementRule& statement) {
  pANTLR3_COMMON_TOKEN keyword = next();
  consume();
  match(EQUAL);
  if (failed()) return;
  match(statement.head.values.entries[0].token);
  if (failed()) return;
  note_result(request_, SetTraceLevel(request_, keyword, statement.head.key_type, keyword,
                                      keyword->type, L""));
}

// Chooses by the first token, a provider statement by the third. Null, and the token that does not
// fit, when there is no such statement.
const StatementRule* ParserObject::choose_statement(pANTLR3_COMMON_TOKEN* misfit) {
  *misfit = next();
  const uint32_t first = (*misfit)->type;
  uint32_t name = 0;
  if (first == TAVO_PARSER_PROVIDER) {
    *misfit = look_ahead(2);
    if ((*misfit)->type != EQUAL) return nullptr;
    *misfit = look_ahead(3);
    name = (*misfit)->type;
  }
  for (const StatementRule* statement : statements()) {
    bool starts = false;
    for (uint16_t keyword : statement->head.keywords.entries) {
      starts |= keyword != 0 && keyword == first;
    }
    if (starts && (name == 0 || statement->head.values.entries[0].token == name)) return statement;
  }
  return nullptr;
}

// After a statement without a syntax error.
void ParserObject::finish_statement() {
  LexerObject* lexer = LexerObject::from_token_source(tokens_->tstream->tokenSource);
  // A lexer that keeps all its tokens and got no memory for one ended its input too soon.
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
  // A validation that could not be done is not a validation that passed.
  if (Provider_Validate(request_) != 0) request_->errorFlag = 1;
}

void ParserObject::parse_tavo_provider_syntax(RequestRecord* request) {
  request_ = request;
  pANTLR3_COMMON_TOKEN misfit;
  const StatementRule* statement = choose_statement(&misfit);
  if (statement == nullptr) {
    raise(ANTLR3_NO_VIABLE_ALT_EXCEPTION, misfit);
  } else if (statement->takes_options()) {
    run_statement(*statement);
  } else {
    run_trace_statement(*statement);
  }
  if (failed()) return report();
  finish_statement();
}

// ---- making and freeing ------------------------------------------------------------------------

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
  // Without the runtime's stack of follow sets, which only its recovery reads.
  context_.pParser = antlr3ParserNew(kSizeHint, state != nullptr ? state : &own_state_);
  if (context_.pParser == nullptr) return false;
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
  if (state == &own_state_) {  // part of this object, while the runtime frees a state with free()
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
  pANTLR3_COMMON_TOKEN token = stream->_LT(stream, 1);
  const bool real = token->type > TAVO_TOKEN_UP && token->type < TAVO_TOKEN_NAME_COUNT;
  if (real && token->type != TAVO_PARSER_STRING_WITH_QUOTES) {
    token->type = TAVO_PARSER_STRING_WITHOUT_QUOTES;
  }
}

}  // extern "C"
