// Warnings: what an accepted statement does although its text suggests otherwise.
#include <array>

#include "Grammar/lexer/character_class.h"
#include "array/key_value_array.h"
#include "diagnostics/code_points.h"
#include "diagnostics/diagnosis.h"

namespace tavo::diagnostics {
namespace {

const StatementRule* statement_of(const PairList& pairs) {
  if (pairs.size() == 0) return nullptr;
  for (const StatementRule* statement : statements()) {
    const AcceptedValue& name = statement->head.values.entries[0];
    const uint32_t type = name.value_type == kAsTyped ? name.token : name.value_type;
    if (statement->head.key_type == pairs[0].key_type && type == pairs[0].value_type) {
      return statement;
    }
  }
  return nullptr;
}

const OptionRule* option_of_key(const StatementRule* statement, const Pair& pair,
                                const OptionRule** parameter) {
  if (statement == nullptr) return nullptr;
  for (const OptionRule* option : statement->options) {
    if (option->key_type == pair.key_type) return option;
    for (const OptionRule* inner : option->parameters) {
      if (inner->key_type != pair.key_type) continue;
      *parameter = inner;
      return option;
    }
  }
  return nullptr;
}

bool is_sign_type(uint32_t type) {
  switch (type) {
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

// Visits the visible tokens of a part of the text.
template <typename Visit>
void visit_tokens(const Source& source, Span part, Visit visit) {
  const uint16_t* end = source.units + part.end;
  for (const uint16_t* place = source.units + part.begin; place < end;) {
    const Lexeme lexeme = scan(place, end);
    if (lexeme.type == 0) return;
    if (!lexeme.hidden()) {
      const auto begin = static_cast<uint32_t>(place - source.units);
      const auto stop = static_cast<uint32_t>(lexeme.stop - source.units);
      if (!visit(lexeme.type, Span{begin, stop})) return;
    }
    place = lexeme.stop;
  }
}

}  // namespace

bool Diagnosis::holds_options(Span text) const {
  bool word = false;
  bool found = false;
  visit_tokens(source_, text, [&](uint32_t type, Span place) {
    found = type == EQUAL && word;
    word = is_word(source_.at(place.begin));
    return !found;
  });
  return found;
}

void Diagnosis::find_repeated_options() {
  std::array<uint32_t, TAVO_TOKEN_NAME_COUNT> first{};  // index of the pair, plus 1
  for (size_t i = 0; i < pairs_.size(); ++i) {
    const Pair& pair = pairs_[i];
    if (pair.key_type >= first.size() || is_repeatable(pair.key_type)) continue;
    uint32_t& place = first[pair.key_type];
    if (place == 0) {
      place = static_cast<uint32_t>(i) + 1;
      continue;
    }
    Finding& finding = findings_.add(TAVO_DIAGNOSTIC_REPEATED_OPTION, pair.whole());
    finding.word = pair.key;
    finding.statement = statement_of(pairs_);
    findings_.relate(finding, TAVO_RELATED_FIRST, pairs_[place - 1].whole());
  }
}

// Returns true if such a value directly precedes the ignored text and so explains it.
bool Diagnosis::find_signs_as_values(const Verdict& verdict) {
  bool explains = false;
  for (size_t i = 0; i < pairs_.size(); ++i) {
    const Pair& pair = pairs_[i];
    if (!is_sign_type(pair.token_type) || pair.value_type != TAVO_PARSER_STRING_WITHOUT_QUOTES) {
      continue;
    }
    Finding& finding = findings_.add(TAVO_DIAGNOSTIC_SIGN_AS_VALUE, pair.value);
    finding.found = static_cast<uint16_t>(pair.token_type);
    finding.word = pair.value;
    finding.character = source_.at(pair.value.begin);
    finding.statement = statement_of(pairs_);
    finding.option = option_of_key(finding.statement, pair, &finding.parameter);
    if (i + 1 != pairs_.size() || verdict.ignored.begin == verdict.ignored.end) continue;
    explains = true;
    findings_.relate(finding, TAVO_RELATED_IGNORED, verdict.ignored);
    propose_typographic(finding, verdict, pair.value);
  }
  return explains;
}

// Proposes real quotes if the value is the first of a pair of lookalike quotes.
void Diagnosis::propose_typographic(Finding& finding, const Verdict& verdict, Span opening) {
  const Lookalike kind = lookalike_of(source_.at(opening.begin));
  if (kind != Lookalike::kDoubleQuote && kind != Lookalike::kSingleQuote) return;
  for (uint32_t i = opening.end; i < verdict.ignored.end; ++i) {
    const uint32_t c = source_.at(i);
    if (c == '"' || c == '\\') return;
    if (lookalike_of(c) != kind) continue;
    Fix& fix = findings_.add_fix(finding, FixTitle::kReplaceBy, false, "\"");
    Findings::edit(fix, opening, "\"");
    Findings::edit(fix, {i, i + 1}, "\"");
    return;
  }
}

void Diagnosis::find_ignored_text(const Verdict& verdict) {
  const StatementRule* statement = statement_of(pairs_);
  uint32_t second_type = 0;
  Span words;
  uint32_t first_end = verdict.ignored.begin;
  visit_tokens(source_, verdict.ignored, [&](uint32_t type, Span place) {
    if (place.begin == verdict.ignored.begin) {
      first_end = place.end;
      words = place;
      return true;
    }
    second_type = type;
    return false;
  });
  const bool assigned = second_type == EQUAL;
  const bool second = assigned && verdict.ignored_type == TAVO_PARSER_PROVIDER;
  Finding& finding =
      findings_.add(second || verdict.trace_statement ? TAVO_DIAGNOSTIC_SECOND_STATEMENT
                                                      : TAVO_DIAGNOSTIC_IGNORED_TEXT,
                    verdict.ignored);
  finding.statement = statement;
  finding.found = static_cast<uint16_t>(verdict.ignored_type);
  finding.word = words;
  if (verdict.trace_statement) {
    finding.wording = Wording::kTraceStatement;
  } else if (second) {
    finding.wording = Wording::kStatementIgnored;
  } else if (assigned && statement != nullptr && statement->index != nullptr &&
             option_beginning_with(statement->options, *statement->index, verdict.ignored_type) !=
                 nullptr) {
    finding.wording = Wording::kOptionIgnored;
    const uint32_t end = pairs_[pairs_.size() - 1].value.end;
    findings_.add_fix(finding, FixTitle::kInsert, false, ",", {end, end}, ",");
  }
}

}  // namespace tavo::diagnostics
