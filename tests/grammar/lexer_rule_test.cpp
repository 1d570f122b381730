// Single lexer rules: where they commit, and what they raise.
#include <gtest/gtest.h>

#include <string>

#include "TAVOLanguage.h"

namespace {

constexpr uint32_t kToken = 2, kNoViableAlternative = 3, kSet = 4, kEarlyExit = 5;

TAVORuleMatch match(uint32_t type, const std::wstring& text) {
  TAVORuleMatch found{};
  EXPECT_EQ(0u,
            TAVOLanguage_MatchRule(type, text.c_str(), static_cast<uint32_t>(text.size()), &found));
  return found;
}

void expect_match(uint32_t type, const std::wstring& text, uint32_t length) {
  const TAVORuleMatch found = match(type, text);
  EXPECT_EQ(1u, found.matched);
  EXPECT_EQ(length, found.length);
  EXPECT_EQ(0u, found.error);
}

void expect_error(uint32_t type, const std::wstring& text, uint32_t length, uint32_t error) {
  const TAVORuleMatch found = match(type, text);
  EXPECT_EQ(0u, found.matched);
  EXPECT_EQ(length, found.length);
  EXPECT_EQ(error, found.error);
}

TEST(LexerRule, OfEverySpellingMatchesItAndStopsThere) {
  for (uint32_t type = 4; type < 351; ++type) {
    TAVOTokenInfo info{};
    ASSERT_EQ(0u, TAVOLanguage_GetToken(type, &info));
    for (uint32_t i = 0; i < info.spellings; ++i) {
      const std::string spelling = TAVOLanguage_GetSpelling(type, i);
      const std::wstring text(spelling.begin(), spelling.end());
      const auto length = static_cast<uint32_t>(text.size());
      const TAVORuleMatch alone = match(type, text);
      EXPECT_EQ(1u, alone.matched) << spelling;
      EXPECT_EQ(length, alone.length) << spelling;
      EXPECT_EQ(1u, match(type, text + L"%").matched) << spelling;
      EXPECT_EQ(length, match(type, text + L"%").length) << spelling;
    }
  }
}

TEST(LexerRule, ProCommitsAtTheFourthCharacterDeliberately) {
  expect_match(TAVO_PARSER_PROVIDER, L"PRO", 3);
  expect_match(TAVO_PARSER_PROVIDER, L"PROX", 3);
  expect_match(TAVO_PARSER_PROVIDER, L"provider", 8);
  expect_error(TAVO_PARSER_PROVIDER, L"PROV", 4, kSet);
  expect_error(TAVO_PARSER_PROVIDER, L"PROVX", 4, kSet);
  expect_error(TAVO_PARSER_PROVIDER, L"PROVIDEX", 7, kSet);
  expect_error(TAVO_PARSER_PROVIDER, L"PRX", 2, kSet);
  expect_error(TAVO_PARSER_PROVIDER, L"", 0, kSet);
}

TEST(LexerRule, WhereTwoSpellingsDifferNeitherIsNoViableAlternative) {
  expect_match(TAVO_PARSER_PROVIDER_LOOKUP, L"LKP", 3);
  expect_error(TAVO_PARSER_PROVIDER_LOOKUP, L"LX", 1, kNoViableAlternative);
  expect_error(TAVO_PARSER_PROVIDER_LOOKUP, L"X", 0, kSet);
  expect_error(TAVO_PARSER_PROVIDER_LOOKUP, L"LOX", 2, kSet);
}

TEST(LexerRule, KeyLiteralsMatchInTheirOwnCaseOnly) {
  expect_match(TAVO_PARSER_METHOD_HASH, L"TAVO:METHOD:HASH", 16);
  expect_error(TAVO_PARSER_METHOD_HASH, L"TAVO:Method:HASH", 6, kSet);
}

TEST(LexerRule, ANumberedKeywordTakesUpToTwoDigits) {
  expect_match(TAVO_PARSER_CMN_PARM_FLDDEF, L"FLDDEF", 6);
  expect_match(TAVO_PARSER_CMN_PARM_FLDDEF, L"FLDDEF0", 6);
  expect_match(TAVO_PARSER_CMN_PARM_FLDDEF, L"FLDDEF7", 7);
  expect_match(TAVO_PARSER_CMN_PARM_FLDDEF, L"FLDDEF100", 8);
}

TEST(LexerRule, OfANumber) {
  expect_match(INTEGER, L"12", 2);
  expect_match(INTEGER, L"+12", 3);
  expect_match(INTEGER, L"-12a", 3);
  expect_error(INTEGER, L"+", 1, kEarlyExit);
  expect_error(INTEGER, L"x", 0, kEarlyExit);
  expect_error(INTEGER, L"", 0, kEarlyExit);
}

TEST(LexerRule, OfAnUnquotedStringWithoutAnyIsAnEarlyExit) {
  expect_match(TAVO_PARSER_STRING_WITHOUT_QUOTES, L"a-b.c:d_9%", 9);
  expect_error(TAVO_PARSER_STRING_WITHOUT_QUOTES, L"%", 0, kEarlyExit);
  expect_error(TAVO_PARSER_STRING_WITHOUT_QUOTES, L"", 0, kEarlyExit);
}

TEST(LexerRule, OfAQuotedString) {
  expect_match(TAVO_PARSER_STRING_WITH_QUOTES, L"\"\"", 2);
  expect_match(TAVO_PARSER_STRING_WITH_QUOTES, L"\"a\\\"b\" c", 6);
  EXPECT_EQ(0u, match(TAVO_PARSER_STRING_WITH_QUOTES, L"\"abc").matched);
  EXPECT_EQ(4u, match(TAVO_PARSER_STRING_WITH_QUOTES, L"\"abc").length);
  EXPECT_EQ(0u, match(TAVO_PARSER_STRING_WITH_QUOTES, L"\"abc\\\"").matched);
  EXPECT_EQ(2u, match(TAVO_PARSER_STRING_WITH_QUOTES, L"\"a\x1F600\"").length);
  expect_error(TAVO_PARSER_STRING_WITH_QUOTES, L"abc", 0, kToken);
}

TEST(LexerRule, OfASeedFieldNameRaisesNoViableAlternativeAfterTheSign) {
  expect_match(TAVO_PARSER_SEED_FLDNAME, L"#CUSTNO", 7);
  expect_match(TAVO_PARSER_SEED_FLDNAME, L"#\"x y\"", 6);
  expect_error(TAVO_PARSER_SEED_FLDNAME, L"# CUSTNO", 1, kNoViableAlternative);
  expect_error(TAVO_PARSER_SEED_FLDNAME, L"#", 1, kNoViableAlternative);
  expect_error(TAVO_PARSER_SEED_FLDNAME, L"x", 0, kToken);
}

TEST(LexerRule, OfAnEnvironmentVariable) {
  expect_match(TAVO_PARSER_ENV_VAR, L"@HOME_KEY=", 9);
  expect_error(TAVO_PARSER_ENV_VAR, L"@", 1, kEarlyExit);
  expect_error(TAVO_PARSER_ENV_VAR, L"@ x", 1, kEarlyExit);
}

TEST(LexerRule, OfCopyRangesIsCommittedAfterTheParenthesis) {
  expect_match(TAVO_PARSER_COPY_COL_SYNTAX, L"(1,4)", 5);
  expect_match(TAVO_PARSER_COPY_COL_SYNTAX, L"(1,4)(7,2,\"x\")", 14);
  expect_match(TAVO_PARSER_COPY_COL_SYNTAX, L"(1,4) (7,2)", 5);
  EXPECT_EQ(4u, match(TAVO_PARSER_COPY_COL_SYNTAX, L"(1,4").length);
  EXPECT_EQ(0u, match(TAVO_PARSER_COPY_COL_SYNTAX, L"(1,4").matched);
  EXPECT_EQ(0u, match(TAVO_PARSER_COPY_COL_SYNTAX, L"(1,4)(x").matched);
  EXPECT_EQ(6u, match(TAVO_PARSER_COPY_COL_SYNTAX, L"(1,4)(x").length);
  EXPECT_EQ(2u, match(TAVO_PARSER_COPY_COL_SYNTAX, L"(1 ,4)").length);
}

TEST(LexerRule, OfAnAffixInstruction) {
  constexpr uint32_t kAffix = TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX;
  expect_match(kAffix, L"prefix(\"x\")", 11);
  expect_match(kAffix, L"SUFFIX(SEQ(1,3))", 16);
  expect_match(kAffix, L"PREFIX(RAND(2,5))", 17);
  expect_match(kAffix, L"OVERLAY(1,4,\"abc\")", 18);
  EXPECT_EQ(11u, match(kAffix, L"OVERLAY(1,4)").length);
  EXPECT_EQ(0u, match(kAffix, L"OVERLAY(1,4)").matched);
  EXPECT_EQ(0u, match(kAffix, L"PREFIX (\"x\")").matched);
  EXPECT_EQ(0u, match(kAffix, L"XREFIX(\"x\")").matched);
}

TEST(LexerRule, OfPunctuationIsAMismatchedToken) {
  for (const uint32_t type :
       {COMMA, EQUAL, LEFT_PARENTHESIS, RIGHT_PARENTHESIS, SINGLE_QUOTE, QUOTE, BACKSLASH}) {
    expect_error(type, L"x", 0, kToken);
    expect_error(type, L"", 0, kToken);
  }
}

TEST(LexerRule, OfAFragmentMatchesOneCharacter) {
  for (uint32_t type = 4; type < 351; ++type) {
    TAVOTokenInfo info{};
    TAVOLanguage_GetToken(type, &info);
    if (info.kind != TAVO_KIND_FRAGMENT) continue;
    const std::string name = info.name;
    std::wstring accepted;
    for (wchar_t c = 1; c < 0x250; ++c) {
      if (match(type, std::wstring(2, c)).matched != 0) accepted += c;
    }
    if (name.size() == 1) {
      const auto letter = static_cast<wchar_t>(name[0]);
      EXPECT_EQ((std::wstring{letter, static_cast<wchar_t>(letter + 32)}), accepted);
      expect_error(type, L"%", 0, kSet);
    } else {
      EXPECT_EQ(name == "DIGIT"   ? L"0123456789"
                : name == "DOT"   ? L"."
                : name == "COLON" ? L":"
                                  : L"_",
                accepted);
      expect_error(type, L"%", 0, name == "DIGIT" ? kSet : kToken);
    }
  }
}

TEST(LexerRule, OfABadSeparatorTakesAnyCharacterButAComma) {
  expect_match(BAD_SEP, L";x", 1);
  expect_match(BAD_SEP, L"a", 1);
  EXPECT_EQ(0u, match(BAD_SEP, L",").matched);
  EXPECT_EQ(kSet, match(BAD_SEP, L",").error);
  EXPECT_EQ(kSet, match(BAD_SEP, L"\x1F600").error);
  EXPECT_EQ(0u, match(BAD_SEP, L"").matched);
}

TEST(LexerRule, OfHiddenTokens) {
  expect_match(WHITESPACE, L" \t\n\f\rx", 5);
  expect_error(WHITESPACE, L"x", 0, kEarlyExit);
  expect_match(COMMENT, L"// x\ny", 4);
  expect_match(COMMENT, L"/* x */ y", 7);
  EXPECT_EQ(0u, match(COMMENT, L"/*/").matched);
  EXPECT_EQ(0u, match(COMMENT, L"/x").matched);
}

TEST(LexerRule, ThatDoesNotExistIsRefused) {
  TAVORuleMatch found;
  for (const uint32_t type : {0u, 1u, 2u, 3u, 351u, 0xFFFFFFFFu}) {
    EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_MatchRule(type, L"x", 1, &found)) << type;
  }
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_MatchRule(INTEGER, nullptr, 1, &found));
  EXPECT_EQ(TAVO_LANGUAGE_END, TAVOLanguage_MatchRule(INTEGER, L"x", 1, nullptr));
  EXPECT_EQ(7095u, TAVOLanguage_MatchRule(INTEGER, L"\xDC00", 1, &found));
}

TEST(LexerRule, NeverMatchesMoreThanItsText) {
  // The text is truncated inside every kind of token: no rule reads past its end.
  for (const std::wstring whole : {L"OVERLAY(1,4,\"abc\")", L"(1,4)(7,2,\"x\")", L"#\"x\"",
                                   L"3X 2X 4X", L"/* x */", L"PROVIDER", L"FLDDEF99"}) {
    for (size_t length = 0; length <= whole.size(); ++length) {
      const std::wstring text = whole.substr(0, length);
      for (uint32_t type = 4; type < 351; ++type) {
        EXPECT_LE(match(type, text).length, length);
      }
    }
  }
}

}  // namespace
