// Formatting of document, range and on type. That it gives what `tavo fmt` gives is tested with the
// programs themselves.
#include <gtest/gtest.h>

#include "lsp/talk.h"

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

TEST(Formatting, LeavesAStatementAroundACommentLineAlone) {
  EXPECT_EQ("pro=HASH,\r\n# inner\n  dstfld=X\r\nPRO=CCN\r\n",
            formatted("pro=HASH,\r\n# inner\n  dstfld=X\r\npro=CCN\r\n"));
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

}  // namespace
