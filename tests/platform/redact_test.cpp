// What the messages of the embedded platform show of a parameter string.
#include "redaction/redact.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using tavo::redaction::TextKind;

std::wstring shown(const std::wstring& text, TextKind kind = TextKind::kStatement) {
  struct Shown {
    const std::wstring& text;
    std::wstring result;
    size_t at;
  } to{text, L"", 0};
  tavo::redaction::find_hidden(
      text, kind,
      [](void* context, size_t begin, size_t end) {
        auto& so_far = *static_cast<Shown*>(context);
        EXPECT_LT(begin, end);
        EXPECT_LE(end, so_far.text.size());
        EXPECT_TRUE(so_far.at == 0 ? begin >= so_far.at : begin > so_far.at);
        so_far.result += so_far.text.substr(so_far.at, begin - so_far.at) + L"***";
        so_far.at = end;
      },
      &to);
  return to.result + text.substr(to.at);
}

TEST(Redaction, ShowsKeywordsNumbersAndNamesThatAnOptionAccepts) {
  for (const wchar_t* text :
       {L"PRO=HASH, DSTFLD=X, ALGO=SHA256, CP=1208", L"pro=nid,swi=us,fmt=(us=3x 2x 4x,it=16X)",
        L"PRO=NID, FMT=(UK=2C 2X 2X 2X 1C)", L"PRO=AFF, COPY=(1,4)(7,2), LEN=+5, CASE=UP",
        L"LIB=mine, FLDDEF1=(NAME=x.y, DT=CHAR)", L"PRO=EML, DOM=KEY, SEP=.", L"PRO=HASH; DSTFLD=X",
        L"PRO=HASH DSTFLD=X", L"PRO=HASH, , ALGO=DEF", L"PRO=HASH, DSTFLD=, ALGO=DEF", L""}) {
    EXPECT_EQ(shown(text), text);
  }
}

TEST(Redaction, HidesWhatAnOptionDoesNotAccept) {
  EXPECT_EQ(shown(L"PRO=EML, MTD=HSAH, CASE=5, CP=x"), L"PRO=EML, MTD=***, CASE=***, CP=***");
  EXPECT_EQ(shown(L"PRO=HSAH, DSTFLD=X, CASE=UP"), L"PRO=***, DSTFLD=***, CASE=UP");
  EXPECT_EQ(shown(L"PRO=AFF, COPY=(1,4,\"x\"), WHENMATCH=PREFIX(\"a\"), LEN=4"),
            L"PRO=AFF, COPY=***, WHENMATCH=***, LEN=4");
}

TEST(Redaction, HidesQuotedTextAndComments) {
  EXPECT_EQ(shown(L"PRO=LKP, SRCH=\"a\", ID=x"), L"PRO=LKP, SRCH=***, ID=x");
  EXPECT_EQ(shown(L"PRO=LKP, // old password\n/* x */ ID=x /**/ // y"),
            L"PRO=LKP, // ***\n/* *** */ ID=x /**/ // ***");
  EXPECT_EQ(shown(L"PRO=LKP /* open"), L"PRO=LKP /* ***");
}

