// The diagnostics of a text, copied out of the visit.
#pragma once

#include <string>
#include <vector>

#include "TAVODiagnostics.h"

namespace tavo_test {

struct DiagnosedEdit {
  uint32_t offset = 0;
  uint32_t length = 0;
  std::wstring text;
};

struct DiagnosedFix {
  std::string title;
  bool safe = false;
  bool placeholder = false;
  std::vector<DiagnosedEdit> edits;
};

struct DiagnosedRange {
  uint32_t role = 0;
  uint32_t offset = 0;
  uint32_t length = 0;
  std::string message;
};

struct Diagnosed {
  TAVODiagnostic record{};  // its pointers are only valid during the visit
  std::string rule;
  std::string message;
  std::vector<uint32_t> expected;
  std::vector<DiagnosedRange> related;
  std::vector<DiagnosedFix> fixes;

  bool is_error() const {
    return record.severity == TAVO_SEVERITY_ERROR;
  }
};

// Throws if the library returns anything but 0.
std::vector<Diagnosed> diagnose(const std::wstring& text);
size_t count_errors(const std::vector<Diagnosed>& diagnosed);
// The recorded diagnostic, or null.
const Diagnosed* recorded(const std::vector<Diagnosed>& diagnosed);

// A text with the edits of a fix, or of the first safe fix of every error without overlapping
// ones.
std::wstring with_fix(const std::wstring& text, const DiagnosedFix& fix);
std::wstring with_safe_fixes(const std::wstring& text, const std::vector<Diagnosed>& diagnosed);

}  // namespace tavo_test
