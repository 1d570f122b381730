#include "lsp/capabilities.h"

#include <algorithm>
#include <string_view>

#include "lsp/features.h"

namespace tavo::cli::lsp {
namespace {

bool lists(const Json& object, std::initializer_list<const char*> path, std::string_view wanted) {
  const Json* found = find_member(object, path);
  if (found == nullptr || !found->is_array()) return false;
  return std::any_of(found->begin(), found->end(), [&](const Json& entry) {
    return entry.is_string() && entry.get_ref<const std::string&>() == wanted;
  });
}

// The first in the client's order of preference that the server knows.
Encoding chosen_encoding(const Json& params) {
  const Json* offered = find_member(params, {"capabilities", "general", "positionEncodings"});
  if (offered == nullptr || !offered->is_array()) return Encoding::kUtf16;
  for (const Json& name : *offered) {
    for (const Encoding known : {Encoding::kUtf8, Encoding::kUtf16, Encoding::kUtf32}) {
      if (name == encoding_name(known)) return known;
    }
  }
  return Encoding::kUtf16;
}

}  // namespace

Client read_client(const Json& params) {
  Client client;
  client.encoding = chosen_encoding(params);
  const auto has = [&](std::initializer_list<const char*> path) {
    return find_member(params, path) != nullptr;
  };
  const Json* process = find_member(params, {"processId"});
  const bool has_process = process != nullptr && process->is_number_integer();
  client.process = has_process ? process->get<int64_t>() : 0;
  client.snippets = flag_member(
      params, {"capabilities", "textDocument", "completion", "completionItem", "snippetSupport"});
  client.markdown_completion =
      lists(params,
            {"capabilities", "textDocument", "completion", "completionItem", "documentationFormat"},
            "markdown");
  client.markdown_hover =
      lists(params, {"capabilities", "textDocument", "hover", "contentFormat"}, "markdown");
  client.pulls_diagnostics = has({"capabilities", "textDocument", "diagnostic"});
  client.related_information = flag_member(params, {"capabilities", "textDocument",
                                                    "publishDiagnostics", "relatedInformation"}) ||
                               client.pulls_diagnostics;
  client.nested_symbols = flag_member(params, {"capabilities", "textDocument", "documentSymbol",
                                               "hierarchicalDocumentSymbolSupport"});
  client.literal_actions =
      has({"capabilities", "textDocument", "codeAction", "codeActionLiteralSupport"});
  client.label_offsets =
      flag_member(params, {"capabilities", "textDocument", "signatureHelp", "signatureInformation",
                           "parameterInformation", "labelOffsetSupport"});
  return client;
}

Json capabilities(const Client& client) {
  Json offered = {
      {"positionEncoding", encoding_name(client.encoding)},
      {"textDocumentSync", {{"openClose", true}, {"change", 2}}},
      {"completionProvider",
       {{"triggerCharacters", {"=", ",", "(", " "}}, {"resolveProvider", false}}},
      {"hoverProvider", true},
      {"signatureHelpProvider",
       {{"triggerCharacters", {"(", ",", "="}}, {"retriggerCharacters", {","}}}},
      {"codeActionProvider",
       {{"codeActionKinds", {"quickfix", "source.fixAll.tavo", "refactor.rewrite"}}}},
      {"documentFormattingProvider", true},
      {"documentRangeFormattingProvider", true},
      {"documentOnTypeFormattingProvider", {{"firstTriggerCharacter", "\n"}}},
      {"documentSymbolProvider", true},
      {"foldingRangeProvider", true},
      {"selectionRangeProvider", true},
      {"documentHighlightProvider", true},
      {"semanticTokensProvider",
       {{"legend", {{"tokenTypes", semantic_token_types()}, {"tokenModifiers", Json::array()}}},
        {"full", true},
        {"range", true}}},
  };
  // A client that pulls would show each diagnostic twice if they were pushed, too.
  if (client.pulls_diagnostics) {
    offered["diagnosticProvider"] = {
        {"identifier", "tavo"}, {"interFileDependencies", false}, {"workspaceDiagnostics", false}};
  }
  return offered;
}

}  // namespace tavo::cli::lsp
