// Tracing: entry, parameter, result and exit records as lines of text.
#include <atomic>

#include "common/platform_status.h"
#include "platform.h"

using namespace tavo::platform;

TAVO_PLATFORM_API uint32_t IOQ_TRC_ResFmid(uint32_t function_id, void* descriptor, uint32_t zero) {
  if (descriptor == nullptr || zero != 0) return kArgumentInvalid;
  // Descriptors are shared: threads may resolve one at the same time.
  auto* resolved = static_cast<TraceDescriptor*>(descriptor);
  std::atomic_ref<uint32_t>(resolved->function_id).store(function_id, std::memory_order_relaxed);
  std::atomic_ref<uint16_t>(resolved->marker).store(kTraceResolved, std::memory_order_release);
  return kOk;
}

TAVO_PLATFORM_API uint32_t KNL_FuncPro(void*, void*) {
  return kOk;
}

TAVO_PLATFORM_API uint32_t KNL_FuncEpi(void*) {
  return kOk;
}

TAVO_PLATFORM_API uint32_t KNL_Trace_RecordDiagnostic(void* record) {
  return record == nullptr ? kArgumentInvalid : kOk;
}

TAVO_PLATFORM_API uint32_t TAVOSetTraceLevel(const char* text) {
  return text == nullptr ? kArgumentInvalid : kOk;
}
