// Formats a text of statements, such as a file or an editor's document, in the canonical
// layout.
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

// A part of a text: its lines before and after, with line ends; the text's last line may lack its
// line end.
struct ChangedPart {
  std::string before;
  std::string after;
};

struct FormattedText {
  std::vector<ChangedPart> parts;  // the text, part by part
  std::vector<size_t> changed;     // first lines of the statements that change, from 1
  bool wrong = false;              // a statement is not accepted and stays unchanged
  bool stuck = false;              // a statement cannot be formatted and stays unchanged
  bool mixed_line_ends = false;    // line ends differ and are unified
  bool divided_otherwise = false;  // the new text would hold other statements: nothing changes

  std::string before() const;
  std::string after() const;
};

// New texts of statements, by their first lines.
using ChangedStatements = std::map<size_t, std::string>;

// A text with some statements changed, divided into statements and the text between them.
std::vector<ChangedPart> changed_parts(const std::string& whole, Layout layout,
                                       const ChangedStatements& changed);

// Called for each statement in order, with its parse and its new text.
using SeeStatement = std::function<void(const FileStatement& read, const StatementText& text,
                                        const ParseResult& result, const LaidOut& laid_out)>;

// whole: UTF-8 without a byte-order mark, or bytes of a code page. Every line gets the line end
// that most lines have, regardless of `style`.
FormattedText format_text(const std::string& whole, std::optional<uint32_t> code_page,
                          Layout layout, const StatementStyle& style, const SeeStatement& see);

// Whether the text is divided into exactly these statements, given in their raw form.
bool is_divided_into(const std::string& whole, Layout layout,
                     const std::vector<std::string>& statements);

}  // namespace tavo::cli
