// Comment lines that hide findings of the next statement.
#include "jobs/ignore_lines.h"

#include <gtest/gtest.h>

#include "TAVOParserCpp.hpp"

namespace {

using namespace tavo::cli;

Configuration with(const std::string& text) {
  return read_configuration("tavo.toml", text, known_rules());
}

Finding finding_of(const std::string& rule, uint32_t number) {
  Finding finding;
  finding.rule = rule;
  finding.number = number;
  return finding;
}

// "LINE RULE: MESSAGE" of each remark.
std::string remarks_of(IgnoreLines& ignores) {
  std::string text;
  for (const LineRemark& remark : ignores.remarks()) {
    text += std::to_string(remark.line) + " " + remark.finding.rule + ": " +
            tavo::to_utf8(remark.finding.message) + "\n";
  }
  return text;
}

TEST(IgnoreLines, ByNumberAndByRule) {
  const Configuration none;
  IgnoreLines ignores("# a comment\n\n# tavo: ignore 7118, repeated-option -- agreed\n", 4, none);
  EXPECT_TRUE(ignores.hides(finding_of("rule-violated", 7118)));
  EXPECT_TRUE(ignores.hides(finding_of("repeated-option", 0)));
  EXPECT_FALSE(ignores.hides(finding_of("rule-violated", 7112)));
  EXPECT_EQ(remarks_of(ignores), "");
}

TEST(IgnoreLines, WhatHidesNothingIsTold) {
  const Configuration none;
  IgnoreLines ignores("# tavo: ignore 7118\n#tavo: ignore 7112\n", 4, none);
  EXPECT_TRUE(ignores.hides(finding_of("rule-violated", 7118)));
  EXPECT_EQ(remarks_of(ignores),
            "5 unused-ignore: the next statement has no finding 7112: the ignore can go\n");
}

TEST(IgnoreLines, WhatIsMistakenIsTold) {
  const Configuration none;
  IgnoreLines ignores(
      "# tavo: ignore 7139\n# tavo: ignor 7118\n# tavo: ignore\n"
      "# tavo: ignore repeated-opton\n# tavo: ignore 7118 Secret, 7112\n",
      1, none);
  EXPECT_FALSE(ignores.hides(finding_of("unknown-option", 7139)));
  EXPECT_TRUE(ignores.hides(finding_of("rule-violated", 7118)));
  EXPECT_TRUE(ignores.hides(finding_of("rule-violated", 7112)));
  EXPECT_EQ(remarks_of(ignores),
            "1 bad-ignore: 7139 is always told: it can mean that text was not read\n"
            "2 bad-ignore: \"tavo:\" is followed by ignor; did you mean ignore?\n"
            "3 bad-ignore: the ignore names no rule and no number\n"
            "4 bad-ignore: the ignore names repeated-opton, which is no rule; did you mean "
            "repeated-option?\n"
            "5 bad-ignore: the ignore names ***, which is no rule\n");
}

TEST(IgnoreLines, TextThatWasNotReadIsNeverHidden) {
  const Configuration none;
  IgnoreLines ignores("# tavo: ignore not-read ignored-text sign-as-value 7175\n", 1, none);
  for (const char* rule : {"not-read", "ignored-text", "sign-as-value", "unknown-option"}) {
    EXPECT_FALSE(ignores.hides(finding_of(rule, 7175))) << rule;
  }
}

TEST(IgnoreLines, AReasonCanBeRequired) {
  const Configuration strict = with("require-reason = true\n");
  IgnoreLines without("# tavo: ignore 7118 --\n", 1, strict);
  EXPECT_FALSE(without.hides(finding_of("rule-violated", 7118)));
  EXPECT_EQ(remarks_of(without),
            "1 bad-ignore: the ignore gives no reason, which tavo.toml:1 asks for: ignore 7118 -- "
            "why\n");
  IgnoreLines given("# tavo: ignore 7118 -- the owner agreed\n", 1, strict);
  EXPECT_TRUE(given.hides(finding_of("rule-violated", 7118)));
  EXPECT_EQ(remarks_of(given), "");
}

TEST(IgnoreLines, HouseRulesHaveTheirNames) {
  const Configuration house = with("[[rule]]\nname = \"seeded\"\nrequire = \"SEED\"\n");
  IgnoreLines ignores("# tavo: ignore house/seeded\n", 1, house);
  EXPECT_TRUE(ignores.hides(finding_of("house/seeded", 0)));
  const Configuration none;
  IgnoreLines unknown("# tavo: ignore house/seeded\n", 1, none);
  EXPECT_FALSE(unknown.hides(finding_of("house/seeded", 0)));
}

}  // namespace
