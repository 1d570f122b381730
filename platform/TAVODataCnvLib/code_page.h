// Code pages by kind and number.
#pragma once

#include <unicode/ucnv.h>

#include <cstdint>

namespace tavo::platform {

// The kinds of numbers in a ConversionDescriptor. Number 0 is UTF-8 in each.
enum CodePageKind : uint8_t {
  kCodePageAny = 0,      // an IBM CCSID, or else a Windows code page
  kCodePageIbm = 1,      // an IBM CCSID
  kCodePageWindows = 2,  // a Windows code page
};

// A code page as the caller specifies it; null is the default, UTF-8.
struct CodePage {
  uint32_t kind;
  uint32_t number;
  explicit CodePage(const void* descriptor) noexcept;
  bool is_utf8() const noexcept;
};

// Opens ICU's converter for a code page of 8-bit text. It never substitutes and never skips.
// Returns 0, CodePageUnknown or NoMemory. The caller closes it.
uint32_t open_page(const CodePage& page, UConverter*& converter) noexcept;

}  // namespace tavo::platform
