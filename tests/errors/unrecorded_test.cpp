// A rejected statement whose error the platform refused to record.
#include <gtest/gtest.h>

#include "TAVOParserCpp.hpp"
#include "support/fronting_platform.h"
#include "support/parse_run.h"

namespace {

class Unrecorded : public testing::Test {
 protected:
  void SetUp() override {
    front::reset();
  }
  void TearDown() override {
    front::reset();
  }
};

TEST_F(Unrecorded, IsRejectedWithoutAnErrorAsTheHeaderSays) {
  front::fail("TAVOGetThreadBlock", 2, 4711);  // that of the recording
  tavo_test::WideRequest request(L"PRO=CCN, NONSENSE=1");
  EXPECT_EQ(7148u, Parser_Service(request.get()));
  uint32_t count = 9;
  EXPECT_EQ(0u, Parser_GetErrorCount(&count, nullptr));
  EXPECT_EQ(0u, count);
  EXPECT_EQ(7148u, Parser_Service(request.get())) << "the same request, again";
  EXPECT_EQ(0u, Parser_GetErrorCount(&count, nullptr));
  EXPECT_EQ(1u, count);
}

TEST_F(Unrecorded, HasOneErrorInTheWrappersOwnWords) {
  front::fail("TAVOGetThreadBlock", 2, 4711);
  const tavo::ParseResult result = tavo::parse_with_service(L"PRO=CCN, NONSENSE=1");
  EXPECT_EQ(7148u, result.status);
  ASSERT_EQ(1u, result.errors.size());
  EXPECT_EQ(7148u, result.errors[0].number);
  EXPECT_EQ(
      L"The parameter string was rejected, and what is wrong with it could not be recorded. "
      L"Parse it again to learn it.",
      result.errors[0].message);
  EXPECT_TRUE(result.errors[0].inserts.empty());
  EXPECT_FALSE(result.errors[0].location.has_value());
}

TEST_F(Unrecorded, OfAnotherStatusKeepsThePlatformsWords) {
  front::fail("TAVOGetThreadBlock", 1, 7143);
  const tavo::ParseResult result = tavo::parse_with_service(L"PRO=CCN");
  EXPECT_EQ(7143u, result.status);
  ASSERT_EQ(1u, result.errors.size());
  EXPECT_EQ(7143u, result.errors[0].number);
  EXPECT_EQ(tavo::format_message(7143), result.errors[0].message);
}

}  // namespace
