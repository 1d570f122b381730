// Text on a terminal: styles and widths.
#pragma once

#include <string>
#include <string_view>

#include "terminal/visible_text.h"

namespace tavo::cli {

enum class Style { kPlain, kBold, kError, kWarning, kNote, kPlace, kFaint };

// Width of a character on a terminal, in columns.
size_t width_of(wchar_t character);
size_t width_of(std::wstring_view text);

}  // namespace tavo::cli
