// One canonical layout of a statement.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "statement/statement_text.h"

namespace tavo::cli {

// A comment line of the file inside a statement; it stands at the end of a line of its own.
struct CommentLine {
  uint32_t line = 0;  // of the statement, from 1; the statement's text has an empty line there
  std::wstring text;  // from its '#' on, without a line end
};

struct StatementStyle {
  enum class Spelling { kKeep, kLong, kShort };
  Spelling spelling = Spelling::kKeep;  // of keywords; upper case in any of them
  bool option_a_line = false;           // else one line, but for what a comment breaks
  std::wstring line_end = L"\n";
};

// Lays an accepted statement out anew: keywords of statement, options and parameters in upper case,
// no blanks but one after a comma, comments kept. Values stay as typed, and so do the keys of a
// user's own provider. Text that the parser ignores stays as it is.
// Comment lines stay before what they stood before, each on a line of its own.
std::wstring format_statement(const StatementText& text, const StatementStyle& style,
                              const std::vector<CommentLine>& comments = {});

// Whether a comment line lies inside a token, such as a quoted text that runs over lines: then the
// statement cannot be laid out anew without changing its place.
bool splits_a_token(const StatementText& text, const std::vector<CommentLine>& comments);

// Whether two accepted statements store the same: key types, value types and values.
bool stores_the_same(const ParseResult& before, const ParseResult& after);

// The comment lines among the lines of a statement as they stand in its file.
std::vector<CommentLine> comment_lines_of(std::string_view raw, std::optional<uint32_t> code_page);

// The new text of a statement, in its own encoding, or why it stays as it is.
struct LaidOut {
  std::optional<std::string> text;
  bool wrong = false;    // it is not accepted
  std::string_view why;  // of an accepted one that cannot be laid out anew
};

// The one way to lay a statement out: whoever writes a layout asks here, so that none of them
// changes what a statement stores. before: its parse. comments: the comment lines within it.
LaidOut lay_out(const StatementText& text, const ParseResult& before, const StatementStyle& style,
                const std::vector<CommentLine>& comments);

}  // namespace tavo::cli
