// A project's configuration of its statement files: tavo.toml, searched upward from each file.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "jobs/expression.h"
#include "jobs/file_list.h"
#include "reading/statement_reader.h"

namespace tavo::cli {

// A configuration that cannot be used; what() begins with its file, line and column.
class ConfigurationError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class RuleLevel { kError, kWarning, kOff };

// A house rule: statements that match `when` must match `require` and must not match `forbid`.
struct HouseRule {
  std::string name;
  std::optional<Expression> when;
  std::optional<Expression> require;
  std::optional<Expression> forbid;
  std::string message;
  std::string says;  // "when PRO=HASH, require SEED"
  RuleLevel level = RuleLevel::kError;
  size_t line = 0;  // in the configuration

  bool is_violated_by(const ParseResult& accepted) const;
};

struct Configuration {
  std::string file;  // empty: none, all defaults
  std::optional<Layout> layout;
  std::optional<uint32_t> code_page;
  std::vector<std::string> include;
  std::vector<std::string> exclude;
  bool strict = false;                      // warnings fail
  bool require_reason = false;              // of "# tavo: ignore"
  std::map<std::string, RuleLevel> levels;  // by rule name or error number
  std::vector<HouseRule> rules;
  std::map<std::string, size_t> lines;  // line of each setting, by its name

  // The level of a finding by its rule name or number; its own level when none is configured.
  RuleLevel level_of(const std::string& rule, uint32_t number, RuleLevel own) const;
  // What include and exclude say about a path; their globs are relative to the configuration.
  Choice choice_of(const std::string& path, bool is_folder) const;
};

// Whether a rule may be lowered or ignored. Errors that end the reading of a statement may not:
// unread text is never hidden.
bool may_be_hidden(const std::string& rule, uint32_t number);

// The names that a severity or an ignore may use: rules and error numbers.
const std::vector<std::string>& known_rules();

// Reads a configuration. known_rules: rule names and error numbers that [severity] may name.
// Throws ConfigurationError.
Configuration read_configuration(const std::string& file, const std::string& text,
                                 const std::vector<std::string>& known_rules);

// Finds the configuration of a file: tavo.toml in its folder or in the nearest one above. Caches
// configurations. Standard input belongs to the current folder.
class Configurations {
 public:
  // file: used for every file instead of a search; empty to search. disabled: no configuration.
  Configurations(std::string file, bool disabled, std::vector<std::string> known_rules);
  ~Configurations();

  // Throws ConfigurationError.
  const Configuration& of(const std::string& file);

 private:
  const Configuration& in_folder(const std::string& folder);
  const Configuration& read(const std::string& path);

  std::string file_;
  bool disabled_;
  std::vector<std::string> known_rules_;
  std::map<std::string, std::unique_ptr<Configuration>> read_;
  std::map<std::string, const Configuration*> folders_;
  Configuration none_;
};

}  // namespace tavo::cli
