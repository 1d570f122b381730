// A client inside the test: messages in, messages out, no process.
#pragma once

#include <string>
#include <vector>

#include "lsp/server.h"

namespace tavo_test {

using tavo::cli::lsp::Json;

inline const std::string kUri = "file:///masks.tavo";

Json request(int id, const std::string& method, Json params = Json::object());
Json notification(const std::string& method, Json params = Json::object());
// All client capabilities that the server checks.
Json all_capabilities(const std::string& encoding = "utf-16");

// Runs a server over the messages, in one read or in reads of `step` bytes.
struct Talk {
  std::vector<Json> sent;
  int status = -1;

  const Json& answer(int id) const;
  // The notifications of a method, in order.
  std::vector<Json> notifications(const std::string& method) const;
};
using ConfigurationOf = decltype(tavo::cli::lsp::Streams::configuration_of);
Talk talk(const std::vector<Json>& messages, size_t step = 0,
          const ConfigurationOf& configuration_of = {});
Talk talk_raw(const std::string& bytes, size_t step = 0,
              const ConfigurationOf& configuration_of = {});

// Sends one request about one document, with textDocument filled in. Returns the result; an error
// fails the test.
Json ask(const std::string& text, const std::string& method, Json params = Json::object(),
         const Json& capabilities = all_capabilities());

// The text without its "|", and the position of the "|" in UTF-16 code units.
struct Marked {
  std::string text;
  Json position;
};
Marked marked(const std::string& text);
// The same request, at the "|" of the text.
Json ask_at(const std::string& text, const std::string& method, Json params = Json::object(),
            const Json& capabilities = all_capabilities());

// A text after edits whose ranges count UTF-16 code units.
std::string edited(const std::string& text, const Json& edits);

}  // namespace tavo_test
