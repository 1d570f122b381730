// Renders text that nobody vouches for: statements, file names, arguments. What would move, hide or
// reorder the text around it on a terminal is shown by its code point instead. Pure functions, any
// thread may call.
#pragma once

#include <string>
#include <string_view>

namespace tavo::cli {

// Whether a character must not reach a terminal as it is: controls (C0, DEL, C1), bidirectional
// marks and overrides, line and paragraph separators, every character that is invisible by default,
// and numbers that are no character.
bool is_unsafe(wchar_t c);

// For one line of a report, as UTF-8: unsafe characters as \n, \r, \t or \u{202E}. A backslash
// stays as it is, so that this is for people to read, not to be read back.
std::string printable(std::wstring_view text);
// The same for UTF-8 of unknown origin; a byte that belongs to no character is shown as \x{E9}.
std::string printable_bytes(std::string_view bytes);

// The same length in characters: each unsafe character becomes U+FFFD, a tab a blank. For lines
// that a caret points into.
std::wstring one_cell_each(std::wstring_view text);

// A field of a tab-separated line: as printable(), and a backslash is doubled, so that it can be
// read back.
std::string tsv_field(std::wstring_view text);

// JSON that a serializer wrote, with each unsafe character above U+001F as a \u escape. JSON has
// such characters in its strings only.
std::string escape_json(std::string_view json);

}  // namespace tavo::cli
