// "# tavo: ignore 7118, repeated-option -- reason": comment lines that hide findings of the next
// statement.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "jobs/configuration.h"
#include "statement/findings.h"

namespace tavo::cli {

inline constexpr const char kBadIgnore[] = "bad-ignore";
inline constexpr const char kUnusedIgnore[] = "unused-ignore";

// A finding about a line of the file, not about a statement.
struct LineRemark {
  size_t line = 0;
  Finding finding;
};

// The ignores before one statement.
class IgnoreLines {
 public:
  // lines: blank and comment lines, of which the first has the number first_line. Mistakes become
  // remarks; a mistaken entry hides nothing.
  IgnoreLines(std::string_view lines, size_t first_line, const Configuration& configuration);

  // Whether an ignore names the finding's rule or number; marks the ignore as used.
  bool hides(const Finding& finding);
  // Mistakes and unused ignores. Call after all findings of the statement.
  std::vector<LineRemark> remarks();

 private:
  struct Name {
    std::string name;
    size_t line = 0;
    bool used = false;
  };

  void read(std::string_view directive, size_t line, const Configuration& configuration);
  void add_name(const std::string& name, size_t line, const Configuration& configuration,
                std::vector<Name>& names);
  void mistake(size_t line, const std::string& message);

  std::vector<Name> names_;
  std::vector<LineRemark> remarks_;
};

}  // namespace tavo::cli
