// The message catalogue: texts by language and number, compiled in.
#pragma once

#include <cstdint>
#include <span>

namespace tavo::platform {

struct Message {
  uint32_t number;
  const wchar_t* text;  // with inserts as {NAME}; see messages/en.txt
};

struct Language {
  const char* code;                   // two letters
  std::span<const Message> messages;  // ordered by number
};

// Every language of the catalogue; the first one supplies texts that others lack.
std::span<const Language> languages() noexcept;

// The language that the environment selects: the first two letters of the first variable that is
// set, of TAVO_LANG, LC_ALL, LC_MESSAGES and LANG; English if the catalogue lacks it.
const Language& chosen_language() noexcept;

// The text of a number in a language, or else in the first language, or null.
const wchar_t* message_text(const Language& language, uint32_t number) noexcept;

}  // namespace tavo::platform
