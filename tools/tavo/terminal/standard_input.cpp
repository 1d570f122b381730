#include "terminal/standard_input.h"

#include <iostream>
#include <iterator>

namespace tavo::cli {

std::string read_standard_input() {
  std::string text{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
  if (text.ends_with('\n')) text.pop_back();
  if (text.ends_with('\r')) text.pop_back();
  return text;
}

}  // namespace tavo::cli
