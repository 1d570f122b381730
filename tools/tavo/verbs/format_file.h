// A file of statements in the canonical layout, and what is wrong with it told.
#pragma once

#include <string>

#include "reading/format_text.h"
#include "reading/input.h"
#include "terminal/output.h"

namespace tavo::cli {

// Tells wrong statements and those that stay as they are on standard error; the rest is the
// caller's to tell. Throws InputError.
FormattedText format_file(Input& input, Layout layout, const StatementStyle& style, Output& output);

// One statement; result says whether it stays as it is, which has been told.
std::string format_one(const StatementText& text, const StatementStyle& style,
                       const std::string& name, FormattedText& result, Output& output);

}  // namespace tavo::cli
