#include "records/record_frame.h"

#include <algorithm>
#include <cstring>
#include <mutex>

namespace tavo {
namespace {

std::mutex resolving;

// A result that is not traced.
constexpr uint32_t kQuietResult = 0xFFFFFFFEu;

TraceItem make_item(const char* name, uint32_t length, TraceItemType type, const void* value) {
  TraceItem item{};
  std::memcpy(item.name, name, std::min(std::strlen(name), sizeof item.name));
  item.length = length;
  item.type = type;
  item.value = value;
  return item;
}

}  // namespace

TraceDescriptor* TracedFunction::resolved() {
  if (ready_.load(std::memory_order_acquire)) return &descriptor_;
  const std::lock_guard lock(resolving);
  if (descriptor_.marker != kTraceResolved) IOQ_TRC_ResFmid(id_, &descriptor_, 0);
  ready_.store(descriptor_.marker == kTraceResolved, std::memory_order_release);
  return &descriptor_;
}

RecordFrame::RecordFrame(TracedFunction& function)
    : opened_(KNL_FuncPro(&frame_, function.resolved())) {}

void RecordFrame::record(uint32_t probe, uint32_t line, const TraceItem* items, uint32_t count) {
  TraceRecord record{};
  record.probe = probe;
  record.line = line;
  record.frame = &frame_;
  record.count = count;
  std::copy_n(items, count, record.items);
  KNL_Trace_RecordDiagnostic(&record);
}

void RecordFrame::entry(uint32_t line, const void* first, const void* second) {
  if (frame_.tracing == 0) return;
  const TraceItem items[] = {make_item("first", sizeof first, kTracePointer, &first),
                             make_item("second", sizeof second, kTracePointer, &second)};
  record(kProbeEntry, line, items, 2);
}

uint32_t RecordFrame::close(uint32_t line, uint32_t result) {
  if (frame_.tracing != 0) {
    if (result != 0 && result != kQuietResult) {
      const TraceItem item = make_item("result", sizeof result, kTraceUnsigned, &result);
      record(kProbeExit, line, &item, 1);
    }
    record(kProbeExit, line, nullptr, 0);
  }
  KNL_FuncEpi(&frame_);
  return result;
}

}  // namespace tavo
