#include "support/fronting_platform.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>

#include "platform/platform.h"

namespace front {
namespace {

struct Failure {
  std::string function;
  uint32_t nth;
  uint32_t code;
};

struct State {
  std::mutex mutex;
  Platform platform;
  std::vector<Failure> failures;
  std::map<std::string, uint32_t> counts;
  bool watched = true;
};

State& state() {
  static State* const s = new State;  // outlives every thread
  return *s;
}

bool is_tracing(const char* function) {
  return std::strncmp(function, "KNL_", 4) == 0 || std::strncmp(function, "IOQ_", 4) == 0;
}

template <typename Function>
Function* next_definition(const char* name) {
  void* found = dlsym(RTLD_NEXT, name);
  if (found == nullptr) {
    std::fprintf(stderr, "no platform function %s\n", name);
    std::abort();
  }
  return reinterpret_cast<Function*>(found);
}

// Records a call. Returns the code with which it must fail, or 0.
uint32_t enter(const char* function) {
  State& s = state();
  if (!s.watched) return 0;
  const std::lock_guard guard(s.mutex);
  const uint32_t nth = ++s.counts[function];
  if (!is_tracing(function)) s.platform.calls.emplace_back(function);
  for (const Failure& failure : s.failures) {
    if (failure.function == function && (failure.nth == 0 || failure.nth == nth)) {
      return failure.code;
    }
  }
  return 0;
}

void note_pointer(const void* pointer) {
  State& s = state();
  if (!s.watched) return;
  const std::lock_guard guard(s.mutex);
  s.platform.pointers.push_back(reinterpret_cast<uintptr_t>(pointer));
}

void note_conversion(const char* function, std::string text, int32_t length, uint32_t dst_bytes,
                     const void* descriptor) {
  State& s = state();
  if (!s.watched) return;
  const std::lock_guard guard(s.mutex);
  const auto* d = static_cast<const ConversionDescriptor*>(descriptor);
  s.platform.conversions.push_back({function, std::move(text), length, dst_bytes,
                                    d == nullptr ? uint8_t{0} : d->kind,
                                    d == nullptr ? 0 : d->code_page, 0});
}

// Of the conversion that was noted last.
uint32_t note_result(uint32_t result) {
  State& s = state();
  if (!s.watched) return result;
  const std::lock_guard guard(s.mutex);
  s.platform.conversions.back().result = result;
  return result;
}

void note_retrieval(const char* function, std::vector<const void*> arguments) {
  State& s = state();
  if (!s.watched) return;
  const std::lock_guard guard(s.mutex);
  s.platform.retrievals.push_back({function, std::move(arguments)});
}

void note_record(const TraceRecord& from) {
  Record record{from.probe, from.line, from.frame->descriptor->function_id, {}, {}, {}, {}};
  for (uint32_t i = 0; i < from.count; ++i) {
    const TraceItem& item = from.items[i];
    record.names.emplace_back(item.name, strnlen(item.name, sizeof item.name));
    record.types.push_back(item.type);
    uint64_t value = 0;
    if (item.type != kTraceText) std::memcpy(&value, item.value, item.length);
    record.values.push_back(value);
    record.texts.emplace_back(item.type == kTraceText ? static_cast<const char*>(item.value) : "",
                              item.type == kTraceText ? item.length : 0);
  }
  State& s = state();
  if (!s.watched) return;
  const std::lock_guard guard(s.mutex);
  s.platform.records.push_back(std::move(record));
}

}  // namespace

Platform& platform() {
  return state().platform;
}

void reset() {
  State& s = state();
  const std::lock_guard guard(s.mutex);
  s.platform = {};
  s.failures.clear();
  s.counts.clear();
  s.watched = true;
}

void watch(bool on) {
  state().watched = on;
}

void fail(const std::string& function, uint32_t nth, uint32_t code) {
  State& s = state();
  const std::lock_guard guard(s.mutex);
  s.failures.push_back({function, nth == 0 ? 0 : nth + s.counts[function], code});
}

uint32_t count(const std::string& function) {
  State& s = state();
  const std::lock_guard guard(s.mutex);
  return s.counts[function];
}

}  // namespace front

using front::enter;
using front::next_definition;
using front::note_conversion;
using front::note_pointer;
using front::note_result;
using front::note_retrieval;

