// Renders untrusted text: statements, file names, arguments. Characters that would move, hide or
// reorder surrounding text on a terminal are shown by their code points. Pure, thread-safe
// functions.
#pragma once

#include <string>
#include <string_view>

namespace tavo::cli {

// Whether a character must not reach a terminal as it is: controls (C0, DEL, C1), bidirectional
// marks and overrides, line and paragraph separators, every character that is invisible by default,
// and numbers that are not characters.
bool is_unsafe(wchar_t c);

// Printable ASCII, which most text is: shown as it is.
bool is_plain(std::string_view text);
bool is_plain(std::wstring_view text);

// For one line of a report, as UTF-8: unsafe characters as \n, \r, \t or \u{202E}. A backslash is
// not escaped: the result is for people and cannot be parsed.
std::string printable(std::wstring_view text);
// The same for UTF-8 of unknown origin; a byte that is not part of a character is shown as \x{E9}.
std::string printable_bytes(std::string_view bytes);

// Same length in characters: each unsafe character becomes U+FFFD, a tab a blank. For lines above a
// caret.
std::wstring one_cell_each(std::wstring_view text);

// A field of a tab-separated line: like printable(), but with doubled backslashes, so that it can
// be parsed.
std::string tsv_field(std::wstring_view text);

// Serialized JSON with each unsafe character above U+001F as a \u escape. JSON has such characters
// only in strings.
std::string escape_json(std::string_view json);

}  // namespace tavo::cli
