// JSON-RPC and the protocol's own error codes, and reading parameters: what is missing or of a
// wrong type is an error of the request, never of the server.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "lsp/position.h"

namespace tavo::cli::lsp {

using Json = nlohmann::json;

enum class ErrorCode : int {
  kParseError = -32700,
  kInvalidRequest = -32600,
  kMethodNotFound = -32601,
  kInvalidParams = -32602,
  kInternalError = -32603,
  kServerNotInitialized = -32002,
  kRequestCancelled = -32800,
};

class ProtocolError : public std::runtime_error {
 public:
  ProtocolError(ErrorCode code, const std::string& message)
      : std::runtime_error(message), code_(code) {}
  ErrorCode code() const {
    return code_;
  }

 private:
  ErrorCode code_;
};

Json response(const Json& id, Json result);
Json error_response(const Json& id, ErrorCode code, const std::string& message);
Json notification(const std::string& method, Json params);

// Members of parameters. Each throws kInvalidParams when the member is missing or of another type.
const Json& object_member(const Json& object, const char* name);
const Json& array_member(const Json& object, const char* name);
const std::string& string_member(const Json& object, const char* name);
int64_t integer_member(const Json& object, const char* name);
Position position_member(const Json& object, const char* name);
PositionRange range_member(const Json& object, const char* name);

// A member at the end of a path of members, or null when one of them is missing.
const Json* find_member(const Json& object, std::initializer_list<const char*> path);
bool flag_member(const Json& object, std::initializer_list<const char*> path);

Json to_json(const Position& position);
Json to_json(const PositionRange& range);
Json text_edit(const PositionRange& range, std::string text);

}  // namespace tavo::cli::lsp
