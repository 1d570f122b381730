// Hover and signature help; the bar marks the place.
#include <gtest/gtest.h>

#include "language/language.h"
#include "lsp/talk.h"

namespace {

using namespace tavo_test;

std::string hover(const std::string& text, const Json& capabilities = all_capabilities()) {
  const Json result = ask_at(text, "textDocument/hover", Json::object(), capabilities);
  return result.is_null() ? "" : result["contents"]["value"].get<std::string>();
}

bool tells(const std::string& text, const std::string& what) {
  return hover(text).find(what) != std::string::npos;
}

TEST(Hover, TellsWhatAProviderDoes) {
  EXPECT_TRUE(tells("PRO=HA|SH, DSTFLD=X", "Turns one or more source columns into a hash value"));
  EXPECT_TRUE(tells("P|RO=AFFINITY, MTD=REP", "`AFF`, `AFFINITY`"));
  EXPECT_TRUE(tells("LI|B=x", "Names a provider written by the user"));
}

TEST(Hover, TellsEverythingOfAnOption) {
  const std::string text = hover("PRO=EML, MTD=HASH, SE|ED=HMAC");
  for (const char* part :
       {"Seeds the hash of the address", "`SEED`", "TAVO_PARSER_CMN_PARM_SEED (79)", "7155",
        "PRO=EML, MTD=HASH, ALGO=SHA256, SEED=HMAC"}) {
    EXPECT_NE(std::string::npos, text.find(part)) << part << " is not in\n" << text;
  }
  EXPECT_TRUE(tells("PRO=HASH, D|STFLD=X", "Required."));
}

TEST(Hover, TellsWhatAValueMeans) {
  EXPECT_TRUE(tells("PRO=HASH, ALGO=SHA|256", "The hash algorithm SHA-256."));
  EXPECT_TRUE(tells("PRO=HASH, DSTFLD=X, HASHMAX=1|0", "0 to 4294967295"));
  EXPECT_TRUE(tells("PRO=HASH, SEED=@A|B", "Name of an environment variable"));
  EXPECT_TRUE(tells("PRO=CCN, FLDDEF1=(DT=VAR|CHAR)", "data-type code 2"));
  EXPECT_TRUE(tells("PRO=CCN, FLDDEF1=(L|EN=3)", "Length of the field"));
}

TEST(Hover, IsEmptyWhereThereIsNothingToTell) {
  for (const char* text : {"|", "# PRO=H|ASH", "PRO=HASH, XY|Z=1", "PRO=HASH, ALGO=XY|Z",
                           "XYZ=H|ASH", "PRO=CCN\n|\nPRO=CCN"}) {
    EXPECT_EQ("", hover(text)) << text;
  }
}

TEST(Hover, IsPlainTextForAClientThatKnowsNothingElse) {
  const std::string text = hover("PRO=HASH, AL|GO=SHA256", Json::object());
  EXPECT_EQ(std::string::npos, text.find('`'));
  EXPECT_EQ(std::string::npos, text.find("**"));
  EXPECT_NE(std::string::npos, text.find("Chooses the hash algorithm."));
}

TEST(Hover, KnowsEveryOptionOfEveryStatement) {
  for (const tavo::cli::Statement& statement : tavo::cli::statements()) {
    for (const tavo::cli::Option& option : statement.options) {
      std::string text = option.start + ", |" + option.example;
      EXPECT_TRUE(tells(text, option.meaning)) << text;
    }
  }
}

TEST(Hover, KnowsEveryValueThatIsAWord) {
  for (const tavo::cli::Statement& statement : tavo::cli::statements()) {
    for (const tavo::cli::Option& option : statement.options) {
      for (const TAVOValueInfo& value : option.values) {
        const std::string& meaning = option.meaning_of_value(value.tokenType);
        ASSERT_FALSE(meaning.empty()) << option.start << " " << option.example;
        for (const std::string& word : tavo::cli::spellings(value.tokenType)) {
          const std::string text = option.start + ", " + long_spelling(option) + "=" +
                                   word.substr(0, 1) + "|" + word.substr(1);
          EXPECT_TRUE(tells(text, meaning)) << text;
        }
      }
    }
  }
}

// ---- signature help -----------------------------------------------------------------------------

Json signature(const std::string& text) {
  return ask_at(text, "textDocument/signatureHelp");
}

TEST(Signatures, NameTheParametersOfAList) {
  const Json help = signature("PRO=CCN, FLDDEF1=(NAME=X, DT=|");
  ASSERT_FALSE(help.is_null());
  const std::string label = help["signatures"][0]["label"];
  EXPECT_EQ(0u, label.find("FLDDEF=(PRECISION=<integer>, ")) << label;
  const Json& active = help["signatures"][0]["parameters"][help["activeParameter"].get<size_t>()];
  EXPECT_EQ(0u, active["label"].get<std::string>().find("DATATYPE="));
  EXPECT_FALSE(signature("PRO=NID, SWI=US, FMT=(|)").is_null());
}

TEST(Signatures, NameThePartsOfAnAffixInstruction) {
  const Json prefix = signature("PRO=AFF, MTD=REP, WHENMATCH=PREFIX(|");
  EXPECT_EQ(3u, prefix["signatures"].size());
  const Json overlay = signature("PRO=AFF, MTD=REP, WHENMATCH=overlay(1,|");
  EXPECT_EQ("OVERLAY(<start>, <length>, \"<text>\")", overlay["signatures"][0]["label"]);
  EXPECT_EQ(1, overlay["activeParameter"]);
  const Json inner = signature("PRO=AFF, MTD=REP, WHENMATCH=SUFFIX(SEQ(1,|");
  EXPECT_EQ("SEQ(<integer>, <integer>)", inner["signatures"][0]["label"]);
  const Json copy = signature("PRO=AFF, MTD=REP, COPY=(1,4)(7,|");
  EXPECT_EQ(1, copy["activeParameter"]);
}

TEST(Signatures, AreNoneOutsideParentheses) {
  for (const char* text : {"PRO=CCN, |", "PRO=CCN, FLDDEF1=(NAME=X)|", "|", "PRO=HASH, SRC=\"a(|\"",
                           "PRO=AFF, MTD=REP, WHENMATCH=PREFIX(\"a\")|"}) {
    EXPECT_TRUE(signature(text).is_null()) << text;
  }
}

}  // namespace
