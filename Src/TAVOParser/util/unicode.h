// UTF-16 to wide text, the conversion of every stored text.
#pragma once

#include <cstdint>

#include "platform/platform.h"

namespace tavo {

// The work of TAVO_Utf16ToUtf32, with counts in units. No pointer may be null. The platform decides
// what *count is after a failure.
inline uint32_t utf16_to_utf32(const uint16_t* src, uint32_t src_units, wchar_t* dst,
                               uint32_t dst_units, uint32_t* count) {
  return Convert16To32(src, src_units, reinterpret_cast<uint32_t*>(dst), dst_units, count);
}

}  // namespace tavo
