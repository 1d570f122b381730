// Keeps secrets of a parameter string out of messages. The command line masks with the same rules.
//
// What stands in a wrong statement cannot be told by its syntax: a quote that is missing turns
// secrets inside out. So nothing is shown but what is known to be harmless. That is, next to keys,
// equal signs and separators:
// - a keyword that the option before it accepts;
// - a number or an unquoted name that the option accepts, as long as all before it is read without
//   doubt and holds no secret.
// Quoted text, comments, and all values of secret and unknown options are hidden, and so is
// whatever fits in nowhere, up to the next option of the language. In the statement of a user's own
// provider every key is an unknown one.
#pragma once

#include <cstddef>
#include <string_view>

namespace tavo::redaction {

// The options that hold secrets: the one list of them, in upper case.
inline constexpr std::string_view kSecretOptions[] = {"CONN", "KEY", "PASS", "SEED"};

// What stands in place of hidden text.
inline constexpr std::wstring_view kHiddenText = L"***";

// Called for each range of hidden characters, in order; they neither overlap nor touch.
using HideRange = void (*)(void* context, size_t begin, size_t end);

enum class TextKind {
  kStatement,  // a whole statement
  kExcerpt,    // the beginning of one: its last word may go on
  kPart,       // any part of a text: numbers and names are hidden from the start
};

// Finds what has to be hidden of a text that is no accepted statement. Takes time that grows with
// the text alone, no memory, and any thread may call.
void find_hidden(std::wstring_view text, TextKind kind, HideRange hide, void* context) noexcept;

// Whether a value that is shown by right speaks of a secret all the same, as PASS=x or KEY:x in a
// text does that swallowed the option after it.
bool speaks_of_secret(std::wstring_view value) noexcept;

// Whether a comment may be shown in an accepted statement: it holds words only, and none of a
// secret.
bool is_harmless_comment(std::wstring_view comment) noexcept;

}  // namespace tavo::redaction
