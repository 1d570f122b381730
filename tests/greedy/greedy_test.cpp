// The library passes the size of a destination to the platform. Here the platform writes all of it:
// nothing else may be overwritten (sanitizers detect that, and often the C library's heap), and the
// results are the same.
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstring>
#include <string>

#include "TAVODates.h"
#include "TAVOGrammar.h"
#include "TAVOServiceRecords.h"
#include "array/guarded_array.h"
#include "errors/error_list.h"
#include "greedy/greedy_platform.h"
#include "platform/platform.h"
#include "support/parse_run.h"
#include "support/runtime_token.h"

namespace {

using errors_test::counted;
using errors_test::ErrorList;

// The text of a converted insert. Its memory has the size that was passed to the platform.
std::wstring text_of(const void* data, int16_t type, uint32_t extra = 0) {
  ErrorList list;
  EXPECT_EQ(0, ErrorCaptureEAB(list.get(), 0, 1, 1));
  EXPECT_EQ(0u, TokenCaptureEAB(list.get(), data, type, 54, extra));
  const wchar_t* text = list->last->slot[0].value;
  EXPECT_EQ(greedy::last_room().address, text);
  EXPECT_LE(greedy::last_room().bytes, malloc_usable_size(list->last->slot[0].value));
  return text;
}

TEST(Greedy, TextsOfInserts) {
  for (size_t length = 0; length < 40; ++length) {
    const std::string bytes(length, 'x');
    const std::wstring wide(length, L'x');
    EXPECT_EQ(wide, text_of(bytes.c_str(), 1));
    EXPECT_EQ(wide, text_of(counted(bytes).data(), 2));
    EXPECT_EQ(wide, text_of(bytes.c_str(), 3));
    EXPECT_EQ(wide, text_of(wide.c_str(), 4, static_cast<uint32_t>(length * 4)));
    EXPECT_EQ(wide, text_of(counted(wide).data(), 5));
    EXPECT_EQ(wide, text_of(bytes.c_str(), 25));
    EXPECT_EQ(wide, text_of(counted(bytes).data(), 26));
    EXPECT_EQ(wide, text_of(wide.c_str(), 27, static_cast<uint32_t>(length * 4)));
    EXPECT_EQ(wide, text_of(counted(wide).data(), 28));
  }
}

TEST(Greedy, NumbersOfInserts) {
  const int32_t integer = -2147483647 - 1;
  const uint32_t unsigned_integer = 4294967295;
  const int16_t small = -32768;
  const uint16_t unsigned_small = 65535;
  const TimestampRecord time = {2024, 2, 29, 7, 5, 9, 1};
  EXPECT_EQ(L"-2147483648", text_of(&integer, 9));
  EXPECT_EQ(L"4294967295", text_of(&unsigned_integer, 10));
  EXPECT_EQ(L"-32768", text_of(&small, 21));
  EXPECT_EQ(L"65535", text_of(&unsigned_small, 22));
  EXPECT_EQ(L"2024-02-29 07:05:09.000000001", text_of(&time, 16));
}

// Statements of the longest length that needs no allocation, one less and one more.
std::wstring statement_of(size_t length) {
  const std::wstring start = L"PRO=HASH, DSTFLD=A//";
  return start + std::wstring(length - start.size(), L'x');
}

TEST(Greedy, StatementsOfEveryLength) {
  for (size_t length = 21; length < 1100; ++length) {
    const auto wide = tavo_test::fill_statement(statement_of(length));
    EXPECT_EQ(0u, wide.status) << length;
    ASSERT_EQ(2u, wide.pairs.size());
    EXPECT_EQ(L"A", wide.pairs[1].value);
    const auto bytes = tavo_test::fill_bytes(tavo_test::to_utf8(statement_of(length)), 0);
    EXPECT_EQ(0u, bytes.status) << length;
    ASSERT_EQ(2u, bytes.pairs.size());
    EXPECT_EQ(L"A", bytes.pairs[1].value);
  }
}

TEST(Greedy, StatementsOfCharactersOfTwoUnits) {
  for (size_t pairs = 220; pairs < 290; ++pairs) {
    std::wstring text = L"PRO=HASH, DSTFLD=A//" + std::wstring(pairs, L'\x1F601');
    EXPECT_EQ(0u, tavo_test::fill_statement(text).status) << pairs;
    text += L"\n,";  // an error after them all
    EXPECT_EQ(7148u, tavo_test::fill_statement(text).status) << pairs;
  }
}

TEST(Greedy, PairsOfAnArray) {
  for (uint32_t bytes = 0; bytes < 60; ++bytes) {
    array_test::GuardedArray array(2, bytes, bytes);
    array.store(79, u"KEY", TAVO_PARSER_STRING_WITH_QUOTES, u"\"va\\\"lue\"", L"FLDDEF1:");
    array.store(56, u"KEY", TAVO_PARSER_STRING_WITHOUT_QUOTES, u"value");
    array.expect_intact();
    if (bytes < 8 * sizeof(wchar_t)) continue;
    EXPECT_STREQ(L"va\"lue", array[0].value);
    EXPECT_STREQ(L"value", array[1].value);
  }
}

TEST(Greedy, TextsOfTokens) {
  tavo_test::RuntimeToken token(u"FLDDEF12");
  wchar_t text[10];
  for (uint32_t characters = 8; characters <= 9; ++characters) {
    text[characters] = L'#';
    uint32_t produced = 0;
    RequestRecord request{};
    EXPECT_EQ(
        0u, TAVO_CnvANTLRTokenUtf16ToUtf32(&request, token.get(), text, characters * 4, &produced));
    EXPECT_EQ(8u, produced);
    EXPECT_EQ(L"FLDDEF12", std::wstring(text, 8));
    EXPECT_EQ(L'#', text[characters]);
  }
}

TEST(Greedy, TraceLevels) {
  for (const std::u16string level : {u"OFF", u"0", u"\"OFF\"", u"\"0\""}) {
    tavo_test::RuntimeToken token(level);
    KeyValueEntry entry{};
    RequestRecord request{};
    request.pKeyValueArr = &entry;
    request.capacity = 1;
    const bool quoted = level[0] == u'"';
    EXPECT_EQ(0u, SetTraceLevel(&request, nullptr, 0, token.get(),
                                quoted ? TAVO_PARSER_STRING_WITH_QUOTES : 0, nullptr));
  }
}

TEST(Greedy, KeysOfColumnStatements) {
  for (size_t length = 1; length <= 33; ++length) {
    const std::wstring text =
        L"PRO=AFF, MTD=REP, ALGO=FPE, KEY=\"" + std::wstring(length, L'k') + L"\"";
    EXPECT_EQ(length == 33 ? 7148u : 0u, tavo_test::fill_statement(text).status) << length;
  }
}

TEST(Greedy, EveryConversionWasSeen) {
  const uint32_t before = greedy::conversions();
  tavo_test::size_statement(L"PRO=CCN");
  EXPECT_LT(before, greedy::conversions())
      << "the executable's conversions are those that are called";
}

}  // namespace
