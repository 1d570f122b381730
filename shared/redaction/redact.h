// Keeps secrets of a parameter string out of messages. The command line masks with the same rules.
//
// The syntax of an invalid statement does not tell what its text is: after a missing quote,
// secrets and the text between them change places. So only text that is known to be harmless is
// shown. Besides keys, equal signs and separators, that is:
// - a keyword that the option before it accepts;
// - a number or an unquoted name that the option accepts, provided that everything before it was
//   read without doubt and holds no secret.
// Quoted text, comments, all values of secret and unknown options, and text that fits nowhere, up
// to the next option of the language, are hidden. In a user provider's statement every key is
// unknown.
#pragma once

#include <cstddef>
#include <string_view>

namespace tavo::redaction {

// The options that hold secrets, in upper case. This is the only such list.
inline constexpr std::string_view kSecretOptions[] = {"CONN", "KEY", "PASS", "SEED"};

// Replaces hidden text.
inline constexpr std::wstring_view kHiddenText = L"***";

// Called for each hidden half-open range of characters, in order; ranges neither overlap nor touch.
using HideRange = void (*)(void* context, size_t begin, size_t end);

enum class TextKind {
  kStatement,  // a whole statement
  kExcerpt,    // the start of a statement: its last word may be incomplete
  kPart,       // any part of a text: numbers and names are hidden from the start
};

// Finds what to hide in text that is not an accepted statement. Takes linear time, allocates
// nothing, thread-safe.
void find_hidden(std::wstring_view text, TextKind kind, HideRange hide, void* context) noexcept;

// Whether a value of a non-secret option nevertheless names a secret, such as PASS=x or KEY:x in a
// quoted string that swallowed the next option.
bool speaks_of_secret(std::wstring_view value) noexcept;

// Whether a comment in an accepted statement may be shown: it holds only words, and none is a
// secret option's keyword.
bool is_harmless_comment(std::wstring_view comment) noexcept;

}  // namespace tavo::redaction
