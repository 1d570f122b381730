// Writes a result as JSON.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "TAVOParserSimple.h"
#include "reading/result.h"

namespace tavo {
namespace {

// Writes what fits and counts the rest.
class JsonWriter {
 public:
  JsonWriter(char* buffer, size_t bytes) : buffer_(buffer), room_(buffer == nullptr ? 0 : bytes) {}

  void put(std::string_view text) {
    if (needed_ < room_) {
      std::memcpy(buffer_ + needed_, text.data(), std::min(text.size(), room_ - needed_));
    }
    needed_ += text.size();
  }
  void put_number(uint32_t number) {
    char digits[10];
    char* first = digits + sizeof digits;
    do {
      *--first = static_cast<char>('0' + number % 10);
      number /= 10;
    } while (number != 0);
    put({first, static_cast<size_t>(digits + sizeof digits - first)});
  }
  // Writes UTF-8 text as a quoted string.
  void put_string(std::string_view text) {
    put("\"");
    for (const char c : text) put_character(c);
    put("\"");
  }
  void field(std::string_view name, uint32_t number) {
    name_field(name);
    put_number(number);
  }
  void field(std::string_view name, std::string_view text) {
    name_field(name);
    put_string(text);
  }
  // Writes a member's name, with a comma before all but the first.
  void name_field(std::string_view name) {
    separate();
    put("\"");
    put(name);
    put("\":");
  }
  void open(std::string_view bracket) {
    put(bracket);
    is_first_ = true;
  }
  void close(std::string_view bracket) {
    put(bracket);
    is_first_ = false;
  }
  void separate() {
    if (!is_first_) put(",");
    is_first_ = false;
  }
  // Terminates the text and returns the bytes that all of it would need.
  size_t finish() {
    if (room_ != 0) buffer_[std::min(needed_, room_ - 1)] = 0;
    return needed_ + 1;
  }

 private:
  void put_character(char c) {
    switch (c) {
      case '"': return put("\\\"");
      case '\\': return put("\\\\");
      case '\n': return put("\\n");
      case '\r': return put("\\r");
      case '\t': return put("\\t");
      default: break;
    }
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte != 0x7F) return put({&c, 1});
    constexpr std::string_view kDigits = "0123456789abcdef";
    const char escape[] = {'\\', 'u', '0', '0', kDigits[byte >> 4], kDigits[byte & 15]};
    put({escape, sizeof escape});
  }

  char* buffer_;
  size_t room_;
  size_t needed_ = 0;
  bool is_first_ = true;
};

std::string_view key_name(uint32_t type) {
  return type < TAVO_TOKEN_NAME_COUNT ? TAVOParserTokenNames[type] : "";
}

std::string_view value_name(uint32_t key_type, uint32_t value_type) {
  if (key_type == TAVO_PARSER_PARAM_FLDDEF_DATATYPE) return "data type code";
  return value_type == 0 ? "" : key_name(value_type);
}

void write_range(JsonWriter& json, std::string_view name, const TAVORange& range) {
  json.name_field(name);
  json.open("{");
  json.field("offset", range.offset);
  json.field("length", range.length);
  json.close("}");
}

void write_pair(JsonWriter& json, const TAVOReadResult& result, uint32_t pair) {
  const uint32_t key_type = TAVOResult_GetKeyType(&result, pair);
  const uint32_t value_type = TAVOResult_GetValueType(&result, pair);
  TAVORange range{};
  json.separate();
  json.open("{");
  json.field("key", {TAVOResult_GetKey(&result, pair), TAVOResult_GetKeyBytes(&result, pair)});
  json.field("keyType", key_type);
  json.field("keyName", key_name(key_type));
  json.field("value",
             {TAVOResult_GetValue(&result, pair), TAVOResult_GetValueBytes(&result, pair)});
  json.field("valueType", value_type);
  json.field("valueName", value_name(key_type, value_type));
  TAVOResult_GetKeyRange(&result, pair, &range);
  write_range(json, "keyRange", range);
  TAVOResult_GetValueRange(&result, pair, &range);
  write_range(json, "valueRange", range);
  json.close("}");
}

// Returns false if there is no memory for the message.
bool write_error(JsonWriter& json, const TAVOReadResult& result, uint32_t error) {
  const size_t bytes = TAVOResult_GetErrorMessage(&result, error, nullptr, 0);
  auto* message = static_cast<char*>(std::malloc(bytes));
  if (bytes == 0 || message == nullptr ||
      TAVOResult_GetErrorMessage(&result, error, message, bytes) == 0) {
    std::free(message);
    return false;
  }
  json.separate();
  json.open("{");
  json.field("number", TAVOResult_GetErrorNumber(&result, error));
  json.field("message", message);
  std::free(message);
  const uint32_t position = TAVOResult_GetErrorPosition(&result, error);
  if (position != 0) json.field("position", position);
  TAVOPlace place{};
  if (TAVOResult_GetErrorPlace(&result, error, &place) == 0) {
    json.name_field("place");
    json.open("{");
    json.field("offset", place.offset);
    json.field("length", place.length);
    json.field("line", place.line);
    json.field("column", place.column);
    json.close("}");
  }
  json.close("}");
  return true;
}

bool write_result(JsonWriter& json, const TAVOReadResult& result) {
  json.open("{");
  json.field("status", result.status);
  json.name_field("pairs");
  json.open("[");
  for (uint32_t i = 0; i < result.pair_count; ++i) write_pair(json, result, i);
  json.close("]");
  json.name_field("traceLevels");
  json.open("[");
  for (uint32_t i = 0; i < result.trace_levels; ++i) {
    json.separate();
    json.put_string(TAVOResult_GetTraceLevel(&result, i));
  }
  json.close("]");
  json.name_field("errors");
  json.open("[");
  for (uint32_t i = 0; i < count_errors(result); ++i) {
    if (!write_error(json, result, i)) return false;
  }
  json.close("]");
  json.close("}");
  return true;
}

}  // namespace
}  // namespace tavo

extern "C" {

size_t TAVOResult_ToJson(const TAVOReadResult* result, char* buffer, size_t bytes) noexcept {
  if (result == nullptr) return 0;
  tavo::JsonWriter json(buffer, bytes);
  const bool whole = tavo::write_result(json, *result);
  const size_t needed = json.finish();
  return whole ? needed : 0;
}

size_t TAVOParser_ReadJson(const void* text, size_t textBytes, const TAVOReadOptions* options,
                           char* buffer, size_t bytes) noexcept {
  TAVOReadResult* result = nullptr;
  TAVOParser_Read(text, textBytes, options, &result);
  const size_t needed = TAVOResult_ToJson(result, buffer, bytes);
  TAVOParser_FreeResult(result);
  return needed;
}

}  // extern "C"
