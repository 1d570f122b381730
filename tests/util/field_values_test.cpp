#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "TAVODataTypes.h"

namespace {

constexpr uint32_t kFailed = 0xFFFFFFFFu;
constexpr uint32_t kUnset = 0xABCDEF01u;
constexpr int kNamedCodes[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 13, 14, 15,
                               16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28};

TAVOFieldType field(int code, uint32_t length = 10) {
  TAVOFieldType result{};
  result.dataType = static_cast<int16_t>(code);
  result.length = length;
  return result;
}

uint32_t buffer_length(int code, uint32_t length = 10) {
  const TAVOFieldType definition = field(code, length);
  uint32_t bytes = kUnset;
  EXPECT_EQ(0u, GetSrcBufLen(&definition, &bytes)) << code;
  return bytes;
}

// A value in a buffer of exactly the size that its field needs, so that a sanitizer detects a read
// past its end.
class Value {
 public:
  explicit Value(int code, uint32_t length = 10) : field_(field(code, length)) {
    bytes_.reset(new unsigned char[std::max(size(), 1u)]());
  }
  template <typename Number>
  Value& number(Number number) {
    EXPECT_EQ(sizeof number, size());
    std::memcpy(bytes_.get(), &number, sizeof number);
    return *this;
  }
  Value& bytes(const void* data, size_t count, size_t offset = 0) {
    EXPECT_LE(offset + count, size());
    std::memcpy(bytes_.get() + offset, data, count);
    return *this;
  }
  Value& text(const std::string& text) {
    return bytes(text.data(), text.size());
  }
  Value& text(const std::wstring& text) {
    return bytes(text.data(), text.size() * sizeof(wchar_t));
  }
  Value& prefixed(uint16_t length) {
    return bytes(&length, sizeof length);
  }
  Value& fill(unsigned char byte) {
    std::memset(bytes_.get(), byte, size());
    return *this;
  }
  uint32_t size() const {
    uint32_t bytes = 0;
    EXPECT_EQ(0u, GetSrcBufLen(&field_, &bytes));
    return bytes;
  }
  uint32_t data_length() const {
    uint32_t bytes = kUnset;
    EXPECT_EQ(0u, TAVOGetSourceDataLen(&field_, bytes_.get(), &bytes));
    return bytes;
  }
  uint32_t refusal() const {
    uint32_t bytes = kUnset;
    const uint32_t status = TAVOGetSourceDataLen(&field_, bytes_.get(), &bytes);
    EXPECT_EQ(kUnset, bytes);
    return status;
  }
  int32_t zero() const {
    return TAVO_IsZeroOrZeroLength(&field_, bytes_.get());
  }

