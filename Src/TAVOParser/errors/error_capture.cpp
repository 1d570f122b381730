// Recording of messages and their inserts in an error state.
#include <algorithm>
#include <cstdlib>
#include <cwchar>

#include "errors/error_state.h"
#include "platform/trace.h"

namespace tavo {
namespace {

constexpr uint32_t kFailure = 0xFFFFFFFF;
constexpr uint32_t kTokenIdRefused = 1;
constexpr uint32_t kDataTypeUnknown = 3;

constexpr size_t kHeaderBytes = offsetof(ErrorBlock, slot);
constexpr uint32_t kIntegerTextBytes = 48;
constexpr uint32_t kSmallIntegerTextBytes = 28;
constexpr uint32_t kTimeTextBytes = 200;

// Slots that a block has in memory: at least one. One more is allocated, since an insert too many
// is stored after the last slot and must stay inside the block.
size_t physical_slots(int16_t slots) {
  return static_cast<size_t>(std::max<int16_t>(slots, 1));
}
size_t block_bytes(int16_t slots) {
  return kHeaderBytes + physical_slots(slots) * sizeof(TokenSlot);
}

wchar_t* allocate_text(size_t characters) {
  return static_cast<wchar_t*>(std::calloc(characters + 1, sizeof(wchar_t)));
}

uint32_t bytes_of(size_t characters) {
  return static_cast<uint32_t>((characters + 1) * sizeof(wchar_t));
}

wchar_t* copy_text(const wchar_t* text, size_t characters) {
  wchar_t* copy = allocate_text(characters);
  if (copy != nullptr) std::wmemcpy(copy, text, characters);
  return copy;
}

// Returns a text, or frees it when its conversion failed.
wchar_t* checked(wchar_t* text, uint32_t status) {
  if (status == 0) return text;
  std::free(text);
  return nullptr;
}

// 8-bit text of `length` bytes in a code page, 0 for the default one.
wchar_t* convert_bytes(const char* text, size_t length, uint32_t code_page) {
  wchar_t* wide = allocate_text(length);
  if (wide == nullptr) return nullptr;
  ConversionDescriptor descriptor{};
  descriptor.code_page = code_page;
  auto bytes = static_cast<int32_t>(length);
  uint32_t count = 0;
  return checked(
      wide, TAVOCnvCharToWVarcharSz(text, &bytes, wide, bytes_of(length), &count, &descriptor));
}

wchar_t* convert_terminated_bytes(const char* text, uint32_t code_page) {
  const size_t length = std::strlen(text);
  wchar_t* wide = allocate_text(length);
  if (wide == nullptr) return nullptr;
  ConversionDescriptor descriptor{};
  descriptor.code_page = code_page;
  auto bytes = static_cast<int32_t>(length);
  uint32_t count = 0;
  return checked(wide, TAVOCnvVarcharSzToWVarcharSz(text, &bytes, wide, bytes_of(length), &count,
                                                    &descriptor));
}

uint16_t leading_length(const void* data) {
  uint16_t length;
  std::memcpy(&length, data, sizeof length);
  return length;
}

wchar_t* convert_counted_bytes(const void* data, uint32_t code_page) {
  const size_t length = leading_length(data);
  wchar_t* wide = allocate_text(length);
  if (wide == nullptr) return nullptr;
  ConversionDescriptor descriptor{};
  descriptor.code_page = code_page;
  auto bytes = static_cast<int32_t>(length);
  uint32_t count = 0;
  return checked(
      wide, TAVOCnvVarcharToWVarcharSz(data, &bytes, wide, bytes_of(length), &count, &descriptor));
}

wchar_t* convert_wide(const wchar_t* text, uint32_t length_bytes) {
  const size_t characters = length_bytes / sizeof(wchar_t);
  wchar_t* wide = allocate_text(characters);
  if (wide == nullptr) return nullptr;
  auto bytes = static_cast<int32_t>(length_bytes);
  uint32_t count = 0;
  return checked(wide, TAVOCnvWCharToWVarcharSz(text, &bytes, wide, bytes_of(characters), &count));
}

wchar_t* convert_counted_wide(const void* data) {
  const size_t length = leading_length(data);
  const size_t characters = length / sizeof(wchar_t);
  wchar_t* wide = allocate_text(characters);
  if (wide == nullptr) return nullptr;
  auto bytes = static_cast<int32_t>(length);
  uint32_t count = 0;
  return checked(wide,
                 TAVOCnvWVarcharToWVarcharSz(data, &bytes, wide, bytes_of(characters), &count));
}

// Converts a number with one of the platform's conversions; 0 is written here.
template <typename Number>
wchar_t* convert_number(const void* data, uint32_t bytes,
                        uint32_t (*convert)(const Number*, wchar_t*, uint32_t, uint32_t*)) {
  auto* text = static_cast<wchar_t*>(std::calloc(1, bytes));
  if (text == nullptr) return nullptr;
  Number number;
  std::memcpy(&number, data, sizeof number);
  if (number == 0) {
    text[0] = L'0';
    return text;
  }
  uint32_t count = 0;
  return checked(text, convert(&number, text, bytes, &count));
}

wchar_t* convert_time(const void* data, int16_t data_type) {
  auto* text = static_cast<wchar_t*>(std::calloc(1, kTimeTextBytes));
  if (text == nullptr) return nullptr;
  uint32_t count = 0;
  return checked(text, TAVOGetStringFromTS(data, data_type, text, kTimeTextBytes, &count));
}

bool is_text(int16_t data_type) {
  return (data_type >= 1 && data_type <= 6) || data_type == 17 || data_type == 18 ||
         (data_type >= 25 && data_type <= 28);
}

bool is_known(int16_t data_type) {
  return is_text(data_type) || data_type == 9 || data_type == 10 ||
         (data_type >= 14 && data_type <= 16) || data_type == 21 || data_type == 22;
}

// A newly allocated wide text of the data, or null.
wchar_t* convert(const void* data, int16_t data_type, uint32_t extra) {
  switch (data_type) {
    case 1:
    case 25:
    case 3:
    case 17:
      return data_type == 1 || data_type == 25
                 ? convert_bytes(static_cast<const char*>(data),
                                 std::strlen(static_cast<const char*>(data)), extra)
                 : convert_terminated_bytes(static_cast<const char*>(data), extra);
    case 2:
    case 26: return convert_counted_bytes(data, extra);
    case 4:
    case 27: return convert_wide(static_cast<const wchar_t*>(data), extra);
    case 5:
    case 28: return convert_counted_wide(data);
    case 6:
    case 18: {
      const auto* text = static_cast<const wchar_t*>(data);
      return copy_text(text, std::wcslen(text));
    }
    case 9: return convert_number<int32_t>(data, kIntegerTextBytes, TAVOCnvIntToWVarcharSz1);
    case 10: return convert_number<uint32_t>(data, kIntegerTextBytes, TAVOCnvUIntToWVarcharSz);
    case 21:
      return convert_number<int16_t>(data, kSmallIntegerTextBytes, TAVOCnvSmallIntToWVarcharSz);
    case 22:
      return convert_number<uint16_t>(data, kSmallIntegerTextBytes, TAVOCnvSmallUIntToWVarcharSz);
    default: return convert_time(data, data_type);
  }
}

// The first free slot, or the position after the last one when all are in use.
TokenSlot* slot_to_fill(ErrorBlock* block) {
  TokenSlot* slots = block->slot;
  const size_t count = physical_slots(block->slots);
  size_t i = 0;
  while (i < count && slots[i].id != 0) ++i;
  // Deliberate: a block without a free slot is never refused (status 2). Callers rely on the insert
  // that is stored after the last slot.
  return slots + i;
}

}  // namespace

uint32_t get_thread_block(void** block) {
  *block = nullptr;
  const uint32_t status = TAVOGetThreadBlock(block);
  return status == 0 && *block == nullptr ? kFailure : status;
}

int32_t capture_error(ErrorState* state, uint32_t auxiliary, uint32_t message_id, int16_t slots) {
  if (state == nullptr) return -1;
  const size_t bytes = block_bytes(slots);
  auto* block = static_cast<ErrorBlock*>(std::calloc(1, bytes + sizeof(TokenSlot)));
  if (block == nullptr) return -1;
  std::memcpy(block->eye, "ECBD", sizeof block->eye);
  block->version = 21;
  block->always48 = 48;
  block->slots = slots;
  block->messageId = message_id;
  block->auxiliary = auxiliary;
  if (state->last == nullptr) {
    state->first = block;
  } else {
    state->last->next = block;
  }
  state->last = block;
  ++state->blocks;
  state->newestEstimate = static_cast<uint32_t>(
      bytes + sizeof(void*) * static_cast<size_t>(std::max<int16_t>(slots, 0)));
  state->largestEstimate = std::max(state->largestEstimate, state->newestEstimate);
  return 0;
}

uint32_t capture_token(ErrorState* state, const void* data, int16_t data_type, uint32_t token_id,
                       uint32_t extra) {
  if (token_id > TAVO_TOKID_LAST) return kTokenIdRefused;
  if (state == nullptr || state->last == nullptr) return kFailure;
  if (!is_known(data_type)) return kDataTypeUnknown;
  if (data == nullptr && !is_text(data_type)) return kFailure;
  wchar_t* text = data == nullptr ? copy_text(L"<NULL>", 6) : convert(data, data_type, extra);
  if (text == nullptr) return kFailure;
  TokenSlot* slot = slot_to_fill(state->last);
  std::free(slot->value);  // of an earlier insert after the last slot, else null
  slot->id = token_id;
  slot->value = text;
  return 0;
}

void free_error_state(ErrorState* state) {
  if (state == nullptr) return;
  for (ErrorBlock* block = state->first; block != nullptr;) {
    ErrorBlock* next = block->next;
    // One after the last slot, for the insert too many.
    const size_t count = physical_slots(block->slots) + 1;
    for (TokenSlot* slot = block->slot; slot != block->slot + count; ++slot) std::free(slot->value);
    std::free(block);
    block = next;
  }
  std::free(state);
}

}  // namespace tavo

