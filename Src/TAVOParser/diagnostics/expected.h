// The expected set: the token types that would be accepted at a mistake's place.
#pragma once

#include <cstdint>

#include "diagnostics/finding.h"

namespace tavo::diagnostics {

class ExpectedTypes {
 public:
  void collect(const Finding& finding);
  uint32_t size() const {
    return count_;
  }
  uint32_t operator[](uint32_t index) const {
    return types_[index];
  }

 private:
  void add(uint32_t type);
  void add_option_keywords(std::span<const OptionRule* const> options);
  void add_values(const OptionRule& option);

  uint16_t types_[96];
  uint32_t count_ = 0;
};

}  // namespace tavo::diagnostics
