#include "Grammar/lexer/lexer_rule.h"

#include <string_view>

#include "Grammar/lexer/character_class.h"
#include "Grammar/lexer/vocabulary.h"
#include "TAVOParser.h"

namespace tavo {
namespace {

using Unit = uint16_t;

Match single(const Unit* text, const Unit* end, bool (*accepts)(uint32_t), RecognitionError error) {
  const bool ok = text != end && accepts(*text);
  return {ok ? text + 1 : text, ok ? RecognitionError::kNone : error};
}

// The spellings of one token as alternatives. Their common prefix is matched, and the rule commits
// at the first character where they differ. It never backtracks: PROV is not PRO.
Match match_spellings(const TokenInfo& info, const Unit* text, const Unit* end) {
  const bool fold = info.kind != TokenKind::kKeyLiteral;
  std::string_view chosen = spelling(info.first_spelling);  // stands for all that still fit
  for (size_t i = 0;; ++i) {
    const uint32_t c = text == end ? 0 : (fold ? to_upper(*text) : *text);
    bool differ = false, ends = false, fits = false;
    std::string_view next = chosen;
    for (size_t k = 0; k < info.spelling_count; ++k) {
      const std::string_view s = spelling(info.first_spelling + k);
      if (s.size() < i || s.substr(0, i) != chosen.substr(0, i)) continue;
      if (s.size() == i) {
        ends = true;
        continue;
      }
      differ |= chosen.size() <= i || s[i] != chosen[i];
      if (text != end && static_cast<unsigned char>(s[i]) == c && !fits) {
        fits = true;
        next = s;
      }
    }
    if (!fits) {
      if (ends) return {text, RecognitionError::kNone};
      return {text,
              differ ? RecognitionError::kNoViableAlternative : RecognitionError::kMismatchedSet};
    }
    chosen = next;
    ++text;
  }
}

Match match_numbered(const TokenInfo& info, const Unit* text, const Unit* end) {
  Match match = match_spellings(info, text, end);
  if (!match.ok()) return match;
  if (match.stop != end && is_digit(*match.stop) && *match.stop != '0') {
    ++match.stop;
    if (match.stop != end && is_digit(*match.stop)) ++match.stop;
  }
  return match;
}

Match match_pattern(uint32_t type, const Unit* text, const Unit* end) {
  switch (type) {
    case INTEGER: return match_integer(text, end);
    case TAVO_PARSER_STRING_WITHOUT_QUOTES: return match_word_run(text, end);
    case TAVO_PARSER_STRING_WITH_QUOTES: return match_quoted_string(text, end);
    case TAVO_PARSER_ENV_VAR: return match_environment_variable(text, end);
    case TAVO_PARSER_SEED_FLDNAME: return match_seed_field_name(text, end);
    case TAVO_PARSER_COPY_COL_SYNTAX: return match_copy_ranges(text, end);
    case COMMENT: return match_comment(text, end);
    case WHITESPACE: return match_blanks(text, end);
    case BAD_SEP: return match_bad_separator(text, end);
    default: return match_affix(text, end);
  }
}

Match match_fragment(uint32_t type, const Unit* text, const Unit* end) {
  const std::string_view name = TAVOParserTokenNames[type];
  if (name.size() == 1) {
    const bool ok = text != end && to_upper(*text) == static_cast<unsigned char>(name[0]);
    return {ok ? text + 1 : text, ok ? RecognitionError::kNone : RecognitionError::kMismatchedSet};
  }
  if (name == "DIGIT") return single(text, end, is_digit, RecognitionError::kMismatchedSet);
  const auto expects = [&](uint32_t c) { return text != end && *text == c; };
  const bool ok = name == "DOT" ? expects('.') : name == "COLON" ? expects(':') : expects('_');
  return {ok ? text + 1 : text, ok ? RecognitionError::kNone : RecognitionError::kMismatchedToken};
}

}  // namespace

Match match_rule(uint32_t type, const Unit* text, const Unit* end) {
  const TokenInfo info = token_info(type);
  switch (info.kind) {
    case TokenKind::kReserved: return {text, RecognitionError::kNoViableAlternative};
    case TokenKind::kPattern: return match_pattern(type, text, end);
    case TokenKind::kFragment: return match_fragment(type, text, end);
    case TokenKind::kNumberedKeyword: return match_numbered(info, text, end);
    case TokenKind::kPunctuation: {
      Match match = match_spellings(info, text, end);
      if (!match.ok()) match.error = RecognitionError::kMismatchedToken;
      return match;
    }
    case TokenKind::kKeyword:
    case TokenKind::kValue:
    case TokenKind::kKeyLiteral: return match_spellings(info, text, end);
  }
  return {text, RecognitionError::kNoViableAlternative};
}

}  // namespace tavo