extern "C" {

int32_t ErrorCaptureEAB(ErrorState* state, uint32_t auxiliary, uint32_t messageId,
                        int16_t slots) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdErrorCaptureEAB, int32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("state", state), tavo::trace_number("messageId", messageId));
  const int32_t status = tavo::capture_error(state, auxiliary, messageId, slots);
  trace.leave(__LINE__, static_cast<uint32_t>(status));
  return status;
}

int32_t ErrorCapture(void* threadBlock, uint32_t auxiliary, uint32_t messageId,
                     int16_t slots) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdErrorCapture, int32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("threadBlock", threadBlock),
                   tavo::trace_number("messageId", messageId));
  const int32_t status =
      tavo::capture_error(tavo::error_state_of(threadBlock), auxiliary, messageId, slots);
  trace.leave(__LINE__, static_cast<uint32_t>(status));
  return status;
}

uint32_t TokenCaptureEAB(ErrorState* state, const void* data, int16_t dataType, uint32_t tokenId,
                         uint32_t extra) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdTokenCaptureEAB, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("state", state), tavo::trace_number("tokenId", tokenId));
  TAVO_TRACE_RETURN(tavo::capture_token(state, data, dataType, tokenId, extra));
}

uint32_t TokenCapture(void* threadBlock, const void* data, int16_t dataType, uint32_t tokenId,
                      uint32_t extra) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdTokenCapture, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("threadBlock", threadBlock),
                   tavo::trace_number("tokenId", tokenId));
  TAVO_TRACE_RETURN(
      tavo::capture_token(tavo::error_state_of(threadBlock), data, dataType, tokenId, extra));
}

uint32_t TermErrors(ErrorState* state) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdTermErrors, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("state", state));
  tavo::free_error_state(state);
  TAVO_TRACE_RETURN(0);
}

}  // extern "C"
