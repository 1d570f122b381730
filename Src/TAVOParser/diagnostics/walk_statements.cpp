// Statements: their heads, and which statement was most likely intended.
#include "Grammar/lexer/character_class.h"
#include "diagnostics/walker.h"

namespace tavo::diagnostics {

Finding& Walker::error(TAVODiagnosticRule rule, Span place, const Token& found) {
  // What is missing at the end may be inside the unclosed comment.
  const bool hidden = found.type == TAVO_TOKEN_END_OF_INPUT && found.is(Token::kDamaged);
  Finding& finding = hidden ? findings_.discarded(rule, place) : findings_.add(rule, place);
  finding.statement = statement_;
  finding.found = static_cast<uint16_t>(found.type);
  if (found.type == TAVO_TOKEN_END_OF_INPUT) finding.wording = Wording::kAtEnd;
  if (place.begin != found.begin) {
    finding.has_stop = true;
    finding.stop = found.place();
  }
  return finding;
}

bool Walker::is_word_token(const Token& token) const {
  return token.type != TAVO_TOKEN_END_OF_INPUT &&
         (is_word(source_.at(token.begin)) || token.is(Token::kRun));
}

void Walker::run() {
  do {
    walk_statement();
  } while (!at_end() && !findings_.refused());
}

bool Walker::begins_statement(size_t ahead) const {
  const uint32_t type = token(ahead).type;
  if (token(ahead + 1).type != EQUAL) return false;
  if (type == TAVO_PARSER_PROVIDER) return true;
  // Other words that begin a statement are options too; as a statement they start a line.
  return begins_any_statement(type) && token(ahead).is(Token::kAfterLine) &&
         option_at(ahead) == nullptr;
}

void Walker::begin_options(const StatementRule* statement, size_t first) {
  statement_ = statement;
  recovering_ = false;
  if (!seen_statement_) {
    first_statement_ = statement;
    head_ = {tokens_[first].begin, before().end};
  }
  seen_statement_ = true;
}

void Walker::walk_statement() {
  statement_ = nullptr;
  inside_ = nullptr;
  recovering_ = false;
  const uint32_t type = token().type;
  if (type == TAVO_PARSER_PROVIDER) return walk_provider();
  for (const StatementRule* statement : statements()) {
    if (!statement->begins_with(type)) continue;
    if (statement->takes_options()) return walk_user_library(*statement);
    return walk_trace_statement(*statement);
  }
  walk_unknown_statement();
}

const StatementRule* Walker::statement_named(uint32_t type) const {
  for (const StatementRule* statement : statements()) {
    if (statement->begins_with(TAVO_PARSER_PROVIDER) &&
        statement->head.values.entries[0].token == type) {
      return statement;
    }
  }
  return nullptr;
}

// The provider to which most of the options here belong; the first one on a tie.
const StatementRule* Walker::likeliest_statement() const {
  constexpr size_t kFar = 64;  // tokens
  const StatementRule* likeliest = nullptr;
  size_t most = 0;
  for (const StatementRule* statement : statements()) {
    if (!statement->begins_with(TAVO_PARSER_PROVIDER)) continue;
    size_t count = 0;
    for (size_t i = 0; i < kFar && next_ + i + 1 < tokens_.size(); ++i) {
      count +=
          token(i + 1).type == EQUAL &&
          option_beginning_with(statement->options, *statement->index, token(i).type) != nullptr;
    }
    if (count > most) {
      most = count;
      likeliest = statement;
    }
  }
  return likeliest;
}

void Walker::walk_provider() {
  const size_t first = next_;
  const Token& keyword = token();
  advance();
  if (token().type == EQUAL) {
    advance();
    while (token().type == EQUAL) {
      surplus(token(), "=");
      advance();
    }
  } else {
    Finding& finding = error(TAVO_DIAGNOSTIC_MISSING_EQUALS, token().place(), token());
    finding.expecting = Expecting::kEqual;
    finding.word = keyword.place();
    if (statement_named(token().type) != nullptr) {
      findings_.add_fix(finding, FixTitle::kInsert, true, "=", after(keyword), "=");
    } else {
      next_ = tokens_.size() - 1;
      return;
    }
  }
  const StatementRule* statement = statement_named(token().type);
  if (statement == nullptr) {
    unknown_provider();
  } else {
    advance();
    begin_options(statement, first);
  }
  walk_options();
}

void Walker::unknown_provider() {
  const size_t first = next_ - 1;
  const Token& name = token();
  const bool no_name = at_end() || name.type == COMMA;
  Finding& finding = no_name ? error(TAVO_DIAGNOSTIC_MISSING_VALUE, after(before()), name)
                             : error(TAVO_DIAGNOSTIC_UNKNOWN_PROVIDER, name.place(), name);
  finding.expecting = Expecting::kName;
  const StatementRule* meant = nullptr;
  if (!no_name && is_word_token(name)) {
    finding.word = name.place();
    NearestWord nearest(text(name));
    for (const StatementRule* statement : statements()) {
      if (statement->begins_with(TAVO_PARSER_PROVIDER)) nearest.consider(statement->head.values);
    }
    const NearWord near = nearest.best();
    if (near.type != 0) {
      findings_.add_fix(finding, FixTitle::kChangeTo, false, near.spelling, name.place(),
                        near.spelling);
      meant = statement_named(near.type);
    }
  }
  if (!no_name) advance();
  if (meant == nullptr) meant = likeliest_statement();
  finding.statement = meant;
  const bool known_quotes = name.type == TAVO_PARSER_STRING_WITH_QUOTES;
  if (known_quotes && meant == nullptr) finding.wording = Wording::kNoWord;
  begin_options(meant, first);
  recovering_ = true;
}

void Walker::walk_user_library(const StatementRule& statement) {
  const size_t first = next_;
  statement_ = &statement;
  walk_assignment(statement.head);
  begin_options(&statement, first);
  walk_options();
}

// Everything after it is ignored.
void Walker::walk_trace_statement(const StatementRule& statement) {
  const size_t first = next_;
  statement_ = &statement;
  walk_assignment(statement.head);
  begin_options(&statement, first);
  if (!at_end() && !recovering_) {
    Finding& finding = findings_.add(TAVO_DIAGNOSTIC_SECOND_STATEMENT,
                                     {token().begin, tokens_[tokens_.size() - 1].begin});
    finding.wording = Wording::kTraceStatement;
    finding.severity = TAVO_SEVERITY_WARNING;
    finding.number = 0;
  }
  next_ = tokens_.size() - 1;
}

void Walker::walk_unknown_statement() {
  const size_t first = next_;
  const Token& word = token();
  Finding& finding = error(TAVO_DIAGNOSTIC_UNKNOWN_STATEMENT, word.place(), word);
  finding.expecting = Expecting::kStatement;
  if (at_end()) return;
  const bool assigned = token(1).type == EQUAL;
  if (is_word_token(word)) {
    finding.word = word.place();
    if (assigned && begins_any_option(word.type)) finding.wording = Wording::kHeadMissing;
  } else {
    finding.wording = Wording::kNoWord;
  }
  if (finding.wording == Wording::kHeadMissing) {  // a list of options
    begin_options(likeliest_statement(), first);
    recovering_ = true;
    return walk_options();
  }
  if (const StatementRule* statement = moved_head_equals(finding, word)) {
    next_ += 3;
    begin_options(statement, first);
    return walk_options();
  }
  NearWord near;
  if (is_word_token(word)) {
    NearestWord nearest(text(word));
    for (const StatementRule* statement : statements()) nearest.consider(statement->head.keywords);
    near = nearest.best();
  }
  advance();
  if (near.type != 0 && assigned) {
    findings_.add_fix(finding, FixTitle::kChangeTo, false, near.spelling, word.place(),
                      near.spelling);
  } else if (!assigned) {
    // The equals sign is missing between the keyword and the name: PROHASH.
    const Units written = text(word);
    for (const StatementRule* statement : statements()) {
      if (!statement->begins_with(TAVO_PARSER_PROVIDER)) continue;
      for (const std::string_view keyword :
           {std::string_view("PROVIDER"), std::string_view("PRO")}) {
        if (written.size() <= keyword.size() ||
            !is_word_spelled(written.first(keyword.size()), keyword)) {
          continue;
        }
        const Units rest = written.subspan(keyword.size());
        const bool colon = rest[0] == ':';
        const Units name = colon ? rest.subspan(1) : rest;
        if (name.empty()) continue;
        const Lexeme lexeme = scan(name.data(), name.data() + name.size());
        if (lexeme.type != statement->head.values.entries[0].token ||
            lexeme.stop != name.data() + name.size() || finding.fixes != nullptr) {
          continue;
        }
        const auto split = static_cast<uint32_t>(word.begin + keyword.size());
        finding.rule = TAVO_DIAGNOSTIC_MISSING_EQUALS;
        finding.expecting = Expecting::kEqual;
        finding.word = {word.begin, split};
        findings_.add_fix(finding, colon ? FixTitle::kReplaceBy : FixTitle::kInsert, colon, "=",
                          {split, split + (colon ? 1u : 0u)}, "=");
        begin_options(statement, first);
        return walk_options();
      }
    }
  }
  if (assigned) {
    advance();
    if (const StatementRule* statement = statement_named(token().type)) {
      advance();
      begin_options(statement, first);
      return walk_options();
    }
  }
  // The intended statement is unknown: skip to the next recognizable one.
  while (!at_end() && !(token().type == TAVO_PARSER_PROVIDER && token(1).type == EQUAL)) advance();
  seen_statement_ = true;
}

}  // namespace tavo::diagnostics
