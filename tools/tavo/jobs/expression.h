// The expressions of `tavo grep` and of house rules, which select statements.
//
//   expression = sequence { "|" sequence }
//   sequence   = factor { factor }                 all of them hold
//   factor     = "!" factor | "(" expression ")" | term
//   term       = key [ operator value ]            without an operator: the option is present
//   key        = option | group "." parameter | provider's own key | "quoted key"
//   operator   = "=" | "!=" | "~" | "!~" | "<" | "<=" | ">" | ">="
//   value      = word | "quoted text" | "<" file   the last one for secrets, after "=" only
//
// Options and keyword values match in any spelling and case. Other values match exactly, or as a
// glob after "~" (* and ?). "<" and ">" compare whole numbers; "=" does too where both are numbers.
// "!=" and "!~" require the option to be present with another value.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "TAVOParserCpp.hpp"

namespace tavo::cli {

// An expression that cannot be read: what is wrong, and where (bytes).
struct ExpressionError : std::runtime_error {
  ExpressionError(const std::string& message, size_t place)
      : std::runtime_error(message), offset(place) {}
  size_t offset;
};

class Expression {
 public:
  // Where secrets come from: the text of a file, "-" for standard input.
  using ReadSecret = std::function<std::wstring(const std::string& file)>;

  // Reads an expression in UTF-8. Throws ExpressionError. An empty read_secret refuses files.
  explicit Expression(std::string_view text, const ReadSecret& read_secret = {});
  Expression(Expression&&) noexcept;
  Expression& operator=(Expression&&) noexcept;
  ~Expression();

  // Whether an accepted statement matches.
  bool matches(const ParseResult& statement) const;

  // Keys that no provider knows: keys of user-written providers, or misspellings.
  const std::vector<std::string>& unknown_keys() const {
    return unknown_keys_;
  }

  struct Node;

 private:
  std::unique_ptr<Node> root_;
  std::vector<std::string> unknown_keys_;
};

// Whether a text matches a glob of * and ?. Linear in the length of the text times that of the
// glob.
bool matches_glob(std::wstring_view text, std::wstring_view glob);

// Whether values of a key are secrets, unless they are a keyword or a name such as @VARIABLE.
bool holds_secrets(uint32_t key_type);

}  // namespace tavo::cli
