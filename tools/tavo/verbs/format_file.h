// A file of statements in the canonical layout.
#pragma once

#include <string>
#include <vector>

#include "reading/input.h"
#include "reading/statement_reader.h"
#include "showing/statement_diff.h"
#include "statement/format_statement.h"
#include "terminal/output.h"

namespace tavo::cli {

struct FormattedFile {
  std::vector<ChangedPart> parts;  // the file, part by part, before and after
  std::vector<size_t> changed;     // first lines of the statements that change
  bool wrong = false;              // a statement is not accepted, and stays as it is
  bool stuck = false;              // a statement cannot be laid out anew, and stays as it is
  bool mixed_line_ends = false;    // and they are made alike
  bool holds_secrets = false;      // in a statement that changes

  std::string before() const;
  std::string after() const;
};

// Tells wrong statements on standard error; the rest is the caller's to tell. Throws InputError.
FormattedFile format_file(Input& input, Layout layout, const StatementStyle& style, Output& output);

// One statement. Nothing when it has to stay as it is, which has been told; the result says why.
std::optional<std::string> format_one(const StatementText& text, const StatementStyle& style,
                                      const std::vector<CommentLine>& comments,
                                      const std::string& name, size_t first_line,
                                      FormattedFile& result, bool& told_encoding, Output& output);

}  // namespace tavo::cli
