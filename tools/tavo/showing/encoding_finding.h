// A statement that cannot be read in the encoding of its file.
#pragma once

#include <optional>

#include "showing/diagnostics.h"

namespace tavo::cli {

// A finding for the first invalid byte, with advice how to read the file; nothing if every byte is
// part of a character.
std::optional<Finding> find_bad_encoding(const StatementText& statement);

// The rule of this finding.
inline constexpr const char kBadEncoding[] = "not-read";

// All findings of a statement: its first invalid byte alone, or what the library finds.
std::vector<Finding> find_all(const StatementText& statement, const ParseResult& result,
                              bool show_secrets);

}  // namespace tavo::cli
