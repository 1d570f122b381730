// 8-bit text in any code page, by way of ICU.
#pragma once

#include <cstdint>

#include "platform.h"

namespace tavo::platform {

// What the kind of a ConversionDescriptor says about its number.
enum CodePageKind : uint8_t {
  kCodePageAny = 0,      // an IBM CCSID, or else a Windows code page; number 0 is UTF-8
  kCodePageIbm = 1,      // an IBM CCSID
  kCodePageWindows = 2,  // a Windows code page
};

// A code page as the caller names it; null stands for the default, UTF-8.
struct CodePage {
  uint32_t kind;
  uint32_t number;
  explicit CodePage(const void* descriptor) noexcept;
  bool is_utf8() const noexcept;
};

// 8-bit text to wide text, not terminated. dst_chars: room in characters; written: out, characters.
// A status other than 0 leaves dst with anything in it.
uint32_t bytes_to_wide(const CodePage& page, const char* src, uint32_t bytes, wchar_t* dst,
                       uint32_t dst_chars, uint32_t& written) noexcept;

// Wide text to 8-bit text, not terminated. chars: of src; dst_bytes: room; written: out, bytes.
uint32_t wide_to_bytes(const CodePage& page, const wchar_t* src, uint32_t chars, char* dst,
                       uint32_t dst_bytes, uint32_t& written) noexcept;

}  // namespace tavo::platform
