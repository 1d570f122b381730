// A changed statement, line by line, secrets masked.
#pragma once

#include <string>

#include "statement/statement_text.h"
#include "terminal/output.h"

namespace tavo::cli {

// "@@ FILE:LINE @@", the old lines with "-", the new ones with "+".
std::string change_of(const Stream& stream, const StatementText& before, const StatementText& after,
                      const std::string& file, size_t line, bool show_secrets);

}  // namespace tavo::cli
