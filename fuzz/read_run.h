// Reads one statement with TAVOParser_Read in every form and compares the results with those of the
// two runs.
#pragma once

#include <string>

#include "service_run.h"

namespace tavo_fuzz {

// Reads a text as wide text, UTF-16 and UTF-8, in memory of the library and of the caller, and
// requires that each result equals that of the runs. `runs` must be of the same text.
void check_read(const std::wstring& text, const BothRuns& runs);

}  // namespace tavo_fuzz
