// The text of a recognizer token, without the runtime's string objects, whose factory never frees
// any.
#pragma once

#include <antlr3.h>

#include <cstddef>
#include <cstdint>

namespace tavo {

struct TokenText {
  const uint16_t* units = nullptr;  // UTF-16, not terminated
  uint32_t count = 0;               // code units
};

inline TokenText token_text(pANTLR3_COMMON_TOKEN token) {
  static constexpr uint16_t kEndOfInput[] = {'<', 'E', 'O', 'F', '>'};
  if (token == nullptr) return {};
  if (token->textState == ANTLR3_TEXT_NONE) [[likely]] {
    if (token->type == ANTLR3_TOKEN_EOF) [[unlikely]]
      return {kEndOfInput, 5};
    if (token->input == nullptr || token->stop < token->start) [[unlikely]]
      return {};
    // The runtime stores the addresses of the first and of the last byte.
    const auto bytes = static_cast<size_t>(token->stop - token->start) + 1;
    return {reinterpret_cast<const uint16_t*>(static_cast<intptr_t>(token->start)),
            static_cast<uint32_t>(bytes / sizeof(uint16_t))};
  }
  const pANTLR3_STRING text = token->getText(token);
  if (text == nullptr || text->chars == nullptr) return {};
  return {static_cast<const uint16_t*>(static_cast<const void*>(text->chars)), text->len};
}

}  // namespace tavo
