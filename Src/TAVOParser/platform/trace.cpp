// The work of a trace frame while tracing is on.
#include "platform/trace.h"

#include <cstring>

namespace tavo {

namespace {

TraceItem item_of(const TraceValue& value) {
  TraceItem item{};
  std::memcpy(item.name, value.name, strnlen(value.name, sizeof item.name));
  item.length = value.length;
  item.type = value.type;
  item.value = value.type == kTraceText ? value.text : static_cast<const void*>(&value.number);
  return item;
}

void record(const TraceFrame& frame, uint32_t probe, uint32_t line,
            std::initializer_list<TraceValue> values) {
  TraceRecord record{};
  record.probe = probe;
  record.line = line;
  record.frame = &frame;
  for (const TraceValue& value : values) {
    if (record.count == kTraceItemsMax) break;
    record.items[record.count++] = item_of(value);
  }
  KNL_Trace_RecordDiagnostic(&record);
}

}  // namespace

void record_entry(const TraceFrame& frame, uint32_t line,
                  std::initializer_list<TraceValue> values) {
  record(frame, kProbeEntry, line, values);
  if (frame.detail != 0) record(frame, kProbeParameters, line, values);
}

void record_result(const TraceFrame& frame, uint32_t line, uint32_t status) {
  constexpr uint32_t kNotAResult = 0xFFFFFFFE;
  if (status != 0 && status != kNotAResult) {
    record(frame, kProbeExit, line, {trace_number("result", status)});
  }
  record(frame, kProbeExit, line, {});
}

void record_note(const TraceFrame& frame, uint32_t line, const char* text) {
  record(frame, kProbeExit, line, {trace_text("note", text)});
}

}  // namespace tavo
