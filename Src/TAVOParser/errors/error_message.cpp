// TAVO_SetErrMsg: from a message number, or a recognizer's exception, to a recorded message.
#include <antlr3.h>

#include <algorithm>

#include "errors/error_location.h"
#include "errors/error_state.h"
#include "platform/trace.h"
#include "text/parameter_text.h"

namespace tavo {
namespace {

constexpr int32_t kPositionUnknown = 1;
constexpr int32_t kPositionOfFirstCharacter = 2;
constexpr int16_t kWideText = 4;
constexpr int16_t kTerminatedWideText = 6;
constexpr int16_t kSignedInteger = 9;

void record_plain(ErrorState* state, uint32_t message_id) {
  capture_error(state, 0, message_id, 0);
}

// Characters of the whole string; bytes for 8-bit text. A negative length counts as 0.
int32_t string_length(const RequestRecord& request) {
  const int32_t bytes = std::max(request.textLength, 0);
  return request.form == 'M' ? bytes : bytes / static_cast<int32_t>(sizeof(wchar_t));
}

void add_excerpt(ErrorState* state, const RequestRecord& request, int32_t position) {
  ParameterText text;
  if (text.fetch(request) != 0) {
    capture_token(state, L"<Failed to convert parameter string>", kTerminatedWideText,
                  TAVO_TOKID_SUBSTR, 0);
    return;
  }
  const auto wanted = static_cast<uint32_t>(std::max(position, 0));
  const uint32_t characters = std::min(wanted, text.characters());
  capture_token(state, text.text(), kWideText, TAVO_TOKID_SUBSTR,
                characters * uint32_t{sizeof(wchar_t)});
}

void record_syntax_error(ErrorState* state, const RequestRecord& request, int32_t position) {
  if (capture_error(state, 0, TAVO_STATUS_SYNTAX_ERROR, 2) != 0) return;
  if (capture_token(state, &position, kSignedInteger, TAVO_TOKID_CHAR_POS, 0) != 0) return;
  add_excerpt(state, request, position);
}

void record_exception(ErrorState* state, const RequestRecord& request,
                      const pANTLR3_BASE_RECOGNIZER recognizer) {
  const ANTLR3_EXCEPTION* exception =
      recognizer->state == nullptr ? nullptr : recognizer->state->exception;
  if (exception == nullptr) return record_plain(state, TAVO_STATUS_SYNTAX_ERROR_UNPLACED);
  // A caller's recognizer may hold any position: the sum wraps instead of overflowing.
  auto position = static_cast<int32_t>(static_cast<uint32_t>(exception->charPositionInLine) + 2);
  if (position == kPositionUnknown) return record_plain(state, TAVO_STATUS_SYNTAX_ERROR_UNPLACED);
  if (exception->type >= ANTLR3_RECOGNITION_EXCEPTION &&
      exception->type <= ANTLR3_FAILED_PREDICATE_EXCEPTION) {
    // An error without a position is reported at the end of the input.
    if (exception->type == ANTLR3_NO_VIABLE_ALT_EXCEPTION &&
        position == kPositionOfFirstCharacter) {
      position = string_length(request);
    }
    record_syntax_error(state, request, position);
  } else if (exception->type == TAVO_STATUS_BAD_SEPARATOR) {
    record_plain(state, TAVO_STATUS_BAD_SEPARATOR);
  }
}

}  // namespace
}  // namespace tavo

extern "C" {

uint32_t TAVO_SetErrMsg(RequestRecord* request, uint32_t messageId,
                        pANTLR3_BASE_RECOGNIZER recognizer) noexcept {
  constexpr uint32_t kFailure = 0xFFFFFFFF;
  TAVO_TRACE_FUNCTION(tavo::kIdSetErrMsg, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("pParamDef", request),
                   tavo::trace_number("messageId", messageId));
  if (request == nullptr) TAVO_TRACE_RETURN(kFailure);
  void* block;
  const uint32_t status = tavo::get_thread_block(&block);
  if (status != 0) TAVO_TRACE_RETURN(status);
  ErrorState* state = tavo::error_state_of(block);
  if (recognizer != nullptr && messageId == TAVO_STATUS_SYNTAX_ERROR) {
    tavo::record_exception(state, *request, recognizer);
    tavo::remember_location(recognizer);
  } else {
    tavo::record_plain(state, messageId);
  }
  request->errorFlag = 1;
  TAVO_TRACE_RETURN(0);
}

void TAVO_RecognitionError(pANTLR3_BASE_RECOGNIZER, uint8_t**) noexcept {}

}  // extern "C"
