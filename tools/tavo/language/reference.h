// The reference documents, as Markdown.
#pragma once

#include <string>

namespace tavo::cli {

std::string language_reference();
std::string error_reference();

}  // namespace tavo::cli
