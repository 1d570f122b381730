// The text that the safe fixes of a statement make.
#pragma once

#include "diagnostics/finding.h"
#include "diagnostics/repaired_tokens.h"

namespace tavo::diagnostics {

bool has_safe_fixes(Findings& findings);
void forget_safe_fixes(Findings& findings);

class FixedText {
 public:
  FixedText() = default;
  FixedText(const FixedText&) = delete;
  FixedText& operator=(const FixedText&) = delete;
  ~FixedText();

  // Applies the first safe fix of every finding, of overlapping edits the first. Returns false when
  // memory is refused.
  bool apply(const Source& source, Findings& findings);
  Source source() const {
    return {units_, count_};
  }

 private:
  uint16_t* units_ = nullptr;
  uint32_t count_ = 0;
};

}  // namespace tavo::diagnostics
