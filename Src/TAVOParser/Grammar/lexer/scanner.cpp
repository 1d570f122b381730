#include "Grammar/lexer/scanner.h"

#include <bit>
#include <cstddef>
#include <string_view>

#include "Grammar/lexer/character_class.h"
#include "Grammar/lexer/vector_unit.h"
#include "Grammar/lexer/vocabulary.h"
#include "Grammar/lexer/word_run.h"
#include "TAVOParserTokens.h"
#include "text/utf16_characters.h"

namespace tavo {

using detail::token;

namespace {

using Unit = uint16_t;

constexpr Match matched(const Unit* stop) {
  return {stop, RecognitionError::kNone};
}
constexpr Match failed(const Unit* offending, RecognitionError error) {
  return {offending, error};
}

bool at(const Unit* text, const Unit* end, uint32_t character) {
  return text != end && *text == character;
}

// Matches the characters of a keyword, ignoring case.
Match match_letters(const Unit* text, const Unit* end, std::string_view upper) {
  for (char c : upper) {
    if (text == end || to_upper(*text) != static_cast<unsigned char>(c)) {
      return failed(text, RecognitionError::kMismatchedSet);
    }
    ++text;
  }
  return matched(text);
}

// A sequence of rules: after a failure, further steps do nothing.
class Sequence {
 public:
  Sequence(const Unit* text, const Unit* end) : match_(matched(text)), end_(end) {}

  Sequence& character(uint32_t expected) {
    if (!match_.ok()) return *this;
    match_ = at(match_.stop, end_, expected)
                 ? matched(match_.stop + 1)
                 : failed(match_.stop, RecognitionError::kMismatchedToken);
    return *this;
  }
  Sequence& rule(Match (*matcher)(const Unit*, const Unit*)) {
    if (match_.ok()) match_ = matcher(match_.stop, end_);
    return *this;
  }
  Sequence& letters(std::string_view upper) {
    if (match_.ok()) match_ = match_letters(match_.stop, end_, upper);
    return *this;
  }
  Sequence& fail(RecognitionError error) {
    if (match_.ok()) match_ = failed(match_.stop, error);
    return *this;
  }
  // The character at the current place in uppercase; 0 at the end or after a failure.
  uint32_t next() const {
    return match_.ok() && match_.stop != end_ ? to_upper(*match_.stop) : 0;
  }
  Match match() const {
    return match_;
  }

