#include "layout.h"

#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include "statement/format_statement.h"
#include "statement/statement_text.h"

namespace {

using tavo::cli::StatementStyle;
using tavo::cli::StatementText;

StatementStyle style_of(int spelling, int option_a_line) {
  StatementStyle style;
  if (spelling == TAVO_SPELLING_LONG) style.spelling = StatementStyle::Spelling::kLong;
  if (spelling == TAVO_SPELLING_SHORT) style.spelling = StatementStyle::Spelling::kShort;
  style.option_a_line = option_a_line != 0;
  return style;
}

// Empty for a rejected statement, and for a layout that would change what it stores.
std::string lay_out(std::string bytes, const StatementStyle& style) {
  const StatementText before(std::move(bytes), std::nullopt);
  const tavo::ParseResult stored = before.parse();
  if (!stored) return {};
  std::string text = tavo::to_utf8(tavo::cli::format_statement(before, style));
  const StatementText after(text, std::nullopt);
  return tavo::cli::stores_the_same(stored, after.parse()) ? text : std::string();
}

}  // namespace

extern "C" {

size_t tavo_lay_out(const char* text, size_t bytes, int spelling, int option_a_line,
                    char** result) {
  *result = nullptr;
  try {
    // A trace level in the statement affects no other code: the library runs for this call only.
    const std::string laid_out =
        lay_out(std::string(text, bytes), style_of(spelling, option_a_line));
    if (laid_out.empty()) return TAVO_LAYOUT_REJECTED;
    *result = static_cast<char*>(std::malloc(laid_out.size()));
    if (*result == nullptr) return TAVO_LAYOUT_NO_MEMORY;
    std::memcpy(*result, laid_out.data(), laid_out.size());
    return laid_out.size();
  } catch (const std::exception&) {
    return TAVO_LAYOUT_NO_MEMORY;
  }
}

void tavo_free_layout(char* result) {
  std::free(result);
}

}  // extern "C"
