// Pairing of old and new statements, and what changed in them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "jobs/difference.h"

namespace {

using namespace tavo::cli;

class DifferenceTest : public testing::Test {
 protected:
  // Each change as "old>new", indices from 0, "-" for none, "m" when only moved.
  std::string compare(const std::vector<std::string>& before, const std::vector<std::string>& after,
                      bool with_moved = false) {
    const auto details = [&](bool is_new, size_t i) {
      const std::string& text = (is_new ? after : before)[i];
      return StatementDetails::of(tavo::parse(text), tavo::from_utf8(text));
    };
    std::string list;
    for (const StatementChange& change :
         compare_statements(index(before), index(after), details, with_moved)) {
      const auto name = [](std::optional<size_t> i) { return i ? std::to_string(*i) : "-"; };
      list += (list.empty() ? "" : " ") + name(change.before) + ">" + name(change.after) +
              (change.moved ? "m" : "");
    }
    return list;
  }

  static std::vector<StatementIndex> index(const std::vector<std::string>& texts) {
    std::vector<StatementIndex> list;
    for (const std::string& text : texts) {
      list.push_back(StatementIndex::of(tavo::parse(text), text));
    }
    return list;
  }

 private:
  tavo::Library library_;
};

const std::string kA = "PRO=HASH, DSTFLD=A, SEED=\"1\"";
const std::string kB = "PRO=HASH, DSTFLD=B, SEED=\"1\"";
const std::string kC = "PRO=EML, MTD=HASH, ALGO=SHA256, SEED=\"1\", DSTFLD=C";
const std::string kCards = "PRO=CCN, PAT=6C";

TEST_F(DifferenceTest, EqualOnesAreNoDifference) {
  EXPECT_EQ(compare({kA, kB}, {kA, kB}), "");
  EXPECT_EQ(compare({kA}, {"provider=hash, seed=\"1\",dstfld=A"}), "");
  EXPECT_EQ(compare({}, {}), "");
}

TEST_F(DifferenceTest, MovedOnesAreNoDifferenceUnlessAskedFor) {
  EXPECT_EQ(compare({kA, kB, kCards}, {kB, kCards, kA}), "");
  EXPECT_EQ(compare({kA, kB, kCards}, {kB, kCards, kA}, true), "0>2m");
}

TEST_F(DifferenceTest, AddedAndRemoved) {
  EXPECT_EQ(compare({kA}, {kA, kCards}), "->1");
  EXPECT_EQ(compare({kA, kCards}, {kCards}), "0>-");
  EXPECT_EQ(compare({kCards}, {}), "0>-");
}

TEST_F(DifferenceTest, OneOfSeveralEqualOnesIsRemoved) {
  EXPECT_EQ(compare({kA, kA, kA}, {kA, kA}), "2>-");
}

TEST_F(DifferenceTest, PairsByProviderAndField) {
  EXPECT_EQ(compare({kA, kB}, {"PRO=HASH, DSTFLD=B, SEED=HMAC, ALGO=SHA256",
                               "PRO=HASH, DSTFLD=A, SEED=RANDOM"}),
            "1>0 0>1");
}

TEST_F(DifferenceTest, PairsByFieldWhenTheProviderChanged) {
  EXPECT_EQ(compare({kA, kCards}, {kCards, "PRO=EML, MTD=RANDOM, FLDDEF1=(NAME=A)"}), "0>1");
}

TEST_F(DifferenceTest, PairsTheLikestWhenTheFieldChanged) {
  const std::string renamed = "PRO=EML, MTD=HASH, ALGO=SHA256, SEED=\"1\", DSTFLD=D";
  EXPECT_EQ(compare({kC, kCards}, {kCards, renamed}), "0>1");
}

TEST_F(DifferenceTest, WrongStatementsAreComparedByTheirText) {
  EXPECT_EQ(compare({"PRO=NOPE, DSTFLD=X"}, {"PRO=NOPE, DSTFLD=X"}), "");
  EXPECT_EQ(compare({"PRO=NOPE, DSTFLD=X"}, {"PRO=NOPE, DSTFLD=Y"}), "0>0");
  EXPECT_EQ(compare({kC}, {"PRO=EML, MTD=HASH, ALGO=SHA256, SEED=\"1\", DSTFLT=C"}), "0>0");
}

TEST_F(DifferenceTest, OptionsByMeaning) {
  const tavo::ParseResult before = tavo::parse("PRO=HASH, DSTFLD=A, SEED=\"1\", CASE=UP");
  const tavo::ParseResult after = tavo::parse("PRO=HASH, ALGO=DEFAULT, SEED=\"2\", DSTFLD=A");
  ASSERT_TRUE(before);
  ASSERT_TRUE(after);
  const std::vector<OptionChange> changes = compare_options(before, after);
  ASSERT_EQ(changes.size(), 3u);
  EXPECT_EQ(key_name(*changes[0].before), L"CASE");
  EXPECT_EQ(changes[0].after, nullptr);
  EXPECT_EQ(changes[1].before, nullptr);
  EXPECT_EQ(key_name(*changes[1].after), L"ALGO");
  EXPECT_EQ(key_name(*changes[2].before), L"SEED");
  EXPECT_EQ(changes[2].after->value, L"2");
}

TEST_F(DifferenceTest, ManyStatementsWithoutAnEqualTakeNoSquareOfTime) {
  std::vector<std::string> before, after;
  for (int i = 0; i < 3000; ++i) {
    before.push_back("PRO=NOPE, DSTFLD=A" + std::to_string(i));
    after.push_back("PRO=NOPE, DSTFLD=B" + std::to_string(i));
  }
  EXPECT_NE(compare(before, after), "");
}

}  // namespace
