// Code pages of 8-bit statements, as the library converts them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavo::cli {

// Decodes 8-bit text for showing it, with the conversion that the inserts of messages use. Nothing
// when the code page is unknown or a byte is none of its characters.
std::optional<std::wstring> decode(const std::string& bytes, uint32_t code_page);

bool knows_code_page(uint32_t code_page);
// Whether the ASCII characters have their places in it, so that files can be divided into lines.
bool holds_ascii(uint32_t code_page);

// The reverse of decode() for a text that has the characters of `bytes` and ASCII only. Nothing
// when the code page has characters of several bytes.
std::optional<std::string> encode_like(const std::string& bytes, uint32_t code_page,
                                       std::wstring_view text);

// The offset of the first byte that cannot be decoded; npos when all can be.
size_t find_undecodable(const std::string& bytes, uint32_t code_page);

}  // namespace tavo::cli
