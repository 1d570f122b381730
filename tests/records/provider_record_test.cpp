#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "TAVOServiceRecords.h"
#include "support/util_platform_double.h"

namespace {

using util_platform::platform;

constexpr uint32_t kNull = 0xFFFFFFFFu;

TEST(ProviderNumber, OfEachName) {
  const std::pair<const char*, uint32_t> numbers[] = {
      {"CCN", 1}, {"NID", 2}, {"EML", 3},   {"AFF", 4},    {"COL", 4},    {"HASH", 5},
      {"AGE", 6}, {"LKP", 7}, {"DSWAP", 8}, {"DDSWAP", 9}, {"CDSWAP", 10}};
  for (const auto& [name, number] : numbers) EXPECT_EQ(number, GetProviderID(name)) << name;
}

TEST(ProviderNumber, FollowsNoOrderOfTheNamesAndThatIsMeant) {
  EXPECT_EQ(5u, GetProviderID("HASH"));
  EXPECT_EQ(6u, GetProviderID("AGE"));
  EXPECT_EQ(10u, GetProviderID("CDSWAP"));
  EXPECT_EQ(9u, GetProviderID("DDSWAP"));
}

TEST(ProviderNumber, DisregardsCase) {
  EXPECT_EQ(9u, GetProviderID("ddswap"));
  EXPECT_EQ(4u, GetProviderID("col"));
  EXPECT_EQ(5u, GetProviderID("hAsH"));
}

TEST(ProviderNumber, OfAnythingElseIsEleven) {
  for (const char* name :
       {"", "C", "CCNX", "CC", "LOOKUP", "HASHLOOKUP", " CCN", "DSWAP ", "\xC3"}) {
    EXPECT_EQ(11u, GetProviderID(name)) << name;
  }
  EXPECT_EQ(11u, GetProviderID(nullptr));
}

// A source and a target with two buffers whose sizes the tests choose.
class ProviderRecord : public testing::Test {
 protected:
  void SetUp() override {
    util_platform::reset();
    std::memset(&source, 0xAB, sizeof source);
    source.b16 = 1;
    source.b17 = 2;
    source.h18 = 0x0304;
    source.h20 = 0x0506;
    source.text[0] = L"library";
    source.text[1] = L"path";
    source.textLength[0] = 28;
    source.textLength[1] = 16;
    std::memset(&target, 0xCD, sizeof target);
    target.bufferSize[0] = sizeof first;
    target.bufferSize[1] = sizeof second;
    target.buffers = buffers;
    std::memset(first, '~', sizeof first);
    std::memset(second, '~', sizeof second);
  }
  const wchar_t* wide(const void* buffer) const {
    return static_cast<const wchar_t*>(buffer);
  }
  void expect_header() const {
    EXPECT_EQ(1, target.b8);
    EXPECT_EQ(2, target.b9);
    EXPECT_EQ(0x0304, target.h10);
    EXPECT_EQ(0x0506, target.h12);
    for (const uint8_t byte : target.other0) EXPECT_EQ(0xCD, byte);
    for (const uint8_t byte : target.other14) EXPECT_EQ(0xCD, byte);
    EXPECT_EQ(sizeof first, target.bufferSize[0]);
    EXPECT_EQ(buffers, target.buffers);
  }

