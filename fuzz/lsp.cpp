// The message stream of the language server. The first byte selects the form of the rest: raw input
// bytes; lines, each the content of a message, after an initialize request or without one; or the
// text of a document and, after a separator, requests and edits. The server must end by itself,
// every frame that it sends must be complete, and every message must be JSON. Requests of the last
// form are well formed, so each must get a result.
#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "check.h"
#include "lsp/server.h"
#include "service_run.h"
#include "targets.h"

namespace tavo_fuzz {
namespace {

using tavo::cli::lsp::framed;
using tavo::cli::lsp::FrameReader;
using tavo::cli::lsp::Json;

constexpr size_t kLongest = 1 << 13;
constexpr char kSeparator = '\x1E';

const char* const kInitialize =
    R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{"capabilities":{"textDocument":{)"
    R"("completion":{"completionItem":{"snippetSupport":true}},"codeAction":{)"
    R"("codeActionLiteralSupport":{}},"documentSymbol":{"hierarchicalDocumentSymbolSupport":true}}}}})";

std::string as_frames(std::string_view lines, bool initialized) {
  std::string bytes = initialized ? framed(kInitialize) : "";
  while (!lines.empty()) {
    const size_t end = std::min(lines.find('\n'), lines.size());
    bytes += framed(lines.substr(0, end));
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
  return bytes;
}

// ---- a document, requests and edits -------------------------------------------------------------

constexpr std::array kMethods = {
    "completion",           "hover",        "signatureHelp",   "documentHighlight",
    "onTypeFormatting",     "formatting",   "rangeFormatting", "codeAction",
    "documentSymbol",       "foldingRange", "selectionRange",  "semanticTokens/full",
    "semanticTokens/range", "diagnostic"};

// Replaces invalid UTF-8.
std::string message(Json content) {
  content["jsonrpc"] = "2.0";
  return framed(content.dump(-1, ' ', false, Json::error_handler_t::replace));
}

// A byte of a step; 0 past its end.
uint32_t byte_at(std::string_view step, size_t index) {
  return index < step.size() ? static_cast<unsigned char>(step[index]) : 0;
}

// A method or a change, a range of two lines and two characters, and for a change its text.
std::string do_step(std::string_view step, int id) {
  const Json document = {{"uri", "file:///m"}, {"version", id}};
  const auto place = [&](size_t from) {
    return Json{{"line", byte_at(step, from)}, {"character", byte_at(step, from + 1)}};
  };
  Json start = place(1), end = place(3);
  const auto order = [](const Json& at) {
    return std::pair(at["line"].get<int>(), at["character"].get<int>());
  };
  if (order(end) < order(start)) std::swap(start, end);
  const Json range = {{"start", start}, {"end", end}};
  const size_t method = byte_at(step, 0) % (kMethods.size() + 2);
  if (method >= kMethods.size()) {
    const Json change = {{"range", range}, {"text", step.size() > 5 ? step.substr(5) : ""}};
    return message({{"method", "textDocument/didChange"},
                    {"params", {{"textDocument", document}, {"contentChanges", {change}}}}});
  }
  return message({{"id", id},
                  {"method", std::string("textDocument/") + kMethods[method]},
                  {"params",
                   {{"textDocument", document},
                    {"position", start},
                    {"positions", {start, end}},
                    {"range", range},
                    {"ch", "\n"},
                    {"options", Json::object()},
                    {"context", {{"diagnostics", Json::array()}}}}}});
}

std::string as_conversation(std::string_view script, size_t encoding) {
  constexpr std::array kEncodings = {"utf-8", "utf-16", "utf-32", "utf-16"};
  Json initialize = Json::parse(kInitialize);
  initialize["params"]["capabilities"]["general"]["positionEncodings"] = {kEncodings[encoding]};
  std::string bytes = message(std::move(initialize));
  for (int id = 1; !script.empty() || id == 1; ++id) {
    const size_t end = std::min(script.find(kSeparator), script.size());
    const std::string_view step = script.substr(0, end);
    script.remove_prefix(std::min(end + 1, script.size()));
    if (id > 1) {
      bytes += do_step(step, id);
      continue;
    }
    const Json item = {
        {"uri", "file:///m"}, {"languageId", "tavo"}, {"version", 1}, {"text", step}};
    bytes += message({{"method", "textDocument/didOpen"}, {"params", {{"textDocument", item}}}});
  }
  return bytes;
}

// Edits come in order and do not overlap.
void check_edits(const Json& result) {
  const auto order = [](const Json& place) {
    return std::pair(place["line"].get<int64_t>(), place["character"].get<int64_t>());
  };
  auto last = std::pair(int64_t{0}, int64_t{0});
  for (const Json& edit : result) {
    if (!edit.contains("newText")) return;
    TAVO_REQUIRE(last <= order(edit["range"]["start"]));
    TAVO_REQUIRE(order(edit["range"]["start"]) <= order(edit["range"]["end"]));
    last = order(edit["range"]["end"]);
  }
}

// wants_results: no request may be refused.
void serve(const std::string& bytes, size_t step, bool wants_results) {
  size_t at = 0;
  FrameReader sent;
  const auto read = [&](char* buffer, size_t size) {
    const size_t count = std::min({size, step, bytes.size() - at});
    bytes.copy(buffer, count, at);
    at += count;
    return count;
  };
  const auto readable = [&] { return at < bytes.size(); };
  const auto write = [&](std::string_view frame) {
    sent.feed(frame);
    std::string content;
    TAVO_REQUIRE(sent.next(content) == FrameReader::Result::kMessage);
    const Json message = Json::parse(content, nullptr, false);
    TAVO_REQUIRE(!message.is_discarded());
    TAVO_REQUIRE(!wants_results || message.contains("result") || message.contains("method"));
    if (message.contains("result") && message["result"].is_array()) check_edits(message["result"]);
    TAVO_REQUIRE(sent.waiting() == 0);
    return true;
  };
  const int status = tavo::cli::lsp::Server({read, readable, write}).run();
  TAVO_REQUIRE(status == 0 || status == 1);
}

}  // namespace

void run_lsp(const uint8_t* data, size_t size) {
  if (size < 2 || size > kLongest) return;
  const std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  const size_t step = size_t{1} << (data[0] & 0xFu);
  if ((data[0] & 0x10u) != 0) {
    serve(std::string(rest), step, false);
  } else if ((data[0] & 0x40u) != 0) {
    serve(as_conversation(rest, data[0] & 0x3u), size_t{1} << 12, true);
  } else {
    serve(as_frames(rest, (data[0] & 0x20u) != 0), step, false);
  }
  switch_tracing_off();
}

}  // namespace tavo_fuzz