 private:
  TAVOFieldType field_;
  std::unique_ptr<unsigned char[]> bytes_;
};

TEST(SourceBufferLength, AddsTheLengthInFrontOrTheTerminator) {
  EXPECT_EQ(10u, buffer_length(TAVO_TYPE_CHAR));
  EXPECT_EQ(12u, buffer_length(TAVO_TYPE_VARCHAR));
  EXPECT_EQ(11u, buffer_length(TAVO_TYPE_VARCHAR_SZ));
  EXPECT_EQ(40u, buffer_length(TAVO_TYPE_WCHAR));
  EXPECT_EQ(42u, buffer_length(TAVO_TYPE_WVARCHAR));
  EXPECT_EQ(44u, buffer_length(TAVO_TYPE_WVARCHAR_SZ));
  EXPECT_EQ(51u, buffer_length(TAVO_TYPE_DATETIME_SZ));
  EXPECT_EQ(204u, buffer_length(TAVO_TYPE_DATETIME_WSZ));
  EXPECT_EQ(50u, buffer_length(TAVO_TYPE_DATETIME_CHAR));
  EXPECT_EQ(52u, buffer_length(TAVO_TYPE_DATETIME_VARCHAR));
  EXPECT_EQ(200u, buffer_length(TAVO_TYPE_DATETIME_WCHAR));
  EXPECT_EQ(202u, buffer_length(TAVO_TYPE_DATETIME_WVARCHAR));
}

TEST(SourceBufferLength, IsTheSizeOfAnythingElse) {
  for (const int code : {7, 8, 9, 10, 13, 14, 15, 16, 19, 20, 21, 22, 23, 24, 101}) {
    const TAVOFieldType definition = field(code);
    uint32_t bytes = 0;
    ASSERT_EQ(0u, GetDataTypeBytes(&definition, &bytes));
    EXPECT_EQ(bytes, buffer_length(code)) << code;
  }
}

TEST(SourceBufferLength, RefusesWhatHasNone) {
  uint32_t bytes = kUnset;
  EXPECT_EQ(48u, GetSrcBufLen(nullptr, &bytes));
  for (const int code : {0, 11, 12, 29, -1}) {
    const TAVOFieldType definition = field(code);
    EXPECT_EQ(49u, GetSrcBufLen(&definition, &bytes)) << code;
  }
  const TAVOFieldType integer = field(TAVO_TYPE_INTEGER);
  EXPECT_EQ(kFailed, GetSrcBufLen(&integer, nullptr));
  const TAVOFieldType long_text = field(TAVO_TYPE_VARCHAR, 0xFFFFFFFEu);
  EXPECT_EQ(kFailed, GetSrcBufLen(&long_text, &bytes));
  const TAVOFieldType long_wide = field(TAVO_TYPE_WCHAR, 0x40000000u);
  EXPECT_EQ(kFailed, GetSrcBufLen(&long_wide, &bytes));
  EXPECT_EQ(kUnset, bytes);
}

TEST(AllocateBuffer, GivesZeroedRoomForAValueOfEachType) {
  for (const int code : kNamedCodes) {
    const TAVOFieldType definition = field(code);
    void* buffer = nullptr;
    ASSERT_EQ(0u, TAVOAllocateBuffer(&definition, &buffer)) << code;
    const auto* bytes = static_cast<unsigned char*>(buffer);
    EXPECT_TRUE(
        std::all_of(bytes, bytes + buffer_length(code), [](unsigned char b) { return b == 0; }));
    std::free(buffer);
  }
}

TEST(AllocateBuffer, GivesRoomForManyValues) {
  const TAVOFieldType definition = field(TAVO_TYPE_VARCHAR_SZ, 9);
  void* buffer = nullptr;
  ASSERT_EQ(0u, TAVOAllocateBuffer1(&definition, 7, &buffer));
  const auto* bytes = static_cast<unsigned char*>(buffer);
  EXPECT_TRUE(std::all_of(bytes, bytes + 70, [](unsigned char b) { return b == 0; }));
  std::memset(buffer, 1, 70);
  std::free(buffer);
}

TEST(AllocateBuffer, GivesSomethingForAnEmptyField) {
  const TAVOFieldType definition = field(TAVO_TYPE_CHAR, 0);
  void* buffer = nullptr;
  EXPECT_EQ(0u, TAVOAllocateBuffer(&definition, &buffer));
  EXPECT_NE(nullptr, buffer);
  std::free(buffer);
}

TEST(AllocateBuffer, RefusedInputLeavesNull) {
  void* buffer = &buffer;
  EXPECT_EQ(48u, TAVOAllocateBuffer(nullptr, &buffer));
  EXPECT_EQ(nullptr, buffer);
  const TAVOFieldType unknown = field(12);
  buffer = &buffer;
  EXPECT_EQ(49u, TAVOAllocateBuffer1(&unknown, 1, &buffer));
  EXPECT_EQ(nullptr, buffer);
  const TAVOFieldType integer = field(TAVO_TYPE_INTEGER);
  buffer = &buffer;
  EXPECT_EQ(kFailed, TAVOAllocateBuffer1(&integer, 0, &buffer));
  EXPECT_EQ(nullptr, buffer);
  EXPECT_EQ(kFailed, TAVOAllocateBuffer(&integer, nullptr));
}

TEST(SourceDataLength, OfAFixedTextIsItsDeclaredLength) {
  EXPECT_EQ(10u, Value(TAVO_TYPE_CHAR).text("ab").data_length());
  EXPECT_EQ(40u, Value(TAVO_TYPE_WCHAR).text(L"ab").data_length());
}

TEST(SourceDataLength, OfAPrefixedTextIsItsPrefix) {
  for (const int code : {TAVO_TYPE_VARCHAR, TAVO_TYPE_DATETIME_VARCHAR}) {
    EXPECT_EQ(3u, Value(code).prefixed(3).data_length());
    EXPECT_EQ(0u, Value(code).prefixed(0).data_length());
  }
  for (const int code : {TAVO_TYPE_WVARCHAR, TAVO_TYPE_DATETIME_WVARCHAR}) {
    EXPECT_EQ(12u, Value(code).prefixed(12).data_length());
  }
}

TEST(SourceDataLength, RefusesAPrefixThatTheTypeCannotHold) {
  EXPECT_EQ(10u, Value(TAVO_TYPE_VARCHAR).prefixed(10).data_length());
  EXPECT_EQ(kFailed, Value(TAVO_TYPE_VARCHAR).prefixed(11).refusal());
  EXPECT_EQ(kFailed, Value(TAVO_TYPE_DATETIME_VARCHAR).prefixed(51).refusal());
  EXPECT_EQ(kFailed, Value(TAVO_TYPE_WVARCHAR).prefixed(6).refusal());
}

TEST(SourceDataLength, OfATerminatedTextGoesToItsTerminator) {
  EXPECT_EQ(2u, Value(TAVO_TYPE_VARCHAR_SZ).text("ab").data_length());
  EXPECT_EQ(8u, Value(TAVO_TYPE_WVARCHAR_SZ).text(L"ab").data_length());
  EXPECT_EQ(10u, Value(TAVO_TYPE_DATETIME_SZ).text("2024-02-29").data_length());
  EXPECT_EQ(40u, Value(TAVO_TYPE_DATETIME_WSZ).text(L"2024-02-29").data_length());
  EXPECT_EQ(10u, Value(TAVO_TYPE_DATETIME_CHAR).text("2024-02-29").data_length());
  EXPECT_EQ(40u, Value(TAVO_TYPE_DATETIME_WCHAR).text(L"2024-02-29").data_length());
}

TEST(SourceDataLength, NeverGoesAfterTheTypesBytes) {
  EXPECT_EQ(10u, Value(TAVO_TYPE_VARCHAR_SZ).fill('x').data_length());
  EXPECT_EQ(50u, Value(TAVO_TYPE_DATETIME_CHAR).fill('x').data_length());
  EXPECT_EQ(200u, Value(TAVO_TYPE_DATETIME_WCHAR).fill('x').data_length());
  // A wide character that contains zero bytes is not a terminator.
  EXPECT_EQ(4u, Value(TAVO_TYPE_WVARCHAR_SZ).text(L"\x0100").data_length());
}

TEST(SourceDataLength, OfAnythingElseIsItsSize) {
  EXPECT_EQ(8u, Value(TAVO_TYPE_LONG_LONG).data_length());
  EXPECT_EQ(1u, Value(TAVO_TYPE_TINYINT).data_length());
  EXPECT_EQ(24u, Value(TAVO_TYPE_ODBC_TIMESTAMP).data_length());
  EXPECT_EQ(50u, Value(TAVO_TYPE_ORA_VARNUM).data_length());
}

TEST(SourceDataLength, RefusesNullsAndUnknownTypes) {
  const TAVOFieldType integer = field(TAVO_TYPE_INTEGER);
  const TAVOFieldType unknown = field(12);
  uint32_t bytes = kUnset;
  int32_t value = 0;
  EXPECT_EQ(48u, TAVOGetSourceDataLen(nullptr, &value, &bytes));
  EXPECT_EQ(49u, TAVOGetSourceDataLen(&unknown, &value, &bytes));
  EXPECT_EQ(kFailed, TAVOGetSourceDataLen(&integer, nullptr, &bytes));
  EXPECT_EQ(kFailed, TAVOGetSourceDataLen(&integer, &value, nullptr));
  EXPECT_EQ(kUnset, bytes);
}

TEST(ZeroOrEmpty, AnIntegerOfValueZero) {
  EXPECT_EQ(0, Value(TAVO_TYPE_LONG_LONG).number(int64_t{0}).zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_LONG_LONG).number(int64_t{1} << 40).zero());
  EXPECT_EQ(0, Value(TAVO_TYPE_U_INTEGER).number(uint32_t{0}).zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_INTEGER).number(int32_t{-1}).zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_SMALLINT).number(int16_t{256}).zero());
  EXPECT_EQ(0, Value(TAVO_TYPE_UTINYINT).number(uint8_t{0}).zero());
}

