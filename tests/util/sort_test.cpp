#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>
#include <random>
#include <vector>

#include "TAVOSortRandom.h"

namespace {

struct Calls {
  uint64_t count = 0;
};

int compare_ints(const void* first, const void* second, void* context) {
  if (context != nullptr) ++static_cast<Calls*>(context)->count;
  int a = 0;
  int b = 0;
  std::memcpy(&a, first, sizeof a);
  std::memcpy(&b, second, sizeof b);
  return a < b ? -1 : a > b ? 1 : 0;
}

std::vector<int> sorted(std::vector<int> values, int direction = 1, Calls* calls = nullptr) {
  TavoQSort(values.data(), values.size(), sizeof(int), compare_ints, calls, direction);
  return values;
}

std::vector<int> random_values(size_t count, int range) {
  std::mt19937 random(4711);
  std::uniform_int_distribution<int> any(0, range);
  std::vector<int> values(count);
  std::generate(values.begin(), values.end(), [&] { return any(random); });
  return values;
}

TEST(Sort, EveryOrderOfUpToEightElements) {
  std::vector<int> values;
  for (int n = 0; n <= 8; ++n) {
    std::vector<int> order(static_cast<size_t>(n));
    std::iota(order.begin(), order.end(), 0);
    const std::vector<int> expected = order;
    do {
      ASSERT_EQ(expected, sorted(order));
    } while (std::next_permutation(order.begin(), order.end()));
  }
}

TEST(Sort, EveryOrderOfNineElementsTakesThePartitionStep) {
  std::vector<int> order(9);
  std::iota(order.begin(), order.end(), 0);
  const std::vector<int> expected = order;
  do {
    ASSERT_EQ(expected, sorted(order));
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST(Sort, EightElementsTakeTheSelectionStepOnly) {
  // Selection compares 7 + 6 + ... + 1 times, whatever the order.
  for (int i = 0; i < 50; ++i) {
    Calls calls;
    std::vector<int> values = random_values(8, 100 + i);
    sorted(values, 1, &calls);
    EXPECT_EQ(28u, calls.count);
  }
}

TEST(Sort, NineElementsTakeOnePartitionStep) {
  // One step parts eight elements from the pivot with eight to ten comparisons; selection of all
  // nine would take 36, of the two parts at most 28.
  for (int i = 0; i < 50; ++i) {
    Calls calls;
    sorted(random_values(9, 1000 + i), 1, &calls);
    EXPECT_GE(calls.count, 8u + 6u + 6u);
    EXPECT_LE(calls.count, 10u + 28u);
    EXPECT_NE(36u, calls.count);
  }
}

TEST(Sort, DirectionZeroIsDescending) {
  for (const size_t count : {5u, 100u}) {
    std::vector<int> expected = random_values(count, 50);
    const std::vector<int> values = expected;
    std::sort(expected.rbegin(), expected.rend());
    EXPECT_EQ(expected, sorted(values, 0));
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(expected, sorted(values, 1));
    EXPECT_EQ(expected, sorted(values, -5));
  }
}

struct Argument {
  std::vector<std::pair<const void*, const void*>> pairs;
};

TEST(Sort, DirectionZeroExchangesTheArguments) {
  const auto record = [](const void* first, const void* second, void* context) {
    static_cast<Argument*>(context)->pairs.emplace_back(first, second);
    return 0;
  };
  int values[2] = {1, 2};
  Argument ascending;
  Argument descending;
  TavoQSort(values, 2, sizeof(int), record, &ascending, 1);
  TavoQSort(values, 2, sizeof(int), record, &descending, 0);
  ASSERT_EQ(1u, ascending.pairs.size());
  ASSERT_EQ(1u, descending.pairs.size());
  EXPECT_EQ(ascending.pairs[0].first, descending.pairs[0].second);
  EXPECT_EQ(ascending.pairs[0].second, descending.pairs[0].first);
}

TEST(Sort, DoesNothingWhereThereIsNothingToDo) {
  Calls calls;
  int values[2] = {2, 1};
  TavoQSort(values, 0, sizeof(int), compare_ints, &calls, 1);
  TavoQSort(values, 1, sizeof(int), compare_ints, &calls, 1);
  TavoQSort(values, 2, 0, compare_ints, &calls, 1);
  TavoQSort(nullptr, 2, sizeof(int), compare_ints, &calls, 1);
  TavoQSort(values, 2, sizeof(int), nullptr, &calls, 1);
  EXPECT_EQ(0u, calls.count);
  EXPECT_EQ(2, values[0]);
}

TEST(Sort, TakesAboutNLogNComparisonsOnTheUsualPatterns) {
  constexpr size_t kCount = 20000;
  std::vector<std::vector<int>> patterns(5, std::vector<int>(kCount));
  std::iota(patterns[0].begin(), patterns[0].end(), 0);
  std::iota(patterns[1].rbegin(), patterns[1].rend(), 0);
  std::fill(patterns[2].begin(), patterns[2].end(), 7);
  patterns[3] = random_values(kCount, 1);
  patterns[4] = random_values(kCount, 1 << 30);
  for (const std::vector<int>& pattern : patterns) {
    std::vector<int> expected = pattern;
    std::sort(expected.begin(), expected.end());
    Calls calls;
    EXPECT_EQ(expected, sorted(pattern, 1, &calls));
    EXPECT_LE(static_cast<double>(calls.count), 2.0 * kCount * std::log2(kCount));
  }
}

// Two consecutive sorted runs are a quadratic pattern; the stack does not overflow.
TEST(Sort, HoldsOnAQuadraticPattern) {
  std::vector<int> values(6000);
  std::iota(values.begin(), values.begin() + 3000, 0);
  std::iota(values.begin() + 3000, values.end(), 0);
  std::vector<int> expected = values;
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(expected, sorted(values));
}

TEST(Sort, AContradictingComparisonKeepsTheElements) {
  std::vector<int> values(1000);
  std::iota(values.begin(), values.end(), 0);
  const std::vector<int> expected = values;
  for (const int answer : {-1, 1, 0}) {
    struct Fixed {
      int answer;
    } fixed{answer};
    TavoQSort(
        values.data(), values.size(), sizeof(int),
        [](const void*, const void*, void* context) {
          return static_cast<Fixed*>(context)->answer;
        },
        &fixed, 1);
    std::vector<int> kept = values;
    std::sort(kept.begin(), kept.end());
    EXPECT_EQ(expected, kept);
  }
}

TEST(Sort, MovesElementsOfAnyWidthWhole) {
  for (const size_t width : {1u, 3u, 7u, 8u, 9u, 16u, 21u}) {
    constexpr size_t kCount = 200;
    std::vector<unsigned char> bytes(kCount * width + 1, 0xEE);
    for (size_t i = 0; i < kCount; ++i) {
      std::memset(&bytes[i * width], static_cast<int>(i * 97 % kCount), width);
    }
    TavoQSort(
        bytes.data(), kCount, width,
        [](const void* a, const void* b, void*) {
          return *static_cast<const unsigned char*>(a) - *static_cast<const unsigned char*>(b);
        },
        nullptr, 1);
    for (size_t i = 0; i < kCount * width; ++i) ASSERT_EQ(i / width, bytes[i]) << width;
    EXPECT_EQ(0xEE, bytes.back());
  }
}

}  // namespace
