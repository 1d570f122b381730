// What may follow at the end of a statement that is being typed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavo::cli {

// The whole text again for each way to complete its last word; case of the word does not matter.
std::vector<std::string> complete_statement(std::string_view text);

}  // namespace tavo::cli
