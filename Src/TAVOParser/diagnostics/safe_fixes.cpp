#include "diagnostics/safe_fixes.h"

#include <algorithm>

namespace tavo::diagnostics {
namespace {

const Fix* first_safe(const Finding& finding) {
  if (finding.severity != TAVO_SEVERITY_ERROR) return nullptr;
  for (const Fix* fix = finding.fixes; fix != nullptr; fix = fix->next) {
    if (fix->safe) return fix;
  }
  return nullptr;
}

}  // namespace

bool has_safe_fixes(Findings& findings) {
  return std::any_of(findings.begin(), findings.end(),
                     [](const Finding* finding) { return first_safe(*finding) != nullptr; });
}

void forget_safe_fixes(Findings& findings) {
  for (Finding* finding : findings) {
    for (Fix* fix = finding->fixes; fix != nullptr; fix = fix->next) fix->safe = false;
  }
}

FixedText::~FixedText() {
  std::free(units_);
}

bool FixedText::apply(const Source& source, Findings& findings) {
  GrowingList<Edit, 16> edits;
  size_t room = size_t{source.count} + Source::kZeros;
  for (const Finding* finding : findings) {
    const Fix* fix = first_safe(*finding);
    for (size_t i = 0; fix != nullptr && i < fix->edit_count; ++i) {
      if (!edits.add(fix->edits[i])) return false;
      room += fix->edits[i].replacement.size();
    }
  }
  std::sort(edits.begin(), edits.end(), [](const Edit& a, const Edit& b) {
    return a.place.begin != b.place.begin ? a.place.begin < b.place.begin
                                          : a.place.end < b.place.end;
  });
  units_ = static_cast<uint16_t*>(std::calloc(room, sizeof(uint16_t)));
  if (units_ == nullptr) return false;
  uint16_t* out = units_;
  uint32_t at = 0;
  for (const Edit& edit : edits) {
    if (edit.place.begin < at) continue;
    out = std::copy(source.units + at, source.units + edit.place.begin, out);
    for (const char c : edit.replacement) *out++ = static_cast<unsigned char>(c);
    at = edit.place.end;
  }
  out = std::copy(source.units + at, source.units + source.count, out);
  count_ = static_cast<uint32_t>(out - units_);
  return true;
}

}  // namespace tavo::diagnostics
