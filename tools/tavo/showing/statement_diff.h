// The changes of a file as a unified diff that patch applies.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "terminal/output.h"

namespace tavo::cli {

// A part of the file: its lines before and after, with their line ends, which the last line of the
// file may lack.
struct ChangedPart {
  std::string before;
  std::string after;
};

// Empty when no part changes. name: of the file, on both sides.
std::string unified_diff(const std::string& name, const std::vector<ChangedPart>& parts,
                         const Stream& out);

}  // namespace tavo::cli
