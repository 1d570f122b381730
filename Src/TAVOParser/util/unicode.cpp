// UTF-16 and UTF-32: callers pass lengths in bytes, the suite's data conversion counts units.
#include "util/unicode.h"

#include "TAVOText.h"
#include "platform/platform.h"
#include "util/util_common.h"

namespace {

constexpr uint32_t kUtf16Bytes = 2;
constexpr uint32_t kUtf32Bytes = 4;

}  // namespace

extern "C" {

uint32_t TAVO_Utf16ToUtf32(const uint16_t* src, uint32_t srcBytes, wchar_t* dst, uint32_t dstBytes,
                           uint32_t* count) noexcept {
  if (src == nullptr || dst == nullptr || count == nullptr) return tavo::kFailed;
  uint32_t produced = 0;
  const uint32_t status =
      tavo::utf16_to_utf32(src, srcBytes / kUtf16Bytes, dst, dstBytes / kUtf32Bytes, &produced);
  if (status == 0) *count = produced;
  return status;
}

uint32_t TAVO_Utf32ToUtf16(const wchar_t* src, int32_t srcBytes, uint16_t* dst, uint32_t dstBytes,
                           uint32_t* count) noexcept {
  if (src == nullptr || dst == nullptr || count == nullptr) return tavo::kFailed;
  uint32_t produced = 0;
  // Deliberate: the source length is divided as a signed number, so that the data conversion sees a
  // negative length as negative.
  const int32_t units = srcBytes / static_cast<int32_t>(kUtf32Bytes);
  const uint32_t status = Convert32To16(reinterpret_cast<const uint32_t*>(src), units, dst,
                                        dstBytes / kUtf16Bytes, &produced);
  if (status == 0) *count = produced;
  return status;
}

}  // extern "C"
