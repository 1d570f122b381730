// Masks secrets in the library's messages, which quote words of the statement.
#pragma once

#include <string>

#include "statement/statement_text.h"

namespace tavo::cli {

// rule, place: the diagnostic's. The time depends only on the secrets near the place.
std::wstring without_secrets(std::wstring message, std::string_view rule, Range place,
                             const StatementText& statement);

}  // namespace tavo::cli
