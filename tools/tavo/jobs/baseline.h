// The findings that a project has and lives with: `tavo check --baseline` hides them, and tells
// what is new. An entry holds the file, the rule, the error number and the beginning of the
// statement with secrets masked; neither a line nor a digest of anything.
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
  // path: of the baseline; files are told from its folder.
  explicit Baseline(const std::string& path);

  // Throws BaselineError.
  static Baseline of_text(const std::string& path, const std::string& text);

  // Another finding of that statement in that file.
  void add(const std::string& file, const StatementText& statement, const Finding& finding);
  // Whether it is an old one; each is used up by one finding.
  bool hides(const std::string& file, const StatementText& statement, const Finding& finding);
  // Marks a file as checked.
  void saw(const std::string& file);
  // Old findings of checked files that are gone.
  size_t gone() const;
  // As it is stored: in order, one finding a line.
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
