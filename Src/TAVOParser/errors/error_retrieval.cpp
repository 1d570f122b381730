// Passes the calling thread's recorded messages to the platform's error handler.
#include "errors/error_state.h"
#include "platform/trace.h"

namespace {

// The calling thread's error state. Returns 0, 72 without one, or the platform's code.
uint32_t find_error_state(tavo::Trace& trace, ErrorState** state) {
  void* block;
  const uint32_t status = tavo::get_thread_block(&block);
  if (status != 0) {
    trace.note(__LINE__, "Failed to get ThreadBlock");
    return status;
  }
  *state = tavo::error_state_of(block);
  return *state == nullptr ? uint32_t{TAVO_STATUS_NO_ERRORS_HELD} : 0u;
}

}  // namespace

extern "C" {

uint32_t Parser_GetErrorCount(void* a, void* b) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdGetErrorCount, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("a", a), tavo::trace_pointer("b", b));
  ErrorState* state = nullptr;
  const uint32_t status = find_error_state(trace, &state);
  if (status != 0) TAVO_TRACE_RETURN(status);
  TAVO_TRACE_RETURN(GetErrorCount(state, a, b));
}

uint32_t Parser_GetError(void* request) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdGetError, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("request", request));
  ErrorState* state = nullptr;
  const uint32_t status = find_error_state(trace, &state);
  if (status != 0) TAVO_TRACE_RETURN(status);
  TAVO_TRACE_RETURN(GetError(state, request));
}

uint32_t Parser_GetFormattedErrorMsg(void* request) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdGetFormattedErrorMsg, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("request", request));
  TAVO_TRACE_RETURN(GetFormattedErrorMsg(request));
}

}  // extern "C"
