// Runs the grammar tables: the only place that knows the structure of a statement. It reads tokens
// from a source, calls a set of actions as the tables say, and stops at the first syntax error.
#pragma once

#include <cstdint>
#include <utility>

#include "Grammar/engine/option_table.h"
#include "Grammar/lexer/scanner.h"
#include "TAVOParser.h"

namespace tavo {

// Kinds of syntax error, numbered as the runtime numbers its exceptions.
enum class SyntaxError : uint32_t {
  kMismatchedToken = 2,
  kNoViableAlternative = 3,
  kMismatchedSet = 4,
  kBadSeparator = TAVO_STATUS_BAD_SEPARATOR,
};

// One object parses one statement.
//
// Tokens is a source of tokens:
//   Token                  pointer to a token with a member `type`; it stays valid until three
//                          more tokens have been read
//   Token current()        the next token, hidden ones left out; the end-of-input token from the
//                          end on
//   Token take()           the same, and goes on after it
//   bool skip(Sign)        goes on after this sign, if the source can do so without making a token
//                          of it; false says only that it did not
//   Token take_after(Sign)  goes on after this sign and takes the token there, if the source can
//                          do so without making a token of the sign; null says only that it did not
//
// Actions handle what the engine finds; none of them can stop it:
//   Prefix                 pointer to a key prefix
//   void store(key, key type, value, value type, prefix or null)
//   void set_trace_level(key, key type, value, value type, prefix or null)
//   void run_trace_statement(keyword, key type)
//   Prefix make_prefix(keyword)
//   bool raise(SyntaxError, misfit), bool raise_mismatch(expected type, misfit)   always false
template <typename Tokens, typename Actions>
class TableEngine {
 public:
  using Token = typename Tokens::Token;
  using Prefix = typename Actions::Prefix;

  // The other arguments construct the actions in place.
  template <typename... Arguments>
  explicit TableEngine(Tokens& tokens, Arguments&&... arguments)
      : tokens_(tokens), actions_(std::forward<Arguments>(arguments)...) {}

  // The top rule. Like every rule, it stops at a syntax error, raises it and returns false.
  bool parse_tavo_provider_syntax();

 private:
  bool run_provider_statement(Token keyword);
  bool run_trace_statement(const StatementRule& statement, Token keyword);
  // Flattened, since a parse spends its time here.
  [[gnu::flatten]] bool run_options(const StatementRule& statement);
  bool run_option(const OptionRule& option, Token keyword, Prefix prefix);
  [[gnu::noinline]] bool run_parameters(const OptionRule& option, Token keyword);
  [[gnu::always_inline]] bool run_token_value(const OptionRule& option, Token keyword, Token token,
                                              Prefix prefix);
  [[gnu::always_inline]] bool tavo_string_value(const OptionRule& option, Token keyword,
                                                Token token, Prefix prefix);

  void store_accepted(const OptionRule& option, Token keyword, const AcceptedValue& value,
                      Token token, Prefix prefix) {
    const uint32_t key_type = value.key_type == kKeyOfOption ? option.key_type : value.key_type;
    const uint32_t value_type = value.value_type == kAsTyped ? token->type : value.value_type;
    actions_.store(keyword, key_type, token, value_type, prefix);
    if (option.sets_trace_level) {
      actions_.set_trace_level(keyword, key_type, token, value_type, prefix);
    }
  }

  // If the next token is a comma or an equals sign, skips it and returns the token after it; null
  // otherwise.
  Token take_after_comma() {
    Token token = tokens_.take_after(Sign::kComma);
    return token != nullptr ? token : take_after_token(COMMA);
  }
  Token take_after_equal() {
    Token token = tokens_.take_after(Sign::kEqual);
    return token != nullptr ? token : take_after_token(EQUAL);
  }
  [[gnu::noinline]] Token take_after_token(uint32_t type) {
    if (tokens_.current()->type != type) return nullptr;
    tokens_.take();
    return tokens_.take();
  }
  // Raises a mismatch if the equals sign or the expected token after it is missing.
  bool match_after_equal(uint32_t type) {
    Token token = take_after_equal();
    if (token == nullptr) return actions_.raise_mismatch(EQUAL, tokens_.current());
    return token->type == type || actions_.raise_mismatch(type, token);
  }
  bool match(uint32_t type) {
    Token token = tokens_.take();
    return token->type == type || actions_.raise_mismatch(type, token);
  }

