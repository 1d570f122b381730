// The tokens of a rejected statement after repairs: an unclosed quote ends where the statement can
// resume, a typographic quote counts as a quote, an invisible character is skipped. Each repair
// leaves a finding.
#pragma once

#include <cstdint>

#include "Grammar/lexer/scanner.h"
#include "diagnostics/finding.h"

namespace tavo::diagnostics {

struct Token {
  static constexpr uint16_t kAfterLine = 1;  // a line end precedes it
  static constexpr uint16_t kTight = 2;      // directly follows the token before
  static constexpr uint16_t kDamaged = 4;    // repaired: what it would store is unknown
  static constexpr uint16_t kRun = 8;        // a word with characters that words cannot contain

  uint32_t begin = 0;  // units
  uint32_t end = 0;
  uint32_t type = 0;
  uint32_t flags = 0;
  Finding* finding = nullptr;  // left by the repair

  bool is(uint32_t flag) const {
    return (flags & flag) != 0;
  }
  Span place() const {
    return {begin, end};
  }
};

using TokenList = GrowingList<Token, 128>;

// The text of a statement.
struct Source {
  // Readable zero units after the text.
  static constexpr size_t kZeros = 16;

  const uint16_t* units = nullptr;
  uint32_t count = 0;

  const uint16_t* end() const {
    return units + count;
  }
  // The unit at an index, 0 past the end.
  uint32_t at(uint32_t index) const {
    return index < count ? units[index] : 0u;
  }
  std::span<const uint16_t> text(Span span) const {
    return {units + span.begin, span.end - span.begin};
  }
  // Without a byte-order mark.
  uint32_t begin() const {
    return count != 0 && units[0] == 0xFEFF ? 1 : 0;
  }
};

// Whether a token type begins an option or a parameter in any statement.
bool begins_any_option(uint32_t type);
// Whether a token type begins a statement.
bool begins_any_statement(uint32_t type);

// Appends the repaired tokens of a text and an end-of-input token.
void read_repaired(const Source& source, Findings& findings, TokenList& tokens);

// ---- lookahead for the repairs -----------------------------------------------------------------

uint32_t skip_blanks(const Source& source, uint32_t at);       // line ends too
uint32_t skip_line_blanks(const Source& source, uint32_t at);  // within the line
// Whether something like an option or a statement begins here: a word and an equals sign.
// known: the word must be a keyword that begins one.
bool begins_assignment(const Source& source, uint32_t at, bool known);
// The first index from `from` on where the statement can resume: a comma before an option, a line
// end before a statement, or a closing parenthesis before such a comma or before the end. The end
// of the text if there is none.
uint32_t find_resumption(const Source& source, uint32_t from, bool in_parentheses, bool known);
uint32_t without_blanks_after(const Source& source, uint32_t from, uint32_t to);
// The next quote that no backslash escapes, or the end of the text.
uint32_t find_quote(const Source& source, uint32_t from);
// Whether the end, a comma, `)`, `;` or a line end follows, perhaps after blanks.
bool separator_follows(const Source& source, uint32_t at);

}  // namespace tavo::diagnostics
