// The language for the generators, read from the library's tables, so that the peers recognize the
// same language as the library.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "TAVOLanguage.h"

namespace peers {

struct Token {
  uint32_t type = 0;
  std::string name;
  uint32_t kind = 0;
  std::vector<std::string> spellings;

  bool visible() const;  // may reach a parser
};

struct Option {
  std::string rule;
  std::vector<uint32_t> keywords;
  uint32_t syntax = 0;
  std::vector<uint32_t> values;
  std::vector<Option> parameters;
};

struct Statement {
  std::string rule;
  std::vector<uint32_t> keywords;
  uint32_t name = 0;
  bool takes_options = false;
  std::vector<Option> options;
};

struct Language {
  std::vector<Token> tokens;  // by type number
  std::vector<Statement> statements;
  std::vector<Option> rules;  // every option and parameter rule once, parameters first

  const std::string& name(uint32_t type) const {
    return tokens[type].name;
  }
};

// Throws std::runtime_error when two different rules share a name.
Language read_language();

// What the generators write. Each returns the text of one file.
std::string antlr_grammar(const Language& language);
std::string re2c_lexer(const Language& language);
std::string descent_tables(const Language& language);
std::string flex_lexer(const Language& language);
std::string bison_parser(const Language& language);

}  // namespace peers
