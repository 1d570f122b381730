// The known findings that a project tolerates: `tavo check --baseline` hides them and reports new
// ones. An entry holds the file, the rule, the error number and the start of the statement with
// secrets masked; it holds no line number and no digest.
#pragma once

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>

#include "statement/findings.h"

namespace tavo::cli {

// A baseline that cannot be used; what() says why.
class BaselineError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Baseline {
 public:
  // path: the baseline's; file names are relative to its folder.
  explicit Baseline(const std::string& path);

  // Throws BaselineError.
  static Baseline of_text(const std::string& path, const std::string& text);

  // Adds a finding of this statement in this file.
  void add(const std::string& file, const StatementText& statement, const Finding& finding);
  // Whether the finding is an old one; each entry hides one finding.
  bool hides(const std::string& file, const StatementText& statement, const Finding& finding);
  // Marks a file as checked.
  void saw(const std::string& file);
  // The number of old findings in checked files that no longer occur.
  size_t gone() const;
  // The stored form: sorted, one finding per line.
  std::string to_json() const;

 private:
  using Key = std::tuple<std::string, std::string, uint32_t, std::string>;

  std::string name_of(const std::string& file) const;
  Key key_of(const std::string& file, const StatementText& statement, const Finding& finding) const;

  std::string folder_;
  std::map<Key, size_t> counts_;
  std::set<std::string> seen_;
};

}  // namespace tavo::cli
