#pragma once

#include <string>

namespace tavo::cli {

// All of standard input, without the line end that ends it.
std::string read_standard_input();

}  // namespace tavo::cli
