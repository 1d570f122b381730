// Diagnostics, pushed and pulled, and the actions that fix them.
#include <gtest/gtest.h>

#include <fmt/format.h>

#include "lsp/talk.h"
#include "statement/fixing.h"

namespace {

using namespace tavo_test;

Json item(const std::string& text) {
  return {{"uri", kUri}, {"languageId", "tavo"}, {"version", 1}, {"text", text}};
}

Json change(int version, const Json& range, const std::string& text) {
  return notification("textDocument/didChange",
                      {{"textDocument", {{"uri", kUri}, {"version", version}}},
                       {"contentChanges", {{{"range", range}, {"text", text}}}}});
}

Json range(int line, int begin, int end) {
  return {{"start", {{"line", line}, {"character", begin}}},
          {"end", {{"line", line}, {"character", end}}}};
}

Json diagnostics(const std::string& text, const std::string& encoding = "utf-16") {
  const Talk result =
      talk({request(1, "initialize", {{"capabilities", all_capabilities(encoding)}}),
            notification("textDocument/didOpen", {{"textDocument", item(text)}})});
  const auto published = result.notifications("textDocument/publishDiagnostics");
  EXPECT_EQ(1u, published.size());
  return published.empty() ? Json() : published[0]["params"]["diagnostics"];
}

TEST(Diagnostics, TellCodeRangeAndFixes) {
  const Json list = diagnostics("# c\nPRO=HASH, DSTFLD=X, AGLO=SHA256\n");
  ASSERT_EQ(1u, list.size());
  EXPECT_EQ("unknown-option", list[0]["code"]);
  EXPECT_EQ(1, list[0]["severity"]);
  EXPECT_EQ("tavo", list[0]["source"]);
  EXPECT_EQ(range(1, 20, 24), list[0]["range"]);
  EXPECT_EQ(7139, list[0]["data"]["number"]);
  EXPECT_FALSE(list[0]["data"]["fixes"].empty());
}

TEST(Diagnostics, AreThoseOfTheCommandLine) {
  for (const std::string text :
       {"PRO=HASH, DSTFLD=X, AGLO=SHA256", "PRO=EML, MTD=HASH, DOM=x", "PRO=CCN DSTFLD=X",
        "PRO=HASH, SEED=\"s3cr3t\" s3cr3t, DSTFLD=X", "PRO=XYZ; PASS=s3cr3t", "PRO=CCN, CP=\"x"}) {
    const tavo::cli::StatementText statement(text, std::nullopt);
    const auto findings = tavo::cli::find_findings(statement, statement.parse(), false);
    const Json list = diagnostics(text);
    ASSERT_EQ(findings.size(), list.size()) << text;
    for (size_t i = 0; i < findings.size(); ++i) {
      const bool error = findings[i].severity == tavo::cli::Severity::kError;
      EXPECT_EQ(findings[i].rule, list[i]["code"]) << text;
      EXPECT_EQ(tavo::to_utf8(findings[i].message), list[i]["message"]) << text;
      EXPECT_EQ(error ? 1 : 2, list[i]["severity"]) << text;
    }
  }
}

TEST(Diagnostics, CountInTheEncodingOfTheClient) {
  const auto place = [](const std::string& encoding) {
    const Json list = diagnostics("PRO=HASH, DSTFLD=\"\u00FC\u20AC\", AGLO=SHA256", encoding);
    return list.empty() ? -1 : list[0]["range"]["start"]["character"].get<int>();
  };
  EXPECT_EQ(23, place("utf-16"));
  EXPECT_EQ(23, place("utf-32"));
  EXPECT_EQ(26, place("utf-8"));
}

TEST(Diagnostics, CountAstralCharactersAsTwoUnits) {
  const std::string text = "PRO=HASH, /* \U0001F600 */ DSTFLD=X, AGLO=SHA256";
  const auto place = [&](const std::string& encoding) {
    const Json list = diagnostics(text, encoding);
    return list.empty() ? -1 : list[0]["range"]["start"]["character"].get<int>();
  };
  EXPECT_EQ(28, place("utf-32"));
  EXPECT_EQ(29, place("utf-16"));
  EXPECT_EQ(31, place("utf-8"));
}

TEST(Diagnostics, ArePublishedAfterEachBurstOfChanges) {
  const Talk result =
      talk({request(1, "initialize", {{"capabilities", all_capabilities()}}),
            notification("textDocument/didOpen", {{"textDocument", item("PRO=HASH")}}),
            change(2, range(0, 8, 8), ", DSTFLD="), change(3, range(0, 17, 17), "X")});
  const auto published = result.notifications("textDocument/publishDiagnostics");
  ASSERT_EQ(1u, published.size())
      << "the changes were all there before anything could be published";
  EXPECT_EQ(3, published[0]["params"]["version"]);
  EXPECT_TRUE(published[0]["params"]["diagnostics"].empty());
}

TEST(Diagnostics, RelatedPlacesLeadToTheOtherOption) {
  const Json list = diagnostics("PRO=EML, MTD=HASH, DOM=x");
  ASSERT_EQ(1u, list.size());
  EXPECT_EQ("rule-violated", list[0]["code"]);
  EXPECT_EQ(7112, list[0]["data"]["number"]);
  ASSERT_TRUE(list[0].contains("relatedInformation"));
  EXPECT_EQ(kUri, list[0]["relatedInformation"][0]["location"]["uri"]);
}

TEST(Diagnostics, ArePulledByClientsThatPull) {
  Json capabilities = all_capabilities();
  capabilities["textDocument"]["diagnostic"] = Json::object();
  const Json document = {{"uri", kUri}};
  const Talk result =
      talk({request(1, "initialize", {{"capabilities", capabilities}}),
            notification("textDocument/didOpen", {{"textDocument", item("PRO=XYZ")}}),
            request(2, "textDocument/diagnostic", {{"textDocument", document}}),
            request(3, "textDocument/diagnostic",
                    {{"textDocument", document}, {"previousResultId", "1"}}),
            change(2, range(0, 4, 7), "CCN"),
            request(4, "textDocument/diagnostic",
                    {{"textDocument", document}, {"previousResultId", "1"}})});
  EXPECT_TRUE(result.answer(1)["result"]["capabilities"].contains("diagnosticProvider"));
  EXPECT_TRUE(result.notifications("textDocument/publishDiagnostics").empty());
  EXPECT_EQ("full", result.answer(2)["result"]["kind"]);
  EXPECT_EQ("1", result.answer(2)["result"]["resultId"]);
  EXPECT_EQ("unknown-provider", result.answer(2)["result"]["items"][0]["code"]);
  EXPECT_EQ("unchanged", result.answer(3)["result"]["kind"]);
  EXPECT_EQ("full", result.answer(4)["result"]["kind"]);
  EXPECT_TRUE(result.answer(4)["result"]["items"].empty());
}

// ---- actions ------------------------------------------------------------------------------------

Json actions(const std::string& text, const Json& only, const Json& place) {
  Json context = {{"diagnostics", Json::array()}};
  if (!only.is_null()) context["only"] = only;
  return ask(text, "textDocument/codeAction", {{"range", place}, {"context", context}});
}

std::string applied(const std::string& text, const Json& list, const std::string& title) {
  for (const Json& action : list) {
    if (action["title"] == title) return edited(text, action["edit"]["changes"][kUri]);
  }
  ADD_FAILURE() << title << " is not among " << list.dump(1);
  return "";
}

TEST(Fixes, AreOfferedWhereTheDiagnosticIs) {
  const std::string text = "PRO=CCN\nPRO=HASH, DSTFLD=X, AGLO=SHA256\n";
  const Json list = actions(text, {"quickfix"}, range(1, 21, 21));
  ASSERT_FALSE(list.empty());
  EXPECT_EQ("PRO=CCN\nPRO=HASH, DSTFLD=X, ALGO=SHA256\n",
            edited(text, list[0]["edit"]["changes"][kUri]));
  EXPECT_EQ("quickfix", list[0]["kind"]);
  EXPECT_TRUE(actions(text, {"quickfix"}, range(0, 0, 3)).empty());
}

TEST(Fixes, NameTheDiagnosticOfTheClient) {
  const std::string text = "PRO=HASH, DSTFLD=X, AGLO=SHA256";
  const Json shown = {{"range", range(0, 20, 24)}, {"code", "unknown-option"}, {"message", "m"}};
  const Json list = ask(text, "textDocument/codeAction",
                        {{"range", range(0, 20, 20)},
                         {"context", {{"diagnostics", {shown}}, {"only", {"quickfix"}}}}});
  ASSERT_FALSE(list.empty());
  EXPECT_EQ(shown, list[0]["diagnostics"][0]);
}

TEST(Fixes, AllThatAreSafeAtOnce) {
  const std::string text = "PRO=HASH DSTFLD=X\nPRO=HASH, DSTFLD=Y; ALGO=SHA256\nPRO=CCN\n";
  const Json list = actions(text, {"source.fixAll"}, range(0, 0, 0));
  ASSERT_EQ(1u, list.size());
  EXPECT_EQ("source.fixAll.tavo", list[0]["kind"]);
  const std::string fixed = edited(text, list[0]["edit"]["changes"][kUri]);
  EXPECT_EQ(2u, diagnostics(text).size());
  EXPECT_EQ(0u, diagnostics(fixed).size()) << fixed;
  // A guess is not safe.
  EXPECT_TRUE(
      actions("PRO=HASH, DSTFLD=X, AGLO=SHA256", {"source.fixAll"}, range(0, 0, 0)).empty());
}

TEST(Fixes, AllAtOnceAreThoseThatTheCommandLineApplies) {
  for (const std::string text :
       {"PRO=HASH DSTFLD=X", "PRO=HASH, DSTFLD=Y; ALGO=SHA256", "PRO=HASH,, DSTFLD=X,",
        "PRO=HASH, AGLO=SHA256, DSTFLD=X DSTFLD=Y", "PRO=CCN, FLDDEF1=(NAME=X",
        "pro=eml; dom=x; mtd", "PRO=HASH, SRC=\"a, DSTFLD=X", "PRO=HASH; DSTFLD=\U0001F600"}) {
    const tavo::cli::StatementText statement(text, std::nullopt);
    const auto findings = tavo::cli::find_findings(statement, statement.parse(), false);
    const std::string wanted =
        tavo::cli::with_edits(text, tavo::cli::edits_of(findings, tavo::cli::FixWhat::kSafe, 1));
    const Json list = actions(text, {"source.fixAll"}, range(0, 0, 0));
    EXPECT_EQ(wanted != text, !list.empty()) << text;
    if (list.empty()) continue;
    EXPECT_EQ(wanted, edited(text, list[0]["edit"]["changes"][kUri]));
  }
}

TEST(Rewrites, SpellKeywordsAndLayOutOptions) {
  const std::string text = "PRO=HASH, DSTFLD=X, ALGO=SHA256\n";
  const Json list = actions(text, {"refactor"}, range(0, 0, 0));
  EXPECT_EQ("PROVIDER=HASH, DSTFLD=X, ALGORITHM=SHA256\n",
            applied(text, list, "Write keywords long"));
  EXPECT_EQ("PRO=HASH,\n  DSTFLD=X,\n  ALGO=SHA256\n",
            applied(text, list, "Write one option a line"));
  for (const Json& action : list) EXPECT_NE("Write keywords short", action["title"]);
  const std::string written_long = "PROVIDER=HASH,\n  DSTFLD=X, ALGORITHM=SHA256\n";
  const Json shorter = actions(written_long, {"refactor"}, range(1, 0, 0));
  EXPECT_EQ("PRO=HASH, DSTFLD=X, ALGO=SHA256\n",
            applied(written_long, shorter, "Write keywords short"));
  EXPECT_EQ("PROVIDER=HASH, DSTFLD=X, ALGORITHM=SHA256\n",
            applied(written_long, shorter, "Write the statement in one line"));
  const std::string around = "PRO=HASH,\r\n# inner\r\n  DSTFLD=X, ALGO=SHA256\r\n";
  EXPECT_EQ(
      "PRO=HASH,\r\n# inner\r\n  DSTFLD=X,\r\n  ALGO=SHA256\r\n",
      applied(around, actions(around, {"refactor"}, range(0, 0, 0)), "Write one option a line"))
      << "comment lines and line ends stay";
  EXPECT_TRUE(actions(text, {"quickfix"}, range(0, 0, 0)).empty());
  EXPECT_TRUE(actions("PRO=HASH", {"refactor"}, range(0, 0, 0)).empty()) << "not accepted";
}

}  // namespace