TEST(Redaction, HidesValuesOfSecretAndUnknownOptions) {
  const std::vector<const wchar_t*> near = {L"PASS", L"pass",  L"CONN",  L"KEY",  L"SEED",
                                            L"PSAS", L"PAASS", L"PSS",   L"CNON", L"COMN",
                                            L"EKY",  L"KE",    L"SEEED", L"SEAD", L"SEDE"};
  const std::vector<const wchar_t*> far = {L"db_pw",      L"phrase", L"kennwort",
                                           L"credential", L"secret", L"hunter"};
  for (const bool is_near : {true, false}) {
    for (const wchar_t* key : is_near ? near : far) {
      const std::wstring before = std::wstring(L"PRO=LKP, ") + key + L"=";
      const std::wstring hidden = is_near ? before + L"***" : L"PRO=LKP, ***=***";
      for (const wchar_t* value :
           {L"\"hunter2\"", L"hunter2", L"12345678", L"ORACLE", L"@hunter2", L"#\"hunter2\""}) {
        EXPECT_EQ(shown(before + value), hidden);
        EXPECT_EQ(shown(before + value + L", CACHE=NO"), hidden + L", CACHE=NO");
      }
      for (const wchar_t* value :
           {L"HMAC(\"x\")", L"@A\"x\"", L"RANDOM\"x\"", L"'Server=db,Uid=x'", L"Server=db,Pwd=x",
            L"a b", L"\"a\" \"b\"", L"\"open", L"=x", L"\"a\nb", L"\\\"x\\\""}) {
        EXPECT_EQ(shown(before + value), hidden) << value;
      }
    }
  }
}

// A comment that swallowed a quote gives back the rest of a secret.
TEST(Redaction, DoubtsWhatStandsBehindAComment) {
  EXPECT_EQ(shown(L"PRO=HASH, DSTFLD=/*X, SEED=\"a*/hunter"), L"PRO=HASH, DSTFLD=/*****/***");
  EXPECT_EQ(shown(L"LIB=//mine, pw=\"a\nhunter\", x=y"), L"LIB=//***\n***");
  EXPECT_EQ(shown(L"PRO=HASH, /* plain */ DSTFLD=X"), L"PRO=HASH, /* *** */ DSTFLD=X");
}

// A connection string without its quotes looks like options.
TEST(Redaction, ShowsNoNamesAndNumbersBehindASecret) {
  EXPECT_EQ(shown(L"PRO=LKP, CONN=a, ID=b, CACHESIZE=5, CACHE=NO"),
            L"PRO=LKP, CONN=***, ID=***, CACHESIZE=***, CACHE=NO");
  EXPECT_EQ(shown(L"PRO=LKP, PASS=\"x\", ID=b\", SRC=\"c\""), L"PRO=LKP, PASS=***, ID=***");
}

TEST(Redaction, ShowsWhereASecretLostItsSign) {
  EXPECT_EQ(shown(L"PRO=LKP, PASS:\"hunter2\", CACHE=NO"), L"PRO=LKP, PASS:***, CACHE=NO");
  EXPECT_EQ(shown(L"PRO=LKP, PASS:hunter2"), L"PRO=LKP, PASS:***");
  EXPECT_EQ(shown(L"PRO=LKP, PASS hunter2, x"), L"PRO=LKP, PASS ***");
  EXPECT_EQ(shown(L"PRO=LKP, PASShunter2"), L"PRO=LKP, ***");
}

TEST(Redaction, IsNotLedAstrayByAQuoteThatIsMissing) {
  EXPECT_EQ(shown(L"PRO=LKP, SRC=\"a, PASS=\"hunter2\", ID=x"), L"PRO=LKP, SRC=***");
  EXPECT_EQ(shown(L"PRO=LKP, ID=a\", PASS=\"hunter2\""), L"PRO=LKP, ID=***");
  EXPECT_EQ(shown(L"PRO=DS, SFLD=\" SEED=a\", ID=hunter, b\""), L"PRO=DS, SFLD=***, ID=***, ***");
  EXPECT_EQ(shown(L"PRO=LKP, PASS=\"a\U0001f600\", ID=\"x\""), L"PRO=LKP, PASS=***");
}

TEST(Redaction, ShowsAKeyThatSomebodyMayHaveMeant) {
  EXPECT_EQ(shown(L"PRO=HASH, AGLO=red"), L"PRO=HASH, AGLO=***");
  EXPECT_EQ(shown(L"PRO=HASH, hunter=x"), L"PRO=HASH, ***=***");
  EXPECT_EQ(shown(L"PRO=LKP, PASShunter=\""), L"PRO=LKP, ***=***");
  EXPECT_EQ(shown(L"PRO=HASH, SEED=1, hunter=x, AGLO=x"), L"PRO=HASH, SEED=***, ***=***, AGLO=***");
}

