// Formatting of document, range and on type. Another test compares the results with those of
// `tavo fmt` itself.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "lsp/talk.h"
#include "reading/format_text.h"

namespace {

using namespace tavo_test;

const Json kOptions = {{"tabSize", 2}, {"insertSpaces", true}};

std::string formatted(const std::string& text) {
  return edited(text, ask(text, "textDocument/formatting", {{"options", kOptions}}));
}

std::string formatted(const std::string& text, int first, int last, int character) {
  const Json range = {{"start", {{"line", first}, {"character", 0}}},
                      {"end", {{"line", last}, {"character", character}}}};
  return edited(
      text, ask(text, "textDocument/rangeFormatting", {{"range", range}, {"options", kOptions}}));
}

TEST(Formatting, LaysOutEachAcceptedStatement) {
  EXPECT_EQ("# c\nPRO=HASH, DSTFLD=X\n\nPRO=HASH,dstfld\nPRO=CCN\n",
            formatted("# c\npro = HASH,dstfld=X\n\nPRO=HASH,dstfld\nPRO= CCN\n"));
  EXPECT_EQ("PRO=hash, DSTFLD=X", formatted("pro = hash,dstfld=X")) << "no line end is added";
}

TEST(Formatting, KeepsCommentLinesOfAStatement) {
  EXPECT_EQ("PRO=HASH,\r\n# inner\r\n  DSTFLD=X\r\nPRO=CCN\r\n",
            formatted("pro=HASH,\r\n# inner\r\ndstfld=X\r\npro=CCN\r\n"));
  const std::string inside = "pro=HASH,SRC=\"A\n# inner\n\",DSTFLD=X\n";
  EXPECT_EQ(inside, formatted(inside)) << "a comment line inside a text keeps its place";
}

TEST(Formatting, MakesLineEndsAlike) {
  EXPECT_EQ("# a\r\nPRO=CCN\r\n\r\nPRO=CCN\r\n# z\r\n",
            formatted("# a\r\npro=CCN\r\n\nPRO=CCN\n# z\r\n"));
  EXPECT_EQ("PRO=CCN\nPRO=CCN\n", formatted("PRO=CCN\nPRO=CCN\r\n"));
}

TEST(Formatting, LeavesTheByteOrderMarkAlone) {
  EXPECT_EQ("\uFEFFPRO=CCN\n", formatted("\uFEFFpro=CCN\n"));
  EXPECT_EQ("\uFEFFPRO=CCN\n", formatted("\uFEFFpro=CCN\n", 0, 0, 4));
  EXPECT_TRUE(ask("\uFEFFPRO=CCN\n", "textDocument/formatting", {{"options", kOptions}}).empty());
}

TEST(Formatting, ChangesNothingThatIsLaidOut) {
  const std::string text = "# c\nPRO=HASH, DSTFLD=\"\U0001F600\" /* x */\n\n";
  EXPECT_TRUE(ask("# c\nPRO=HASH, DSTFLD=X\n\n", "textDocument/formatting", {{"options", kOptions}})
                  .empty());
  EXPECT_EQ(text, formatted(text));
}

TEST(Formatting, OfARangeTouchesItsStatementsOnly) {
  const std::string text = "pro=CCN\npro=CCN,\n  cp=1\npro=CCN\n";
  EXPECT_EQ("pro=CCN\nPRO=CCN, CP=1\npro=CCN\n", formatted(text, 1, 1, 3));
  EXPECT_EQ("pro=CCN\nPRO=CCN, CP=1\npro=CCN\n", formatted(text, 2, 3, 0));
  EXPECT_EQ("PRO=CCN\nPRO=CCN, CP=1\npro=CCN\n", formatted(text, 0, 2, 0));
  EXPECT_EQ("PRO=CCN,\r\n# c\r\n  CP=1\r\npro=CCN\r\n",
            formatted("pro=CCN,\r\n# c\ncp=1\r\npro=CCN\r\n", 1, 1, 2));
}

TEST(Formatting, OnTypeLaysOutTheStatementThatALineEndEnded) {
  const auto typed = [](const std::string& text, int line) {
    return edited(text, ask(text, "textDocument/onTypeFormatting",
                            {{"position", {{"line", line}, {"character", 0}}},
                             {"ch", "\n"},
                             {"options", kOptions}}));
  };
  EXPECT_EQ("PRO=HASH, DSTFLD=X\n\n", typed("pro=HASH,dstfld=X\n\n", 1));
  EXPECT_EQ("pro=HASH,\n  dstfld=X\n", typed("pro=HASH,\n  dstfld=X\n", 1)) << "it goes on";
  EXPECT_EQ("pro=HASH,\n", typed("pro=HASH,\n", 1)) << "it is not accepted";
}

TEST(Formatting, FollowsTheClientsSettings) {
  const std::string text = "pro=HASH,dstfld=X\n";
  const Json item = {{"uri", kUri}, {"languageId", "tavo"}, {"version", 1}, {"text", text}};
  const Json settings = {{"tavo", {{"spelling", "keep"}, {"optionALine", true}}}};
  const Talk result = talk(
      {request(1, "initialize",
               {{"capabilities", all_capabilities()},
                {"initializationOptions", {{"spelling", "long"}}}}),
       notification("textDocument/didOpen", {{"textDocument", item}}),
       request(2, "textDocument/formatting", {{"textDocument", {{"uri", kUri}}}, {"options", {}}}),
       notification("workspace/didChangeConfiguration", {{"settings", settings}}),
       request(3, "textDocument/formatting",
               {{"textDocument", {{"uri", kUri}}}, {"options", kOptions}})});
  EXPECT_TRUE(result.answer(2).contains("error")) << "options are no array";
  EXPECT_EQ("PRO=HASH,\n  DSTFLD=X\n", edited(text, result.answer(3)["result"]));
}

// ---- any text -----------------------------------------------------------------------------------

rc::Gen<std::string> any_text() {
  const auto part = rc::gen::element<std::string>(
      "pro=hash, dstfld=X", "PRO=CCN", "pro = ccn,cp=1", ", ALGO=sha256", ",", "\n", "\n", "\n  ",
      "\r\n", "\r\n", "\r", "# c\n", "# \u00FC\r\n", "// c\n", " /* c */ ", "SRC=\"a\n# b\"",
      "fldDef1=(NAME=\u00FC,\n", ")", "\U0001F600", "lib=x", "trclevel=1", " ");
  const auto mark = rc::gen::element<std::string>("", "", "\uFEFF");
  return rc::gen::apply(
      [](const std::string& first, const std::vector<std::string>& parts) {
        std::string text = first;
        for (const std::string& each : parts) text += each;
        return text;
      },
      mark, rc::gen::container<std::vector<std::string>>(part));
}

RC_GTEST_PROP(Formatting, GivesWhatTheFormattingOfAFileGives, ()) {
  const std::string text = *any_text();
  const std::string mark = text.starts_with("\uFEFF") ? "\uFEFF" : "";
  const std::string wanted =
      tavo::cli::format_text(text.substr(mark.size()), std::nullopt, tavo::cli::Layout::kAuto,
                             tavo::cli::StatementStyle(), [](const auto&...) {})
          .after();
  RC_ASSERT(mark + wanted == formatted(text));
}

RC_GTEST_PROP(Formatting, OfEveryLineIsThatOfTheDocumentButForLineEnds, ()) {
  const std::string text = *any_text();
  const auto with_plain_ends = [](std::string of) {
    std::erase(of, '\r');
    return of;
  };
  // A lone carriage return is a line end for editors only.
  RC_PRE(text.find("\r\r") == std::string::npos);
  RC_ASSERT(with_plain_ends(formatted(text)) == with_plain_ends(formatted(text, 0, 1000, 0)));
}

}  // namespace
