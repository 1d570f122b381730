// The findings of one statement under a configuration.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jobs/configuration.h"
#include "jobs/ignore_lines.h"
#include "reading/statement_reader.h"
#include "statement/findings.h"

namespace tavo::cli {

inline constexpr const char kRulesNotApplied[] = "rules-not-applied";

struct StatementVerdict {
  std::unique_ptr<StatementText> text;  // null if nothing is found
  std::vector<Finding> findings;        // to report, in order of place
  std::vector<LineRemark> remarks;      // about ignores before the statement
  size_t configured = 0;                // hidden by the configuration
  size_t ignored = 0;                   // hidden by ignores
  bool no_memory = false;               // no memory, so not checked

  bool is_clean() const {
    return findings.empty() && remarks.empty() && configured == 0 && ignored == 0 && !no_memory;
  }
};

struct CheckRules {
  const Configuration& configuration;
  std::optional<uint32_t> code_page;
  bool show_secrets = false;
  const StatementText* before = nullptr;  // fixes: what was hidden then stays so
};

// If memory runs out, the verdict says so, and the next statement can still be checked.
// Thread-safe, except for statements that set a trace level: no other may be checked meanwhile.
StatementVerdict check_statement(const FileStatement& statement, const CheckRules& rules);

// Whether the statement may set a trace level, which affects the process while it is parsed.
bool may_set_trace_level(std::string_view bytes);

}  // namespace tavo::cli
