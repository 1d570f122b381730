// A test double of the platform functions that the utilities and the record functions call: it
// records calls and fails on demand. Link it instead of the platform libraries.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace util_platform {

struct ConversionCall {
  const void* src;
  int64_t src_units;
  const void* dst;
  uint32_t dst_units;
};

struct TextCall {
  std::wstring text;
  int32_t length;
  uint32_t dst_bytes;
  uint8_t kind;
  uint32_t code_page;
};

struct Double {
  // Conversions.
  uint32_t conversion_status = 0;  // if not 0, conversions fail with it
  std::vector<ConversionCall> conversions;
  std::vector<TextCall> texts;
  uint32_t fail_text_at = 0;  // 1-based number of the text conversion that fails, 0 for none
  uint32_t text_status = 0;   // with this code

  // Tracing.
  bool tracing = false;
  uint32_t fail_frame_at = 0;  // 1-based number of the frame that does not open, 0 for none
  uint32_t frame_status = 0;   // with this code
  uint32_t frames_asked = 0;
  uint32_t frames_open = 0;
  std::vector<uint32_t> function_ids;  // in the order of opening
  std::vector<uint32_t> probes;        // of the records
};

// The program's only instance; reset it at the start of a test.
Double& platform();
void reset();

}  // namespace util_platform
