#include "showing/change.h"

#include <fmt/format.h>

#include <sstream>

#include "statement/secrets.h"
#include "terminal/terminal.h"
#include "terminal/visible_text.h"

namespace tavo::cli {
namespace {

void append_side(std::string& shown, const Stream& stream, char sign, Style style,
                 const StatementText& text, bool show_secrets) {
  const std::wstring all =
      masked(text.text(), text.secrets(), {0, text.text().size()}, show_secrets);
  std::istringstream lines(to_utf8(all));
  for (std::string line; std::getline(lines, line);) {
    shown += stream.styled(style, fmt::format("{}{}", sign, printable(from_utf8(line)))) + "\n";
  }
}

}  // namespace

std::string change_of(const Stream& stream, const StatementText& before, const StatementText& after,
                      const std::string& file, size_t line, bool show_secrets) {
  std::string shown = fmt::format("@@ {}:{} @@\n", printable_bytes(file), line);
  append_side(shown, stream, '-', Style::kError, before, show_secrets);
  append_side(shown, stream, '+', Style::kPlace, after, show_secrets);
  return shown;
}

}  // namespace tavo::cli
