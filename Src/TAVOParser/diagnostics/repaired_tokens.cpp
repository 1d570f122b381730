#include "diagnostics/repaired_tokens.h"

#include "Grammar/lexer/character_class.h"
#include "diagnostics/repair.h"
#include "text/utf16_characters.h"

namespace tavo::diagnostics {

void Repair::run() {
  at_ = source_.begin();
  while (at_ < source_.count && !tokens_.refused() && !findings_.refused()) {
    // Handle quotes here: the scanner would read to the end of the text for each unclosed one.
    const bool named = source_.units[at_] == '#' && source_.at(at_ + 1) == '"';
    if (source_.units[at_] == '"' || named) {
      repair_quote(named ? 1 : 0);
      continue;
    }
    const Lexeme lexeme = scan(source_.units + at_, source_.end());
    const auto stop = static_cast<uint32_t>(lexeme.stop - source_.units);
    if (lexeme.type == 0) {
      repair_broken(stop);
    } else if (lexeme.hidden()) {
      skip_hidden(stop);
    } else if (lexeme.type == BAD_SEP || lexeme.type == BACKSLASH || lexeme.type == SINGLE_QUOTE) {
      repair_character();
    } else {
      push(lexeme.type, stop);
    }
  }
  Token end;
  end.begin = end.end = source_.count;
  end.type = TAVO_TOKEN_END_OF_INPUT;
  end.flags = next_flags_ & (Token::kAfterLine | Token::kDamaged);
  tokens_.add(end);
}

void Repair::skip_hidden(uint32_t stop) {
  next_flags_ &= ~uint32_t{Token::kTight};
  for (uint32_t i = at_; i < stop; ++i) {
    if (source_.units[i] == '\n') next_flags_ |= Token::kAfterLine;
  }
  at_ = stop;
}

Token& Repair::push(uint32_t type, uint32_t stop, uint32_t flags, Finding* finding) {
  tokens_.add({at_, stop, type, flags | next_flags_, finding});
  if (type == LEFT_PARENTHESIS) ++depth_;
  if (type == RIGHT_PARENTHESIS && depth_ != 0) --depth_;
  at_ = stop;
  next_flags_ = Token::kTight;
  return tokens_.size() == 0 ? scratch_ : tokens_[tokens_.size() - 1];
}

// The previous token if it is a word that ends exactly at the current position, else null.
Token* Repair::word_before() {
  if (tokens_.size() == 0 || (next_flags_ & Token::kTight) == 0) return nullptr;
  Token& token = tokens_[tokens_.size() - 1];
  return is_word(source_.at(token.begin)) || token.is(Token::kRun) ? &token : nullptr;
}

bool Repair::stands_after_equal(const Token& token) const {
  const auto index = static_cast<size_t>(&token - tokens_.begin());
  return index != 0 && tokens_[index - 1].type == EQUAL;
}

void Repair::repair_broken(uint32_t offending) {
  const uint32_t c = source_.units[at_];
  if (c == '/') {
    Finding& finding = findings_.add(TAVO_DIAGNOSTIC_UNCLOSED_COMMENT, {at_, at_ + 2});
    finding.has_stop = true;
    finding.stop = {source_.count, source_.count};
    findings_.add_fix(finding, FixTitle::kInsert, false, "*/", {source_.count, source_.count},
                      " */");
    skip_hidden(source_.count);
    next_flags_ |= Token::kDamaged;
    return;
  }
  if (c == '(')
    return repair_instruction(TAVO_PARSER_COPY_COL_SYNTAX, match_copy_ranges, offending);
  if (is_word(c)) {
    return repair_instruction(TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX, match_affix,
                              offending);
  }
  repair_character();  // above U+FFFF
}

// ---- characters --------------------------------------------------------------------------------

Span Repair::character_here() const {
  const uint16_t* next = next_character(source_.units + at_, source_.end());
  return {at_, static_cast<uint32_t>(next - source_.units)};
}

uint32_t Repair::code_point(Span character) const {
  const uint32_t first = source_.units[character.begin];
  if (character.end - character.begin == 1) return first;
  return 0x10000 + ((first - 0xD800) << 10) + (source_.units[character.begin + 1] - 0xDC00u);
}

Finding& Repair::bad_character(Span place, Wording wording) {
  Finding& finding = findings_.add(TAVO_DIAGNOSTIC_BAD_CHARACTER, place);
  finding.wording = wording;
  finding.character = code_point(place);
  finding.found = BAD_SEP;
  return finding;
}

void Repair::repair_character() {
  const Span here = character_here();
  switch (lookalike_of(code_point(here))) {
    case Lookalike::kBlank: {
      Finding& finding = bad_character(here, Wording::kBlankLookalike);
      findings_.add_fix(finding, FixTitle::kBlank, true, {}, here, " ");
      return skip_hidden(here.end);
    }
    case Lookalike::kInvisible: return repair_invisible(here);
    case Lookalike::kDoubleQuote:
    case Lookalike::kSingleQuote:
      if (word_before() == nullptr) return repair_typographic(here);
      return repair_run(here);
    case Lookalike::kSign: return repair_sign(here);
    case Lookalike::kNone: break;
  }
  if (is_separator_of_others(here)) {
    push(BAD_SEP, here.end);
  } else {
    repair_run(here);
  }
}

// Whether the character separates options in other languages and is not inside a word.
bool Repair::is_separator_of_others(Span here) {
  const uint32_t c = source_.units[here.begin];
  if (here.end - here.begin != 1 || c >= 128) return false;
  if (c == ';') return true;
  const bool word_follows = is_word(source_.at(here.end));
  if (begins_assignment(source_, skip_blanks(source_, here.end), true)) return true;
  if (c == '/' || c == '\\') return word_before() == nullptr && !word_follows;
  return word_before() == nullptr || !word_follows;
}

void Repair::repair_sign(Span here) {
  const char sign = sign_of(source_.units[here.begin]);
  Finding& finding = bad_character(here, Wording::kSignLookalike);
  static constexpr std::string_view kSigns[] = {",", "=", "(", ")"};
  static constexpr uint32_t kTypes[] = {COMMA, EQUAL, LEFT_PARENTHESIS, RIGHT_PARENTHESIS};
  for (size_t i = 0; i < 4; ++i) {
    if (kSigns[i][0] != sign) continue;
    findings_.add_fix(finding, FixTitle::kReplaceBy, true, kSigns[i], here, kSigns[i]);
    push(kTypes[i], here.end, Token::kDamaged, &finding);
  }
}

// Reads a word that contains the invisible character as if the character were absent.
void Repair::repair_invisible(Span here) {
  Finding& finding = bad_character(here, Wording::kInvisible);
  findings_.add_fix(finding, FixTitle::kRemoveInvisible, true, {}, here, "");
  Token* before = word_before();
  at_ = here.end;
  if (before == nullptr || before->is(Token::kRun) || !is_word(source_.at(at_))) return;
  uint16_t joined[kLongestWord];
  uint32_t count = 0;
  const auto put = [&](uint32_t from, uint32_t to) {
    for (uint32_t i = from; i < to && count < kLongestWord; ++i) {
      if (is_word(source_.units[i])) joined[count++] = source_.units[i];
    }
  };
  put(before->begin, before->end);
  uint32_t stop = at_;
  while (is_word(source_.at(stop))) ++stop;
  put(at_, stop);
  before->type = scan(joined, joined + count).type;
  before->end = at_ = stop;
  before->flags |= Token::kDamaged;
}

// Turns the whole run of characters into one word.
void Repair::repair_run(Span here) {
  const bool above = here.end - here.begin == 2;
  Finding& finding = bad_character(here, above ? Wording::kAboveBmp : Wording::kLetter);
  uint32_t stop = here.end;
  while (stop < source_.count && !ends_run(stop)) ++stop;
  Token* before = word_before();
  if (before != nullptr) {
    finding.word = {before->begin, stop};
    before->end = stop;
    before->type = TAVO_PARSER_STRING_WITHOUT_QUOTES;
    before->flags |= Token::kDamaged | Token::kRun;
    if (before->finding == nullptr) before->finding = &finding;
    at_ = stop;
    return;
  }
  push(TAVO_PARSER_STRING_WITHOUT_QUOTES, stop, Token::kDamaged | Token::kRun, &finding);
}

bool Repair::ends_run(uint32_t at) const {
  const uint32_t c = source_.units[at];
  if (is_blank(c)) return true;
  if (c >= 128) {
    const Lookalike look = lookalike_of(c);
    return look == Lookalike::kBlank || look == Lookalike::kSign || look == Lookalike::kDoubleQuote;
  }
  return c == ',' || c == '=' || c == '(' || c == ')' || c == '"' || c == ';';
}

// ---- entry point -------------------------------------------------------------------------------

void read_repaired(const Source& source, Findings& findings, TokenList& tokens) {
  Repair(source, findings, tokens).run();
}

}  // namespace tavo::diagnostics
