// Secrets of a document stay there: no response, notification, trace or symbol holds one. Edits are
// the exception: they are part of the document.
#include <gtest/gtest.h>

#include <cstdlib>

#include "cli/secrets/damaged_statements.h"
#include "lsp/talk.h"

namespace {

using namespace tavo_test;

const char* const kSecret = "s3cr3tV4lue";

// A secret in each place, in valid, invalid and truncated statements.
const char* const kTexts[] = {
    "PRO=LKP, SEARCH=\"A\", REPLACE=\"B\", PASS=\"s3cr3tV4lue\", CONN=s3cr3tV4lue, ID=x",
    "PRO=LKP, SEARCH=\"A\", REPLACE=\"B\", PASS=\"s3cr3tV4lue, ID=x",
    "PRO=LKP, PASS=s3cr3tV4lue s3cr3tV4lue, ID=x",
    "PRO=AFF, MTD=REP, ALGO=FPE, KEY=\"s3cr3tV4lue\", XYZ=1",
    "PRO=AFF, MTD=REP, KEY=s3cr3tV4lue",
    "PRO=HASH, SEED=\"s3cr3tV4lue\", DSTFLD=X",
    "PRO=HASH, SEED=s3cr3tV4lue, DSTFLD=X",
    "LIB=own, PASSWORD=\"s3cr3tV4lue\", A=1",
    "PRO=LKP, DEST=\"PASS=s3cr3tV4lue\"",
    "PRO=LKP, PASS=s3cr3tV4lue, PASS=s3cr3tV4lue",
    "PRO=XYZ, PASS=s3cr3tV4lue",
    "PASS=s3cr3tV4lue",
};

// All requests about a document, at each `step`-th character of its first line.
std::vector<Json> questions(const std::string& text, size_t step) {
  std::vector<Json> messages = {
      request(1, "initialize", {{"capabilities", all_capabilities()}, {"trace", "verbose"}}),
      notification("textDocument/didOpen",
                   {{"textDocument",
                     {{"uri", kUri}, {"languageId", "tavo"}, {"version", 1}, {"text", text}}}}),
      notification("textDocument/didChange", {{"textDocument", {{"uri", kUri}, {"version", text}}},
                                              {"contentChanges", Json::array()}})};
  int id = 1;
  const Json document = {{"uri", kUri}};
  for (size_t at = 0; at <= text.size(); at += step) {
    const Json params = {{"textDocument", document},
                         {"position", {{"line", 0}, {"character", at}}}};
    for (const char* method : {"hover", "completion", "signatureHelp", "documentHighlight"}) {
      messages.push_back(request(++id, std::string("textDocument/") + method, params));
    }
  }
  for (const char* method :
       {"documentSymbol", "foldingRange", "semanticTokens/full", "diagnostic"}) {
    messages.push_back(
        request(++id, std::string("textDocument/") + method, {{"textDocument", document}}));
  }
  const Json whole = {{"start", {{"line", 0}, {"character", 0}}},
                      {"end", {{"line", 9}, {"character", 0}}}};
  messages.push_back(request(++id, "textDocument/codeAction",
                             {{"textDocument", document},
                              {"range", whole},
                              {"context", {{"only", {"quickfix", "source.fixAll"}}}}}));
  messages.push_back(request(++id, text, {{"textDocument", text}}));
  return messages;
}

TEST(Secrets, AreInNoAnswerNotificationOrTrace) {
  for (const std::string text : kTexts) {
    for (const Json& message : talk(questions(text, 1)).sent) {
      EXPECT_EQ(std::string::npos, message.dump().find(kSecret)) << text << "\n" << message.dump(1);
    }
  }
}

// An edit is text of the document.
void without_edits(Json& value) {
  if (value.is_object()) value.erase("edit");
  if (!value.is_structured()) return;
  for (Json& each : value) without_edits(each);
}

TEST(Secrets, OfDamagedStatementsAreInNoAnswerNotificationOrTrace) {
  const char* const given = std::getenv("TAVO_SECRET_STATEMENTS");
  const size_t count = given != nullptr ? std::strtoul(given, nullptr, 10) : 150;
  DamagedStatements statements(20262);
  size_t looked_at = 0;
  for (size_t i = 0; i < count; ++i) {
    const std::string whole = statements.statement(kMarkers[i % 3]);
    const std::string text = i % 16 == 0 ? whole : statements.damaged(whole);
    const std::string marker = marker_of(text);
    if (marker.empty() || stores_marker_openly(text, marker)) continue;
    ++looked_at;
    for (Json& message : talk(questions(text, 7)).sent) {
      without_edits(message);
      ASSERT_EQ("", leak_in(message.dump(), marker)) << text << "\n" << message.dump(1);
    }
  }
  EXPECT_GT(looked_at, count / 3);
}

}  // namespace
