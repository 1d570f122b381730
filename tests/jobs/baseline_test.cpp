// Old findings are recognized, new ones are not, and no secret is stored.
#include "jobs/baseline.h"

#include <gtest/gtest.h>

#include "TAVOParserCpp.hpp"

namespace {

using namespace tavo::cli;

Finding rule(uint32_t number) {
  Finding finding;
  finding.rule = "rule-violated";
  finding.number = number;
  return finding;
}

StatementText text_of(const std::string& statement) {
  StatementText text(statement, std::nullopt);
  text.parse();
  return text;
}

class BaselineTest : public ::testing::Test {
 protected:
  tavo::Library library_;
};

TEST_F(BaselineTest, CountsFindings) {
  const StatementText text = text_of("PRO=EML, MTD=HASH, DOM=x");
  Baseline written("/project/old.json");
  written.add("/project/a.masks", text, rule(7112));
  written.add("/project/a.masks", text, rule(7112));
  Baseline read = Baseline::of_text("/project/old.json", written.to_json());
  read.saw("/project/a.masks");
  EXPECT_EQ(read.gone(), 2u);
  EXPECT_TRUE(read.hides("/project/a.masks", text, rule(7112)));
  EXPECT_FALSE(read.hides("/project/b.masks", text, rule(7112)));
  EXPECT_FALSE(read.hides("/project/a.masks", text, rule(7118)));
  EXPECT_TRUE(read.hides("/project/a.masks", text, rule(7112)));
  EXPECT_FALSE(read.hides("/project/a.masks", text, rule(7112))) << "a third one is new";
  EXPECT_EQ(read.gone(), 0u);
}

TEST_F(BaselineTest, LayoutCommentsAndCaseDoNotCount) {
  Baseline baseline("/project/old.json");
  baseline.add("/project/a.masks", text_of("pro=eml,\n  mtd=hash, // why\n dom=x"), rule(7112));
  EXPECT_TRUE(baseline.hides("/project/a.masks", text_of("PRO=EML, MTD=HASH, DOM=x"), rule(7112)));
}

TEST_F(BaselineTest, FilesAreToldFromItsFolder) {
  Baseline baseline("/project/ci/old.json");
  baseline.add("/project/jobs/a.masks", text_of("PRO=CCN"), rule(7112));
  EXPECT_NE(baseline.to_json().find("\"file\":\"../jobs/a.masks\""), std::string::npos);
}

TEST_F(BaselineTest, HoldsNoSecretAndNoDigest) {
  const auto json_of = [](const std::string& statement) {
    Baseline baseline("/project/old.json");
    baseline.add("/project/a.masks", text_of(statement), rule(7112));
    return baseline.to_json();
  };
  const std::string one = json_of("PRO=HASH, DSTFLD=A, SEED=\"geheim\" /* pass=abc */");
  EXPECT_EQ(one.find("geheim"), std::string::npos) << one;
  EXPECT_EQ(one.find("abc"), std::string::npos) << one;
  EXPECT_EQ(one, json_of("PRO=HASH, DSTFLD=A, SEED=\"another\""));
  const std::string wrong = json_of("PRO=HASH, SEDE=\"geheim\"");
  EXPECT_EQ(wrong, json_of("PRO=HASH, SEDE=\"another\""));
}

TEST_F(BaselineTest, WhatIsNoBaselineIsRefused) {
  for (const char* text :
       {"", "{}", "[]", "{\"tavo-baseline\": 2, \"findings\": []}",
        "{\"tavo-baseline\": 1, \"findings\": [{}]}",
        "{\"tavo-baseline\": 1, \"findings\": [{\"file\": \"a\", \"rule\": \"b\", \"number\": 1, "
        "\"statement\": \"c\", \"count\": -1}]}"}) {
    EXPECT_THROW(Baseline::of_text("/project/old.json", text), BaselineError) << text;
  }
}

}  // namespace
