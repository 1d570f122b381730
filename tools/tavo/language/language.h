// The parameter language, from the library's tables.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "TAVOLanguage.h"

namespace tavo::cli {

struct Option {
  std::string rule;
  std::vector<uint32_t> keywords;  // token types that begin it
  uint32_t key_type = 0;
  TAVOValueSyntax syntax = TAVO_SYNTAX_TOKEN;
  bool sets_trace_level = false;
  std::vector<TAVOValueInfo> values;
  std::vector<Option> parameters;           // in parentheses
  std::string meaning;                      // one sentence
  std::string example;                      // keyword, "=", value
  std::string start;                        // start, ", ", example: a valid statement
  std::vector<std::string> value_meanings;  // one sentence a value, in their order

  bool begins_with(uint32_t type) const;
  const TAVOValueInfo* find_value(uint32_t type) const;
  // One sentence on an accepted token; empty when it is not accepted.
  const std::string& meaning_of_value(uint32_t type) const;
};

struct Statement {
  std::string rule;
  std::string list_rule;
  std::string option_rule;
  std::vector<uint32_t> keywords;
  uint32_t name_token = 0;
  uint32_t key_type = 0;
  uint32_t value_type = 0;
  std::vector<Option> options;
  std::vector<TAVORuleInfo> rules;
  std::string meaning;  // one sentence
  std::string example;  // a valid statement

  bool begins_with(uint32_t type) const;
  // Whether a name after the keyword selects the statement, as for the providers.
  bool has_fixed_name() const;
  bool takes_options() const {
    return !option_rule.empty();
  }
  const Option* find_option(uint32_t keyword) const;
};

// All statements, in the order of the grammar. Read once.
const std::vector<Statement>& statements();

std::string token_name(uint32_t type);
// As in the tables: uppercase, usually the short one first.
std::vector<std::string> spellings(uint32_t type);
std::vector<std::string> spellings(const Option& option);
// The notations of a token: its spellings, or a name of its pattern such as <string>.
std::vector<std::string> notations(uint32_t type);
std::vector<std::string> value_notations(const Option& option);

// The title of a statement: its first provider name, or its first keyword.
std::string title(const Statement& statement);
// All names by which `tavo explain` finds the statement.
std::vector<std::string> names(const Statement& statement);
// How the statement begins, such as "PRO=EML" or "LIB=<word>".
std::string head(const Statement& statement);
// An option's example as a statement, or a parameter's example in its option's parentheses.
std::string example_statement(const Option& option, const Option* parameter_of);
// The option or parameter with this key type in a statement, or null.
const Option* option_of_key(const Statement& statement, uint32_t key_type);
// Whether the option's keyword may end with a number, such as FLDDEF1.
bool takes_number(const Option& option);
// The shortest and the longest spelling of an option.
std::string short_spelling(const Option& option);
std::string long_spelling(const Option& option);

std::string join(const std::vector<std::string>& list, std::string_view separator = ", ");

}  // namespace tavo::cli
