#include "support/util_platform_double.h"

#include <cstring>

#include "platform/platform.h"

namespace util_platform {

Double& platform() {
  static Double instance;
  return instance;
}

void reset() {
  platform() = Double{};
}

}  // namespace util_platform

using util_platform::platform;

extern "C" {

// Only characters below U+10000; all code points are tested with the real platform.
uint32_t Convert16To32(const uint16_t* src, uint32_t src_units, uint32_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  platform().conversions.push_back({src, src_units, dst, dst_units});
  *count = 12345;
  if (platform().conversion_status != 0) return platform().conversion_status;
  if (src_units > dst_units) return 1;
  for (uint32_t i = 0; i < src_units; ++i) {
    dst[i] = src[i];
  }
  *count = src_units;
  return 0;
}

uint32_t Convert32To16(const uint32_t* src, int32_t src_units, uint16_t* dst, uint32_t dst_units,
                       uint32_t* count) {
  platform().conversions.push_back({src, src_units, dst, dst_units});
  *count = 12345;
  if (platform().conversion_status != 0) return platform().conversion_status;
  if (src_units < 0 || static_cast<uint32_t>(src_units) > dst_units) return 1;
  for (int32_t i = 0; i < src_units; ++i) {
    dst[i] = static_cast<uint16_t>(src[i]);
  }
  *count = static_cast<uint32_t>(src_units);
  return 0;
}

// ASCII only; length in bytes of wide text.
uint32_t TAVOCnvWVarcharSzToVarcharSz(const wchar_t* text, int32_t* length, char* dst,
                                      uint32_t dst_bytes, uint32_t* count, const void* descriptor) {
  const auto* page = static_cast<const ConversionDescriptor*>(descriptor);
  platform().texts.push_back({text, *length, dst_bytes, page->kind, page->code_page});
  if (platform().texts.size() == platform().fail_text_at) return platform().text_status;
  uint32_t written = 0;
  for (; text[written] != L'\0'; ++written) {
    if (written + 1 >= dst_bytes) return 2;
    dst[written] = static_cast<char>(text[written]);
  }
  if (written >= dst_bytes) return 2;
  dst[written] = '\0';
  *count = written;
  return 0;
}

uint32_t IOQ_TRC_ResFmid(uint32_t function_id, void* descriptor, uint32_t) {
  auto* described = static_cast<TraceDescriptor*>(descriptor);
  described->function_id = function_id;
  described->marker = kTraceResolved;
  return 0;
}

uint32_t KNL_FuncPro(void* frame, void* descriptor) {
  ++platform().frames_asked;
  if (platform().frames_asked == platform().fail_frame_at) return platform().frame_status;
  auto* opened = static_cast<TraceFrame*>(frame);
  opened->tracing = platform().tracing ? 1 : 0;
  opened->descriptor = static_cast<TraceDescriptor*>(descriptor);
  platform().function_ids.push_back(opened->descriptor->function_id);
  ++platform().frames_open;
  return 0;
}

uint32_t KNL_FuncEpi(void*) {
  --platform().frames_open;
  return 0;
}

uint32_t KNL_Trace_RecordDiagnostic(void* record) {
  platform().probes.push_back(static_cast<TraceRecord*>(record)->probe);
  return 0;
}

}  // extern "C"
