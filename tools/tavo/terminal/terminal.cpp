#include "terminal/terminal.h"

#include <cwchar>

namespace tavo::cli {

size_t width_of(wchar_t character) {
  const int width = ::wcwidth(character);
  return width < 0 ? 1 : static_cast<size_t>(width);
}

size_t width_of(std::wstring_view text) {
  size_t width = 0;
  for (const wchar_t c : text) width += width_of(c);
  return width;
}

}  // namespace tavo::cli
