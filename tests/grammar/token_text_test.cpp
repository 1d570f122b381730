// Token text as wide text, and the trace level.
#include <gtest/gtest.h>

#include <cwchar>

#include "TAVOParser.h"
#include "platform/platform.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"
#include "support/runtime_token.h"

namespace {

using tavo_test::Error;
using tavo_test::held_errors;
using tavo_test::RuntimeToken;
using Levels = std::vector<std::string>;

constexpr uint32_t kFailure = 0xFFFFFFFF;

TEST(TokenText, IsConvertedAndTerminatedWhenThereIsRoom) {
  RuntimeToken token(u"FLD\xD83D\xDE00");
  wchar_t text[8];
  std::wmemset(text, L'#', 8);
  uint32_t produced = 0;
  EXPECT_EQ(0u, TAVO_CnvANTLRTokenUtf16ToUtf32(nullptr, token.get(), text, sizeof text, &produced));
  EXPECT_EQ(4u, produced) << "characters";
  EXPECT_STREQ(L"FLD\x1F600", text);
  EXPECT_EQ(L'#', text[5]);
}

TEST(TokenText, IsNotTerminatedWithoutRoom) {
  RuntimeToken token(u"ABC");
  wchar_t text[4] = {L'#', L'#', L'#', L'#'};
  uint32_t produced = 0;
  EXPECT_EQ(0u, TAVO_CnvANTLRTokenUtf16ToUtf32(nullptr, token.get(), text, 12, &produced));
  EXPECT_EQ(3u, produced);
  EXPECT_EQ(0, std::wmemcmp(L"ABC#", text, 4));
}

TEST(TokenText, OfAFailingConversionLeavesTheLengthAlone) {
  front::reset();
  front::fail("Convert16To32", 1, 4711);
  RuntimeToken token(u"ABC");
  wchar_t text[8] = {};
  uint32_t produced = 17;
  const uint32_t status =
      TAVO_CnvANTLRTokenUtf16ToUtf32(nullptr, token.get(), text, sizeof text, &produced);
  if (front::count("Convert16To32") != 0) {
    EXPECT_NE(0u, status);
    EXPECT_EQ(17u, produced);
  } else {
    EXPECT_EQ(0u, status);
  }
  front::reset();
}

TEST(TokenText, OfUnpairedSurrogatesIsRefused) {
  RuntimeToken token(std::u16string(1, char16_t{0xD800}));
  wchar_t text[8] = {};
  uint32_t produced = 17;
  EXPECT_NE(0u, TAVO_CnvANTLRTokenUtf16ToUtf32(nullptr, token.get(), text, sizeof text, &produced));
}

TEST(TokenText, NullArgumentsAreFailures) {
  RuntimeToken token(u"ABC");
  wchar_t text[8];
  uint32_t produced;
  EXPECT_EQ(kFailure, TAVO_CnvANTLRTokenUtf16ToUtf32(nullptr, nullptr, text, 32, &produced));
  EXPECT_EQ(kFailure, TAVO_CnvANTLRTokenUtf16ToUtf32(nullptr, token.get(), nullptr, 32, &produced));
  EXPECT_EQ(kFailure, TAVO_CnvANTLRTokenUtf16ToUtf32(nullptr, token.get(), text, 32, nullptr));
}

// ---- trace level -------------------------------------------------------------------------------

class TraceLevel : public testing::Test {
 protected:
  void SetUp() override {
    tavo_test::size_statement(L"PRO=CCN");
    front::reset();
    request_.pKeyValueArr = &entry_;
    request_.capacity = 1;
  }
  uint32_t set(const std::u16string& text, uint32_t value_id) {
    RuntimeToken value(text);
    return SetTraceLevel(&request_, nullptr, 94, value.get(), value_id, nullptr);
  }

