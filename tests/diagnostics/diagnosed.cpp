#include "diagnostics/diagnosed.h"

#include <algorithm>
#include <stdexcept>

namespace tavo_test {
namespace {

DiagnosedFix copy_fix(const TAVODiagnostic* diagnostic, uint32_t index, const TAVOFix& fix) {
  DiagnosedFix copy{fix.title, fix.safe != 0, fix.placeholder != 0, {}};
  TAVOEdit edit{};
  for (uint32_t i = 0; TAVODiagnostic_GetEdit(diagnostic, index, i, &edit) == 0; ++i) {
    copy.edits.push_back({edit.offset, edit.length, {edit.replacement, edit.characters}});
  }
  if (copy.edits.size() != fix.edits) throw std::runtime_error("not as many edits as told");
  return copy;
}

uint32_t copy(const TAVODiagnostic* diagnostic, void* context) {
  Diagnosed copy;
  copy.record = *diagnostic;
  copy.rule = diagnostic->ruleName;
  copy.message = diagnostic->message;
  for (uint32_t i = 0; i < diagnostic->expected; ++i) {
    copy.expected.push_back(TAVODiagnostic_GetExpected(diagnostic, i));
  }
  TAVORelatedRange range{};
  for (uint32_t i = 0; TAVODiagnostic_GetRelated(diagnostic, i, &range) == 0; ++i) {
    copy.related.push_back({range.role, range.offset, range.length, range.message});
  }
  TAVOFix fix{};
  for (uint32_t i = 0; TAVODiagnostic_GetFix(diagnostic, i, &fix) == 0; ++i) {
    copy.fixes.push_back(copy_fix(diagnostic, i, fix));
  }
  static_cast<std::vector<Diagnosed>*>(context)->push_back(std::move(copy));
  return 0;
}

std::wstring with_edits(const std::wstring& text, std::vector<DiagnosedEdit> edits) {
  std::stable_sort(edits.begin(), edits.end(), [](const auto& a, const auto& b) {
    return a.offset != b.offset ? a.offset < b.offset : a.length < b.length;
  });
  std::wstring result;
  size_t at = 0;
  for (const DiagnosedEdit& edit : edits) {
    if (edit.offset < at) continue;
    result += text.substr(at, edit.offset - at) + edit.text;
    at = size_t{edit.offset} + edit.length;
  }
  return result + text.substr(at);
}

}  // namespace

std::vector<Diagnosed> diagnose(const std::wstring& text) {
  std::vector<Diagnosed> diagnosed;
  const uint32_t status =
      TAVOParser_Diagnose(text.data(), static_cast<uint32_t>(text.size()), copy, &diagnosed);
  if (status != 0) throw std::runtime_error("diagnose answers " + std::to_string(status));
  return diagnosed;
}

size_t count_errors(const std::vector<Diagnosed>& diagnosed) {
  return static_cast<size_t>(std::count_if(diagnosed.begin(), diagnosed.end(),
                                           [](const Diagnosed& one) { return one.is_error(); }));
}

const Diagnosed* recorded(const std::vector<Diagnosed>& diagnosed) {
  for (const Diagnosed& one : diagnosed) {
    if (one.record.recorded != 0) return &one;
  }
  return nullptr;
}

std::wstring with_fix(const std::wstring& text, const DiagnosedFix& fix) {
  return with_edits(text, fix.edits);
}

std::wstring with_safe_fixes(const std::wstring& text, const std::vector<Diagnosed>& diagnosed) {
  std::vector<DiagnosedEdit> edits;
  for (const Diagnosed& one : diagnosed) {
    if (!one.is_error()) continue;
    const auto safe = std::find_if(one.fixes.begin(), one.fixes.end(),
                                   [](const DiagnosedFix& fix) { return fix.safe; });
    if (safe != one.fixes.end()) {
      edits.insert(edits.end(), safe->edits.begin(), safe->edits.end());
    }
  }
  return with_edits(text, std::move(edits));
}

}  // namespace tavo_test
