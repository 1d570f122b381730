// The layout of `tavo fmt`: an accepted statement stays accepted and stores the same pairs in every
// style, and formatting is idempotent.
#include "statement/format_statement.h"

#include "check.h"
#include "service_run.h"
#include "targets.h"

namespace tavo_fuzz {
namespace {

constexpr size_t kLongest = 1 << 12;

void check_style(const tavo::cli::StatementText& text, const tavo::cli::StatementStyle& style) {
  const std::wstring once = tavo::cli::format_statement(text, style);
  const tavo::cli::StatementText formatted(tavo_test::to_utf8(once), std::nullopt);
  TAVO_REQUIRE(tavo::cli::stores_the_same(text.parse(), formatted.parse()));
  TAVO_REQUIRE(tavo::cli::format_statement(formatted, style) == once);
}

}  // namespace

void run_format(const uint8_t* data, size_t size) {
  using Spelling = tavo::cli::StatementStyle::Spelling;
  if (size == 0 || size > kLongest) return;
  const std::wstring wide = read_text(data, size);
  if (!is_valid(wide)) return;
  const tavo::cli::StatementText text(tavo_test::to_utf8(wide), std::nullopt);
  if (!text.parse()) return;
  for (const Spelling spelling : {Spelling::kKeep, Spelling::kLong, Spelling::kShort}) {
    check_style(text, {.spelling = spelling, .option_a_line = false});
    check_style(text, {.spelling = spelling, .option_a_line = true});
  }
  switch_tracing_off();
}

}  // namespace tavo_fuzz
