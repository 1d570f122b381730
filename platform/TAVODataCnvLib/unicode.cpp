// UTF-16 to UTF-32 and back, and UTF-16 to 8-bit text in the default code page, UTF-8. Plain loops,
// since the parser calls them for every text and every stored pair.
#include "unicode.h"

#include "common/platform_status.h"
#include "platform/platform.h"

using namespace tavo::platform;

namespace {

constexpr uint32_t kFarFromSurrogates = 0x8000;

// After a failure the text is empty, and terminated when there is space.
template <typename Unit>
uint32_t fail(uint32_t status, Unit* dst, uint32_t dst_units) noexcept {
  if (dst != nullptr && dst_units != 0) dst[0] = 0;
  return status;
}

template <typename Unit>
uint32_t finish(Unit* dst, uint32_t written, uint32_t dst_units, uint32_t* count) noexcept {
  if (written < dst_units) dst[written] = 0;
  *count = written;
  return kOk;
}

// A null text is accepted when its length is 0, and so is a null buffer.
[[gnu::cold]] bool may_be_missing(const void* src, bool source_is_empty, const void* dst,
                                  uint32_t dst_units, const uint32_t* count) noexcept {
  return (src != nullptr || source_is_empty) && (dst != nullptr || dst_units == 0) &&
         count != nullptr;
}

bool arguments_are_valid(const void* src, bool source_is_empty, const void* dst, uint32_t dst_units,
                         const uint32_t* count) noexcept {
  if (src == nullptr || dst == nullptr || count == nullptr) [[unlikely]] {
    return may_be_missing(src, source_is_empty, dst, dst_units, count);
  }
  return true;
}

// Converts the text from `written` on, where the first character is that needs two units or is
// invalid: so far every character has been one unit.
[[gnu::noinline]] uint32_t narrow_from(uint32_t written, const uint32_t* src, uint32_t src_units,
                                       uint16_t* dst, uint32_t dst_units,
                                       uint32_t* count) noexcept {
  const uint32_t* const end = src + src_units;
  src += written;
  while (src < end) {
    const uint32_t c = *src++;
    if (written == dst_units) return fail(kBufferTooSmall, dst, dst_units);
    if (c < 0xD800) {
      dst[written++] = static_cast<uint16_t>(c);
      continue;
    }
    if (!is_character(c)) return fail(kSourceInvalid, dst, dst_units);
    if (c < 0x10000) {
      dst[written++] = static_cast<uint16_t>(c);
      continue;
    }
    if (dst_units - written < 2) return fail(kBufferTooSmall, dst, dst_units);
    dst[written++] = high_of(c);
    dst[written++] = low_of(c);
  }
  return finish(dst, written, dst_units, count);
}

[[gnu::noinline]] uint32_t widen_from(uint32_t written, const uint16_t* src, uint32_t src_units,
                                      uint32_t* dst, uint32_t dst_units, uint32_t* count) noexcept {
  const uint16_t* const end = src + src_units;
  src += written;
  while (src < end) {
    uint32_t c = *src++;
    if (is_surrogate(c)) {
      if (!is_high_surrogate(c) || src == end || !is_low_surrogate(*src)) {
        return fail(kSourceInvalid, dst, dst_units);
      }
      c = from_pair(c, *src++);
    }
    if (written == dst_units) return fail(kBufferTooSmall, dst, dst_units);
    dst[written++] = c;
  }
  return finish(dst, written, dst_units, count);
}

}  // namespace

TAVO_PLATFORM_API uint32_t Convert32To16(const uint32_t* src, int32_t src_units, uint16_t* dst,
                                         uint32_t dst_units, uint32_t* count) {
  if (!arguments_are_valid(src, src_units == 0, dst, dst_units, count)) {
    return fail(kArgumentInvalid, dst, dst_units);
  }
  if (src_units < 0) return fail(kLengthInvalid, dst, dst_units);
  const auto units = static_cast<uint32_t>(src_units);
  const uint32_t written = copy_plain<kFarFromSurrogates>(src, units, dst, dst_units);
  if (written == units) return finish(dst, written, dst_units, count);
  return narrow_from(written, src, units, dst, dst_units, count);
}

TAVO_PLATFORM_API uint32_t Convert16To32(const uint16_t* src, uint32_t src_units, uint32_t* dst,
                                         uint32_t dst_units, uint32_t* count) {
  if (!arguments_are_valid(src, src_units == 0, dst, dst_units, count)) {
    return fail(kArgumentInvalid, dst, dst_units);
  }
  const uint32_t written = copy_plain<kFarFromSurrogates>(src, src_units, dst, dst_units);
  if (written == src_units) return finish(dst, written, dst_units, count);
  return widen_from(written, src, src_units, dst, dst_units, count);
}

TAVO_PLATFORM_API uint32_t Convert16To8(char* dst, uint32_t dst_size, const uint16_t* src,
                                        uint32_t src_units, uint32_t* produced) {
  if (!arguments_are_valid(src, src_units == 0, dst, dst_size, produced)) {
    return fail(kArgumentInvalid, dst, dst_size);
  }
  const uint16_t* const end = src + src_units;
  uint32_t written = 0;
  while (src < end) {
    uint32_t c = *src++;
    if (is_surrogate(c)) {
      if (!is_high_surrogate(c) || src == end || !is_low_surrogate(*src)) {
        return fail(kSourceInvalid, dst, dst_size);
      }
      c = from_pair(c, *src++);
    }
    if (dst_size - written < utf8_length(c)) return fail(kBufferTooSmall, dst, dst_size);
    put_utf8(c, reinterpret_cast<uint8_t*>(dst) + written);
    written += utf8_length(c);
  }
  return finish(dst, written, dst_size, produced);
}
