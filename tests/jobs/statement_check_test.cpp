// The quick look at right statements agrees with the whole check.
#include "jobs/statement_check.h"

#include <gtest/gtest.h>

#include "TAVOParserCpp.hpp"
#include "showing/encoding_finding.h"

namespace {

using namespace tavo::cli;

class StatementCheckTest : public ::testing::Test {
 protected:
  // Whether both find something.
  void expect_agreement(const std::string& bytes, std::optional<uint32_t> code_page) {
    const StatementText text(bytes, code_page);
    const bool right = find_all(text, text.parse(), false).empty();
    FileStatement statement;
    statement.bytes = bytes;
    statement.first_line = 1;
    const StatementVerdict verdict = check_statement(statement, {configuration_, code_page, false});
    EXPECT_EQ(verdict.is_clean(), right) << bytes;
    (right ? right_ : wrong_) += 1;
  }

  tavo::Library library_;
  Configuration configuration_;
  size_t right_ = 0;
  size_t wrong_ = 0;
};

TEST_F(StatementCheckTest, TheQuickLookAgrees) {
  const std::vector<std::string> statements = {
      "PRO=HASH, DSTFLD=A, SEED=\"1\", ALGO=SHA256, FLDDEF1=(NAME=B, DT=WCHAR)",
      "PRO=EML, MTD=HASH, HASHDOM=REG, DSTFLD=\"a \\\" b\" // comment",
      "PRO=HASH, DSTFLD=\"\xC3\xA9\", TRCLEVEL=\"OFF\"",
      "LIB=mine, key=value /* comment */, \"k\"=v",
      "TRCLEVEL=\"LOUD\"",
      "PRO=HASH, DSTFLD=A, DSTFLD=B",
      "PRO=HASH, DSTFLD=A SEED=\"1\"",
  };
  for (const std::string& statement : statements) {
    for (const std::optional<uint32_t> page : {std::optional<uint32_t>(), {1252u}}) {
      expect_agreement(statement, page);
      for (size_t i = 0; i < statement.size(); ++i) {
        std::string damaged = statement;
        damaged.erase(i, 1);
        if (!damaged.empty()) expect_agreement(damaged, page);
        damaged = statement;
        damaged[i] = i % 2 == 0 ? ',' : '\xFC';
        expect_agreement(damaged, page);
      }
    }
  }
  EXPECT_GT(right_, 50u);
  EXPECT_GT(wrong_, 50u);
}

TEST_F(StatementCheckTest, TraceLevelsAreSeen) {
  for (const char* text : {"TRCLEVEL=\"ALL\"", "PRO=HASH, trclevel=\"x\"", "tRc"}) {
    EXPECT_TRUE(may_set_trace_level(text)) << text;
  }
  for (const char* text : {"", "T", "TR", "PRO=HASH, DSTFLD=TRAC", "CRT"}) {
    EXPECT_FALSE(may_set_trace_level(text)) << text;
  }
}

}  // namespace
