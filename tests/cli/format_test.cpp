// Formatting never changes what a statement stores, and formatting again changes nothing.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "corpus.h"
#include "statement/format_statement.h"
#include "statement/syntax.h"

namespace tavo::cli {
namespace {

const Library g_library;

std::vector<StatementStyle> all_styles() {
  using Spelling = StatementStyle::Spelling;
  std::vector<StatementStyle> styles;
  for (const Spelling spelling : {Spelling::kKeep, Spelling::kLong, Spelling::kShort}) {
    styles.push_back({spelling, false});
    styles.push_back({spelling, true});
  }
  return styles;
}

std::vector<std::wstring> comments_of(const StatementText& text) {
  std::vector<std::wstring> comments;
  for (const TAVOTextToken& token : text.tokens()) {
    if (token.type == COMMENT) comments.emplace_back(text.text_of(token));
  }
  return comments;
}

// Checks an accepted text. Returns "" or the violated condition.
std::string violation(const std::string& bytes, const StatementStyle& style) {
  const StatementText text(bytes, std::nullopt);
  const ParseResult before = text.parse();
  if (!before) return "";
  const std::wstring once = format_statement(text, style);
  const StatementText laid_out(to_utf8(once), std::nullopt);
  if (!stores_the_same(before, laid_out.parse())) return "stores something else: " + to_utf8(once);
  if (comments_of(laid_out) != comments_of(text)) return "loses a comment: " + to_utf8(once);
  const std::wstring twice = format_statement(laid_out, style);
  if (twice != once) return "is not steady: " + to_utf8(once) + "\nthen: " + to_utf8(twice);
  return "";
}

TEST(Format, HoldsForEveryStatementOfTheCorpus) {
  size_t accepted = 0;
  for (const std::string& statement : corpus_statements()) {
    if (StatementText(statement, std::nullopt).parse()) ++accepted;
    for (const StatementStyle& style : all_styles()) {
      EXPECT_EQ(violation(statement, style), "") << statement;
    }
  }
  EXPECT_GT(accepted, 100u);
}

// Accepted statements without ignored text, as tokens.
std::vector<std::vector<std::string>> token_lists() {
  std::vector<std::vector<std::string>> lists;
  for (const std::string& statement : corpus_statements()) {
    const StatementText text(statement, std::nullopt);
    const WrittenStatement written = walk(text);
    if (!text.parse() || written.past != written.tokens.size()) continue;
    std::vector<std::string>& list = lists.emplace_back();
    for (const TAVOTextToken& token : written.tokens) {
      list.push_back(to_utf8(text.text_of(token)));
    }
  }
  return lists;
}

RC_GTEST_PROP(Format, HoldsHoweverTheTokensAreSpacedAndCommented, ()) {
  static const std::vector<std::vector<std::string>> lists = token_lists();
  const std::vector<std::string> tokens = *rc::gen::elementOf(lists);
  std::string text;
  for (const std::string& token : tokens) {
    text += *rc::gen::element<std::string>("", "", " ", "\n", "\t ", "\r\n", " /* c */ ", "/**/",
                                           " // d\n", "\n// e\n", "/* f\n g */");
    text += token;
  }
  text += *rc::gen::element<std::string>("", " ", "\n", " // end", " /* end */ ");
  for (const StatementStyle& style : all_styles()) RC_ASSERT(violation(text, style) == "");
}

std::string formatted(const std::string& text, const StatementStyle& style) {
  return to_utf8(format_statement(StatementText(text, std::nullopt), style));
}

TEST(Format, LeavesValuesAsTyped) {
  EXPECT_EQ(formatted("pro=hash , dstfld=\"a  \\\" b\" ,algo=sha256", {}),
            "PRO=hash, DSTFLD=\"a  \\\" b\", ALGO=sha256");
}

TEST(Format, LeavesTheKeysOfAUsersOwnProviderAsTyped) {
  EXPECT_EQ(formatted("lib=x,Speed=1", {StatementStyle::Spelling::kLong, false}),
            "LIBRARY=x, Speed=1");
}

TEST(Format, KeepsTheNumberOfAFieldDefinition) {
  EXPECT_EQ(formatted("lib=x,flddef12=(pre=1)", {StatementStyle::Spelling::kLong, false}),
            "LIBRARY=x, FLDDEF12=(PRECISION=1)");
}

}  // namespace
}  // namespace tavo::cli
