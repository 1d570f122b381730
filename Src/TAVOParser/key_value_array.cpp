// The two-run protocol: pairs are measured when the request has no array, and stored otherwise.
#include "key_value_array.h"

#include <algorithm>
#include <cwchar>

#include "parse_session.h"
#include "token_text.h"
#include "trace.h"
#include "util/unicode.h"

namespace tavo {
namespace {

constexpr uint32_t kWide = sizeof(wchar_t);

bool is_sizing_run(const RequestRecord* request) {
  return request->pKeyValueArr == nullptr && request->capacity == 0;
}

// The value identifiers whose texts lose their quotes.
bool is_quoted(uint32_t value_id) {
  return value_id == TAVO_PARSER_STRING_WITH_QUOTES || value_id == TAVO_PARSER_SEED_LITERAL ||
         value_id == TAVO_PARSER_KEY_LITERAL;
}

// The keys that may repeat; of all others the first pair wins, silently.
bool is_repeatable(uint32_t key_id) {
  switch (key_id) {
    case TAVO_PARSER_AFF_PARM_CLASS:
    case TAVO_PARSER_PARAM_FLDDEF_CODEPAGE:
    case TAVO_PARSER_PARAM_FLDDEF_DATATYPE:
    case TAVO_PARSER_PARAM_FLDDEF_DBMSTYPE:
    case TAVO_PARSER_PARAM_FLDDEF_LENGTH:
    case TAVO_PARSER_PARAM_FLDDEF_NAME:
    case TAVO_PARSER_PARAM_FLDDEF_PRECISION:
    case TAVO_PARSER_PARAM_FLDDEF_SCALE:
    case TAVO_PARSER_USER_PROVIDER_KEY: return true;
    default: return false;
  }
}

uint32_t bytes_needed(uint64_t characters) {
  return static_cast<uint32_t>((characters + 1) * kWide);
}

void raise_to(int32_t& largest, uint32_t need) {
  if (static_cast<int64_t>(need) > largest) largest = static_cast<int32_t>(need);
}

// Adds without the signed overflow that a caller's wild count could cause.
void count_one_more(RequestRecord* request) {
  request->count = static_cast<int32_t>(static_cast<uint32_t>(request->count) + 1);
}

// A caller's buffer for wide text. A buffer too small for one character, or none at all, holds
// nothing and is never written.
class TextBuffer {
 public:
  TextBuffer(wchar_t* text, uint32_t bytes)
      : text_(text), characters_(text == nullptr ? 0 : bytes / kWide) {}

  bool truncated() const {
    return truncated_;
  }
  bool writable() const {
    return characters_ != 0;
  }

  void append(const wchar_t* text, size_t count) {
    const size_t fitting = take(count);
    if (fitting != 0) std::wmemcpy(text_ + used_, text, fitting);
    finish(fitting);
  }
  // The result of the conversion is not checked, as meant: the pair is stored all the same.
  void append(const TokenText& text) {
    const auto fitting = static_cast<uint32_t>(take(text.count));
    uint32_t produced = 0;
    if (fitting != 0) {
      utf16_to_utf32(text.units, fitting * sizeof(uint16_t), text_ + used_, fitting * kWide,
                     &produced);
    }
    finish(std::min(produced, fitting));
  }
  // Writes a terminator at the buffer's last character, whatever the text.
  void terminate_at_capacity() {
    if (characters_ != 0) text_[characters_ - 1] = 0;
  }

 private:
  // How much of `count` characters fits before the terminator.
  size_t take(size_t count) {
    const size_t room = characters_ == 0 ? 0 : characters_ - 1 - used_;
    if (count > room || characters_ == 0) truncated_ = true;
    return std::min(count, room);
  }
  void finish(size_t written) {
    used_ += written;
    if (characters_ != 0) text_[used_] = 0;
  }

