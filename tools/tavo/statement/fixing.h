// Applies the fixes of findings to the lines of a file.
#pragma once

#include <string>
#include <vector>

#include "statement/findings.h"

namespace tavo::cli {

enum class FixWhat {
  kNothing,
  kSafe,
  kSuggested,  // the safe ones, and the first of the others
};

// An edit in a file: lines and columns from 1, columns in characters.
struct FileEdit {
  size_t line = 1;
  size_t column = 1;
  size_t end_line = 1;
  size_t end_column = 1;
  std::string text;
};

// The fixes to apply: one of each finding that is an error. Of fixes that overlap the first; never
// a placeholder.
std::vector<const FoundFix*> chosen_fixes(const std::vector<Finding>& findings, FixWhat what);

// Those of one fix a finding, errors only; of overlapping ones the first. Never a placeholder.
// first_line: of the statement in its file.
std::vector<FileEdit> edits_of(const std::vector<Finding>& findings, FixWhat what,
                               size_t first_line);

// A UTF-8 text with edits, which are in order. A byte-order mark is no column of the first line.
std::string with_edits(const std::string& text, const std::vector<FileEdit>& edits);

}  // namespace tavo::cli
