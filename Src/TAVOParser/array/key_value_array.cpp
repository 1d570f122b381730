// The two-run protocol: pairs are measured when the request has no array, and stored otherwise.
#include "array/key_value_array.h"

#include <algorithm>
#include <cwchar>

#include "array/stored_keys.h"
#include "platform/trace.h"
#include "text/token_text.h"
#include "util/unicode.h"

namespace tavo {
namespace {

constexpr uint32_t kWide = sizeof(wchar_t);

bool is_sizing_run(const RequestRecord* request) {
  return request->pKeyValueArr == nullptr && request->capacity == 0;
}

uint32_t bytes_needed(uint64_t characters) {
  return static_cast<uint32_t>((characters + 1) * kWide);
}

void raise_to(int32_t& largest, uint32_t need) {
  if (static_cast<int64_t>(need) > largest) largest = static_cast<int32_t>(need);
}

// Adds without signed overflow, whatever count the caller left in the request.
void count_one_more(RequestRecord* request) {
  request->count = static_cast<int32_t>(static_cast<uint32_t>(request->count) + 1);
}

// Characters that fit in a caller's buffer, the terminator included. A null buffer, or one too
// small for one character, has no space and is never written.
size_t characters_in(const wchar_t* buffer, uint32_t bytes) {
  return buffer == nullptr ? 0 : bytes / kWide;
}

// Converts as much of a text as fits in a buffer and terminates it. Returns false when it was
// truncated.
[[gnu::always_inline]] inline bool put(const TokenText& text, wchar_t* buffer, size_t characters) {
  if (characters == 0) [[unlikely]]
    return false;
  const bool whole = text.count < characters;
  const uint32_t fitting = whole ? text.count : static_cast<uint32_t>(characters - 1);
  uint32_t produced = 0;
  // Deliberate: the pair is stored even when the conversion fails; its text is then empty.
  if (fitting != 0) [[likely]] {
    if (utf16_to_utf32(text.units, fitting, buffer, fitting, &produced) != 0) [[unlikely]] {
      produced = 0;
    }
  }
  buffer[std::min(produced, fitting)] = 0;
  return whole;
}

// Returns false when the key was truncated.
bool store_key(const KeyValueEntry& entry, const wchar_t* prefix, const TokenText& text) {
  wchar_t* buffer = entry.key;
  size_t characters = characters_in(buffer, entry.keySize);
  if (prefix != nullptr && characters != 0) {
    const size_t length = std::wcslen(prefix);
    const size_t fitting = std::min(length, characters - 1);
    std::wmemcpy(buffer, prefix, fitting);
    buffer += fitting;
    characters -= fitting;
    *buffer = 0;
    if (fitting < length) return false;
  }
  return put(text, buffer, characters);
}

bool has_backslash(const TokenText& text) {
  const uint16_t* const end = text.units + text.count;
  return std::find(text.units, end, uint16_t{'\\'}) != end;
}

// Returns false when the value was truncated.
bool store_value(KeyValueEntry& entry, TokenText text, uint32_t value_id) {
  const bool quoted = is_quoted(value_id);
  if (quoted) {
    text.units += text.count != 0 ? 1 : 0;
    text.count = text.count < 2 ? 0 : text.count - 2;
  }
  entry.valueLength = bytes_needed(text.count);
  wchar_t* const buffer = entry.value;
  const size_t characters = characters_in(buffer, entry.valueSize);
  const bool whole = put(text, buffer, characters);
  if (characters == 0) [[unlikely]]
    return whole;
  buffer[characters - 1] = 0;  // whatever the conversion wrote
  if (quoted && has_backslash(text)) unescape_quotes(buffer, &entry.valueLength);
  return whole;
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
    StoredKeys& stored = stored_keys();
    if (stored.follows(request)) return stored.contains(key_id);
  }
  return find_key(request, key_id) != TAVO_NO_KEY_INDEX;
}

uint32_t store(RequestRecord* request, pANTLR3_COMMON_TOKEN key, uint32_t key_id,
               pANTLR3_COMMON_TOKEN value, uint32_t value_id, const wchar_t* prefix) {
  KeyValueEntry* entry = request->pKeyValueArr + request->count;
  if (entry->keyId == key_id && entry->status == 0) {  // the caller filled it in
    count_one_more(request);
    return 0;
  }
  if (!is_repeatable(key_id) && is_stored(request, key_id)) return 0;

  const bool key_whole = store_key(*entry, prefix, token_text(key));
  entry->keyId = key_id;
  const bool value_whole = store_value(*entry, token_text(value), value_id);
  entry->valueId = value_id;
  // Deliberate: a truncated value with a complete key keeps status 0, since callers expect no 7102.
  entry->status = key_whole     ? 0u
                  : value_whole ? uint32_t{TAVO_STATUS_KEY_TRUNCATED}
                                : uint32_t{TAVO_STATUS_KEY_AND_VALUE_TRUNCATED};
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
  const KeyValueEntry* const begin = request->pKeyValueArr;
  if (begin == nullptr || request->count <= 0) return TAVO_NO_KEY_INDEX;
  const KeyValueEntry* const end = begin + request->count;
  for (const KeyValueEntry* entry = begin; entry != end; ++entry) {
    if (entry->keyId == key_id) return static_cast<uint32_t>(entry - begin);
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
  if (request == nullptr || key == nullptr || value == nullptr) TAVO_TRACE_RETURN(kFailure);
  if (tavo::is_sizing_run(request)) {
    TAVO_TRACE_RETURN(
        tavo::measure(request, tavo::token_text(key), tavo::token_text(value), prefix));
  }
  if (tavo::is_full(request)) {
    trace.skip_epilogue();  // deliberate: a full array leaves its trace frame open
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