// Returns the requested failure, or calls the real platform.
#define FRONT(function, ...)                                                   \
  static const auto original = next_definition<decltype(function)>(#function); \
  if (const uint32_t code = enter(#function); code != 0) return code;          \
  return original(__VA_ARGS__)

// The same for a conversion that was noted.
#define FRONT_NOTED(function, ...)                                                 \
  static const auto original = next_definition<decltype(function)>(#function);     \
  if (const uint32_t code = enter(#function); code != 0) return note_result(code); \
  return note_result(original(__VA_ARGS__))

extern "C" {

uint32_t MutexCreate(void** mutex) {
  FRONT(MutexCreate, mutex);
}
uint32_t MutexDestroy(void* mutex) {
  note_pointer(mutex);
  FRONT(MutexDestroy, mutex);
}
uint32_t MutexLock(void* mutex, uint32_t zero) {
  note_pointer(mutex);
  FRONT(MutexLock, mutex, zero);
}
uint32_t MutexUnLock(void* mutex) {
  note_pointer(mutex);
  FRONT(MutexUnLock, mutex);
}
uint32_t LockedIncrement(int32_t* count, void* mutex) {
  FRONT(LockedIncrement, count, mutex);
}

uint32_t IOQ_TRC_ResFmid(uint32_t function_id, void* descriptor, uint32_t zero) {
  auto& s = front::state();
  if (s.watched) {
    const std::lock_guard guard(s.mutex);
    s.platform.resolved.push_back(function_id);
  }
  FRONT(IOQ_TRC_ResFmid, function_id, descriptor, zero);
}
uint32_t KNL_FuncPro(void* frame, void* descriptor) {
  static const auto original = next_definition<decltype(KNL_FuncPro)>("KNL_FuncPro");
  auto& s = front::state();
  if (s.watched) ++s.platform.frames_asked;
  if (const uint32_t code = enter("KNL_FuncPro"); code != 0) return code;
  const uint32_t status = original(frame, descriptor);
  if (status != 0 || !s.watched) return status;
  auto* opened = static_cast<TraceFrame*>(frame);
  opened->descriptor = static_cast<TraceDescriptor*>(descriptor);
  opened->tracing = s.platform.tracing ? 1 : 0;
  opened->detail = s.platform.detail ? 1 : 0;
  const std::lock_guard guard(s.mutex);
  s.platform.opened.push_back(opened->descriptor->function_id);
  ++s.platform.open_frames;
  return 0;
}
uint32_t KNL_FuncEpi(void* frame) {
  auto& s = front::state();
  if (s.watched) --s.platform.open_frames;
  FRONT(KNL_FuncEpi, frame);
}
// Records end here: the tests read them, and the real platform writes no trace.
uint32_t KNL_Trace_RecordDiagnostic(void* record) {
  if (const uint32_t code = enter("KNL_Trace_RecordDiagnostic"); code != 0) return code;
  front::note_record(*static_cast<const TraceRecord*>(record));
  return 0;
}
uint32_t TAVOSetTraceLevel(const char* text) {
  auto& s = front::state();
  if (s.watched) s.platform.trace_levels.emplace_back(text);
  FRONT(TAVOSetTraceLevel, text);
}

uint32_t TAVOGetThreadBlock(void** block) {
  static const auto original = next_definition<decltype(TAVOGetThreadBlock)>("TAVOGetThreadBlock");
  const uint32_t code = enter("TAVOGetThreadBlock");
  return code == front::kNoBlock ? 0 : code != 0 ? code : original(block);
}
uint32_t TAVOCleanThreadBlock(void* (*callback)(uint64_t, void*, void*)) {
  FRONT(TAVOCleanThreadBlock, callback);
}
uint32_t GetErrorCount(void* errors, void* a, void* b) {
  note_retrieval("GetErrorCount", {errors, a, b});
  FRONT(GetErrorCount, errors, a, b);
}
uint32_t GetError(void* errors, void* request) {
  note_retrieval("GetError", {errors, request});
  FRONT(GetError, errors, request);
}
uint32_t GetFormattedErrorMsg(void* request) {
  note_retrieval("GetFormattedErrorMsg", {request});
  FRONT(GetFormattedErrorMsg, request);
}

uint32_t TAVOInitDataConversion(void) {
  FRONT(TAVOInitDataConversion);
}
uint32_t TAVOTermDataConversion(void) {
  FRONT(TAVOTermDataConversion);
}
uint32_t TAVOCnvCharToWVarcharSz(const char* text, int32_t* length, wchar_t* dst,
                                 uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  note_conversion("TAVOCnvCharToWVarcharSz", std::string(text, static_cast<size_t>(*length)),
                  *length, dst_bytes, descriptor);
  FRONT_NOTED(TAVOCnvCharToWVarcharSz, text, length, dst, dst_bytes, count, descriptor);
}
uint32_t TAVOCnvVarcharToWVarcharSz(const void* text, int32_t* length, wchar_t* dst,
                                    uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  note_conversion("TAVOCnvVarcharToWVarcharSz", "", *length, dst_bytes, descriptor);
  FRONT_NOTED(TAVOCnvVarcharToWVarcharSz, text, length, dst, dst_bytes, count, descriptor);
}
uint32_t TAVOCnvVarcharSzToWVarcharSz(const char* text, int32_t* length, wchar_t* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  note_conversion("TAVOCnvVarcharSzToWVarcharSz", text, *length, dst_bytes, descriptor);
  FRONT_NOTED(TAVOCnvVarcharSzToWVarcharSz, text, length, dst, dst_bytes, count, descriptor);
}
uint32_t TAVOCnvWCharToWVarcharSz(const wchar_t* text, int32_t* length, wchar_t* dst,
                                  uint32_t dst_bytes, uint32_t* count) {
  FRONT(TAVOCnvWCharToWVarcharSz, text, length, dst, dst_bytes, count);
}
uint32_t TAVOCnvWVarcharToWVarcharSz(const void* text, int32_t* length, wchar_t* dst,
                                     uint32_t dst_bytes, uint32_t* count) {
  FRONT(TAVOCnvWVarcharToWVarcharSz, text, length, dst, dst_bytes, count);
}
uint32_t TAVOCnvIntToWVarcharSz1(const int32_t* number, wchar_t* dst, uint32_t dst_bytes,
                                 uint32_t* count) {
  FRONT(TAVOCnvIntToWVarcharSz1, number, dst, dst_bytes, count);
}
uint32_t TAVOCnvUIntToWVarcharSz(const uint32_t* number, wchar_t* dst, uint32_t dst_bytes,
                                 uint32_t* count) {
  FRONT(TAVOCnvUIntToWVarcharSz, number, dst, dst_bytes, count);
}
uint32_t TAVOCnvSmallIntToWVarcharSz(const int16_t* number, wchar_t* dst, uint32_t dst_bytes,
                                     uint32_t* count) {
  FRONT(TAVOCnvSmallIntToWVarcharSz, number, dst, dst_bytes, count);
}
uint32_t TAVOCnvSmallUIntToWVarcharSz(const uint16_t* number, wchar_t* dst, uint32_t dst_bytes,
                                      uint32_t* count) {
  FRONT(TAVOCnvSmallUIntToWVarcharSz, number, dst, dst_bytes, count);
}
uint32_t TAVOGetStringFromTS(const void* value, int16_t data_type, wchar_t* dst, uint32_t dst_bytes,
                             uint32_t* count) {
  FRONT(TAVOGetStringFromTS, value, data_type, dst, dst_bytes, count);
}
uint32_t TAVOCnvWVarcharSzToInt(const wchar_t* text, int32_t* number) {
  FRONT(TAVOCnvWVarcharSzToInt, text, number);
}
uint32_t TAVOCnvWVarcharSzToLongLong(const wchar_t* text, int64_t* number) {
  FRONT(TAVOCnvWVarcharSzToLongLong, text, number);
}
uint32_t TAVOCnvWVarcharSzToUInt(const wchar_t* text, uint32_t* number) {
  FRONT(TAVOCnvWVarcharSzToUInt, text, number);
}
uint32_t TAVOCnvWVarcharSzToVarcharSz(const wchar_t* text, int32_t* length, char* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  FRONT(TAVOCnvWVarcharSzToVarcharSz, text, length, dst, dst_bytes, count, descriptor);
}
uint32_t Convert16To8(char* dst, uint32_t dst_size, const uint16_t* src, uint32_t src_units,
                      uint32_t* produced) {
  FRONT(Convert16To8, dst, dst_size, src, src_units, produced);
}
uint32_t Convert16To32(const uint16_t* src, uint32_t src_units, uint32_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  FRONT(Convert16To32, src, src_units, dst, dst_units, count);
}
uint32_t Convert32To16(const uint32_t* src, int32_t src_units, uint16_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  FRONT(Convert32To16, src, src_units, dst, dst_units, count);
}

}  // extern "C"

const std::vector<std::string>& front::functions() {
  static const std::vector<std::string> names = {"MutexCreate",
                                                 "MutexDestroy",
                                                 "MutexLock",
                                                 "MutexUnLock",
                                                 "LockedIncrement",
                                                 "IOQ_TRC_ResFmid",
                                                 "KNL_FuncPro",
                                                 "KNL_FuncEpi",
                                                 "KNL_Trace_RecordDiagnostic",
                                                 "TAVOSetTraceLevel",
                                                 "TAVOGetThreadBlock",
                                                 "TAVOCleanThreadBlock",
                                                 "GetErrorCount",
                                                 "GetError",
                                                 "GetFormattedErrorMsg",
                                                 "TAVOInitDataConversion",
                                                 "TAVOTermDataConversion",
                                                 "TAVOCnvCharToWVarcharSz",
                                                 "TAVOCnvVarcharToWVarcharSz",
                                                 "TAVOCnvVarcharSzToWVarcharSz",
                                                 "TAVOCnvWCharToWVarcharSz",
                                                 "TAVOCnvWVarcharToWVarcharSz",
                                                 "TAVOCnvIntToWVarcharSz1",
                                                 "TAVOCnvUIntToWVarcharSz",
                                                 "TAVOCnvSmallIntToWVarcharSz",
                                                 "TAVOCnvSmallUIntToWVarcharSz",
                                                 "TAVOGetStringFromTS",
                                                 "TAVOCnvWVarcharSzToInt",
                                                 "TAVOCnvWVarcharSzToLongLong",
                                                 "TAVOCnvWVarcharSzToUInt",
                                                 "TAVOCnvWVarcharSzToVarcharSz",
                                                 "Convert16To8",
                                                 "Convert16To32",
                                                 "Convert32To16"};
  return names;
}
