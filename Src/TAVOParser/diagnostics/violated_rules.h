// Runs the validation rules over pairs that are given by their places in a text.
#pragma once

#include "diagnostics/arena.h"
#include "diagnostics/verdict.h"
#include "validation/provider_validate.h"
#include "validation/rules.h"

namespace tavo::diagnostics {

class RuleCheck {
 public:
  // Stores the pairs as a request would: the first of repeated keys wins. Returns false if an
  // allocation fails.
  bool open(const Source& source, const Pair* pairs, size_t count);

  // The number of the recorded violation, or 0.
  uint32_t first_violation() const;

  // Adds a finding for every violated rule, unless the violation only follows from another mistake.
  // among_errors: there are other errors, so a missing option may only be misspelled. head: the
  // place of the statement's head.
  void tell(Findings& findings, const StatementRule* statement, Span head, Span end,
            bool among_errors) const;

 private:
  bool store(const Source& source, const Pair& pair, KeyValueEntry& entry);
  const Pair* pair_with(uint32_t key) const;
  bool follows_from_missing(const ValidationRule& rule, const ProviderRules& provider) const;
  void tell_rule(Findings& findings, const StatementRule* statement, Span head, Span end,
                 const ValidationRule& rule) const;
  void tell_pair(Findings& findings, const StatementRule* statement, const KeyValueEntry& entry,
                 uint32_t number) const;
  void propose_missing(Findings& findings, Finding& finding, const StatementRule* statement,
                       uint32_t key, Span end) const;

  Arena arena_;
  KeyValueEntry* entries_ = nullptr;
  const Pair** pairs_ = nullptr;  // of the entries
  size_t count_ = 0;
};

}  // namespace tavo::diagnostics
