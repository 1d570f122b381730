// Mistakes that people make, each with its diagnostics, line by line.
#include <gtest/gtest.h>

#include <sstream>

#include "diagnostics/diagnosed.h"
#include "support/own_process.h"
#include "support/parse_run.h"

namespace {

using namespace tavo_test;

class Mistakes : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(0u, Parser_Init());
  }
  void TearDown() override {
    EXPECT_EQ(0u, Parser_Term());
  }
};

// A line for each diagnostic: severity, rule, number, offset+length, recorded place; a line for
// each fix: the statement after it.
std::string told(const std::string& statement) {
  const std::wstring text = to_wide(statement);
  std::ostringstream lines;
  for (const Diagnosed& one : diagnose(text)) {
    const TAVODiagnostic& record = one.record;
    lines << (one.is_error() ? "error " : "warning ") << one.rule << ' ' << record.number << ' '
          << record.offset << '+' << record.length;
    if (record.recorded != 0) {
      lines << " recorded";
      if (record.recordedOffset != TAVO_DIAGNOSTICS_NO_PLACE) lines << ' ' << record.recordedOffset;
    }
    lines << ": " << one.message << '\n';
    for (const DiagnosedFix& fix : one.fixes) {
      lines << (fix.safe          ? "  safe "
                : fix.placeholder ? "  placeholder "
                                  : "  suggested ")
            << fix.title << ": " << to_utf8(with_fix(text, fix)) << '\n';
    }
  }
  return lines.str();
}

#define EXPECT_TOLD(statement, lines) EXPECT_EQ(lines, told(statement))

TEST_F(Mistakes, AnAcceptedStatementHasNone) {
  EXPECT_TOLD("PRO=HASH, DSTFLD=X", "");
}

TEST_F(Mistakes, AMisspelledOption) {
  EXPECT_TOLD("PRO=HASH, AGLO=SHA256, DSTFLD=X",
              "error unknown-option 7139 10+4 recorded 10: AGLO is no option of HASH\n"
              "  suggested change to ALGO: PRO=HASH, ALGO=SHA256, DSTFLD=X\n");
}

TEST_F(Mistakes, EveryOneIsTold) {
  EXPECT_TOLD("PRO=HSH, DSTFLD=X, AGLO=SHA256,, SEED=1",
              "error unknown-provider 7139 4+3 recorded 4: HSH is no provider\n"
              "  suggested change to HASH: PRO=HASH, DSTFLD=X, AGLO=SHA256,, SEED=1\n"
              "error unknown-option 7139 19+4: AGLO is no option of HASH\n"
              "  suggested change to ALGO: PRO=HSH, DSTFLD=X, ALGO=SHA256,, SEED=1\n"
              "error missing-option 7139 31+1: a second comma without an option\n"
              "  safe remove ,: PRO=HSH, DSTFLD=X, AGLO=SHA256, SEED=1\n"
              "error value-not-accepted 7139 38+1: a number is no value of SEED\n"
              "  suggested put it in quotes: PRO=HSH, DSTFLD=X, AGLO=SHA256,, SEED=\"1\"\n");
}

TEST_F(Mistakes, AMissingCommaIsTheCauseOfTheMissingOption) {
  EXPECT_TOLD("PRO=HASH, SEED=\"1\" DSTFLD=X",
              "error missing-comma 7144 19+6 recorded: a comma is missing before DSTFLD, so all "
              "that follows is ignored\n"
              "  safe insert ,: PRO=HASH, SEED=\"1\", DSTFLD=X\n");
}

TEST_F(Mistakes, AnUnclosedQuotePointsAtItsOpening) {
  EXPECT_TOLD("PRO=HASH, SEED=\"1, DSTFLD=X",
              "error unclosed-quote 7139 15+1 recorded 27: this quote is not closed\n"
              "  safe insert \": PRO=HASH, SEED=\"1\", DSTFLD=X\n");
}

TEST_F(Mistakes, ACommaBeforeIgnoredTextOfAnAcceptedStatementIsNeverSafe) {
  EXPECT_TOLD("PRO=HASH, DSTFLD=X SEED=\"1\"",
              "warning ignored-text 0 19+8: a comma is missing before SEED, so all that follows is "
              "ignored\n"
              "  suggested insert ,: PRO=HASH, DSTFLD=X, SEED=\"1\"\n");
}

}  // namespace
