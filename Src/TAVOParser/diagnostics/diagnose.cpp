// The exported functions: they hand the findings to a visitor as records.
#include "TAVODiagnostics.h"

#include <algorithm>

#include "diagnostics/diagnosis.h"
#include "diagnostics/expected.h"
#include "diagnostics/words.h"
#include "text/parameter_text.h"
#include "text/utf16_characters.h"
#include "text/utf16_text.h"

namespace tavo::diagnostics {
namespace {

static_assert(Source::kZeros <= Utf16Text::kZeros);

// Converts offsets in units to offsets in characters. Most texts have no surrogate pairs.
class CharacterOffsets {
 public:
  // Returns false if an allocation fails.
  bool open(const Source& source) {
    for (uint32_t i = 0; i + 1 < source.count; ++i) {
      if (!is_high_surrogate(source.units[i]) || !is_low_surrogate(source.units[i + 1])) continue;
      if (!pairs_.add(i)) return false;
      ++i;
    }
    return true;
  }
  uint32_t of(uint32_t unit) const {
    const uint32_t* before = std::lower_bound(pairs_.begin(), pairs_.end(), unit);
    return unit - static_cast<uint32_t>(before - pairs_.begin());
  }

 private:
  GrowingList<uint32_t, 16> pairs_;
};

// The records of the finding that is being visited.
class Visited {
 public:
  Visited(const Source& source, const CharacterOffsets& offsets)
      : source_(source), offsets_(offsets) {}

  const TAVODiagnostic* show(const Finding& finding);

  uint32_t expected(uint32_t index) const {
    return index < expected_.size() ? expected_[index] : TAVO_DIAGNOSTICS_END;
  }
  uint32_t related(uint32_t index, TAVORelatedRange* range) const;
  uint32_t fix(uint32_t index, TAVOFix* fix);
  uint32_t edit(uint32_t fix, uint32_t index, TAVOEdit* edit);

 private:
  uint32_t length(Span span) const {
    return offsets_.of(span.end) - offsets_.of(span.begin);
  }
  void show_place(const Finding& finding);
  void show_language(const Finding& finding);
  const Fix* fix_at(uint32_t index) const {
    const Fix* fix = finding_->fixes;
    while (fix != nullptr && index-- > 0) fix = fix->next;
    return fix;
  }

  const Source& source_;
  const CharacterOffsets& offsets_;
  const Finding* finding_ = nullptr;
  TAVODiagnostic record_{};
  ExpectedTypes expected_;
  Words message_;
  Words title_;
  wchar_t replacement_[128];
};

template <typename Entry>
uint32_t count_of(const Entry* entry) {
  uint32_t count = 0;
  for (; entry != nullptr; entry = entry->next) ++count;
  return count;
}

const TAVODiagnostic* Visited::show(const Finding& finding) {
  finding_ = &finding;
  record_ = {};
  record_.structSize = sizeof record_;
  record_.rule = finding.rule;
  record_.severity = finding.severity;
  record_.number = finding.number;
  record_.recorded = finding.recorded ? 1 : 0;
  record_.found = finding.found == 0xFFFF ? TAVO_TOKEN_END_OF_INPUT : uint32_t{finding.found};
  show_place(finding);
  show_language(finding);
  expected_.collect(finding);
  record_.expected = expected_.size();
  record_.related = count_of(finding.related);
  record_.fixes = count_of(finding.fixes);
  record_.ruleName = rule_name(finding.rule);
  const bool ignored = finding.rule == TAVO_DIAGNOSTIC_IGNORED_TEXT ||
                       finding.rule == TAVO_DIAGNOSTIC_SECOND_STATEMENT ||
                       finding.rule == TAVO_DIAGNOSTIC_SIGN_AS_VALUE;
  record_.ignoresOptions =
      ignored && finding.severity == TAVO_SEVERITY_WARNING && finding.ignores_options ? 1 : 0;
  write_message(source_, finding, message_);
  record_.message = message_.terminated();
  record_.details = this;
  return &record_;
}

void Visited::show_place(const Finding& finding) {
  record_.offset = offsets_.of(finding.place.begin);
  record_.length = length(finding.place);
  const bool unplaced =
      finding.rule == TAVO_DIAGNOSTIC_RULE_VIOLATED ||
      (finding.number != TAVO_STATUS_SYNTAX_ERROR && finding.number != TAVO_STATUS_BAD_SEPARATOR);
  if (unplaced) {
    record_.recordedOffset = TAVO_DIAGNOSTICS_NO_PLACE;
    return;
  }
  const Span stop = finding.has_stop ? finding.stop : finding.place;
  record_.recordedOffset = offsets_.of(stop.begin);
  record_.recordedLength = length(stop);
}

void Visited::show_language(const Finding& finding) {
  record_.statement = record_.option = record_.parameter = TAVO_DIAGNOSTICS_END;
  const auto index_in = [](const auto& list, const auto* wanted) {
    for (size_t i = 0; i < list.size(); ++i) {
      if (list[i] == wanted) return static_cast<uint32_t>(i);
    }
    return uint32_t{TAVO_DIAGNOSTICS_END};
  };
  if (finding.statement == nullptr) return;
  record_.statement = index_in(statements(), finding.statement);
  if (finding.option == nullptr) return;
  record_.option = index_in(finding.statement->options, finding.option);
  if (finding.parameter == nullptr) return;
  record_.parameter = index_in(finding.option->parameters, finding.parameter);
}

uint32_t Visited::related(uint32_t index, TAVORelatedRange* range) const {
  const Related* related = finding_->related;
  while (related != nullptr && index-- > 0) related = related->next;
  if (related == nullptr) return TAVO_DIAGNOSTICS_END;
  *range = {sizeof *range, static_cast<uint32_t>(related->role), offsets_.of(related->place.begin),
            length(related->place), related_message(related->role)};
  return 0;
}

uint32_t Visited::fix(uint32_t index, TAVOFix* fix) {
  const Fix* found = fix_at(index);
  if (found == nullptr) return TAVO_DIAGNOSTICS_END;
  write_title(*found, title_);
  *fix = {sizeof *fix, found->safe ? 1u : 0u, found->placeholder ? 1u : 0u, found->edit_count,
          title_.terminated()};
  return 0;
}

uint32_t Visited::edit(uint32_t fix, uint32_t index, TAVOEdit* edit) {
  const Fix* found = fix_at(fix);
  if (found == nullptr || index >= found->edit_count) return TAVO_DIAGNOSTICS_END;
  const Edit& known = found->edits[index];
  constexpr size_t kMost = sizeof replacement_ / sizeof replacement_[0] - 1;
  const size_t count = std::min(known.replacement.size(), kMost);
  std::copy(known.replacement.begin(), known.replacement.begin() + static_cast<ptrdiff_t>(count),
            replacement_);
  replacement_[count] = 0;
  *edit = {sizeof *edit, offsets_.of(known.place.begin), length(known.place),
           static_cast<uint32_t>(count), replacement_};
  return 0;
}

Visited* visited(const TAVODiagnostic* diagnostic) {
  return static_cast<Visited*>(const_cast<void*>(diagnostic->details));
}

uint32_t visit_all(const Source& source, TAVODiagnosticVisitor visitor, void* context) {
  Diagnosis diagnosis(source);
  CharacterOffsets offsets;
  if (!diagnosis.run() || !offsets.open(source)) return TAVO_STATUS_NO_MEMORY_FOR_TEXT;
  Visited visited(source, offsets);
  for (const Finding* finding : diagnosis.findings()) {
    const uint32_t stop = visitor(visited.show(*finding), context);
    if (stop != 0) return stop;
  }
  return 0;
}

}  // namespace
}  // namespace tavo::diagnostics

