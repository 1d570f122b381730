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
  // lines: blank and comment lines, the first of them is that line of the file. Mistakes become
  // remarks, and what is mistaken hides nothing.
  IgnoreLines(std::string_view lines, size_t first_line, const Configuration& configuration);

  // Whether one of them names the rule or the number, which uses it up.
  bool hides(const Finding& finding);
  // Mistakes and, since nothing of the statement is left to hide, what hid nothing.
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
