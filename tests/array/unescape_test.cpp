#include <gtest/gtest.h>

#include <cwchar>
#include <string>
#include <vector>

#include "TAVOParser.h"

namespace {

struct Result {
  std::wstring text;  // the whole buffer
  uint32_t length;
};

// The buffer has exactly the size of the text, possibly without a terminator.
Result unescape(const std::wstring& text, uint32_t length_in_bytes) {
  std::vector<wchar_t> buffer(text.begin(), text.end());
  buffer.shrink_to_fit();
  EXPECT_EQ(0u, ReplaceEscapedQuoteWithQuoteW(buffer.data(), &length_in_bytes));
  return {std::wstring(buffer.begin(), buffer.end()), length_in_bytes};
}

Result unescape(const std::wstring& text) {
  return unescape(text + L'\0', static_cast<uint32_t>((text.size() + 1) * 4));
}

TEST(Unescape, APairBecomesAQuote) {
  const Result result = unescape(L"a\\\"b");
  EXPECT_STREQ(L"a\"b", result.text.c_str());
  EXPECT_EQ(16u, result.length);
}

TEST(Unescape, ManyPairs) {
  const Result result = unescape(L"\\\"\\\"x\\\"");
  EXPECT_STREQ(L"\"\"x\"", result.text.c_str());
  EXPECT_EQ(20u, result.length);
}

TEST(Unescape, WithoutAPairNothingIsTouched) {
  for (const std::wstring text : {L"", L"abc", L"\\", L"\"", L"\"\\", L"\\\\", L"a\\ \""}) {
    const Result result = unescape(text);
    EXPECT_EQ(text + L'\0', result.text);
    EXPECT_EQ((text.size() + 1) * 4, result.length);
  }
}

TEST(Unescape, TwoBackslashesAndAQuoteKeepTheFirstBackslash) {
  EXPECT_STREQ(L"\\\"", unescape(L"\\\\\"").text.c_str());
}

TEST(Unescape, WalksOneCharacterLessThanTheLength) {
  // The last character is never read: a pair that includes it does not count.
  const Result result = unescape(L"ab\\\"", 16);
  EXPECT_EQ(L"ab\\\"", result.text);
  EXPECT_EQ(16u, result.length);
}

TEST(Unescape, ALengthOfLessThanTwoCharactersDoesNothing) {
  for (const uint32_t length : {0u, 1u, 3u, 4u, 7u}) {
    const Result result = unescape(L"\\\"", length);
    EXPECT_EQ(L"\\\"", result.text) << length;
    EXPECT_EQ(length, result.length);
  }
}

TEST(Unescape, StopsAtANulCharacter) {
  using namespace std::string_literals;
  const Result untouched = unescape(L"a\0\\\"b\0"s, 24);
  EXPECT_EQ(L"a\0\\\"b\0"s, untouched.text);
  EXPECT_EQ(24u, untouched.length);
  const Result cut = unescape(L"\\\"a\0b\0"s, 24);
  EXPECT_STREQ(L"\"a", cut.text.c_str());
  EXPECT_EQ(12u, cut.length);
}

TEST(Unescape, ALengthThatIsNoMultipleOfFourIsRoundedDown) {
  const Result result = unescape(L"\\\"abc", 15);
  EXPECT_EQ(12u / 4 - 1, 2u);
  EXPECT_STREQ(L"\"", result.text.c_str()) << "two characters are walked";
  EXPECT_EQ(8u, result.length);
}

TEST(Unescape, NullIsAFailure) {
  wchar_t text[] = L"x";
  uint32_t length = 8;
  EXPECT_EQ(0xFFFFFFFFu, ReplaceEscapedQuoteWithQuoteW(nullptr, &length));
  EXPECT_EQ(0xFFFFFFFFu, ReplaceEscapedQuoteWithQuoteW(text, nullptr));
}

}  // namespace
