// A keystroke in the middle of a document: the change, the resulting diagnostics and a completion,
// through the messages that an editor sends. For comparison: reading the whole document.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include "TAVOParserCpp.hpp"
#include "lsp/server.h"

namespace {

using tavo::cli::lsp::framed;
using tavo::cli::lsp::Json;
using tavo::cli::lsp::Server;

constexpr const char* kUri = "file:///masks.tavo";

std::string document(int64_t statements) {
  std::string text;
  for (int64_t i = 0; i < statements; ++i) {
    text += fmt::format("PRO=HASH, DSTFLD=FIELD{}, ALGO=SHA256, SEED=HMAC, SRC=\"CUSTOMER\"\n", i);
  }
  return text;
}

std::string notification(const char* method, Json params) {
  return framed(Json{{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}}.dump());
}

std::string opening(const std::string& text) {
  const Json initialize = {{"jsonrpc", "2.0"},
                           {"id", 1},
                           {"method", "initialize"},
                           {"params", {{"capabilities", Json::object()}}}};
  const Json item = {{"uri", kUri}, {"languageId", "tavo"}, {"version", 1}, {"text", text}};
  return framed(initialize.dump()) + notification("textDocument/didOpen", {{"textDocument", item}});
}

std::string change(Json content) {
  return notification("textDocument/didChange", {{"textDocument", {{"uri", kUri}, {"version", 2}}},
                                                 {"contentChanges", {std::move(content)}}});
}

Json place(int64_t line, int64_t character) {
  return {{"line", line}, {"character", character}};
}

std::string completion(int64_t line) {
  return framed(Json{{"jsonrpc", "2.0"},
                     {"id", 2},
                     {"method", "textDocument/completion"},
                     {"params", {{"textDocument", {{"uri", kUri}}}, {"position", place(line, 4)}}}}
                    .dump());
}

// Sends the server the opening messages, then two messages in turn during the measurement.
void serve(benchmark::State& state, const std::string& first, const std::string (&turns)[2]) {
  size_t at = 0, turn = 0;
  std::string pending = first;
  size_t sent = 0;
  const auto read = [&](char* buffer, size_t size) -> size_t {
    if (at == pending.size()) {
      if (!state.KeepRunning()) return 0;
      pending = turns[turn++ % 2];
      at = 0;
    }
    const size_t count = std::min(size, pending.size() - at);
    pending.copy(buffer, count, at);
    at += count;
    return count;
  };
  const auto write = [&](std::string_view bytes) {
    sent += bytes.size();
    return true;
  };
  Server({read, [&] { return at < pending.size(); }, write}).run();
  benchmark::DoNotOptimize(sent);
  state.counters["characters"] = static_cast<double>(first.size());
}

void keystroke(benchmark::State& state) {
  const int64_t line = state.range(0) / 2;
  const Json here = {{"start", place(line, 18)}, {"end", place(line, 18)}};
  const Json typed = {{"start", place(line, 18)}, {"end", place(line, 19)}};
  serve(state, opening(document(state.range(0))),
        {change({{"range", here}, {"text", "X"}}) + completion(line),
         change({{"range", typed}, {"text", ""}}) + completion(line)});
}
BENCHMARK(keystroke)->Name("editor/keystroke")->Arg(100)->Arg(10000);

// A new line moves everything after it.
void new_line(benchmark::State& state) {
  const int64_t line = state.range(0) / 2;
  const Json here = {{"start", place(line, 0)}, {"end", place(line, 0)}};
  const Json typed = {{"start", place(line, 0)}, {"end", place(line + 1, 0)}};
  serve(state, opening(document(state.range(0))),
        {change({{"range", here}, {"text", "\n"}}) + completion(line),
         change({{"range", typed}, {"text", ""}}) + completion(line)});
}
BENCHMARK(new_line)->Name("editor/newline")->Arg(100)->Arg(10000);

void whole_document(benchmark::State& state) {
  const std::string text = document(state.range(0));
  serve(state, opening(text), {change({{"text", text}}), change({{"text", text + "\n"}})});
}
BENCHMARK(whole_document)->Name("editor/whole")->Arg(10000);

}  // namespace

int main(int argc, char** argv) {
  const tavo::Library library;
  if (!library) return 2;
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