 private:
  Match match_;
  const Unit* end_;
};

const Unit* end_of_run(const Unit* text, const Unit* end) {
  while (text != end && is_word(*text)) ++text;
  return text;
}

// ( INTEGER , INTEGER
Sequence& integer_pair(Sequence& sequence) {
  return sequence.character('(').rule(match_integer).character(',').rule(match_integer);
}

Match match_copy_range(const Unit* text, const Unit* end) {
  Sequence range(text, end);
  integer_pair(range);
  if (range.next() == ',') range.character(',').rule(match_quoted_string);
  return range.character(')').match();
}

bool begins_copy_ranges(const Unit* text, const Unit* end) {
  const Unit* p = text + 1;
  if (p != end && is_sign(*p)) ++p;
  return p != end && is_digit(*p);
}

constexpr Lexeme hidden(const Unit* stop, uint32_t type) {
  return {stop, type, Lexeme::kHidden | Lexeme::kMultiLine};
}
// The longest structured value with blanks at this place; a lexeme without an end if there is none.
[[gnu::noinline]] Lexeme match_value_with_blanks(const Unit* text, const Unit* end) {
  Lexeme longest = token(text, 0);
  for (uint16_t index : spellings_with_blanks()) {
    const std::string_view value = spelling(index);
    if (value.size() <= static_cast<size_t>(longest.stop - text)) continue;
    const Match match = match_letters(text, end, value);
    if (match.ok()) longest = token(match.stop, type_of_spelling(index));
  }
  return longest;
}

// A token that may contain a quoted string, and so line ends.
constexpr Lexeme token_or_broken(Match match, uint32_t type) {
  return {match.stop, match.ok() ? type : 0,
          static_cast<uint32_t>(match.error) | Lexeme::kMultiLine};
}

[[gnu::noinline]] Lexeme scan_affix(const Unit* text, const Unit* end) {
  return token_or_broken(match_affix(text, end),
                         TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX);
}

// The first character in a string that needs attention: a quote, a backslash, a line end or a
// surrogate.
const Unit* end_of_plain_text(const Unit* text, const Unit* end) {
#if defined(TAVO_SSE2)
  for (; end - text >= 8; text += 8) {
    const void* place = text;
    const __m128i units = _mm_loadu_si128(static_cast<const __m128i*>(place));
    const auto is = [units](char c) { return _mm_cmpeq_epi16(units, _mm_set1_epi16(c)); };
    const __m128i high = _mm_cmplt_epi16(units, _mm_setzero_si128());  // surrogates among them
    const __m128i stops =
        _mm_or_si128(_mm_or_si128(is('"'), is('\\')), _mm_or_si128(is('\n'), high));
    const auto mask = static_cast<uint32_t>(_mm_movemask_epi8(stops));
    if (mask == 0) continue;
    text += std::countr_zero(mask) / 2;
    break;
  }
#elif defined(TAVO_NEON)
  for (; end - text >= 8; text += 8) {
    const uint16x8_t units = vld1q_u16(text);
    const auto is = [units](Unit c) { return vceqq_u16(units, vdupq_n_u16(c)); };
    const uint16x8_t high = vcgeq_u16(units, vdupq_n_u16(0x8000));  // surrogates among them
    const uint16x8_t stops = vorrq_u16(vorrq_u16(is('"'), is('\\')), vorrq_u16(is('\n'), high));
    const uint64_t mask = vget_lane_u64(vreinterpret_u64_u8(vshrn_n_u16(stops, 4)), 0);
    if (mask == 0) continue;
    text += std::countr_zero(mask) / 8;
    break;
  }
#endif
  constexpr Unit kFirstSurrogate = 0xD800;
  while (text != end && *text != '"' && *text != '\\' && *text != '\n' && *text < kFirstSurrogate) {
    ++text;
  }
  return text;
}

// Most strings are plain text up to the next quote. The rule handles all others.
Lexeme scan_quoted_string(const Unit* text, const Unit* end) {
  const Unit* stop = end_of_plain_text(text + 1, end);
  if (at(stop, end, '"')) return token(stop + 1, TAVO_PARSER_STRING_WITH_QUOTES);
  return token_or_broken(match_quoted_string(text, end), TAVO_PARSER_STRING_WITH_QUOTES);
}

bool all_digits(const Unit* text, const Unit* end) {
  while (text != end && is_digit(*text)) ++text;
  return text == end;
}

bool has_lower_case(const Unit* text, const Unit* end) {
  while (text != end && (class_of(*text) & kLower) == 0) ++text;
  return text != end;
}

// The type of a run of word characters that is not in the vocabulary.
uint16_t type_of_unknown(const Unit* text, const Unit* stop) {
  const bool digits_first = is_digit(*text) || (*text == '-' && stop - text > 1);
  return digits_first && all_digits(text + 1, stop) ? INTEGER : TAVO_PARSER_STRING_WITHOUT_QUOTES;
}

}  // namespace

Lexeme detail::classify(const Unit* text, const Unit* end, const Unit* stop, uint64_t head,
                        uint64_t tail, const Word& candidate) {
  if (is_digit(*text) && at(stop, end, ' ')) {
    const Lexeme value = match_value_with_blanks(text, end);
    if (value.stop > stop) return value;
  }
  const auto length = static_cast<size_t>(stop - text);
  if (!is_spelled(candidate, head, tail, text, length)) {
    if (is_numbered_keyword(head, length)) return token(stop, TAVO_PARSER_CMN_PARM_FLDDEF);
    return token(stop, type_of_unknown(text, stop));
  }
  if (is_affix(candidate.type) && at(stop, end, '(')) return scan_affix(text, end);
  const bool known = candidate.kind != TokenKind::kKeyLiteral || !has_lower_case(text, stop);
  return token(stop, known ? candidate.type : type_of_unknown(text, stop));
}

Lexeme detail::scan_other_word(const Unit* text, const Unit* end, const Unit* readable) {
  WordRun run;
  if (!read_long_word(text, readable, run)) run = read_word_by_character(text, end);
  const auto length = static_cast<size_t>(run.stop - text);
  return classify(text, end, run.stop, run.head, run.tail,
                  word_at_place_of(run.head, run.tail, length));
}

Lexeme detail::scan_blanks(const Unit* text, const Unit* end) {
  bool line_end = false;
  do {
    line_end |= *text == '\n';
    ++text;
  } while (text != end && is_blank(*text));
  return {text, WHITESPACE, Lexeme::kHidden | (line_end ? Lexeme::kMultiLine : 0)};
}

Lexeme detail::scan_other(const Unit* text, const Unit* end) {
  switch (*text) {
    case ')': return token(text + 1, RIGHT_PARENTHESIS);
    case '\'': return token(text + 1, SINGLE_QUOTE);
    case '\\': return token(text + 1, BACKSLASH);
    case '"':
      if (text + 1 == end) return token(end, QUOTE);
      return scan_quoted_string(text, end);
    case '/':
      if (at(text + 1, end, '/')) return hidden(match_comment(text, end).stop, COMMENT);
      if (at(text + 1, end, '*')) {
        Lexeme comment = token_or_broken(match_comment(text, end), COMMENT);
        comment.traits |= Lexeme::kHidden;
        return comment;
      }
      break;
    case '#':
      if (text + 1 != end && (text[1] == '"' || is_word(text[1]))) {
        return token_or_broken(match_seed_field_name(text, end), TAVO_PARSER_SEED_FLDNAME);
      }
      break;
    case '@':
      if (text + 1 != end && is_word(text[1])) {
        return token(end_of_run(text + 1, end), TAVO_PARSER_ENV_VAR);
      }
      break;
    case '(':
      if (begins_copy_ranges(text, end)) {
        return token_or_broken(match_copy_ranges(text, end), TAVO_PARSER_COPY_COL_SYNTAX);
      }
      return token(text + 1, LEFT_PARENTHESIS);
    case '+':
      if (text + 1 != end && is_digit(text[1]))
        return token(match_integer(text, end).stop, INTEGER);
      break;
    default: break;
  }
  return token_or_broken(match_bad_separator(text, end), BAD_SEP);
}

Match match_word_run(const Unit* text, const Unit* end) {
  const Unit* stop = end_of_run(text, end);
  return stop == text ? failed(text, RecognitionError::kEarlyExit) : matched(stop);
}

Match match_integer(const Unit* text, const Unit* end) {
  if (text != end && is_sign(*text)) ++text;
  const Unit* digits = text;
  while (text != end && is_digit(*text)) ++text;
  return text == digits ? failed(text, RecognitionError::kEarlyExit) : matched(text);
}

Match match_quoted_string(const Unit* text, const Unit* end) {
  if (!at(text, end, '"')) return failed(text, RecognitionError::kMismatchedToken);
  for (++text; text != end; ++text) {
    if (*text == '"') return matched(text + 1);
    if (*text == '\\' && at(text + 1, end, '"')) {
      ++text;
    } else if (next_character(text, end) == text + 2) {
      return failed(text, RecognitionError::kMismatchedSet);
    }
  }
  return failed(end, RecognitionError::kMismatchedToken);
}

Match match_comment(const Unit* text, const Unit* end) {
  if (!at(text, end, '/')) return failed(text, RecognitionError::kMismatchedToken);
  ++text;
  if (at(text, end, '/')) {
    while (text != end && *text != '\r' && *text != '\n') ++text;
    return matched(text);
  }
  if (!at(text, end, '*')) return failed(text, RecognitionError::kNoViableAlternative);
  for (++text; text != end; ++text) {
    if (*text == '*' && at(text + 1, end, '/')) return matched(text + 2);
  }
  return failed(end, RecognitionError::kMismatchedToken);
}

Match match_blanks(const Unit* text, const Unit* end) {
  const Unit* p = text;
  while (p != end && is_blank(*p)) ++p;
  return p == text ? failed(text, RecognitionError::kEarlyExit) : matched(p);
}

Match match_environment_variable(const Unit* text, const Unit* end) {
  return Sequence(text, end).character('@').rule(match_word_run).match();
}

Match match_seed_field_name(const Unit* text, const Unit* end) {
  Sequence name(text, end);
  name.character('#');
  if (name.next() == '"') return name.rule(match_quoted_string).match();
  if (name.next() != 0 && is_word(name.next())) return name.rule(match_word_run).match();
  return name.fail(RecognitionError::kNoViableAlternative).match();
}

Match match_copy_ranges(const Unit* text, const Unit* end) {
  if (!at(text, end, '(')) return failed(text, RecognitionError::kEarlyExit);
  Match range = matched(text);
  while (range.ok() && at(range.stop, end, '(')) range = match_copy_range(range.stop, end);
  return range;
}

Match match_affix(const Unit* text, const Unit* end) {
  Sequence affix(text, end);
  if (affix.next() == 'O') {
    integer_pair(affix.letters("OVERLAY"));
    return affix.character(',').rule(match_quoted_string).character(')').match();
  }
  switch (affix.next()) {
    case 'P': affix.letters("PREFIX"); break;
    case 'S': affix.letters("SUFFIX"); break;
    default: return failed(text, RecognitionError::kNoViableAlternative);
  }
  affix.character('(');
  switch (affix.next()) {
    case '"': affix.rule(match_quoted_string); break;
    case 'S': integer_pair(affix.letters("SEQ")).character(')'); break;
    case 'R': integer_pair(affix.letters("RAND")).character(')'); break;
    default: affix.fail(RecognitionError::kNoViableAlternative); break;
  }
  return affix.character(')').match();
}

Match match_bad_separator(const Unit* text, const Unit* end) {
  const bool accepted = text != end && *text != ',' && next_character(text, end) == text + 1;
  return accepted ? matched(text + 1) : failed(text, RecognitionError::kMismatchedSet);
}

}  // namespace tavo
