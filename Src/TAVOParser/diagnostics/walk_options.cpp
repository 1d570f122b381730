// The list of options: separators, keywords, and where to resume after a mistake.
#include "diagnostics/walker.h"

namespace tavo::diagnostics {

const OptionRule* Walker::option_of_type(uint32_t type) const {
  if (inside_ != nullptr) {
    return option_beginning_with(inside_->parameters, *inside_->parameter_index, type);
  }
  if (statement_ == nullptr || statement_->index == nullptr) return nullptr;
  return option_beginning_with(statement_->options, *statement_->index, type);
}

bool Walker::is_own_option(size_t ahead) const {
  return token(ahead + 1).type == EQUAL && option_at(ahead) != nullptr;
}

std::string_view Walker::spelling_of(uint32_t sign) {
  return spelling(token_info(sign).first_spelling);
}

void Walker::surplus(const Token& token, std::string_view sign, bool safe) {
  Finding& finding = error(TAVO_DIAGNOSTIC_SURPLUS_SIGN, token.place(), token);
  finding.name = sign;
  findings_.add_fix(finding, FixTitle::kRemove, safe, sign, token.place(), "");
}

void Walker::missing_comma() {
  Finding& finding = error(TAVO_DIAGNOSTIC_MISSING_COMMA, token().place(), token());
  finding.word = token().place();
  finding.expecting = Expecting::kSeparator;
  findings_.add_fix(finding, FixTitle::kInsert, true, ",", after(before()), ",");
}

// ---- the list ----------------------------------------------------------------------------------

void Walker::walk_options() {
  while (!at_end() && !findings_.refused()) {
    if (!walk_separator()) return;
  }
}

// Walks one separator and what follows it. Returns false at the next statement.
bool Walker::walk_separator() {
  const Token& here = token();
  if (here.type == COMMA) {
    advance();
    return walk_after_comma();
  }
  if (begins_statement(0)) {
    second_statement(false);
    return false;
  }
  if (is_own_option(0)) {
    if (!recovering_) missing_comma();
    walk_option();
    return true;
  }
  if (here.type == RIGHT_PARENTHESIS) {
    if (!recovering_) surplus(here, ")");
    advance();
    return true;
  }
  walk_wrong_separator();
  return true;
}

bool Walker::walk_after_comma() {
  const Token& here = token();
  if (at_end() || here.type == COMMA || here.type == RIGHT_PARENTHESIS) {
    missing_option();
    return true;
  }
  if (begins_statement(0) && option_at(0) == nullptr) {
    second_statement(true);
    return false;
  }
  walk_option();
  return true;
}

// A comma without an option: reports the comma, or the second of two adjacent ones.
void Walker::missing_option() {
  const Token& here = token();
  const bool doubled = here.type == COMMA;
  const Token& comma = doubled ? here : before();
  Finding& finding = error(TAVO_DIAGNOSTIC_MISSING_OPTION, comma.place(), here);
  finding.wording = doubled ? Wording::kDoubled : Wording::kAtEnd;
  finding.expecting = inside_ != nullptr ? Expecting::kParameter : Expecting::kOption;
  finding.option = inside_;
  findings_.add_fix(finding, FixTitle::kRemove, true, ",", comma.place(), "");
}

void Walker::walk_option() {
  const OptionRule* option = option_at(0);
  if (option == nullptr) return unknown_option();
  recovering_ = false;
  walk_assignment(*option);
}

// ---- between two options -----------------------------------------------------------------------

void Walker::walk_wrong_separator() {
  const Token& here = token();
  const bool other_sign = here.type == BAD_SEP || here.type == EQUAL;
  const bool option_follows =
      is_own_option(1) || (is_word_token(token(1)) && token(2).type == EQUAL);
  if (other_sign &&
      (option_follows || token(1).type == TAVO_TOKEN_END_OF_INPUT || begins_statement(1))) {
    if (!recovering_ || here.type == BAD_SEP) {
      Finding& finding = error(TAVO_DIAGNOSTIC_BAD_SEPARATOR, here.place(), here);
      finding.word = here.place();
      finding.expecting = Expecting::kSeparator;
      if (here.type == BAD_SEP) finding.number = TAVO_STATUS_BAD_SEPARATOR;
      const bool semicolon = source_.at(here.begin) == ';';
      if (option_follows && !begins_statement(1)) {
        findings_.add_fix(finding, FixTitle::kReplaceBy, semicolon, ",", here.place(), ",");
      } else {
        if (!option_follows) finding.wording = Wording::kAtEnd;
        const std::string_view sign = semicolon ? ";" : here.type == EQUAL ? "=" : "";
        findings_.add_fix(finding, FixTitle::kRemove, !sign.empty(), sign, here.place(), "");
      }
    }
    advance();
    if (option_follows && !begins_statement(0)) walk_option();
    return;
  }
  if (is_word_token(here) && token(1).type == EQUAL && !recovering_) {
    NearestWord nearest(text(here));
    visit_options([&](const OptionRule& option) { nearest.consider(option.keywords); });
    if (nearest.best().type != 0) {
      missing_comma();
      return unknown_option();
    }
  }
  if (recovering_) return skip_mistake();
  unexpected_text();
}

// Text that is neither a separator nor an option. After a word it may be the rest of a value of
// several words, which needs quotes.
void Walker::unexpected_text() {
  const Token& here = token();
  const size_t first = next_;
  const bool after_value =
      first >= 3 && is_word_token(tokens_[first - 1]) && tokens_[first - 2].type == EQUAL;
  bool words = is_word_token(here);
  skip_mistake();
  for (size_t i = first; i < next_; ++i) words &= is_word_token(tokens_[i]);
  const Token& last = tokens_[next_ > first ? next_ - 1 : first];
  Finding& finding = error(TAVO_DIAGNOSTIC_UNEXPECTED_TEXT, {here.begin, last.end}, here);
  finding.expecting = inside_ != nullptr ? Expecting::kInParentheses : Expecting::kSeparator;
  if (here.type == BAD_SEP) finding.number = TAVO_STATUS_BAD_SEPARATOR;
  if (next_ == first) advance();
  const Occurrence* value =
      occurrences_.size() == 0 ? nullptr : &occurrences_[occurrences_.size() - 1];
  if (!after_value || !words || value == nullptr) return;
  const OptionRule* option = value->parameter != nullptr ? value->parameter : value->option;
  if (option->syntax != ValueSyntax::kString) return;
  finding.wording = Wording::kWithBlank;
  propose_quotes(finding, {tokens_[first - 1].begin, last.end});
}

void Walker::second_statement(bool after_comma) {
  const Token& here = token();
  Finding& finding = error(
      TAVO_DIAGNOSTIC_SECOND_STATEMENT,
      {here.begin, token(2).type == TAVO_TOKEN_END_OF_INPUT ? token(1).end : token(2).end}, here);
  findings_.relate(finding, TAVO_RELATED_FIRST, head_);
  if (after_comma) return;
  finding.severity = TAVO_SEVERITY_WARNING;
  finding.number = 0;
}

// ---- resuming ----------------------------------------------------------------------------------

// Whether the walk can resume at this token after a mistake.
bool Walker::resumes(size_t ahead) const {
  const Token& here = token(ahead);
  switch (here.type) {
    case TAVO_TOKEN_END_OF_INPUT: return true;
    case COMMA: {
      const Token& next = token(ahead + 1);
      return next.type == COMMA || next.type == TAVO_TOKEN_END_OF_INPUT ||
             option_at(ahead + 1) != nullptr ||
             (is_word_token(next) && token(ahead + 2).type == EQUAL);
    }
    case RIGHT_PARENTHESIS: return inside_ != nullptr;
    case BAD_SEP: return is_own_option(ahead + 1);
    default: return is_own_option(ahead) || begins_statement(ahead);
  }
}

// Skips to the next token where the walk can resume.
void Walker::skip_mistake() {
  recovering_ = true;
  while (!resumes(0)) {
    if (token().type == LEFT_PARENTHESIS) {
      skip_parentheses();
    } else {
      advance();
    }
  }
}

// Skips text in parentheses if they are closed.
void Walker::skip_parentheses() {
  const size_t first = next_;
  advance();
  if (first >= no_parenthesis_from_) return;
  size_t depth = 1;
  while (!at_end() && depth != 0) {
    if (token().type == LEFT_PARENTHESIS) ++depth;
    if (token().type == RIGHT_PARENTHESIS) --depth;
    advance();
  }
  if (depth == 0) return;
  no_parenthesis_from_ = first;
  next_ = first + 1;
}

}  // namespace tavo::diagnostics
