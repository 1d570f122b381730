#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

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

// In a process without standard input the device gets file descriptor 0.
TEST(SecureRandom, TheFirstFileNumberIsOneLikeAnyOther) {
  const int input = fcntl(0, F_DUPFD_CLOEXEC, 10);
  close(0);
  EXPECT_EQ(0, checkSecureRandom());
  uint32_t any_ones = 0;
  for (int i = 0; i < 64; ++i) any_ones |= getSecureRandomNumber();
  EXPECT_EQ(0xFFFFFFFFu, any_ones);
  EXPECT_EQ(-1, fcntl(0, F_GETFD)) << "closed again";
  if (input >= 0) {
    dup2(input, 0);
    close(input);
  }
}

}  // namespace
