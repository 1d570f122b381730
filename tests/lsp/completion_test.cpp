// What is offered where; the place is the bar.
#include <gtest/gtest.h>

#include <algorithm>

#include "lsp/talk.h"

namespace {

using namespace tavo_test;

std::vector<std::string> labels(const Json& list) {
  std::vector<std::pair<std::string, std::string>> sorted;
  for (const Json& item : list["items"]) {
    sorted.push_back({item["sortText"].get<std::string>(), item["label"].get<std::string>()});
  }
  std::sort(sorted.begin(), sorted.end());
  std::vector<std::string> found;
  for (const auto& [order, label] : sorted) found.push_back(label);
  return found;
}

std::vector<std::string> offered(const std::string& text) {
  return labels(ask_at(text, "textDocument/completion"));
}

bool offers(const std::string& text, const std::string& label) {
  const std::vector<std::string> all = offered(text);
  return std::find(all.begin(), all.end(), label) != all.end();
}

Json item_of(const std::string& text, const std::string& label,
             const Json& capabilities = all_capabilities()) {
  const Json list = ask_at(text, "textDocument/completion", Json::object(), capabilities);
  for (const Json& item : list["items"]) {
    if (item["label"] == label) return item;
  }
  ADD_FAILURE() << label << " is not offered";
  return {};
}

using Labels = std::vector<std::string>;

TEST(Completion, OffersStatementsAtTheStartOfALine) {
  EXPECT_TRUE(offers("|", "PRO=HASH"));
  EXPECT_TRUE(offers("pro=h|", "HASH"));
  EXPECT_TRUE(offers("PRO=CCN\n|", "PRO=EML"));
  EXPECT_TRUE(offers("PRO=CCN\n\nLI|", "LIB="));
  EXPECT_TRUE(offers("TR|", "TRCLEVEL="));
}

TEST(Completion, OffersProviders) {
  EXPECT_EQ((Labels{"HASH", "HASH_LOOKUP", "HASH_LKP"}), offered("PRO=H|"));
  EXPECT_TRUE(offers("PROVIDER = |", "NID"));
  EXPECT_FALSE(offers("PRO=|", "PRO=HASH"));
}

TEST(Completion, OffersTheOptionsThatAreNotThereRequiredOnesFirst) {
  const Labels all = offered("PRO=HASH, |");
  ASSERT_FALSE(all.empty());
  EXPECT_EQ("DSTFLD", all.front());
  EXPECT_TRUE(offers("PRO=HASH, |", "ALGORITHM"));
  EXPECT_TRUE(offers("PRO=HASH, |", "ALGO"));
  EXPECT_FALSE(offers("PRO=HASH, DSTFLD=X, |", "DSTFLD"));
  EXPECT_FALSE(offers("PRO=HASH, |, DSTFLD=X", "DSTFLD"));
  EXPECT_FALSE(offers("PRO=HASH, ALGO=SHA256, |", "ALGORITHM")) << "the other spelling";
  EXPECT_FALSE(offers("PRO=HASH, |", "METHOD")) << "of another provider";
  // What may repeat stays on offer.
  EXPECT_TRUE(offers("PRO=HASH, FLDDEF1=(NAME=X), |", "FLDDEF1"));
  EXPECT_TRUE(offers("PRO=AFF, MTD=REP, CLASS=\"A\", |", "CLASS"));
}

TEST(Completion, KnowsTheStatementInSpiteOfMistakes) {
  EXPECT_TRUE(offers("PRO=HASH, XYZ=1, SEED=, |", "DSTFLD"));
  EXPECT_TRUE(offers("PRO=HASH, SEED=%, DSTFLD|=", "DSTFLD"));
}

TEST(Completion, OffersValuesOfAnOption) {
  EXPECT_EQ((Labels{"DEF", "DEFAULT", "SHA256"}), offered("PRO=HASH, ALGO=|"));
  EXPECT_EQ((Labels{"SHA256"}), offered("PRO=HASH, algo = s|"));
  EXPECT_EQ((Labels{"HMAC", "RAN", "RANDOM", "@", "#", "\"\""}), [] {
    Labels all = offered("PRO=HASH, SEED=|");
    std::stable_partition(all.begin(), all.end(),
                          [](const std::string& s) { return s.size() > 2; });
    return all;
  }());
  EXPECT_EQ((Labels{}), offered("PRO=HASH, DSTFLD=|")) << "free text";
}

TEST(Completion, OffersParametersInsideParentheses) {
  EXPECT_TRUE(offers("PRO=CCN, FLDDEF1=(|", "DATATYPE"));
  EXPECT_TRUE(offers("PRO=CCN, FLDDEF1=(NAME=X, |)", "LENGTH"));
  EXPECT_FALSE(offers("PRO=CCN, FLDDEF1=(NAME=X, |)", "NAME"));
  EXPECT_FALSE(offers("PRO=CCN, FLDDEF1=(|, NAME=X)", "NAME"));
  EXPECT_TRUE(offers("PRO=CCN, FLDDEF1=(DT=|)", "VARCHAR"));
  EXPECT_FALSE(offers("PRO=CCN, FLDDEF1=(|", "METHOD"));
  EXPECT_TRUE(offers("PRO=NID, SWI=US, FMT=(US=|", "3X-2X-4X"));
  EXPECT_FALSE(offers("PRO=CCN, FLDDEF1=(NAME=X), |", "DATATYPE"));
}

TEST(Completion, OffersNothingInQuotesAndComments) {
  for (const char* text : {"PRO=HASH, SRC=\"|", "PRO=HASH, SRC=\"A, |\"", "PRO=HASH, SRC=\"A, |",
                           "PRO=HASH, // |", "PRO=HASH, /* |", "PRO=HASH, /* | */ DSTFLD=X",
                           "PRO=AFF, WHENMATCH=PREFIX(|", "PRO=HASH |", "PRO=HASH, DSTFLD |"}) {
    EXPECT_EQ((Labels{}), offered(text)) << text;
  }
  EXPECT_TRUE(ask_at("# PRO=|", "textDocument/completion").is_null());
}

TEST(Completion, GoesOnInTheNextLine) {
  EXPECT_TRUE(offers("PRO=HASH,\n  |", "DSTFLD"));
  EXPECT_TRUE(offers("PRO=HASH,\n  DST|", "DSTFLD"));
  EXPECT_TRUE(offers("PRO=HASH,\n  ALGO=|\n", "SHA256"));
}

TEST(Completion, ReplacesTheWordThatIsThere) {
  const Json item = item_of("PRO=HASH, \U0001F600, ds|", "DSTFLD");
  EXPECT_EQ(14, item["textEdit"]["range"]["start"]["character"]);
  EXPECT_EQ(16, item["textEdit"]["range"]["end"]["character"]);
}

TEST(Completion, BringsChoicesAsASnippetWhereTheClientKnowsThem) {
  EXPECT_EQ("ALGO=${1|DEF,DEFAULT,SHA256|}", item_of("PRO=HASH, |", "ALGO")["textEdit"]["newText"]);
  EXPECT_EQ("SRC=\"$1\"", item_of("PRO=HASH, |", "SRC")["textEdit"]["newText"]);
  EXPECT_EQ("FLDDEF${1:1}=(NAME=$2)", item_of("PRO=HASH, |", "FLDDEF1")["textEdit"]["newText"]);
  const Json plain = item_of("PRO=HASH, |", "ALGO", Json::object());
  EXPECT_EQ("ALGO=", plain["textEdit"]["newText"]);
  EXPECT_FALSE(plain.contains("insertTextFormat"));
}

TEST(Completion, IsDocumented) {
  const Json item = item_of("PRO=HASH, |", "ALGO");
  EXPECT_EQ("markdown", item["documentation"]["kind"]);
  EXPECT_NE(std::string::npos,
            item["documentation"]["value"].get<std::string>().find("Chooses the hash algorithm."));
  EXPECT_EQ("plaintext", item_of("PRO=HASH, |", "ALGO", Json::object())["documentation"]["kind"]);
}

}  // namespace
