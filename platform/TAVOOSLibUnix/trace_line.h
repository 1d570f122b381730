// A trace record as one line of text.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/platform.h"

namespace tavo::platform {

// The data that KNL_FuncPro keeps in a frame's platform bytes.
struct FrameData {
  uint64_t start_ns;  // monotonic clock
  uint32_t depth;     // frames around this one, on this thread
};
static_assert(sizeof(FrameData) <= sizeof(TraceFrame::platform));

uint64_t monotonic_ns() noexcept;

// A line under construction. Text that does not fit is left out, and the line ends in " ...".
class TraceLine {
 public:
  void add(const char* format, ...) noexcept __attribute__((format(printf, 2, 3)));
  void add_quoted(const char* text, size_t bytes) noexcept;
  void finish() noexcept;  // adds the end of line
  const char* text() const noexcept {
    return text_;
  }
  size_t bytes() const noexcept {
    return used_;
  }

 private:
  static constexpr size_t kSize = 2048;  // below the size that a pipe writes atomically
  static constexpr size_t kTail = 8;     // reserved for the end
  char text_[kSize];
  size_t used_ = 0;
  bool cut_ = false;
};

void format_record(const TraceRecord& record, TraceLine& line) noexcept;

}  // namespace tavo::platform
