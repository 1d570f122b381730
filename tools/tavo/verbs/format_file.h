// Formats a file of statements in the canonical layout and reports what is wrong with it.
#pragma once

#include <string>

#include "reading/format_text.h"
#include "reading/input.h"
#include "terminal/output.h"

namespace tavo::cli {

// Reports rejected statements and those that stay unchanged on standard error; the caller reports
// the rest. Throws InputError.
FormattedText format_file(Input& input, Layout layout, const StatementStyle& style, Output& output);

// Formats one statement; result says whether it stays unchanged, which is already reported.
std::string format_one(const StatementText& text, const StatementStyle& style,
                       const std::string& name, FormattedText& result, Output& output);

}  // namespace tavo::cli
