// 8-bit text in any code page, converted by ICU.
#pragma once

#include <cstdint>

#include "code_page.h"

namespace tavo::platform {

// 8-bit text to wide text, not terminated. dst_chars: size of dst in characters; written: out,
// characters. With a status other than 0 the content of dst is undefined.
uint32_t bytes_to_wide(const CodePage& page, const char* src, uint32_t bytes, wchar_t* dst,
                       uint32_t dst_chars, uint32_t& written) noexcept;

// Wide text to 8-bit text, not terminated. chars: of src; dst_bytes: size of dst; written: out,
// bytes.
uint32_t wide_to_bytes(const CodePage& page, const wchar_t* src, uint32_t chars, char* dst,
                       uint32_t dst_bytes, uint32_t& written) noexcept;

}  // namespace tavo::platform
