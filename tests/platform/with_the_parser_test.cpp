// The embedded platform as callers of the parser see it: its numbers and messages.
#include <gtest/gtest.h>

#include <cwchar>

#include "TAVOErrorHandler.h"
#include "TAVOParser.h"
#include "TAVOParserCpp.hpp"
#include "support/parse_run.h"

namespace {

using tavo_test::fill_bytes;

TEST(NumbersInAParse, OfBytesThatAreNotValidInTheirCodePage) {
  for (const char* wrong : {"PRO=CCN \xFF", "PRO=CCN \xC3", "PRO=CCN \xED\xA0\x80", "\x80"}) {
    const auto run = fill_bytes(wrong, 1208);
    EXPECT_EQ(7095u, run.status);
    EXPECT_EQ(L"8033", run.errors.at(0).inserts.at(0).text);
  }
}

TEST(NumbersInAParse, OfAnUnknownCodePage) {
  const auto run = fill_bytes("PRO=CCN", 424242);
  EXPECT_EQ(7095u, run.status);
  EXPECT_EQ(L"8032", run.errors.at(0).inserts.at(0).text);
}

TEST(NumbersInAParse, OfAnUnknownTraceLevel) {
  const auto run = tavo_test::fill_statement(L"PRO=CCN, TRCLEVEL=\"LEN\"");
  EXPECT_EQ(7148u, run.status);
  EXPECT_EQ(8021u, run.errors.at(0).id);
}

TEST(NumbersInAParse, OfNoMessageRequest) {
  EXPECT_EQ(73u, Parser_GetFormattedErrorMsg(nullptr));
}

TEST(MessagesOfAParse, HoldTheirInserts) {
  EXPECT_EQ(7148u, tavo_test::size_statement(L"PRO=CCN,").status);
  TAVOErrorRequest error{};
  error.version = 21;
  error.size = sizeof error;
  ASSERT_EQ(0u, Parser_GetError(&error));
  wchar_t text[400];
  TAVOMessageRequest message{};
  message.version = 21;
  message.size = sizeof message;
  message.block = error.block;
  message.text = text;
  message.textBytes = sizeof text;
  ASSERT_EQ(0u, Parser_GetFormattedErrorMsg(&message));
  EXPECT_NE(nullptr, std::wcsstr(text, L"PRO=CCN,"));
}

TEST(MessagesOfTheWrapper, HoldTheInsertsOfAParse) {
  const tavo::ParseResult result = tavo::parse(L"PRO=HASH,\n  ALG=SHA256");
  ASSERT_EQ(result.errors.size(), 1u);
  EXPECT_NE(result.errors[0].message.find(L"PRO="), std::wstring::npos);
}

TEST(MessagesOfTheWrapper, HoldTheInsertsOfTheCaller) {
  const std::vector<tavo::Insert> inserts = {{TAVO_TOKID_CHAR_POS, L"7"},
                                             {TAVO_TOKID_SUBSTR, L"PRO=CCN, "}};
  const std::wstring message = tavo::format_message(7139, inserts);
  EXPECT_NE(message.find(L" 7"), std::wstring::npos);
  EXPECT_NE(message.find(L"PRO=CCN, "), std::wstring::npos);
  EXPECT_NE(tavo::format_message(7139).find(L"{CHAR_POS}"), std::wstring::npos);
}

}  // namespace
