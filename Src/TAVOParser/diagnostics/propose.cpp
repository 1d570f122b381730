// Fixes for misspelled words and misplaced equals signs.
#include "Grammar/engine/table_engine.h"
#include "Grammar/lexer/character_class.h"
#include "diagnostics/walker.h"

namespace tavo::diagnostics {
namespace {

// The token type of the text, or 0 unless the text is exactly one token.
uint32_t type_of(Units text) {
  if (text.empty()) return 0;
  const Lexeme lexeme = scan(text.data(), text.data() + text.size());
  return lexeme.stop == text.data() + text.size() ? lexeme.type : 0;
}

bool begins_with_word(Units text, std::string_view word) {
  return text.size() >= word.size() && is_word_spelled(text.first(word.size()), word);
}

template <typename Visit>
void visit_spellings(const KeywordList& keywords, Visit visit) {
  for (const uint16_t keyword : keywords.list()) {
    const TokenInfo info = token_info(keyword);
    for (size_t i = 0; i < info.spelling_count; ++i) visit(spelling(info.first_spelling + i));
  }
}

}  // namespace

// The word in the case of `like`: lower case unless `like` has an upper-case letter.
std::string_view Walker::in_case_of(Units like, std::string_view word) {
  for (const uint16_t c : like) {
    if ((class_of(c) & kUpper) != 0) return word;
  }
  char* lower = findings_.arena().make<char>(word.size());
  if (lower == nullptr) return word;
  for (size_t i = 0; i < word.size(); ++i) {
    const bool letter = word[i] >= 'A' && word[i] <= 'Z';
    lower[i] = letter ? static_cast<char>(word[i] - 'A' + 'a') : word[i];
  }
  return {lower, word.size()};
}

// ---- options -----------------------------------------------------------------------------------

void Walker::unknown_option() {
  const Token& here = token();
  if (here.is(Token::kRun)) {
    if (here.finding != nullptr) propose_option(*here.finding, here);
    return skip_assignment();
  }
  if (is_word_token(here) && (split_word(here) || moved_equals(here))) return;
  Finding& finding = error(TAVO_DIAGNOSTIC_UNKNOWN_OPTION, here.place(), here);
  finding.expecting = inside_ != nullptr ? Expecting::kParameter : Expecting::kOption;
  finding.option = inside_;
  if (is_word_token(here) && token(1).type == EQUAL) {
    finding.word = here.place();
    if (begins_any_option(here.type)) finding.wording = Wording::kForeignOption;
    propose_option(finding, here);
  } else {
    finding.wording = Wording::kNoWord;
    if (is_word_token(here)) propose_option(finding, here);
  }
  skip_assignment();
}

void Walker::propose_option(Finding& finding, const Token& word) {
  const Units written = text(word);
  // A numbered keyword keeps its number.
  size_t stem = written.size();
  while (stem > 0 && stem + 2 > written.size() && is_digit(written[stem - 1])) --stem;
  const bool numbered =
      stem != written.size() && option_of_type(TAVO_PARSER_CMN_PARM_FLDDEF) != nullptr;
  NearestWord definition(written.first(stem));
  if (numbered) definition.consider(uint32_t{TAVO_PARSER_CMN_PARM_FLDDEF});
  Span place = word.place();
  NearWord near = definition.best();
  if (near.type != 0) {
    place.end = static_cast<uint32_t>(word.begin + stem);
  } else {
    NearestWord nearest(written);
    visit_options([&](const OptionRule& option) { nearest.consider(option.keywords); });
    near = nearest.best();
    if (near.type == 0 || (begins_any_option(word.type) && near.distance > 1)) return;
  }
  const std::string_view meant = in_case_of(written, near.spelling);
  findings_.add_fix(finding, FixTitle::kChangeTo, false, meant, place, meant);
}

// Skips an unknown keyword, its equals sign and its value.
void Walker::skip_assignment() {
  advance();
  if (token().type == EQUAL) {
    advance();
    if (token().type == LEFT_PARENTHESIS) {
      skip_parentheses();
    } else if (!ends_value(token()) && !is_own_option(0)) {
      advance();
    }
    recovering_ = is_own_option(0) && before().type == EQUAL;
    if (ends_value(token()) || is_own_option(0) || begins_statement(0) || is_foreign_separator(0)) {
      return;
    }
  }
  skip_mistake();
}

// The equals sign is missing, or another sign is in its place: PAT:6C, ALGOSHA256.
bool Walker::split_word(const Token& word) {
  if (token(1).type == EQUAL) return false;
  const Units written = text(word);
  const OptionRule* meant = nullptr;
  size_t length = 0;
  bool accepted = false;
  visit_options([&](const OptionRule& option) {
    visit_spellings(option.keywords, [&](std::string_view keyword) {
      if (!begins_with_word(written, keyword) || written.size() == keyword.size()) return;
      const bool colon = written[keyword.size()] == ':';
      const Units rest = written.subspan(keyword.size() + (colon ? 1 : 0));
      bool fits = option.syntax == ValueSyntax::kToken
                      ? find_value(option.values, type_of(rest)) != nullptr
                      : option.syntax == ValueSyntax::kString && !rest.empty();
      if (rest.empty()) fits = !ends_value(token(1)) && is_accepted(option, token(1));
      if (!fits && !colon) return;
      // Prefer a listed value to free text, and a longer keyword to a shorter one.
      if (accepted && (!fits || keyword.size() < length)) return;
      meant = &option;
      length = keyword.size();
      accepted = fits;
    });
  });
  if (meant == nullptr) return false;
  const auto split = static_cast<uint32_t>(word.begin + length);
  const bool colon = source_.at(split) == ':';
  Finding& finding = error(TAVO_DIAGNOSTIC_MISSING_EQUALS, word.place(), word);
  finding.word = {word.begin, split};
  finding.wording = colon ? Wording::kSeparatorAfter : Wording::kPlain;
  finding.expecting = Expecting::kEqual;
  name_option(finding, *meant);
  findings_.add_fix(finding, colon ? FixTitle::kReplaceBy : FixTitle::kInsert, colon && accepted,
                    "=", {split, split + (colon ? 1u : 0u)}, "=");
  advance();
  recovering_ = false;
  if (split + 1 == word.end && colon) {
    if (meant->syntax == ValueSyntax::kParameters) {
      prefix_ = {word.begin, split};
      walk_parameters(*meant);
      return true;
    }
    if (!ends_value(token())) advance();
  }
  if (!ends_value(token()) && !is_own_option(0) && !begins_statement(0)) skip_mistake();
  return true;
}

// The equals sign is a character too early or too late: ALG=OSHA256, ALGOS=HA256.
bool Walker::moved_equals(const Token& word) {
  const Token& value = token(2);
  if (token(1).type != EQUAL || !token(1).is(Token::kTight) || !value.is(Token::kTight)) {
    return false;
  }
  const Units keyword = text(word);
  const Units rest = text(value);
  if (keyword.size() + rest.size() > kLongestWord || rest.empty()) return false;
  uint16_t all[kLongestWord + 1];
  uint16_t* end = std::copy(keyword.begin(), keyword.end(), all);
  end = std::copy(rest.begin(), rest.end(), end);
  const Units whole(all, end);
  const OptionRule* meant = nullptr;
  size_t length = 0;
  visit_options([&](const OptionRule& option) {
    if (option.syntax != ValueSyntax::kToken) return;
    visit_spellings(option.keywords, [&](std::string_view known) {
      const bool early = known.size() == keyword.size() + 1;
      const bool late = known.size() + 1 == keyword.size();
      if ((!early && !late) || !begins_with_word(whole, known) || known.size() == whole.size()) {
        return;
      }
      const uint32_t type = type_of(whole.subspan(known.size()));
      if (type == TAVO_PARSER_STRING_WITHOUT_QUOTES || find_value(option.values, type) == nullptr) {
        return;
      }
      meant = &option;
      length = known.size();
    });
  });
  if (meant == nullptr) return false;
  Finding& finding = error(TAVO_DIAGNOSTIC_UNKNOWN_OPTION, word.place(), word);
  finding.word = word.place();
  finding.expecting = inside_ != nullptr ? Expecting::kParameter : Expecting::kOption;
  finding.option = inside_;
  propose_moved_equals(finding, word, value, length > keyword.size());
  skip_assignment();
  return true;
}

// The same between the provider keyword and the name: PROC=CN.
const StatementRule* Walker::moved_head_equals(Finding& finding, const Token& word) {
  const Token& name = token(2);
  if (token(1).type != EQUAL || !token(1).is(Token::kTight) || !name.is(Token::kTight)) {
    return nullptr;
  }
  const Units keyword = text(word);
  const Units rest = text(name);
  if (keyword.size() + rest.size() > kLongestWord || rest.empty()) return nullptr;
  uint16_t all[kLongestWord + 1];
  uint16_t* end = std::copy(keyword.begin(), keyword.end(), all);
  end = std::copy(rest.begin(), rest.end(), end);
  const Units whole(all, end);
  for (const std::string_view known : {std::string_view("PROVIDER"), std::string_view("PRO")}) {
    const bool early = known.size() == keyword.size() + 1;
    const bool late = known.size() + 1 == keyword.size();
    if ((!early && !late) || !begins_with_word(whole, known)) continue;
    const StatementRule* statement = statement_named(type_of(whole.subspan(known.size())));
    if (statement == nullptr) continue;
    propose_moved_equals(finding, word, name, early);
    return statement;
  }
  return nullptr;
}

void Walker::propose_moved_equals(Finding& finding, const Token& word, const Token& value,
                                  bool early) {
  char* signs = findings_.arena().make<char>(2);
  if (signs == nullptr) return;
  const auto letter = static_cast<char>(early ? source_.at(value.begin) : source_.at(word.end - 1));
  signs[0] = early ? letter : '=';
  signs[1] = early ? '=' : letter;
  const Span place = early ? Span{word.end, value.begin + 1} : Span{word.end - 1, value.begin};
  findings_.add_fix(finding, FixTitle::kMoveEquals, false, {}, place, {signs, 2});
}

// ---- values ------------------------------------------------------------------------------------

bool Walker::takes_quotes(const OptionRule& option) {
  return option.syntax == ValueSyntax::kString ||
         find_value(option.values, TAVO_PARSER_STRING_WITH_QUOTES) != nullptr;
}

void Walker::propose_quotes(Finding& finding, Span value) {
  const Units written = source_.text(value);
  for (const uint16_t c : written) {
    if (c == '"' || c == '\\' || (c & 0xF800) == 0xD800) return;
  }
  Fix& fix = findings_.add_fix(finding, FixTitle::kQuote, false);
  Findings::edit(fix, {value.begin, value.begin}, "\"");
  Findings::edit(fix, {value.end, value.end}, "\"");
}

void Walker::propose_value(Finding& finding, const OptionRule& option, const Token& value) {
  const Units written = text(value);
  if (value.type == TAVO_PARSER_STRING_WITH_QUOTES && written.size() > 2) {
    const Units content = written.subspan(1, written.size() - 2);
    if (find_value(option.values, type_of(content)) == nullptr) return;
    Fix& fix = findings_.add_fix(finding, FixTitle::kUnquote, false);
    Findings::edit(fix, {value.begin, value.begin + 1}, "");
    Findings::edit(fix, {value.end - 1, value.end}, "");
    return;
  }
  NearestWord nearest(written);
  nearest.consider(option.values);
  const NearWord near = nearest.best();
  const bool quotes = takes_quotes(option) && (is_word(written[0]) || value.is(Token::kRun));
  if (near.type != 0 && (!quotes || near.distance == 1)) {
    const std::string_view meant = in_case_of(written, near.spelling);
    findings_.add_fix(finding, FixTitle::kChangeTo, false, meant, value.place(), meant);
  } else if (find_value(option.values, TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX) !=
             nullptr) {
    propose_affix(finding, value);
  }
  if (quotes) propose_quotes(finding, value.place());
}

// Proposes a fix for the word before the parenthesis: PRFIX("x").
void Walker::propose_affix(Finding& finding, const Token& value) {
  uint32_t stop = value.begin;
  while (is_word(source_.at(stop))) ++stop;
  if (source_.at(stop) != '(' || stop == value.begin) return;
  const Span word = {value.begin, stop};
  NearestWord nearest(source_.text(word));
  for (const uint32_t type :
       {TAVO_PARSER_TOKEN_PREFIX, TAVO_PARSER_TOKEN_SUFFIX, TAVO_PARSER_TOKEN_OVERLAY}) {
    nearest.consider(uint32_t{type});
  }
  const NearWord near = nearest.best();
  if (near.type == 0) return;
  const std::string_view meant = in_case_of(source_.text(word), near.spelling);
  findings_.add_fix(finding, FixTitle::kChangeTo, false, meant, word, meant);
}

}  // namespace tavo::diagnostics
