// The message stream of the language server. The first byte chooses what the rest is: bytes as they
// would arrive, or lines, each the content of a message, after an initialize request and an open
// document. The server ends by itself, every frame that it sends is whole, and every message is
// JSON.
#include <algorithm>
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

void serve(const std::string& bytes, size_t step) {
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
    TAVO_REQUIRE(!Json::parse(content, nullptr, false).is_discarded());
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
    serve(std::string(rest), step);
  } else {
    serve(as_frames(rest, (data[0] & 0x20u) != 0), step);
  }
  switch_tracing_off();
}

}  // namespace tavo_fuzz
