#include "lsp/position.h"

#include <algorithm>

namespace tavo::cli::lsp {
namespace {

size_t bytes_of_lead(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xE0) return 2;
  return lead < 0xF0 ? 3 : 4;
}

uint32_t units_of_bytes(size_t bytes, Encoding encoding) {
  if (encoding == Encoding::kUtf8) return static_cast<uint32_t>(bytes);
  return encoding == Encoding::kUtf16 && bytes == 4 ? 2 : 1;
}

}  // namespace

std::string_view encoding_name(Encoding encoding) {
  switch (encoding) {
    case Encoding::kUtf8: return "utf-8";
    case Encoding::kUtf32: return "utf-32";
    case Encoding::kUtf16: break;
  }
  return "utf-16";
}

uint32_t units_of(wchar_t character, Encoding encoding) {
  const auto code_point = static_cast<uint32_t>(character);
  if (code_point < 0x80) return 1;
  const size_t bytes = code_point < 0x800 ? 2 : code_point < 0x10000 ? 3 : 4;
  return units_of_bytes(bytes, encoding);
}

size_t byte_of(std::string_view line, uint32_t character, Encoding encoding) {
  size_t at = 0;
  while (at < line.size()) {
    const size_t bytes = bytes_of_lead(static_cast<unsigned char>(line[at]));
    const uint32_t units = units_of_bytes(bytes, encoding);
    if (character < units) break;
    character -= units;
    at = std::min(at + bytes, line.size());
  }
  return at;
}

size_t index_of(std::wstring_view line, uint32_t character, Encoding encoding) {
  size_t at = 0;
  for (; at < line.size(); ++at) {
    const uint32_t units = units_of(line[at], encoding);
    if (character < units) break;
    character -= units;
  }
  return at;
}

uint32_t width_of(std::wstring_view text, Encoding encoding) {
  uint32_t width = 0;
  for (const wchar_t character : text) width += units_of(character, encoding);
  return width;
}

}  // namespace tavo::cli::lsp
