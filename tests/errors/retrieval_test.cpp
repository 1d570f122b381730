#include <gtest/gtest.h>

#include <cstring>
#include <thread>

#include "TAVOErrorHandler.h"
#include "TAVOParser.h"
#include "platform/platform.h"
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

// The records are a contract between the caller and the platform.
TEST_F(Retrieval, HandsTheCallersArgumentsOnAsTheyAre) {
  void* block = nullptr;
  ASSERT_EQ(0u, TAVOGetThreadBlock(&block));
  const void* state = *static_cast<void**>(block);
  ASSERT_NE(nullptr, state);
  uint8_t first[64], second[64];
  std::memset(first, 0xA5, sizeof first);
  std::memset(second, 0x5A, sizeof second);
  for (const char* function : {"GetErrorCount", "GetError", "GetFormattedErrorMsg"}) {
    front::fail(function, 0, 4711);  // without reaching the platform, which would look into them
  }
  EXPECT_EQ(4711u, Parser_GetErrorCount(first, second));
  EXPECT_EQ(4711u, Parser_GetError(first));
  EXPECT_EQ(4711u, Parser_GetFormattedErrorMsg(second));
  const auto& calls = front::platform().retrievals;
  ASSERT_EQ(3u, calls.size());
  EXPECT_EQ("GetErrorCount", calls[0].function);
  EXPECT_EQ((std::vector<const void*>{state, first, second}), calls[0].arguments);
  EXPECT_EQ("GetError", calls[1].function);
  EXPECT_EQ((std::vector<const void*>{state, first}), calls[1].arguments);
  EXPECT_EQ("GetFormattedErrorMsg", calls[2].function);
  EXPECT_EQ((std::vector<const void*>{second}), calls[2].arguments);
  for (const uint8_t byte : first) EXPECT_EQ(0xA5, byte);
  for (const uint8_t byte : second) EXPECT_EQ(0x5A, byte);
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

TEST_F(Retrieval, LeavesTheErrorsForALaterLook) {
  for (int i = 0; i < 3; ++i) EXPECT_EQ(1u, tavo_test::held_errors().size());
}

}  // namespace
