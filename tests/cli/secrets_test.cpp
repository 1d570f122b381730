// No output shows a secret, however wrong the statement around it is.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "corpus.h"
#include "showing/diagnostics.h"
#include "statement/secrets.h"

namespace tavo::cli {
namespace {

const Library g_library;

std::wstring shown(const std::string& bytes) {
  const StatementText text(bytes, std::nullopt);
  text.parse();
  return masked(text.text(), text.secrets(), {0, text.text().size()}, false);
}

// All output about a statement.
std::string everything(const std::string& bytes) {
  const StatementText text(bytes, std::nullopt);
  std::string said = to_utf8(shown(bytes));
  for (const Finding& finding : find_findings(text, text.parse(), false)) {
    said.append("\n").append(
        show_finding(Stream(1, "standard output", Stream::Buffering::kFull), text, finding, {}));
    said += to_utf8(finding.message);
  }
  return said;
}

TEST(Secrets, OfAnAcceptedStatementAreThoseOfTheTables) {
  EXPECT_EQ(
      shown("PRO=LKP, SEARCH=\"a\", DEST=\"c\", REPLACE=\"b\", PASS=\"a,b\", CONN=c , USER=me"),
      L"PRO=LKP, SEARCH=\"a\", DEST=\"c\", REPLACE=\"b\", PASS=***, CONN=*** , USER=me");
  EXPECT_EQ(shown("PRO=AFF, MTD=REP, ALGO=FPE, KEY=@NAME, LEN=4"),
            L"PRO=AFF, MTD=REP, ALGO=FPE, KEY=***, LEN=4");
  EXPECT_EQ(shown("PRO=HASH, SEED=/* a */\"1\", DSTFLD=KEY"), L"PRO=HASH, SEED=***, DSTFLD=KEY");
  EXPECT_EQ(shown("LIB=mine, color=red, pin=5, FLDDEF1=(NAME=x, DT=CHAR)"),
            L"LIB=mine, color=***, pin=***, FLDDEF1=(NAME=x, DT=CHAR)");
}

TEST(Secrets, AreNotShownWhereAMessageCutsThem) {
  const std::string said =
      everything("pro=hunTer2xQz-and-many-more-characters-than-a-message-quotes, dom=x");
  EXPECT_NE(said.find("..."), said.npos) << said;
  EXPECT_EQ(said.find("hunT"), said.npos) << said;
}

TEST(Secrets, AreNoNamesOfVariablesFieldsAndMethodsThatGiveASeed) {
  for (const char* seed : {"@NAME", "#FIELD", "#\"a field\"", "RANDOM"}) {
    const std::string text = std::string("PRO=HASH, DSTFLD=X, SEED=") + seed;
    ASSERT_TRUE(StatementText(text, std::nullopt).parse()) << text;
    EXPECT_EQ(to_utf8(shown(text)), text);
    EXPECT_EQ(to_utf8(shown(text + ", X=1")), "PRO=HASH, DSTFLD=X, SEED=***, ***=***");
  }
}

TEST(Secrets, AreSoughtInWhatAnAcceptedStatementIgnores) {
  EXPECT_EQ(shown("PRO=HASH, DSTFLD=X SEED=\"1\", ID=y, ALGO=DEF"),
            L"PRO=HASH, DSTFLD=X SEED=***, ID=***, ALGO=DEF");
  EXPECT_EQ(shown("PRO=HASH, DSTFLD=X /* plain words */ // SEED=1"),
            L"PRO=HASH, DSTFLD=X /* plain words */ //***");
}

TEST(Secrets, AreSoughtInQuotedTextThatSwallowedOne) {
  EXPECT_EQ(shown("PRO=HASH, DSTFLD=\"X\\\", SEED=\\\"1\""), L"PRO=HASH, DSTFLD=***");
}

TEST(Secrets, AreFewerOnceTheStatementIsKnownToBeRight) {
  const StatementText text("PRO=HASH, SRC=\"a\", DSTFLD=X", std::nullopt);
  EXPECT_FALSE(text.secrets().empty());
  ASSERT_TRUE(text.parse());
  EXPECT_TRUE(text.secrets().empty());
}

TEST(Masked, TakesThePartThatIsAskedFor) {
  const std::vector<Range> secrets = {{2, 4}, {6, 8}};
  EXPECT_EQ(masked(L"0123456789", secrets, {0, 10}, false), L"01***45***89");
  EXPECT_EQ(masked(L"0123456789", secrets, {3, 7}, false), L"***45***");
  EXPECT_EQ(masked(L"0123456789", secrets, {4, 6}, false), L"45");
  EXPECT_EQ(masked(L"0123456789", secrets, {4, 4}, false), L"");
  EXPECT_EQ(masked(L"0123456789", secrets, {3, 7}, true), L"3456");
  EXPECT_TRUE(is_masked(secrets, {3, 5}));
  EXPECT_FALSE(is_masked(secrets, {4, 6}));
}

TEST(Secrets, StayMaskedAfterAQuoteThatIsMissing) {
  EXPECT_EQ(everything("PRO=LKP, SRC=\"a, PASS=\"hunter2\", ID=x").find("hunter2"),
            std::string::npos);
  EXPECT_EQ(everything("PRO=LKP, PASS='hunter2, x', ID=x").find("hunter2"), std::string::npos);
  EXPECT_EQ(everything("PRO=LKP, PASS=\"hunter2").find("hunter2"), std::string::npos);
  EXPECT_EQ(everything("PRO=LKP, PASSWORD = hunter2").find("hunter2"), std::string::npos);
  EXPECT_EQ(everything("PRO=LKP; PASS hunter2").find("hunter2"), std::string::npos);
}

// Damage anywhere except in the secret option.
RC_GTEST_PROP(Secrets, SurviveAnyDamageAroundThem, ()) {
  const std::string secret = *rc::gen::element<std::string>(
      "PASS=\"hunter2\"", "PASS=hunter2", "CONN=\"hunter2\"", "KEY=\"hunter2\"", "SEED=\"hunter2\"",
      "pass = \"hunter2\"", "Key= hunter2");
  std::string before = "PRO=LKP, SEARCH=\"a\", ID=\"b c\", DEST=\"d\", ";
  std::string after = ", REPLACE=\"e\", FLDDEF1=(NAME=\"f\", DT=CHAR)";
  const auto damage = [](std::string& text) {
    const size_t at = *rc::gen::inRange<size_t>(0, text.size());
    const char sign = *rc::gen::element('"', '\'', ',', '=', '(', ')', '/', '\\', ' ', ';', 'x');
    if (*rc::gen::arbitrary<bool>()) {
      text.insert(at, 1, sign);
    } else {
      text[at] = sign;
    }
  };
  const int times = *rc::gen::inRange(0, 4);
  for (int i = 0; i < times; ++i) damage(*rc::gen::arbitrary<bool>() ? before : after);
  // A word directly before the keyword would change it.
  if (before.back() == 'x') before += ' ';
  const std::string text = before + secret + after;
  RC_ASSERT(everything(text).find("hunter2") == std::string::npos);
}

}  // namespace
}  // namespace tavo::cli