extern "C" {

uint32_t TAVOParser_Diagnose(const wchar_t* text, uint32_t characters,
                             TAVODiagnosticVisitor visitor, void* context) noexcept {
  if (text == nullptr || visitor == nullptr) return TAVO_DIAGNOSTICS_END;
  if (characters == 0) return TAVO_STATUS_TEXT_LENGTH_NOT_POSITIVE;
  tavo::Utf16Text utf16;
  const uint32_t status = utf16.convert(text, characters);
  if (status != 0) return status;
  return tavo::diagnostics::visit_all({utf16.units(), utf16.count()}, visitor, context);
}

uint32_t TAVOParser_DiagnoseBytes(const char* text, uint32_t bytes, uint8_t kind, uint32_t codePage,
                                  TAVODiagnosticVisitor visitor, void* context) noexcept {
  if (text == nullptr || visitor == nullptr) return TAVO_DIAGNOSTICS_END;
  if (bytes == 0) return TAVO_STATUS_TEXT_LENGTH_NOT_POSITIVE;
  if (bytes > INT32_MAX) return TAVO_STATUS_NO_MEMORY_FOR_TEXT;
  ParmTextM descriptor{};
  descriptor.kind = kind;
  descriptor.codePage = codePage;
  descriptor.text = text;
  RequestRecord request{};
  request.form = 'M';
  request.textLength = static_cast<int32_t>(bytes);
  request.parmText = &descriptor;
  tavo::ParameterText wide;
  const uint32_t status = wide.fetch(request);
  if (status != 0) return status;
  return TAVOParser_Diagnose(wide.text(), wide.characters(), visitor, context);
}

uint32_t TAVODiagnostic_GetExpected(const TAVODiagnostic* diagnostic, uint32_t index) noexcept {
  if (diagnostic == nullptr) return TAVO_DIAGNOSTICS_END;
  return tavo::diagnostics::visited(diagnostic)->expected(index);
}

uint32_t TAVODiagnostic_GetRelated(const TAVODiagnostic* diagnostic, uint32_t index,
                                   TAVORelatedRange* range) noexcept {
  if (diagnostic == nullptr || range == nullptr) return TAVO_DIAGNOSTICS_END;
  return tavo::diagnostics::visited(diagnostic)->related(index, range);
}

uint32_t TAVODiagnostic_GetFix(const TAVODiagnostic* diagnostic, uint32_t index,
                               TAVOFix* fix) noexcept {
  if (diagnostic == nullptr || fix == nullptr) return TAVO_DIAGNOSTICS_END;
  return tavo::diagnostics::visited(diagnostic)->fix(index, fix);
}

uint32_t TAVODiagnostic_GetEdit(const TAVODiagnostic* diagnostic, uint32_t fix, uint32_t index,
                                TAVOEdit* edit) noexcept {
  if (diagnostic == nullptr || edit == nullptr) return TAVO_DIAGNOSTICS_END;
  return tavo::diagnostics::visited(diagnostic)->edit(fix, index, edit);
}

const char* TAVODiagnostic_GetRuleName(uint32_t rule) noexcept {
  return tavo::diagnostics::rule_name(rule);
}

}  // extern "C"
