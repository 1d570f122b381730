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

TEST(Secrets, AreMaskedAndTheRestIsShown) {
  EXPECT_EQ(shown("PRO=LKP, PASS=\"a,b\", CONN=\"c\" , USER=me"),
            L"PRO=LKP, PASS=***, CONN=*** , USER=me");
  EXPECT_EQ(shown("PRO=AFF, KEY=\"k\", KEY=@NAME"), L"PRO=AFF, KEY=***, KEY=***");
  EXPECT_EQ(shown("PRO=EML, SEED=\"1\", DOM=KEY"), L"PRO=EML, SEED=***, DOM=KEY");
}

TEST(Secrets, AreNoNamesOfVariablesFieldsAndMethodsThatGiveASeed) {
  for (const char* text :
       {"PRO=HASH, SEED=@NAME", "PRO=HASH, SEED=#FIELD", "PRO=HASH, SEED=HMAC",
        "PRO=HASH, SEED=RANDOM", "PRO=HASH_LKP, SEEDFLD=\"x\"", "PRO=CDS, CONTROL=\"x\""}) {
    EXPECT_EQ(to_utf8(shown(text)), text);
  }
}

TEST(Secrets, StayMaskedAfterAQuoteThatIsMissing) {
  EXPECT_EQ(everything("PRO=LKP, SRC=\"a, PASS=\"hunter2\", ID=x").find("hunter2"),
            std::string::npos);
  EXPECT_EQ(everything("PRO=LKP, PASS='hunter2, x', ID=x").find("hunter2"), std::string::npos);
  EXPECT_EQ(everything("PRO=LKP, PASS=\"hunter2").find("hunter2"), std::string::npos);
  EXPECT_EQ(everything("PRO=LKP, PASSWORD = hunter2").find("hunter2"), std::string::npos);
  EXPECT_EQ(everything("PRO=LKP; PASS hunter2").find("hunter2"), std::string::npos);
}

// Damage anywhere except in the option with the secret.
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
