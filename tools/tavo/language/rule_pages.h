// The rules that a finding can name, each with a wrong and a right example.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tavo::cli {

struct RulePage {
  const char* name;     // such as "unknown-option"
  const char* meaning;  // one sentence
  const char* wrong;    // a statement with this finding, or empty
  const char* right;    // the same without it
  const char* more;     // what helps to get it right
};

std::span<const RulePage> rule_pages();
// Ignores case; null for an unknown name.
const RulePage* find_rule_page(std::string_view name);

// For a terminal, and as part of docs/errors.md.
std::string rule_page_text(const RulePage& page);
std::string rule_reference();

}  // namespace tavo::cli
