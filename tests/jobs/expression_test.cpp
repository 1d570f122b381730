// Which statements an expression matches, whatever their spelling, case and layout; secrets are
// never on the command line.
#include <gtest/gtest.h>

#include <string>

#include "jobs/expression.h"

namespace {

using tavo::cli::Expression;
using tavo::cli::ExpressionError;
using tavo::cli::matches_glob;

class ExpressionTest : public testing::Test {
 protected:
  bool matches(std::string_view expression, std::string_view statement) {
    const tavo::ParseResult result = tavo::parse(statement);
    EXPECT_TRUE(result) << statement;
    return Expression(expression,
                      [](const std::string& file) { return tavo::from_utf8("text of " + file); })
        .matches(result);
  }

  std::string refusal(std::string_view expression) {
    try {
      const Expression read(expression);
    } catch (const ExpressionError& error) {
      return std::to_string(error.offset) + ": " + error.what();
    }
    return "accepted";
  }

 private:
  tavo::Library library_;
};

constexpr char kHash[] = "pro=hash, DSTFLD=CUSTNO, Algorithm=Sha256, seed=hmac";
constexpr char kAge[] = R"(PRO=AGE, SRC="D", YEAR=7, FLDDEF1=(NAME=D, DT=DATETIME_SZ))";

TEST_F(ExpressionTest, KeywordsInAnySpellingAndCase) {
  EXPECT_TRUE(matches("ALGO=SHA256", kHash));
  EXPECT_TRUE(matches("algorithm=sha256", kHash));
  EXPECT_TRUE(matches("PROVIDER=HASH", kHash));
  EXPECT_FALSE(matches("PRO=EML", kHash));
  EXPECT_FALSE(matches("ALGO=DEFAULT", kHash));
  EXPECT_TRUE(matches("ALGO=DEFAULT", "PRO=HASH, DSTFLD=A, SEED=\"1\", ALGO=DEF"));
  EXPECT_TRUE(matches("SEED=HMAC", kHash));
}

TEST_F(ExpressionTest, PresenceAndAbsence) {
  EXPECT_TRUE(matches("SEED", kHash));
  EXPECT_TRUE(matches("!CASE", kHash));
  EXPECT_FALSE(matches("CASE", kHash));
  EXPECT_TRUE(matches("!!SEED", kHash));
}

TEST_F(ExpressionTest, SequencesAlternativesAndParentheses) {
  EXPECT_TRUE(matches("PRO=HASH SEED", kHash));
  EXPECT_FALSE(matches("PRO=HASH CASE", kHash));
  EXPECT_TRUE(matches("PRO=HASH CASE | ALGO=SHA256", kHash));
  EXPECT_FALSE(matches("PRO=HASH (CASE | ALGO=DEFAULT)", kHash));
  EXPECT_TRUE(matches("!(CASE | ALGO=DEFAULT) PRO=HASH", kHash));
}

TEST_F(ExpressionTest, NumbersByValue) {
  EXPECT_TRUE(matches("PRO=AGE YEAR>5", kAge));
  EXPECT_FALSE(matches("YEAR>7", kAge));
  EXPECT_TRUE(matches("YEAR>=7 YEAR<=7 YEAR<8", kAge));
  EXPECT_TRUE(matches("YEAR=+07", kAge));
  EXPECT_FALSE(matches("YEAR!=7", kAge));
  EXPECT_FALSE(matches("SRC>1", kAge)) << "no number, so neither greater nor less";
}

TEST_F(ExpressionTest, FieldDefinitions) {
  EXPECT_TRUE(matches("FLDDEF.NAME=D", kAge));
  EXPECT_TRUE(matches("flddef1.name=D", kAge));
  EXPECT_FALSE(matches("FLDDEF2.NAME=D", kAge));
  EXPECT_TRUE(matches("FLDDEF.DT=datetime_sz", kAge));
  EXPECT_TRUE(matches("FLDDEF", kAge));
  EXPECT_TRUE(matches("FLDDEF1", kAge));
  EXPECT_FALSE(matches("FLDDEF2", kAge));
  EXPECT_FALSE(matches("FLDDEF", kHash));
}

TEST_F(ExpressionTest, TextsExactlyOrAsGlobs) {
  EXPECT_TRUE(matches("DSTFLD=CUSTNO", kHash));
  EXPECT_FALSE(matches("DSTFLD=custno", kHash)) << "names are case-sensitive data";
  EXPECT_TRUE(matches("DSTFLD~CUST*", kHash));
  EXPECT_FALSE(matches("DSTFLD!~CUST*", kHash));
  EXPECT_TRUE(matches("DSTFLD!=OTHER", kHash));
  EXPECT_TRUE(matches("ALGO~sha*", kHash)) << "keywords in either case";
  EXPECT_TRUE(matches(R"(DSTFLD="a \"b")", R"(PRO=HASH, DSTFLD="a \"b", SEED="1")"));
}

TEST_F(ExpressionTest, KeysOfUsersOwnProviders) {
  EXPECT_TRUE(matches("LIB=mine colour", "LIB=mine, Colour=red"));
  EXPECT_FALSE(matches("colour", "LIB=mine, shade=red"));
  const Expression expression("AGLO");
  EXPECT_EQ(expression.unknown_keys(), std::vector<std::string>{"AGLO"});
}

TEST_F(ExpressionTest, SecretsComeFromFilesOnly) {
  for (const char* text :
       {"SEED=1234", R"(SEED="abc")", "PASS=x", "KEY~1*", "colour=red", "SEED!=1"}) {
    EXPECT_NE(refusal(text).find("may be a secret"), std::string::npos) << text;
  }
  for (const char* text : {"SEED=HMAC", "SEED=@VAR", "SEED=#FIELD", "SEED~*"}) {
    EXPECT_EQ(refusal(text), "accepted") << text;
  }
  EXPECT_TRUE(matches("colour=<f", "LIB=x, Colour=\"text of f\""));
  EXPECT_FALSE(matches("colour=<g", "LIB=x, Colour=\"text of f\""));
}

TEST_F(ExpressionTest, MistakesHaveAPlace) {
  EXPECT_EQ(refusal(""), "0: an option is expected here");
  EXPECT_EQ(refusal("ALGO="), "5: a value is expected here");
  EXPECT_EQ(refusal("(ALGO"), "5: a ) is missing");
  EXPECT_EQ(refusal("ALGO)"), "4: there is a ) too many");
  EXPECT_EQ(refusal("ALGO |"), "6: an option is expected here");
  EXPECT_EQ(refusal("DSTFLD=\"x"), "9: the quoted text is not closed");
  EXPECT_EQ(refusal("YEAR>x"), "6: < and > compare whole numbers");
  EXPECT_EQ(refusal("FLDDEF.ALGO"), "11: FLDDEF.ALGO has no such parameter");
  EXPECT_EQ(refusal("FLDDEF=1"), "7: FLDDEF has no value of its own: ask for FLDDEF.NAME");
  EXPECT_EQ(refusal("SEED=<f"), "7: a value cannot come from a file here");
  EXPECT_EQ(refusal(std::string(100000, '(')), "200: the expression is nested too deeply");
  EXPECT_EQ(refusal(std::string(100000, '!')), "200: the expression is nested too deeply");
}

TEST(Glob, StarsAndQuestionMarks) {
  EXPECT_TRUE(matches_glob(L"abc", L"a*c"));
  EXPECT_TRUE(matches_glob(L"abc", L"???"));
  EXPECT_TRUE(matches_glob(L"", L"*"));
  EXPECT_FALSE(matches_glob(L"", L"?"));
  EXPECT_FALSE(matches_glob(L"abc", L"ab"));
  EXPECT_FALSE(matches_glob(L"ab", L"abc"));
  EXPECT_TRUE(matches_glob(L"aXbXc", L"a*X*c"));
  EXPECT_FALSE(matches_glob(std::wstring(20000, L'a'), L"*a*a*a*a*a*b")) << "and soon";
}

}  // namespace
