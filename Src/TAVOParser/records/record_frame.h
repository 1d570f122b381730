// The trace frame of the record functions: open while the object lives.
#pragma once

#include <atomic>
#include <cstdint>

#include "platform.h"

namespace tavo {

// What a function is known by to the trace facility; one static object for each function.
class TracedFunction {
 public:
  constexpr TracedFunction(uint32_t id, const char* name) : descriptor_{}, id_(id) {
    descriptor_.name = name;
  }
  // Resolves the descriptor unless that was done before.
  TraceDescriptor* resolved();

 private:
  TraceDescriptor descriptor_;
  uint32_t id_;
  std::atomic<bool> ready_{false};
};

// Numbers of the record functions; never reused.
enum RecordFunctionId : uint32_t {
  kIdCnvCtrlBlk = 0x20820,
  kIdCnvFieldDef = 0x20821,
  kIdCnvOprDef = 0x20822,
  kIdCnvSvcDef = 0x20823,
  kIdCleanSvcDef = 0x20824,
  kIdCleanParams = 0x20825,
  kIdCopyPrvStruct = 0x20826,
};

// Opens the frame, runs body and closes the frame with its result on every path. A frame that does
// not open is the result, and body does not run.
class RecordFrame {
 public:
  explicit RecordFrame(TracedFunction& function);
  RecordFrame(const RecordFrame&) = delete;
  RecordFrame& operator=(const RecordFrame&) = delete;

  uint32_t opened() const {
    return opened_;
  }
  void entry(uint32_t line, const void* first, const void* second);
  // Writes the result and the exit record and closes the frame. Returns the result.
  uint32_t close(uint32_t line, uint32_t result);

 private:
  void record(uint32_t probe, uint32_t line, const TraceItem* items, uint32_t count);

  TraceFrame frame_{};
  uint32_t opened_;
};

template <typename Body>
uint32_t traced(TracedFunction& function, uint32_t line, const void* first, const void* second,
                const Body& body) {
  RecordFrame frame(function);
  if (frame.opened() != 0) return frame.opened();
  frame.entry(line, first, second);
  return frame.close(line, body());
}

}  // namespace tavo
