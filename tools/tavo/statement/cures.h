// Where the violation of a rule is in a statement, and what may help against an error.
#pragma once

#include "statement/statement_text.h"
#include "statement/syntax.h"

namespace tavo::cli {

// The options that a violated rule speaks of, or the statement's head when they are missing.
Range place_of_violation(const StatementText& text, const WrittenStatement& written,
                         const Error& error);

std::vector<std::wstring> cures_of(const StatementText& text, const WrittenStatement& written,
                                   const Error& error);

}  // namespace tavo::cli
