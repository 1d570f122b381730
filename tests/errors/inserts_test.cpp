// Inserts of every data type.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "TAVODates.h"
#include "errors/error_list.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"

namespace {

using errors_test::counted;
using errors_test::ErrorList;

constexpr uint32_t kFailure = 0xFFFFFFFF;
constexpr int16_t kTextTypes[] = {1, 2, 3, 4, 5, 6, 17, 18, 25, 26, 27, 28};
constexpr int16_t kNumberTypes[] = {9, 10, 14, 15, 16, 21, 22};

bool is_in(int16_t type, const auto& types) {
  for (const int16_t t : types) {
    if (t == type) return true;
  }
  return false;
}

class Inserts : public testing::Test {
 protected:
  void SetUp() override {
    front::reset();
    ASSERT_EQ(0, ErrorCaptureEAB(list_.get(), 0, 1, 1));
  }
  uint32_t capture(const void* data, int16_t type, uint32_t extra = 0) {
    return TokenCaptureEAB(list_.get(), data, type, 54, extra);
  }
  bool slot_is_free() {
    return list_->last->slot[0].id == 0 && list_->last->slot[0].value == nullptr;
  }
  // The text to which the data is converted.
  std::wstring text_of(const void* data, int16_t type, uint32_t extra = 0) {
    EXPECT_EQ(0, ErrorCaptureEAB(list_.get(), 0, 1, 1));
    const uint32_t status = capture(data, type, extra);
    if (status != 0) return L"status " + std::to_wstring(status);
    EXPECT_EQ(54u, list_->last->slot[0].id);
    return list_->last->slot[0].value;
  }

  ErrorList list_;
};

TEST_F(Inserts, TerminatedBytes) {
  for (const int16_t type : std::initializer_list<int16_t>{1, 25, 3, 17}) {
    EXPECT_EQ(L"text", text_of("text", type)) << type;
    EXPECT_EQ(L"", text_of("", type)) << type;
  }
}

TEST_F(Inserts, TerminatedBytesInTheCodePageOfTheExtraArgument) {
  for (const int16_t type : std::initializer_list<int16_t>{1, 25, 3, 17}) {
    EXPECT_EQ(L"\x20AC", text_of("\xA4", type, 923)) << type;
    EXPECT_EQ(L"\x00E9", text_of("\xC3\xA9", type, 1208)) << type;
  }
  ASSERT_FALSE(front::platform().conversions.empty());
  EXPECT_EQ("TAVOCnvCharToWVarcharSz", front::platform().conversions.front().function);
  EXPECT_EQ("TAVOCnvVarcharSzToWVarcharSz", front::platform().conversions.back().function);
  EXPECT_EQ(1208u, front::platform().conversions.back().code_page);
}

TEST_F(Inserts, BytesWithALeadingLength) {
  for (const int16_t type : std::initializer_list<int16_t>{2, 26}) {
    EXPECT_EQ(L"text", text_of(counted(std::string("text")).data(), type)) << type;
    EXPECT_EQ(L"", text_of(counted(std::string()).data(), type)) << type;
  }
  ASSERT_FALSE(front::platform().conversions.empty());
  EXPECT_EQ("TAVOCnvVarcharToWVarcharSz", front::platform().conversions.back().function);
}

TEST_F(Inserts, WideTextOfTheLengthInTheExtraArgument) {
  for (const int16_t type : std::initializer_list<int16_t>{4, 27}) {
    EXPECT_EQ(L"wid", text_of(L"wide", type, 12)) << type;
    EXPECT_EQ(L"", text_of(L"wide", type, 0)) << type;
  }
  EXPECT_EQ(4u, front::count("TAVOCnvWCharToWVarcharSz"));
}

TEST_F(Inserts, WideTextWithALeadingLength) {
  for (const int16_t type : std::initializer_list<int16_t>{5, 28}) {
    EXPECT_EQ(L"wide", text_of(counted(std::wstring(L"wide")).data(), type)) << type;
    EXPECT_EQ(L"", text_of(counted(std::wstring()).data(), type)) << type;
  }
  EXPECT_EQ(4u, front::count("TAVOCnvWVarcharToWVarcharSz"));
}

TEST_F(Inserts, TerminatedWideText) {
  for (const int16_t type : std::initializer_list<int16_t>{6, 18}) {
    const wchar_t text[] = L"w\x1F600";
    EXPECT_EQ(text, text_of(text, type)) << type;
    EXPECT_NE(text, list_->last->slot[0].value) << "a copy";
    EXPECT_EQ(L"", text_of(L"", type)) << type;
  }
}

TEST_F(Inserts, Integers) {
  const int32_t numbers[] = {0, 1, -1, INT32_MAX, INT32_MIN};
  const wchar_t* signed_texts[] = {L"0", L"1", L"-1", L"2147483647", L"-2147483648"};
  const wchar_t* unsigned_texts[] = {L"0", L"1", L"4294967295", L"2147483647", L"2147483648"};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(signed_texts[i], text_of(&numbers[i], 9));
    EXPECT_EQ(unsigned_texts[i], text_of(&numbers[i], 10));
  }
  EXPECT_EQ(4u, front::count("TAVOCnvIntToWVarcharSz1")) << "0 is written without the platform";
  EXPECT_EQ(4u, front::count("TAVOCnvUIntToWVarcharSz"));
}

