// Explains a statement, an option or an error number from the tables.
#pragma once

#include <string>
#include <vector>

#include "language/language.h"
#include "terminal/output.h"

namespace tavo::cli {

// Explanations for a stream, in its style.
class Explainer {
 public:
  explicit Explainer(const Stream& out) : out_(out) {}

  std::string all() const;
  std::string statement(const Statement& statement) const;
  // parameter_of: the option that a parameter belongs to, or null.
  std::string option(const Statement& statement, const Option& option,
                     const Option* parameter_of) const;
  // An option without its statement: the statements that have it.
  std::string option_everywhere(const std::vector<const Statement*>& owners,
                                const std::string& name) const;
  // Empty if the number is unknown.
  std::string number(uint32_t number) const;

 private:
  std::string bold(const std::string& text) const;
  // The rules of a statement, or those that read one of its options.
  std::string rule_lines(const Statement& statement, const Option* only) const;

  const Stream& out_;
};

// Lines longer than the width broken at blanks, with the indent of the line. Escape sequences of
// styles have no width.
std::string in_width(std::string_view text, size_t width);

const Statement* find_statement(const std::string& name);
const Option* find_option(const std::vector<Option>& options, const std::string& name);
std::vector<std::string> all_spellings(const std::vector<Option>& options);
// The statements that have an option of that name.
std::vector<const Statement*> statements_with(const std::string& option);

// Names of the options that a rule reads.
std::vector<std::string> options_of_rule(const Statement& statement, const TAVORuleInfo& rule);
// "TAVO_SEED_LITERAL (246)"; only the number when it has no name.
std::string named_type(uint32_t type);

}  // namespace tavo::cli
