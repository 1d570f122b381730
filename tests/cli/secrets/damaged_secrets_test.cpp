// The acceptance test of the masking: whatever the damage to a statement, no verb and no format
// shows its secrets.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>

#include "TAVOParserCpp.hpp"
#include "cli/secrets/damaged_statements.h"
#include "lsp/talk.h"
#include "statement/arguments.h"
#include "verbs/verbs.h"

namespace tavo::cli {
namespace {

namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;

const Library g_library;

size_t wanted_statements() {
  const char* count = std::getenv("TAVO_SECRET_STATEMENTS");
  return count != nullptr ? std::strtoul(count, nullptr, 10) : 500;
}

// Redirects standard output and standard error of this process to one file during its lifetime.
class Captured {
 public:
  Captured() : file_(std::tmpfile()) {
    flush();
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
      kept_.push_back(fcntl(stream, F_DUPFD_CLOEXEC, 10));
      dup2(fileno(file_), stream);
    }
  }
  ~Captured() {
    restore();
    std::fclose(file_);
  }
  Captured(const Captured&) = delete;
  Captured& operator=(const Captured&) = delete;

  std::string take() {
    restore();
    const auto size = static_cast<size_t>(lseek(fileno(file_), 0, SEEK_END));
    std::string text(size, '\0');
    EXPECT_EQ(pread(fileno(file_), text.data(), size, 0), static_cast<ssize_t>(size));
    return text;
  }

 private:
  static void flush() {
    std::cout.flush();
    std::fflush(stdout);
    std::fflush(stderr);
  }
  void restore() {
    flush();
    for (size_t i = 0; i < kept_.size(); ++i) {
      dup2(kept_[i], i == 0 ? STDOUT_FILENO : STDERR_FILENO);
      close(kept_[i]);
    }
    kept_.clear();
  }