TEST(Redaction, TakesEveryKeyOfAUsersStatementForASecretOne) {
  EXPECT_EQ(shown(L"LIB=mine, ID=5, USER=sa, FLDDEF2=(NAME=x)"),
            L"LIB=mine, ID=***, USER=***, FLDDEF2=(NAME=***)");
}

TEST(Redaction, ShowsTheBeginningOfTheWordThatATextEndsWith) {
  EXPECT_EQ(shown(L"PRO=HASH, AL"), L"PRO=HASH, AL");
  EXPECT_EQ(shown(L"PRO=HASH, SEED=1, AL"), L"PRO=HASH, SEED=***, AL");
  EXPECT_EQ(shown(L"PRO=HASH, hunter2"), L"PRO=HASH, ***");
  EXPECT_EQ(shown(L"P"), L"P");
}

TEST(Redaction, HidesANameThatASecretMayHaveRunInto) {
  for (const wchar_t* name : {L"XSEEDhunter", L"x.PASS.hunter", L"mine73915284", L"monkey"}) {
    EXPECT_EQ(shown(std::wstring(L"PRO=HASH, DSTFLD=") + name), L"PRO=HASH, DSTFLD=***");
  }
  EXPECT_EQ(shown(L"PRO=HASH, DSTFLD=" + std::wstring(33, L'x')), L"PRO=HASH, DSTFLD=***");
  EXPECT_EQ(shown(L"PRO=HASH, DSTFLD=LINE_2024.KE"), L"PRO=HASH, DSTFLD=LINE_2024.KE");
}

TEST(Redaction, DoubtsTheLastWordOfAnExcerpt) {
  EXPECT_EQ(shown(L"PRO=HASH, DSTFLD=X", TextKind::kExcerpt), L"PRO=HASH, DSTFLD=***");
  EXPECT_EQ(shown(L"PRO=HASH, DSTFLD=X, CASE=UP", TextKind::kExcerpt),
            L"PRO=HASH, DSTFLD=X, CASE=UP");
}

TEST(Redaction, DoubtsTextThatIsNoStatement) {
  EXPECT_EQ(shown(L"DSTFLD=X, CASE=UP"), L"DSTFLD=***, CASE=UP");
  EXPECT_EQ(shown(L"PRO=HASH, DSTFLD=X", TextKind::kPart), L"PRO=HASH, DSTFLD=***");
}

TEST(Redaction, LeavesAMaskWhereItIs) {
  EXPECT_EQ(shown(L"PRO=LKP, PASS=***, SRC=***, CACHE=NO"),
            L"PRO=LKP, PASS=***, SRC=***, CACHE=NO");
  EXPECT_EQ(shown(L"***"), L"***");
}

TEST(SpeaksOfSecret, FindsAnOptionInsideAText) {
  using tavo::redaction::speaks_of_secret;
  for (const wchar_t* text : {L"x\",PASS=y", L"KEY:x", L"a-SEED-b", L"conn /**/ = x", L"x.key.y"}) {
    EXPECT_TRUE(speaks_of_secret(text)) << text;
  }
  for (const wchar_t* text :
       {L"PASSPORT=1", L"KEY", L"T.KEY", L"KEY=", L"a KEY b", L"MONKEY=x", L""}) {
    EXPECT_FALSE(speaks_of_secret(text)) << text;
  }
}

TEST(Comment, IsHarmlessWhenItHoldsPlainWords) {
  using tavo::redaction::is_harmless_comment;
  EXPECT_TRUE(is_harmless_comment(L"/* a column, nothing else */"));
  for (const wchar_t* text : {L"// PASS x", L"// a=b", L"/* \"x\" */", L"// @x", L"// a: b"}) {
    EXPECT_FALSE(is_harmless_comment(text)) << text;
  }
}

}  // namespace
