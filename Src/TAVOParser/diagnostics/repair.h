// Walks the characters of a rejected statement and repairs what the lexer cannot read.
#pragma once

#include "diagnostics/code_points.h"
#include "diagnostics/near_words.h"
#include "diagnostics/repaired_tokens.h"

namespace tavo::diagnostics {

class Repair {
 public:
  Repair(const Source& source, Findings& findings, TokenList& tokens)
      : source_(source), findings_(findings), tokens_(tokens) {}

  void run();

 private:
  using Matcher = Match (*)(const uint16_t*, const uint16_t*);

  void skip_hidden(uint32_t stop);
  Token& push(uint32_t type, uint32_t stop, uint32_t flags = 0, Finding* finding = nullptr);
  Token* word_before();
  bool stands_after_equal(const Token& token) const;
  void repair_broken(uint32_t offending);

  Span character_here() const;
  uint32_t code_point(Span character) const;
  Finding& bad_character(Span place, Wording wording);
  void repair_character();
  bool is_separator_of_others(Span here);
  void repair_sign(Span here);
  void repair_invisible(Span here);
  void repair_run(Span here);
  bool ends_run(uint32_t at) const;

  // Repairs quoted text whose quote is `prefix` units after the current position.
  void repair_quote(uint32_t prefix);
  bool repair_quote_after_word(uint32_t prefix);
  bool repair_quote_inside(uint32_t closing);
  void close_quote(uint32_t prefix);
  uint32_t next_quote(uint32_t from);
  uint32_t resumption(uint32_t from, bool in_parentheses);
  bool swallows_an_option(uint32_t begin, uint32_t closing) const;
  void take_quoted(uint32_t prefix, uint32_t closing);
  void repair_typographic(Span here);
  uint32_t find_typographic(uint32_t from, Lookalike kind) const;

  // Repairs copy ranges or an affix instruction that does not match its pattern.
  void repair_instruction(uint32_t type, Matcher matches, uint32_t offending);
  uint32_t end_of_instruction(bool* closed);
  void propose_instruction(Finding& finding, Matcher matches, Span region, uint32_t offending);

  const Source& source_;
  Findings& findings_;
  TokenList& tokens_;
  uint32_t at_ = 0;
  uint32_t depth_ = 0;  // open parentheses
  uint32_t next_flags_ = 0;
  Token scratch_;
  // From these places on there is no quote, and no resumption outside or inside parentheses; kept
  // so that the search is not repeated.
  uint32_t no_quote_from_ = UINT32_MAX;
  uint32_t nothing_from_[2] = {UINT32_MAX, UINT32_MAX};
};

}  // namespace tavo::diagnostics
