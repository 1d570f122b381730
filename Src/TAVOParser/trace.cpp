// What a trace frame does while tracing is on.
#include "trace.h"

#include <cstring>

namespace tavo {

TraceItem trace_item(const char* name, uint32_t length, uint32_t type, const void* value) {
  TraceItem item{};
  std::memcpy(item.name, name, strnlen(name, sizeof item.name));
  item.length = length;
  item.type = type;
  item.value = value;
  return item;
}

void Trace::entry(uint32_t line, std::initializer_list<TraceItem> items) {
  record(kProbeEntry, line, items);
  if (frame_.detail != 0) record(kProbeParameters, line, items);
}

void Trace::record_result(uint32_t line, uint32_t status) {
  constexpr uint32_t kNotAResult = 0xFFFFFFFE;
  if (status != 0 && status != kNotAResult) {
    record(kProbeExit, line, {trace_number("result", status)});
  }
  record(kProbeExit, line, {});
}

void Trace::record(uint32_t probe, uint32_t line, std::initializer_list<TraceItem> items) {
  TraceRecord record{};
  record.probe = probe;
  record.line = line;
  record.frame = &frame_;
  for (const TraceItem& item : items) {
    if (record.count == kTraceItemsMax) break;
    record.items[record.count++] = item;
  }
  KNL_Trace_RecordDiagnostic(&record);
}

}  // namespace tavo
