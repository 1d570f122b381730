// The language's options that hold no secrets, and what they accept.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tavo::redaction {

enum KnownOptionFlags : uint8_t {
  kTakesNumber = 1,      // a number
  kTakesName = 2,        // text without quotes
  kTakesParameters = 4,  // options in parentheses
  kTakesCopies = 8,      // copy ranges such as (1,4)(7,2)
  kIsNumbered = 16,      // the keyword may end with a number from 1 to 99
  kBeginsStatement = 32,
};

struct KnownOption {
  std::string_view keyword;
  uint8_t flags;
  std::string_view values;  // accepted keywords, each between bars: "|NO|YES|"
};

// The option of a keyword, ASCII case ignored; null for unknown keywords and secret options.
const KnownOption* find_known_option(std::wstring_view keyword) noexcept;
bool is_secret_option(std::wstring_view keyword) noexcept;
// Whether the word contains a secret option's keyword and more.
bool is_secret_option_within(std::wstring_view word) noexcept;
// Whether the word looks like a misspelled keyword of an option: within a small edit distance. Far
// slower than the other functions.
bool is_near_an_option(std::wstring_view word) noexcept;
// Whether the word is a prefix of an option's keyword.
bool begins_an_option(std::wstring_view word) noexcept;
// Whether the option accepts this keyword; blanks inside it are significant.
bool accepts_keyword(const KnownOption& option, std::wstring_view value) noexcept;

}  // namespace tavo::redaction
