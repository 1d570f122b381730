// Highlighting of the language for editors, written from the library's tables.
#pragma once

#include <string>

namespace tavo::cli {

std::string textmate_grammar();
// For statements in files of other languages: in single quotes or without quotes, and in double
// quotes.
std::string textmate_injection();
std::string textmate_double_injection();
std::string vim_syntax();

}  // namespace tavo::cli
