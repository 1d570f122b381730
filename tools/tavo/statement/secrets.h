// Values that are shown to nobody who does not ask for them: passwords, connection strings, keys
// and literal seeds.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "TAVOParserCpp.hpp"
#include "statement/statement_text.h"

namespace tavo::cli {

inline constexpr std::wstring_view kMask = L"***";

// Where a text hides secrets, right or wrong as it may be: a value ends at a comma that a keyword
// and "=" follow, so that a password with a misplaced quote is not shown by halves. A word that
// reads like a password or key, and that an option of a user's own provider may be called, is taken
// as such.
std::vector<Range> find_secrets(std::wstring_view text, const std::vector<TAVOTextToken>& tokens);

// Whether the value of a stored pair is one.
bool is_secret(const Pair& pair);

// A part of a text with its secrets masked; all of it when secrets are to be shown.
std::wstring masked(std::wstring_view text, const std::vector<Range>& secrets, Range part,
                    bool show_secrets);

// The message of an error, its excerpt masked and, when it is long, cut to its end.
std::wstring masked_message(const Error& error, const StatementText& statement, bool show_secrets);

}  // namespace tavo::cli
