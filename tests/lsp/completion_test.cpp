// What completion offers where; the bar marks the place.
#include <gtest/gtest.h>

#include <algorithm>

#include "language/language.h"
#include "lsp/talk.h"
#include "statement/statement_text.h"

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
  // An option that may be repeated is still offered.
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

// ---- every statement, option and value of the tables --------------------------------------------

TEST(Completion, OffersEveryOptionThatIsNotThere) {
  for (const tavo::cli::Statement& statement : tavo::cli::statements()) {
    for (const tavo::cli::Option& option : statement.options) {
      const std::vector<std::string> written = spellings(option);
      if (written.empty()) continue;  // a user-defined word
      const bool numbered = takes_number(option);
      const std::string label = long_spelling(option) + (numbered ? "1" : "");
      EXPECT_TRUE(offers(option.start + ", |", label)) << option.start << ": " << label;
      const bool again = offers(option.start + ", " + option.example + ", |", label);
      EXPECT_EQ(again, numbered || option.key_type == TAVO_PARSER_AFF_PARM_CLASS)
          << option.start << ", " << option.example;
    }
  }
}

TEST(Completion, OffersEveryValueThatIsAWord) {
  for (const tavo::cli::Statement& statement : tavo::cli::statements()) {
    for (const tavo::cli::Option& option : statement.options) {
      const Labels all = offered(option.start + ", " + long_spelling(option) +
                                 (takes_number(option) ? "1=|" : "=|"));
      for (const TAVOValueInfo& value : option.values) {
        for (const std::string& word : tavo::cli::spellings(value.tokenType)) {
          EXPECT_NE(all.end(), std::find(all.begin(), all.end(), word)) << word;
        }
      }
      for (const tavo::cli::Option& parameter : option.parameters) {
        EXPECT_TRUE(
            offers(option.start + ", " + option.example.substr(0, option.example.find('(')) + "(|",
                   long_spelling(parameter)));
      }
    }
  }
}

// Places inside quotes and comments of a line.
std::vector<size_t> silent_places(const std::string& text) {
  std::vector<size_t> places;
  const tavo::cli::StatementText read(text, std::nullopt);
  for (const TAVOTextToken& token : read.tokens()) {
    if (token.type != COMMENT && token.type != TAVO_PARSER_STRING_WITH_QUOTES) continue;
    // What is typed after a comment to the end of the line belongs to it, too.
    const bool line = token.type == COMMENT && text.compare(token.offset, 2, "//") == 0;
    const size_t past = size_t{token.offset} + token.length + (line ? 1 : 0);
    for (size_t at = token.offset + size_t{1}; at < past; ++at) places.push_back(at);
  }
  return places;
}

TEST(Completion, OffersNothingInsideAnyQuoteOrCommentOfAnyExample) {
  size_t looked_at = 0;
  for (const tavo::cli::Statement& statement : tavo::cli::statements()) {
    for (const tavo::cli::Option& option : statement.options) {
      const std::string text = option.start + ", /* PRO=, */ " + option.example + " // , PRO=";
      const Json item = {{"uri", kUri}, {"languageId", "tavo"}, {"version", 1}, {"text", text}};
      std::vector<Json> messages = {
          request(1, "initialize", {{"capabilities", all_capabilities()}}),
          notification("textDocument/didOpen", {{"textDocument", item}})};
      int id = 1;
      for (const size_t at : silent_places(text)) {
        messages.push_back(request(
            ++id, "textDocument/completion",
            {{"textDocument", {{"uri", kUri}}}, {"position", {{"line", 0}, {"character", at}}}}));
      }
      for (const Json& message : talk(messages).sent) {
        if (!message.contains("id") || message["id"] == 1) continue;
        ++looked_at;
        EXPECT_EQ((Labels{}), labels(message["result"])) << text << " " << message["id"];
      }
    }
  }
  EXPECT_GT(looked_at, 2000u);
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
