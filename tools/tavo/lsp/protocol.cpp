#include "lsp/protocol.h"

#include <fmt/format.h>

#include <limits>

namespace tavo::cli::lsp {
namespace {

[[noreturn]] void invalid(const char* name, const char* what) {
  throw ProtocolError(ErrorCode::kInvalidParams, fmt::format("\"{}\" is {}", name, what));
}

const Json& member(const Json& object, const char* name) {
  if (!object.is_object()) {
    throw ProtocolError(ErrorCode::kInvalidParams, "the parameters are not an object");
  }
  const auto found = object.find(name);
  if (found == object.end()) invalid(name, "missing");
  return *found;
}

uint32_t coordinate(const Json& position, const char* name) {
  const int64_t value = integer_member(position, name);
  if (value < 0 || value > std::numeric_limits<int32_t>::max()) invalid(name, "out of range");
  return static_cast<uint32_t>(value);
}

Position read_position(const Json& position) {
  return {coordinate(position, "line"), coordinate(position, "character")};
}

}  // namespace

Json response(const Json& id, Json result) {
  return {{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}};
}

Json error_response(const Json& id, ErrorCode code, const std::string& message) {
  return {{"jsonrpc", "2.0"},
          {"id", id},
          {"error", {{"code", static_cast<int>(code)}, {"message", message}}}};
}

Json notification(const std::string& method, Json params) {
  return {{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}};
}

const Json& object_member(const Json& object, const char* name) {
  const Json& found = member(object, name);
  if (!found.is_object()) invalid(name, "not an object");
  return found;
}

const Json& array_member(const Json& object, const char* name) {
  const Json& found = member(object, name);
  if (!found.is_array()) invalid(name, "not an array");
  return found;
}

const std::string& string_member(const Json& object, const char* name) {
  const Json& found = member(object, name);
  if (!found.is_string()) invalid(name, "not a string");
  return found.get_ref<const std::string&>();
}

int64_t integer_member(const Json& object, const char* name) {
  const Json& found = member(object, name);
  if (!found.is_number_integer()) invalid(name, "not an integer");
  if (found.is_number_unsigned() &&
      found.get<uint64_t>() > static_cast<uint64_t>(std::numeric_limits<int64_t>::max())) {
    invalid(name, "out of range");
  }
  return found.get<int64_t>();
}

Position position_member(const Json& object, const char* name) {
  return read_position(object_member(object, name));
}

PositionRange range_member(const Json& object, const char* name) {
  const Json& range = object_member(object, name);
  const PositionRange read = {position_member(range, "start"), position_member(range, "end")};
  if (read.end < read.start) invalid(name, "a range that ends before it starts");
  return read;
}

const Json* find_member(const Json& object, std::initializer_list<const char*> path) {
  const Json* found = &object;
  for (const char* name : path) {
    if (!found->is_object()) return nullptr;
    const auto next = found->find(name);
    if (next == found->end()) return nullptr;
    found = &*next;
  }
  return found;
}

bool flag_member(const Json& object, std::initializer_list<const char*> path) {
  const Json* found = find_member(object, path);
  return found != nullptr && found->is_boolean() && found->get<bool>();
}

Json to_json(const Position& position) {
  return {{"line", position.line}, {"character", position.character}};
}

Json to_json(const PositionRange& range) {
  return {{"start", to_json(range.start)}, {"end", to_json(range.end)}};
}

Json text_edit(const PositionRange& range, std::string text) {
  return {{"range", to_json(range)}, {"newText", std::move(text)}};
}

}  // namespace tavo::cli::lsp
