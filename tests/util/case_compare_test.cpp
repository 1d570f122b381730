#include <gtest/gtest.h>

#include <thread>

#include "TAVOText.h"

namespace {

TEST(CaseCompare, DisregardsCase) {
  EXPECT_EQ(0, StringWCaseCompare(L"Abc", L"aBC"));
  EXPECT_EQ(0, StringWNCaseCompare(L"Abc", L"aBC", 3));
  EXPECT_EQ(0, StringWCaseCompare(L"", L""));
}

TEST(CaseCompare, AnswersWithTheDifferenceOfTheLowerCasedCharacters) {
  EXPECT_EQ('b' - 'z', StringWCaseCompare(L"aB", L"Az"));
  EXPECT_EQ('z' - 'b', StringWCaseCompare(L"aZ", L"ab"));
  EXPECT_EQ('_' - 'a', StringWCaseCompare(L"_", L"A"));
  EXPECT_EQ('b' - 'z', StringWNCaseCompare(L"aB", L"Az", 9));
}

TEST(CaseCompare, ADifferenceInLengthIsTheLastCommonCharacter) {
  EXPECT_EQ('b', StringWCaseCompare(L"abc", L"ab"));
  EXPECT_EQ(-'b', StringWCaseCompare(L"AB", L"abc"));
  EXPECT_EQ('b', StringWNCaseCompare(L"abc", L"aB", 3));
  EXPECT_EQ(-'b', StringWNCaseCompare(L"ab", L"abc", 3));
}

TEST(CaseCompare, AnEmptyTextIsAnsweredFromThePreviousCallAndThatIsMeant) {
  EXPECT_EQ('x' - 'y', StringWCaseCompare(L"ax", L"ay"));
  EXPECT_EQ('x', StringWCaseCompare(L"Q", L""));
  EXPECT_EQ(-'y', StringWCaseCompare(L"", L"Q"));
  EXPECT_EQ(0, StringWCaseCompare(L"Q", L"q"));
  EXPECT_EQ('q', StringWCaseCompare(L"", L"x") * -1);
}

TEST(CaseCompare, EachFunctionHasAPairOfItsOwn) {
  EXPECT_EQ(0, StringWCaseCompare(L"a", L"a"));
  EXPECT_EQ(0, StringWNCaseCompare(L"b", L"b", 1));
  EXPECT_EQ('a', StringWCaseCompare(L"x", L""));
  EXPECT_EQ('b', StringWNCaseCompare(L"x", L"", 1));
}

TEST(CaseCompare, TheCountedFormIsZeroWhenTheCountIsUsedUp) {
  EXPECT_EQ(0, StringWNCaseCompare(L"abX", L"ABy", 2));
  EXPECT_EQ(0, StringWNCaseCompare(L"abc", L"ab", 2));
  EXPECT_EQ(0, StringWNCaseCompare(L"a", L"b", 0));
}

TEST(CaseCompare, NullStandsBeforeEveryText) {
  EXPECT_EQ(0, StringWCaseCompare(nullptr, nullptr));
  EXPECT_LT(StringWCaseCompare(nullptr, L""), 0);
  EXPECT_GT(StringWCaseCompare(L"", nullptr), 0);
  EXPECT_LT(StringWNCaseCompare(nullptr, L"a", 1), 0);
}

// For the thread sanitizer: the shared pair is no data race.
TEST(CaseCompare, TwoThreadsMayShareThePair) {
  const auto compare = [] {
    for (int i = 0; i < 2000; ++i) {
      EXPECT_EQ('a' - 'b', StringWCaseCompare(L"xa", L"Xb"));
      EXPECT_NE(0, StringWNCaseCompare(L"abc", L"ab", 5));
    }
  };
  std::thread other(compare);
  compare();
  other.join();
}

}  // namespace
