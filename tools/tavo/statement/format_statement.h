// One canonical layout of a statement.
#pragma once

#include <optional>
#include <string>

#include "statement/statement_text.h"

namespace tavo::cli {

struct StatementStyle {
  enum class Spelling { kKeep, kLong, kShort };
  Spelling spelling = Spelling::kKeep;  // of keywords; upper case in any of them
  bool option_a_line = false;           // else one line, but for what a // comment breaks
};

// Lays an accepted statement out anew: keywords of statement, options and parameters in upper case,
// no blanks but one behind a comma, comments kept. Values stay as typed, and so do the keys of a
// user's own provider. Text that the parser ignores stays as it is.
std::wstring format_statement(const StatementText& text, const StatementStyle& style);

// Whether two accepted statements store the same: key types, value types and values.
bool stores_the_same(const ParseResult& before, const ParseResult& after);

}  // namespace tavo::cli
