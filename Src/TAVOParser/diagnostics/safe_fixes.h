// The text that results from applying a statement's safe fixes.
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

  // Applies the first safe fix of every finding; of overlapping edits, only the first. Returns
  // false if an allocation fails.
  bool apply(const Source& source, Findings& findings);
  Source source() const {
    return {units_, count_};
  }

 private:
  uint16_t* units_ = nullptr;
  uint32_t count_ = 0;
};

}  // namespace tavo::diagnostics
