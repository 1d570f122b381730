// The reference documents, as Markdown, and their diagrams.
#pragma once

#include <string>

namespace tavo::cli {

std::string language_reference();
std::string error_reference();

// The syntax diagrams of a statement or of an option with parameters, as an SVG document; empty for
// any other name.
std::string diagram_svg(const std::string& name);

}  // namespace tavo::cli
