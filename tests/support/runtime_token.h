// A token of the runtime over its own text, for calling the store routines directly.
#pragma once

#include <antlr3.h>

#include <cstdint>
#include <string>

namespace tavo_test {

class RuntimeToken {
 public:
  explicit RuntimeToken(std::u16string text, uint32_t type = 0) : text_(std::move(text)) {
    antlr3SetTokenAPI(&token_);
    token_.type = type;
    token_.input = &input_;
    const auto first = reinterpret_cast<intptr_t>(text_.data());
    token_.start = static_cast<ANTLR3_MARKER>(first);
    token_.stop = static_cast<ANTLR3_MARKER>(
        first + static_cast<intptr_t>(text_.size() * sizeof(char16_t)) - 1);
  }
  RuntimeToken(const RuntimeToken&) = delete;
  RuntimeToken& operator=(const RuntimeToken&) = delete;

  pANTLR3_COMMON_TOKEN get() {
    return &token_;
  }

 private:
  std::u16string text_;
  ANTLR3_COMMON_TOKEN token_{};
  ANTLR3_INPUT_STREAM input_{};
};

}  // namespace tavo_test
