// Which statements count as the same.
#include <gtest/gtest.h>

#include <string>

#include "jobs/meaning.h"

namespace {

using namespace tavo::cli;

class MeaningTest : public testing::Test {
 protected:
  bool same(std::string_view a, std::string_view b) {
    const tavo::ParseResult left = tavo::parse(a), right = tavo::parse(b);
    EXPECT_TRUE(left) << a;
    EXPECT_TRUE(right) << b;
    return hash_of(left) == hash_of(right);
  }

 private:
  tavo::Library library_;
};

TEST_F(MeaningTest, SpellingCaseOrderLayoutAndCommentsDoNotCount) {
  EXPECT_TRUE(
      same("PRO=HASH, DSTFLD=A, SEED=RAN", "provider = hash,seed=RANDOM/*x*/,DstFld=A // y"));
  EXPECT_TRUE(same("PRO=CCN, PAT=6C", "PRO=CCN, PAT=6c"));
}

TEST_F(MeaningTest, RepeatedOptionsThatLoseDoNotCount) {
  EXPECT_TRUE(same("PRO=HASH, DSTFLD=A, SEED=HMAC, ALGO=SHA256, DSTFLD=B",
                   "PRO=HASH, DSTFLD=A, SEED=HMAC, ALGO=SHA256"));
}

TEST_F(MeaningTest, IgnoredTextDoesNotCount) {
  EXPECT_TRUE(same("PRO=CCN, PAT=6C and more", "PRO=CCN, PAT=6C"));
}

TEST_F(MeaningTest, ValuesCount) {
  EXPECT_FALSE(same("PRO=HASH, DSTFLD=A, SEED=HMAC, ALGO=SHA256",
                    "PRO=HASH, DSTFLD=B, SEED=HMAC, ALGO=SHA256"));
  EXPECT_FALSE(same("PRO=HASH, DSTFLD=A, SEED=\"1\"", "PRO=HASH, DSTFLD=A, SEED=\"2\""));
  EXPECT_FALSE(same("PRO=HASH, DSTFLD=a, SEED=\"1\"", "PRO=HASH, DSTFLD=A, SEED=\"1\""));
  EXPECT_FALSE(same("PRO=CCN, PAT=6C", "PRO=CCN"));
}

TEST_F(MeaningTest, FieldDefinitionsKeepTheirNumbers) {
  EXPECT_TRUE(same("LIB=x, FLDDEF1=(NAME=A, LEN=4)", "LIB=x, flddef1=(LEN=4, NAME=A)"));
  EXPECT_FALSE(same("LIB=x, FLDDEF1=(NAME=A)", "LIB=x, FLDDEF2=(NAME=A)"));
  EXPECT_FALSE(same("LIB=x, FLDDEF1=(NAME=A), FLDDEF2=(NAME=B)",
                    "LIB=x, FLDDEF1=(NAME=B), FLDDEF2=(NAME=A)"));
}

TEST_F(MeaningTest, KeysOfUsersOwnProvidersAreDataAndKeepTheirOrder) {
  EXPECT_FALSE(same("LIB=x, a=1", "LIB=x, A=1"));
  EXPECT_FALSE(same("LIB=x, a=1, a=2", "LIB=x, a=2, a=1"));
  EXPECT_TRUE(same("LIB=x, a=1, b=2", "LIB=x, b=2, a=1"));
}

TEST_F(MeaningTest, NamesForPeople) {
  const tavo::ParseResult hash =
      tavo::parse("provider=hash, dstfld=A, algorithm=sha256, seed=hmac");
  ASSERT_TRUE(hash);
  EXPECT_EQ(provider_of(hash), L"HASH");
  EXPECT_EQ(field_of(hash), L"A");
  EXPECT_EQ(key_name(hash.pairs[2]), L"ALGO");
  const tavo::ParseResult user =
      tavo::parse("LIB=x, flddef1=(name=A), Colour=red, FLDDEF2=(NAME=B)");
  ASSERT_TRUE(user);
  EXPECT_EQ(provider_of(user), L"LIB=x");
  EXPECT_EQ(field_of(user), L"A,B");
  EXPECT_EQ(key_name(user.pairs[1]), L"FLDDEF1.NAME");
  EXPECT_EQ(key_name(user.pairs[2]), L"Colour");
}

}  // namespace
