// The trace frame that every status-returning export of the service, array, error, token-text,
// record and validation groups opens. While tracing is off, it costs only the two calls into the
// platform.
#pragma once

#include <cstring>
#include <initializer_list>

#include "platform/platform.h"

namespace tavo {

// Function identifiers: three are predefined, the others follow them; none is ever reused.
enum FunctionId : uint32_t {
  kIdParserInit = 0x20801,
  kIdParserService = 0x20802,
  kIdParserTerm = 0x20803,
  kIdSetKeyValuePairW = 0x20804,
  kIdGetKeyIndex = 0x20805,
  kIdReplaceEscapedQuote = 0x20806,
  kIdErrorCaptureEAB = 0x20807,
  kIdErrorCapture = 0x20808,
  kIdTokenCaptureEAB = 0x20809,
  kIdTokenCapture = 0x2080A,
  kIdSetErrMsg = 0x2080B,
  kIdTermErrors = 0x2080C,
  kIdGetErrorCount = 0x2080D,
  kIdGetError = 0x2080E,
  kIdGetFormattedErrorMsg = 0x2080F,
  kIdCnvTokenUtf16ToUtf32 = 0x20810,
  kIdSetTraceLevel = 0x20811,
  kIdProviderValidate = 0x20812,
  kIdGetErrorLocation = 0x20813,
  kIdCnvCtrlBlk = 0x20814,
  kIdCnvFieldDef = 0x20815,
  kIdCnvOprDef = 0x20816,
  kIdCnvSvcDef = 0x20817,
  kIdCleanSvcDefX = 0x20818,
  kIdCleanParamsX = 0x20819,
  kIdCopyPrvStruct = 0x2081A,
};

// A copy of a value for a trace. Names are short constants; values are addresses, numbers and
// constant texts. Text of a statement never reaches a trace, since it may be secret.
struct TraceValue {
  const char* name;
  uint32_t length;  // in bytes
  uint32_t type;    // TraceItemType
  union {
    const void* pointer;
    uint32_t number;
    const char* text;
  };
};

inline TraceValue trace_pointer(const char* name, const void* pointer) {
  return {name, sizeof pointer, kTracePointer, {.pointer = pointer}};
}
inline TraceValue trace_number(const char* name, uint32_t number) {
  return {name, sizeof number, kTraceUnsigned, {.number = number}};
}
inline TraceValue trace_text(const char* name, const char* text) {
  return {name, static_cast<uint32_t>(std::strlen(text)), kTraceText, {.text = text}};
}

// Write trace records. Call only when tracing is on.
[[gnu::noinline]] void record_entry(const TraceFrame& frame, uint32_t line,
                                    std::initializer_list<TraceValue> values);
[[gnu::noinline]] void record_result(const TraceFrame& frame, uint32_t line, uint32_t status);
[[gnu::noinline]] void record_note(const TraceFrame& frame, uint32_t line, const char* text);

// Keeps a frame open. Use it through TAVO_TRACE_FUNCTION. The platform sees only the frame, so the
// compiler can keep the other members in registers.
class Trace {
 public:
#ifdef TAVO_NO_TRACE  // a build that measures what disabled tracing costs
  Trace(TraceFrame& frame, TraceDescriptor&, uint32_t) noexcept
      : frame_(frame), refused_(0), open_(false) {}
#else
  Trace(TraceFrame& frame, TraceDescriptor& descriptor, uint32_t function_id) noexcept
      : frame_(frame) {
    if (__atomic_load_n(&descriptor.marker, __ATOMIC_ACQUIRE) != kTraceResolved) {
      IOQ_TRC_ResFmid(function_id, &descriptor, 0);
    }
    refused_ = KNL_FuncPro(&frame_, &descriptor);
    open_ = refused_ == 0;
  }
#endif
  Trace(const Trace&) = delete;
  Trace& operator=(const Trace&) = delete;
  ~Trace() {
    if (open_) KNL_FuncEpi(&frame_);
  }

  // When non-zero, the function returns it at once.
  uint32_t refused() const {
    return refused_;
  }
  bool on() const {
    return __builtin_expect(frame_.tracing != 0, 0);
  }
  // Call only when tracing is on.
  void entry(uint32_t line, std::initializer_list<TraceValue> values) {
    record_entry(frame_, line, values);
  }
  // Records a constant text that says what went wrong.
  void note(uint32_t line, const char* text) {
    if (on()) record_note(frame_, line, text);
  }
  // Writes the result and exit records; for the function's return statement.
  uint32_t leave(uint32_t line, uint32_t status) {
    if (on()) record_result(frame_, line, status);
    return status;
  }
  // Leaves the frame open, for the one path that skips the epilogue.
  void skip_epilogue() {
    open_ = false;
  }

 private:
  TraceFrame& frame_;
  uint32_t refused_;
  bool open_;
};

}  // namespace tavo

// Opens the frame `trace` of the enclosing function. When the platform refuses, the function
// returns the platform's code, cast to its return type.
#define TAVO_TRACE_FUNCTION(function_id, return_type)                \
  static TraceDescriptor trace_descriptor = {0, 0, 0, __func__, {}}; \
  TraceFrame trace_frame{};                                          \
  ::tavo::Trace trace(trace_frame, trace_descriptor, function_id);   \
  if (trace.refused() != 0) return static_cast<return_type>(trace.refused())
// Evaluates its values only when tracing is on.
#define TAVO_TRACE_ENTRY(...) \
  if (trace.on()) trace.entry(__LINE__, {__VA_ARGS__})
#define TAVO_TRACE_RETURN(status) return trace.leave(__LINE__, status)
