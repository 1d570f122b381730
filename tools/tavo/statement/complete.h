// Completion at the end of a statement that is being typed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavo::cli {

// The whole text with each possible completion of its last word, ignoring case.
std::vector<std::string> complete_statement(std::string_view text);

}  // namespace tavo::cli
