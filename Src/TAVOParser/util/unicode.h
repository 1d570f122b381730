// UTF-16 to wide text, the conversion behind every stored text.
#pragma once

#include <cstdint>

#include "platform.h"
#include "util/util_common.h"

namespace tavo {

// As TAVO_Utf16ToUtf32, for callers inside the library.
inline uint32_t utf16_to_utf32(const uint16_t* src, uint32_t src_bytes, wchar_t* dst,
                               uint32_t dst_bytes, uint32_t* count) {
  if (src == nullptr || dst == nullptr || count == nullptr) return kFailed;
  uint32_t produced = 0;
  const uint32_t status =
      Convert16To32(src, src_bytes / uint32_t{sizeof(uint16_t)}, reinterpret_cast<uint32_t*>(dst),
                    dst_bytes / uint32_t{sizeof(uint32_t)}, &produced);
  if (status == 0) *count = produced;
  return status;
}

}  // namespace tavo
