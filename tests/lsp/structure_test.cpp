// Symbols, folding, selection, highlight and semantic tokens.
#include <gtest/gtest.h>

#include "lsp/features.h"
#include "lsp/talk.h"

namespace {

using namespace tavo_test;

TEST(Symbols, NameEachStatementByProviderAndField) {
  const Json symbols =
      ask("PRO=HASH, DSTFLD=\"A B\"\nPRO=LKP, SEARCH=\"ID\", REPLACE=\"N\", DEST=\"D\"\n"
          "PRO=DS, SFLD=\"S\"\nPRO=CCN, FLDDEF1=(NAME=C)\nPRO=CCN\nLIB=own, A=1\nPRO=XYZ\n",
          "textDocument/documentSymbol");
  std::vector<std::string> names;
  for (const Json& symbol : symbols) names.push_back(symbol["name"]);
  EXPECT_EQ((std::vector<std::string>{"HASH A B", "LOOKUP D", "DS S", "CCN C", "CCN", "LIB=<word>",
                                      "unknown statement"}),
            names);
  EXPECT_EQ("DSTFLD", symbols[0]["children"][0]["name"]);
  EXPECT_EQ("NAME", symbols[3]["children"][0]["children"][0]["name"]);
}

TEST(Symbols, AreFlatForAClientThatKnowsNoTrees) {
  const Json symbols =
      ask("\nPRO=HASH, DSTFLD=X", "textDocument/documentSymbol", Json::object(), Json::object());
  EXPECT_EQ("HASH X", symbols[0]["name"]);
  EXPECT_EQ(1, symbols[0]["location"]["range"]["start"]["line"]);
}

TEST(Folding, KnowsStatementsListsAndComments) {
  const Json folds =
      ask("# a\n# b\nPRO=CCN,\n  FLDDEF1=(NAME=X,\n    LEN=3),\n  /* c\n  d */ CP=1\nPRO=CCN\n",
          "textDocument/foldingRange");
  std::vector<std::string> found;
  for (const Json& fold : folds) {
    found.push_back(fold["startLine"].dump() + "-" + fold["endLine"].dump() +
                    fold.value("kind", std::string()));
  }
  EXPECT_EQ((std::vector<std::string>{"0-1comment", "2-6", "3-4", "5-6comment"}), found);
}

std::vector<std::string> selected(const std::string& text) {
  const Marked place = marked(text);
  const Json result =
      ask(place.text, "textDocument/selectionRange", {{"positions", {place.position}}});
  std::vector<std::string> found;
  for (const Json* range = &result[0]; range != nullptr;
       range = range->contains("parent") ? &(*range)["parent"] : nullptr) {
    const int begin = (*range)["range"]["start"]["character"],
              end = (*range)["range"]["end"]["character"];
    found.push_back(
        place.text.substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin)));
  }
  return found;
}

TEST(Selection, GrowsFromTheValueToTheStatement) {
  using Texts = std::vector<std::string>;
  EXPECT_EQ((Texts{"a b", "\"a b\"", "SRC=\"a b\"", "PRO=HASH, SRC=\"a b\""}),
            selected("PRO=HASH, SRC=\"a| b\""));
  EXPECT_EQ((Texts{"X", "NAME=X", "(NAME=X, LEN=3)", "FLDDEF1=(NAME=X, LEN=3)",
                   "PRO=CCN, FLDDEF1=(NAME=X, LEN=3)"}),
            selected("PRO=CCN, FLDDEF1=(NAME=|X, LEN=3)"));
  EXPECT_EQ((Texts{"CCN", "PRO=CCN", "PRO=CCN, CP=1"}), selected("PRO=C|CN, CP=1"));
  EXPECT_EQ((Texts{""}), selected("|"));
}

std::vector<int> highlighted(const std::string& text) {
  std::vector<int> columns;
  for (const Json& each : ask_at(text, "textDocument/documentHighlight")) {
    columns.push_back(each["range"]["start"]["character"]);
  }
  return columns;
}

TEST(Highlights, ShowTheSameKeyTheOtherParenthesisAndTheConflict) {
  EXPECT_EQ((std::vector<int>{10, 19}), highlighted("PRO=HASH, S|EED=@A, SEED=@B, DSTFLD=X"));
  EXPECT_EQ((std::vector<int>{17, 24}), highlighted("PRO=CCN, FLDDEF1=|(NAME=X)"));
  EXPECT_EQ((std::vector<int>{17, 24}), highlighted("PRO=CCN, FLDDEF1=(NAME=X)|"));
  const std::vector<int> conflict = highlighted("PRO=EML, MTD=HASH, D|OM=x");
  EXPECT_EQ(2u, conflict.size());
  EXPECT_EQ((std::vector<int>{}), highlighted("|"));
}

