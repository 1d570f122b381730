#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string>
#include <vector>

#include "common/platform_status.h"
#include "platform/platform.h"

namespace {

using namespace tavo::platform;

constexpr uint32_t kUntouched = 0xABCD;

struct Result {
  uint32_t status = 0, count = kUntouched;
  std::wstring text;
};

// Calls convert(dst, dst_bytes, &count) with a buffer that has one more element than stated.
template <typename Convert>
Result run(uint32_t chars, Convert convert) {
  std::vector<wchar_t> dst(chars + 1, L'#');
  Result result;
  result.status =
      convert(dst.data(), chars * static_cast<uint32_t>(sizeof(wchar_t)), &result.count);
  EXPECT_EQ(dst[chars], L'#') << "nothing is written past the buffer";
  if (result.status == kOk) {
    EXPECT_LT(result.count, chars);
    EXPECT_EQ(dst[result.count], L'\0') << "terminated inside the buffer";
    result.text.assign(dst.data(), result.count);
  } else {
    EXPECT_EQ(result.count, kUntouched);
    if (chars != 0) {
      EXPECT_EQ(dst[0], L'\0') << "no part is left behind";
    }
  }
  return result;
}

Result from_utf8(const std::string& text, uint32_t chars) {
  return run(chars, [&](wchar_t* dst, uint32_t bytes, uint32_t* count) {
    auto length = static_cast<int32_t>(text.size());
    return TAVOCnvCharToWVarcharSz(text.data(), &length, dst, bytes, count, nullptr);
  });
}

TEST(CharToWide, CountsCharactersWithoutTheTerminator) {
  const Result result = from_utf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", 11);
  EXPECT_EQ(result.status, kOk);
  EXPECT_EQ(result.count, 4U);
  EXPECT_EQ(result.text, L"a\u00e9\u20ac\U0001F600");
}

TEST(CharToWide, TakesTheBufferOfLengthPlusOneThatItsCallerAllocates) {
  EXPECT_EQ(from_utf8("PRO=CCN", 8).text, L"PRO=CCN");
  EXPECT_EQ(from_utf8("PRO=CCN", 7).status, kBufferTooSmall);
  EXPECT_EQ(from_utf8("", 1).count, 0U);
  EXPECT_EQ(from_utf8("", 0).status, kBufferTooSmall);
}

TEST(CharToWide, KeepsANulInsideTheLength) {
  EXPECT_EQ(from_utf8(std::string("a\0b", 3), 4).text, std::wstring(L"a\0b", 3));
}

TEST(CharToWide, RefusesMalformedUtf8) {
  for (const char* bad : {"\x80", "a\xC3", "\xC3(", "\xC0\xAF", "\xC1\x81", "\xE0\x80\xAF",
                          "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x80\x80\xAF", "\xF4\x90\x80\x80",
                          "\xF5\x80\x80\x80", "\xFF", "\xE2\x82", "\xF0\x9F\x98", "\xE2\x28\xA1"}) {
    EXPECT_EQ(from_utf8(bad, 20).status, kSourceInvalid) << bad;
  }
  EXPECT_EQ(from_utf8("\xF4\x8F\xBF\xBF", 20).text, L"\U0010FFFF");
  EXPECT_EQ(from_utf8("\xED\x9F\xBF", 20).text, L"\uD7FF");
}

TEST(CharToWide, LeavesTheLengthAloneAndRefusesANegativeOne) {
  int32_t length = 3;
  wchar_t dst[4];
  uint32_t count = kUntouched;
  EXPECT_EQ(TAVOCnvCharToWVarcharSz("abc", &length, dst, sizeof dst, &count, nullptr), kOk);
  EXPECT_EQ(length, 3);
  length = -1;
  count = kUntouched;
  EXPECT_EQ(TAVOCnvCharToWVarcharSz("abc", &length, dst, sizeof dst, &count, nullptr),
            kLengthInvalid);
  EXPECT_EQ(count, kUntouched);
}

TEST(CharToWide, RefusesNullArguments) {
  int32_t length = 3;
  wchar_t dst[4];
  uint32_t count = 0;
  EXPECT_EQ(TAVOCnvCharToWVarcharSz(nullptr, &length, dst, 16, &count, nullptr), kArgumentInvalid);
  EXPECT_EQ(TAVOCnvCharToWVarcharSz("abc", nullptr, dst, 16, &count, nullptr), kArgumentInvalid);
  EXPECT_EQ(TAVOCnvCharToWVarcharSz("abc", &length, nullptr, 16, &count, nullptr),
            kArgumentInvalid);
  EXPECT_EQ(TAVOCnvCharToWVarcharSz("abc", &length, dst, 16, nullptr, nullptr), kArgumentInvalid);
}

TEST(VarcharToWide, TakesItsLengthFromThePrefix) {
  const char prefixed[] = {3, 0, 'a', 'b', 'c', 'd'};
  const Result result = run(4, [&](wchar_t* dst, uint32_t bytes, uint32_t* count) {
    return TAVOCnvVarcharToWVarcharSz(prefixed, nullptr, dst, bytes, count, nullptr);
  });
  EXPECT_EQ(result.text, L"abc");
  uint32_t count = 0;
  EXPECT_EQ(TAVOCnvVarcharToWVarcharSz(nullptr, nullptr, nullptr, 0, &count, nullptr),
            kArgumentInvalid);
}

TEST(VarcharSzToWide, GoesToTheTerminator) {
  const Result result = run(10, [](wchar_t* dst, uint32_t bytes, uint32_t* count) {
    return TAVOCnvVarcharSzToWVarcharSz("abc\0def", nullptr, dst, bytes, count, nullptr);
  });
  EXPECT_EQ(result.text, L"abc");
  uint32_t count = 0;
  EXPECT_EQ(TAVOCnvVarcharSzToWVarcharSz(nullptr, nullptr, nullptr, 0, &count, nullptr),
            kArgumentInvalid);
}

Result from_wide(const std::wstring& text, int32_t bytes, uint32_t chars) {
  return run(chars, [&](wchar_t* dst, uint32_t dst_bytes, uint32_t* count) {
    return TAVOCnvWCharToWVarcharSz(text.data(), &bytes, dst, dst_bytes, count);
  });
}

TEST(WideToWide, CopiesAsManyBytesAsTold) {
  EXPECT_EQ(from_wide(L"abcdef", 12, 4).text, L"abc");
  EXPECT_EQ(from_wide(std::wstring(L"a\0b", 3), 12, 4).text, std::wstring(L"a\0b", 3));
  EXPECT_EQ(from_wide(L"abc", 12, 3).status, kBufferTooSmall);
  EXPECT_EQ(from_wide(L"abc", 0, 1).count, 0U);
  EXPECT_EQ(from_wide(L"abc", 7, 9).status, kLengthInvalid);
  EXPECT_EQ(from_wide(L"abc", -4, 9).status, kLengthInvalid);
}

TEST(WideToWide, RefusesWhatIsNoCharacter) {
  for (const uint32_t bad : {0xD800U, 0xDFFFU, 0x110000U, 0xFFFFFFFFU}) {
    const std::wstring text = {L'a', static_cast<wchar_t>(bad)};
    EXPECT_EQ(from_wide(text, 8, 9).status, kSourceInvalid);
  }
}

TEST(WideToWide, RefusesNullArguments) {
  int32_t length = 4;
  wchar_t dst[4];
  uint32_t count = 0;
  EXPECT_EQ(TAVOCnvWCharToWVarcharSz(nullptr, &length, dst, 16, &count), kArgumentInvalid);
  EXPECT_EQ(TAVOCnvWCharToWVarcharSz(L"a", nullptr, dst, 16, &count), kArgumentInvalid);
  EXPECT_EQ(TAVOCnvWCharToWVarcharSz(L"a", &length, nullptr, 16, &count), kArgumentInvalid);
  EXPECT_EQ(TAVOCnvWCharToWVarcharSz(L"a", &length, dst, 16, nullptr), kArgumentInvalid);
  EXPECT_EQ(TAVOCnvWVarcharToWVarcharSz(nullptr, nullptr, dst, 16, &count), kArgumentInvalid);
}

TEST(WideToWide, ReadsTextAfterAPrefixThoughItIsNotAligned) {
  char prefixed[2 + 8] = {8, 0};
  std::memcpy(prefixed + 2, L"xy", 8);
  const Result result = run(3, [&](wchar_t* dst, uint32_t bytes, uint32_t* count) {
    return TAVOCnvWVarcharToWVarcharSz(prefixed, nullptr, dst, bytes, count);
  });
  EXPECT_EQ(result.text, L"xy");
}

std::string to_utf8(const wchar_t* text, int32_t* length, uint32_t room, uint32_t& status,
                    uint32_t& count) {
  std::vector<char> dst(room + 1, '#');
  count = kUntouched;
  status = TAVOCnvWVarcharSzToVarcharSz(text, length, dst.data(), room, &count, nullptr);
  EXPECT_EQ(dst[room], '#');
  if (status != kOk) {
    if (room != 0) {
      EXPECT_EQ(dst[0], '\0');
    }
    return {};
  }
  EXPECT_EQ(dst[count], '\0');
  return std::string(dst.data(), count);
}

TEST(WideToChar, StopsAtTheLengthOrTheTerminatorWhicheverIsFirst) {
  uint32_t status = 0, count = 0;
  int32_t length = 8;
  EXPECT_EQ(to_utf8(L"abc", &length, 10, status, count), "ab");
  EXPECT_EQ(length, 8);
  length = 400;
  EXPECT_EQ(to_utf8(L"abc", &length, 10, status, count), "abc");
  EXPECT_EQ(to_utf8(L"abc\u00e9", nullptr, 10, status, count), "abc\xC3\xA9");
  EXPECT_EQ(count, 5U);
  length = 0;
  EXPECT_EQ(to_utf8(L"abc", &length, 10, status, count), "");
  EXPECT_EQ(status, kOk);
}

TEST(WideToChar, KeepsRoomForTheTerminator) {
  uint32_t status = 0, count = 0;
  to_utf8(L"ab\u20ac", nullptr, 6, status, count);
  EXPECT_EQ(status, kOk);
  for (uint32_t room = 0; room < 6; ++room) {
    to_utf8(L"ab\u20ac", nullptr, room, status, count);
    EXPECT_EQ(status, kBufferTooSmall) << room;
    EXPECT_EQ(count, kUntouched);
  }
}

TEST(WideToChar, RefusesWhatIsNoCharacterABadLengthAndNull) {
  uint32_t status = 0, count = 0;
  const wchar_t bad[] = {L'a', static_cast<wchar_t>(0xD800), 0};
  to_utf8(bad, nullptr, 10, status, count);
  EXPECT_EQ(status, kSourceInvalid);
  for (int32_t length : {-4, 3}) {
    to_utf8(L"abc", &length, 10, status, count);
    EXPECT_EQ(status, kLengthInvalid);
  }
  char dst[4];
  EXPECT_EQ(TAVOCnvWVarcharSzToVarcharSz(nullptr, nullptr, dst, 4, &count, nullptr),
            kArgumentInvalid);
  EXPECT_EQ(TAVOCnvWVarcharSzToVarcharSz(L"a", nullptr, nullptr, 4, &count, nullptr),
            kArgumentInvalid);
  EXPECT_EQ(TAVOCnvWVarcharSzToVarcharSz(L"a", nullptr, dst, 4, nullptr, nullptr),
            kArgumentInvalid);
}

}  // namespace
