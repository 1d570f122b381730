// "Did you mean": the names that are nearest to a misspelled one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavo::cli {

std::string upper(std::string_view text);

// At most `most` names within a misspelling's edit distance of the word, nearest first, case
// ignored. A name that begins with the word counts as near.
std::vector<std::string> nearest(std::string_view word, const std::vector<std::string>& names,
                                 size_t most = 1);

}  // namespace tavo::cli
