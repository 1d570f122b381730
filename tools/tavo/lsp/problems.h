// What is wrong with a statement, as the library's diagnostics tell it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "statement/statement_text.h"

namespace tavo::cli::lsp {

enum class Severity { kError = 1, kWarning = 2, kHint = 4 };

struct Problem {
  struct Related {
    Range place;
    std::string message;
    bool is_option;  // an option that a violated rule looks at
  };
  struct Edit {
    Range place;
    std::wstring replacement;
  };
  struct Fix {
    std::string title;
    bool safe;  // cannot change what an accepted part of the statement means
    std::vector<Edit> edits;
  };

  std::string rule;  // such as "unknown-option"
  uint32_t number;   // error number, or 0
  Severity severity;
  Range place;
  std::string message;  // holds no value of an option that accepts free text
  std::vector<Related> related;
  std::vector<Fix> fixes;  // the best one first
};

std::vector<Problem> find_problems(const StatementText& text);

}  // namespace tavo::cli::lsp
