// The meanings, read out for tools.
#include <algorithm>
#include <string_view>

#include "Grammar/engine/option_table.h"
#include "Grammar/meaning/meaning.h"
#include "TAVOLanguage.h"

namespace tavo {
namespace {

template <typename Row>
const Row* row_of(std::span<const Row> rows, const char* rule) {
  for (const Row& row : rows) {
    if (std::string_view(row.rule) == rule) return &row;
  }
  return nullptr;
}

const StatementRule* statement_at(uint32_t index) {
  const auto all = statements();
  return index < all.size() ? all[index] : nullptr;
}

const OptionRule* option_at(const StatementRule& statement, uint32_t option, uint32_t parameter) {
  if (option >= statement.options.size()) return nullptr;
  const OptionRule* found = statement.options[option];
  if (parameter == TAVO_LANGUAGE_NO_PARAMETER) return found;
  return parameter < found->parameters.size() ? found->parameters[parameter] : nullptr;
}

// What an option's example is valid after.
const char* start_of(const StatementRule& statement, const OptionRule& option) {
  for (const OptionStart& row : option_starts()) {
    if (std::string_view(row.statement) == statement.name &&
        std::string_view(row.option) == option.name) {
      return row.start;
    }
  }
  const StatementMeaning* row = row_of(statement_meanings(), statement.name);
  return row == nullptr ? nullptr : row->start;
}

const char* meaning_of_value(const OptionRule& option, uint16_t token) {
  const char* everywhere = nullptr;
  for (const ValueMeaning& row : value_meanings()) {
    if (std::find(row.tokens.begin(), row.tokens.end(), token) == row.tokens.end()) continue;
    if (row.rule == nullptr) {
      if (everywhere == nullptr) everywhere = row.meaning;
    } else if (std::string_view(row.rule) == option.name) {
      return row.meaning;
    }
  }
  return everywhere;
}

}  // namespace
}  // namespace tavo

extern "C" {

uint32_t TAVOLanguage_GetStatementMeaning(uint32_t statement, TAVOMeaning* meaning) noexcept {
  const tavo::StatementRule* rule = tavo::statement_at(statement);
  if (rule == nullptr || meaning == nullptr) return TAVO_LANGUAGE_END;
  const tavo::StatementMeaning* row = tavo::row_of(tavo::statement_meanings(), rule->name);
  if (row == nullptr) return TAVO_LANGUAGE_END;
  *meaning = {row->meaning, row->example, nullptr};
  return 0;
}

uint32_t TAVOLanguage_GetOptionMeaning(uint32_t statement, uint32_t option, uint32_t parameter,
                                       TAVOMeaning* meaning) noexcept {
  const tavo::StatementRule* rule = tavo::statement_at(statement);
  if (rule == nullptr || meaning == nullptr) return TAVO_LANGUAGE_END;
  const tavo::OptionRule* found = tavo::option_at(*rule, option, parameter);
  if (found == nullptr) return TAVO_LANGUAGE_END;
  const tavo::OptionMeaning* row = tavo::row_of(tavo::option_meanings(), found->name);
  if (row == nullptr) return TAVO_LANGUAGE_END;
  const bool is_option = parameter == TAVO_LANGUAGE_NO_PARAMETER;
  *meaning = {row->meaning, row->example, is_option ? tavo::start_of(*rule, *found) : nullptr};
  return 0;
}

const char* TAVOLanguage_GetValueMeaning(uint32_t statement, uint32_t option, uint32_t parameter,
                                         uint32_t index) noexcept {
  const tavo::StatementRule* rule = tavo::statement_at(statement);
  if (rule == nullptr) return nullptr;
  const tavo::OptionRule* found = tavo::option_at(*rule, option, parameter);
  if (found == nullptr || index >= found->values.size()) return nullptr;
  return tavo::meaning_of_value(*found, found->values.entries[index].token);
}

}  // extern "C"