  Tokens& tokens_;
  Actions actions_;
};

// The entry of a value list for a token type, or null.
inline const AcceptedValue* find_value(const ValueList& values, uint32_t type) {
  for (const AcceptedValue& value : values.entries) {
    if (value.token == 0) break;
    if (value.token == type) return &value;
  }
  return nullptr;
}

// Where a free string is expected, any real token except a quoted string becomes an unquoted
// string.
template <typename Token>
void take_as_string(Token token) {
  const bool real = token->type > TAVO_TOKEN_UP && token->type < TAVO_TOKEN_NAME_COUNT;
  if (real && token->type != TAVO_PARSER_STRING_WITH_QUOTES) {
    token->type = TAVO_PARSER_STRING_WITHOUT_QUOTES;
  }
}

// ---- values ------------------------------------------------------------------------------------

template <typename Tokens, typename Actions>
inline bool TableEngine<Tokens, Actions>::run_token_value(const OptionRule& option, Token keyword,
                                                          Token token, Prefix prefix) {
  const AcceptedValue* value = find_value(option.values, token->type);
  if (value == nullptr) {
    // One accepted token is matched as a token, several as a set.
    return option.values.size() == 1
               ? actions_.raise_mismatch(option.values.entries[0].token, token)
               : actions_.raise(SyntaxError::kMismatchedSet, token);
  }
  store_accepted(option, keyword, *value, token, prefix);
  return true;
}

template <typename Tokens, typename Actions>
inline bool TableEngine<Tokens, Actions>::tavo_string_value(const OptionRule& option, Token keyword,
                                                            Token token, Prefix prefix) {
  take_as_string(token);
  // Deliberate: stored before it is checked. At the end of the input a pair with the end-of-input
  // token is stored before the error is raised; callers see it in the count.
  actions_.store(keyword, option.key_type, token, token->type, prefix);
  return token->type == TAVO_PARSER_STRING_WITHOUT_QUOTES ||
         token->type == TAVO_PARSER_STRING_WITH_QUOTES ||
         actions_.raise(SyntaxError::kMismatchedSet, token);
}

template <typename Tokens, typename Actions>
bool TableEngine<Tokens, Actions>::run_parameters(const OptionRule& option, Token keyword) {
  Prefix prefix = actions_.make_prefix(keyword);
  if (!match_after_equal(LEFT_PARENTHESIS)) return false;
  Token token = tokens_.take();
  do {
    const OptionRule* parameter =
        option_beginning_with(option.parameters, *option.parameter_index, token->type);
    if (parameter == nullptr) return actions_.raise(SyntaxError::kNoViableAlternative, token);
    if (!run_option(*parameter, token, prefix)) return false;
    if (tokens_.skip(Sign::kRightParenthesis)) return true;
    token = take_after_comma();
  } while (token != nullptr);
  return match(RIGHT_PARENTHESIS);
}

// ---- options -----------------------------------------------------------------------------------

template <typename Tokens, typename Actions>
bool TableEngine<Tokens, Actions>::run_option(const OptionRule& option, Token keyword,
                                              Prefix prefix) {
  if (option.syntax == ValueSyntax::kParameters) return run_parameters(option, keyword);
  Token token = take_after_equal();
  if (token == nullptr) return actions_.raise_mismatch(EQUAL, tokens_.current());
  return option.syntax == ValueSyntax::kString ? tavo_string_value(option, keyword, token, prefix)
                                               : run_token_value(option, keyword, token, prefix);
}

// After a statement's head: nothing, or commas, each followed by an option. Deliberate: the list
// ends at the first token that is not a separator, and text after it is ignored, since statements
// in use rely on it.
template <typename Tokens, typename Actions>
bool TableEngine<Tokens, Actions>::run_options(const StatementRule& statement) {
  bool is_list = false;
  while (Token keyword = take_after_comma()) {
    is_list = true;
    const OptionRule* option =
        option_beginning_with(statement.options, *statement.index, keyword->type);
    if (option == nullptr) return actions_.raise(SyntaxError::kNoViableAlternative, keyword);
    if (!run_option(*option, keyword, nullptr)) return false;
  }
  Token token = tokens_.current();
  if (token->type == BAD_SEP) return actions_.raise(SyntaxError::kBadSeparator, token);
  return is_list || token->type == TAVO_TOKEN_END_OF_INPUT ||
         actions_.raise(SyntaxError::kNoViableAlternative, token);
}

// ---- statements --------------------------------------------------------------------------------

// Deliberate: the quoted string is required, but the keyword is passed on, as key and as value;
// callers rely on it.
template <typename Tokens, typename Actions>
bool TableEngine<Tokens, Actions>::run_trace_statement(const StatementRule& statement,
                                                       Token keyword) {
  if (!match_after_equal(statement.head.values.entries[0].token)) return false;
  actions_.run_trace_statement(keyword, statement.head.key_type);
  return true;
}

// The name after the provider keyword selects the statement.
template <typename Tokens, typename Actions>
bool TableEngine<Tokens, Actions>::run_provider_statement(Token keyword) {
  Token name = take_after_equal();
  if (name == nullptr) return actions_.raise(SyntaxError::kNoViableAlternative, tokens_.current());
  for (const StatementRule* statement : statements()) {
    const AcceptedValue& value = statement->head.values.entries[0];
    if (value.token != name->type || !statement->begins_with(keyword->type)) continue;
    store_accepted(statement->head, keyword, value, name, nullptr);
    return run_options(*statement);
  }
  return actions_.raise(SyntaxError::kNoViableAlternative, name);
}

template <typename Tokens, typename Actions>
bool TableEngine<Tokens, Actions>::parse_tavo_provider_syntax() {
  Token keyword = tokens_.take();
  if (keyword->type == TAVO_PARSER_PROVIDER) return run_provider_statement(keyword);
  for (const StatementRule* statement : statements()) {
    if (!statement->begins_with(keyword->type)) continue;
    if (!statement->takes_options()) return run_trace_statement(*statement, keyword);
    return run_option(statement->head, keyword, nullptr) && run_options(*statement);
  }
  return actions_.raise(SyntaxError::kNoViableAlternative, keyword);
}

}  // namespace tavo
