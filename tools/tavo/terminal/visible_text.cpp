#include "terminal/visible_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "TAVOParserCpp.hpp"

namespace tavo::cli {
namespace {

struct CodePoints {
  uint32_t first;
  uint32_t last;
};

// Sorted. All default-ignorable characters of Unicode, and those that reorder text or break lines.
constexpr std::array<CodePoints, 27> kUnsafe = {{
    {0x0000, 0x001F},     // C0 controls, escape among them
    {0x007F, 0x009F},     // DEL and C1 controls
    {0x00AD, 0x00AD},     // soft hyphen
    {0x034F, 0x034F},     // combining grapheme joiner
    {0x061C, 0x061C},     // Arabic letter mark
    {0x115F, 0x1160},     // Hangul fillers
    {0x17B4, 0x17B5},     // Khmer inherent vowels
    {0x180B, 0x180F},     // Mongolian selectors, vowel separator
    {0x200B, 0x200F},     // zero-width space, joiners, direction marks
    {0x2028, 0x202E},     // separators, bidirectional embeddings and overrides
    {0x2060, 0x206F},     // word joiner, invisible operators, isolates, deprecated formats
    {0x3164, 0x3164},     // Hangul filler
    {0xD800, 0xDFFF},     // surrogates
    {0xFDD0, 0xFDEF},     // noncharacters
    {0xFE00, 0xFE0F},     // variation selectors
    {0xFEFF, 0xFEFF},     // byte-order mark
    {0xFFA0, 0xFFA0},     // halfwidth Hangul filler
    {0xFFF0, 0xFFFB},     // interlinear annotations
    {0xFFFE, 0xFFFF},     // noncharacters
    {0x13430, 0x1343F},   // hieroglyph formats
    {0x1BCA0, 0x1BCA3},   // shorthand formats
    {0x1D173, 0x1D17A},   // musical formats
    {0x1FFFE, 0x1FFFF},   // noncharacters
    {0xE0000, 0xE0FFF},   // tags, variation selectors
    {0xEFFFE, 0xEFFFF},   // noncharacters
    {0xF0000, 0x10FFFF},  // private use: no common appearance
    {0x110000, 0xFFFFFFFF},
}};

std::string escaped(wchar_t c) {
  switch (c) {
    case L'\n': return "\\n";
    case L'\r': return "\\r";
    case L'\t': return "\\t";
    default: return fmt::format("\\u{{{:X}}}", static_cast<uint32_t>(c));
  }
}

// Number of bytes from which from_utf8() decoded a character.
size_t bytes_of(wchar_t c) {
  if (c == kMalformed) return 1;
  const auto code = static_cast<uint32_t>(c);
  return code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
}

void append_json_escape(std::string& json, uint32_t code) {
  if (code < 0x10000) {
    fmt::format_to(std::back_inserter(json), "\\u{:04x}", code);
    return;
  }
  const uint32_t offset = code - 0x10000;
  fmt::format_to(std::back_inserter(json), "\\u{:04x}\\u{:04x}", 0xD800 + (offset >> 10),
                 0xDC00 + (offset & 0x3FF));
}

}  // namespace

bool is_unsafe(wchar_t c) {
  const auto code = static_cast<uint32_t>(c);
  const auto* range = std::partition_point(kUnsafe.begin(), kUnsafe.end(),
                                           [&](const CodePoints& r) { return r.last < code; });
  return range != kUnsafe.end() && range->first <= code;
}

bool is_plain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

bool is_plain(std::wstring_view text) {
  return std::all_of(text.begin(), text.end(), [](wchar_t c) { return c >= 0x20 && c < 0x7F; });
}

std::string printable(std::wstring_view text) {
  if (is_plain(text)) return {text.begin(), text.end()};
  std::string shown;
  size_t plain = 0;  // start of the pending safe text, which is written at once
  for (size_t i = 0; i < text.size(); ++i) {
    if (!is_unsafe(text[i])) continue;
    shown += to_utf8(text.substr(plain, i - plain));
    shown += escaped(text[i]);
    plain = i + 1;
  }
  return shown + to_utf8(text.substr(plain));
}

std::string printable_bytes(std::string_view bytes) {
  if (is_plain(bytes)) return std::string(bytes);
  std::string shown;
  size_t at = 0;
  for (const wchar_t c : from_utf8(bytes)) {
    const std::string_view read = bytes.substr(at, bytes_of(c));
    if (c == kMalformed) {
      fmt::format_to(std::back_inserter(shown), "\\x{{{:02X}}}",
                     static_cast<unsigned char>(read.front()));
    } else {
      shown += is_unsafe(c) ? escaped(c) : read;
    }
    at += read.size();
  }
  return shown;
}

std::wstring one_cell_each(std::wstring_view text) {
  std::wstring cells(text);
  for (wchar_t& c : cells) {
    if (c == L'\t') {
      c = L' ';
    } else if (is_unsafe(c)) {
      c = L'\uFFFD';
    }
  }
  return cells;
}

std::string tsv_field(std::wstring_view text) {
  std::string field;
  size_t plain = 0;
  for (size_t i = text.find(L'\\'); i != text.npos; i = text.find(L'\\', i + 1)) {
    field += printable(text.substr(plain, i - plain)) + "\\\\";
    plain = i + 1;
  }
  return field + printable(text.substr(plain));
}

std::string escape_json(std::string_view json) {
  if (is_plain(json)) return std::string(json);
  std::string escaped_text;
  escaped_text.reserve(json.size());
  size_t at = 0;
  for (const wchar_t c : from_utf8(json)) {
    const std::string_view read = json.substr(at, bytes_of(c));
    const auto code = static_cast<uint32_t>(c);
    if (c == kMalformed) {
      escaped_text += "\\ufffd";
    } else if (code > 0x1F && is_unsafe(c)) {
      append_json_escape(escaped_text, code);
    } else {
      escaped_text += read;
    }
    at += read.size();
  }
  return escaped_text;
}

}  // namespace tavo::cli