  std::FILE* file_;
  std::vector<int> kept_;
};

// The tool's output for the arguments, on both streams.
std::string said_to(Arguments arguments) {
  Captured captured;
  CLI::App app("", "tavo");
  Output output;
  int status = 0;
  app.add_flag("--show-secrets", output.show_secrets);
  app.require_subcommand(1);
  app.fallthrough();
  static const std::map<std::string, void (*)(CLI::App&, Output&, int*)> verbs = {
      {"parse", add_parse}, {"check", add_check}, {"tokens", add_tokens}, {"fmt", add_fmt},
      {"list", add_list},   {"grep", add_grep},   {"diff", add_diff}};
  verbs.at(arguments.front())(app, output, &status);
  for (const HiddenWord& hidden : hidden_words(arguments)) output.hide(hidden.word, hidden.shown);
  std::vector<const char*> argv = {"tavo"};
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  try {
    app.parse(static_cast<int>(argv.size()), argv.data());
  } catch (const CLI::ParseError& error) {
    ADD_FAILURE() << error.what();
  }
  output.answer().flush();
  return captured.take();
}

class Folder {
 public:
  Folder() {
    std::string name = (fs::temp_directory_path() / "tavo-secrets-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~Folder() {
    fs::remove_all(path_);
  }
  std::string write(const std::string& text, const char* name = "statements.txt") const {
    const std::string file = (path_ / name).string();
    std::ofstream(file, std::ios::binary) << text;
    return file;
  }

 private:
  fs::path path_;
};

// The ways to show one statement, given directly or in `file`: all verbs and all formats. old: a
// file with another statement; among: a file with it between others that change.
std::vector<Arguments> ways_to_show(const std::string& statement, const std::string& file,
                                    const std::string& old, const std::string& among) {
  return {{"parse", "--", statement},
          {"parse", "--format", "json", "--", statement},
          {"parse", "--format", "tsv", "--", statement},
          {"tokens", "--", statement},
          {"tokens", "--format", "json", "--", statement},
          {"tokens", "--format", "tsv", "--", statement},
          {"fmt", "--diff", "--", statement},
          {"fmt", "--diff", "--spelling", "long", "--option-a-line", "--", statement},
          {"fmt", "--check", "--", statement},
          {"check", file},
          {"check", "--verbose", file},
          {"check", "--format", "json", file},
          {"check", "--format", "sarif", file},
          {"check", "--layout", "lines", file},
          {"check", "--layout", "paragraphs", file},
          {"check", "--fix=suggested", "--diff", file},
          {"check", "--fix", "--diff", "--layout", "lines", file},
          {"fmt", "--diff", "-f", file},
          {"list", file},
          {"list", "--format", "jsonl", file},
          {"list", "--format", "csv", "--columns", "options,PASS,CONN,SEED,KEY,pw,field", file},
          {"list", "--format", "tsv", file},
          {"list", "--stats", file},
          {"list", "--stats", "--format", "jsonl", file},
          {"grep", "!NOSUCHKEY", file},
          {"grep", "--format", "jsonl", "!NOSUCHKEY", file},
          {"fmt", "--diff", "-f", among},
          {"check", "--fix", "--diff", among},
          {"diff", old, file},
          {"diff", "--format", "json", file, old},
          {"diff", "--textconv", file},
          {"diff", "--", statement, "PRO=HASH, DSTFLD=X, SEED=\"other\""}};
}

// What the language server sends about the statement, except text of the document that edits
// put back into it.
std::string said_to_editor(const std::string& text) {
  using tavo_test::Json;
  const auto lines = static_cast<int>(std::count(text.begin(), text.end(), '\n'));
  const Json document = {{"uri", tavo_test::kUri}};
  const Json whole = {{"start", {{"line", 0}, {"character", 0}}},
                      {"end", {{"line", lines}, {"character", 200}}}};
  std::vector<Json> messages = {
      tavo_test::request(1, "initialize", {{"capabilities", tavo_test::all_capabilities()}}),
      tavo_test::notification("initialized"),
      tavo_test::notification(
          "textDocument/didOpen",
          {{"textDocument",
            {{"uri", tavo_test::kUri}, {"languageId", "tavo"}, {"version", 1}, {"text", text}}}})};
  int id = 1;
  const auto ask = [&](const std::string& method, Json params) {
    params["textDocument"] = document;
    messages.push_back(tavo_test::request(++id, "textDocument/" + method, std::move(params)));
  };
  ask("documentSymbol", Json::object());
  ask("semanticTokens/full", Json::object());
  ask("foldingRange", Json::object());
  ask("diagnostic", Json::object());
  ask("codeAction",
      {{"range", whole}, {"context", {{"diagnostics", Json::array()}, {"only", {"quickfix"}}}}});
  int line = 0, character = 0;
  for (size_t i = 0; i < text.size(); ++i, ++character) {
    if (i % 7 == 0) {
      const Json position = {{"line", line}, {"character", character}};
      ask("hover", {{"position", position}});
      ask("completion", {{"position", position}});
      ask("signatureHelp", {{"position", position}});
    }
    if (text[i] == '\n') ++line, character = -1;
  }
  messages.push_back(tavo_test::request(++id, "shutdown"));
  messages.push_back(tavo_test::notification("exit"));
  std::string said;
  for (const Json& message : tavo_test::talk(messages).sent) said += message.dump() + "\n";
  return said;
}

// The library's own message, formatted by the embedded platform.
std::string recorded_messages(const std::string& statement) {
  std::string said;
  for (const Error& error : tavo::parse(std::string_view(statement)).errors) {
    said += to_utf8(error.message) + "\n";
  }
  return said;
}

size_t g_shown_by_right = 0;

void expect_no_leak(const std::string& statement, const Folder& folder) {
  const std::string marker = tavo_test::marker_of(statement);
  if (marker.empty()) return;  // the damage removed it
  if (tavo_test::stores_marker_openly(statement, marker)) {
    ++g_shown_by_right;
    return;
  }
  const std::string messages = recorded_messages(statement);
  EXPECT_EQ(tavo_test::leak_in(messages, marker), "") << statement << "\n--\n" << messages;
  const std::string editor = said_to_editor(statement + "\n");
  EXPECT_EQ(tavo_test::leak_in(editor, marker), "") << statement << "\n--\n" << editor;
  if (testing::Test::HasFailure()) return;
  const std::string old = folder.write("PRO=HASH, DSTFLD=X, SEED=\"other\"\n", "old.txt");
  const std::string change = "pro=hash,, dstfld=X\n\npro=eml,mtd=ran\n\n";
  const std::string among = folder.write(change + statement + "\n\n" + change, "among.txt");
  const std::string file = folder.write(statement + "\n");
  for (const Arguments& way : ways_to_show(statement, file, old, among)) {
    const std::string said = said_to(way);
    EXPECT_EQ(tavo_test::leak_in(said, marker), "")
        << way[0] << " " << way[1] << " " << way[2 < way.size() ? 2 : 1] << "\n"
        << statement << "\n--\n"
        << said;
    if (testing::Test::HasFailure()) return;
  }
}

TEST(DamagedSecrets, AreShownByNoVerbAndNoFormat) {
  const Folder folder;
  tavo_test::DamagedStatements statements(20261);
  for (size_t i = 0; i < wanted_statements(); ++i) {
    const std::string whole = statements.statement(tavo_test::kMarkers[i % 3]);
    expect_no_leak(i % 16 == 0 ? whole : statements.damaged(whole), folder);
    if (HasFailure()) {
      std::cout << "statement " << i << "\n";
      return;
    }
  }
  EXPECT_LE(g_shown_by_right, wanted_statements() / 100);
}

// A frame is unsuitable if damage to one byte moves the marker into a place that may be shown;
// these frames are suitable.
TEST(DamagedSecrets, AreShownByNoDamageAtAnyByte) {
  const Folder folder;
  const std::string marker = tavo_test::kMarkers.front();
  size_t left = wanted_statements();
  for (const std::string frame :
       {"PRO=LKP, ID=a, PASS=\"%\", SRC=\"b\", USER=c, CONN=\"d=e,ID=%\", CACHE=NO",
        "PRO=AFF, MTD=REP, KEY=\"%\", SEED=\"x\\\"%\", LEN=4",
        "PRO=HASH,SEED=\"%\n%\",DSTFLD=X,ALGO=SHA256", "LIB=mine, pw=%, a=b, pin=\"%\""}) {
    std::string statement;
    for (const char c : frame) {
      if (c == '%') {
        statement += marker;
      } else {
        statement += c;
      }
    }
    for (const std::string& damaged : tavo_test::damaged_at_every_byte(statement)) {
      if (left-- == 0) return;
      expect_no_leak(damaged, folder);
      if (HasFailure()) return;
    }
  }
}

// Otherwise the tests above would pass for a tool that shows nothing.
TEST(DamagedSecrets, AreShownToWhoAsks) {
  EXPECT_NE(said_to({"parse", "--show-secrets", "PRO=AFF, MTD=REP, KEY=\"hunTer2xQz\""})
                .find("hunTer2xQz"),
            std::string::npos);
  EXPECT_NE(said_to({"parse", "--show-secrets", "PRO=AFF, KEY=hunTer2xQz"}).find("hunTer2xQz"),
            std::string::npos);
}

}  // namespace
}  // namespace tavo::cli
