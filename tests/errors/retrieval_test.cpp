#include <gtest/gtest.h>

#include <cwchar>
#include <thread>

#include "TAVOErrorHandler.h"
#include "TAVOParser.h"
#include "platform.h"
#include "support/fronting_platform.h"
#include "support/parse_run.h"

namespace {

using Names = std::vector<std::string>;

class Retrieval : public testing::Test {
 protected:
  void SetUp() override {
    tavo_test::size_statement(L"PRO=CCN,");
    front::reset();
  }
};

TEST_F(Retrieval, BeforeAnyParseOnAThreadIs72) {
  uint32_t count_status = 0, error_status = 0, count = 4711;
  std::thread([&] {
    count_status = Parser_GetErrorCount(&count, nullptr);
    TAVOErrorRequest request{};
    error_status = Parser_GetError(&request);
  }).join();
  EXPECT_EQ(72u, count_status);
  EXPECT_EQ(72u, error_status);
  EXPECT_EQ(4711u, count);
  EXPECT_EQ((Names{"TAVOGetThreadBlock", "TAVOGetThreadBlock"}), front::platform().calls);
}

TEST_F(Retrieval, HandsTheStateToThePlatform) {
  uint32_t count = 0, largest = 0;
  EXPECT_EQ(0u, Parser_GetErrorCount(&count, &largest));
  EXPECT_EQ(1u, count);
  EXPECT_EQ(80u, largest);
  TAVOErrorRequest request{};
  request.version = 21;
  request.size = sizeof request;
  EXPECT_EQ(0u, Parser_GetError(&request));
  EXPECT_EQ(7139u, request.messageId);
  EXPECT_EQ((Names{"TAVOGetThreadBlock", "GetErrorCount", "TAVOGetThreadBlock", "GetError"}),
            front::platform().calls);
}

TEST_F(Retrieval, ReturnsThePlatformsResult) {
  front::fail("GetErrorCount", 1, 4711);
  front::fail("GetError", 1, 4712);
  front::fail("GetFormattedErrorMsg", 1, 4713);
  EXPECT_EQ(4711u, Parser_GetErrorCount(nullptr, nullptr));
  EXPECT_EQ(4712u, Parser_GetError(nullptr));
  EXPECT_EQ(4713u, Parser_GetFormattedErrorMsg(nullptr));
}

TEST_F(Retrieval, ReturnsTheFailureOfTheThreadBlock) {
  front::fail("TAVOGetThreadBlock", 0, 4714);
  EXPECT_EQ(4714u, Parser_GetErrorCount(nullptr, nullptr));
  EXPECT_EQ(4714u, Parser_GetError(nullptr));
  EXPECT_EQ((Names{"TAVOGetThreadBlock", "TAVOGetThreadBlock"}), front::platform().calls);
}

TEST_F(Retrieval, AFormattedMessageNeedsNoStateOfTheThread) {
  TAVOMessageRequest request{};
  request.version = 21;
  request.size = sizeof request;
  request.messageId = 7090;
  wchar_t text[200];
  request.text = text;
  request.textBytes = sizeof text;
  uint32_t status = 1;
  std::thread([&] { status = Parser_GetFormattedErrorMsg(&request); }).join();
  EXPECT_EQ(0u, status);
  EXPECT_NE(0, text[0]);
  EXPECT_EQ((Names{"GetFormattedErrorMsg"}), front::platform().calls);
}

TEST_F(Retrieval, AMessageHoldsItsInserts) {
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

TEST_F(Retrieval, LeavesTheErrorsForALaterLook) {
  for (int i = 0; i < 3; ++i) EXPECT_EQ(1u, tavo_test::held_errors().size());
}

}  // namespace
