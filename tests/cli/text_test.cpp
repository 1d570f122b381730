// Helpers that the verbs share: nearest names, statements in files, completion.
#include <gtest/gtest.h>

#include "TAVOParserCpp.hpp"
#include "language/language.h"
#include "language/nearest.h"
#include "reading/statement_reader.h"
#include "statement/complete.h"

namespace tavo::cli {
namespace {

using Names = std::vector<std::string>;

TEST(Nearest, FindsASlipAndNothingFartherAway) {
  const Names names = {"ALGO", "ALGORITHM", "DSTFLD", "SEED"};
  EXPECT_EQ(nearest("ALG", names), Names{"ALGO"});
  EXPECT_EQ(nearest("sede", names), Names{"SEED"});
  EXPECT_EQ(nearest("DSTFDL", names), Names{"DSTFLD"});
  EXPECT_EQ(nearest("WINDOW", names), Names{});
  EXPECT_EQ(nearest("", names), Names{});
  EXPECT_EQ(nearest(std::string(10000, 'A'), names), Names{});
}

Names statements_of(const std::string& file, Layout layout) {
  Input input = Input::of_text(file);
  StatementReader reader(input, layout);
  FileStatement statement;
  Names all;
  while (reader.next(statement)) {
    all.push_back(std::to_string(statement.first_line) + ":" + statement.bytes);
  }
  return all;
}

TEST(StatementReader, TakesALineForAStatement) {
  EXPECT_EQ(statements_of("A\n\n# c\nB\n", Layout::kAuto), (Names{"1:A", "4:B"}));
  EXPECT_EQ(statements_of("A\nB", Layout::kAuto), (Names{"1:A", "2:B"}));
}

TEST(StatementReader, GoesOnWhereTheLayoutShowsIt) {
  EXPECT_EQ(statements_of("A\n B\n,C\n)D\n", Layout::kAuto), (Names{"1:A\n B\n,C\n)D"}));
  EXPECT_EQ(statements_of("A,\nB=\nC(\nD\n", Layout::kAuto), (Names{"1:A,\nB=\nC(\nD"}));
  EXPECT_EQ(statements_of("A, // x\nB /* , */\nC\n", Layout::kAuto),
            (Names{"1:A, // x\nB /* , */", "3:C"}));
}

TEST(StatementReader, BeginsAnewWhereAProviderStatementBegins) {
  EXPECT_EQ(statements_of("A,\npro =B\n", Layout::kAuto), (Names{"1:A,", "2:pro =B"}));
  EXPECT_EQ(statements_of("A,\nLIB=B\n", Layout::kAuto), (Names{"1:A,\nLIB=B"}));
}

TEST(StatementReader, KeepsLineNumbersOverCommentLines) {
  EXPECT_EQ(statements_of("A,\n# c\n# d\nB\n", Layout::kAuto), (Names{"1:A,\n\n\nB"}));
}

TEST(StatementReader, HasALayoutOfLinesAndOneOfParagraphs) {
  EXPECT_EQ(statements_of("A,\n B\n", Layout::kLines), (Names{"1:A,", "2: B"}));
  EXPECT_EQ(statements_of("A\nB\n\n\nC\n", Layout::kParagraphs), (Names{"1:A\nB", "5:C"}));
}

TEST(StatementReader, SkipsAByteOrderMarkAndCarriageReturns) {
  EXPECT_EQ(statements_of("\xEF\xBB\xBF"
                          "A\r\n\r\nB\r\n",
                          Layout::kAuto),
            (Names{"1:A", "3:B"}));
}

TEST(Complete, KnowsWhatMayFollow) {
  const Library library;
  EXPECT_EQ(complete_statement("PRO=EM"), Names{"PRO=EML"});
  EXPECT_EQ(complete_statement("pro=eml, algo"), (Names{"pro=eml, ALGO=", "pro=eml, ALGORITHM="}));
  EXPECT_EQ(complete_statement("PRO=EML, FLDDEF1=(DT=DEC"),
            (Names{"PRO=EML, FLDDEF1=(DT=DECIMAL_K48", "PRO=EML, FLDDEF1=(DT=DECK48"}));
  EXPECT_EQ(complete_statement("PRO=HASH X "), Names{});
}

TEST(Language, GivesEveryStatementANameAndEveryOptionASpelling) {
  for (const Statement& statement : statements()) {
    EXPECT_FALSE(title(statement).empty());
    for (const Option& option : statement.options) EXPECT_FALSE(long_spelling(option).empty());
  }
}

}  // namespace
}  // namespace tavo::cli
