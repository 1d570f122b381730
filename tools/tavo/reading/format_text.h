// A text of statements in the canonical layout: what becomes of a file, and of an editor's
// document.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "reading/statement_reader.h"
#include "statement/format_statement.h"

namespace tavo::cli {

// A part of a text: its lines before and after, with their line ends, which the last line of the
// text may lack.
struct ChangedPart {
  std::string before;
  std::string after;
};

struct FormattedText {
  std::vector<ChangedPart> parts;  // the text, part by part
  std::vector<size_t> changed;     // first lines of the statements that change, from 1
  bool wrong = false;              // a statement is not accepted, and stays as it is
  bool stuck = false;              // a statement cannot be laid out anew, and stays as it is
  bool mixed_line_ends = false;    // and they are made alike
  bool divided_otherwise = false;  // the new text would hold other statements: all of it stays

  std::string before() const;
  std::string after() const;
};

// Texts of statements, by their first lines.
using ChangedStatements = std::map<size_t, std::string>;

// A text with some of its statements changed, each statement and what stands between them a part.
std::vector<ChangedPart> changed_parts(const std::string& whole, Layout layout,
                                       const ChangedStatements& changed);

// Sees each statement, its parse and what becomes of it, in order.
using SeeStatement = std::function<void(const FileStatement& read, const StatementText& text,
                                        const ParseResult& result, const LaidOut& laid_out)>;

// whole: UTF-8 without a byte-order mark, or bytes of a code page. Every line gets the line end
// that most lines have, whatever style says.
FormattedText format_text(const std::string& whole, std::optional<uint32_t> code_page,
                          Layout layout, const StatementStyle& style, const SeeStatement& see);

// Whether a text is divided into just these statements, which are as they stand in it.
bool is_divided_into(const std::string& whole, Layout layout,
                     const std::vector<std::string>& statements);

}  // namespace tavo::cli
