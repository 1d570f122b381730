#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "common/platform_status.h"
#include "platform/platform.h"

namespace {

using namespace tavo::platform;

constexpr uint32_t kUntouched = 0xABCD;

struct Wide {
  uint32_t status = 0, count = kUntouched;
  std::u32string text;
};
struct Units {
  uint32_t status = 0, count = kUntouched;
  std::u16string text;
};

// Each conversion runs in a heap buffer of exactly the stated size, so that the sanitizer detects a
// write past its end.
Wide to_32(const std::u16string& src, uint32_t room) {
  std::vector<uint32_t> dst(room, 0x7777);
  Wide result;
  result.status = Convert16To32(reinterpret_cast<const uint16_t*>(src.data()),
                                static_cast<uint32_t>(src.size()), dst.data(), room, &result.count);
  if (result.status == kOk) result.text.assign(dst.begin(), dst.begin() + result.count);
  if (result.status == kOk && result.count < room) {
    EXPECT_EQ(dst[result.count], 0U);
  }
  if (result.status != kOk && room != 0) {
    EXPECT_EQ(dst[0], 0U) << "no part is left behind";
  }
  return result;
}

Units to_16(const std::u32string& src, uint32_t room) {
  std::vector<uint16_t> dst(room, 0x7777);
  Units result;
  result.status = Convert32To16(reinterpret_cast<const uint32_t*>(src.data()),
                                static_cast<int32_t>(src.size()), dst.data(), room, &result.count);
  if (result.status == kOk) result.text.assign(dst.begin(), dst.begin() + result.count);
  if (result.status == kOk && result.count < room) {
    EXPECT_EQ(dst[result.count], 0U);
  }
  if (result.status != kOk && room != 0) {
    EXPECT_EQ(dst[0], 0U) << "no part is left behind";
  }
  return result;
}

TEST(Convert16To32, JoinsSurrogatePairs) {
  const Wide result = to_32(u"a\u00e9\u20ac\U0001F600\U0010FFFF", 10);
  EXPECT_EQ(result.status, kOk);
  EXPECT_EQ(result.count, 5U);
  EXPECT_EQ(result.text, U"a\u00e9\u20ac\U0001F600\U0010FFFF");
}

TEST(Convert16To32, RefusesUnpairedHalves) {
  for (const std::u16string& bad : {std::u16string{u'a', 0xD800},
                                    {0xD800, u'a'},
                                    {0xDC00},
                                    {0xDC00, 0xD800},
                                    {0xD800, 0xD800, 0xDC00},
                                    {u'1', u'2', u'3', u'4', u'5', u'6', u'7', u'8', 0xDFFF}}) {
    const Wide result = to_32(bad, 20);
    EXPECT_EQ(result.status, kSourceInvalid);
    EXPECT_EQ(result.count, kUntouched);
  }
}

TEST(Convert16To32, FillsItsBufferExactlyAndNotBeyond) {
  for (const std::u16string& text : {std::u16string(u"abc"), std::u16string(u"a\U0001F600b"),
                                     std::u16string(u"0123456789abcdef"), std::u16string()}) {
    const uint32_t chars = to_32(text, 100).count;
    EXPECT_EQ(to_32(text, chars).status, kOk);
    EXPECT_EQ(to_32(text, chars + 1).status, kOk);
    for (uint32_t room = 0; room < chars; ++room) {
      EXPECT_EQ(to_32(text, room).status, kBufferTooSmall) << room;
    }
  }
}

TEST(Convert16To32, KeepsNulCharacters) {
  const Wide result = to_32(std::u16string(u"a\0b", 3), 4);
  EXPECT_EQ(result.text, std::u32string(U"a\0b", 3));
}

TEST(Convert16To32, RefusesNullArguments) {
  const uint16_t src = u'a';
  uint32_t dst = 7, count = kUntouched;
  EXPECT_EQ(Convert16To32(nullptr, 1, &dst, 1, &count), kArgumentInvalid);
  EXPECT_EQ(Convert16To32(&src, 1, nullptr, 1, &count), kArgumentInvalid);
  EXPECT_EQ(Convert16To32(&src, 1, &dst, 1, nullptr), kArgumentInvalid);
  EXPECT_EQ(count, kUntouched);
  EXPECT_EQ(Convert16To32(nullptr, 0, nullptr, 0, &count), kOk);
  EXPECT_EQ(count, 0U);
}

TEST(Convert32To16, SplitsCharactersAboveTheFirstPlane) {
  const Units result = to_16(U"a\uFFFF\U00010000\U0010FFFF", 10);
  EXPECT_EQ(result.status, kOk);
  EXPECT_EQ(result.count, 6U);
  EXPECT_EQ(result.text, u"a\uFFFF\U00010000\U0010FFFF");
}

TEST(Convert32To16, RefusesWhatIsNoCharacter) {
  for (const uint32_t bad :
       {0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU, 0x110000U, 0x7FFFFFFFU, 0x80000041U, 0xFFFFFFFFU}) {
    std::u32string text = U"12345678";
    for (size_t at = 0; at <= 8; at += 4) {
      std::u32string copy = text;
      copy.insert(at, 1, static_cast<char32_t>(bad));
      const Units result = to_16(copy, 40);
      EXPECT_EQ(result.status, kSourceInvalid) << std::hex << bad << " at " << at;
      EXPECT_EQ(result.count, kUntouched);
    }
  }
}

TEST(Convert32To16, FillsItsBufferExactlyAndNotBeyond) {
  for (const std::u32string& text : {std::u32string(U"abc"), std::u32string(U"a\U0001F600b"),
                                     std::u32string(U"0123456789abcdef"), std::u32string()}) {
    const uint32_t units = to_16(text, 100).count;
    EXPECT_EQ(to_16(text, units).status, kOk);
    for (uint32_t room = 0; room < units; ++room) {
      EXPECT_EQ(to_16(text, room).status, kBufferTooSmall) << room;
    }
  }
}

TEST(Convert32To16, RefusesANegativeLengthAndNullArguments) {
  const uint32_t src = U'a';
  uint16_t dst = 7;
  uint32_t count = kUntouched;
  EXPECT_EQ(Convert32To16(&src, -1, &dst, 1, &count), kLengthInvalid);
  EXPECT_EQ(Convert32To16(&src, INT32_MIN, &dst, 1, &count), kLengthInvalid);
  EXPECT_EQ(Convert32To16(nullptr, 1, &dst, 1, &count), kArgumentInvalid);
  EXPECT_EQ(Convert32To16(&src, 1, nullptr, 1, &count), kArgumentInvalid);
  EXPECT_EQ(Convert32To16(&src, 1, &dst, 1, nullptr), kArgumentInvalid);
  EXPECT_EQ(count, kUntouched);
}

std::string to_8(const std::u16string& src, uint32_t room, uint32_t& status, uint32_t& produced) {
  std::vector<char> dst(room, 'x');
  produced = kUntouched;
  status = Convert16To8(dst.data(), room, reinterpret_cast<const uint16_t*>(src.data()),
                        static_cast<uint32_t>(src.size()), &produced);
  if (status != kOk) {
    if (room != 0) {
      EXPECT_EQ(dst[0], '\0');
    }
    return {};
  }
  if (produced < room) {
    EXPECT_EQ(dst[produced], '\0');
  }
  return std::string(dst.data(), produced);
}

// Texts are copied in groups while they have no special characters.
TEST(Unicode, IsTheSameForEveryLengthAndEveryPlaceOfASpecialCharacter) {
  for (const char32_t special :
       {U'\x7FFF', U'\x8000', U'\xD7FF', U'\xE000', U'\xFFFF', U'\x1F600'}) {
    for (size_t length = 1; length <= 20; ++length) {
      for (size_t place = 0; place < length; ++place) {
        std::u32string wide;
        std::u16string units;
        for (size_t i = 0; i < length; ++i) {
          const char32_t c = i == place ? special : U'a' + static_cast<char32_t>(i);
          wide += c;
          if (c > 0xFFFF) {
            units += static_cast<char16_t>(0xD7C0 + (c >> 10));
            units += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
          } else {
            units += static_cast<char16_t>(c);
          }
        }
        EXPECT_EQ(wide, to_32(units, static_cast<uint32_t>(length)).text) << length << ' ' << place;
        EXPECT_EQ(units, to_16(wide, static_cast<uint32_t>(units.size())).text)
            << length << ' ' << place;
        units[place] = 0xDC00;  // an unpaired low surrogate
        EXPECT_EQ(kSourceInvalid, to_32(units, 64).status) << length << ' ' << place;
        wide[place] = 0xDC00;
        EXPECT_EQ(kSourceInvalid, to_16(wide, 64).status) << length << ' ' << place;
      }
    }
  }
}

TEST(Convert16To8, WritesUtf8) {
  uint32_t status = 0, produced = 0;
  const std::string text = to_8(u"a\u00e9\u20ac\U0001F600", 100, status, produced);
  EXPECT_EQ(status, kOk);
  EXPECT_EQ(text, "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(produced, 10U);
  for (uint32_t room = 0; room < 10; ++room) {
    to_8(u"a\u00e9\u20ac\U0001F600", room, status, produced);
    EXPECT_EQ(status, kBufferTooSmall) << room;
    EXPECT_EQ(produced, kUntouched);
  }
  to_8(u"a\u00e9\u20ac\U0001F600", 10, status, produced);
  EXPECT_EQ(status, kOk);
}

TEST(Convert16To8, RefusesUnpairedHalvesAndNullArguments) {
  uint32_t status = 0, produced = 0;
  to_8({u'a', 0xD800}, 10, status, produced);
  EXPECT_EQ(status, kSourceInvalid);
  to_8({0xDC00, u'a'}, 10, status, produced);
  EXPECT_EQ(status, kSourceInvalid);
  const uint16_t src = u'a';
  char dst = 'x';
  EXPECT_EQ(Convert16To8(nullptr, 1, &src, 1, &produced), kArgumentInvalid);
  EXPECT_EQ(Convert16To8(&dst, 1, nullptr, 1, &produced), kArgumentInvalid);
  EXPECT_EQ(Convert16To8(&dst, 1, &src, 1, nullptr), kArgumentInvalid);
}

}  // namespace
