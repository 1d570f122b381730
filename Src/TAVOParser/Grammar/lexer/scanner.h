// The lexical rules, as functions over UTF-16 text: which token is at this place? They know nothing
// of the runtime, keep no state and allocate no memory.
#pragma once

#include <cstdint>

#include "Grammar/lexer/character_class.h"
#include "Grammar/lexer/vocabulary.h"
#include "Grammar/lexer/word_run.h"
#include "TAVOParserTokens.h"

namespace tavo {

// Kinds of recognition error, numbered as the runtime numbers its exceptions.
enum class RecognitionError : uint8_t {
  kNone = 0,
  kMismatchedToken = 2,
  kNoViableAlternative = 3,
  kMismatchedSet = 4,
  kEarlyExit = 5,
};

// Where a rule ended. Without an error `stop` is one past its last code unit; with one it is the
// offending character, or the end of the text.
struct Match {
  const uint16_t* stop;
  RecognitionError error;

  constexpr bool ok() const {
    return error == RecognitionError::kNone;
  }
};

// The characters that always are a token by themselves.
enum class Sign : uint16_t { kComma = ',', kEqual = '=', kRightParenthesis = ')' };

// The lexeme at one place of the text. Fits in two registers.
struct Lexeme {
  static constexpr uint32_t kHidden = 0x100;     // white space or a comment
  static constexpr uint32_t kMultiLine = 0x200;  // may contain line ends or surrogate pairs

  const uint16_t* stop;  // as in Match
  uint32_t type;         // token type; 0 after a recognition error
  uint32_t traits;       // recognition error, kHidden, kMultiLine; never 0 with an error

  constexpr RecognitionError error() const {
    return static_cast<RecognitionError>(traits & 0xFF);
  }
  constexpr bool hidden() const {
    return (traits & kHidden) != 0;
  }
  constexpr bool multi_line() const {
    return (traits & kMultiLine) != 0;
  }
};

namespace detail {

constexpr Lexeme token(const uint16_t* stop, uint32_t type) {
  return {stop, type, 0};
}
// Classifies a run of word characters: keyword, structured value, number or unquoted string. head,
// tail: as in WordRun; candidate: the only word of the vocabulary that it can be.
Lexeme classify(const uint16_t* text, const uint16_t* end, const uint16_t* stop, uint64_t head,
                uint64_t tail, const Word& candidate);
// Scans a word that is too long, or too close to the end of readable memory, to be read in one
// step.
Lexeme scan_other_word(const uint16_t* text, const uint16_t* end, const uint16_t* readable);

// Scans a lexeme that begins with this run of word characters, found before. Inline, since most of
// a statement is keywords.
inline Lexeme scan_run(const uint16_t* text, const uint16_t* end, const WordRun& run,
                       size_t length) {
  const Word& word = word_at_place_of(run.head, run.tail, length);
  if (word.head == run.head && word.tail == run.tail && word.plain_length == length) [[likely]] {
    return token(run.stop, word.type);
  }
  if (is_numbered_keyword(run.head, length)) return token(run.stop, TAVO_PARSER_CMN_PARM_FLDDEF);
  return classify(text, end, run.stop, run.head, run.tail, word);
}
// The same, and finds the run. Kept small: the service's window inlines it.
inline Lexeme scan_word(const uint16_t* text, const uint16_t* end, const uint16_t* readable) {
  WordRun run;
  if (!read_word(text, readable, run)) [[unlikely]] {
    return scan_other_word(text, end, readable);
  }
  const auto length = static_cast<size_t>(run.stop - text);
  const Word& word = word_at_place_of(run.head, run.tail, length);
  if (word.head == run.head && word.tail == run.tail && word.plain_length == length) [[likely]] {
    return token(run.stop, word.type);
  }
  return classify(text, end, run.stop, run.head, run.tail, word);
}
Lexeme scan_blanks(const uint16_t* text, const uint16_t* end);
// Scans a lexeme that does not begin with a word character, a blank, a comma or an equals sign.
Lexeme scan_other(const uint16_t* text, const uint16_t* end);

// Scans a lexeme that does not begin with a word character.
inline Lexeme scan_no_word(const uint16_t* text, const uint16_t* end) {
  const uint32_t c = *text;
  if (c == ',') return token(text + 1, COMMA);
  if (c == '=') return token(text + 1, EQUAL);
  if (!is_blank(c)) return scan_other(text, end);
  if (c != ' ' || (text + 1 != end && is_blank(text[1]))) return scan_blanks(text, end);
  return {text + 1, WHITESPACE, Lexeme::kHidden};
}

}  // namespace detail

// Recognizes the one token at text, which is before end. Consumes at least one code unit, except
// that after an error the offending character may be the first one. readable: end of readable
// memory; the units from end to there are 0.
inline Lexeme scan(const uint16_t* text, const uint16_t* end, const uint16_t* readable) {
  if (is_word(*text)) [[likely]] {
    return detail::scan_word(text, end, readable);
  }
  return detail::scan_no_word(text, end);
}

inline Lexeme scan(const uint16_t* text, const uint16_t* end) {
  return scan(text, end, end);
}

// ---- single rules, each committed from its first character -------------------------------------

Match match_word_run(const uint16_t* text, const uint16_t* end);       // unquoted string
Match match_integer(const uint16_t* text, const uint16_t* end);        // sign and digits
Match match_quoted_string(const uint16_t* text, const uint16_t* end);  // "..."
Match match_comment(const uint16_t* text, const uint16_t* end);
Match match_blanks(const uint16_t* text, const uint16_t* end);
Match match_environment_variable(const uint16_t* text, const uint16_t* end);  // @NAME
Match match_seed_field_name(const uint16_t* text, const uint16_t* end);       // #NAME
Match match_copy_ranges(const uint16_t* text, const uint16_t* end);           // (1,4)(7,2)
Match match_affix(const uint16_t* text, const uint16_t* end);  // PREFIX(...), OVERLAY(...)
Match match_bad_separator(const uint16_t* text, const uint16_t* end);

}  // namespace tavo
