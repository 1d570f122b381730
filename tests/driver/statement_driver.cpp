// Parses statements from standard input for the second opinion: one JSON string per line in, one
// JSON object per line out. See ../second_opinion/README.md for the format.
#include <cstring>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

#include "TAVOLanguage.h"
#include "TAVOParserSimple.h"
#include "support/parse_run.h"

namespace {

using nlohmann::json;
using namespace tavo_test;

json describe(const Error& error) {
  json result = {{"id", error.id}};
  for (const Insert& insert : error.inserts) {
    const std::string text = to_utf8(insert.text);
    switch (insert.id) {
      case TAVO_TOKID_CHAR_POS: result["pos"] = std::stol(text); break;
      case TAVO_TOKID_SUBSTR: result["excerpt"] = text; break;
      case TAVO_TOKID_PARMKEY: result["key"] = text; break;
      default: result["insert"] = text; break;
    }
  }
  return result;
}

// What one call says.
json read(const std::wstring& text) {
  TAVOReadOptions options = {};
  options.size = sizeof options;
  options.encoding = TAVO_TEXT_WIDE;
  TAVOReadResult* result = nullptr;
  const uint32_t status =
      TAVOParser_Read(text.data(), text.size() * sizeof(wchar_t), &options, &result);
  json pairs = json::array();
  for (uint32_t i = 0; i < TAVOResult_CountPairs(result); ++i) {
    pairs.push_back({TAVOResult_GetKeyType(result, i), TAVOResult_GetKey(result, i),
                     TAVOResult_GetValueType(result, i), TAVOResult_GetValue(result, i)});
  }
  json errors = json::array();
  for (uint32_t i = 0; i < TAVOResult_CountErrors(result); ++i) {
    Error error;
    error.id = TAVOResult_GetErrorNumber(result, i);
    uint32_t id = 0;
    while (const wchar_t* insert = TAVOResult_GetErrorInsert(
               result, i, static_cast<uint32_t>(error.inserts.size()), &id)) {
      error.inserts.push_back({id, insert});
    }
    errors.push_back(describe(error));
  }
  TAVOParser_FreeResult(result);
  return {{"status", status}, {"pairs", pairs}, {"errors", errors}};
}

json answer(const std::wstring& text) {
  const ServiceRun sizing = size_statement(text);
  const ServiceRun run = fill_statement(text);
  json pairs = json::array();
  for (const Pair& pair : run.pairs) {
    pairs.push_back({pair.key_id, to_utf8(pair.key), pair.value_id, to_utf8(pair.value)});
  }
  json errors = json::array();
  for (const Error& error : run.errors) errors.push_back(describe(error));
  return {{"sizing", {{"status", sizing.status}, {"count", sizing.count}}},
          {"status", run.status},
          {"flag", run.flag != 0 ? 1 : 0},
          {"pairs", pairs},
          {"errors", errors},
          {"read", read(text)}};
}

struct TokenList {
  json tokens = json::array();
  json broken = nullptr;
};

uint32_t add_token(const TAVOTextToken* token, void* context) {
  auto& list = *static_cast<TokenList*>(context);
  if (token->type != 0) {
    list.tokens.push_back({token->type, token->offset, token->length, token->hidden});
  } else if (list.broken.is_null()) {
    list.broken = token->offending;
  }
  return 0;
}

json answer_tokens(const std::wstring& text) {
  TokenList list;
  TAVOLanguage_ReadTokens(text.data(), static_cast<uint32_t>(text.size()), add_token, &list);
  return {{"tokens", list.tokens}, {"broken", json::array({list.broken})}};
}

}  // namespace

int main(int argc, char** argv) {
  const bool tokens = argc > 1 && std::strcmp(argv[1], "--tokens") == 0;
  if (Parser_Init() != 0) return 2;
  std::ios::sync_with_stdio(false);
  for (std::string line; std::getline(std::cin, line);) {
    const std::wstring text = to_wide(json::parse(line).get<std::string>());
    std::cout << (tokens ? answer_tokens(text) : answer(text)).dump() << '\n';
  }
  return Parser_Term() == 0 ? 0 : 2;
}
