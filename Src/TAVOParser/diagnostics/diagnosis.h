// The diagnosis of one statement.
#pragma once

#include "diagnostics/verdict.h"
#include "diagnostics/walker.h"

namespace tavo::diagnostics {

class Diagnosis {
 public:
  explicit Diagnosis(const Source& source) : source_(source) {}

  // Collects all findings. Returns false if an allocation fails.
  bool run() {
    return find() && prove_safe_fixes();
  }
  // The findings in order of place.
  Findings& findings() {
    return findings_;
  }
  const Source& source() const {
    return source_;
  }

 private:
  bool find();
  bool find_warnings(const Verdict& verdict);
  void find_repeated_options();
  bool find_signs_as_values(const Verdict& verdict);
  void find_ignored_text(const Verdict& verdict);
  void propose_typographic(Finding& finding, const Verdict& verdict, Span opening);
  bool holds_options(Span text) const;
  bool find_errors(const Verdict& verdict);
  bool tell_rules(const Verdict& verdict, const Walker& walker, bool among_errors);
  Span end_of_statement() const;
  void mark_recorded(const Verdict& verdict);
  Finding* recorded_syntax_error(const Verdict& verdict);
  Finding* recorded_violation(const Verdict& verdict);
  void sort();
  size_t count_errors();
  bool prove_safe_fixes();

  const Source& source_;
  Findings findings_;
  PairList pairs_;
  TokenList tokens_;
  OccurrenceList occurrences_;
};

}  // namespace tavo::diagnostics
