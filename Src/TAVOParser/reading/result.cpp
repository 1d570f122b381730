// Looking into a result.
#include "reading/result.h"

#include "reading/option_texts.h"

namespace tavo {
namespace {

const KeyValueEntry* find_pair(const TAVOReadResult* result, uint32_t pair) {
  return result == nullptr || pair >= result->pair_count ? nullptr : result->pairs + pair;
}

OptionText find_text(const TAVOReadResult* result, uint32_t pair) {
  const KeyValueEntry* entry = find_pair(result, pair);
  return entry == nullptr ? OptionText{} : text_of(*result, *entry);
}

const StoredOption* find_option(const TAVOReadResult* result, uint32_t pair) {
  const KeyValueEntry* entry = find_pair(result, pair);
  return entry == nullptr ? nullptr : result->options + option_of(*entry);
}

size_t length_of(uint32_t bytes) {
  return bytes / sizeof(wchar_t) - 1;
}

uint32_t tell(TAVORange* range, uint32_t offset, uint32_t length) {
  *range = {offset, length};
  return 0;
}

}  // namespace

OptionText text_of(const TAVOReadResult& result, const KeyValueEntry& pair) {
  if (result.texts != nullptr) return result.texts[option_of(pair)];
  return {result.utf8 + (pair.key - result.wide), result.utf8 + (pair.value - result.wide),
          static_cast<uint32_t>(length_of(pair.keySize)),
          static_cast<uint32_t>(length_of(pair.valueLength))};
}

const StoredOption* find_trace_level(const TAVOReadResult& result, uint32_t index, bool refused) {
  const StoredOption* const end = result.options + result.option_count;
  for (const StoredOption* option = result.options; option != end; ++option) {
    const bool wanted = refused ? option->trace_level == StoredOption::kNotConvertible
                                : option->trace_level != StoredOption::kNone;
    if (wanted && index-- == 0) return option;
  }
  return nullptr;
}

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
  const tavo::StoredOption* option = tavo::find_option(result, pair);
  if (option == nullptr || range == nullptr) return TAVO_READ_ARGUMENT_INVALID;
  return tavo::tell(range, option->key, option->key_length);
}

uint32_t TAVOResult_GetValueRange(const TAVOReadResult* result, uint32_t pair,
                                  TAVORange* range) noexcept {
  const tavo::StoredOption* option = tavo::find_option(result, pair);
  if (option == nullptr || range == nullptr) return TAVO_READ_ARGUMENT_INVALID;
  return tavo::tell(range, option->value, option->value_length);
}

// ---- trace levels ------------------------------------------------------------------------------

uint32_t TAVOResult_CountTraceLevels(const TAVOReadResult* result) noexcept {
  return result == nullptr ? 0 : result->trace_levels;
}

const char* TAVOResult_GetTraceLevel(const TAVOReadResult* result, uint32_t index) noexcept {
  if (result == nullptr) return nullptr;
  const tavo::StoredOption* option = tavo::find_trace_level(*result, index, false);
  if (option == nullptr) return nullptr;
  if (result->texts != nullptr) return result->texts[option - result->options].value;
  return result->utf8 +
         (tavo::wide_option(result->pairs, *option, result->wide).value - result->wide);
}

uint32_t TAVOResult_GetTraceLevelRange(const TAVOReadResult* result, uint32_t index,
                                       TAVORange* range) noexcept {
  if (result == nullptr || range == nullptr) return TAVO_READ_ARGUMENT_INVALID;
  const tavo::StoredOption* option = tavo::find_trace_level(*result, index, false);
  if (option == nullptr) return TAVO_READ_ARGUMENT_INVALID;
  return tavo::tell(range, option->key, option->value + option->value_length - option->key);
}

}  // extern "C"
