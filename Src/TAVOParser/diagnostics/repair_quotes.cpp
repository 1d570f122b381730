// Repairs quotes that are unclosed, doubled or not ASCII quotes.
#include "Grammar/lexer/character_class.h"
#include "diagnostics/repair.h"
#include "text/utf16_characters.h"

namespace tavo::diagnostics {

uint32_t Repair::next_quote(uint32_t from) {
  if (from >= no_quote_from_) return source_.count;
  const uint32_t found = find_quote(source_, from);
  if (found == source_.count) no_quote_from_ = from;
  return found;
}

// Where the statement can resume, without the blanks before that place.
uint32_t Repair::resumption(uint32_t from, bool in_parentheses) {
  uint32_t& nothing_from = nothing_from_[in_parentheses ? 1 : 0];
  uint32_t place = source_.count;
  if (from < nothing_from) {
    place = find_resumption(source_, from, in_parentheses, true);
    if (place == source_.count) nothing_from = from;
  }
  if (place == source_.count) place = find_resumption(source_, from, in_parentheses, false);
  return without_blanks_after(source_, from, place);
}

void Repair::repair_quote(uint32_t prefix) {
  if (prefix == 0 && repair_quote_after_word(prefix)) return;
  const uint32_t quote = at_ + prefix;
  const uint32_t closing = next_quote(quote + 1);
  if (closing == source_.count || swallows_an_option(quote, closing)) return close_quote(prefix);
  if (prefix == 0 && repair_quote_inside(closing)) return;
  take_quoted(prefix, closing);
}

// Reads quoted text up to its closing quote, characters above U+FFFF included.
void Repair::take_quoted(uint32_t prefix, uint32_t closing) {
  Finding* finding = nullptr;
  for (uint32_t i = at_; i < closing && finding == nullptr; ++i) {
    const uint16_t* next = next_character(source_.units + i, source_.end());
    if (next != source_.units + i + 2) continue;
    finding = &bad_character({i, i + 2}, Wording::kAboveBmp);
    findings_.relate(*finding, TAVO_RELATED_OPENING, {at_ + prefix, at_ + prefix + 1});
  }
  const uint32_t type = prefix == 0 ? TAVO_PARSER_STRING_WITH_QUOTES : TAVO_PARSER_SEED_FLDNAME;
  push(type, closing + 1, finding == nullptr ? 0 : uint32_t{Token::kDamaged}, finding);
}

// Recognizes `SEED="1, DSTFLD="X"`, where the quote that seems to close the value opens the next
// one.
bool Repair::swallows_an_option(uint32_t begin, uint32_t closing) const {
  if (separator_follows(source_, closing + 1)) return false;
  uint32_t last = closing;
  while (last > begin + 1 && is_blank(source_.units[last - 1])) --last;
  if (last == begin + 1 || source_.units[last - 1] != '=') return false;
  return find_resumption({source_.units, closing}, begin + 1, depth_ != 0, false) != closing;
}

// Ends the quoted text where the statement can resume.
void Repair::close_quote(uint32_t prefix) {
  const uint32_t quote = at_ + prefix;
  const uint32_t end = resumption(quote + 1, depth_ != 0);
  Finding& finding = findings_.add(TAVO_DIAGNOSTIC_UNCLOSED_QUOTE, {quote, quote + 1});
  finding.found = QUOTE;
  finding.has_stop = true;
  finding.stop = {source_.count, source_.count};
  const Span content = {quote + 1, end};
  bool plain = content.begin != content.end;
  for (uint32_t i = content.begin; i < content.end; ++i) {
    const uint32_t c = source_.units[i];
    plain &= !is_blank(c) && c != ',' && c != '(' && c != ')' && c != '\\' && c != '=';
  }
  const uint32_t last = content.begin < content.end ? source_.units[content.end - 1] : 0u;
  if (lookalike_of(last) == Lookalike::kDoubleQuote) {
    const Span wrong = {content.end - 1, content.end};
    findings_.relate(finding, TAVO_RELATED_CLOSING, wrong);
    findings_.add_fix(finding, FixTitle::kReplaceBy, true, "\"", wrong, "\"");
  } else {
    findings_.add_fix(finding, FixTitle::kInsert, plain, "\"", {content.end, content.end}, "\"");
  }
  push(prefix == 0 ? TAVO_PARSER_STRING_WITH_QUOTES : TAVO_PARSER_SEED_FLDNAME, end,
       Token::kDamaged, &finding);
}

// A quote directly after a word: a closing quote without an opening one, or an opening quote that
// is one character too late.
bool Repair::repair_quote_after_word(uint32_t prefix) {
  if (tokens_.size() == 0 || (next_flags_ & Token::kTight) == 0) return false;
  Token& before = tokens_[tokens_.size() - 1];
  const Span quote = {at_ + prefix, at_ + prefix + 1};
  if (before.type == TAVO_PARSER_STRING_WITH_QUOTES && !before.is(Token::kDamaged)) {
    if (!separator_follows(source_, quote.end)) return false;
    Finding& finding = findings_.add(TAVO_DIAGNOSTIC_SURPLUS_SIGN, quote);
    finding.name = "\"";
    findings_.add_fix(finding, FixTitle::kRemove, false, "\"", quote, "");
    before.flags |= Token::kDamaged;
    skip_hidden(quote.end);
    return true;
  }
  if (word_before() == nullptr) return false;
  if (separator_follows(source_, quote.end)) {
    size_t first = tokens_.size() - 1;
    while (first > 0 && is_word(source_.at(tokens_[first - 1].begin))) --first;
    if (first == 0 || tokens_[first - 1].type != EQUAL) return false;
    const uint32_t begin = tokens_[first].begin;
    Finding& finding = findings_.add(TAVO_DIAGNOSTIC_UNCLOSED_QUOTE, quote);
    finding.wording = Wording::kNoOpening;
    finding.found = QUOTE;
    findings_.add_fix(finding, FixTitle::kInsert, false, "\"", {begin, begin}, "\"");
    while (tokens_.size() > first) tokens_.remove_last();
    at_ = begin;
    next_flags_ = 0;
    push(TAVO_PARSER_STRING_WITH_QUOTES, quote.end, Token::kDamaged, &finding);
    return true;
  }
  const uint32_t closing = next_quote(quote.end);
  if (closing == source_.count) return false;
  if (begins_any_option(before.type) && source_.at(quote.end) == '=') {  // SEED"=1"
    Finding& finding = findings_.add(TAVO_DIAGNOSTIC_MISSING_EQUALS, {quote.begin, closing + 1});
    finding.wording = Wording::kMisplacedQuote;
    Fix& fix = findings_.add_fix(finding, FixTitle::kMoveQuote, false);
    Findings::edit(fix, {quote.begin, quote.end + 1}, "=\"");
    push(EQUAL, quote.end, Token::kDamaged, &finding);
    push(TAVO_PARSER_STRING_WITH_QUOTES, closing + 1, Token::kDamaged, &finding);
    return true;
  }
  if (!stands_after_equal(before) || !separator_follows(source_, closing + 1)) return false;
  const uint32_t begin = before.begin;  // SEED=a"bc"
  Finding& finding = findings_.add(TAVO_DIAGNOSTIC_UNCLOSED_QUOTE, quote);
  finding.wording = Wording::kMisplacedQuote;
  finding.found = QUOTE;
  Fix& fix = findings_.add_fix(finding, FixTitle::kMoveQuote, false);
  Findings::edit(fix, {begin, begin}, "\"");
  Findings::edit(fix, quote, "");
  tokens_.remove_last();
  at_ = begin;
  next_flags_ = 0;
  push(TAVO_PARSER_STRING_WITH_QUOTES, closing + 1, Token::kDamaged, &finding);
  return true;
}

// A word directly follows the quoted text: the quote is doubled or comes too early.
bool Repair::repair_quote_inside(uint32_t closing) {
  if (separator_follows(source_, closing + 1) || is_blank(source_.at(closing + 1))) return false;
  if (!is_word(source_.at(closing + 1)) && closing != at_ + 1) return false;
  const uint32_t next = next_quote(closing + 1);
  if (closing == at_ + 1 && next != source_.count && separator_follows(source_, next + 1)) {
    const Span surplus = {at_, at_ + 1};
    Finding& finding = findings_.add(TAVO_DIAGNOSTIC_SURPLUS_SIGN, surplus);  // SEED=""1"
    finding.name = "\"";
    findings_.add_fix(finding, FixTitle::kRemove, false, "\"", surplus, "");
    at_ = closing;
    push(TAVO_PARSER_STRING_WITH_QUOTES, next + 1, Token::kDamaged, &finding);
    return true;
  }
  uint32_t stop = closing + 1;
  while (is_word(source_.at(stop))) ++stop;
  if (stop == closing + 1 || !separator_follows(source_, stop)) return false;
  const Span quote = {closing, closing + 1};
  Finding& finding = findings_.add(TAVO_DIAGNOSTIC_UNCLOSED_QUOTE, quote);  // SEED="ab"c
  finding.wording = Wording::kMisplacedQuote;
  finding.found = QUOTE;
  Fix& fix = findings_.add_fix(finding, FixTitle::kMoveQuote, false);
  Findings::edit(fix, quote, "");
  Findings::edit(fix, {stop, stop}, "\"");
  push(TAVO_PARSER_STRING_WITH_QUOTES, stop, Token::kDamaged, &finding);
  return true;
}

// ---- typographic and single quotes -------------------------------------------------------------

uint32_t Repair::find_typographic(uint32_t from, Lookalike kind) const {
  for (uint32_t i = from; i < source_.count && source_.units[i] != '\n'; ++i) {
    const uint32_t c = source_.units[i];
    if (lookalike_of(c) == kind || (c == '"' && kind == Lookalike::kDoubleQuote)) return i;
    if (c == ',' && begins_assignment(source_, skip_line_blanks(source_, i + 1), true)) break;
  }
  return source_.count;
}

void Repair::repair_typographic(Span here) {
  const Lookalike kind = lookalike_of(source_.units[here.begin]);
  Finding& finding = bad_character(here, Wording::kQuoteLookalike);
  const uint32_t closing = find_typographic(here.end, kind);
  if (closing == source_.count) {
    uint32_t stop = here.end;
    while (stop < source_.count && !ends_run(stop)) ++stop;
    push(TAVO_PARSER_STRING_WITH_QUOTES, stop, Token::kDamaged, &finding);
    return;
  }
  const Span other = {closing, closing + 1};
  findings_.relate(finding, TAVO_RELATED_CLOSING, other);
  bool plain = true;
  for (uint32_t i = here.end; i < closing; ++i) {
    const uint32_t c = source_.units[i];
    plain &= c != '"' && c != '\\' &&
             next_character(source_.units + i, source_.end()) == source_.units + i + 1;
  }
  Fix& fix = findings_.add_fix(finding, FixTitle::kReplaceBy, plain, "\"");
  Findings::edit(fix, here, "\"");
  if (source_.units[closing] != '"') Findings::edit(fix, other, "\"");
  push(TAVO_PARSER_STRING_WITH_QUOTES, closing + 1, Token::kDamaged, &finding);
}

}  // namespace tavo::diagnostics
