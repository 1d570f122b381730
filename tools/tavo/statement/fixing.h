// Applies the fixes of findings to the lines of a file.
#pragma once

#include <string>
#include <vector>

#include "statement/findings.h"

namespace tavo::cli {

enum class FixWhat {
  kNothing,
  kSafe,
  kSuggested,  // safe fixes, else a finding's first fix
};

// An edit in a file: lines and columns from 1, columns in characters.
struct FileEdit {
  size_t line = 1;
  size_t column = 1;
  size_t end_line = 1;
  size_t end_column = 1;
  std::string text;
};

// The fixes to apply: one for each error; of overlapping fixes only the first. Never one with a
// placeholder.
std::vector<const FoundFix*> chosen_fixes(const std::vector<Finding>& findings, FixWhat what);

// The edits of the chosen fixes. first_line: the statement's first line in its file.
std::vector<FileEdit> edits_of(const std::vector<Finding>& findings, FixWhat what,
                               size_t first_line);

// Applies ordered edits to UTF-8 text. A byte-order mark is not a column of the first line.
std::string with_edits(const std::string& text, const std::vector<FileEdit>& edits);

}  // namespace tavo::cli
