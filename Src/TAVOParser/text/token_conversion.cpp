// Token text as wide text, and the trace level that a statement can set.
#include <cstdlib>
#include <memory>

#include "TAVOParser.h"
#include "TAVOText.h"
#include "platform/trace.h"
#include "text/token_text.h"

namespace tavo {
namespace {

struct FreeMemory {
  void operator()(void* memory) const {
    std::free(memory);
  }
};
using ByteText = std::unique_ptr<char, FreeMemory>;

uint32_t reject(RequestRecord* request, uint32_t message_id) {
  TAVO_SetErrMsg(request, message_id, nullptr);
  return message_id;
}

uint32_t set_trace_level(RequestRecord* request, TokenText level, uint32_t value_id, Trace& trace) {
  if (value_id == TAVO_PARSER_STRING_WITH_QUOTES) {
    level.units += level.count != 0 ? 1 : 0;
    level.count = level.count < 2 ? 0 : level.count - 2;
  }
  const ByteText text(static_cast<char*>(std::calloc(size_t{level.count} + 1, 1)));
  if (text == nullptr) return reject(request, TAVO_STATUS_NO_MEMORY_FOR_TRACE_LEVEL);
  uint32_t produced = 0;
  const uint32_t converted =
      Convert16To8(text.get(), level.count + 1, level.units, level.count, &produced);
  // A text of more bytes than characters can fill the last byte, which is to stay the terminator.
  if (converted != 0 || produced > level.count) {
    trace.note(__LINE__, "Func Convert16To8 failed");
    return reject(request, TAVO_STATUS_TRACE_LEVEL_NOT_CONVERTIBLE);
  }
  const uint32_t status = TAVOSetTraceLevel(text.get());
  if (status == 0) return 0;
  trace.note(__LINE__, "Func TAVOSetTraceLevel failed");
  return reject(request, status);
}

}  // namespace
}  // namespace tavo

extern "C" {

uint32_t TAVO_CnvANTLRTokenUtf16ToUtf32(RequestRecord* request, pANTLR3_COMMON_TOKEN token,
                                        wchar_t* dst, uint32_t dstBytes,
                                        uint32_t* produced) noexcept {
  constexpr uint32_t kFailure = 0xFFFFFFFF;
  TAVO_TRACE_FUNCTION(tavo::kIdCnvTokenUtf16ToUtf32, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("pParamDef", request));
  if (token == nullptr || dst == nullptr || produced == nullptr) TAVO_TRACE_RETURN(kFailure);
  const tavo::TokenText text = tavo::token_text(token);
  uint32_t count = 0;
  const uint32_t status =
      TAVO_Utf16ToUtf32(text.units, text.count * uint32_t{sizeof(uint16_t)}, dst, dstBytes, &count);
  if (status == 0) {
    *produced = count;
    if (count < dstBytes / sizeof(wchar_t)) dst[count] = 0;
  }
  TAVO_TRACE_RETURN(status);
}

uint32_t SetTraceLevel(RequestRecord* request, pANTLR3_COMMON_TOKEN, uint32_t,
                       pANTLR3_COMMON_TOKEN value, uint32_t valueId, const wchar_t*) noexcept {
  constexpr uint32_t kFailure = 0xFFFFFFFF;
  TAVO_TRACE_FUNCTION(tavo::kIdSetTraceLevel, uint32_t);
  TAVO_TRACE_ENTRY(tavo::trace_pointer("pParamDef", request));
  if (request == nullptr || value == nullptr) TAVO_TRACE_RETURN(kFailure);
  if (request->pKeyValueArr == nullptr && request->capacity == 0) TAVO_TRACE_RETURN(0);
  TAVO_TRACE_RETURN(tavo::set_trace_level(request, tavo::token_text(value), valueId, trace));
}

}  // extern "C"
