// A platform of its own for demonstration: one thread's worth of locking, tracing that is always
// off, UTF-8 only, messages without texts. Each of the five libraries compiles one part.
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <mutex>

#include "TAVOErrorHandler.h"
#include "platform.h"

namespace {
[[maybe_unused]] constexpr uint32_t kRefused = 9001;  // the one failure of this platform
}

extern "C" {

#ifdef DEMO_TAVOOSLibUnix

uint32_t MutexCreate(void** mutex) {
  *mutex = new (std::nothrow) std::recursive_mutex;
  return *mutex == nullptr ? kRefused : 0;
}
uint32_t MutexDestroy(void* mutex) {
  delete static_cast<std::recursive_mutex*>(mutex);
  return 0;
}
uint32_t MutexLock(void* mutex, uint32_t) {
  if (mutex != nullptr) static_cast<std::recursive_mutex*>(mutex)->lock();
  return 0;
}
uint32_t MutexUnLock(void* mutex) {
  if (mutex != nullptr) static_cast<std::recursive_mutex*>(mutex)->unlock();
  return 0;
}
uint32_t LockedIncrement(int32_t* count, void*) {
  std::atomic_ref<int32_t>(*count).fetch_add(1);
  return 0;
}
uint32_t IOQ_TRC_ResFmid(uint32_t function_id, void* descriptor, uint32_t) {
  auto* resolved = static_cast<TraceDescriptor*>(descriptor);
  std::atomic_ref<uint32_t>(resolved->function_id).store(function_id);
  std::atomic_ref<uint16_t>(resolved->marker).store(kTraceResolved);
  return 0;
}
uint32_t KNL_FuncPro(void*, void*) {
  return 0;
}
uint32_t KNL_FuncEpi(void*) {
  return 0;
}
uint32_t KNL_Trace_RecordDiagnostic(void*) {
  return 0;
}
uint32_t TAVOSetTraceLevel(const char* text) {
  return text[0] == '\0' ? kRefused : 0;
}

#endif
#ifdef DEMO_TAVOErrorHandler

thread_local void* t_block[8];

uint32_t TAVOGetThreadBlock(void** block) {
  *block = t_block;
  return 0;
}
#ifndef DEMO_LACKS_CLEAN
// Knows the calling thread's block only.
uint32_t TAVOCleanThreadBlock(void* (*callback)(uint64_t, void*, void*)) {
  callback(kReasonCleanUp, nullptr, t_block);
  return 0;
}
#endif
uint32_t GetErrorCount(void* state, void* a, void*) {
  *static_cast<uint32_t*>(a) = static_cast<ErrorState*>(state)->blocks;
  return 0;
}
uint32_t GetError(void* state, void* request) {
  auto* error = static_cast<TAVOErrorRequest*>(request);
  const ErrorBlock* block = static_cast<ErrorState*>(state)->first;
  for (uint32_t i = 0; block != nullptr && i < error->index; ++i) {
    block = block->next;
  }
  if (block == nullptr) return kRefused;
  error->block = block;
  error->messageId = block->messageId;
  error->auxiliary = block->auxiliary;
  error->slots = block->slots;
  return 0;
}
uint32_t GetFormattedErrorMsg(void* request) {
  auto* message = static_cast<TAVOMessageRequest*>(request);
  const uint32_t id = message->block != nullptr ? message->block->messageId : message->messageId;
  wchar_t text[24];
  const int chars = std::swprintf(text, 24, L"Message %u", id);
  message->neededBytes = (static_cast<uint32_t>(chars) + 1) * 4;
  if (message->text == nullptr) return 0;
  if (message->textBytes < message->neededBytes) return kRefused;
  std::wmemcpy(message->text, text, static_cast<size_t>(chars) + 1);
  return 0;
}

#endif
#ifdef DEMO_TAVOEnvLib

uint32_t TAVOEnvGetSetting(const char*, char*, uint32_t, uint32_t*) {
  return kRefused;  // has no settings
}

#endif
#ifdef DEMO_TAVOProvider

const char* TAVOProviderName(void) {
  return "demonstration";
}

#endif
}  // extern "C"

#ifdef DEMO_TAVODataCnvLib
#include "demo_conversion.h"
#endif
