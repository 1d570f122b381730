// One canonical layout of a statement.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "statement/statement_text.h"

namespace tavo::cli {

// A comment line of the file inside a statement.
struct CommentLine {
  uint32_t line = 0;  // within the statement, from 1; the statement's text has an empty line there
  std::wstring text;  // from '#' on, without the line end
};

struct StatementStyle {
  enum class Spelling { kKeep, kLong, kShort };
  Spelling spelling = Spelling::kKeep;  // of keywords, which are always upper case
  bool option_a_line = false;           // else one line, unless comments break it
  std::wstring line_end = L"\n";
};

// Formats an accepted statement: keywords of statement, options and parameters in upper case, no
// blanks except one after a comma, comments kept. Values and the keys of a user provider stay as
// typed. Text that the parser ignores is unchanged.
// Comment lines keep their place before the same token, each on a line of its own.
std::wstring format_statement(const StatementText& text, const StatementStyle& style,
                              const std::vector<CommentLine>& comments = {});

// Whether a comment line is inside a token, such as quoted text over several lines: then formatting
// would move the comment.
bool splits_a_token(const StatementText& text, const std::vector<CommentLine>& comments);

// Whether two accepted statements store the same key types, value types and values.
bool stores_the_same(const ParseResult& before, const ParseResult& after);

// The comment lines among the lines of a statement in its file.
std::vector<CommentLine> comment_lines_of(std::string_view raw, std::optional<uint32_t> code_page);

// The formatted text of a statement, in its own encoding, or why it is unchanged.
struct LaidOut {
  std::optional<std::string> text;
  bool wrong = false;    // the statement is not accepted
  std::string_view why;  // why an accepted statement cannot be formatted
};

// The only entry point for formatting: it guarantees that the layout does not change what the
// statement stores. before: its parse. comments: the comment lines within it.
LaidOut lay_out(const StatementText& text, const ParseResult& before, const StatementStyle& style,
                const std::vector<CommentLine>& comments);

}  // namespace tavo::cli
