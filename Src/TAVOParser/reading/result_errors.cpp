// The errors of a result, and their messages. A message is formatted on request, from a message
// block that belongs to no thread.
#include <cstdlib>
#include <cwchar>

#include "TAVOErrorHandler.h"
#include "errors/error_state.h"
#include "reading/input_text.h"
#include "reading/result.h"

namespace tavo {
namespace {

constexpr int16_t kTerminatedWideText = 6;

// Trace levels without an 8-bit form come first.
bool is_trace_level(const TAVOReadResult& result, uint32_t error) {
  return error < result.refused_trace_levels;
}

bool has(const TAVOReadResult* result, uint32_t error) {
  return result != nullptr && error < count_errors(*result);
}

// A formatted message, which owns its memory.
class Message {
 public:
  Message(const TAVOReadResult& result, uint32_t error) {
    const uint32_t number = TAVOResult_GetErrorNumber(&result, error);
    auto* state = static_cast<ErrorState*>(std::calloc(1, sizeof(ErrorState)));
    if (state == nullptr) return;
    if (record(state, result, error, number)) format(*state->first);
    free_error_state(state);
  }
  Message(const Message&) = delete;
  Message& operator=(const Message&) = delete;
  ~Message() {
    std::free(text_);
  }

  // Null if there is no message.
  const wchar_t* text() const {
    return text_;
  }

 private:
  static bool record(ErrorState* state, const TAVOReadResult& result, uint32_t error,
                     uint32_t number) {
    uint32_t count = 0;
    while (TAVOResult_GetErrorInsert(&result, error, count, nullptr) != nullptr) ++count;
    if (capture_error(state, 0, number, static_cast<int16_t>(count)) != 0) return false;
    for (uint32_t i = 0; i < count; ++i) {
      uint32_t id = 0;
      const wchar_t* text = TAVOResult_GetErrorInsert(&result, error, i, &id);
      if (capture_token(state, text, kTerminatedWideText, id, 0) != 0) return false;
    }
    return true;
  }

  void format(const ErrorBlock& block) {
    TAVOMessageRequest request{};
    request.version = 21;
    request.size = sizeof request;
    request.messageId = block.messageId;
    request.block = &block;
    GetFormattedErrorMsg(&request);  // returns the size
    if (request.neededBytes < sizeof(wchar_t)) return;
    text_ = static_cast<wchar_t*>(std::calloc(request.neededBytes, 1));
    if (text_ == nullptr) return;
    request.text = text_;
    request.textBytes = request.neededBytes;
    GetFormattedErrorMsg(&request);
    text_[request.textBytes / sizeof(wchar_t) - 1] = 0;
  }

  wchar_t* text_ = nullptr;
};

}  // namespace
}  // namespace tavo

extern "C" {

uint32_t TAVOResult_CountErrors(const TAVOReadResult* result) noexcept {
  return result == nullptr ? 0 : tavo::count_errors(*result);
}

uint32_t TAVOResult_GetErrorNumber(const TAVOReadResult* result, uint32_t error) noexcept {
  if (!tavo::has(result, error)) return 0;
  return tavo::is_trace_level(*result, error) ? uint32_t{TAVO_STATUS_TRACE_LEVEL_NOT_CONVERTIBLE}
                                              : result->error.number;
}

uint32_t TAVOResult_GetErrorPosition(const TAVOReadResult* result, uint32_t error) noexcept {
  if (!tavo::has(result, error) || tavo::is_trace_level(*result, error)) return 0;
  return result->error.position;
}

uint32_t TAVOResult_GetErrorPlace(const TAVOReadResult* result, uint32_t error,
                                  TAVOPlace* place) noexcept {
  if (!tavo::has(result, error) || place == nullptr) return TAVO_READ_ARGUMENT_INVALID;
  if (tavo::is_trace_level(*result, error) || !result->has_place) {
    return TAVO_STATUS_NO_ERRORS_HELD;
  }
  *place = result->place;
  return 0;
}

size_t TAVOResult_GetWideErrorMessage(const TAVOReadResult* result, uint32_t error, wchar_t* buffer,
                                      size_t characters) noexcept {
  if (!tavo::has(result, error)) return 0;
  const tavo::Message message(*result, error);
  if (message.text() == nullptr) return 0;
  const size_t length = std::wcslen(message.text());
  if (buffer != nullptr && characters != 0) {
    const size_t fitting = length < characters ? length : characters - 1;
    std::wmemcpy(buffer, message.text(), fitting);
    buffer[fitting] = 0;
  }
  return length + 1;
}

size_t TAVOResult_GetErrorMessage(const TAVOReadResult* result, uint32_t error, char* buffer,
                                  size_t bytes) noexcept {
  if (!tavo::has(result, error)) return 0;
  const tavo::Message message(*result, error);
  if (message.text() == nullptr) return 0;
  size_t needed = 1;
  char* next = buffer;
  for (const wchar_t* c = message.text(); *c != 0; ++c) {
    needed += tavo::utf8_length(static_cast<uint32_t>(*c));
    if (buffer != nullptr && needed <= bytes) next = tavo::to_utf8(c, 1, next);
  }
  if (buffer != nullptr && bytes != 0) *next = 0;
  return needed;
}

const wchar_t* TAVOResult_GetErrorInsert(const TAVOReadResult* result, uint32_t error,
                                         uint32_t insert, uint32_t* id) noexcept {
  if (!tavo::has(result, error) || tavo::is_trace_level(*result, error) ||
      insert >= result->insert_count) {
    return nullptr;
  }
  if (id != nullptr) *id = result->inserts[insert].id;
  return result->inserts[insert].text;
}

}  // extern "C"
