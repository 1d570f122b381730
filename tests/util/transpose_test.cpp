#include <gtest/gtest.h>

#include <string>

#include "TAVONumericText.h"

namespace {

constexpr uint32_t kFailed = 0xFFFFFFFFu;

struct Outcome {
  uint32_t status;
  std::string digits;
};

Outcome transpose(const std::string& digits, uint64_t key, int32_t shift) {
  std::string out(digits.size() + 1, '~');
  const uint32_t status =
      PXTransposeNum(digits.c_str(), out.data(), static_cast<int16_t>(digits.size()), key, shift);
  EXPECT_EQ('~', out.back()) << "the destination is not terminated";
  out.pop_back();
  return {status, out};
}

// The order of a row, spelled with the digits that it puts into each place.
constexpr const char* kRows[23] = {"1243", "4312", "3412", "2143", "4213", "1432", "2413", "3142",
                                   "2314", "1423", "4132", "3421", "3214", "1324", "4231", "2431",
                                   "1342", "2134", "3124", "4321", "4123", "3241", "2341"};

TEST(Transpose, PutsTheOrderOfItsRowToEachGroupOfFour) {
  for (uint64_t key = 0; key < 23; ++key) {
    const std::string row = kRows[key];
    std::string expected = row;
    for (const char digit : row) expected += static_cast<char>(digit + 4);
    EXPECT_EQ(expected, transpose("12345678", key, 0).digits) << key;
    std::string letters;
    for (const char digit : row) letters += static_cast<char>('a' + (digit - '1') + 8);
    EXPECT_EQ(letters, transpose("abcdefghijkl", key, 0).digits.substr(8)) << key;
  }
}

TEST(Transpose, KeyTwentyThreeIsRowZeroAgainAndTwentyFourRowOne) {
  EXPECT_EQ("1243", transpose("1234", 23, 0).digits);
  EXPECT_EQ("4312", transpose("1234", 24, 0).digits);
  EXPECT_EQ(transpose("1234", UINT64_MAX % 23, 0).digits, transpose("1234", UINT64_MAX, 0).digits);
}

TEST(Transpose, ShiftTenMakesZeroToThreeOfFourZeros) {
  const Outcome outcome = transpose("0000", 0, 10);
  EXPECT_EQ(0u, outcome.status);
  EXPECT_EQ("0132", outcome.digits);  // 0123 in the order 1 2 4 3
}

TEST(Transpose, TheTwoWidthsAgree) {
  for (uint64_t key = 0; key < 23; ++key) {
    for (const int32_t shift : {0, 1, 7, 10, 1000, -3, 70000, -70000}) {
      wchar_t wide[13] = {};
      EXPECT_EQ(0u, PXTransposeNumW(L"314159265358", wide, 12, key, shift));
      const Outcome narrow = transpose("314159265358", key, shift);
      EXPECT_EQ(0u, narrow.status);
      EXPECT_EQ(std::wstring(narrow.digits.begin(), narrow.digits.end()), wide);
    }
  }
}

TEST(Transpose, RefusesALengthAboveTwelveAndWritesNothing) {
  const Outcome outcome = transpose("1234567890123", 0, 0);
  EXPECT_EQ(kFailed, outcome.status);
  EXPECT_EQ(std::string(13, '~'), outcome.digits);
  wchar_t wide[2] = {L'~', L'~'};
  EXPECT_EQ(kFailed, PXTransposeNumW(L"1234567890123", wide, 13, 0, 0));
  EXPECT_EQ(L'~', wide[0]);
}

TEST(Transpose, RefusesANegativeLengthAndNulls) {
  char out[4] = {'~', '~', '~', '~'};
  EXPECT_EQ(kFailed, PXTransposeNum("1234", out, -1, 0, 0));
  EXPECT_EQ(kFailed, PXTransposeNum(nullptr, out, 4, 0, 0));
  EXPECT_EQ(kFailed, PXTransposeNum("1234", nullptr, 4, 0, 0));
  EXPECT_EQ('~', out[0]);
}

TEST(Transpose, RepeatsAPassThatMadeEveryDigitZero) {
  // 9 + 1 and 8 + 2 are 0 and 0; the second pass makes them 1 and 2.
  const Outcome outcome = transpose("98", 0, 1);
  EXPECT_EQ(0u, outcome.status);
  EXPECT_EQ("12", outcome.digits);
}

TEST(Transpose, StopsWherePassesWouldRepeatForEver) {
  for (const int32_t shift : {10, 20, 30000, -10}) {
    const Outcome outcome = transpose("0", 0, shift);
    EXPECT_EQ(kFailed, outcome.status) << shift;
    EXPECT_EQ("~", outcome.digits) << shift;
  }
  EXPECT_EQ(0u, transpose("0", 0, 0).status);
  EXPECT_EQ("1", transpose("0", 0, 11).digits);
}

TEST(Transpose, StopsForNoDigitsUnlessThereIsNoShift) {
  EXPECT_EQ(0u, transpose("", 0, 0).status);
  EXPECT_EQ(kFailed, transpose("", 0, 3).status);
}

TEST(Transpose, AZeroSumOfDigitsOfBothSignsIsRepeatedToo) {
  // shift -1 adds -1, 0, 1: the sum of -1 (0 - 1), 0 and 1 is 0, so a second pass makes -2, 0, 2,
  // and so on for ever.
  EXPECT_EQ(kFailed, transpose("000", 0, -1).status);
}

TEST(Transpose, TheRemainderTakesTheSignOfTheDividend) {
  // 1 - 15 is -14, remainder -4: the character four below "0".
  const Outcome outcome = transpose("1", 0, -15);
  EXPECT_EQ(0u, outcome.status);
  EXPECT_EQ(std::string(1, static_cast<char>('0' - 4)), outcome.digits);
}

TEST(Transpose, TheAddendHasSixteenBits) {
  EXPECT_EQ(transpose("1234", 0, 3).digits, transpose("1234", 0, 65536 + 3).digits);
  // 32767 + 1 becomes -32768 at the second digit: 2 - 32768 leaves remainder -6.
  EXPECT_EQ(static_cast<char>('0' - 6), transpose("1234", 0, 32767).digits[1]);
}

TEST(Transpose, WritesATerminatorWhereTheTablePointsPastTheDigits) {
  // Row 1 is 4 3 1 2: of two digits the first two places point past the end.
  const Outcome outcome = transpose("12", 1, 0);
  EXPECT_EQ(0u, outcome.status);
  EXPECT_EQ(std::string(2, '\0'), outcome.digits);
  // Row 9 is 1 4 2 3: only the second place of three does.
  EXPECT_EQ(std::string("1\0"
                        "2",
                        3),
            transpose("123", 9, 0).digits);
  wchar_t wide[3] = {L'~', L'~', L'~'};
  EXPECT_EQ(0u, PXTransposeNumW(L"12", wide, 2, 1, 0));
  EXPECT_EQ(L'\0', wide[0]);
  EXPECT_EQ(L'\0', wide[1]);
  EXPECT_EQ(L'~', wide[2]);
}

TEST(Transpose, WorksInPlace) {
  char digits[5] = "1234";
  EXPECT_EQ(0u, PXTransposeNum(digits, digits, 4, 1, 0));
  EXPECT_STREQ("4312", digits);
}

}  // namespace
