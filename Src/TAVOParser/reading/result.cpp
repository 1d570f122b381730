// Read access to a result.
#include "reading/result.h"

namespace tavo {
namespace {

const KeyValueEntry* find_pair(const TAVOReadResult* result, uint32_t pair) {
  return result == nullptr || pair >= result->pair_count ? nullptr : result->pairs + pair;
}

size_t length_of(uint32_t bytes) {
  return bytes / sizeof(wchar_t) - 1;
}

OptionText find_text(const TAVOReadResult* result, uint32_t pair) {
  const KeyValueEntry* entry = find_pair(result, pair);
  if (entry == nullptr) return {};
  if (result->texts != nullptr) return result->texts[pair];
  return {result->utf8 + (entry->key - result->wide), result->utf8 + (entry->value - result->wide),
          static_cast<uint32_t>(length_of(entry->keySize)),
          static_cast<uint32_t>(length_of(entry->valueLength))};
}

const TraceLevel* find_level(const TAVOReadResult* result, uint32_t index) {
  return result == nullptr || index >= result->trace_levels ? nullptr : result->levels + index;
}

uint32_t tell(TAVORange* range, uint32_t offset, uint32_t length) {
  *range = {offset, length};
  return 0;
}

}  // namespace
}  // namespace tavo

extern "C" {

uint32_t TAVOResult_GetStatus(const TAVOReadResult* result) noexcept {
  return result == nullptr ? 0 : result->status;
}

uint32_t TAVOResult_GetProvider(const TAVOReadResult* result) noexcept {
  return TAVOResult_GetValueType(result, TAVOResult_FindPair(result, TAVO_PARSER_PROVIDER));
}

// ---- pairs -------------------------------------------------------------------------------------

uint32_t TAVOResult_CountPairs(const TAVOReadResult* result) noexcept {
  return result == nullptr ? 0 : result->pair_count;
}

uint32_t TAVOResult_FindPair(const TAVOReadResult* result, uint32_t keyType) noexcept {
  for (uint32_t i = 0; i < TAVOResult_CountPairs(result); ++i) {
    if (result->pairs[i].keyId == keyType) return i;
  }
  return TAVO_NO_KEY_INDEX;
}

uint32_t TAVOResult_GetKeyType(const TAVOReadResult* result, uint32_t pair) noexcept {
  const KeyValueEntry* entry = tavo::find_pair(result, pair);
  return entry == nullptr ? 0 : entry->keyId;
}

uint32_t TAVOResult_GetValueType(const TAVOReadResult* result, uint32_t pair) noexcept {
  const KeyValueEntry* entry = tavo::find_pair(result, pair);
  return entry == nullptr ? 0 : entry->valueId;
}

const char* TAVOResult_GetKey(const TAVOReadResult* result, uint32_t pair) noexcept {
  return tavo::find_text(result, pair).key;
}

size_t TAVOResult_GetKeyBytes(const TAVOReadResult* result, uint32_t pair) noexcept {
  return tavo::find_text(result, pair).key_bytes;
}

const char* TAVOResult_GetValue(const TAVOReadResult* result, uint32_t pair) noexcept {
  return tavo::find_text(result, pair).value;
}

size_t TAVOResult_GetValueBytes(const TAVOReadResult* result, uint32_t pair) noexcept {
  return tavo::find_text(result, pair).value_bytes;
}

const wchar_t* TAVOResult_GetWideKey(const TAVOReadResult* result, uint32_t pair) noexcept {
  const KeyValueEntry* entry = tavo::find_pair(result, pair);
  return entry == nullptr ? nullptr : entry->key;
}

size_t TAVOResult_GetKeyLength(const TAVOReadResult* result, uint32_t pair) noexcept {
  const KeyValueEntry* entry = tavo::find_pair(result, pair);
  return entry == nullptr ? 0 : tavo::length_of(entry->keySize);
}

const wchar_t* TAVOResult_GetWideValue(const TAVOReadResult* result, uint32_t pair) noexcept {
  const KeyValueEntry* entry = tavo::find_pair(result, pair);
  return entry == nullptr ? nullptr : entry->value;
}

size_t TAVOResult_GetValueLength(const TAVOReadResult* result, uint32_t pair) noexcept {
  const KeyValueEntry* entry = tavo::find_pair(result, pair);
  return entry == nullptr ? 0 : tavo::length_of(entry->valueLength);
}

uint32_t TAVOResult_GetKeyRange(const TAVOReadResult* result, uint32_t pair,
                                TAVORange* range) noexcept {
  const KeyValueEntry* entry = tavo::find_pair(result, pair);
  if (entry == nullptr || range == nullptr) return TAVO_READ_ARGUMENT_INVALID;
  const tavo::OptionPlace place = tavo::place_of(*entry);
  return tavo::tell(range, place.key, place.key_length);
}

uint32_t TAVOResult_GetValueRange(const TAVOReadResult* result, uint32_t pair,
                                  TAVORange* range) noexcept {
  const KeyValueEntry* entry = tavo::find_pair(result, pair);
  if (entry == nullptr || range == nullptr) return TAVO_READ_ARGUMENT_INVALID;
  const tavo::OptionPlace place = tavo::place_of(*entry);
  return tavo::tell(range, place.value, place.value_length);
}

// ---- trace levels ------------------------------------------------------------------------------

uint32_t TAVOResult_CountTraceLevels(const TAVOReadResult* result) noexcept {
  return result == nullptr ? 0 : result->trace_levels;
}

const char* TAVOResult_GetTraceLevel(const TAVOReadResult* result, uint32_t index) noexcept {
  const tavo::TraceLevel* level = tavo::find_level(result, index);
  return level == nullptr ? nullptr : level->text;
}

uint32_t TAVOResult_GetTraceLevelRange(const TAVOReadResult* result, uint32_t index,
                                       TAVORange* range) noexcept {
  const tavo::TraceLevel* level = tavo::find_level(result, index);
  if (level == nullptr || range == nullptr) return TAVO_READ_ARGUMENT_INVALID;
  const tavo::OptionPlace& place = level->place;
  return tavo::tell(range, place.key, place.value + place.value_length - place.key);
}

}  // extern "C"
