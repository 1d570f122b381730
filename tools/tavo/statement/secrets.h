// Values that are shown to nobody who does not ask for them: passwords, connection strings, keys,
// literal seeds and whatever a user's own provider is told; and in a wrong statement all that is
// not known to be harmless. The rules for text that is wrong are those of the embedded platform's
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

// A part of a text with its secrets masked; all of it when secrets are to be shown. Takes time for
// the part, not for the whole text.
std::wstring masked(std::wstring_view text, const std::vector<Range>& secrets, Range part,
                    bool show_secrets);

// Whether a secret holds any of that part.
bool is_masked(const std::vector<Range>& secrets, Range part);

// The message of an error, its excerpt masked and, when it is long, cut to its end.
std::wstring masked_message(const Error& error, const StatementText& statement, bool show_secrets);

}  // namespace tavo::cli
