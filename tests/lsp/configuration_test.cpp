// The project's configuration and the ignores of a file hold in the editor as in `tavo check`.
#include "jobs/configuration.h"

#include <gtest/gtest.h>

#include "lsp/talk.h"

namespace {

using namespace tavo_test;
using tavo::cli::Configuration;

std::shared_ptr<const Configuration> configured(const std::string& text) {
  return std::make_shared<const Configuration>(
      tavo::cli::read_configuration("/p/tavo.toml", text, tavo::cli::known_rules()));
}

Json opening(const std::string& text) {
  return notification(
      "textDocument/didOpen",
      {{"textDocument", {{"uri", kUri}, {"languageId", "tavo"}, {"version", 1}, {"text", text}}}});
}

Json change(const Json& range, const std::string& text) {
  return notification("textDocument/didChange",
                      {{"textDocument", {{"uri", kUri}, {"version", 2}}},
                       {"contentChanges", {{{"range", range}, {"text", text}}}}});
}

const Json kInitialize = request(1, "initialize", {{"capabilities", all_capabilities()}});

using Codes = std::vector<std::string>;

// The last diagnostics: "line severity code".
Codes codes(const Talk& result) {
  Codes found;
  const auto published = result.notifications("textDocument/publishDiagnostics");
  if (published.empty()) return {"nothing was published"};
  for (const Json& each : published.back()["params"]["diagnostics"]) {
    found.push_back(each["range"]["start"]["line"].dump() + " " + each["severity"].dump() + " " +
                    each["code"].get<std::string>());
  }
  return found;
}

Codes codes(const std::string& text, const std::string& configuration) {
  return codes(talk({kInitialize, opening(text)}, 0, [&](const std::string& path) {
    EXPECT_EQ("/masks.tavo", path);
    return configured(configuration);
  }));
}

TEST(Configured, SeveritiesAndHouseRulesHold) {
  const std::string text = "PRO=HASH, DSTFLD=X\nPRO=EML, MTD=HASH, DOM=x\n";
  EXPECT_EQ((Codes{"1 1 rule-violated"}), codes(text, ""));
  EXPECT_EQ((Codes{"1 2 rule-violated"}), codes(text, "[severity]\n7112 = \"warning\"\n"));
  EXPECT_EQ((Codes{"0 1 house/seeded", "1 2 rules-not-applied"}),
            codes(text,
                  "[severity]\n7112 = \"off\"\n[[rule]]\nname = \"seeded\"\n"
                  "when = \"PRO=HASH\"\nrequire = \"SEED\"\n"));
}

TEST(Configured, TheLayoutDividesTheDocument) {
  const std::string text = "PRO=HASH\n, DSTFLD=X\n";
  EXPECT_EQ((Codes{}), codes(text, ""));
  EXPECT_EQ(2u, codes(text, "layout = \"lines\"\n").size());
}

TEST(Configured, AWrongOneIsShownAndHoldsForNothing) {
  const Talk result = talk({kInitialize, opening("PRO=XYZ\n")}, 0, [](const std::string&) {
    return configured("[severity]\nnonsense = \"off\"\n");
  });
  const auto shown = result.notifications("window/showMessage");
  ASSERT_EQ(1u, shown.size());
  EXPECT_EQ(0u, shown[0]["params"]["message"].get<std::string>().find("/p/tavo.toml:2:"));
  EXPECT_EQ((Codes{"0 1 unknown-provider"}), codes(result));
}

TEST(Configured, IsReadAgainWhenAWatchedFileChanges) {
  std::string configuration;
  const std::vector<Json> messages = {
      kInitialize, opening("PRO=EML, MTD=HASH, DOM=x\n"),
      notification("workspace/didChangeWatchedFiles", {{"changes", Json::array()}})};
  size_t asked = 0;
  EXPECT_EQ((Codes{"0 2 rule-violated"}), codes(talk(messages, 0, [&](const std::string&) {
              return configured(asked++ == 0 ? "" : "[severity]\n7112 = \"warning\"\n");
            })));
  EXPECT_EQ(2u, asked);
}

TEST(Configured, PathsAreTakenOutOfUris) {
  std::vector<std::string> asked;
  const auto open = [](const std::string& uri) {
    return notification(
        "textDocument/didOpen",
        {{"textDocument", {{"uri", uri}, {"languageId", "tavo"}, {"version", 1}, {"text", ""}}}});
  };
  talk({kInitialize, open("file:///a%20b/%C3%BC.tavo"), open("untitled:1"), open("file://host/x"),
        open("file:///100%"), open("file:///%zz")},
       0, [&](const std::string& path) {
         asked.push_back(path);
         return nullptr;
       });
  EXPECT_EQ((std::vector<std::string>{"/a b/\u00FC.tavo", "", "/x", "/100%", "/%zz"}), asked);
}

TEST(Ignores, HideFindingsOfTheNextStatement) {
  const std::string wrong = "PRO=EML, MTD=HASH, DOM=x\n";
  EXPECT_EQ((Codes{"2 1 rule-violated"}),
            codes("# tavo: ignore 7112 -- why\n" + wrong + wrong, ""));
  EXPECT_EQ((Codes{"1 2 unused-ignore"}), codes("\n# tavo: ignore 7112\nPRO=CCN\n", ""));
  EXPECT_EQ((Codes{"0 1 bad-ignore", "1 1 rule-violated"}),
            codes("# tavo: ignore nonsense\n" + wrong, ""));
}

TEST(Ignores, HoldAsSoonAsTheyAreTyped) {
  const std::string before = "PRO=CCN\nPRO=CCN\n", wrong = "PRO=EML, MTD=HASH, DOM=x\n";
  const auto at = [](int line, int end) {
    return Json{{"start", {{"line", line}, {"character", 0}}},
                {"end", {{"line", end}, {"character", 0}}}};
  };
  EXPECT_EQ((Codes{}), codes(talk({kInitialize, opening(before + wrong + before),
                                   change(at(2, 2), "# tavo: ignore 7112\n")})));
  EXPECT_EQ((Codes{"2 1 rule-violated"}),
            codes(talk({kInitialize, opening(before + "# tavo: ignore 7112\n" + wrong + before),
                        change(at(2, 3), "")})));
  // A change in the statement itself leaves the ignore before it alone.
  EXPECT_EQ((Codes{}),
            codes(talk({kInitialize, opening(before + "# tavo: ignore 7112\n" + wrong + before),
                        change({{"start", {{"line", 3}, {"character", 24}}},
                                {"end", {{"line", 3}, {"character", 24}}}},
                               "y")})));
}

}  // namespace
