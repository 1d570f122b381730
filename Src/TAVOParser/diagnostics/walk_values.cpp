// One option: its equals sign and its value.
#include "Grammar/engine/table_engine.h"
#include "Grammar/lexer/character_class.h"
#include "diagnostics/walker.h"

namespace tavo::diagnostics {

bool Walker::ends_value(const Token& token) const {
  return token.type == TAVO_TOKEN_END_OF_INPUT || token.type == COMMA ||
         (token.type == RIGHT_PARENTHESIS && inside_ != nullptr);
}

bool Walker::is_accepted(const OptionRule& option, const Token& token) const {
  switch (option.syntax) {
    case ValueSyntax::kString: return true;
    case ValueSyntax::kParameters: return token.type == LEFT_PARENTHESIS;
    default: return find_value(option.values, token.type) != nullptr;
  }
}

// Whether this is another language's separator, followed by an option or by nothing.
bool Walker::is_foreign_separator(size_t ahead) const {
  return token(ahead).type == BAD_SEP &&
         (is_own_option(ahead + 1) || token(ahead + 1).type == TAVO_TOKEN_END_OF_INPUT);
}

void Walker::name_option(Finding& finding, const OptionRule& option) const {
  finding.option = inside_ != nullptr ? inside_ : &option;
  finding.parameter = inside_ != nullptr ? &option : nullptr;
}

// The current token is the keyword.
void Walker::walk_assignment(const OptionRule& option) {
  const Token& keyword = token();
  Occurrence occurrence;
  occurrence.option = inside_ != nullptr ? inside_ : &option;
  occurrence.parameter = inside_ != nullptr ? &option : nullptr;
  occurrence.prefix = inside_ != nullptr ? prefix_ : Span{};
  occurrence.keyword = keyword.place();
  occurrence.clean = !keyword.is(Token::kDamaged);
  advance();
  if (token().type == EQUAL) {
    advance();
  } else {
    occurrence.clean = false;
    if (!missing_equals(option)) {
      occurrence.value = after(before());
      occurrences_.add(occurrence);
      return;
    }
  }
  occurrence.value = token().place();
  switch (option.syntax) {
    case ValueSyntax::kParameters:
      occurrences_.add(occurrence);
      prefix_ = keyword.place();
      return walk_parameters(option);
    case ValueSyntax::kString: walk_string(option, occurrence); break;
    default: walk_value(option, occurrence); break;
  }
  occurrences_.add(occurrence);
}

// The current token follows the keyword. Returns true if the current token is then the value.
bool Walker::missing_equals(const OptionRule& option) {
  const Token& here = token();
  const Token& keyword = before();
  Finding& finding = error(TAVO_DIAGNOSTIC_MISSING_EQUALS, here.place(), here);
  finding.word = keyword.place();
  finding.expecting = Expecting::kEqual;
  name_option(finding, option);
  const bool comma_for_equals =
      here.type == COMMA && !is_own_option(1) && !ends_value(token(1)) && ends_value(token(2));
  if (here.type == LEFT_PARENTHESIS && option.syntax == ValueSyntax::kParameters &&
      token(1).type == EQUAL) {
    Fix& fix = findings_.add_fix(finding, FixTitle::kMoveEquals, false);
    Findings::edit(fix, {here.begin, here.begin}, "=");
    Findings::edit(fix, token(1).place(), "");
    return true;
  }
  if (comma_for_equals || (here.type == BAD_SEP && !is_foreign_separator(0))) {
    findings_.add_fix(finding, FixTitle::kReplaceBy, false, "=", here.place(), "=");
    advance();
    return true;
  }
  const bool nothing = ends_value(here) || here.type == BAD_SEP || is_own_option(0);
  if (!nothing && is_accepted(option, here)) {
    findings_.add_fix(finding, FixTitle::kInsert, true, "=", after(keyword), "=");
    return true;
  }
  if (nothing) {
    recovering_ = true;
  } else {
    skip_mistake();
  }
  return false;
}

// Reports the place just after the equals sign.
void Walker::missing_value(const OptionRule& option) {
  Finding& finding = error(TAVO_DIAGNOSTIC_MISSING_VALUE, after(before()), token());
  name_option(finding, option);
  finding.expecting = Expecting::kValue;
  if (is_own_option(0)) recovering_ = true;  // the comma is missing as well
}

// ---- values of a list --------------------------------------------------------------------------

void Walker::walk_value(const OptionRule& option, Occurrence& occurrence) {
  for (;; advance()) {
    const Token& here = token();
    occurrence.value = here.place();
    if (here.is(Token::kRun)) {
      occurrence.clean = false;
      if (here.finding != nullptr) propose_value(*here.finding, option, here);
      return advance();
    }
    if (const AcceptedValue* accepted = find_value(option.values, here.type)) {
      occurrence.accepted = accepted;
      occurrence.value_type = here.type;
      occurrence.clean &= !here.is(Token::kDamaged);
      return advance();
    }
    occurrence.clean = false;
    const bool accepted_after =
        is_accepted(option, token(1)) && ends_value(token(2)) && !is_own_option(1);
    if (here.type == EQUAL || (here.type == COMMA && accepted_after) ||
        (here.type == LEFT_PARENTHESIS && is_accepted(option, token(1)))) {
      surplus(here, spelling_of(here.type), true);
      continue;
    }
    if (ends_value(here) || is_own_option(0) || is_foreign_separator(0) || begins_statement(0)) {
      return missing_value(option);
    }
    return value_not_accepted(option, occurrence);
  }
}

void Walker::value_not_accepted(const OptionRule& option, Occurrence& occurrence) {
  const Token& here = token();
  Finding& finding = error(TAVO_DIAGNOSTIC_VALUE_NOT_ACCEPTED, here.place(), here);
  name_option(finding, option);
  finding.expecting = Expecting::kValue;
  finding.word = here.place();
  const size_t first = next_;
  if (here.type == LEFT_PARENTHESIS) {
    skip_parentheses();
  } else {
    advance();
  }
  skip_mistake();
  recovering_ = !ends_value(token());
  Token region = here;
  region.end = next_ > first ? before().end : here.end;
  occurrence.value = region.place();
  propose_value(finding, option, region);
}

// ---- free text ---------------------------------------------------------------------------------

void Walker::walk_string(const OptionRule& option, Occurrence& occurrence) {
  for (;; advance()) {
    const Token& here = token();
    occurrence.value = here.place();
    occurrence.value_type = here.type;
    if (here.is(Token::kRun)) {
      occurrence.clean = false;
      if (here.finding != nullptr) propose_quotes(*here.finding, here.place());
      return advance();
    }
    const bool word_follows = is_word_token(token(1)) && !is_own_option(1) && ends_value(token(2));
    if (here.type == EQUAL || (here.type == COMMA && word_follows)) {
      occurrence.clean = false;
      surplus(here, spelling_of(here.type), false);
      continue;
    }
    if (at_end() || is_own_option(0) || begins_statement(0)) {
      occurrence.clean = false;
      return missing_value(option);
    }
    occurrence.clean &= !here.is(Token::kDamaged);
    if (is_sign(here)) {
      occurrence.clean = false;
      Finding& finding = error(TAVO_DIAGNOSTIC_SIGN_AS_VALUE, here.place(), here);
      name_option(finding, option);
      finding.word = here.place();
      finding.expecting = Expecting::kValue;
      if (ends_value(here) || is_foreign_separator(0)) return;
    }
    return advance();
  }
}

bool Walker::is_sign(const Token& token) {
  switch (token.type) {
    case COMMA:
    case EQUAL:
    case LEFT_PARENTHESIS:
    case RIGHT_PARENTHESIS:
    case SINGLE_QUOTE:
    case QUOTE:
    case BACKSLASH:
    case BAD_SEP: return true;
    default: return false;
  }
}

// ---- parameters in parentheses -----------------------------------------------------------------

void Walker::walk_parameters(const OptionRule& option) {
  while (token().type == EQUAL) {
    surplus(token(), "=", true);
    advance();
  }
  const Token* opening = &token();
  if (opening->type == LEFT_PARENTHESIS) {
    advance();
    inside_ = &option;
    if (token().type == EQUAL && before().begin == opening->begin) advance();  // already reported
    while (token().type == LEFT_PARENTHESIS) {
      surplus(token(), "(", true);
      advance();
    }
  } else {
    const bool parameter =
        option_beginning_with(option.parameters, *option.parameter_index, opening->type) != nullptr;
    if (!parameter || token(1).type != EQUAL) {
      if (ends_value(*opening) || is_own_option(0) || begins_statement(0)) {
        return missing_value(option);
      }
      Occurrence unused;
      return value_not_accepted(option, unused);
    }
    Finding& finding = error(TAVO_DIAGNOSTIC_MISSING_PARENTHESIS, opening->place(), *opening);
    name_option(finding, option);
    finding.expecting = Expecting::kOpening;
    findings_.add_fix(finding, FixTitle::kInsert, false, "(", {opening->begin, opening->begin},
                      "(");
    inside_ = &option;
  }
  bool after_comma = false;
  while (walk_parameter(option, *opening, after_comma)) {
  }
  inside_ = nullptr;
}

// Whether the token is an option of the statement itself, which parentheses cannot contain.
bool Walker::is_outer_option(size_t ahead) {
  if (token(ahead + 1).type != EQUAL || option_at(ahead) != nullptr) return false;
  const OptionRule* inside = inside_;
  inside_ = nullptr;
  const bool outer = option_at(ahead) != nullptr;
  inside_ = inside;
  if (!outer || token(ahead).type != TAVO_PARSER_STRING_WITHOUT_QUOTES) return outer;
  // Any word can be a user-defined key; it is one unless it is a misspelled parameter.
  NearestWord nearest(text(token(ahead)));
  visit_options([&](const OptionRule& option) { nearest.consider(option.keywords); });
  return nearest.best().type == 0;
}

void Walker::not_closed(const OptionRule& option, const Token& opening, const Token& stop,
                        std::string_view sign) {
  Finding& finding =
      error(TAVO_DIAGNOSTIC_MISSING_PARENTHESIS, {opening.begin, opening.begin + 1}, stop);
  finding.wording = Wording::kNotClosed;
  finding.option = &option;
  finding.expecting = Expecting::kInParentheses;
  findings_.relate(finding, TAVO_RELATED_STOP, stop.place());
  findings_.add_fix(finding, FixTitle::kInsert, true, ")", after(before()), sign);
}

// Walks one parameter and what follows it. Returns false when the parentheses end.
bool Walker::walk_parameter(const OptionRule& option, const Token& opening, bool& after_comma) {
  const Token& here = token();
  if (at_end() || begins_statement(0)) {
    not_closed(option, opening, here, ")");
    return false;
  }
  if (is_outer_option(0)) {
    not_closed(option, opening, here, "),");
    recovering_ = true;
    return false;
  }
  if (here.type == COMMA || here.type == RIGHT_PARENTHESIS) {
    if (after_comma) {
      missing_option();
    } else {
      Finding& finding = error(TAVO_DIAGNOSTIC_MISSING_OPTION, here.place(), here);
      finding.expecting = Expecting::kParameter;
      finding.option = &option;
      finding.wording = Wording::kParameter;
      if (here.type == COMMA) {
        findings_.add_fix(finding, FixTitle::kRemove, true, ",", here.place(), "");
      }
    }
  } else {
    walk_option();
  }
  while (!at_end() && token().type != COMMA && token().type != RIGHT_PARENTHESIS &&
         !is_own_option(0) && !is_outer_option(0) && !begins_statement(0)) {
    walk_wrong_separator();
  }
  if (token().type == RIGHT_PARENTHESIS) {
    advance();
    recovering_ = false;
    return false;
  }
  after_comma = token().type == COMMA;
  if (after_comma) {
    if (is_outer_option(1) || token(1).type == TAVO_TOKEN_END_OF_INPUT) {
      if (token(1).type == TAVO_TOKEN_END_OF_INPUT) {
        not_closed(option, opening, token(1), ")");
        advance();
      } else {
        not_closed(option, opening, token(1), ")");
      }
      return false;
    }
    advance();
  } else if (is_own_option(0) && !recovering_) {
    missing_comma();
  }
  return true;
}

}  // namespace tavo::diagnostics
