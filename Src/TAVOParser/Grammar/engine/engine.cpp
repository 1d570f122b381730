#include "Grammar/engine/engine.h"

#include <cstddef>

#include "Grammar/engine/option_table.h"

extern "C" {
// The key prefix that was built last, by any thread. Process-wide as it always was; parses use
// copies of their own, so that they never mix their keys.
wchar_t Work1[50] = {};
}

namespace tavo {
namespace {

// A caller's own token stream, with the interface of TokenWindow.
class StreamTokens {
 public:
  explicit StreamTokens(pANTLR3_TOKEN_STREAM stream) : stream_(stream) {}

  pANTLR3_COMMON_TOKEN current() {
    return stream_->_LT(stream_, 1);
  }
  pANTLR3_COMMON_TOKEN take() {
    pANTLR3_COMMON_TOKEN token = current();
    stream_->istream->consume(stream_->istream);
    return token;
  }
  static pANTLR3_COMMON_TOKEN take_behind(Sign) {
    return nullptr;  // every sign is a token
  }

 private:
  pANTLR3_TOKEN_STREAM stream_;
};

// Made for one statement. Tokens is TokenWindow or StreamTokens.
template <typename Tokens>
class Engine {
 public:
  Engine(Tokens& tokens, ParserObject& parser, RequestRecord* request)
      : tokens_(tokens), parser_(parser), request_(request) {}

  // The top rule. Like every rule here it raises a syntax error, stops and returns false.
  bool parse_tavo_provider_syntax();

 private:
  // The key prefix buffer, as large as Work1.
  static constexpr uint32_t kPrefixCharacters = sizeof(Work1) / sizeof(Work1[0]);

  bool run_provider_statement(pANTLR3_COMMON_TOKEN keyword);
  bool run_trace_statement(const StatementRule& statement, pANTLR3_COMMON_TOKEN keyword);
  // With all it calls for an option in one place: this is where a parse spends its time.
  [[gnu::flatten]] bool run_options(const StatementRule& statement);
  bool run_option(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword, const wchar_t* prefix);
  [[gnu::noinline]] bool run_parameters(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword);
  bool run_token_value(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword,
                       pANTLR3_COMMON_TOKEN token, const wchar_t* prefix);
  bool tavo_string_value(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword,
                         pANTLR3_COMMON_TOKEN token, const wchar_t* prefix);
  const wchar_t* make_prefix(pANTLR3_COMMON_TOKEN keyword);

  void store(pANTLR3_COMMON_TOKEN key, uint32_t key_type, pANTLR3_COMMON_TOKEN value,
             uint32_t value_type, const wchar_t* prefix) {
    const TAVOStoreRoutine routine = __atomic_load_n(&SetKeyValuePair, __ATOMIC_RELAXED);
    note_result(routine(request_, key, key_type, value, value_type, prefix));
  }
  void store_accepted(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword,
                      const AcceptedValue& value, pANTLR3_COMMON_TOKEN token,
                      const wchar_t* prefix) {
    const uint32_t key_type = value.key_type == kKeyOfOption ? option.key_type : value.key_type;
    const uint32_t value_type = value.value_type == kAsTyped ? token->type : value.value_type;
    store(keyword, key_type, token, value_type, prefix);
    if (option.sets_trace_level) {
      note_result(SetTraceLevel(request_, keyword, key_type, token, value_type, prefix));
    }
  }
  // The result of an action does not stop the grammar. But an action that the platform refused, so
  // that it could not even record why, must not leave a statement that looks accepted: its pair is
  // missing. A full array alone is no failure, and that is meant.
  void note_result(uint32_t status) {
    if (status != 0 && status != TAVO_STATUS_ARRAY_FULL) request_->errorFlag = 1;
  }

