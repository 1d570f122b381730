// Standard streams: colours and widths.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "terminal/visible_text.h"

namespace tavo::cli {

enum class Style { kPlain, kBold, kError, kNote, kPlace, kFaint };

// Decides once for each stream: "always", "never", or "auto": a terminal, and no NO_COLOR.
void set_color(const std::string& choice);
bool has_color(FILE* stream);
// The text in a style, or as it is when the stream has no colours.
std::string styled(FILE* stream, Style style, std::string_view text);

// Columns that a character takes on a terminal.
size_t width_of(wchar_t character);
size_t width_of(std::wstring_view text);

void write(FILE* stream, std::string_view text);

}  // namespace tavo::cli
