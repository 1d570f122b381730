#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "TAVOText.h"

namespace {

constexpr uint32_t kFailed = 0xFFFFFFFFu;

TEST(TrimSource, FlagOneCopiesTheResultBack) {
  wchar_t text[] = L"-ab--c-d-";
  wchar_t work[16] = L"~~~~~~~~~~~~";
  uint32_t length = 9;
  EXPECT_EQ(0u, TrimSourceW(text, &length, L"-", work, 1));
  EXPECT_STREQ(L"abcd", work);
  EXPECT_STREQ(L"abcd", text);
  EXPECT_EQ(4u, length);
}

TEST(TrimSource, FlagZeroLeavesTheTextCutUpAndThatIsMeant) {
  wchar_t text[] = L"-ab--c-d-";
  wchar_t work[16] = {};
  uint32_t length = 9;
  EXPECT_EQ(0u, TrimSourceW(text, &length, L"-", work, 0));
  EXPECT_STREQ(L"abcd", work);
  EXPECT_EQ(std::wstring(L"-ab\0-c\0d\0", 9), std::wstring(text, 9));
  EXPECT_EQ(9u, length);
}

TEST(TrimSource, AnyOtherFlagIsLikeZero) {
  for (const int32_t flag : {2, -1}) {
    wchar_t text[] = L"a-b";
    wchar_t work[4] = {};
    uint32_t length = 9;
    EXPECT_EQ(0u, TrimSourceW(text, &length, L"-", work, flag));
    EXPECT_EQ(9u, length);
    EXPECT_STREQ(L"a", text);
    EXPECT_STREQ(L"ab", work);
  }
}

TEST(TrimSource, TakesEveryCharacterOfTheSet) {
  wchar_t text[] = L"1 23.4-5";
  wchar_t work[16] = {};
  uint32_t length = 0;
  EXPECT_EQ(0u, TrimSourceW(text, &length, L" .-", work, 1));
  EXPECT_STREQ(L"12345", text);
  EXPECT_EQ(5u, length);
}

TEST(TrimSource, MakesNothingOfNothingButDelimiters) {
  wchar_t text[] = L"--";
  wchar_t work[4] = L"~~~";
  uint32_t length = 9;
  EXPECT_EQ(0u, TrimSourceW(text, &length, L"-", work, 1));
  EXPECT_STREQ(L"", text);
  EXPECT_STREQ(L"", work);
  EXPECT_EQ(0u, length);
}

TEST(TrimSource, AnEmptySetKeepsTheText) {
  wchar_t text[] = L"a-b";
  wchar_t work[4] = {};
  uint32_t length = 0;
  EXPECT_EQ(0u, TrimSourceW(text, &length, L"", work, 1));
  EXPECT_STREQ(L"a-b", text);
  EXPECT_EQ(3u, length);
}

TEST(TrimSource, RefusesAnAbsentTextAndOtherNulls) {
  wchar_t text[] = L"a-b";
  wchar_t work[4] = L"~";
  uint32_t length = 9;
  EXPECT_EQ(kFailed, TrimSourceW(nullptr, &length, L"-", work, 1));
  EXPECT_EQ(kFailed, TrimSourceW(text, &length, nullptr, work, 1));
  EXPECT_EQ(kFailed, TrimSourceW(text, &length, L"-", nullptr, 1));
  EXPECT_EQ(kFailed, TrimSourceW(text, nullptr, L"-", work, 1));
  EXPECT_EQ(kFailed, TrimSourceW(text, nullptr, L"-", work, 0)) << "whatever the flag";
  EXPECT_STREQ(L"~", work);
  EXPECT_STREQ(L"a-b", text);
  EXPECT_EQ(9u, length);
}

std::wstring normalized(std::wstring name, uint32_t max_length) {
  EXPECT_EQ(0u, NormalizeColName(name.data(), max_length));
  return name;
}

TEST(NormalizeColName, LeavesAQuotedNameUnchanged) {
  EXPECT_EQ(L"\"Name\"", normalized(L"\"Name\"", 6));
  EXPECT_EQ(L"\"Na\"me", normalized(L"\"Na\"me", 30));
}

TEST(NormalizeColName, UpperCasesAnyOtherName) {
  EXPECT_EQ(L"NAME", normalized(L"Name", 30));
  EXPECT_EQ(L"NA\"ME\"", normalized(L"Na\"me\"", 30));
  EXPECT_EQ(L"\"NAME", normalized(L"\"Name", 30));
}

TEST(NormalizeColName, TheSecondQuoteLiesBelowTheMaximumLength) {
  EXPECT_EQ(L"\"NAME\"", normalized(L"\"Name\"", 5));
  EXPECT_EQ(L"\"NAME\"", normalized(L"\"Name\"", 0));
  EXPECT_EQ(L"\"\"", normalized(L"\"\"", 2));
}

TEST(NormalizeColName, IsAlwaysZero) {
  EXPECT_EQ(0u, NormalizeColName(nullptr, 30));
  EXPECT_EQ(L"", normalized(L"", 30));
}

}  // namespace