  // If the next token is a sign, goes on behind it and takes the token there; null otherwise.
  pANTLR3_COMMON_TOKEN take_behind_comma() {
    pANTLR3_COMMON_TOKEN token = tokens_.take_behind(Sign::kComma);
    return token != nullptr ? token : take_behind_token(COMMA);
  }
  pANTLR3_COMMON_TOKEN take_behind_equal() {
    pANTLR3_COMMON_TOKEN token = tokens_.take_behind(Sign::kEqual);
    return token != nullptr ? token : take_behind_token(EQUAL);
  }
  [[gnu::noinline]] pANTLR3_COMMON_TOKEN take_behind_token(uint32_t type) {
    if (tokens_.current()->type != type) return nullptr;
    tokens_.take();
    return tokens_.take();
  }
  // Raises the mismatch if the token behind an equals sign is missing, with the sign, or another.
  bool match_behind_equal(uint32_t type) {
    pANTLR3_COMMON_TOKEN token = take_behind_equal();
    if (token == nullptr) return parser_.raise_mismatch(EQUAL, tokens_.current());
    return token->type == type || parser_.raise_mismatch(type, token);
  }
  bool match(uint32_t type) {
    pANTLR3_COMMON_TOKEN token = tokens_.take();
    return token->type == type || parser_.raise_mismatch(type, token);
  }