  KeyValueEntry entry_{};
  RequestRecord request_{};
};

TEST_F(TraceLevel, AQuotedValueReachesThePlatformWithoutItsQuotes) {
  EXPECT_EQ(0u, set(u"\"0\"", TAVO_PARSER_STRING_WITH_QUOTES));
  EXPECT_EQ(Levels{"0"}, front::platform().trace_levels);
  EXPECT_EQ(0, request_.errorFlag);
  EXPECT_EQ(0, request_.count) << "nothing is stored";
}

TEST_F(TraceLevel, AnotherValueTypeReachesItWhole) {
  set(u"\"0\"", TAVO_PARSER_STRING_WITHOUT_QUOTES);
  EXPECT_EQ(Levels{"\"0\""}, front::platform().trace_levels);
}

TEST_F(TraceLevel, AnEmptyOrBrokenQuotedValueIsEmpty) {
  front::fail("TAVOSetTraceLevel", 0, 4711);
  for (const std::u16string text : {u"\"\"", u"\"", u""}) set(text, 251);
  EXPECT_EQ((Levels{"", "", ""}), front::platform().trace_levels);
}

TEST_F(TraceLevel, TheSizingRunDoesNothing) {
  request_.pKeyValueArr = nullptr;
  request_.capacity = 0;
  EXPECT_EQ(0u, set(u"\"nonsense\"", 251));
  EXPECT_TRUE(front::platform().trace_levels.empty());
  EXPECT_EQ(0, request_.errorFlag);
}

TEST_F(TraceLevel, ANullArrayWithACapacityIsNoSizingRun) {
  request_.pKeyValueArr = nullptr;
  EXPECT_EQ(0u, set(u"\"0\"", 251));
  EXPECT_EQ(Levels{"0"}, front::platform().trace_levels);
}

TEST_F(TraceLevel, TextThatIsNoBytesIs7175) {
  front::fail("Convert16To8", 1, 4711);
  EXPECT_EQ(7175u, set(u"\"0\"", 251));
  EXPECT_EQ((std::vector<Error>{{7175, {}}}), held_errors());
  EXPECT_EQ(1, request_.errorFlag);
  EXPECT_TRUE(front::platform().trace_levels.empty());
  EXPECT_EQ(7175u, set(u"\"\xD800\"", 251));
}

TEST_F(TraceLevel, CharactersThatTakeMoreThanAByteNeverOverrun) {
  const uint32_t status = set(u"\"\x20AC\x20AC\x20AC\x20AC\"", 251);
  const uint32_t by_platform = TAVOSetTraceLevel("\xE2\x82\xAC");
  EXPECT_NE(0u, by_platform);
  EXPECT_TRUE(status == 7175 || status == by_platform) << status;
}

// Such a text would fill the byte of its terminator, and the platform would read on past it.
TEST_F(TraceLevel, OfOneByteMoreThanCharactersIs7175AndNotHandedOnWithoutATerminator) {
  for (const std::u16string text : {u"\"\u00E9\"", u"\"DETAIL\u00E9\"", u"\"\u00E90\""}) {
    EXPECT_EQ(7175u, set(text, 251));
    EXPECT_TRUE(front::platform().trace_levels.empty());
  }
  EXPECT_EQ(Error({7175, {}}), held_errors().at(0));
  EXPECT_EQ(1, request_.errorFlag);
  EXPECT_EQ(7148u, tavo_test::fill_statement(L"PRO=CCN, TRCLEVEL=\"\u00E9\"").status);
}

TEST_F(TraceLevel, WithoutAValueIsAFailureAndNothingIsHandedOn) {
  EXPECT_EQ(0xFFFFFFFFu, SetTraceLevel(&request_, nullptr, 94, nullptr, 251, nullptr));
  EXPECT_TRUE(front::platform().trace_levels.empty());
  EXPECT_EQ(0, request_.errorFlag);
  EXPECT_TRUE(held_errors().empty());
}

TEST_F(TraceLevel, ThePlatformsRefusalIsRecordedUnderItsOwnNumber) {
  front::fail("TAVOSetTraceLevel", 1, 4711);
  EXPECT_EQ(4711u, set(u"\"0\"", 251));
  EXPECT_EQ((std::vector<Error>{{4711, {}}}), held_errors());
  EXPECT_EQ(1, request_.errorFlag);
}

TEST_F(TraceLevel, TheOptionIsStoredInBothRunsAndAppliedInTheFillingRunOnly) {
  const auto sizes = tavo_test::size_statement(L"PRO=CCN, TRCLEVEL=\"0\"");
  EXPECT_EQ(2, sizes.count);
  EXPECT_TRUE(front::platform().trace_levels.empty());
  const auto filled = tavo_test::fill_statement(L"PRO=CCN, TRCLEVEL=\"0\"");
  EXPECT_EQ(0u, filled.status);
  ASSERT_EQ(2u, filled.pairs.size());
  EXPECT_EQ(94u, filled.pairs[1].key_id);
  EXPECT_EQ(L"0", filled.pairs[1].value);
  EXPECT_EQ(Levels{"0"}, front::platform().trace_levels);
}

// Deliberate: the keyword is passed on in place of the value; callers rely on it.
TEST_F(TraceLevel, TheStatementStoresNothingAndHandsItsKeywordOnDeliberately) {
  front::fail("TAVOSetTraceLevel", 0, 4711);
  tavo_test::WideRequest request(L"trclevel=\"0\" trailing words");
  request.get()->pKeyValueArr = &entry_;
  request.get()->capacity = 1;
  const auto run = request.run();
  EXPECT_EQ(7148u, run.status);
  EXPECT_EQ(0, run.count);
  EXPECT_EQ(Levels{"trclevel"}, front::platform().trace_levels);
}

}  // namespace
