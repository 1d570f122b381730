#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "TAVONumericText.h"

namespace {

constexpr uint32_t kFailed = 0xFFFFFFFFu;

TEST(Permutation, OfOneIsOne) {
  uint16_t out[2] = {0, 77};
  EXPECT_EQ(1u, PXGetPermutation(12345, 1, out));
  EXPECT_EQ(1, out[0]);
  EXPECT_EQ(77, out[1]);
}

TEST(Permutation, OfSeedZeroIsInOrder) {
  for (uint32_t n = 1; n <= 16; ++n) {
    std::vector<uint16_t> out(n), expected(n);
    std::iota(expected.begin(), expected.end(), uint16_t{1});
    EXPECT_EQ(n, PXGetPermutation(0, n, out.data()));
    EXPECT_EQ(expected, out);
  }
}

TEST(Permutation, KeepsItsSeedInEveryStep) {
  // Seed 7 of 1..5: 7 % 5 = 2 takes 3 of 12345, 7 % 4 = 3 takes 5 of 1245, 7 % 3 = 1 takes 2 of
  // 124, 7 % 2 = 1 takes 4 of 14, and 1 is left.
  uint16_t out[5] = {};
  EXPECT_EQ(1u, PXGetPermutation(7, 5, out));
  EXPECT_EQ((std::vector<uint16_t>{3, 5, 2, 4, 1}), std::vector<uint16_t>(out, out + 5));
}

TEST(Permutation, AnswersWithItsLastEntryAndThatIsMeant) {
  uint16_t out[3] = {};
  EXPECT_EQ(2u, PXGetPermutation(2, 3, out));
  EXPECT_EQ(2, out[2]);
}

TEST(Permutation, RefusesWhatItsListCannotHoldAndWritesNothing) {
  uint16_t out[17];
  std::fill(std::begin(out), std::end(out), uint16_t{77});
  EXPECT_EQ(kFailed, PXGetPermutation(-1, 4, out));
  EXPECT_EQ(kFailed, PXGetPermutation(INT32_MIN, 4, out));
  EXPECT_EQ(kFailed, PXGetPermutation(1, 17, out));
  EXPECT_EQ(kFailed, PXGetPermutation(1, 0, out));
  EXPECT_EQ(kFailed, PXGetPermutation(1, UINT32_MAX, out));
  EXPECT_EQ(kFailed, PXGetPermutation(1, 4, nullptr));
  for (const uint16_t entry : out) EXPECT_EQ(77, entry);
}

TEST(Permutation, TakesTheGreatestSeedAndSixteenElements) {
  uint16_t out[16] = {};
  const uint32_t last = PXGetPermutation(INT32_MAX, 16, out);
  EXPECT_EQ(out[15], last);
  EXPECT_EQ(136, std::accumulate(out, out + 16, 0));
}

}  // namespace
