// What is wrong with a statement, according to the library's diagnostics.
#pragma once

#include <string>
#include <vector>

#include "statement/statement_text.h"

namespace tavo::cli {

// A place in a statement. Lines and columns count from 1, columns in characters; the end is one
// past the last character.
struct Place {
  Range range;  // in characters of the statement
  size_t line = 1;
  size_t column = 1;
  size_t end_line = 1;
  size_t end_column = 1;
};

struct FoundEdit {
  Place place;
  std::wstring text;
};

struct FoundFix {
  std::string title;
  bool safe = false;
  bool placeholder = false;  // holds text that the user must replace: never applied automatically
  std::vector<FoundEdit> edits;
};

struct RelatedPlace {
  Place place;
  std::string message;
};

enum class Severity { kError, kWarning };

struct Finding {
  Severity severity = Severity::kError;
  uint32_t number = 0;    // 0: none
  std::string rule;       // such as "unknown-option"
  std::wstring message;   // one line; secrets masked unless requested
  std::wstring recorded;  // the catalogue's message; empty if not recorded
  bool is_recorded = false;
  Place place;                        // where to look
  std::string found;                  // a token, such as "INTEGER", or empty
  std::vector<std::string> expected;  // the expected set, as notations
  std::vector<RelatedPlace> related;
  std::vector<FoundFix> fixes;
};

// Everything that is wrong with a statement, in order of place. result: from parsing it.
std::vector<Finding> find_findings(const StatementText& statement, const ParseResult& result,
                                   bool show_secrets);

// Whether the library's diagnostics find nothing, and so accept the statement: a quick look, which
// leaves out what only the platform knows of trace levels.
bool has_no_findings(std::wstring_view text);

}  // namespace tavo::cli
