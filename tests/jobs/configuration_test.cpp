// tavo.toml: what it may say, where it is found, and how mistakes in it are told.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "jobs/configuration.h"

namespace {

using namespace tavo::cli;
namespace fs = std::filesystem;

const std::vector<std::string> kKnown = {"7118", "7139", "unknown-option", "repeated-option",
                                         "ignored-text"};

Configuration read(const std::string& text) {
  return read_configuration("tavo.toml", text, kKnown);
}

std::string refusal(const std::string& text) {
  try {
    read(text);
  } catch (const ConfigurationError& error) {
    return error.what();
  }
  return "accepted";
}

TEST(Configuration, AllSettings) {
  const Configuration all = read(R"(
layout = "paragraphs"
code-page = 1252
include = ["*.txt"]
exclude = ["old"]
strict = true
require-reason = true
[severity]
7118 = "warning"
repeated-option = "error"
[[rule]]
name = "seeded"
when = "PRO=HASH"
require = "SEED"
message = "HASH needs a seed."
severity = "warning"
)");
  EXPECT_EQ(all.layout, Layout::kParagraphs);
  EXPECT_EQ(all.code_page, 1252u);
  EXPECT_EQ(all.include, std::vector<std::string>{"*.txt"});
  EXPECT_EQ(all.exclude, std::vector<std::string>{"old"});
  EXPECT_TRUE(all.strict);
  EXPECT_TRUE(all.require_reason);
  EXPECT_EQ(all.level_of("rule-violated", 7118, RuleLevel::kError), RuleLevel::kWarning);
  EXPECT_EQ(all.level_of("repeated-option", 0, RuleLevel::kWarning), RuleLevel::kError);
  EXPECT_EQ(all.level_of("unknown-option", 7139, RuleLevel::kError), RuleLevel::kError);
  ASSERT_EQ(all.rules.size(), 1u);
  EXPECT_EQ(all.rules[0].message, "HASH needs a seed.");
  EXPECT_EQ(all.lines.at("strict"), 6u);
  EXPECT_EQ(all.lines.at("severity.7118"), 9u);
}

TEST(Configuration, MistakesHaveAPlaceAndAHint) {
  EXPECT_EQ(refusal("layuot = \"auto\""),
            "tavo.toml:1:1: the setting \"layuot\" is unknown; did you mean \"layout\"?");
  EXPECT_EQ(refusal("layout = \"line\""),
            "tavo.toml:1:10: the value \"line\" is unknown; did you mean \"lines\"?");
  EXPECT_EQ(refusal("layout = 1"), "tavo.toml:1:10: a text between quotes is expected here");
  EXPECT_EQ(refusal("strict = \"yes\""), "tavo.toml:1:10: true or false is expected here");
  EXPECT_EQ(refusal("code-page = -1"), "tavo.toml:1:13: this is no number of a code page");
  EXPECT_EQ(refusal("include = \"x\""), "tavo.toml:1:11: a list of texts is expected here");
  EXPECT_EQ(
      refusal("[severity]\nunknown-opton = \"error\""),
      "tavo.toml:2:1: the rule \"unknown-opton\" is unknown; did you mean \"unknown-option\"?");
  EXPECT_EQ(
      refusal("[[rule]]\nname = \"a\"\nrequired = \"SEED\""),
      "tavo.toml:3:1: the setting of a rule \"required\" is unknown; did you mean \"require\"?");
  EXPECT_EQ(refusal("[[rule]]\nname = \"a\""),
            "tavo.toml:1:1: a rule needs require or forbid, else it says nothing");
  EXPECT_EQ(refusal("[[rule]]\nrequire = \"SEED\""),
            "tavo.toml:1:1: a rule needs a name of small letters, digits and -");
  EXPECT_EQ(refusal("[[rule]]\nname = \"a\"\nrequire = \"SEED=\""),
            "tavo.toml:3:11: at character 6: a value is expected here");
  EXPECT_EQ(refusal("[[rule]]\nname = \"a\"\nrequire = \"SEDE\""),
            "tavo.toml:3:11: the option \"SEDE\" is unknown; did you mean \"SEED\"?");
  EXPECT_EQ(
      refusal(
          "[[rule]]\nname = \"a\"\nforbid = \"ALGO\"\n[[rule]]\nname = \"a\"\nforbid = \"SEED\""),
      "tavo.toml:4:1: there is a rule \"a\" already");
  EXPECT_NE(refusal("layout ="), "accepted");
}

TEST(Configuration, WhatStopsTheReadingIsNeverHidden) {
  for (const char* rule : {"7139", "unknown-option", "ignored-text"}) {
    for (const char* level : {"off", "warning"}) {
      EXPECT_NE(refusal("[severity]\n" + std::string(rule) + " = \"" + level + "\"")
                    .find("it is always an error"),
                std::string::npos)
          << rule << " " << level;
    }
    EXPECT_EQ(refusal("[severity]\n" + std::string(rule) + " = \"error\""), "accepted");
  }
  EXPECT_EQ(refusal("[severity]\n7118 = \"off\"\nrepeated-option = \"off\""), "accepted");
}

TEST(Configuration, HouseRules) {
  const tavo::Library library;
  const Configuration house = read(R"(
[[rule]]
name = "seeded"
when = "PRO=HASH"
require = "SEED"
[[rule]]
name = "no-default"
forbid = "ALGO=DEFAULT | SEED=HMAC"
)");
  const auto violated = [&](std::string_view statement) {
    const tavo::ParseResult result = tavo::parse(statement);
    EXPECT_TRUE(result) << statement;
    std::string names;
    for (const HouseRule& rule : house.rules) {
      if (rule.is_violated_by(result)) names += rule.name + " ";
    }
    return names;
  };
  EXPECT_EQ(violated("PRO=CCN"), "");
  EXPECT_EQ(violated("PRO=HASH, DSTFLD=A, SEED=\"1\""), "");
  EXPECT_EQ(violated("PRO=HASH, DSTFLD=A, SEED=\"1\", ALGO=DEF"), "no-default ");
  EXPECT_EQ(violated("PRO=HASH, DSTFLD=A"), "seeded ");
}

TEST(Configurations, TheNearestOneUpwardHolds) {
  std::string pattern = (fs::temp_directory_path() / "tavo-configuration-XXXXXX").string();
  const fs::path root = ::mkdtemp(pattern.data());
  fs::create_directories(root / "a" / "b");
  fs::create_directories(root / "c");
  std::ofstream(root / "tavo.toml") << "layout = \"lines\"\n";
  std::ofstream(root / "a" / "tavo.toml") << "strict = true\n";
  Configurations configurations("", false, kKnown);
  EXPECT_EQ(configurations.of((root / "c" / "x.tavo").string()).file,
            (root / "tavo.toml").string());
  const Configuration& inner = configurations.of((root / "a" / "b" / "x.tavo").string());
  EXPECT_EQ(inner.file, (root / "a" / "tavo.toml").string());
  EXPECT_TRUE(inner.strict);
  EXPECT_FALSE(inner.layout.has_value()) << "the nearest one alone, nothing is merged";
  Configurations given((root / "tavo.toml").string(), false, kKnown);
  EXPECT_EQ(given.of((root / "a" / "x.tavo").string()).layout, Layout::kLines);
  Configurations none("", true, kKnown);
  EXPECT_EQ(none.of((root / "a" / "x.tavo").string()).file, "");
  Configurations missing((root / "missing.toml").string(), false, kKnown);
  EXPECT_THROW(missing.of("x"), ConfigurationError);
  fs::remove_all(root);
}

}  // namespace