TEST(ZeroOrEmpty, AFloatingValueOfZeroOfEitherSign) {
  EXPECT_EQ(0, Value(TAVO_TYPE_DOUBLE).number(0.0).zero());
  EXPECT_EQ(0, Value(TAVO_TYPE_DOUBLE).number(-0.0).zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_DOUBLE).number(std::numeric_limits<double>::denorm_min()).zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_DOUBLE).number(std::numeric_limits<double>::quiet_NaN()).zero());
  EXPECT_EQ(0, Value(TAVO_TYPE_FLOAT).number(-0.0f).zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_FLOAT).number(1.0f).zero());
}

TEST(ZeroOrEmpty, ADecimalOnlyWhenAllItsBytesAreZero) {
  EXPECT_EQ(0, Value(TAVO_TYPE_DECIMAL_K48).zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_DECIMAL_K48).bytes("\1", 1, 15).zero());
}

TEST(ZeroOrEmpty, ATextOfLengthZero) {
  for (const int code : {2, 3, 5, 6, 17, 18, 25, 26, 27, 28}) {
    EXPECT_EQ(0, Value(code).zero()) << code;
  }
  EXPECT_EQ(-1, Value(TAVO_TYPE_VARCHAR).prefixed(1).zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_VARCHAR_SZ).text(" ").zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_WVARCHAR_SZ).text(L"0").zero());
}

