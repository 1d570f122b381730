#include "TAVOErrorHandler/redact.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using tavo::platform::Redactor;

std::string shown(const std::string& text) {
  Redactor redactor;
  std::string result;
  for (const char c : text) {
    const auto action = redactor.next(static_cast<wchar_t>(c));
    if (action == Redactor::kShow) result += c;
    if (action == Redactor::kStars) result += "***";
  }
  return result;
}

TEST(Redactor, HidesKeysSeedsAndPasswords) {
  EXPECT_EQ(shown(R"(PRO=AFF, KEY="secret", X)"), R"(PRO=AFF, KEY="***", X)");
  EXPECT_EQ(shown(R"(PRO=HASH,seed="12",CASE=U)"), R"(PRO=HASH,seed="***",CASE=U)");
  EXPECT_EQ(shown(R"(LIB=X, PassWord="a b", Q=1)"), R"(LIB=X, PassWord="***", Q=1)");
  EXPECT_EQ(shown("LIB=X, PWD=abc, APIKEY=d-e, Q=1"), "LIB=X, PWD=***, APIKEY=***, Q=1");
}

TEST(Redactor, HidesAValueThatIsCut) {
  EXPECT_EQ(shown(R"(KEY="secr)"), R"(KEY="***)");
  EXPECT_EQ(shown("PWD=ab"), "PWD=***");
  EXPECT_EQ(shown(R"(KEY=")"), R"(KEY=")");
}

TEST(Redactor, IsNotLedAstrayByBlanksCommentsAndEscapes) {
  EXPECT_EQ(shown("KEY \t=\n \"secret\""), "KEY \t=\n \"***\"");
  EXPECT_EQ(shown("KEY /* not it */ = /* \" */ \"secret\" /**/ , A=\"b\""),
            "KEY /* not it */ = /* \" */ \"***\" /**/ , A=\"b\"");
  EXPECT_EQ(shown("KEY // word\n=\"secret\""), "KEY // word\n=\"***\"");
  EXPECT_EQ(shown("KEY /*/ A=\"b\" */ = \"secret\""), "KEY /*/ A=\"b\" */ = \"***\"");
  EXPECT_EQ(shown(R"(KEY="a\"b\\"c", D="e")"), R"(KEY="***", D="e")");
  EXPECT_EQ(shown(R"(NAME="KEY=", D="e")"), R"(NAME="KEY=", D="e")");
}

TEST(Redactor, ShowsWhatIsNoSecret) {
  for (const char* text :
       {R"(PRO=LOOKUP, SEARCH="A B", REPLACE="C", CACHE=NO)", "SEED=HMAC, ALGO=SHA256",
        "KEY=@MY_KEY, X", R"(SEED=#"field", X)", R"(SEEDFLD="field", X)", "SEED=RANDOM",
        R"(TAVO="x", A=(1,4)(7,2,"X"))", ""}) {
    EXPECT_EQ(shown(text), text);
  }
}

}  // namespace
