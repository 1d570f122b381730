#include "language/language.h"

#include <fmt/format.h>

#include <algorithm>

namespace tavo::cli {
namespace {

std::vector<uint32_t> used(const uint32_t (&types)[4]) {
  std::vector<uint32_t> list;
  for (const uint32_t type : types) {
    if (type != 0) list.push_back(type);
  }
  return list;
}

bool contains(const std::vector<uint32_t>& list, uint32_t type) {
  return std::find(list.begin(), list.end(), type) != list.end();
}

Option read_option(uint32_t statement, uint32_t option, uint32_t parameter,
                   const TAVOOptionInfo& info) {
  Option read;
  read.rule = info.rule;
  read.keywords = used(info.keywords);
  read.key_type = info.keyType;
  read.syntax = static_cast<TAVOValueSyntax>(info.syntax);
  read.sets_trace_level = info.setsTraceLevel != 0;
  TAVOMeaning meaning{};
  if (TAVOLanguage_GetOptionMeaning(statement, option, parameter, &meaning) == 0) {
    read.meaning = meaning.meaning;
    read.example = meaning.example;
    if (meaning.start != nullptr) read.start = meaning.start;
  }
  TAVOValueInfo value{};
  for (uint32_t i = 0; TAVOLanguage_GetValue(statement, option, parameter, i, &value) == 0; ++i) {
    read.values.push_back(value);
    const char* sentence = TAVOLanguage_GetValueMeaning(statement, option, parameter, i);
    read.value_meanings.emplace_back(sentence != nullptr ? sentence : "");
  }
  if (parameter != TAVO_LANGUAGE_NO_PARAMETER) return read;
  TAVOOptionInfo inner{};
  for (uint32_t i = 0; TAVOLanguage_GetOption(statement, option, i, &inner) == 0; ++i) {
    read.parameters.push_back(read_option(statement, option, i, inner));
  }
  return read;
}

Statement read_statement(uint32_t index, const TAVOStatementInfo& info) {
  Statement read;
  read.rule = info.rule;
  if (info.listRule != nullptr) read.list_rule = info.listRule;
  if (info.optionRule != nullptr) read.option_rule = info.optionRule;
  read.keywords = used(info.keywords);
  read.name_token = info.nameToken;
  read.key_type = info.keyType;
  read.value_type = info.valueType;
  TAVOMeaning meaning{};
  if (TAVOLanguage_GetStatementMeaning(index, &meaning) == 0) {
    read.meaning = meaning.meaning;
    read.example = meaning.example;
  }
  TAVOOptionInfo option{};
  for (uint32_t i = 0; TAVOLanguage_GetOption(index, i, TAVO_LANGUAGE_NO_PARAMETER, &option) == 0;
       ++i) {
    read.options.push_back(read_option(index, i, TAVO_LANGUAGE_NO_PARAMETER, option));
  }
  TAVORuleInfo rule{};
  for (uint32_t i = 0; TAVOLanguage_GetRule(index, i, &rule) == 0; ++i) read.rules.push_back(rule);
  return read;
}

std::string_view pattern_notation(uint32_t type) {
  switch (type) {
    case INTEGER: return "<integer>";
    case TAVO_PARSER_STRING_WITHOUT_QUOTES: return "<word>";
    case TAVO_PARSER_STRING_WITH_QUOTES: return "\"<text>\"";
    case TAVO_PARSER_ENV_VAR: return "@<variable>";
    case TAVO_PARSER_SEED_FLDNAME: return "#<field>";
    case TAVO_PARSER_AFF_WHENMATCH_PREFIX_SUFFIX_OVERLAY_SYNTAX:
      return "PREFIX(...)|SUFFIX(...)|OVERLAY(...)";
    case TAVO_PARSER_COPY_COL_SYNTAX: return "(<start>,<length>[,\"<text>\"])...";
    default: return "";
  }
}

}  // namespace

bool Option::begins_with(uint32_t type) const {
  return contains(keywords, type);
}

const TAVOValueInfo* Option::find_value(uint32_t type) const {
  for (const TAVOValueInfo& value : values) {
    if (value.tokenType == type) return &value;
  }
  return nullptr;
}

const std::string& Option::meaning_of_value(uint32_t type) const {
  static const std::string kNone;
  for (size_t i = 0; i < values.size(); ++i) {
    if (values[i].tokenType == type) return value_meanings[i];
  }
  return kNone;
}

bool Statement::begins_with(uint32_t type) const {
  return contains(keywords, type);
}

bool Statement::has_fixed_name() const {
  return !spellings(name_token).empty();
}

const Option* Statement::find_option(uint32_t keyword) const {
  for (const Option& option : options) {
    if (option.begins_with(keyword)) return &option;
  }
  return nullptr;
}

const std::vector<Statement>& statements() {
  static const std::vector<Statement> all = [] {
    std::vector<Statement> list;
    TAVOStatementInfo info{};
    for (uint32_t i = 0; TAVOLanguage_GetStatement(i, &info) == 0; ++i) {
      list.push_back(read_statement(i, info));
    }
    return list;
  }();
  return all;
}

std::string token_name(uint32_t type) {
  TAVOTokenInfo info{};
  return TAVOLanguage_GetToken(type, &info) == 0 ? info.name : "";
}

std::vector<std::string> spellings(uint32_t type) {
  std::vector<std::string> list;
  for (uint32_t i = 0; const char* spelling = TAVOLanguage_GetSpelling(type, i); ++i) {
    list.emplace_back(spelling);
  }
  return list;
}

std::vector<std::string> spellings(const Option& option) {
  std::vector<std::string> list;
  for (const uint32_t keyword : option.keywords) {
    for (std::string& spelling : spellings(keyword)) list.push_back(std::move(spelling));
  }
  return list;
}

std::vector<std::string> notations(uint32_t type) {
  const std::string_view pattern = pattern_notation(type);
  if (!pattern.empty()) return {std::string(pattern)};
  std::vector<std::string> list = spellings(type);
  TAVOTokenInfo info{};
  if (list.empty() && TAVOLanguage_GetToken(type, &info) == 0) {
    list.emplace_back(info.description != nullptr ? info.description : info.name);
  }
  return list;
}

std::vector<std::string> value_notations(const Option& option) {
  if (option.syntax == TAVO_SYNTAX_STRING) return {"<word>", "\"<text>\""};
  std::vector<std::string> list;
  if (option.syntax == TAVO_SYNTAX_PARAMETERS) {
    for (const Option& parameter : option.parameters) {
      list.push_back(short_spelling(parameter) + "=...");
    }
    return {"(" + join(list) + ")"};
  }
  for (const TAVOValueInfo& value : option.values) {
    for (std::string& text : notations(value.tokenType)) list.push_back(std::move(text));
  }
  return list;
}

std::string title(const Statement& statement) {
  return names(statement).front();
}

std::vector<std::string> names(const Statement& statement) {
  if (statement.has_fixed_name()) return spellings(statement.name_token);
  std::vector<std::string> list;
  for (const uint32_t keyword : statement.keywords) {
    for (std::string& spelling : spellings(keyword)) list.push_back(std::move(spelling));
  }
  return list;
}

std::string head(const Statement& statement) {
  return fmt::format(
      "{}={}", spellings(statement.keywords.front()).front(),
      statement.has_fixed_name() ? title(statement) : notations(statement.name_token).front());
}

std::string example_statement(const Option& option, const Option* parameter_of) {
  if (parameter_of == nullptr) return fmt::format("{}, {}", option.start, option.example);
  const size_t open = std::min(parameter_of->example.find('('), parameter_of->example.size());
  return fmt::format("{}, {}({})", parameter_of->start, parameter_of->example.substr(0, open),
                     option.example);
}

const Option* option_of_key(const Statement& statement, uint32_t key_type) {
  for (const Option& option : statement.options) {
    if (option.key_type == key_type) return &option;
    for (const TAVOValueInfo& value : option.values) {
      if (value.keyType == key_type) return &option;
    }
    for (const Option& parameter : option.parameters) {
      if (parameter.key_type == key_type) return &parameter;
    }
  }
  return nullptr;
}

bool takes_number(const Option& option) {
  TAVOTokenInfo info{};
  return std::any_of(option.keywords.begin(), option.keywords.end(), [&](uint32_t keyword) {
    return TAVOLanguage_GetToken(keyword, &info) == 0 && info.kind == TAVO_KIND_NUMBERED_KEYWORD;
  });
}

std::string short_spelling(const Option& option) {
  const std::vector<std::string> all = spellings(option);
  if (all.empty()) return notations(option.keywords.front()).front();
  return *std::min_element(all.begin(), all.end(),
                           [](const auto& a, const auto& b) { return a.size() < b.size(); });
}

std::string long_spelling(const Option& option) {
  const std::vector<std::string> all = spellings(option);
  if (all.empty()) return notations(option.keywords.front()).front();
  return *std::max_element(all.begin(), all.end(),
                           [](const auto& a, const auto& b) { return a.size() < b.size(); });
}

std::string join(const std::vector<std::string>& list, std::string_view separator) {
  return fmt::format("{}", fmt::join(list, separator));
}

}  // namespace tavo::cli
