// Locking and tracing of the demonstration platform. A handle is the address of a mutex, and one
// that the parser leaves is leaked; the trace is one line per record.
#include <strings.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>

#include "demo_status.h"
#include "platform/platform.h"

namespace {

using Mutex = std::recursive_mutex;

enum TraceLevel : int { kNoLevel = -1, kOff, kErrors, kCalls, kDetail };

int read_level(const char* text) {
  constexpr const char* kNames[] = {"OFF", "ERROR", "CALLS", "DETAIL"};
  for (int level = kOff; level <= kDetail; ++level) {
    const char digit[] = {static_cast<char>('0' + level), '\0'};
    if (strcasecmp(text, kNames[level]) == 0 || std::strcmp(text, digit) == 0) return level;
  }
  return kNoLevel;
}

// The level that the environment configures.
int configured_level() {
  static const int configured = [] {
    const char* text = secure_getenv("TAVO_TRACE");
    const int level = text == nullptr ? kOff : read_level(text);
    return level == kNoLevel ? kOff : level;
  }();
  return configured;
}

std::atomic<int> g_level{configured_level()};

FILE* trace_file() {
  static FILE* const file = [] {
    const char* name = secure_getenv("TAVO_TRACE_FILE");
    FILE* opened = name == nullptr ? nullptr : std::fopen(name, "ae");
    return opened == nullptr ? stderr : opened;
  }();
  return file;
}

// The lowest level at which a record is written. An exit record with items is a result.
int level_of(const TraceRecord& record) {
  if (record.probe == kProbeEntry) return kCalls;
  if (record.probe == kProbeParameters) return kDetail;
  return record.count != 0 ? kErrors : kCalls;
}

void write_item(FILE* file, const TraceItem& item) {
  std::fprintf(file, " %.*s=", static_cast<int>(sizeof item.name), item.name);
  if (item.type == kTraceText) {
    std::fprintf(file, "%.*s", static_cast<int>(item.length), static_cast<const char*>(item.value));
  } else if (item.type == kTracePointer) {
    void* pointer = nullptr;
    std::memcpy(&pointer, item.value, sizeof pointer);
    std::fprintf(file, "%p", pointer);
  } else {
    uint32_t number = 0;
    std::memcpy(&number, item.value, sizeof number);
    std::fprintf(file, item.type == kTraceSigned ? "%d" : "%u", number);
  }
}

}  // namespace

extern "C" {

uint32_t MutexCreate(void** mutex) {
  *mutex = new (std::nothrow) Mutex;
  return *mutex == nullptr ? kRefused : 0;
}
uint32_t MutexDestroy(void* mutex) {
  delete static_cast<Mutex*>(mutex);
  return mutex == nullptr ? kRefused : 0;
}
uint32_t MutexLock(void* mutex, uint32_t) {
  if (mutex != nullptr) static_cast<Mutex*>(mutex)->lock();
  return 0;
}
uint32_t MutexUnLock(void* mutex) {
  if (mutex != nullptr) static_cast<Mutex*>(mutex)->unlock();
  return 0;
}
uint32_t LockedIncrement(int32_t* count, void* mutex) {
  if (mutex != nullptr) static_cast<Mutex*>(mutex)->lock();
  std::atomic_ref<int32_t>(*count).fetch_add(1);
  if (mutex != nullptr) static_cast<Mutex*>(mutex)->unlock();
  return 0;
}

// Threads share descriptors, and may resolve one at the same time.
uint32_t IOQ_TRC_ResFmid(uint32_t function_id, void* descriptor, uint32_t) {
  auto* resolved = static_cast<TraceDescriptor*>(descriptor);
  std::atomic_ref<uint32_t>(resolved->function_id).store(function_id);
  std::atomic_ref<uint16_t>(resolved->marker).store(kTraceResolved);
  return 0;
}
uint32_t KNL_FuncPro(void* frame, void* descriptor) {
  const int level = g_level.load(std::memory_order_relaxed);
  if (level == kOff) return 0;
  auto* opened = static_cast<TraceFrame*>(frame);
  opened->descriptor = static_cast<TraceDescriptor*>(descriptor);
  opened->tracing = 1;
  opened->detail = level == kDetail ? 1 : 0;
  return 0;
}
uint32_t KNL_FuncEpi(void*) {
  return 0;
}
uint32_t KNL_Trace_RecordDiagnostic(void* record) {
  const auto& given = *static_cast<const TraceRecord*>(record);
  if (g_level.load(std::memory_order_relaxed) < level_of(given)) return 0;
  const int caller_errno = errno;
  FILE* const file = trace_file();
  flockfile(file);
  std::fprintf(file, "%s probe=%08X line=%u", given.frame->descriptor->name, given.probe,
               given.line);
  for (uint32_t i = 0; i < given.count; ++i) write_item(file, given.items[i]);
  std::fputc('\n', file);
  const bool written = std::fflush(file) == 0;
  funlockfile(file);
  errno = caller_errno;
  return written ? 0 : kRefused;
}
uint32_t TAVOSetTraceLevel(const char* text) {
  // The trace-level statement passes its own keyword.
  const int level = strcasecmp(text, "TRCLEVEL") == 0 ? configured_level() : read_level(text);
  if (level == kNoLevel) return kRefused;
  g_level.store(level, std::memory_order_relaxed);
  return 0;
}

}  // extern "C"
