// Positions as a client counts them: a line, and code units of the negotiated encoding in it.
#pragma once

#include <compare>
#include <cstdint>
#include <string_view>

namespace tavo::cli::lsp {

enum class Encoding { kUtf8, kUtf16, kUtf32 };

std::string_view encoding_name(Encoding encoding);

struct Position {
  uint32_t line = 0;
  uint32_t character = 0;

  auto operator<=>(const Position&) const = default;
};

struct PositionRange {
  Position start;
  Position end;

  bool operator==(const PositionRange&) const = default;
};

// Code units that a character needs.
uint32_t units_of(wchar_t character, Encoding encoding);

// The byte of a line of UTF-8 at which a character starts. A place past the line's end is its
// end, and one inside a character is its start.
size_t byte_of(std::string_view line, uint32_t character, Encoding encoding);

// The same in characters of wide text.
size_t index_of(std::wstring_view line, uint32_t character, Encoding encoding);

// Code units of wide text.
uint32_t width_of(std::wstring_view text, Encoding encoding);

}  // namespace tavo::cli::lsp
