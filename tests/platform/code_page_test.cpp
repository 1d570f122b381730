#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "common/platform_status.h"
#include "platform/platform.h"

namespace {

using namespace tavo::platform;

ConversionDescriptor page(uint8_t kind, uint32_t number) {
  ConversionDescriptor descriptor = {};
  descriptor.kind = kind;
  descriptor.code_page = number;
  return descriptor;
}

uint32_t decode(const ConversionDescriptor& descriptor, const std::string& bytes,
                std::wstring& text) {
  std::vector<wchar_t> dst(bytes.size() + 1, L'#');
  auto length = static_cast<int32_t>(bytes.size());
  uint32_t count = 0;
  const uint32_t status = TAVOCnvCharToWVarcharSz(
      bytes.data(), &length, dst.data(), static_cast<uint32_t>(dst.size() * sizeof(wchar_t)),
      &count, &descriptor);
  text.assign(dst.data(), status == kOk ? count : 0);
  return status;
}

uint32_t encode(const ConversionDescriptor& descriptor, const std::wstring& text,
                std::string& bytes) {
  std::vector<char> dst(text.size() * 8 + 16, '#');
  uint32_t count = 0;
  const uint32_t status = TAVOCnvWVarcharSzToVarcharSz(
      text.c_str(), nullptr, dst.data(), static_cast<uint32_t>(dst.size()), &count, &descriptor);
  bytes.assign(dst.data(), status == kOk ? count : 0);
  return status;
}

void expect_both_ways(const ConversionDescriptor& descriptor, const std::string& bytes,
                      const std::wstring& text) {
  SCOPED_TRACE(descriptor.code_page);
  std::wstring decoded;
  EXPECT_EQ(decode(descriptor, bytes, decoded), kOk);
  EXPECT_EQ(decoded, text);
  std::string encoded;
  EXPECT_EQ(encode(descriptor, text, encoded), kOk);
  EXPECT_EQ(encoded, bytes);
}

TEST(CodePage, ReadsEbcdic) {
  // PRO=A1, and after it the characters in which the pages differ.
  const std::string common = "\xD7\xD9\xD6\x7E\xC1\xF1";
  for (const uint32_t number : {37U, 273U, 500U, 1047U, 1140U, 1141U}) {
    expect_both_ways(page(1, number), common, L"PRO=A1");
    expect_both_ways(page(0, number), common, L"PRO=A1");
  }
  expect_both_ways(page(1, 37), "\xBA\xBB\x4A", L"[]\u00a2");
  expect_both_ways(page(1, 1047), "\xAD\xBD\x4A", L"[]\u00a2");
  expect_both_ways(page(1, 500), "\x4A\x5A", L"[]");
  expect_both_ways(page(1, 273), "\x4A\xE0\x5A", L"\u00c4\u00d6\u00dc");
  expect_both_ways(page(1, 1140), "\x9F", L"\u20ac");
  expect_both_ways(page(1, 37), "\x9F", L"\u00a4");
}

TEST(CodePage, ReadsEbcdicWithShiftsBetweenOneAndTwoBytes) {
  // Shift out, a Katakana A in two bytes, shift in.
  std::wstring text;
  EXPECT_EQ(decode(page(1, 939), "\xC1\x0E\x43\x81\x0F\xC2", text), kOk);
  EXPECT_EQ(text, L"A\u30a2B");
  expect_both_ways(page(1, 939), "\xC1\x0E\x43\x81\x0F\xC2", L"A\u30a2B");
}

TEST(CodePage, ReadsWindowsAndIsoPages) {
  expect_both_ways(page(2, 1252), "\x80\xE9", L"\u20ac\u00e9");
  expect_both_ways(page(0, 1252), "\xE9", L"\u00e9");
  expect_both_ways(page(2, 1251), "\xCF", L"\u041f");
  expect_both_ways(page(2, 932), "\x83\x41", L"\u30a2");
  expect_both_ways(page(2, 936), "\xD6\xD0", L"\u4e2d");
  expect_both_ways(page(2, 28591), "\xE9\xFF", L"\u00e9\u00ff");
  expect_both_ways(page(2, 28605), "\xA4", L"\u20ac");
  expect_both_ways(page(2, 20273), "\x4A", L"\u00c4");
  expect_both_ways(page(2, 1140), "\x9F", L"\u20ac");
  expect_both_ways(page(2, 37), "\xC1", L"A");
  expect_both_ways(page(1, 819), "\xE9", L"\u00e9");
  expect_both_ways(page(1, 850), "\x82", L"\u00e9");
  expect_both_ways(page(2, 54936), std::string("\x81\x30\x81\x30"), L"\u0080");
}

TEST(CodePage, IsUtf8ByDefaultAndByItsNumbers) {
  for (const auto& descriptor : {page(0, 0), page(1, 0), page(2, 0), page(0, 1208), page(1, 1208),
                                 page(0, 65001), page(2, 65001)}) {
    expect_both_ways(descriptor, "\xE2\x82\xAC\xF0\x9F\x98\x80", L"\u20ac\U0001F600");
  }
}

TEST(CodePage, ThatIsUnknownHasAStatusOfItsOwn) {
  std::wstring text;
  std::string bytes;
  for (const auto& descriptor :
       {page(0, 99999), page(1, 65001), page(2, 99999), page(3, 37), page(255, 0), page(0, ~0U)}) {
    EXPECT_EQ(decode(descriptor, "a", text), kCodePageUnknown);
    EXPECT_EQ(encode(descriptor, L"a", bytes), kCodePageUnknown);
  }
}

TEST(CodePage, WithWholeWordsOrEscapesIsNoneOf8BitText) {
  std::wstring text;
  for (const auto& descriptor : {page(1, 1200), page(1, 13488), page(2, 1200), page(2, 1201),
                                 page(2, 12000), page(2, 65000), page(2, 50220)}) {
    EXPECT_EQ(decode(descriptor, "ab", text), kCodePageUnknown) << descriptor.code_page;
  }
}

TEST(CodePage, RefusesBytesItDoesNotKnow) {
  std::wstring text;
  EXPECT_EQ(decode(page(1, 367), "a\x80", text), kSourceInvalid);
  EXPECT_EQ(decode(page(2, 932), "a\x83", text), kSourceInvalid) << "cut in a character";
  EXPECT_EQ(decode(page(2, 932), "\x83\x20", text), kSourceInvalid);
  EXPECT_EQ(decode(page(1, 939), "\x0E\x43", text), kSourceInvalid);
  EXPECT_EQ(decode(page(1, 939), "\x0E\xFE\xFF\x0F", text), kSourceInvalid);
  EXPECT_EQ(decode(page(2, 1253), "\xD2", text), kSourceInvalid);
}

TEST(CodePage, RefusesBytesThatStandForADamagedCharacter) {
  std::wstring text;
  EXPECT_EQ(decode(page(2, 54936), "a\x84\x31\xA4\x37", text), kSourceInvalid);
}

TEST(CodePage, RefusesCharactersItDoesNotHave) {
  std::string bytes;
  for (const wchar_t* text : {L"a\u20ac", L"\U0001F600", L"a\u0100"}) {
    EXPECT_EQ(encode(page(1, 37), text, bytes), kCharacterNotInTarget);
    EXPECT_EQ(encode(page(1, 819), text, bytes), kCharacterNotInTarget);
  }
}

TEST(CodePage, DropsNoCharacterThatNeedNotBeShown) {
  std::string bytes;
  for (const wchar_t* text : {L"a\u200bb", L"a\u2060", L"\ufeff", L"\ufe0f"}) {
    EXPECT_EQ(encode(page(1, 37), text, bytes), kCharacterNotInTarget);
    EXPECT_EQ(encode(page(1, 367), text, bytes), kCharacterNotInTarget);
  }
}

TEST(CodePage, WritesNoCharacterThatOnlyLooksAlike) {
  std::string bytes;
  for (const wchar_t* text : {L"\uff21", L"\u2019", L"\u0391"}) {
    EXPECT_EQ(encode(page(1, 819), text, bytes), kCharacterNotInTarget);
    EXPECT_EQ(encode(page(1, 37), text, bytes), kCharacterNotInTarget);
  }
}

TEST(CodePage, ReadsBackWhateverItWritesOfThePrivateUseArea) {
  for (const auto& descriptor : {page(1, 37), page(2, 932), page(1, 943), page(2, 936),
                                 page(2, 950), page(1, 939), page(1, 1388)}) {
    int written = 0;
    for (uint32_t c = 0xE000; c <= 0xF8FF; ++c) {
      std::string bytes;
      const std::wstring text(1, static_cast<wchar_t>(c));
      if (encode(descriptor, text, bytes) != kOk) continue;
      std::wstring again;
      ASSERT_EQ(decode(descriptor, bytes, again), kOk);
      ASSERT_EQ(again, text);
      ++written;
    }
    if (descriptor.code_page == 37) {
      EXPECT_EQ(written, 0);
    }
  }
}

TEST(CodePage, ConvertsTextsLongerThanOnePiece) {
  std::wstring text;
  std::string bytes;
  for (int i = 0; i < 1000; ++i) {
    text += static_cast<wchar_t>(L'A' + i % 26);
    bytes += static_cast<char>(i % 26 < 9    ? 0xC1 + i % 26
                               : i % 26 < 18 ? 0xD1 + i % 26 - 9
                                             : 0xE2 + i % 26 - 18);
  }
  expect_both_ways(page(1, 1047), bytes, text);
  std::wstring pairs;
  for (int i = 0; i < 700; ++i) {
    pairs += i % 3 == 0 ? L"\U0001F600" : L"x";
  }
  std::string encoded;
  EXPECT_EQ(encode(page(2, 54936), pairs, encoded), kOk);
  expect_both_ways(page(2, 54936), encoded, pairs);
}

TEST(CodePage, FillsItsBufferExactlyAndNotBeyond) {
  const std::wstring text = L"ABCDEFG";
  const auto descriptor = page(1, 37);
  for (uint32_t room = 0; room < 10; ++room) {
    std::vector<char> dst(room + 1, '#');
    uint32_t count = 99;
    const uint32_t status =
        TAVOCnvWVarcharSzToVarcharSz(text.c_str(), nullptr, dst.data(), room, &count, &descriptor);
    EXPECT_EQ(status, room > 7 ? kOk : kBufferTooSmall) << room;
    EXPECT_EQ(dst[room], '#');
    std::vector<wchar_t> wide(room + 1, L'#');
    int32_t length = 7;
    EXPECT_EQ(TAVOCnvCharToWVarcharSz("\xC1\xC2\xC3\xC4\xC5\xC6\xC7", &length, wide.data(),
                                      room * 4, &count, &descriptor),
              room > 7 ? kOk : kBufferTooSmall);
    EXPECT_EQ(wide[room], L'#');
  }
}

TEST(CodePage, WorksBeforeTheStartAndAfterTheStopOfDataConversion) {
  expect_both_ways(page(1, 37), "\xC1", L"A");
  EXPECT_EQ(TAVOTermDataConversion(), kOk);
  expect_both_ways(page(1, 37), "\xC1", L"A");
  EXPECT_EQ(TAVOInitDataConversion(), kOk);
  EXPECT_EQ(TAVOInitDataConversion(), kOk);
  expect_both_ways(page(1, 37), "\xC1", L"A");
  EXPECT_EQ(TAVOTermDataConversion(), kOk);
  EXPECT_EQ(TAVOTermDataConversion(), kOk);
}

TEST(CodePage, StaysRightWhenMoreAreUsedThanAreKept) {
  for (int round = 0; round < 3; ++round) {
    for (const uint32_t number : {37U, 273U, 500U, 1047U, 1140U, 1141U, 850U, 437U}) {
      std::string bytes;
      std::wstring text;
      ASSERT_EQ(encode(page(1, number), L"Az09", bytes), kOk);
      ASSERT_EQ(decode(page(1, number), bytes, text), kOk);
      EXPECT_EQ(text, L"Az09");
    }
  }
}

TEST(CodePage, RecoversFromAConversionThatFailed) {
  std::wstring text;
  EXPECT_EQ(decode(page(1, 939), "\x0E\x43", text), kSourceInvalid);
  expect_both_ways(page(1, 939), "\xC1", L"A");
  std::string bytes;
  EXPECT_EQ(encode(page(1, 939), L"\u30a2\U0001F600", bytes), kCharacterNotInTarget);
  expect_both_ways(page(1, 939), "\xC1", L"A");
}

TEST(CodePage, IsSharedByNoThreads) {
  std::atomic<bool> stop{false};
  std::vector<std::thread> threads;
  for (const uint32_t number : {37U, 1047U, 939U}) {
    threads.emplace_back([number] {
      for (int i = 0; i < 300; ++i) {
        std::string bytes;
        std::wstring text;
        EXPECT_EQ(encode(page(1, number), L"PRO=CCN", bytes), kOk);
        EXPECT_EQ(decode(page(1, number), bytes, text), kOk);
        EXPECT_EQ(text, L"PRO=CCN");
      }
    });
  }
  std::thread stopper([&] {
    while (!stop) {
      EXPECT_EQ(TAVOTermDataConversion(), kOk);
      std::this_thread::yield();
    }
  });
  for (auto& thread : threads) {
    thread.join();
  }
  stop = true;
  stopper.join();
}

}  // namespace
