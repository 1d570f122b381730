#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "TAVOEnvLib/env.h"
#include "TAVOProvider/provider.h"
#include "common/platform_status.h"

namespace {

using namespace tavo::platform;

constexpr char kName[] = "TAVO_SETTING_UNDER_TEST";

class Setting : public testing::Test {
 protected:
  void TearDown() override {
    unsetenv(kName);
  }
};

TEST_F(Setting, IsCopiedWithItsTerminator) {
  setenv(kName, "value", 1);
  char dst[7];
  std::memset(dst, '#', sizeof dst);
  uint32_t length = 99;
  EXPECT_EQ(TAVOEnvGetSetting(kName, dst, 6, &length), kOk);
  EXPECT_STREQ(dst, "value");
  EXPECT_EQ(length, 5U);
  EXPECT_EQ(dst[6], '#');
  EXPECT_EQ(TAVOEnvGetSetting(kName, dst, 6, nullptr), kOk);
}

TEST_F(Setting, ThatDoesNotFitLeavesAnEmptyText) {
  setenv(kName, "value", 1);
  char dst[6] = "#####";
  uint32_t length = 99;
  EXPECT_EQ(TAVOEnvGetSetting(kName, dst, 5, &length), kBufferTooSmall);
  EXPECT_STREQ(dst, "");
  EXPECT_EQ(length, 99U);
}

TEST_F(Setting, ThatIsAbsentOrEmptyIsNotSet) {
  char dst[6] = "#####";
  EXPECT_EQ(TAVOEnvGetSetting(kName, dst, sizeof dst, nullptr), kSettingNotSet);
  EXPECT_STREQ(dst, "");
  setenv(kName, "", 1);
  EXPECT_EQ(TAVOEnvGetSetting(kName, dst, sizeof dst, nullptr), kSettingNotSet);
}

TEST_F(Setting, NeedsANameAndABuffer) {
  char dst[2];
  EXPECT_EQ(TAVOEnvGetSetting(nullptr, dst, sizeof dst, nullptr), kArgumentInvalid);
  EXPECT_EQ(TAVOEnvGetSetting(kName, nullptr, 2, nullptr), kArgumentInvalid);
  EXPECT_EQ(TAVOEnvGetSetting(kName, dst, 0, nullptr), kArgumentInvalid);
}

TEST(ProviderLibrary, TellsThatItIsTheEmbeddedOne) {
  EXPECT_EQ(TAVOProviderInterfaceVersion(), 1U);
  EXPECT_STREQ(TAVOProviderName(), "embedded");
}

}  // namespace
