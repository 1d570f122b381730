// What a terminal does with text: styles and widths.
#pragma once

#include <string>
#include <string_view>

#include "terminal/visible_text.h"

namespace tavo::cli {

enum class Style { kPlain, kBold, kError, kWarning, kNote, kPlace, kFaint };

// Columns that a character takes on a terminal.
size_t width_of(wchar_t character);
size_t width_of(std::wstring_view text);

}  // namespace tavo::cli
