// Highlighting of the language for editors, written from the library's tables.
#pragma once

#include <string>

namespace tavo::cli {

std::string textmate_grammar();
// For statements quoted in files of other languages.
std::string textmate_injection();
std::string vim_syntax();

}  // namespace tavo::cli
