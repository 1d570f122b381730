// The changes of a file as a unified diff that patch applies, unless something in it is masked.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reading/format_text.h"
#include "terminal/output.h"

namespace tavo::cli {

inline constexpr const char* kMaskedDiff =
    "the diff masks secrets, so that patch cannot apply it; --show-secrets shows them";

struct UnifiedDiff {
  std::string text;     // empty when no part changes
  bool masked = false;  // so that it cannot be applied
};

// name: of the file, on both sides. Unless secrets are shown they are masked in what changes, and
// lines around it that hold some are left out. What a wrong statement hides stays hidden in what
// becomes of it.
UnifiedDiff unified_diff(const std::string& name, const std::vector<ChangedPart>& parts,
                         std::optional<uint32_t> code_page, bool show_secrets, const Stream& out);

}  // namespace tavo::cli
