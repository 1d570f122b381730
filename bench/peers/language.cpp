#include "language.h"

#include <map>
#include <stdexcept>

namespace peers {
namespace {

template <size_t kCount>
std::vector<uint32_t> used(const uint32_t (&types)[kCount]) {
  std::vector<uint32_t> list;
  for (uint32_t type : types) {
    if (type != 0) list.push_back(type);
  }
  return list;
}

Option read_option(uint32_t statement, uint32_t index, uint32_t parameter) {
  TAVOOptionInfo info;
  TAVOLanguage_GetOption(statement, index, parameter, &info);
  Option option;
  option.rule = info.rule;
  option.keywords = used(info.keywords);
  option.syntax = info.syntax;
  for (uint32_t i = 0; i < info.values; ++i) {
    TAVOValueInfo value;
    TAVOLanguage_GetValue(statement, index, parameter, i, &value);
    option.values.push_back(value.tokenType);
  }
  for (uint32_t i = 0; i < info.parameters; ++i) {
    option.parameters.push_back(read_option(statement, index, i));
  }
  return option;
}

bool same(const Option& a, const Option& b) {
  if (a.keywords != b.keywords || a.syntax != b.syntax || a.values != b.values ||
      a.parameters.size() != b.parameters.size()) {
    return false;
  }
  for (size_t i = 0; i < a.parameters.size(); ++i) {
    if (!same(a.parameters[i], b.parameters[i])) return false;
  }
  return true;
}

void collect(const Option& option, std::map<std::string, size_t>& known,
             std::vector<Option>& rules) {
  for (const Option& parameter : option.parameters) collect(parameter, known, rules);
  const auto [place, is_new] = known.emplace(option.rule, rules.size());
  if (is_new) {
    rules.push_back(option);
  } else if (!same(rules[place->second], option)) {
    throw std::runtime_error("two rules are named " + option.rule);
  }
}

}  // namespace

bool Token::visible() const {
  return kind != TAVO_KIND_RESERVED && kind != TAVO_KIND_FRAGMENT && type != COMMENT &&
         type != WHITESPACE;
}

Language read_language() {
  Language language;
  TAVOTokenInfo token;
  for (uint32_t type = 0; TAVOLanguage_GetToken(type, &token) == 0; ++type) {
    Token entry;
    entry.type = type;
    entry.name = token.name;
    entry.kind = token.kind;
    for (uint32_t i = 0; i < token.spellings; ++i) {
      entry.spellings.emplace_back(TAVOLanguage_GetSpelling(type, i));
    }
    language.tokens.push_back(entry);
  }
  std::map<std::string, size_t> known;
  TAVOStatementInfo info;
  for (uint32_t index = 0; TAVOLanguage_GetStatement(index, &info) == 0; ++index) {
    Statement statement;
    statement.rule = info.rule;
    statement.keywords = used(info.keywords);
    statement.name = info.nameToken;
    statement.takes_options = info.optionRule != nullptr;
    for (uint32_t i = 0; i < info.options; ++i) {
      statement.options.push_back(read_option(index, i, TAVO_LANGUAGE_NO_PARAMETER));
      collect(statement.options.back(), known, language.rules);
    }
    language.statements.push_back(statement);
  }
  return language;
}

}  // namespace peers
