#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdint>
#include <string>
#include <vector>

#include "common/platform_status.h"
#include "platform/platform.h"

namespace {

using namespace tavo::platform;

rc::Gen<uint32_t> any_character() {
  return rc::gen::suchThat(
      rc::gen::oneOf(rc::gen::inRange<uint32_t>(0, 0x80), rc::gen::inRange<uint32_t>(0, 0x110000)),
      [](uint32_t c) { return c < 0xD800 || c > 0xDFFF; });
}

TEST(Properties, Utf16AndBackGivesTheSameText) {
  EXPECT_TRUE(rc::check([] {
    const auto text = *rc::gen::container<std::vector<uint32_t>>(any_character());
    std::vector<uint16_t> units(text.size() * 2);
    uint32_t count = 0;
    RC_ASSERT(Convert32To16(text.data(), static_cast<int32_t>(text.size()), units.data(),
                            static_cast<uint32_t>(units.size()), &count) == kOk);
    std::vector<uint32_t> again(text.size());
    uint32_t chars = 0;
    RC_ASSERT(Convert16To32(units.data(), count, again.data(), static_cast<uint32_t>(again.size()),
                            &chars) == kOk);
    RC_ASSERT(chars == text.size());
    RC_ASSERT(again == text);
  }));
}

TEST(Properties, AnyUnitsAreEitherRefusedOrComeBackTheSame) {
  EXPECT_TRUE(rc::check([](const std::vector<uint16_t>& units) {
    std::vector<uint32_t> text(units.size());
    uint32_t chars = 0;
    const uint32_t status = Convert16To32(units.data(), static_cast<uint32_t>(units.size()),
                                          text.data(), static_cast<uint32_t>(text.size()), &chars);
    RC_ASSERT(status == kOk || status == kSourceInvalid);
    if (status != kOk) return;
    std::vector<uint16_t> again(units.size());
    uint32_t count = 0;
    RC_ASSERT(Convert32To16(text.data(), static_cast<int32_t>(chars), again.data(),
                            static_cast<uint32_t>(again.size()), &count) == kOk);
    RC_ASSERT(again == units);
  }));
}

TEST(Properties, AnyBytesAreEitherRefusedAsUtf8OrComeBackTheSame) {
  EXPECT_TRUE(rc::check([](const std::string& raw) {
    std::vector<wchar_t> text(raw.size() + 1);
    auto length = static_cast<int32_t>(raw.size());
    uint32_t chars = 0;
    const uint32_t status = TAVOCnvCharToWVarcharSz(
        raw.data(), &length, text.data(), static_cast<uint32_t>(text.size() * sizeof(wchar_t)),
        &chars, nullptr);
    RC_ASSERT(status == kOk || status == kSourceInvalid);
    if (status != kOk || raw.find('\0') != std::string::npos) return;
    std::string again(raw.size() + 1, '#');
    uint32_t count = 0;
    RC_ASSERT(TAVOCnvWVarcharSzToVarcharSz(text.data(), nullptr, again.data(),
                                           static_cast<uint32_t>(again.size()), &count,
                                           nullptr) == kOk);
    RC_ASSERT(again.substr(0, count) == raw);
  }));
}

TEST(Properties, NumbersAreReadAsTheyAreWritten) {
  EXPECT_TRUE(rc::check([](int32_t number) {
    wchar_t text[12];
    uint32_t count = 0;
    RC_ASSERT(TAVOCnvIntToWVarcharSz1(&number, text, sizeof text, &count) == kOk);
    int32_t again = 0;
    RC_ASSERT(TAVOCnvWVarcharSzToInt(text, &again) == kOk);
    RC_ASSERT(again == number);
    int64_t wide = 0;
    RC_ASSERT(TAVOCnvWVarcharSzToLongLong(text, &wide) == kOk);
    RC_ASSERT(wide == number);
  }));
}

TEST(Properties, SingleByteCodePagesComeBackByteForByte) {
  for (const uint32_t number : {37U, 273U, 500U, 1047U, 1140U, 819U, 850U}) {
    ConversionDescriptor page = {};
    page.kind = 1;
    page.code_page = number;
    for (int byte = 1; byte < 256; ++byte) {
      const char raw = static_cast<char>(byte);
      int32_t length = 1;
      wchar_t text[2];
      uint32_t count = 0;
      ASSERT_EQ(TAVOCnvCharToWVarcharSz(&raw, &length, text, sizeof text, &count, &page), kOk)
          << number << " " << byte;
      char again[2];
      ASSERT_EQ(TAVOCnvWVarcharSzToVarcharSz(text, nullptr, again, sizeof again, &count, &page),
                kOk);
      ASSERT_EQ(again[0], raw);
    }
  }
}

}  // namespace
