// The options of the language that hold no secret, and what they accept.
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

// Folds ASCII letters to upper case. The option of a keyword, or null; not the secret ones.
const KnownOption* find_known_option(std::wstring_view keyword) noexcept;
bool is_secret_option(std::wstring_view keyword) noexcept;
// Whether such a keyword is a part of a word, though not all of it.
bool is_secret_option_within(std::wstring_view word) noexcept;
// Whether the language has an option whose keyword is near the word: so many slips apart as a
// person makes. Takes far longer than the others.
bool is_near_an_option(std::wstring_view word) noexcept;
// Whether the word begins an option's keyword.
bool begins_an_option(std::wstring_view word) noexcept;
// Whether the option accepts this keyword; the blanks inside count.
bool accepts_keyword(const KnownOption& option, std::wstring_view value) noexcept;

}  // namespace tavo::redaction