struct Token {
  int line, character, length;
  std::string type;
  bool operator==(const Token&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Token& token) {
  return out << token.line << ":" << token.character << "+" << token.length << " " << token.type;
}

std::vector<Token> tokens(const Json& result) {
  std::vector<Token> found;
  const Json& data = result["data"];
  int line = 0, character = 0;
  for (size_t i = 0; i + 4 < data.size(); i += 5) {
    line += data[i].get<int>();
    character =
        data[i].get<int>() == 0 ? character + data[i + 1].get<int>() : data[i + 1].get<int>();
    found.push_back({line, character, data[i + 2].get<int>(),
                     tavo::cli::lsp::semantic_token_types()[data[i + 3].get<size_t>()]});
  }
  return found;
}

TEST(SemanticTokens, TellWhatEachTokenIs) {
  const std::vector<Token> found =
      tokens(ask("# c\nPRO=EML, // x\n  DOM=a, SEED=\"1\", FLDDEF1=(LEN=3)\n# d\n",
                 "textDocument/semanticTokens/full"));
  EXPECT_EQ((std::vector<Token>{{0, 0, 3, "comment"},
                                {1, 0, 3, "keyword"},
                                {1, 3, 1, "operator"},
                                {1, 4, 3, "class"},
                                {1, 9, 4, "comment"},
                                {2, 2, 3, "property"},
                                {2, 5, 1, "operator"},
                                {2, 6, 1, "string"},
                                {2, 9, 4, "property"},
                                {2, 13, 1, "operator"},
                                {2, 14, 3, "string"},
                                {2, 19, 7, "property"},
                                {2, 26, 1, "operator"},
                                {2, 28, 3, "parameter"},
                                {2, 31, 1, "operator"},
                                {2, 32, 1, "number"},
                                {3, 0, 3, "comment"}}),
            found);
}

TEST(SemanticTokens, EndAtTheEndOfTheirLine) {
  const std::vector<Token> found =
      tokens(ask("PRO=CCN, /* a\n\u00FC\U0001F600 */ CP=1", "textDocument/semanticTokens/full"));
  EXPECT_EQ((Token{0, 9, 4, "comment"}), found[3]);
  EXPECT_EQ((Token{1, 0, 6, "comment"}), found[4]);
}

TEST(SemanticTokens, OfARangeAreThoseThatAreInIt) {
  const std::string text = "PRO=CCN\n# c\nPRO=EML,\n  CP=1\nPRO=NID\n";
  const Json range = {{"start", {{"line", 1}, {"character", 0}}},
                      {"end", {{"line", 3}, {"character", 0}}}};
  const std::vector<Token> part =
      tokens(ask(text, "textDocument/semanticTokens/range", {{"range", range}}));
  EXPECT_EQ(
      (std::vector<Token>{
          {1, 0, 3, "comment"}, {2, 0, 3, "keyword"}, {2, 3, 1, "operator"}, {2, 4, 3, "class"}}),
      part);
}

TEST(SemanticTokens, OfEveryRangeAreThoseOfTheDocumentThatMeetIt) {
  const std::string text =
      "# c\nPRO=EML, /* a\nb */ DOM=a, // x\n# d\n  SEED=\"1\", CP=1\nPRO=NID, SWI=US\n";
  const std::vector<Token> all = tokens(ask(text, "textDocument/semanticTokens/full"));
  for (int first = 0; first < 6; ++first) {
    for (int last = first; last < 7; ++last) {
      const Json range = {{"start", {{"line", first}, {"character", 3}}},
                          {"end", {{"line", last}, {"character", 5}}}};
      std::vector<Token> wanted;
      for (const Token& token : all) {
        const bool before =
            std::pair(token.line, token.character + token.length) <= std::pair(first, 3);
        const bool after = std::pair(token.line, token.character) >= std::pair(last, 5);
        if (!before && !after) wanted.push_back(token);
      }
      EXPECT_EQ(wanted, tokens(ask(text, "textDocument/semanticTokens/range", {{"range", range}})))
          << first << " to " << last;
    }
  }
}

}  // namespace
