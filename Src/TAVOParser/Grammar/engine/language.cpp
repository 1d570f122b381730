// Gives tools access to the grammar and validation tables.
#include "TAVOLanguage.h"

#include <algorithm>
#include <span>

#include "Grammar/engine/option_table.h"
#include "Grammar/lexer/vocabulary.h"
#include "validation/rules.h"

namespace tavo {
namespace {

static_assert(uint32_t{TAVO_KIND_FRAGMENT} == static_cast<uint32_t>(TokenKind::kFragment));
static_assert(uint32_t{TAVO_SYNTAX_PARAMETERS} == static_cast<uint32_t>(ValueSyntax::kParameters));

const StatementRule* find_statement(uint32_t index) {
  const auto all = statements();
  return index < all.size() ? all[index] : nullptr;
}

const OptionRule* find_option(uint32_t statement, uint32_t option, uint32_t parameter) {
  const StatementRule* rule = find_statement(statement);
  if (rule == nullptr || option >= rule->options.size()) return nullptr;
  const OptionRule* found = rule->options[option];
  if (parameter == TAVO_LANGUAGE_NO_PARAMETER) return found;
  return parameter < found->parameters.size() ? found->parameters[parameter] : nullptr;
}

std::span<const ValidationRule> validation_rules(const StatementRule& statement) {
  const ProviderRules* rules = statement.head.key_type == TAVO_PARSER_PROVIDER
                                   ? rules_of(statement.head.values.entries[0].value_type)
                                   : nullptr;
  return rules == nullptr ? std::span<const ValidationRule>() : rules->rules;
}

template <size_t kCount>
void copy_types(const std::array<uint16_t, kCount>& from, uint32_t (&to)[kCount]) {
  std::copy(from.begin(), from.end(), to);
}

uint32_t stored_value_type(const AcceptedValue& value) {
  return value.value_type == kAsTyped ? value.token : value.value_type;
}

// clang-format off
const char* description_of(uint32_t type) {
  switch (type) {
#define TAVO_PATTERN(number, name, description) \
    case number: return description;
#include "TAVOVocabulary.def"
    default: return nullptr;
  }
}
// clang-format on

}  // namespace
}  // namespace tavo

extern "C" {

uint32_t TAVOLanguage_GetToken(uint32_t tokenType, TAVOTokenInfo* info) noexcept {
  if (tokenType >= tavo::kTokenTypeCount || info == nullptr) return TAVO_LANGUAGE_END;
  const tavo::TokenInfo token = tavo::token_info(tokenType);
  *info = {TAVOParserTokenNames[tokenType], tavo::description_of(tokenType),
           static_cast<uint32_t>(token.kind), token.spelling_count};
  return 0;
}

const char* TAVOLanguage_GetSpelling(uint32_t tokenType, uint32_t index) noexcept {
  const tavo::TokenInfo token = tavo::token_info(tokenType);
  if (index >= token.spelling_count) return nullptr;
  return tavo::spelling(token.first_spelling + index).data();
}

uint32_t TAVOLanguage_GetStatement(uint32_t index, TAVOStatementInfo* info) noexcept {
  const tavo::StatementRule* rule = tavo::find_statement(index);
  if (rule == nullptr || info == nullptr) return TAVO_LANGUAGE_END;
  const tavo::AcceptedValue& name = rule->head.values.entries[0];
  *info = {};
  info->rule = rule->name;
  info->listRule = rule->list_rule;
  info->optionRule = rule->option_rule;
  tavo::copy_types(rule->head.keywords.entries, info->keywords);
  info->nameToken = name.token;
  info->keyType = rule->takes_options() ? rule->head.key_type : 0;
  info->valueType = tavo::stored_value_type(name);
  info->options = static_cast<uint32_t>(rule->options.size());
  info->rules = static_cast<uint32_t>(tavo::validation_rules(*rule).size());
  return 0;
}

uint32_t TAVOLanguage_GetOption(uint32_t statement, uint32_t option, uint32_t parameter,
                                TAVOOptionInfo* info) noexcept {
  const tavo::OptionRule* rule = tavo::find_option(statement, option, parameter);
  if (rule == nullptr || info == nullptr) return TAVO_LANGUAGE_END;
  *info = {};
  info->rule = rule->name;
  tavo::copy_types(rule->keywords.entries, info->keywords);
  info->keyType = rule->key_type;
  info->syntax = static_cast<uint32_t>(rule->syntax);
  info->values = static_cast<uint32_t>(rule->values.size());
  info->parameters = static_cast<uint32_t>(rule->parameters.size());
  info->setsTraceLevel = rule->sets_trace_level ? 1 : 0;
  return 0;
}

uint32_t TAVOLanguage_GetValue(uint32_t statement, uint32_t option, uint32_t parameter,
                               uint32_t index, TAVOValueInfo* info) noexcept {
  const tavo::OptionRule* rule = tavo::find_option(statement, option, parameter);
  if (rule == nullptr || info == nullptr || index >= rule->values.size()) return TAVO_LANGUAGE_END;
  const tavo::AcceptedValue& value = rule->values.entries[index];
  *info = {value.token, value.key_type == tavo::kKeyOfOption ? rule->key_type : value.key_type,
           tavo::stored_value_type(value)};
  return 0;
}

uint32_t TAVOLanguage_GetRule(uint32_t statement, uint32_t index, TAVORuleInfo* info) noexcept {
  const tavo::StatementRule* rule = tavo::find_statement(statement);
  if (rule == nullptr || info == nullptr) return TAVO_LANGUAGE_END;
  const auto rules = tavo::validation_rules(*rule);
  if (index >= rules.size()) return TAVO_LANGUAGE_END;
  *info = {};
  info->number = rules[index].number;
  tavo::copy_types(rules[index].keys, info->keys);
  info->insertKey = rules[index].insert_key;
  return 0;
}

}  // extern "C"