  ProviderSourceRecord source;
  ProviderTargetRecord target;
  alignas(wchar_t) unsigned char first[64];
  alignas(wchar_t) unsigned char second[64];
  void* buffers[2] = {first, second};
};

TEST_F(ProviderRecord, WideTextIsCopiedAndFilledUp) {
  EXPECT_EQ(0u, CopyPrvStruct(&target, &source, 0, 0, 'W'));
  expect_header();
  EXPECT_STREQ(L"library", wide(first));
  EXPECT_STREQ(L"path", wide(second));
  EXPECT_EQ(L'\0', wide(first)[15]);
  EXPECT_TRUE(platform().texts.empty());
}

TEST_F(ProviderRecord, AnyOtherFormIsWide) {
  EXPECT_EQ(0u, CopyPrvStruct(&target, &source, 0, 0, '\0'));
  EXPECT_STREQ(L"library", wide(first));
  EXPECT_EQ(0u, CopyPrvStruct(&target, &source, 0, 0, 'm'));
  EXPECT_TRUE(platform().texts.empty());
}

TEST_F(ProviderRecord, WideTextThatFillsItsBufferIsNotTerminatedAndThatIsMeant) {
  target.bufferSize[0] = 15;  // three characters
  EXPECT_EQ(0u, CopyPrvStruct(&target, &source, 0, 0, 'W'));
  EXPECT_EQ(L"lib", std::wstring(wide(first), 3));
  EXPECT_EQ('~', first[12]);
}

TEST_F(ProviderRecord, MultiByteTextGoesThroughTheDataConversion) {
  EXPECT_EQ(0u, CopyPrvStruct(&target, &source, 2, 1252, 'M'));
  expect_header();
  EXPECT_STREQ("library", reinterpret_cast<char*>(first));
  EXPECT_STREQ("path", reinterpret_cast<char*>(second));
  ASSERT_EQ(2u, platform().texts.size());
  EXPECT_EQ(28, platform().texts[0].length);
  EXPECT_EQ(16, platform().texts[1].length);
  EXPECT_EQ(64u, platform().texts[0].dst_bytes);
  EXPECT_EQ(2, platform().texts[0].kind);
  EXPECT_EQ(1252u, platform().texts[1].code_page);
  EXPECT_EQ(28, source.textLength[0]);
}

TEST_F(ProviderRecord, TheFirstFailingConversionIsTheResultAndTheHeaderStaysWritten) {
  platform().fail_text_at = 1;
  platform().text_status = 4711;
  EXPECT_EQ(4711u, CopyPrvStruct(&target, &source, 0, 0, 'M'));
  expect_header();
  EXPECT_EQ(1u, platform().texts.size());
  EXPECT_EQ('~', second[0]);
}

TEST_F(ProviderRecord, TheSecondConversionMayFailToo) {
  platform().fail_text_at = 2;
  platform().text_status = 4712;
  EXPECT_EQ(4712u, CopyPrvStruct(&target, &source, 0, 0, 'M'));
  EXPECT_STREQ("library", reinterpret_cast<char*>(first));
}

TEST_F(ProviderRecord, ANullTextIsAnEmptyOne) {
  source.text[0] = nullptr;
  EXPECT_EQ(0u, CopyPrvStruct(&target, &source, 0, 0, 'W'));
  EXPECT_STREQ(L"", wide(first));
  EXPECT_EQ(0u, CopyPrvStruct(&target, &source, 0, 0, 'M'));
  EXPECT_EQ(0, platform().texts[0].length);
  EXPECT_EQ('\0', first[0]);
}

TEST_F(ProviderRecord, NullsAreRefusedAndNothingIsWritten) {
  EXPECT_EQ(kNull, CopyPrvStruct(nullptr, &source, 0, 0, 'W'));
  EXPECT_EQ(kNull, CopyPrvStruct(&target, nullptr, 0, 0, 'W'));
  target.buffers = nullptr;
  EXPECT_EQ(kNull, CopyPrvStruct(&target, &source, 0, 0, 'W'));
  target.buffers = buffers;
  buffers[1] = nullptr;
  EXPECT_EQ(kNull, CopyPrvStruct(&target, &source, 0, 0, 'W'));
  EXPECT_EQ(0xCD, target.b8);
  EXPECT_EQ('~', first[0]);
}

TEST_F(ProviderRecord, ANullBufferOfSizeZeroIsLeftOut) {
  buffers[0] = nullptr;
  target.bufferSize[0] = 0;
  EXPECT_EQ(0u, CopyPrvStruct(&target, &source, 0, 0, 'M'));
  EXPECT_STREQ("path", reinterpret_cast<char*>(second));
}

}  // namespace
