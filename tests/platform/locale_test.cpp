// Names of levels and languages are ASCII: the process's locale has no say in them. Its functions
// are answered here first, and know no letters while a test says so.
#include <gtest/gtest.h>
#include <strings.h>

#include <cctype>
#include <cstdlib>

#include "TAVOErrorHandler.h"
#include "common/platform_status.h"
#include "platform/platform.h"

namespace {

bool knows_letters = true;

int small(int c) {
  return knows_letters && c >= 'A' && c <= 'Z' ? c + 0x20 : c;
}

class WithoutLetters : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"TAVO_LANG", "LC_ALL", "LC_MESSAGES", "LANG"}) unsetenv(name);
    knows_letters = false;
  }
  void TearDown() override {
    knows_letters = true;
    TAVOSetTraceLevel("OFF");
  }
};

}  // namespace

#pragma GCC visibility push(default)
extern "C" {
int tolower(int c) noexcept {
  return small(c);
}
int isalpha(int c) noexcept {
  return knows_letters && small(c) >= 'a' && small(c) <= 'z' ? 1 : 0;
}
int strcasecmp(const char* a, const char* b) noexcept {
  while (*a != '\0' && small(*a) == small(*b)) {
    ++a;
    ++b;
  }
  return small(*a) - small(*b);
}
}
#pragma GCC visibility pop

namespace {

using namespace tavo::platform;

TEST_F(WithoutLetters, ATraceLevelIsReadInEitherCase) {
  EXPECT_NE(0, strcasecmp("DETAIL", "detail"));
  for (const char* level : {"detail", "Error", "calls", "OFF", "trclevel"}) {
    EXPECT_EQ(kOk, TAVOSetTraceLevel(level)) << level;
  }
  for (const char* level : {"detai", "details", "detai\x4C\x20", "d\x05tail"}) {
    EXPECT_EQ(kTraceLevelUnknown, TAVOSetTraceLevel(level)) << level;
  }
}

std::wstring message_of_a_rejection() {
  wchar_t text[256] = {};
  TAVOMessageRequest request = {};
  request.version = 21;
  request.size = sizeof request;
  request.messageId = 7148;
  request.text = text;
  request.textBytes = sizeof text;
  EXPECT_EQ(kOk, GetFormattedErrorMsg(&request));
  return text;
}

TEST_F(WithoutLetters, ALanguageIsNamedInEitherCase) {
  const std::wstring english = message_of_a_rejection();
  setenv("TAVO_LANG", "De_DE.UTF-8", 1);
  const std::wstring german = message_of_a_rejection();
  EXPECT_NE(english, german);
  setenv("TAVO_LANG", "DE", 1);
  EXPECT_EQ(german, message_of_a_rejection());
  setenv("TAVO_LANG", "DEx", 1);
  EXPECT_EQ(english, message_of_a_rejection()) << "another word that begins so";
}

}  // namespace
