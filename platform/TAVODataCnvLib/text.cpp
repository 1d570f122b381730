// Text to terminated wide text, and back to terminated 8-bit text.
#include <cstring>
#include <cwchar>

#include "common/platform_status.h"
#include "converters.h"
#include "platform/platform.h"
#include "unicode.h"

using namespace tavo::platform;

namespace {

// A terminated text under construction in a caller's buffer. The buffer holds an empty text until
// it is complete, so that nobody can read a partial one.
template <typename Unit>
class Output {
 public:
  Output(Unit* dst, uint32_t dst_bytes, uint32_t* count) noexcept
      : dst_(dst), units_(dst == nullptr ? 0 : dst_bytes / uint32_t{sizeof(Unit)}), count_(count) {
    if (units_ != 0) dst_[0] = 0;
  }

  uint32_t check() const noexcept {
    if (dst_ == nullptr || count_ == nullptr) return kArgumentInvalid;
    return units_ == 0 ? kBufferTooSmall : kOk;
  }

  // Space in units, without the terminator.
  uint32_t room() const noexcept {
    return units_ - 1;
  }

  uint32_t finish(uint32_t status, uint32_t written) noexcept {
    if (status != kOk) {
      dst_[0] = 0;
      return status;
    }
    dst_[written] = 0;
    *count_ = written;
    return kOk;
  }

 private:
  Unit* dst_;
  uint32_t units_;
  uint32_t* count_;
};

// bytes: negative when there is no length.
uint32_t from_bytes(const char* text, int64_t bytes, wchar_t* dst, uint32_t dst_bytes,
                    uint32_t* count, const void* descriptor) noexcept {
  Output<wchar_t> output(dst, dst_bytes, count);
  if (text == nullptr) return kArgumentInvalid;
  if (const uint32_t status = output.check(); status != kOk) return status;
  if (bytes < 0 || bytes > INT32_MAX) return kLengthInvalid;
  uint32_t written = 0;
  const uint32_t status = bytes_to_wide(CodePage(descriptor), text, static_cast<uint32_t>(bytes),
                                        dst, output.room(), written);
  return output.finish(status, written);
}

// text: need not be aligned.
uint32_t from_wide(const void* text, int32_t bytes, wchar_t* dst, uint32_t dst_bytes,
                   uint32_t* count) noexcept {
  Output<wchar_t> output(dst, dst_bytes, count);
  if (text == nullptr) return kArgumentInvalid;
  if (const uint32_t status = output.check(); status != kOk) return status;
  constexpr int32_t kCharBytes = sizeof(wchar_t);
  if (bytes < 0 || bytes % kCharBytes != 0) return kLengthInvalid;
  const auto chars = static_cast<uint32_t>(bytes / kCharBytes);
  if (chars > output.room()) return kBufferTooSmall;
  const auto* next = static_cast<const char*>(text);
  for (uint32_t i = 0; i < chars; ++i, next += sizeof(wchar_t)) {
    uint32_t c = 0;
    std::memcpy(&c, next, sizeof c);
    if (!is_character(c)) return output.finish(kSourceInvalid, 0);
    dst[i] = static_cast<wchar_t>(c);
  }
  return output.finish(kOk, chars);
}

uint16_t prefixed_length(const void* text) noexcept {
  uint16_t length = 0;
  std::memcpy(&length, text, sizeof length);
  return length;
}

}  // namespace

TAVO_PLATFORM_API uint32_t TAVOCnvCharToWVarcharSz(const char* text, int32_t* length, wchar_t* dst,
                                                   uint32_t dst_bytes, uint32_t* count,
                                                   const void* descriptor) {
  if (length == nullptr) return kArgumentInvalid;
  return from_bytes(text, *length, dst, dst_bytes, count, descriptor);
}

TAVO_PLATFORM_API uint32_t TAVOCnvVarcharToWVarcharSz(const void* length_prefixed, int32_t*,
                                                      wchar_t* dst, uint32_t dst_bytes,
                                                      uint32_t* count, const void* descriptor) {
  if (length_prefixed == nullptr) return kArgumentInvalid;
  return from_bytes(static_cast<const char*>(length_prefixed) + sizeof(uint16_t),
                    prefixed_length(length_prefixed), dst, dst_bytes, count, descriptor);
}

TAVO_PLATFORM_API uint32_t TAVOCnvVarcharSzToWVarcharSz(const char* text, int32_t*, wchar_t* dst,
                                                        uint32_t dst_bytes, uint32_t* count,
                                                        const void* descriptor) {
  if (text == nullptr) return kArgumentInvalid;
  return from_bytes(text, static_cast<int64_t>(std::strlen(text)), dst, dst_bytes, count,
                    descriptor);
}

TAVO_PLATFORM_API uint32_t TAVOCnvWCharToWVarcharSz(const wchar_t* text, int32_t* length_bytes,
                                                    wchar_t* dst, uint32_t dst_bytes,
                                                    uint32_t* count) {
  if (length_bytes == nullptr) return kArgumentInvalid;
  return from_wide(text, *length_bytes, dst, dst_bytes, count);
}

TAVO_PLATFORM_API uint32_t TAVOCnvWVarcharToWVarcharSz(const void* length_prefixed, int32_t*,
                                                       wchar_t* dst, uint32_t dst_bytes,
                                                       uint32_t* count) {
  if (length_prefixed == nullptr) return kArgumentInvalid;
  return from_wide(static_cast<const char*>(length_prefixed) + sizeof(uint16_t),
                   prefixed_length(length_prefixed), dst, dst_bytes, count);
}

TAVO_PLATFORM_API uint32_t TAVOCnvWVarcharSzToVarcharSz(const wchar_t* text, int32_t* length,
                                                        char* dst, uint32_t dst_bytes,
                                                        uint32_t* count, const void* descriptor) {
  Output<char> output(dst, dst_bytes, count);
  if (text == nullptr) return kArgumentInvalid;
  if (const uint32_t status = output.check(); status != kOk) return status;
  size_t chars = 0;
  if (length == nullptr) {
    chars = std::wcslen(text);
    if (chars > INT32_MAX) return kLengthInvalid;
  } else {
    if (*length < 0 || static_cast<uint32_t>(*length) % sizeof(wchar_t) != 0) return kLengthInvalid;
    chars = wcsnlen(text, static_cast<uint32_t>(*length) / sizeof(wchar_t));
  }
  uint32_t written = 0;
  const uint32_t status = wide_to_bytes(CodePage(descriptor), text, static_cast<uint32_t>(chars),
                                        dst, output.room(), written);
  return output.finish(status, written);
}
