// The options of a statement with their tokens, found by following the library's tables as its
// parser does; and what is expected where the walk ends.
#pragma once

#include <vector>

#include "language/language.h"
#include "statement/statement_text.h"

namespace tavo::cli {

// Indices into the visible tokens. `past` is one past the last token.
struct WrittenOption {
  const Option* option = nullptr;
  size_t first = 0;  // the keyword
  size_t past = 0;
  std::vector<WrittenOption> parameters;
};

enum class Expected {
  kStatement,  // the first keyword
  kHeadEqual,
  kName,
  kSeparator,  // a comma, or the end
  kOption,
  kEqual,
  kValue,
  kOpenParenthesis,
  kParameter,
  kCloseParenthesis,  // or a comma
};

struct WrittenStatement {
  std::vector<TAVOTextToken> tokens;     // visible ones only
  const Statement* statement = nullptr;  // null if unknown
  size_t head_past = 0;
  std::vector<WrittenOption> options;
  size_t past = 0;                 // where the walk ended
  Expected expected{};             // there
  const Option* inside = nullptr;  // the option or parameter whose part is expected
};

WrittenStatement walk(const StatementText& text);

}  // namespace tavo::cli
