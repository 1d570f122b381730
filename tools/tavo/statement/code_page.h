// Code pages of 8-bit statements, as the library converts them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavo::cli {

// Decodes 8-bit text for display, with the conversion that message inserts use. Nothing if the code
// page is unknown or a byte is not part of one of its characters.
std::optional<std::wstring> decode(const std::string& bytes, uint32_t code_page);

bool knows_code_page(uint32_t code_page);
// Whether the code page contains ASCII unchanged, so that files can be divided into lines.
bool holds_ascii(uint32_t code_page);

// The reverse of decode() for a text with only ASCII and the characters of `bytes`. Nothing if the
// code page has multibyte characters.
std::optional<std::string> encode_like(const std::string& bytes, uint32_t code_page,
                                       std::wstring_view text);

// The offset of the first byte that cannot be decoded; npos if there is none.
size_t find_undecodable(const std::string& bytes, uint32_t code_page);

}  // namespace tavo::cli
