// One statement through TAVOParser_Read in every way that it can be handed in, compared with what
// the two runs say of it.
#pragma once

#include <string>

#include "service_run.h"

namespace tavo_fuzz {

// Reads a text as wide text, UTF-16 and UTF-8, in memory of the library's and of the caller's, and
// requires of each result what the runs say. Their outcome has to be of this text.
void check_read(const std::wstring& text, const BothRuns& runs);

}  // namespace tavo_fuzz
