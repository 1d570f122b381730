// The changes of a file as a unified diff that patch applies.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "reading/format_text.h"
#include "terminal/output.h"

namespace tavo::cli {

// Empty when no part changes. name: of the file, on both sides.
std::string unified_diff(const std::string& name, const std::vector<ChangedPart>& parts,
                         const Stream& out);

}  // namespace tavo::cli
