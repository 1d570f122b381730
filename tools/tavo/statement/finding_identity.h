// What distinguishes a finding from the others of its file, wherever it moves.
#pragma once

#include <string>

#include "statement/findings.h"

namespace tavo::cli {

// The start of the statement on one line: without comments, in one layout, secrets always masked,
// control characters escaped. The same before and after `tavo fmt`.
std::string identity_of(const StatementText& statement);

}  // namespace tavo::cli
