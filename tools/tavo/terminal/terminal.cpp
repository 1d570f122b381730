#include "terminal/terminal.h"

#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cwchar>

namespace tavo::cli {
namespace {

std::array<bool, 3> g_color{};  // by file descriptor

bool wants_color(const std::string& choice, int descriptor) {
  if (choice == "always") return true;
  if (choice == "never") return false;
  const char* no_color = std::getenv("NO_COLOR");
  if (no_color != nullptr && no_color[0] != '\0') return false;
  const char* term = std::getenv("TERM");
  if (term != nullptr && std::string_view(term) == "dumb") return false;
  return isatty(descriptor) == 1;
}

const char* code_of(Style style) {
  switch (style) {
    case Style::kBold: return "\033[1m";
    case Style::kError: return "\033[1;31m";
    case Style::kNote: return "\033[1;36m";
    case Style::kPlace: return "\033[1;32m";
    case Style::kFaint: return "\033[2m";
    default: return "";
  }
}

}  // namespace

void set_color(const std::string& choice) {
  g_color[STDOUT_FILENO] = wants_color(choice, STDOUT_FILENO);
  g_color[STDERR_FILENO] = wants_color(choice, STDERR_FILENO);
}

bool has_color(FILE* stream) {
  return g_color[stream == stderr ? STDERR_FILENO : STDOUT_FILENO];
}

std::string styled(FILE* stream, Style style, std::string_view text) {
  if (style == Style::kPlain || text.empty() || !has_color(stream)) return std::string(text);
  return fmt::format("{}{}\033[0m", code_of(style), text);
}

size_t width_of(wchar_t character) {
  const int width = ::wcwidth(character);
  return width < 0 ? 1 : static_cast<size_t>(width);
}

size_t width_of(std::wstring_view text) {
  size_t width = 0;
  for (const wchar_t c : text) width += width_of(c);
  return width;
}

void write(FILE* stream, std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stream);
}

}  // namespace tavo::cli
