// A statement that cannot be read in the encoding of its file.
#pragma once

#include <optional>

#include "showing/diagnostics.h"

namespace tavo::cli {

// The first byte that is no character, with its place and how to read it all the same; nothing when
// every byte is part of a character.
std::optional<Finding> find_bad_encoding(const StatementText& statement);

}  // namespace tavo::cli
