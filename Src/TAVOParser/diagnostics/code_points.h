// Characters that are not allowed outside quotes, and what their writer most likely intended.
#pragma once

#include <cstdint>

namespace tavo::diagnostics {

enum class Lookalike : uint8_t {
  kNone,         // a letter or symbol: it needs quotes
  kBlank,        // looks like a blank
  kInvisible,    // has no width
  kDoubleQuote,  // a typographic double quote
  kSingleQuote,  // a typographic single quote, an apostrophe, an accent
  kSign,         // looks like a sign of the language
};

Lookalike lookalike_of(uint32_t character);
// The ASCII sign that a character of kind kSign looks like.
char sign_of(uint32_t character);
// A name for messages, such as "no-break space", or null.
const char* name_of_character(uint32_t character);

}  // namespace tavo::diagnostics
