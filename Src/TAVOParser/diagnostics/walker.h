// Walks the repaired tokens of a rejected statement along the grammar tables, reports each mistake
// once and resumes at the next recognizable option.
#pragma once

#include "diagnostics/near_words.h"
#include "diagnostics/repaired_tokens.h"

namespace tavo::diagnostics {

// An option or parameter in the text.
struct Occurrence {
  const OptionRule* option = nullptr;
  const OptionRule* parameter = nullptr;
  const AcceptedValue* accepted = nullptr;  // of a value list
  Span keyword;
  Span value;
  Span prefix;              // keyword of the option that a parameter belongs to
  uint32_t value_type = 0;  // token type of the value
  bool clean = true;        // it has no mistake, so the pair that it stores is known
};

using OccurrenceList = GrowingList<Occurrence, 64>;

class Walker {
 public:
  Walker(const Source& source, const TokenList& tokens, Findings& findings,
         OccurrenceList& occurrences)
      : source_(source), tokens_(tokens), findings_(findings), occurrences_(occurrences) {}

  void run();

  // The rule of the first statement; null if it cannot be determined.
  const StatementRule* statement() const {
    return first_statement_;
  }
  Span head() const {
    return head_;
  }

 private:
  // ---- tokens
  const Token& token(size_t ahead = 0) const {
    const size_t index = next_ + ahead;
    return tokens_[index < tokens_.size() ? index : tokens_.size() - 1];
  }
  const Token& before() const {
    return tokens_[next_ == 0 ? 0 : next_ - 1];
  }
  bool at_end() const {
    return token().type == TAVO_TOKEN_END_OF_INPUT;
  }
  void advance() {
    if (!at_end()) ++next_;
  }
  bool is_word_token(const Token& token) const;
  std::span<const uint16_t> text(const Token& token) const {
    return source_.text(token.place());
  }
  Span after(const Token& token) const {
    return {token.end, token.end};
  }

  // ---- statements
  void walk_statement();
  void walk_unknown_statement();
  void walk_provider();
  void walk_user_library(const StatementRule& statement);
  void walk_trace_statement(const StatementRule& statement);
  void unknown_provider();
  const StatementRule* likeliest_statement() const;
  const StatementRule* statement_named(uint32_t type) const;
  void begin_options(const StatementRule* statement, size_t first);
  bool begins_statement(size_t ahead) const;

  // ---- options
  void walk_options();
  bool walk_separator();
  bool walk_after_comma();
  void missing_option();
  void walk_option();
  void walk_wrong_separator();
  void unexpected_text();
  void second_statement(bool after_comma);
  void unknown_option();
  void skip_assignment();
  void missing_comma();
  void skip_mistake();
  void skip_parentheses();
  bool resumes(size_t ahead) const;
  const OptionRule* option_of_type(uint32_t type) const;
  const OptionRule* option_at(size_t ahead) const {
    return option_of_type(token(ahead).type);
  }
  bool is_own_option(size_t ahead) const;  // followed by an equals sign

  // ---- values
  void walk_assignment(const OptionRule& option);
  bool missing_equals(const OptionRule& option);
  void missing_value(const OptionRule& option);
  void walk_value(const OptionRule& option, Occurrence& occurrence);
  void value_not_accepted(const OptionRule& option, Occurrence& occurrence);
  void walk_string(const OptionRule& option, Occurrence& occurrence);
  void walk_parameters(const OptionRule& option);
  bool walk_parameter(const OptionRule& option, const Token& opening, bool& after_comma);
  void not_closed(const OptionRule& option, const Token& opening, const Token& stop,
                  std::string_view sign);
  bool ends_value(const Token& token) const;
  bool is_accepted(const OptionRule& option, const Token& token) const;
  bool is_foreign_separator(size_t ahead) const;
  bool is_outer_option(size_t ahead);
  static bool is_sign(const Token& token);
  void name_option(Finding& finding, const OptionRule& option) const;

  // ---- likely intent
  bool split_word(const Token& word);
  bool moved_equals(const Token& word);
  const StatementRule* moved_head_equals(Finding& finding, const Token& word);
  void propose_moved_equals(Finding& finding, const Token& word, const Token& value, bool early);
  void propose_option(Finding& finding, const Token& word);
  void propose_value(Finding& finding, const OptionRule& option, const Token& value);
  void propose_quotes(Finding& finding, Span value);
  void propose_affix(Finding& finding, const Token& value);
  static bool takes_quotes(const OptionRule& option);
  std::string_view in_case_of(Units like, std::string_view word);
  // Visits the options that are allowed here.
  template <typename Visit>
  void visit_options(Visit visit) const {
    if (inside_ != nullptr) {
      for (const OptionRule* option : inside_->parameters) visit(*option);
    } else if (statement_ != nullptr) {
      for (const OptionRule* option : statement_->options) visit(*option);
    }
  }

  Finding& error(TAVODiagnosticRule rule, Span place, const Token& found);
  void surplus(const Token& token, std::string_view sign, bool safe = true);
  static std::string_view spelling_of(uint32_t sign);

  const Source& source_;
  const TokenList& tokens_;
  Findings& findings_;
  OccurrenceList& occurrences_;
  size_t next_ = 0;
  const StatementRule* statement_ = nullptr;
  const StatementRule* first_statement_ = nullptr;
  bool seen_statement_ = false;
  Span head_;
  const OptionRule* inside_ = nullptr;  // the option whose parentheses are open
  Span prefix_;
  bool recovering_ = false;  // mistakes before the current token are already reported
  mutable size_t no_parenthesis_from_ = SIZE_MAX;
};

}  // namespace tavo::diagnostics
