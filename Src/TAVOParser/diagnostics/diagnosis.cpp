#include "diagnostics/diagnosis.h"

#include <algorithm>

#include "diagnostics/code_points.h"
#include "diagnostics/safe_fixes.h"
#include "diagnostics/violated_rules.h"

namespace tavo::diagnostics {

bool Diagnosis::find() {
  Verdict verdict;
  if (!judge(source_, pairs_, verdict)) return false;
  const bool found = verdict.number == 0 ? find_warnings(verdict) : find_errors(verdict);
  if (!found || findings_.refused()) return false;
  sort();
  return true;
}

// Orders by place; findings at the same place stay in the order in which they were found.
void Diagnosis::sort() {
  std::sort(findings_.begin(), findings_.end(), [](const Finding* a, const Finding* b) {
    return a->place.begin != b->place.begin ? a->place.begin < b->place.begin : a->order < b->order;
  });
}

size_t Diagnosis::count_errors() {
  return static_cast<size_t>(std::count_if(
      findings_.begin(), findings_.end(),
      [](const Finding* finding) { return finding->severity == TAVO_SEVERITY_ERROR; }));
}

// Fixes that would leave more errors than the statement has now are not safe.
bool Diagnosis::prove_safe_fixes() {
  if (!has_safe_fixes(findings_)) return true;
  size_t errors_after = 0;
  {
    FixedText fixed;
    if (!fixed.apply(source_, findings_)) return false;
    const Source text = fixed.source();
    Diagnosis trial(text);
    if (!trial.find()) return false;
    errors_after = trial.count_errors();
  }
  if (errors_after > count_errors()) forget_safe_fixes(findings_);
  return true;
}

// ---- a rejected statement ----------------------------------------------------------------------

bool Diagnosis::find_errors(const Verdict& verdict) {
  read_repaired(source_, findings_, tokens_);
  if (tokens_.refused()) return false;
  Walker walker(source_, tokens_, findings_, occurrences_);
  walker.run();
  if (occurrences_.refused() || findings_.refused()) return false;
  if (!tell_rules(verdict, walker, count_errors() != 0)) return false;
  mark_recorded(verdict);
  return true;
}

// The place after the last option, where another one can be added.
Span Diagnosis::end_of_statement() const {
  uint32_t end = 0;
  for (const Token& token : tokens_) {
    if (token.type != TAVO_TOKEN_END_OF_INPUT) end = token.end;
  }
  return {end, end};
}

bool Diagnosis::tell_rules(const Verdict& verdict, const Walker& walker, bool among_errors) {
  if (walker.statement() == nullptr || (verdict.syntax && !among_errors)) return true;
  RuleCheck rules;
  if (!among_errors) {
    if (!rules.open(source_, pairs_.begin(), pairs_.size())) return false;
    rules.tell(findings_, walker.statement(), walker.head(), end_of_statement(), false);
    return true;
  }
  const AcceptedValue& name = walker.statement()->head.values.entries[0];
  PairList stored;
  stored.add({walker.head(),
              walker.head(),
              {},
              walker.statement()->head.key_type,
              name.value_type == kAsTyped ? name.token : name.value_type,
              name.token});
  for (const Occurrence& occurrence : occurrences_) {
    const OptionRule& option =
        occurrence.parameter != nullptr ? *occurrence.parameter : *occurrence.option;
    if (!occurrence.clean || option.syntax == ValueSyntax::kParameters) continue;
    Pair pair{occurrence.keyword, occurrence.value,      occurrence.prefix,
              option.key_type,    occurrence.value_type, occurrence.value_type};
    if (option.syntax == ValueSyntax::kString) {
      if (pair.value_type != TAVO_PARSER_STRING_WITH_QUOTES) {
        pair.value_type = TAVO_PARSER_STRING_WITHOUT_QUOTES;
      }
    } else {
      const AcceptedValue& accepted = *occurrence.accepted;
      if (accepted.key_type != kKeyOfOption) pair.key_type = accepted.key_type;
      if (accepted.value_type != kAsTyped) pair.value_type = accepted.value_type;
    }
    stored.add(pair);
  }
  if (stored.refused() || !rules.open(source_, stored.begin(), stored.size())) return false;
  rules.tell(findings_, walker.statement(), walker.head(), {}, true);
  return true;
}

// ---- the finding that Parser_Service records ---------------------------------------------------

namespace {

// Where the parser would stop if this finding were the only one.
uint32_t stop_of(const Finding& finding) {
  return finding.has_stop ? finding.stop.begin : finding.place.begin;
}

}  // namespace

// The finding at exactly the verdict's place; otherwise the last one before it, which causes it.
Finding* Diagnosis::recorded_syntax_error(const Verdict& verdict) {
  Finding* before = nullptr;
  Finding* first = nullptr;
  for (Finding* finding : findings_) {
    if (finding->rule == TAVO_DIAGNOSTIC_RULE_VIOLATED) continue;
    const uint32_t place = stop_of(*finding);
    const bool error = finding->severity == TAVO_SEVERITY_ERROR;
    if (place == verdict.place.begin && (error || first == nullptr)) return finding;
    if (finding->place.begin <= verdict.place.begin &&
        (before == nullptr || before->place.begin <= finding->place.begin)) {
      before = finding;
    }
    if (first == nullptr) first = finding;
  }
  return before != nullptr ? before : first;
}

Finding* Diagnosis::recorded_violation(const Verdict& verdict) {
  Finding* first = nullptr;
  for (Finding* finding : findings_) {
    const bool violated = finding->rule == TAVO_DIAGNOSTIC_RULE_VIOLATED;
    if (violated && finding->number == verdict.number) return finding;
    if (!violated && (first == nullptr || finding->place.begin < first->place.begin)) {
      first = finding;  // the rule is violated because the rest is ignored
    }
  }
  return first;
}

void Diagnosis::mark_recorded(const Verdict& verdict) {
  Finding* finding = verdict.syntax ? recorded_syntax_error(verdict) : recorded_violation(verdict);
  if (finding == nullptr) {
    finding = &findings_.add(TAVO_DIAGNOSTIC_UNEXPECTED_TEXT, verdict.place);
    finding->found = static_cast<uint16_t>(verdict.found);
  }
  finding->recorded = true;
  finding->severity = TAVO_SEVERITY_ERROR;
  finding->number = static_cast<uint16_t>(verdict.number);
  if (verdict.syntax) {
    finding->has_stop = true;
    finding->stop = verdict.place;
  } else if (finding->rule == TAVO_DIAGNOSTIC_MISSING_COMMA) {
    finding->wording = Wording::kOptionIgnored;
  }
}

// ---- an accepted statement ---------------------------------------------------------------------

bool Diagnosis::find_warnings(const Verdict& verdict) {
  find_repeated_options();
  const bool told = find_signs_as_values(verdict);
  if (!told && verdict.ignored.begin != verdict.ignored.end) find_ignored_text(verdict);
  const bool ignores_options = holds_options(verdict.ignored);
  for (Finding* finding : findings_) {
    finding->ignores_options = ignores_options;
    finding->severity = TAVO_SEVERITY_WARNING;
    finding->number = 0;
    for (Fix* fix = finding->fixes; fix != nullptr; fix = fix->next) fix->safe = false;
  }
  return true;
}

}  // namespace tavo::diagnostics
