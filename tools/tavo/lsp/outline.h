// The parts of a statement, right or wrong as it may be: while a statement is typed, what is right
// in it must still be known. Indices count visible tokens.
#pragma once

#include <optional>
#include <vector>

#include "language/language.h"
#include "statement/statement_text.h"

namespace tavo::cli::lsp {

struct OutlineOption {
  const Option* option = nullptr;  // null: no option of the statement begins like this
  size_t first = 0;                // the keyword
  size_t past = 0;                 // after the last token
  std::optional<size_t> value;     // the first token after "="
  std::optional<size_t> open;      // parentheses of a parameter list
  std::optional<size_t> close;
  std::vector<OutlineOption> parameters;
};

struct Outline {
  std::vector<TAVOTextToken> tokens;     // visible ones
  const Statement* statement = nullptr;  // null: unknown
  size_t head_past = 0;                  // tokens of keyword, "=" and name
  std::vector<OutlineOption> options;
};

Outline outline_of(const StatementText& text);

// What a token is in its statement.
enum class Part { kNone, kKeyword, kName, kOption, kValue, kParameter, kSign };

struct Place {
  Part part = Part::kNone;
  size_t token = 0;                        // index of the visible token
  const OutlineOption* option = nullptr;   // that holds the token
  const OutlineOption* written = nullptr;  // the parameter that holds it, or the option
};

Place place_of(const Outline& outline, size_t token);

// The visible token at a character, or the one that ends there.
std::optional<size_t> token_at(const Outline& outline, size_t offset);

Range range_of(const TAVOTextToken& token);
// From the first token to the end of the last one.
Range range_of(const Outline& outline, size_t first, size_t past);

}  // namespace tavo::cli::lsp
