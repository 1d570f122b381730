#include "trace_line.h"

#include <time.h>
#include <unistd.h>

#include <cinttypes>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace tavo::platform {

uint64_t monotonic_ns() noexcept {
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<uint64_t>(now.tv_sec) * 1'000'000'000U + static_cast<uint64_t>(now.tv_nsec);
}

void TraceLine::add(const char* format, ...) noexcept {
  if (cut_) return;
  const size_t room = kSize - kTail - used_;
  va_list arguments;
  va_start(arguments, format);
  const int needed = std::vsnprintf(text_ + used_, room, format, arguments);
  va_end(arguments);
  if (needed < 0 || static_cast<size_t>(needed) >= room) {
    cut_ = true;
  } else {
    used_ += static_cast<size_t>(needed);
  }
}

void TraceLine::add_quoted(const char* text, size_t bytes) noexcept {
  add("\"");
  for (size_t i = 0; i < bytes && !cut_; ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c == '"' || c == '\\') {
      add("\\%c", c);
    } else if (c >= 0x20 && c < 0x7F) {
      add("%c", c);
    } else {
      add("\\x%02X", c);
    }
  }
  add("\"");
}

void TraceLine::finish() noexcept {
  const char* const end = cut_ ? " ...\n" : "\n";
  const size_t length = std::strlen(end);
  std::memcpy(text_ + used_, end, length);
  used_ += length;
}

namespace {

const char* probe_name(const TraceRecord& record) noexcept {
  switch (record.probe) {
    case kProbeEntry: return "entry";
    case kProbeParameters: return "parameters";
    case kProbeExit: return record.count != 0 ? "result" : "exit";
    default: return "other";
  }
}

void add_time(TraceLine& line) noexcept {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  tm utc;
  gmtime_r(&now.tv_sec, &utc);
  line.add("time=%04d-%02d-%02dT%02d:%02d:%02d.%06ldZ", utc.tm_year + 1900, utc.tm_mon + 1,
           utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec, now.tv_nsec / 1000);
}

template <typename Value>
Value read(const void* address) noexcept {
  Value value;
  std::memcpy(&value, address, sizeof value);
  return value;
}

void add_item(const TraceItem& item, TraceLine& line) noexcept {
  line.add(" %.*s=", static_cast<int>(strnlen(item.name, sizeof item.name)), item.name);
  if (item.value == nullptr) {
    line.add("null");
    return;
  }
  switch (item.type) {
    case kTracePointer: line.add("0x%" PRIxPTR, read<uintptr_t>(item.value)); return;
    case kTraceUnsigned: line.add("%" PRIu32, read<uint32_t>(item.value)); return;
    case kTraceSigned: line.add("%" PRId32, read<int32_t>(item.value)); return;
    case kTraceText: line.add_quoted(static_cast<const char*>(item.value), item.length); return;
    default: line.add("?"); return;
  }
}

}  // namespace

void format_record(const TraceRecord& record, TraceLine& line) noexcept {
  const TraceFrame* const frame = record.frame;
  const TraceDescriptor* const descriptor = frame == nullptr ? nullptr : frame->descriptor;
  add_time(line);
  line.add(" tid=%d", static_cast<int>(gettid()));
  if (descriptor != nullptr) {
    const auto data = read<FrameData>(frame->platform);
    // Another thread may be resolving the descriptor.
    const uint32_t id = __atomic_load_n(&descriptor->function_id, __ATOMIC_RELAXED);
    line.add(" depth=%" PRIu32 " fn=%s id=0x%" PRIx32, data.depth,
             descriptor->name == nullptr ? "?" : descriptor->name, id);
  } else {
    line.add(" depth=0 fn=? id=0x0");
  }
  line.add(" probe=%s line=%" PRIu32, probe_name(record), record.line);
  if (record.probe == kProbeExit && record.count == 0 && descriptor != nullptr) {
    const auto data = read<FrameData>(frame->platform);
    line.add(" us=%" PRIu64, (monotonic_ns() - data.start_ns) / 1000);
  }
  const uint32_t count = record.count < kTraceItemsMax ? record.count : kTraceItemsMax;
  if (count != 0) line.add(" |");
  for (uint32_t i = 0; i < count; ++i) {
    add_item(record.items[i], line);
  }
  line.finish();
}

}  // namespace tavo::platform
