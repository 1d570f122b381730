// Renders a finding for people.
#pragma once

#include <string>
#include <vector>

#include "statement/findings.h"
#include "terminal/output.h"

namespace tavo::cli {

struct ShowFinding {
  std::string file;       // of the statement; empty: not in a file
  size_t first_line = 0;  // of the statement in its file; 0: no margin
  bool verbose = false;   // also shows the recorded text and every accepted word
  bool show_secrets = false;
};

// The whole finding: headline, source line with the place marked, related places, help.
std::string show_finding(const Stream& stream, const StatementText& statement,
                         const Finding& finding, const ShowFinding& how);

// "did you mean ALGO?" for a fix that changes a word, else what it does.
std::string help_of(const FoundFix& fix);

}  // namespace tavo::cli