TEST_F(Inserts, SmallIntegers) {
  const int16_t numbers[] = {0, 1, -1, INT16_MAX, INT16_MIN};
  const wchar_t* signed_texts[] = {L"0", L"1", L"-1", L"32767", L"-32768"};
  const wchar_t* unsigned_texts[] = {L"0", L"1", L"65535", L"32767", L"32768"};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(signed_texts[i], text_of(&numbers[i], 21));
    EXPECT_EQ(unsigned_texts[i], text_of(&numbers[i], 22));
  }
  EXPECT_EQ(4u, front::count("TAVOCnvSmallIntToWVarcharSz"));
  EXPECT_EQ(4u, front::count("TAVOCnvSmallUIntToWVarcharSz"));
}

TEST_F(Inserts, NumbersNeedNoAlignment) {
  char bytes[5] = {0, 5, 0, 0, 0};
  EXPECT_EQ(L"5", text_of(bytes + 1, 9));
  EXPECT_EQ(L"5", text_of(bytes + 1, 21));
}

TEST_F(Inserts, DatesAndTimes) {
  const TimestampRecord moment = {2024, 2, 29, 13, 14, 15, 0};
  EXPECT_NE(std::wstring::npos, text_of(&moment, 16).find(L"2024"));
  const DateRecord day = {2024, 2, 29};
  EXPECT_NE(std::wstring::npos, text_of(&day, 14).find(L"2024"));
  EXPECT_EQ(0u, front::count("TAVOCnvIntToWVarcharSz1"));
  EXPECT_EQ(2u, front::count("TAVOGetStringFromTS"));
}

TEST_F(Inserts, NullTextIsSaidToBeNull) {
  for (const int16_t type : kTextTypes) EXPECT_EQ(L"<NULL>", text_of(nullptr, type)) << type;
}

TEST_F(Inserts, NullNumbersAreRefused) {
  for (const int16_t type : kNumberTypes) {
    EXPECT_EQ(kFailure, capture(nullptr, type)) << type;
    EXPECT_TRUE(slot_is_free());
  }
}

TEST_F(Inserts, EveryOtherDataTypeIsRefusedWith3) {
  int32_t data[8] = {};
  for (int type = -40; type < 140; ++type) {
    const auto data_type = static_cast<int16_t>(type);
    if (is_in(data_type, kTextTypes) || is_in(data_type, kNumberTypes)) continue;
    EXPECT_EQ(3u, capture(data, data_type)) << type;
    EXPECT_EQ(3u, capture(nullptr, data_type)) << type << ": before the data is looked at";
    EXPECT_TRUE(slot_is_free());
  }
}

