// A program with functions that trace like the library, for the tests of tracing.
//   platform_trace_probe COMMAND...   where a command is call, fail, threads, skip or level=TEXT
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "platform/platform.h"

namespace {

TraceDescriptor g_outer = {0, 0, 0, "Probe_Outer", {}};
TraceDescriptor g_inner = {0, 0, 0, "Probe_Inner", {}};

void record(TraceFrame& frame, uint32_t probe, uint32_t line, std::vector<TraceItem> items = {}) {
  TraceRecord made = {};
  made.probe = probe;
  made.line = line;
  made.frame = &frame;
  made.count = static_cast<uint32_t>(items.size());
  for (size_t i = 0; i < items.size(); ++i) {
    made.items[i] = items[i];
  }
  errno = 42;
  if (KNL_Trace_RecordDiagnostic(&made) != 0) std::puts("record failed");
  if (errno != 42) std::puts("errno changed");
}

TraceItem item(const char* name, uint32_t type, const void* value, uint32_t length = 4) {
  TraceItem made = {};
  std::memcpy(made.name, name, strnlen(name, sizeof made.name));
  made.type = type;
  made.value = value;
  made.length = length;
  return made;
}

void traced(TraceDescriptor& descriptor, uint32_t id, uint32_t result, bool nest, bool skip) {
  TraceFrame frame = {};
  // As the library reads it: the marker is shared among threads.
  if (std::atomic_ref<uint16_t>(descriptor.marker).load(std::memory_order_acquire) !=
      kTraceResolved) {
    IOQ_TRC_ResFmid(id, &descriptor, 0);
  }
  if (KNL_FuncPro(&frame, &descriptor) != 0) return;
  const TraceFrame zero = {};
  const bool untouched = std::memcmp(&frame, &zero, sizeof frame) == 0;
  if (frame.tracing == 0 && !untouched) std::puts("frame touched while off");
  const void* pointer = reinterpret_cast<const void*>(uintptr_t{0x1234});
  const int32_t negative = -7;
  if (frame.tracing != 0) {
    record(frame, kProbeEntry, 10, {item("sixteen_long_nam", kTracePointer, &pointer, 8)});
    if (frame.detail != 0) {
      record(frame, kProbeParameters, 11,
             {item("number", kTraceSigned, &negative), item("null", kTraceUnsigned, nullptr),
              item("text", kTraceText, "a\"b\\\n\xC3", 6), item("odd", 99, &negative)});
    }
  }
  if (nest) traced(g_inner, 0x20802, result, false, skip);
  if (frame.tracing != 0) {
    if (result != 0) record(frame, kProbeExit, 12, {item("result", kTraceUnsigned, &result)});
    record(frame, kProbeExit, 13);
  }
  if (!(skip && !nest)) KNL_FuncEpi(&frame);
}

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string command = argv[i];
    if (command == "call") {
      traced(g_outer, 0x20801, 0, true, false);
    } else if (command == "fail") {
      traced(g_outer, 0x20801, 7148, false, false);
    } else if (command == "skip") {
      traced(g_outer, 0x20801, 0, true, true);
    } else if (command == "threads") {
      std::vector<std::thread> threads;
      for (int k = 0; k < 4; ++k) {
        threads.emplace_back([] {
          for (int n = 0; n < 50; ++n) {
            // Threads that saw no marker yet resolve a descriptor that others trace with.
            IOQ_TRC_ResFmid(0x20801, &g_outer, 0);
            traced(g_outer, 0x20801, 0, true, false);
          }
        });
      }
      for (auto& thread : threads) {
        thread.join();
      }
    } else if (command.rfind("level=", 0) == 0) {
      std::printf("%u\n", TAVOSetTraceLevel(command.c_str() + 6));
    }
  }
  return 0;
}
