// What is wrong with a statement, where, and how to show it.
#pragma once

#include <string>
#include <vector>

#include "statement/statement_text.h"
#include "terminal/output.h"

namespace tavo::cli {

enum class Severity { kError, kWarning };

struct Finding {
  uint32_t number = 0;  // of the library; 0 for what the tool itself finds
  Severity severity = Severity::kError;
  std::wstring message;             // secrets masked unless asked for
  Range place;                      // in characters of the statement; empty at its end
  uint32_t line = 1;                // of the place's beginning, from 1
  uint32_t column = 1;              // from 1, in characters
  std::vector<std::wstring> cures;  // "did you mean ALGO?", the accepted values, ...
};

// The errors of a refused statement, in the order in which they were recorded.
std::vector<Finding> find_errors(const StatementText& statement, const ParseResult& result,
                                 bool show_secrets);

// The source line of a finding, and a second line with a caret under its place or a range
// underlined. first_line: number of the statement's first line, for the margin; 0 for no margin.
std::string snippet(const Stream& stream, const StatementText& statement, const Finding& finding,
                    size_t first_line, bool show_secrets);

// "error 7139: MESSAGE", in the colour of its severity, with a line end.
std::string headline(const Stream& stream, const Finding& finding);

// A whole finding without its place in a file: number, message, snippet, cures.
std::string report(const Stream& stream, const StatementText& statement, const Finding& finding,
                   bool show_secrets);

}  // namespace tavo::cli