TEST_F(Inserts, TokenIdsUpTo90AreTakenAnd91IsRefusedWith1) {
  for (uint32_t id = 1; id <= 90; ++id) {
    ErrorCaptureEAB(list_.get(), 0, 1, 1);
    EXPECT_EQ(0u, TokenCaptureEAB(list_.get(), L"x", 6, id, 0));
    EXPECT_EQ(id, list_->last->slot[0].id);
  }
  ErrorCaptureEAB(list_.get(), 0, 1, 1);
  void* block[8] = {list_.get()};
  for (const uint32_t id : {91u, 92u, 0xFFFFFFFFu}) {
    EXPECT_EQ(1u, TokenCaptureEAB(list_.get(), L"x", 6, id, 0));
    EXPECT_EQ(1u, TokenCapture(block, L"x", 6, id, 0));
    EXPECT_TRUE(slot_is_free());
  }
}

TEST_F(Inserts, ARefusalIsAnsweredInOrderIdThenStateThenTypeThenData) {
  EXPECT_EQ(1u, TokenCaptureEAB(nullptr, nullptr, 99, 91, 0));
  EXPECT_EQ(kFailure, TokenCaptureEAB(nullptr, nullptr, 99, 90, 0));
  EXPECT_EQ(3u, TokenCaptureEAB(list_.get(), nullptr, 99, 90, 0));
  EXPECT_EQ(kFailure, TokenCaptureEAB(list_.get(), nullptr, 9, 90, 0));
  EXPECT_EQ(1u, TokenCapture(nullptr, nullptr, 99, 91, 0));
  EXPECT_EQ(kFailure, TokenCapture(nullptr, nullptr, 99, 90, 0));
}

TEST_F(Inserts, AStateWithoutABlockIsAFailure) {
  ErrorList empty;
  EXPECT_EQ(kFailure, TokenCaptureEAB(empty.get(), L"x", 6, 1, 0));
}

TEST_F(Inserts, DataThatCannotBeConvertedIsAFailureAndLeavesTheSlotFree) {
  const struct {
    const char* function;
    int16_t type;
  } cases[] = {{"TAVOCnvCharToWVarcharSz", 1},      {"TAVOCnvVarcharToWVarcharSz", 2},
               {"TAVOCnvVarcharSzToWVarcharSz", 3}, {"TAVOCnvWCharToWVarcharSz", 4},
               {"TAVOCnvWVarcharToWVarcharSz", 5},  {"TAVOCnvIntToWVarcharSz1", 9},
               {"TAVOCnvUIntToWVarcharSz", 10},     {"TAVOGetStringFromTS", 16},
               {"TAVOCnvSmallIntToWVarcharSz", 21}, {"TAVOCnvSmallUIntToWVarcharSz", 22}};
  alignas(8) const uint8_t data[64] = {4, 0, 1, 0, 1};
  for (const auto& c : cases) {
    front::fail(c.function, 0, 4711);
    EXPECT_EQ(kFailure, capture(data, c.type, 4)) << c.function;
    EXPECT_EQ(1u, front::count(c.function)) << c.function;
    EXPECT_TRUE(slot_is_free());
  }
}

TEST_F(Inserts, AWideLengthThatCutsACharacterIsAFailureNotAnOverrun) {
  for (const uint32_t length : {1u, 2u, 3u, 5u, 7u}) {
    EXPECT_EQ(kFailure, capture(L"wide", 4, length)) << length;
    EXPECT_TRUE(slot_is_free());
  }
  const std::string odd = std::string("\x03\x00", 2) + "abc";
  EXPECT_EQ(kFailure, capture(odd.data(), 5));
}

TEST_F(Inserts, AnUnknownCodePageIsAFailure) {
  EXPECT_EQ(kFailure, capture("x", 1, 424242));
  EXPECT_TRUE(slot_is_free());
}

}  // namespace
