#include <gtest/gtest.h>

#include <set>

#include "TAVOSortRandom.h"

namespace {

TEST(SecureRandom, TheDeviceCanBeOpened) {
  EXPECT_EQ(0, checkSecureRandom());
}

// 64 draws of 32 bits: two equal ones are expected once in two million runs, three never.
TEST(SecureRandom, DrawsDiffer) {
  std::set<uint32_t> drawn;
  uint32_t all_ones = 0xFFFFFFFFu;
  uint32_t any_ones = 0;
  for (int i = 0; i < 64; ++i) {
    const uint32_t value = getSecureRandomNumber();
    drawn.insert(value);
    all_ones &= value;
    any_ones |= value;
  }
  EXPECT_GE(drawn.size(), 63u);
  EXPECT_EQ(0u, all_ones);
  EXPECT_EQ(0xFFFFFFFFu, any_ones);
}

}  // namespace
