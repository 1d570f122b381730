// Values that are shown only on request: passwords, connection strings, keys, literal seeds and
// all values of a user provider; and in a rejected statement everything that is not known to be
// harmless. Rejected text follows the same rules as in the embedded platform's
// messages.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "TAVOParserCpp.hpp"
#include "statement/statement_text.h"

namespace tavo::cli {

inline constexpr std::wstring_view kMask = L"***";

// Ordered ranges that neither overlap nor touch.
std::vector<Range> find_secrets(const StatementText& statement, bool accepted);

// Of a statement that was changed: as in a wrong one, and every word that was hidden before, though
// it may stand in another option now.
std::vector<Range> find_secrets_since(const StatementText& before, const StatementText& statement);

// Whether the value of a stored pair is one.
bool is_secret(const Pair& pair);

// A part of a text with its secrets masked, or unmasked if secrets are shown. The time depends on
// the part, not on the whole text.
std::wstring masked(std::wstring_view text, const std::vector<Range>& secrets, Range part,
                    bool show_secrets);

// Whether a secret overlaps the part.
bool is_masked(const std::vector<Range>& secrets, Range part);

// The message of an error; its excerpt is masked and, if long, reduced to its end.
std::wstring masked_message(const Error& error, const StatementText& statement, bool show_secrets);

}  // namespace tavo::cli
