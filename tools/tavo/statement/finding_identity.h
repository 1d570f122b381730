// What tells a finding from the others of its file, wherever it moves.
#pragma once

#include <string>

#include "statement/findings.h"

namespace tavo::cli {

// The beginning of the statement on one line: without comments, with one layout, secrets masked
// whatever is shown elsewhere, control characters escaped. The same before and after `tavo fmt`.
std::string identity_of(const StatementText& statement);

}  // namespace tavo::cli
