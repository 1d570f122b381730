// Parser_Service: one parse, from the request to its status.
#include <antlr3.h>

#include <cstdlib>

#include "Grammar/engine/recognizer_chain.h"
#include "array/stored_keys.h"
#include "errors/error_state.h"
#include "errors/last_location.h"
#include "platform/trace.h"
#include "text/parameter_text.h"
#include "text/utf16_text.h"

namespace tavo {
namespace {

// Records and returns a problem with the request itself, without touching the request's flag.
uint32_t refuse(ErrorState* state, uint32_t status, uint32_t converter_code = 0) {
  constexpr int16_t kUnsignedInteger = 10;
  const bool has_insert = status == TAVO_STATUS_TEXT_NOT_CONVERTIBLE;
  capture_error(state, 0, status, has_insert ? 1 : 0);
  if (has_insert) {
    capture_token(state, &converter_code, kUnsignedInteger, TAVO_TOKID_ERR_CODE, 0);
  }
  return status;
}

// Replaces the thread's error state with a new one.
uint32_t renew_error_state(void* block, ErrorState** state) {
  const uint32_t status = TermErrors(error_state_of(block));
  if (status != 0) return status;
  set_error_state_of(block, nullptr);
  *state = static_cast<ErrorState*>(std::malloc(sizeof(ErrorState)));
  if (*state == nullptr) return TAVO_STATUS_NO_MEMORY_FOR_ERROR_STATE;
  **state = {};
  set_error_state_of(block, *state);
  return 0;
}

uint32_t recognize(RequestRecord* request, ErrorState* state, Utf16Text& text) {
  RecognizerChain chain;
  if (!chain.open(text.units(), text.count(), Utf16Text::kZeros)) {
    return refuse(state, TAVO_STATUS_NO_MEMORY_FOR_TEXT);
  }
  StoredKeys& stored = stored_keys();
  stored.begin(request);
  chain.parse(request);
  stored.end();
  return request->errorFlag != 0 ? uint32_t{TAVO_STATUS_STATEMENT_REJECTED} : 0u;
}

uint32_t parse(RequestRecord* request, ErrorState* state) {
  if (request->textLength <= 0) return refuse(state, TAVO_STATUS_TEXT_LENGTH_NOT_POSITIVE);
  ParameterText wide;
  uint32_t status = wide.fetch(*request);
  if (status != 0) return refuse(state, status, wide.converter_code());

  request->errorFlag = 0;
  request->count = 0;
  request->maxKeySize = 0;
  request->maxValueSize = 0;
  Utf16Text text;
  status = text.convert(wide.text(), wide.characters());
  if (status != 0) return refuse(state, status, text.converter_code());
  return recognize(request, state, text);
}

}  // namespace
}  // namespace tavo

extern "C" uint32_t Parser_Service(RequestRecord* request) noexcept {
  TAVO_TRACE_FUNCTION(tavo::kIdParserService, uint32_t);
  TAVO_TRACE_ENTRY(
      tavo::trace_pointer("pParamDef", request),
      tavo::trace_pointer("pKeyValueArr", request == nullptr ? nullptr : request->pKeyValueArr));
  if (request == nullptr) TAVO_TRACE_RETURN(TAVO_STATUS_REQUEST_TOO_OLD);
  if (request->sStructVer <= TAVO_REQUEST_VERSION_REFUSED) {
    TAVO_TRACE_RETURN(TAVO_STATUS_REQUEST_TOO_OLD);
  }
  // Process-wide, always the same value. Written only when it differs, since threads that write to
  // one cache line wait for each other.
  if (__atomic_load_n(&SetKeyValuePair, __ATOMIC_RELAXED) != &SetKeyValuePairW) {
    __atomic_store_n(&SetKeyValuePair, &SetKeyValuePairW, __ATOMIC_RELAXED);
  }
  tavo::last_location().known = false;

  void* block;
  uint32_t status = tavo::get_thread_block(&block);
  if (status != 0) TAVO_TRACE_RETURN(status);
  ErrorState* state = nullptr;
  status = tavo::renew_error_state(block, &state);
  if (status != 0) TAVO_TRACE_RETURN(status);
  TAVO_TRACE_RETURN(tavo::parse(request, state));
}