  Tokens& tokens_;
  ParserObject& parser_;
  RequestRecord* request_;
  wchar_t prefix_[kPrefixCharacters];
};

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

// ---- values ------------------------------------------------------------------------------------

template <typename Tokens>
bool Engine<Tokens>::run_token_value(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword,
                                     pANTLR3_COMMON_TOKEN token, const wchar_t* prefix) {
  const AcceptedValue* value = find_value(option.values, token->type);
  if (value == nullptr) {
    // One accepted token is matched as a token, several as a set.
    return option.values.size() == 1 ? parser_.raise_mismatch(option.values.entries[0].token, token)
                                     : parser_.raise(ANTLR3_MISMATCHED_SET_EXCEPTION, token);
  }
  store_accepted(option, keyword, *value, token, prefix);
  return true;
}

template <typename Tokens>
bool Engine<Tokens>::tavo_string_value(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword,
                                       pANTLR3_COMMON_TOKEN token, const wchar_t* prefix) {
  take_as_string(token);
  // Stored before it is looked at, and that is meant: at the end of the input a pair with the
  // end-of-input token is stored, then the error is raised.
  store(keyword, option.key_type, token, token->type, prefix);
  return token->type == TAVO_PARSER_STRING_WITHOUT_QUOTES ||
         token->type == TAVO_PARSER_STRING_WITH_QUOTES ||
         parser_.raise(ANTLR3_MISMATCHED_SET_EXCEPTION, token);
}

// The keyword as typed and ":", for the keys inside the parentheses.
template <typename Tokens>
const wchar_t* Engine<Tokens>::make_prefix(pANTLR3_COMMON_TOKEN keyword) {
  uint32_t length = 0;
  note_result(TAVO_CnvANTLRTokenUtf16ToUtf32(request_, keyword, prefix_, sizeof prefix_, &length));
  constexpr uint32_t kLongest = kPrefixCharacters - 2;
  if (length > kLongest) length = kLongest;
  prefix_[length] = L':';
  prefix_[length + 1] = 0;
  publish_prefix(prefix_);
  return prefix_;
}

template <typename Tokens>
bool Engine<Tokens>::run_parameters(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword) {
  const wchar_t* prefix = make_prefix(keyword);
  if (!match_behind_equal(LEFT_PARENTHESIS)) return false;
  pANTLR3_COMMON_TOKEN token = tokens_.take();
  do {
    const OptionRule* parameter =
        option_beginning_with(option.parameters, *option.parameter_index, token->type);
    if (parameter == nullptr) return parser_.raise(ANTLR3_NO_VIABLE_ALT_EXCEPTION, token);
    if (!run_option(*parameter, token, prefix)) return false;
    token = take_behind_comma();
  } while (token != nullptr);
  return match(RIGHT_PARENTHESIS);
}

// ---- options -----------------------------------------------------------------------------------

template <typename Tokens>
bool Engine<Tokens>::run_option(const OptionRule& option, pANTLR3_COMMON_TOKEN keyword,
                                const wchar_t* prefix) {
  if (option.syntax == ValueSyntax::kParameters) return run_parameters(option, keyword);
  pANTLR3_COMMON_TOKEN token = take_behind_equal();
  if (token == nullptr) return parser_.raise_mismatch(EQUAL, tokens_.current());
  return option.syntax == ValueSyntax::kString ? tavo_string_value(option, keyword, token, prefix)
                                               : run_token_value(option, keyword, token, prefix);
}

// What follows a statement's head: nothing, or commas, each with an option behind it. The list
// ends at the first token that is no separator; text after that is ignored, and that is meant.
template <typename Tokens>
bool Engine<Tokens>::run_options(const StatementRule& statement) {
  bool is_list = false;
  while (pANTLR3_COMMON_TOKEN keyword = take_behind_comma()) {
    is_list = true;
    const OptionRule* option =
        option_beginning_with(statement.options, *statement.index, keyword->type);
    if (option == nullptr) return parser_.raise(ANTLR3_NO_VIABLE_ALT_EXCEPTION, keyword);
    if (!run_option(*option, keyword, nullptr)) return false;
  }
  pANTLR3_COMMON_TOKEN token = tokens_.current();
  if (token->type == BAD_SEP) return parser_.raise(TAVO_STATUS_BAD_SEPARATOR, token);
  return is_list || token->type == TAVO_TOKEN_END_OF_INPUT ||
         parser_.raise(ANTLR3_NO_VIABLE_ALT_EXCEPTION, token);
}

// ---- statements --------------------------------------------------------------------------------

// The quoted string must stand there, but it is the keyword that is handed on, twice; that is
// meant.
template <typename Tokens>
bool Engine<Tokens>::run_trace_statement(const StatementRule& statement,
                                         pANTLR3_COMMON_TOKEN keyword) {
  if (!match_behind_equal(statement.head.values.entries[0].token)) return false;
  note_result(
      SetTraceLevel(request_, keyword, statement.head.key_type, keyword, keyword->type, L""));
  return true;
}

// The statements that begin with the provider keyword are chosen by the name behind it.
template <typename Tokens>
bool Engine<Tokens>::run_provider_statement(pANTLR3_COMMON_TOKEN keyword) {
  pANTLR3_COMMON_TOKEN name = take_behind_equal();
  if (name == nullptr) return parser_.raise(ANTLR3_NO_VIABLE_ALT_EXCEPTION, tokens_.current());
  for (const StatementRule* statement : statements()) {
    const AcceptedValue& value = statement->head.values.entries[0];
    if (value.token != name->type || !statement->begins_with(keyword->type)) continue;
    store_accepted(statement->head, keyword, value, name, nullptr);
    return run_options(*statement);
  }
  return parser_.raise(ANTLR3_NO_VIABLE_ALT_EXCEPTION, name);
}

template <typename Tokens>
bool Engine<Tokens>::parse_tavo_provider_syntax() {
  pANTLR3_COMMON_TOKEN keyword = tokens_.take();
  if (keyword->type == TAVO_PARSER_PROVIDER) return run_provider_statement(keyword);
  for (const StatementRule* statement : statements()) {
    if (!statement->begins_with(keyword->type)) continue;
    if (!statement->takes_options()) return run_trace_statement(*statement, keyword);
    return run_option(statement->head, keyword, nullptr) && run_options(*statement);
  }
  return parser_.raise(ANTLR3_NO_VIABLE_ALT_EXCEPTION, keyword);
}

}  // namespace

bool run_grammar(TokenWindow& tokens, ParserObject& parser, RequestRecord* request) {
  return Engine(tokens, parser, request).parse_tavo_provider_syntax();
}

bool run_grammar(pANTLR3_TOKEN_STREAM stream, ParserObject& parser, RequestRecord* request) {
  StreamTokens tokens(stream);
  return Engine(tokens, parser, request).parse_tavo_provider_syntax();
}

}  // namespace tavo
