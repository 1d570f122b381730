#include "lsp/talk.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tavo_test {

using tavo::cli::lsp::FrameReader;
using tavo::cli::lsp::Server;

namespace {

const tavo::Library& library() {
  static const tavo::Library started;
  return started;
}

std::string frame(const Json& message) {
  return tavo::cli::lsp::framed(message.dump());
}

}  // namespace

Json request(int id, const std::string& method, Json params) {
  return {{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", std::move(params)}};
}

Json notification(const std::string& method, Json params) {
  return {{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}};
}

Json all_capabilities(const std::string& encoding) {
  return {
      {"general", {{"positionEncodings", {encoding}}}},
      {"textDocument",
       {{"completion",
         {{"completionItem", {{"snippetSupport", true}, {"documentationFormat", {"markdown"}}}}}},
        {"hover", {{"contentFormat", {"markdown"}}}},
        {"publishDiagnostics", {{"relatedInformation", true}}},
        {"documentSymbol", {{"hierarchicalDocumentSymbolSupport", true}}},
        {"codeAction", {{"codeActionLiteralSupport", {{"codeActionKind", Json::object()}}}}}}}};
}

const Json& Talk::answer(int id) const {
  static const Json none;
  for (const Json& message : sent) {
    if (message.contains("id") && message["id"] == id && !message.contains("method")) {
      return message;
    }
  }
  ADD_FAILURE() << "no answer to request " << id;
  return none;
}

std::vector<Json> Talk::notifications(const std::string& method) const {
  std::vector<Json> found;
  for (const Json& message : sent) {
    if (message.contains("method") && message["method"] == method) found.push_back(message);
  }
  return found;
}

Talk talk_raw(const std::string& bytes, size_t step, const ConfigurationOf& configuration_of) {
  EXPECT_TRUE(static_cast<bool>(library()));
  Talk result;
  FrameReader frames;
  size_t at = 0;
  const auto read = [&](char* buffer, size_t size) {
    const size_t count = std::min({size, step == 0 ? size : step, bytes.size() - at});
    bytes.copy(buffer, count, at);
    at += count;
    return count;
  };
  const auto write = [&](std::string_view out) {
    frames.feed(out);
    std::string content;
    while (frames.next(content) == FrameReader::Result::kMessage) {
      result.sent.push_back(Json::parse(content));
    }
    return true;
  };
  tavo::cli::lsp::Streams streams = {read, [] { return false; }, write};
  if (configuration_of) streams.configuration_of = configuration_of;
  result.status = Server(streams).run();
  EXPECT_EQ(0u, frames.waiting());
  return result;
}

Talk talk(const std::vector<Json>& messages, size_t step, const ConfigurationOf& configuration_of) {
  std::string bytes;
  for (const Json& message : messages) bytes += frame(message);
  return talk_raw(bytes, step, configuration_of);
}

Json ask(const std::string& text, const std::string& method, Json params,
         const Json& capabilities) {
  params["textDocument"] = {{"uri", kUri}};
  const Json item = {{"uri", kUri}, {"languageId", "tavo"}, {"version", 1}, {"text", text}};
  const Talk result =
      talk({request(1, "initialize", {{"capabilities", capabilities}}),
            notification("textDocument/didOpen", {{"textDocument", item}}),
            request(2, method, params), request(3, "shutdown"), notification("exit")});
  EXPECT_EQ(0, result.status);
  const Json& answer = result.answer(2);
  EXPECT_TRUE(answer.contains("result")) << answer.dump(2);
  return answer.value("result", Json());
}

Marked marked(const std::string& text) {
  const size_t at = text.find('|');
  EXPECT_NE(std::string::npos, at);
  const std::string before = text.substr(0, at);
  const auto line = std::count(before.begin(), before.end(), '\n');
  const size_t begin = before.rfind('\n') == std::string::npos ? 0 : before.rfind('\n') + 1;
  size_t units = 0;
  for (const char c : before.substr(begin)) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) != 0x80) units += byte >= 0xF0 ? 2 : 1;
  }
  return {before + text.substr(at + 1), {{"line", line}, {"character", units}}};
}

Json ask_at(const std::string& text, const std::string& method, Json params,
            const Json& capabilities) {
  const Marked place = marked(text);
  params["position"] = place.position;
  return ask(place.text, method, std::move(params), capabilities);
}

std::string edited(const std::string& text, const Json& edits) {
  // Uses the server's document; applies the last edit first.
  tavo::cli::lsp::Document document(text, 1);
  std::vector<Json> sorted(edits.begin(), edits.end());
  std::stable_sort(sorted.begin(), sorted.end(), [](const Json& a, const Json& b) {
    const auto place = [](const Json& edit) {
      return std::pair(edit["range"]["start"]["line"].get<int>(),
                       edit["range"]["start"]["character"].get<int>());
    };
    return place(a) > place(b);
  });
  for (const Json& edit : sorted) {
    document.replace(tavo::cli::lsp::range_member(edit, "range"),
                     edit["newText"].get<std::string>(), tavo::cli::lsp::Encoding::kUtf16);
  }
  return document.text();
}

}  // namespace tavo_test
