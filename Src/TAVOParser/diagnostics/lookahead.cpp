#include <array>

#include "Grammar/lexer/character_class.h"
#include "diagnostics/repaired_tokens.h"

namespace tavo::diagnostics {
namespace {

using TypeSet = std::array<bool, kTokenTypeCount>;

void put_keywords(TypeSet& set, const OptionRule& option) {
  for (const uint16_t keyword : option.keywords.list()) set[keyword] = true;
}

TypeSet option_keywords() {
  TypeSet set{};
  for (const StatementRule* statement : statements()) {
    for (const OptionRule* option : statement->options) {
      put_keywords(set, *option);
      for (const OptionRule* parameter : option->parameters) put_keywords(set, *parameter);
    }
  }
  set[TAVO_PARSER_STRING_WITHOUT_QUOTES] = false;  // a user-defined key
  return set;
}

}  // namespace

bool begins_any_option(uint32_t type) {
  static const TypeSet set = option_keywords();
  return type < set.size() && set[type];
}

bool begins_any_statement(uint32_t type) {
  return type == TAVO_PARSER_PROVIDER || type == TAVO_PARSER_TOKEN_LIB ||
         type == TAVO_PARSER_TOKEN_LIBRARY || type == TAVO_PARSER_CMN_PARM_TRCLEVEL;
}

uint32_t skip_blanks(const Source& source, uint32_t at) {
  while (at < source.count && is_blank(source.units[at])) ++at;
  return at;
}

uint32_t skip_line_blanks(const Source& source, uint32_t at) {
  while (at < source.count && is_blank(source.units[at]) && source.units[at] != '\n') ++at;
  return at;
}

bool begins_assignment(const Source& source, uint32_t at, bool known) {
  if (at >= source.count || !is_word(source.units[at])) return false;
  const Lexeme lexeme = scan(source.units + at, source.end());
  const auto stop = static_cast<uint32_t>(lexeme.stop - source.units);
  if (source.at(skip_blanks(source, stop)) != '=') return false;
  return !known || begins_any_option(lexeme.type) || begins_any_statement(lexeme.type);
}

namespace {

// Whether the statement can resume at this comma, line end or closing parenthesis.
bool resumes_at(const Source& source, uint32_t at, bool in_parentheses, bool known) {
  switch (source.units[at]) {
    case ',': return begins_assignment(source, skip_blanks(source, at + 1), known);
    case '\n': {
      const uint32_t next = skip_line_blanks(source, at + 1);
      if (!is_word(source.at(next))) return false;  // the last of several line ends counts
      const Lexeme lexeme = scan(source.units + next, source.end());
      return begins_any_statement(lexeme.type) && begins_assignment(source, next, true);
    }
    case ')': {
      if (!in_parentheses) return false;
      const uint32_t next = skip_blanks(source, at + 1);
      return next == source.count ||
             (source.units[next] == ',' &&
              begins_assignment(source, skip_blanks(source, next + 1), known));
    }
    default: return false;
  }
}

}  // namespace

uint32_t find_resumption(const Source& source, uint32_t from, bool in_parentheses, bool known) {
  uint32_t i = from;
  while (i < source.count && !resumes_at(source, i, in_parentheses, known)) ++i;
  return i;
}

uint32_t without_blanks_after(const Source& source, uint32_t from, uint32_t to) {
  while (to > from && is_blank(source.units[to - 1])) --to;
  return to;
}

uint32_t find_quote(const Source& source, uint32_t from) {
  for (uint32_t i = from; i < source.count; ++i) {
    if (source.units[i] == '"') return i;
    if (source.units[i] == '\\' && source.at(i + 1) == '"') ++i;
  }
  return source.count;
}

bool separator_follows(const Source& source, uint32_t at) {
  at = skip_line_blanks(source, at);
  if (at >= source.count) return true;
  const uint32_t c = source.units[at];
  return c == ',' || c == ')' || c == ';' || c == '\n';
}

}  // namespace tavo::diagnostics
