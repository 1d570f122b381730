// Takes what stands in secrets out of messages of the library, which quote words of the statement.
#pragma once

#include <string>

#include "statement/statement_text.h"

namespace tavo::cli {

// rule, place: those of the diagnostic. Takes time for the secrets near the place.
std::wstring without_secrets(std::wstring message, std::string_view rule, Range place,
                             const StatementText& statement);

}  // namespace tavo::cli