  wchar_t* text_;
  size_t characters_;  // of the whole buffer, terminator included
  size_t used_ = 0;
  bool truncated_ = false;
};

// Returns true when the key was cut.
bool store_key(KeyValueEntry* entry, const wchar_t* prefix, const TokenText& text) {
  TextBuffer buffer(entry->key, entry->keySize);
  if (prefix != nullptr) buffer.append(prefix, std::wcslen(prefix));
  if (!buffer.truncated()) buffer.append(text);
  return buffer.truncated();
}

// Returns true when the value was cut.
bool store_value(KeyValueEntry* entry, TokenText text, uint32_t value_id) {
  const bool quoted = is_quoted(value_id);
  if (quoted) {
    text.units += text.count != 0 ? 1 : 0;
    text.count = text.count < 2 ? 0 : text.count - 2;
  }
  entry->valueLength = bytes_needed(text.count);
  TextBuffer buffer(entry->value, entry->valueSize);
  buffer.append(text);
  buffer.terminate_at_capacity();
  if (quoted && buffer.writable()) unescape_quotes(entry->value, &entry->valueLength);
  return buffer.truncated();
}

uint32_t measure(RequestRecord* request, const TokenText& key, const TokenText& value,
                 const wchar_t* prefix) {
  const size_t prefix_length = prefix == nullptr ? 0 : std::wcslen(prefix);
  raise_to(request->maxKeySize, bytes_needed(uint64_t{prefix_length} + key.count));
  raise_to(request->maxValueSize, bytes_needed(value.count));
  count_one_more(request);
  return 0;
}

bool is_stored(const RequestRecord* request, uint32_t key_id) {
  constexpr int32_t kSearchedFaster = 16;
  if (request->count > kSearchedFaster && key_id < StoredKeys::kKeys) {
    StoredKeys& stored = parse_session().stored_keys;
    if (stored.follows(request)) return stored.contains(key_id);
  }
  return find_key(request, key_id) != TAVO_NO_KEY_INDEX;
}

uint32_t store(RequestRecord* request, pANTLR3_COMMON_TOKEN key, uint32_t key_id,
               pANTLR3_COMMON_TOKEN value, uint32_t value_id, const wchar_t* prefix) {
  KeyValueEntry* entry = request->pKeyValueArr + request->count;
  if (entry->keyId == key_id && entry->status == 0) {  // filled in by the caller beforehand
    count_one_more(request);
    return 0;
  }
  if (!is_repeatable(key_id) && is_stored(request, key_id)) return 0;

  const bool key_cut = store_key(entry, prefix, token_text(key));
  entry->keyId = key_id;
  const bool value_cut = store_value(entry, token_text(value), value_id);
  entry->valueId = value_id;
  // A value that is cut under a key that is whole leaves status 0, and that is meant: 7102 is never
  // produced.
  entry->status = !key_cut    ? 0u
                  : value_cut ? uint32_t{TAVO_STATUS_KEY_AND_VALUE_TRUNCATED}
                              : uint32_t{TAVO_STATUS_KEY_TRUNCATED};
  if (entry->status != 0) TAVO_SetErrMsg(request, TAVO_STATUS_ENTRY_TRUNCATED, nullptr);
  count_one_more(request);
  return entry->status;
}

bool is_full(const RequestRecord* request) {
  return request->pKeyValueArr == nullptr ||
         static_cast<uint32_t>(request->count) >= request->capacity;
}

}  // namespace

uint32_t find_key(const RequestRecord* request, uint32_t key_id) {
  if (request->pKeyValueArr == nullptr) return TAVO_NO_KEY_INDEX;
  for (int32_t i = 0; i < request->count; ++i) {
    if (request->pKeyValueArr[i].keyId == key_id) return static_cast<uint32_t>(i);
  }
  return TAVO_NO_KEY_INDEX;
}

void unescape_quotes(wchar_t* buffer, uint32_t* length_in_bytes) {
  const uint32_t bytes = *length_in_bytes;
  const size_t limit = bytes / kWide == 0 ? 0 : bytes / kWide - 1;
  size_t written = 0;
  bool replaced = false;
  for (size_t read = 0; read < limit && buffer[read] != 0; ++read) {
    if (buffer[read] == L'\\' && read + 1 < limit && buffer[read + 1] == L'"') {
      ++read;
      replaced = true;
    }
    buffer[written++] = buffer[read];
  }
  if (!replaced) return;
  buffer[written] = 0;
  *length_in_bytes = bytes_needed(written);
}

}  // namespace tavo

extern "C" {

TAVOStoreRoutine SetKeyValuePair = SetKeyValuePairW;

uint32_t SetKeyValuePairW(RequestRecord* request, pANTLR3_COMMON_TOKEN key, uint32_t keyId,
                          pANTLR3_COMMON_TOKEN value, uint32_t valueId,
                          const wchar_t* prefix) noexcept {
  constexpr uint32_t kFailure = 0xFFFFFFFF;
  TAVO_TRACE_FUNCTION(tavo::kIdSetKeyValuePairW, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("pParamDef", request), tavo::trace_number("keyId", keyId),
                   tavo::trace_number("valueId", valueId));
  if (request == nullptr) TAVO_TRACE_RETURN(kFailure);
  if (tavo::is_sizing_run(request)) {
    TAVO_TRACE_RETURN(
        tavo::measure(request, tavo::token_text(key), tavo::token_text(value), prefix));
  }
  if (tavo::is_full(request)) {
    trace.skip_epilogue();  // meant: a full array returns without closing the frame
    return TAVO_STATUS_ARRAY_FULL;
  }
  TAVO_TRACE_RETURN(tavo::store(request, key, keyId, value, valueId, prefix));
}

uint32_t GetKeyIndex(RequestRecord* request, uint32_t keyId) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdGetKeyIndex, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("pParamDef", request), tavo::trace_number("keyId", keyId));
  if (request == nullptr) TAVO_TRACE_RETURN(TAVO_NO_KEY_INDEX);
  TAVO_TRACE_RETURN(tavo::find_key(request, keyId));
}

uint32_t ReplaceEscapedQuoteWithQuoteW(wchar_t* buffer, uint32_t* lengthInBytes) noexcept {
  constexpr uint32_t kFailure = 0xFFFFFFFF;
  TAVO_TRACE_FUNCTION(tavo::kIdReplaceEscapedQuote, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("buffer", buffer));
  if (buffer == nullptr || lengthInBytes == nullptr) TAVO_TRACE_RETURN(kFailure);
  tavo::unescape_quotes(buffer, lengthInBytes);
  TAVO_TRACE_RETURN(0);
}

}  // extern "C"
