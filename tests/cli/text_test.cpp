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
  // Lines after a comment without a statement do not belong to the next statement.
  EXPECT_EQ(statements_of("// x\n# c\n\nA,\nB\n", Layout::kAuto), (Names{"4:A,\nB"}));
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

TEST(StatementReader, BeginsAStatementHoweverFarItIsIndented) {
  for (const Layout layout : {Layout::kAuto, Layout::kParagraphs}) {
    EXPECT_EQ(statements_of("  PRO=A\n  PRO=B\n\tprovider =C\n", layout),
              (Names{"1:  PRO=A", "2:  PRO=B", "3:\tprovider =C"}));
    EXPECT_EQ(statements_of("PRO=A,\nLIB=B,\n TRCLEVEL=C\n", layout),
              (Names{"1:PRO=A,\nLIB=B,\n TRCLEVEL=C"}));
    EXPECT_EQ(statements_of("PRO=A\n LIBRARY=B\nTRCLEVEL=C\n", layout),
              (Names{"1:PRO=A", "2: LIBRARY=B", "3:TRCLEVEL=C"}));
    EXPECT_EQ(statements_of("PRO=A\n PROX=B\n PRO\n", layout), (Names{"1:PRO=A\n PROX=B\n PRO"}));
    EXPECT_EQ(statements_of("PRO=A, // ,\n LIB=B // ,\n LIB=C\n", layout),
              (Names{"1:PRO=A, // ,\n LIB=B // ,", "3: LIB=C"}));
  }
}

TEST(StatementReader, LetsWhatIsClosedHideABeginning) {
  for (const Layout layout : {Layout::kAuto, Layout::kParagraphs}) {
    for (const std::string text :
         {"PRO=A, SRC=\"x\nPRO=B\ny\", ID=c", "PRO=A, SRC=\"x\nPRO=\\\"B\"\n, ID=c",
          "PRO=A, /* x\nPRO=B */\n ID=c", "PRO=A, F=(NAME=x\nLIB=B\n)", "PRO=A, S=\"x\n\"",
          "PRO=A, F=(NAME=\")\nLIB=x\"\n, X=y)"}) {
      EXPECT_EQ(statements_of(text + "\nPRO=C\n", layout),
                (Names{"1:" + text,
                       std::to_string(std::count(text.begin(), text.end(), '\n') + 2) + ":PRO=C"}));
    }
  }
}

TEST(StatementReader, EndsWhatNeverClosesBeforeTheNextStatement) {
  for (const Layout layout : {Layout::kAuto, Layout::kParagraphs}) {
    for (const std::string first :
         {"PRO=A, S=\"x", "PRO=A, /* x", "PRO=A, F=(N=x", "PRO=A, S=\"x\\\"", "PRO=A, S=\"x\n y"}) {
      const std::string line = std::to_string(std::count(first.begin(), first.end(), '\n') + 2);
      for (const std::string second :
           {"PRO=B, S=\"y\"", " PRO=B, S=\"\", T=\"z\"", "PRO=B /* c */", "PRO=B, F=(N=y)", "PRO=B",
            "PRO=B, C=(1,2,\"X\")", "PRO=B, S=#\"x\""}) {
        EXPECT_EQ(statements_of(first + "\n" + second + "\n", layout),
                  (Names{"1:" + first, line + ":" + second}));
      }
    }
    EXPECT_EQ(statements_of("PRO=A, S=\"x\n\nPRO=B\"\n", layout),
              (Names{"1:PRO=A, S=\"x", "3:PRO=B\""}));
  }
}

TEST(StatementReader, ReadsEveryBeginningInTimeThatGrowsWithTheFile) {
  std::string file = "PRO=A, S=\"\n";
  for (int i = 0; i < 20000; ++i) file += "PRO=B\n";
  EXPECT_EQ(statements_of(file + "\"\n", Layout::kAuto).size(), 1U);
  EXPECT_EQ(statements_of(file, Layout::kAuto).size(), 20001U);
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