TEST(ZeroOrEmpty, AFixedTextOnlyWhenAllItsCharactersAreZero) {
  EXPECT_EQ(0, Value(TAVO_TYPE_CHAR).zero());
  EXPECT_EQ(0, Value(TAVO_TYPE_CHAR, 0).zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_CHAR).bytes("x", 1, 9).zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_CHAR).fill(' ').zero());
  EXPECT_EQ(-1, Value(TAVO_TYPE_WCHAR).bytes("x", 1, 36).zero());
}

TEST(ZeroOrEmpty, ADateInBinaryFormIsNeither) {
  for (const int code : {14, 15, 16}) EXPECT_EQ(-1, Value(code).zero()) << code;
}

TEST(ZeroOrEmpty, TheTypeOutsideTheTableIsKnownAndNeither) {
  EXPECT_EQ(101, TAVO_TYPE_ORA_VARNUM) << "as the grammar stores it";
  EXPECT_EQ(-1, Value(TAVO_TYPE_ORA_VARNUM).zero());
}

TEST(ZeroOrEmpty, RefusesWhatItCannotJudge) {
  const int32_t value = 0;
  const TAVOFieldType integer = field(TAVO_TYPE_INTEGER);
  const TAVOFieldType unknown = field(12);
  EXPECT_EQ(48, TAVO_IsZeroOrZeroLength(nullptr, &value));
  EXPECT_EQ(49, TAVO_IsZeroOrZeroLength(&unknown, &value));
  EXPECT_EQ(50, TAVO_IsZeroOrZeroLength(&integer, nullptr));
  EXPECT_EQ(50, Value(TAVO_TYPE_VARCHAR).prefixed(11).zero());
}

}  // namespace
