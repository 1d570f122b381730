// What is secret in a document stays there: no answer, notification, trace or symbol holds it.
// Edits are the exception: they are the document itself.
#include <gtest/gtest.h>

#include "lsp/talk.h"

namespace {

using namespace tavo_test;

const char* const kSecret = "s3cr3tV4lue";

// A secret in each place, in statements that are right, wrong, and cut off.
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

// Everything that can be asked about a document, at each `step`-th character of its first line.
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

}  // namespace
