// Reading a quoted string several characters at a time gives the rule's result: for every length,
// and for every special character and its neighbors at every place.
#include <gtest/gtest.h>

#include <string>

#include "TAVOLanguage.h"
#include "TAVOParserTokens.h"

namespace {

TAVOTextToken first_token(const std::wstring& text) {
  TAVOTextToken first{};
  const auto keep = [](const TAVOTextToken* token, void* context) -> uint32_t {
    *static_cast<TAVOTextToken*>(context) = *token;
    return 1;
  };
  EXPECT_EQ(
      1u, TAVOLanguage_ReadTokens(text.c_str(), static_cast<uint32_t>(text.size()), keep, &first));
  return first;
}

void compare(const std::wstring& text) {
  TAVORuleMatch rule{};
  ASSERT_EQ(0u, TAVOLanguage_MatchRule(TAVO_PARSER_STRING_WITH_QUOTES, text.c_str(),
                                       static_cast<uint32_t>(text.size()), &rule));
  const TAVOTextToken token = first_token(text);
  if (rule.matched != 0) {
    EXPECT_EQ(uint32_t{TAVO_PARSER_STRING_WITH_QUOTES}, token.type);
    EXPECT_EQ(rule.length, token.length);
  } else {
    EXPECT_EQ(0u, token.type);
    EXPECT_EQ(rule.length, token.offending);
  }
}

// Line of the token after the string.
uint32_t line_after(const std::wstring& string) {
  const std::wstring text = string + L"=";
  uint32_t line = 0;
  const auto keep = [](const TAVOTextToken* token, void* context) -> uint32_t {
    *static_cast<uint32_t*>(context) = token->line;
    return 0;
  };
  EXPECT_EQ(0u,
            TAVOLanguage_ReadTokens(text.c_str(), static_cast<uint32_t>(text.size()), keep, &line));
  return line;
}

TEST(QuotedString, IsWhatTheRuleMakesOfItWhateverStandsInItAtWhateverPlace) {
  const std::wstring specials = {L'"',      L'\\',     L'\n',     L'\r',      L',',      L' ',
                                 L'!',      L'#',      L'[',      L']',       L'\t',     L'\v',
                                 L'\x7F',   L'\xE9',   L'\x222',  L'\x225C',  L'\x7FFF', L'\x8000',
                                 L'\xD7FF', L'\xE000', L'\xFFFF', L'\x10000', L'\x1F600'};
  for (const wchar_t special : specials) {
    for (size_t length = 1; length <= 26; ++length) {
      for (size_t place = 0; place < length; ++place) {
        std::wstring inside(length, L'a');
        inside[place] = special;
        SCOPED_TRACE(std::to_string(static_cast<uint32_t>(special)) + " at " +
                     std::to_string(place) + " of " + std::to_string(length));
        compare(L"\"" + inside + L"\"");
        compare(L"\"" + inside + L"\", NEXT=1");
        compare(L"\"" + inside);
        compare(L"\"" + inside + L"\\\"\"");
      }
    }
  }
}

TEST(QuotedString, CountsTheLineEndsInIt) {
  for (size_t length = 0; length <= 26; ++length) {
    const std::wstring plain(length, L'a');
    EXPECT_EQ(1u, line_after(L"\"" + plain + L"\""));
    EXPECT_EQ(2u, line_after(L"\"" + plain + L"\n\""));
    EXPECT_EQ(3u, line_after(L"\"\n" + plain + L"\n\""));
    EXPECT_EQ(2u, line_after(L"\"" + plain + L"\\\"\n\""));
  }
}

}  // namespace
