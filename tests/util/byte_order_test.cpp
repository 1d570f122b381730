#include <gtest/gtest.h>

#include <vector>

#include "TAVOText.h"

namespace {

using Units16 = std::vector<uint16_t>;
using Units32 = std::vector<uint32_t>;

TEST(SwapValue, TurnsTheBytesRound) {
  EXPECT_EQ(0x78563412u, RTENDIAN_SWAP_UINT(0x12345678u));
  EXPECT_EQ(0x3412u, RTENDIAN_SWAP_USHORT(0x1234u));
  EXPECT_EQ(0xFF000000u, RTENDIAN_SWAP_UINT(0xFFu));
}

TEST(SwapBytes, StopsAtTheFirstZeroUnit) {
  Units16 narrow = {0x1234, 0x00FF, 0, 0x1234};
  EXPECT_EQ(narrow.data(), SwapBytes_2(narrow.data()));
  EXPECT_EQ((Units16{0x3412, 0xFF00, 0, 0x1234}), narrow);
  Units32 wide = {0x12345678, 0, 0x12345678};
  EXPECT_EQ(wide.data(), SwapBytes_4(wide.data()));
  EXPECT_EQ((Units32{0x78563412, 0, 0x12345678}), wide);
}

TEST(SwapnBytes, AnOddByteCountSwapsOneUnitMoreAndThatIsMeant) {
  Units16 narrow = {0x1234, 0x5678, 0x9ABC, 0};
  EXPECT_EQ(narrow.data(), SwapnBytes_2(narrow.data(), 3));
  EXPECT_EQ((Units16{0x3412, 0x7856, 0x9ABC, 0}), narrow);
  Units32 wide = {0x12345678, 0x12345678, 0x12345678};
  EXPECT_EQ(wide.data(), SwapnBytes_4(wide.data(), 5));
  EXPECT_EQ((Units32{0x78563412, 0x78563412, 0x12345678}), wide);
}

TEST(SwapnBytes, SwapsWholeUnitsUpToTheCount) {
  Units16 narrow = {0x1234, 0x5678, 0x9ABC};
  SwapnBytes_2(narrow.data(), 4);
  EXPECT_EQ((Units16{0x3412, 0x7856, 0x9ABC}), narrow);
}

TEST(SwapnBytes, StopsAtAZeroUnitAndAtACountOfZeroOrLess) {
  Units16 narrow = {0x1234, 0, 0x5678};
  SwapnBytes_2(narrow.data(), 0);
  SwapnBytes_2(narrow.data(), -2);
  EXPECT_EQ(0x1234, narrow[0]);
  SwapnBytes_2(narrow.data(), INT32_MAX);
  EXPECT_EQ((Units16{0x3412, 0, 0x5678}), narrow);
}

TEST(SwapBytes, ReturnsANullArray) {
  EXPECT_EQ(nullptr, SwapBytes_2(nullptr));
  EXPECT_EQ(nullptr, SwapBytes_4(nullptr));
  EXPECT_EQ(nullptr, SwapnBytes_2(nullptr, 2));
  EXPECT_EQ(nullptr, SwapnBytes_4(nullptr, 4));
}

TEST(BitFlip, TurnsTheBitsOfEachByteRound) {
  const uint8_t src[3] = {0x01, 0xF0, 0x12};
  uint8_t dst[4] = {0, 0, 0, 0xAA};
  RTBITFIELD_FLIP(dst, src, 3);
  EXPECT_EQ(0x80, dst[0]);
  EXPECT_EQ(0x0F, dst[1]);
  EXPECT_EQ(0x48, dst[2]);
  EXPECT_EQ(0xAA, dst[3]);
}

TEST(BitFlip, OfAllBytesTwiceInPlaceIsTheBytes) {
  uint8_t bytes[256];
  for (uint32_t i = 0; i < 256; ++i) bytes[i] = static_cast<uint8_t>(i);
  RTBITFIELD_FLIP(bytes, bytes, 256);
  EXPECT_EQ(0xC0, bytes[3]);
  RTBITFIELD_FLIP(bytes, bytes, 256);
  for (uint32_t i = 0; i < 256; ++i) EXPECT_EQ(i, bytes[i]);
}

TEST(BitFlip, IgnoresNulls) {
  uint8_t byte = 1;
  RTBITFIELD_FLIP(nullptr, &byte, 1);
  RTBITFIELD_FLIP(&byte, nullptr, 1);
  EXPECT_EQ(1, byte);
}

TEST(BigEndian, IsNeverTheCase) {
  EXPECT_EQ(0u, TAVO_IsPlatformBigEndian());
}

}  // namespace
